#include <QtTest>

#include <csignal>
#include <QtWidgets>

#include "app/commandline.h"
#include "app/fileopenrequests.h"
#include "app/preferences.h"
#include "app/setconfigfilepathdialog.h"
#include "app/shutdownsignals.h"
#include "app/startup.h"
#include "testsupport.h"

class TestStartup : public QObject
{
    Q_OBJECT
    IsolatedEnvironment environment;

private slots:
    void init() { QSettings().clear(); }

    // Which catalogue start-up loads, and whether the Language menu checks
    // the Chinese entry, for the locales zh_CN, zh_TW and en_US in turn.
    void language_data()
    {
        QTest::addColumn<int>("valueL");
        QTest::addColumn<QList<bool>>("loaded");
        QTest::addColumn<QList<bool>>("checked");
        QTest::newRow("0, system") << 0 << QList<bool>{true, false, false} << QList<bool>{true, false, false};
        QTest::newRow("1, Chinese") << 1 << QList<bool>{true, true, true} << QList<bool>{true, true, true};
        QTest::newRow("2, English") << 2 << QList<bool>{false, false, false} << QList<bool>{false, false, false};
        QTest::newRow("7, unknown") << 7 << QList<bool>{false, false, false} << QList<bool>{true, false, false};
    }

    void language()
    {
        QFETCH(int, valueL);
        QList<bool> loaded, checked;
        for (const QString locale : {"zh_CN", "zh_TW", "en_US"}) {
            loaded << shouldLoadChinese(valueL, locale);
            checked << Preferences::chineseChecked(valueL, locale);
        }
        QTEST(loaded, "loaded");
        QTEST(checked, "checked");
    }

    // The available area is 1440 x 900; the stored size is always restored,
    // cut to that area, the position only when it lies strictly inside.
    void restoreWindowGeometry_data()
    {
        QTest::addColumn<QPoint>("stored");
        QTest::addColumn<QSize>("storedSize");
        QTest::addColumn<bool>("placed"); // or left to the window system
        QTest::addColumn<QSize>("restoredSize");
        const QSize small(640, 480);
        QTest::newRow("x at 0") << QPoint(0, 300) << small << false << small;
        QTest::newRow("y at 0") << QPoint(300, 0) << small << false << small;
        QTest::newRow("top-left corner") << QPoint(1, 1) << small << true << small;
        QTest::newRow("last pixel") << QPoint(1439, 899) << small << true << small;
        QTest::newRow("far right edge") << QPoint(1440, 300) << small << false << small;
        QTest::newRow("beyond the screen") << QPoint(2500, 1600) << small << false << small;
        QTest::newRow("larger than the screen") << QPoint(1, 1) << QSize(7340, 3838) << true << QSize(1440, 900);
        QTest::newRow("wider than the screen") << QPoint(1, 1) << QSize(1844, 700) << true << QSize(1440, 700);
    }

    void restoreWindowGeometry()
    {
        QFETCH(QPoint, stored);
        QFETCH(QSize, storedSize);
        QFETCH(bool, placed);
        QSettings settings;
        settings.setValue(StartupKeys::lastWindowSize, storedSize);
        settings.setValue(StartupKeys::lastWindowPosition, stored);
        QWidget window;
        ::restoreWindowGeometry(window, settings, QSize(1440, 900));
        QTEST(window.size(), "restoredSize");
        QCOMPARE(window.testAttribute(Qt::WA_Moved), placed);
        QCOMPARE(window.pos(), placed ? stored : QPoint());
    }

#ifdef Q_OS_UNIX
    // A termination signal arrives as a Qt signal through the event loop
    // (and ends nothing by itself).
    void terminationSignalsAskForShutdown()
    {
        ShutdownSignals signals_;
        QSignalSpy requested(&signals_, &ShutdownSignals::shutdownRequested);
        for (int signalNumber : {SIGTERM, SIGHUP, SIGINT}) {
            ::raise(signalNumber);
            QTRY_COMPARE(requested.size(), 1);
            requested.clear();
        }
    }
#endif

    // What is stored is restored in the same measure, so a window does not
    // move at each start; a maximized one comes back maximized, over the
    // size and place it had before.
    void windowGeometryRoundTrip_data()
    {
        QTest::addColumn<bool>("maximized");
        QTest::newRow("normal") << false;
        QTest::newRow("maximized") << true;
    }

    void windowGeometryRoundTrip()
    {
        QFETCH(bool, maximized);
        QSettings settings;
        settings.setValue(StartupKeys::lastWindowSize, QSize(500, 400));
        settings.setValue(StartupKeys::lastWindowPosition, QPoint(100, 100));
        QWidget before;
        before.move(300, 200);
        before.resize(640, 480);
        if (maximized)
            before.setWindowState(Qt::WindowMaximized);
        storeWindowGeometry(before, settings);
        QWidget after;
        ::restoreWindowGeometry(after, settings, QSize(1440, 900));
        QCOMPARE(after.isMaximized(), maximized);
        QCOMPARE(after.pos(), maximized ? QPoint(100, 100) : QPoint(300, 200));
        QCOMPARE(after.size(), maximized ? QSize(500, 400) : QSize(640, 480));
    }

    // The first argument is a document when it names an existing .qvn file,
    // otherwise the port; options are answered without a window.
    void commandLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("action");
        QTest::addColumn<QString>("document"); // file name inside the temporary folder
        QTest::addColumn<QString>("port");
        const int run = CommandLine::Run;
        QTest::newRow("nothing") << QStringList{} << run << "" << "";
        QTest::newRow("port") << QStringList{"COM3", "ignored"} << run << "" << "COM3";
        QTest::newRow("document") << QStringList{"@/session.qvn"} << run << "session.qvn" << "";
        QTest::newRow("document, upper case") << QStringList{"@/UPPER.QVN"} << run << "UPPER.QVN" << "";
        QTest::newRow("missing document") << QStringList{"@/missing.qvn"} << run << "" << "@/missing.qvn";
        QTest::newRow("folder named .qvn") << QStringList{"@/folder.qvn"} << run << "" << "@/folder.qvn";
        QTest::newRow("other existing file") << QStringList{"@/notes.txt"} << run << "" << "@/notes.txt";
        QTest::newRow("port after --") << QStringList{"--", "-odd"} << run << "" << "-odd";
        QTest::newRow("--help") << QStringList{"--help"} << int(CommandLine::ShowHelp) << "" << "";
        QTest::newRow("-h") << QStringList{"-h", "COM3"} << int(CommandLine::ShowHelp) << "" << "";
        QTest::newRow("--version") << QStringList{"--version"} << int(CommandLine::ShowVersion) << "" << "";
        QTest::newRow("unknown option") << QStringList{"--bogus"} << int(CommandLine::Fail) << "" << "";
    }

    void commandLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, document);
        QFETCH(QString, port);
        QTemporaryDir dir;
        for (const char *name : {"session.qvn", "UPPER.QVN", "notes.txt"}) {
            QFile file(dir.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QVERIFY(QDir(dir.path()).mkdir("folder.qvn"));
        arguments.replaceInStrings("@", dir.path());
        port.replace("@", dir.path());

        const CommandLine parsed = CommandLine::parse(QStringList{"quorvane"} + arguments);
        QTEST(int(parsed.action), "action");
        QCOMPARE(parsed.documentFile, document.isEmpty() ? QString() : dir.filePath(document));
        QCOMPARE(parsed.portName, port);
        QCOMPARE(parsed.startsPort, !port.isEmpty());
        QCOMPARE(parsed.output.isEmpty(), parsed.action == CommandLine::Run);
    }

    // The program itself: help and version print and end before any window
    // or first-run dialog; a mistake ends with an error.
    void commandLineOptionsEndWithoutWindow_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("printed");
        QTest::newRow("--help") << "--help" << 0 << "--version";
        QTest::newRow("--version") << "--version" << 0 << "Quorvane 6.0.3.0103";
        QTest::newRow("unknown") << "--bogus" << 1 << "bogus";
    }

    void commandLineOptionsEndWithoutWindow()
    {
        QFETCH(QString, option);
        QProcess program;
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QUORVANE_APP, {option});
        QVERIFY(program.waitForFinished(30000));
        const QString output = QString::fromUtf8(program.readAll());
        QTEST(program.exitCode(), "exitCode");
        QFETCH(QString, printed);
        QVERIFY2(output.contains(printed), qPrintable(output));
    }

    // Finder's requests wait until there is a window to open them.
    void fileOpenRequestsWaitForHandler()
    {
        auto *requests = new FileOpenRequests(qApp);
        QFileOpenEvent early(QStringLiteral("/tmp/early.qvn"));
        QVERIFY(QCoreApplication::sendEvent(qApp, &early));
        QStringList opened;
        requests->setHandler([&opened](const QString &fileName) { opened << fileName; });
        QFileOpenEvent late(QStringLiteral("/tmp/late.qvn"));
        QCoreApplication::sendEvent(qApp, &late);
        QCOMPARE(opened, (QStringList{"/tmp/early.qvn", "/tmp/late.qvn"}));
        delete requests;
    }

    // The first-run folder dialog proposes the application's data folder; OK
    // creates the folder shown, missing parents too, and remembers it.
    void configFolderDialog_data()
    {
        QTest::addColumn<QString>("typed"); // inside a temporary folder; empty keeps the proposal
        QTest::addColumn<QDialogButtonBox::StandardButton>("button");
        QTest::newRow("OK on the proposal") << QString() << QDialogButtonBox::Ok;
        QTest::newRow("OK, missing parents") << "not/yet/there/Config" << QDialogButtonBox::Ok;
        QTest::newRow("Cancel") << "Config" << QDialogButtonBox::Cancel;
    }

    void configFolderDialog()
    {
        QFETCH(QString, typed);
        QFETCH(QDialogButtonBox::StandardButton, button);
        const QString proposed = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/Config";
        QTemporaryDir base;
        const QString folder = typed.isEmpty() ? proposed : base.filePath(typed);
        const bool accepted = button == QDialogButtonBox::Ok;

        SetConfigFilePathDialog dialog;
        auto *field = dialog.findChild<QLineEdit *>(QStringLiteral("config_file_path_le"));
        QCOMPARE(field->text(), proposed);
        field->setText(folder);
        dialog.findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(button)->click();
        QCOMPARE(dialog.result(), int(accepted ? QDialog::Accepted : QDialog::Rejected));
        QCOMPARE(dialog.getConfigFilePath(), accepted ? folder : proposed);
        QCOMPARE(QFileInfo(folder).isDir(), accepted);
        QCOMPARE(QSettings().value(StartupKeys::configFilePath).toString(), accepted ? folder : QString());
        QCOMPARE(needsConfigFolder(QSettings()), !accepted);
    }
};

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
