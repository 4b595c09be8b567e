#include <QGridLayout>
#include <QPointer>
#include <QSettings>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QtTest>

#include "scriptedwindow.h"
#include "testsupport.h"

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void gridPositions_data();
    void gridPositions();
    void statusBarOnlyWithOneSession();
    void addingSecondSessionSwitchesToHorizontal();
    void addStopsAtSixteen();
    void removeRefusedAtOneSession();
    void removeDestroysLastSession();
    void startFailureBoxOnlyForFirstSession();
    void runStateCheckMarks();
    void commandLinePortOpensThatPort();
    void documentRoundTrip();
    void documentDefaults();
    void saveAsSuffix_data();
    void saveAsSuffix();
    void saveToFolderFails();
    void acceptedOptionsRewriteOpenDocument();
    void reopeningKeepsOneRecentEntry();
    void missingRecentFileIsDropped();
    void hostileDocuments_data();
    void hostileDocuments();

private:
    QString writeDocument(const QString &name, const QByteArray &contents);
    static QAction *action(const MainWindow &window, const char *name);
    static void addSessions(ScriptedWindow &window, int total);

    QScopedPointer<IsolatedEnvironment> environment;
    QTemporaryDir dir;
};

void TestMainWindow::initTestCase()
{
    environment.reset(new IsolatedEnvironment);
    QVERIFY(dir.isValid());
}

void TestMainWindow::init()
{
    QSettings().clear();
}

QAction *TestMainWindow::action(const MainWindow &window, const char *name)
{
    auto *found = window.findChild<QAction *>(QLatin1String(name));
    if (!found)
        qFatal("no action %s", name);
    return found;
}

void TestMainWindow::addSessions(ScriptedWindow &window, int total)
{
    while (window.sessionCount() < total)
        action(window, "acEditAdd")->trigger();
}

QString TestMainWindow::writeDocument(const QString &name, const QByteArray &contents)
{
    const QString path = dir.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
    file.write(contents);
    return path;
}

void TestMainWindow::gridPositions_data()
{
    QTest::addColumn<QByteArray>("layoutAction");
    QTest::addColumn<int>("sessions");
    QTest::addColumn<int>("perRow");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<QList<int>>("columns");

    QTest::newRow("grid of five") << QByteArray("acViewGrid") << 5 << 0 << QList<int>{0, 0, 1, 1, 2}
                                  << QList<int>{0, 1, 0, 1, 0};
    QTest::newRow("custom three of seven") << QByteArray("acViewCustom") << 7 << 3
                                           << QList<int>{0, 0, 0, 1, 1, 1, 2} << QList<int>{0, 1, 2, 0, 1, 2, 0};
    QTest::newRow("horizontal") << QByteArray("acViewHorizontal") << 3 << 0 << QList<int>{0, 0, 0}
                                << QList<int>{0, 1, 2};
    QTest::newRow("vertical") << QByteArray("acViewVertical") << 3 << 0 << QList<int>{0, 1, 2}
                              << QList<int>{0, 0, 0};
}

void TestMainWindow::gridPositions()
{
    QFETCH(QByteArray, layoutAction);
    QFETCH(int, sessions);
    QFETCH(int, perRow);
    QFETCH(QList<int>, rows);
    QFETCH(QList<int>, columns);

    ScriptedWindow window;
    window.sessionsPerRowAnswer = perRow;
    addSessions(window, sessions);
    action(window, layoutAction.constData())->trigger();
    QVERIFY(action(window, layoutAction.constData())->isChecked());

    auto *grid = window.findChild<QGridLayout *>("gridLayout");
    for (int i = 0; i < sessions; ++i) {
        int row = -1, column = -1, rowSpan = 0, columnSpan = 0;
        grid->getItemPosition(grid->indexOf(window.session(i)), &row, &column, &rowSpan, &columnSpan);
        QCOMPARE(row, rows.at(i));
        QCOMPARE(column, columns.at(i));
    }
}

void TestMainWindow::statusBarOnlyWithOneSession()
{
    ScriptedWindow window;
    QVERIFY(!window.statusBar()->isHidden());
    addSessions(window, 2);
    QVERIFY(window.statusBar()->isHidden());
    action(window, "acEditRemove")->trigger();
    QVERIFY(!window.statusBar()->isHidden());
}

void TestMainWindow::addingSecondSessionSwitchesToHorizontal()
{
    ScriptedWindow window;
    action(window, "acViewGrid")->trigger();
    QVERIFY(action(window, "acViewQuickSettings")->isChecked());
    addSessions(window, 2);
    QVERIFY(!action(window, "acViewQuickSettings")->isChecked());
    QVERIFY(action(window, "acViewHorizontal")->isChecked());
    QVERIFY(!action(window, "acViewGrid")->isChecked());
    QCOMPARE(window.sessionsPerRow(), 2);
}

void TestMainWindow::addStopsAtSixteen()
{
    ScriptedWindow window;
    addSessions(window, MainWindow::MaxSessions);
    QTRY_VERIFY_WITH_TIMEOUT(!action(window, "acEditAdd")->isEnabled(), 150);
    // Even when triggered regardless, the table does not grow.
    action(window, "acEditAdd")->trigger();
    QCOMPARE(window.sessionCount(), MainWindow::MaxSessions);
}

void TestMainWindow::removeRefusedAtOneSession()
{
    ScriptedWindow window;
    QTRY_VERIFY_WITH_TIMEOUT(!action(window, "acEditRemove")->isEnabled(), 150);
    // A disabled action does not fire; reach the command the way a shortcut race would.
    QVERIFY(QMetaObject::invokeMethod(&window, "on_acEditRemove_triggered"));
    QCOMPARE(window.sessionCount(), 1);
    QCOMPARE(window.session(0)->currentMessage(), QStringLiteral("Port Number = 1"));
}

void TestMainWindow::removeDestroysLastSession()
{
    ScriptedWindow window;
    addSessions(window, 3);
    QPointer<SerialPortWidget> last = window.session(2);
    action(window, "acEditRemove")->trigger();
    QCOMPARE(window.sessionCount(), 2);
    QVERIFY(last.isNull());
    QTRY_VERIFY_WITH_TIMEOUT(action(window, "acEditRemove")->isEnabled(), 150);
}

void TestMainWindow::startFailureBoxOnlyForFirstSession()
{
    ScriptedWindow window;
    addSessions(window, 3);
    window.failingSessions = {2};
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Serial Port .* OPEN FAILED$"));
    window.start(QString());
    QVERIFY(window.boxesShown.isEmpty());

    window.failingSessions = {0};
    window.start(QString());
    QCOMPARE(window.boxesShown.size(), 1);
    QVERIFY(window.boxesShown.first().startsWith("Serial Port "));
    QVERIFY(window.boxesShown.first().endsWith(" OPEN FAILED"));
}

void TestMainWindow::runStateCheckMarks()
{
    ScriptedWindow window;
    addSessions(window, 2);
    const QList<QByteArray> names = {"acMonStart", "acEditPause", "acMonStop"};
    auto checked = [&] {
        QList<QByteArray> on;
        for (const QByteArray &name : names) {
            if (action(window, name.constData())->isChecked())
                on << name;
        }
        return on;
    };
    for (const QByteArray &name : names) {
        action(window, name.constData())->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(checked(), QList<QByteArray>{name}, 150);
    }
}

void TestMainWindow::commandLinePortOpensThatPort()
{
    QUORVANE_REQUIRE_SOCAT();
    SocatPair pair;
    QVERIFY(pair.start());
    ScriptedWindow window;
    window.startRealPorts = true;
    window.start(pair.portA());
    QVERIFY(window.session(0)->serialPort()->isOpen());
    QCOMPARE(window.session(0)->serialPort()->portName(), pair.portA());
    QVERIFY(window.boxesShown.isEmpty());
    window.session(0)->stop();
}

void TestMainWindow::documentRoundTrip()
{
    const QString name = dir.filePath("roundtrip.qvn");
    {
        ScriptedWindow window;
        addSessions(window, 2);
        SerialPortWidget *second = window.session(1);
        PortSettings port = second->portSettings();
        port.baudRate = 115200;
        port.dataBits = 7;
        port.parity = 2;
        port.lastTargetHost = {"10.0.0.9", "10.0.0.8"};
        port.lastTargetPort = 7001;
        FormatSetting format = second->formatSettings();
        format.ReceiveMsgFormat = HEX;
        format.SendList = {"PING", "PONG"};
        format.LogFont = QFont("Courier", 17);
        format.SendTextColor = QColor("#123456");
        format.DisplaySendMsg = true;
        second->setPortSettings(port);
        second->setFormatSettings(format);
        second->updateDisplay();
        QVERIFY(window.writeSettingFile(name, false));
    }
    ScriptedWindow window;
    QVERIFY(window.loadFile(name));
    QCOMPARE(window.sessionCount(), 2);
    QCOMPARE(window.currentFile(), name);
    QCOMPARE(window.windowTitle(), QStringLiteral("roundtrip.qvn[*] - Quorvane"));
    const PortSettings &port = window.session(1)->portSettings();
    const FormatSetting &format = window.session(1)->formatSettings();
    QCOMPARE(port.baudRate, 115200);
    QCOMPARE(port.dataBits, 7);
    QCOMPARE(port.parity, 2);
    QCOMPARE(port.lastTargetHost, (QStringList{"10.0.0.9", "10.0.0.8"}));
    QCOMPARE(port.lastTargetPort, 7001);
    QCOMPARE(format.ReceiveMsgFormat, int(HEX));
    QCOMPARE(format.SendList, (QStringList{"PING", "PONG"}));
    QCOMPARE(format.LogFont.family(), QStringLiteral("Courier"));
    QCOMPARE(format.LogFont.pointSize(), 17);
    QCOMPARE(format.SendTextColor, QColor("#123456"));
    QVERIFY(!format.DisplaySendMsg);
    QVERIFY(!format.LogRotateAtSize);
}

void TestMainWindow::documentDefaults()
{
    ScriptedWindow window;
    QVERIFY(window.loadFile(writeDocument("noports.qvn", "ColumnNumber=2\n")));
    QCOMPARE(window.sessionCount(), 1);
    QVERIFY(window.loadFile(writeDocument("three.qvn", "PortNumber=3\n")));
    QCOMPARE(window.sessionCount(), 3);
    QVERIFY(!action(window, "acViewQuickSettings")->isChecked());
}

void TestMainWindow::saveAsSuffix_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("written");

    QTest::newRow("no suffix") << "x" << "x.qvn";
    QTest::newRow("other suffix") << "y.txt" << "y.txt";
    QTest::newRow("own suffix") << "z.qvn" << "z.qvn";
}

void TestMainWindow::saveAsSuffix()
{
    QFETCH(QString, chosen);
    QFETCH(QString, written);
    ScriptedWindow window;
    window.fileAnswer = dir.filePath(chosen);
    action(window, "acFileSaveAs")->trigger();
    QVERIFY(QFileInfo::exists(dir.filePath(written)));
    QCOMPARE(window.currentFile(), dir.filePath(written));
    if (chosen != written)
        QVERIFY(!QFileInfo::exists(dir.filePath(chosen)));
}

void TestMainWindow::saveToFolderFails()
{
    ScriptedWindow window;
    QVERIFY(!window.saveFile(dir.path(), false));
    QVERIFY(window.currentFile().isEmpty());
    QCOMPARE(window.session(0)->currentMessage(), QStringLiteral("Saving FAILED"));
}

void TestMainWindow::acceptedOptionsRewriteOpenDocument()
{
    ScriptedWindow window;
    addSessions(window, 2);
    window.fileAnswer = dir.filePath("options.qvn");
    action(window, "acFileSaveAs")->trigger();
    QFile::resize(window.fileAnswer, 0);

    window.dialogAnswer = false;
    action(window, "acToolsSetting")->trigger();
    QCOMPARE(QFileInfo(window.fileAnswer).size(), 0);

    window.dialogAnswer = true;
    action(window, "acToolsSetting")->trigger();
    QCOMPARE(QSettings(window.fileAnswer, QSettings::IniFormat).value("PortNumber").toInt(), 2);
}

void TestMainWindow::reopeningKeepsOneRecentEntry()
{
    const QString other = writeDocument("other.qvn", "PortNumber=1\n");
    const QString twice = writeDocument("twice.qvn", "PortNumber=2\n");
    ScriptedWindow window;
    for (const QString &name : {twice, other, twice}) {
        window.fileAnswer = name;
        action(window, "acFileOpen")->trigger();
    }
    QCOMPARE(window.recentFiles(), (QStringList{twice, other}));
}

void TestMainWindow::missingRecentFileIsDropped()
{
    const QString kept = writeDocument("kept.qvn", "PortNumber=1\n");
    const QString gone = dir.filePath("gone.qvn");
    QSettings().setValue("RecentFiles", QStringList{gone, kept});
    QTest::ignoreMessage(QtWarningMsg, qPrintable("Remove recent file for not exists  " + gone));
    ScriptedWindow window;
    QCOMPARE(window.recentFiles(), QStringList{kept});
}

void TestMainWindow::hostileDocuments_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<int>("sessions");

    QByteArray binary;
    for (int i = 0; i < 4096; ++i)
        binary.append(char((i * 37) & 0xff));
    QTest::newRow("unparsable colour")
        << writeDocument("colour.qvn", "PortNumber=1\n[0]\nSendTextColor=#xyz\nReceiveTextColor=blorange\n") << 1;
    QTest::newRow("empty font family")
        << writeDocument("font.qvn", "[0]\nLogFontFamily=\nLogFontSize=-4\nLogFontWeight=5000\n") << 1;
    QTest::newRow("unparsable time")
        << writeDocument("time.qvn", "[0]\nLogRotateAtTime=true\nLogRotateTime=quarter past\n") << 1;
    QTest::newRow("only separators") << writeDocument("hosts.qvn", "[0]\nLastTargetHost=-||--||-\n") << 1;
    QTest::newRow("too many sessions") << writeDocument("many.qvn", "PortNumber=17\n") << 16;
    QTest::newRow("binary") << writeDocument("binary.qvn", binary) << 1;
    QTest::newRow("empty") << writeDocument("empty.qvn", {}) << 1;
    QTest::newRow("missing") << dir.filePath("missing.qvn") << 1;
    QTest::newRow("folder") << dir.path() << 1;
}

void TestMainWindow::hostileDocuments()
{
    QFETCH(QString, fileName);
    ScriptedWindow window;
    QVERIFY(window.loadFile(fileName));
    QTEST(window.sessionCount(), "sessions");
    for (int i = 0; i < window.sessionCount(); ++i) {
        const PortSettings &port = window.session(i)->portSettings();
        const FormatSetting &format = window.session(i)->formatSettings();
        QVERIFY(!port.lastTargetHost.isEmpty());
        QVERIFY(!port.lastTargetHost.contains(QString()));
        QVERIFY(!format.LogFont.family().isEmpty());
        QVERIFY(format.LogFont.pointSize() > 0);
        QVERIFY(!format.SendTextColor.isValid() || format.SendTextColor.name().size() == 7);
    }
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
