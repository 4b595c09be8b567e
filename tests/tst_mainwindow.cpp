#include <QtTest>
#include <QtWidgets>

#include "scriptedwindow.h"
#include "testsupport.h"
#include "view/findbar.h"
#include "view/receiveview.h"
#include "workspace/sessiontitlebar.h"

class TestMainWindow : public QObject
{
    Q_OBJECT
    IsolatedEnvironment environment;
    QTemporaryDir dir;

    static QAction *action(const MainWindow &window, const char *name)
    {
        if (auto *found = window.findChild<QAction *>(QLatin1String(name)))
            return found;
        qFatal("no action %s", name);
    }

    static void addSessions(ScriptedWindow &window, int total)
    {
        while (window.sessionCount() < total)
            action(window, "acEditAdd")->trigger();
    }

    QString writeDocument(const QString &name, const QByteArray &contents)
    {
        QFile file(dir.filePath(name));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qPrintable(file.fileName()));
        file.write(contents);
        return file.fileName();
    }

private slots:
    void init() { QSettings().clear(); }

    void gridPositions_data()
    {
        using Cells = QList<int>;
        QTest::addColumn<QByteArray>("layoutAction");
        QTest::addColumn<int>("sessions");
        QTest::addColumn<int>("perRow");
        QTest::addColumn<Cells>("rows");
        QTest::addColumn<Cells>("columns");
        QTest::newRow("grid of five") << QByteArray("acViewGrid") << 5 << 0 << Cells{0, 0, 1, 1, 2} << Cells{0, 1, 0, 1, 0};
        QTest::newRow("custom three of seven")
            << QByteArray("acViewCustom") << 7 << 3 << Cells{0, 0, 0, 1, 1, 1, 2} << Cells{0, 1, 2, 0, 1, 2, 0};
        QTest::newRow("horizontal") << QByteArray("acViewHorizontal") << 3 << 0 << Cells{0, 0, 0} << Cells{0, 1, 2};
        QTest::newRow("vertical") << QByteArray("acViewVertical") << 3 << 0 << Cells{0, 1, 2} << Cells{0, 0, 0};
    }

    void gridPositions()
    {
        QFETCH(QByteArray, layoutAction);
        QFETCH(int, sessions);
        QFETCH(int, perRow);
        ScriptedWindow window;
        window.sessionsPerRowAnswer = perRow;
        addSessions(window, sessions);
        action(window, layoutAction.constData())->trigger();
        QVERIFY(action(window, layoutAction.constData())->isChecked());

        auto *grid = window.findChild<QGridLayout *>("gridLayout");
        QList<int> rows, columns;
        for (int i = 0; i < sessions; ++i) {
            int row = -1, column = -1, rowSpan = 0, columnSpan = 0;
            grid->getItemPosition(grid->indexOf(window.session(i)), &row, &column, &rowSpan, &columnSpan);
            rows << row;
            columns << column;
        }
        QTEST(rows, "rows");
        QTEST(columns, "columns");
    }

    // Whatever the layout, sixteen sessions keep the window within a
    // 1280x800 screen: each session keeps its minimum size and the
    // workspace scrolls instead.
    void sixteenSessionsFitTheScreen_data()
    {
        QTest::addColumn<QByteArray>("layoutAction");
        for (const char *layout : {"acViewHorizontal", "acViewVertical", "acViewGrid", "acViewCustom"})
            QTest::newRow(layout) << QByteArray(layout);
    }

    void sixteenSessionsFitTheScreen()
    {
        QFETCH(QByteArray, layoutAction);
        const QSize screen(1280, 800);
        ScriptedWindow window;
        window.sessionsPerRowAnswer = 4;
        window.resize(screen);
        window.show();
        addSessions(window, MainWindow::MaxSessions);
        action(window, layoutAction.constData())->trigger();
        action(window, "acViewQuickSettings")->trigger();
        QCoreApplication::processEvents();
        QCOMPARE(window.size(), screen);
        QVERIFY2(screen.expandedTo(window.minimumSizeHint()) == screen,
                 qPrintable(QStringLiteral("minimum %1x%2").arg(window.minimumSizeHint().width())
                                .arg(window.minimumSizeHint().height())));
        for (int i = 0; i < window.sessionCount(); ++i) {
            const SerialPortWidget *session = window.session(i);
            QVERIFY(session->isVisible());
            QVERIFY(session->width() >= session->minimumSizeHint().width());
            QVERIFY(session->height() >= session->minimumSizeHint().height());
        }
    }

    // A title bar's close button removes its own session and keeps the
    // layout; a double-click gives the session the workspace and back.
    void titleBarClosesAndMaximizes()
    {
        ScriptedWindow window;
        addSessions(window, 3);
        action(window, "acViewGrid")->trigger();
        SerialPortWidget *first = window.session(0), *middle = window.session(1), *last = window.session(2);

        QTest::mouseDClick(last->sessionTitleBar(), Qt::LeftButton);
        QCOMPARE(window.maximizedWorkspaceSession(), last);
        QVERIFY(first->isHidden() && middle->isHidden() && !last->isHidden());
        QCOMPARE(window.currentSession(), last);
        QTest::mouseDClick(last->sessionTitleBar(), Qt::LeftButton);
        QVERIFY(!window.maximizedWorkspaceSession());
        QVERIFY(!first->isHidden() && !middle->isHidden());

        QPointer<SerialPortWidget> closed = middle;
        middle->sessionTitleBar()->findChild<QToolButton *>("closeButton")->click();
        QTRY_VERIFY(closed.isNull());
        QCOMPARE(window.sessionCount(), 2);
        QCOMPARE(window.session(1), last);
        QVERIFY(action(window, "acViewGrid")->isChecked());
        QCOMPARE(window.sessionsPerRow(), 2);
    }

    // Ctrl+W and Ctrl+L act on the session that last held the focus.
    void shortcutsActOnCurrentSession()
    {
        ScriptedWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        addSessions(window, 3);
        QCOMPARE(action(window, "acEditCloseSession")->shortcut(), QKeySequence("Ctrl+W"));
        QCOMPARE(action(window, "acEditClearSession")->shortcut(), QKeySequence("Ctrl+L"));
        SerialPortWidget *middle = window.session(1);
        middle->findChild<QPlainTextEdit *>("textEdit")->setFocus();
        QTRY_COMPARE(window.currentSession(), middle);
        middle->pushByteArray("abc", true, RX);
        QTest::keyClick(&window, Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(middle->receivedBytes(), 0);
        QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
        QVERIFY(middle->receiveView()->findBar()->isVisible());
        QVERIFY(!window.session(0)->receiveView()->findBar()->isVisible());
        QPointer<SerialPortWidget> closed = middle;
        QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
        QVERIFY(closed.isNull());
        QCOMPARE(window.sessionCount(), 2);
    }

    // A document named at start replaces the one Restore Connection would
    // reopen (sessions of mode 3 start no transport).
    void startDocumentOpens()
    {
        const QString last = writeDocument("last.qvn", "PortNumber=2\n[0]\nConnMode=3\n[1]\nConnMode=3\n");
        const QString named = writeDocument("named.qvn", "PortNumber=3\n[0]\nConnMode=3\n[1]\nConnMode=3\n[2]\nConnMode=3\n");
        QSettings().setValue("RecentFiles", QStringList{last});
        QSettings().setValue("OpenLastConnection", true);
        ScriptedWindow window(nullptr, named);
        QCOMPARE(window.currentFile(), named);
        QCOMPARE(window.sessionCount(), 3);
        window.openDocument(last);
        QCOMPARE(window.currentFile(), last);
        QCOMPARE(window.sessionCount(), 2);
    }

    void statusBarOnlyWithOneSession()
    {
        ScriptedWindow window;
        QVERIFY(!window.statusBar()->isHidden());
        addSessions(window, 3);
        QVERIFY(window.statusBar()->isHidden());
        QPointer<SerialPortWidget> last = window.session(2);
        action(window, "acEditRemove")->trigger();
        QVERIFY(last.isNull()); // Remove destroys the last session
        action(window, "acEditRemove")->trigger();
        QCOMPARE(window.sessionCount(), 1);
        QVERIFY(!window.statusBar()->isHidden());
    }

    void addingSecondSessionSwitchesToHorizontal()
    {
        ScriptedWindow window;
        action(window, "acViewGrid")->trigger();
        QVERIFY(action(window, "acViewQuickSettings")->isChecked());
        addSessions(window, 2);
        QVERIFY(!action(window, "acViewQuickSettings")->isChecked());
        QVERIFY(action(window, "acViewHorizontal")->isChecked());
    }

    void addAndRemoveLimits_data()
    {
        QTest::addColumn<int>("sessions");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("no Add at sixteen") << MainWindow::MaxSessions << QByteArray("acEditAdd");
        QTest::newRow("no Remove at one") << 1 << QByteArray("acEditRemove");
    }

    void addAndRemoveLimits()
    {
        QFETCH(int, sessions);
        QFETCH(QByteArray, command);
        ScriptedWindow window;
        addSessions(window, sessions);
        QTRY_VERIFY_WITH_TIMEOUT(!action(window, command.constData())->isEnabled(), 150);
        // A disabled action does not fire; reach the command the way a shortcut race would.
        QVERIFY(QMetaObject::invokeMethod(&window, "on_" + command + "_triggered"));
        QCOMPARE(window.sessionCount(), sessions);
        if (sessions == 1)
            QCOMPARE(window.session(0)->currentMessage(), QStringLiteral("Port Number = 1"));
    }

    void startFailureBoxOnlyForFirstSession()
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
        QVERIFY(QRegularExpression("^Serial Port .* OPEN FAILED$").match(window.boxesShown.first()).hasMatch());
    }

    void runStateCheckMarks()
    {
        ScriptedWindow window;
        addSessions(window, 2);
        const QList<QByteArray> names = {"acMonStart", "acEditPause", "acMonStop"};
        for (const QByteArray &name : names) {
            action(window, name.constData())->trigger();
            for (const QByteArray &other : names) // only the one triggered is checked
                QTRY_COMPARE_WITH_TIMEOUT(action(window, other.constData())->isChecked(), other == name, 150);
        }
    }

    // A port the scan does not list (a pty) keeps its name everywhere: box,
    // settings, status, documents; once gone, Send opens nothing else.
    void commandLinePortKeepsItsName()
    {
        QUORVANE_REQUIRE_SOCAT();
        SocatPair pair;
        QVERIFY(pair.start());
        ScriptedWindow window;
        window.startRealPorts = true;
        window.start(pair.portA());
        SerialPortWidget *session = window.session(0);
        const auto portBox = session->findChild<QComboBox *>(QStringLiteral("portBox"));
        const auto namesPortA = [&] {
            return session->portSettings().name == pair.portA() && portBox->currentText() == pair.portA();
        };
        QVERIFY(session->serialPort()->isOpen());
        QVERIFY(window.boxesShown.isEmpty());
        QVERIFY(namesPortA());
        QTRY_VERIFY(session->connectionStatusText().contains(pair.portA() + " OPENED"));

        session->stop();
        QVERIFY(session->start());
        QVERIFY(session->serialPort()->isOpen());
        QVERIFY(namesPortA());

        const QString document = dir.filePath(QStringLiteral("pty.qvn"));
        QVERIFY(window.writeSettingFile(document, false));
        session->stop();
        QTRY_VERIFY(session->connectionStatusText().contains(pair.portA() + " CLOSED"));
        ScriptedWindow reopened;
        QVERIFY(reopened.loadFile(document));
        QCOMPARE(reopened.session(0)->portSettings().name, pair.portA());
        QCOMPARE(reopened.session(0)->findChild<QComboBox *>(QStringLiteral("portBox"))->currentText(), pair.portA());

        pair.kill();
        QTest::qWait(1100); // a port scan passes
        session->sendMessage("reset");
        QVERIFY(!session->serialPort()->isOpen());
        QVERIFY(namesPortA());
    }

    // What the user changes in a panel or the layout marks the document
    // modified; what a document puts into the panels does not.
    void settingsChangesMarkModified()
    {
        const QString document = dir.filePath(QStringLiteral("marks.qvn"));
        {
            ScriptedWindow writer;
            QVERIFY(writer.writeSettingFile(document, false));
        }
        ScriptedWindow window;
        QVERIFY(window.loadFile(document));
        QVERIFY(!window.isWindowModified());
        SerialPortWidget *session = window.session(0);
        const QList<std::function<void()>> edits = {
            [&] { session->findChild<QComboBox *>(QStringLiteral("baudRateModeBox"))->setCurrentIndex(1); },
            [&] { session->findChild<QRadioButton *>(QStringLiteral("hexRadio"))->click(); },
            [&] { session->findChild<QCheckBox *>(QStringLiteral("displayTimeBox"))->click(); },
            [&] { session->findChild<QComboBox *>(QStringLiteral("portBox"))->setEditText(QStringLiteral("/dev/null")); },
            [&] { action(window, "acViewGrid")->trigger(); },
        };
        for (const auto &edit : edits) {
            window.setWindowModified(false);
            edit();
            QVERIFY(window.isWindowModified());
        }
    }

    // Field by field round trips of a session: tst_sessiondocument.
    void saveAsSuffix_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("written");
        QTest::newRow("no suffix") << "x" << "x.qvn";
        QTest::newRow("other suffix") << "x.txt" << "x.txt";
    }

    void saveAsSuffix()
    {
        QFETCH(QString, chosen);
        QFETCH(QString, written);
        ScriptedWindow window;
        window.fileAnswer = dir.filePath(chosen);
        action(window, "acFileSaveAs")->trigger();
        QVERIFY(QFileInfo::exists(dir.filePath(written)));
        QCOMPARE(window.currentFile(), dir.filePath(written));
        QCOMPARE(window.windowTitle(), written + QStringLiteral("[*] - Quorvane"));
        if (chosen != written)
            QVERIFY(!QFileInfo::exists(dir.filePath(chosen)));
    }

    void saveToFolderFails()
    {
        ScriptedWindow window;
        QVERIFY(!window.saveFile(dir.path(), false));
        QVERIFY(window.currentFile().isEmpty());
        QCOMPARE(window.session(0)->currentMessage(), QStringLiteral("Saving FAILED"));
    }

    // The recent list drops files that have gone, with a warning, and holds a
    // document opened twice once, at the top.
    void recentFiles()
    {
        const QString other = writeDocument("other.qvn", "PortNumber=1\n");
        const QString twice = writeDocument("twice.qvn", "PortNumber=2\n");
        const QString gone = dir.filePath("gone.qvn");
        QSettings().setValue("RecentFiles", QStringList{gone, other});
        QTest::ignoreMessage(QtWarningMsg, qPrintable("Remove recent file for not exists  " + gone));
        ScriptedWindow window;
        QCOMPARE(window.recentFiles(), QStringList{other});
        for (const QString &name : {twice, other, twice}) {
            window.fileAnswer = name;
            action(window, "acFileOpen")->trigger();
        }
        QCOMPARE(window.recentFiles(), (QStringList{twice, other}));
    }

    // Documents come from other people: whatever they hold opens between 1
    // and 16 sessions with usable values.
    // Hostile documents open with sane values; what is not a document at all
    // (sessions -1) is refused with a message and the workspace stays.
    void openDocument_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<int>("sessions");
        QTest::addColumn<bool>("quickView");

        auto row = [this](const char *tag, const QByteArray &contents, int sessions, bool quickView) {
            QTest::newRow(tag) << writeDocument(QString::fromLatin1(tag) + ".qvn", contents) << sessions << quickView;
        };
        row("PortNumber absent", "ColumnNumber=2\n[0]\nBaudRate=9600\n", 1, true);
        row("three, QuickView absent", "PortNumber=3\n", 3, false);
        row("PortNumber 0", "PortNumber=0\n", 1, true);
        row("PortNumber -3", "PortNumber=-3\nColumnNumber=-1\n", 1, true);
        row("PortNumber 17", "PortNumber=17\nColumnNumber=40\n", 16, false);
        row("PortNumber 100000", "PortNumber=100000\n", 16, false);
        row("PortNumber not a number", "PortNumber=abc\nColumnNumber=x\n", 1, true);
        row("unparsable colour", "[0]\nSendTextColor=#xyz\nReceiveTextColor=blorange\n", 1, true);
        row("empty font family", "[0]\nLogFontFamily=\nLogFontSize=-4\nLogFontWeight=5000\n", 1, true);
        row("unparsable time", "[0]\nLogRotateAtTime=true\nLogRotateTime=quarter past\n", 1, true);
        row("only separators", "[0]\nLastTargetHost=-||--||-\n", 1, true);
        row("huge texts and sizes", "[0]\nRxTimeFormat=" + QByteArray(100000, 'h') + "\nLogFilePath=" + QByteArray(100000, 'x')
                + "\nLogRotateAtSize=true\nLogRotateSize=1099511627776\nDisplayBufferSize=-5\n", 1, true);
        row("negative rotation size", "[0]\nLogRotateAtSize=true\nLogRotateSize=-1\n", 1, true);
        row("binary", QByteArray("\0\xff\xfe[\x01=\x80\n\x1b", 9).repeated(455), -1, true);
        row("empty", {}, -1, true);
        row("no session in it", "export PATH=/usr/bin\n", -1, true);
        QTest::newRow("missing") << dir.filePath("missing.qvn") << -1 << true;
        QTest::newRow("folder") << dir.path() << -1 << true;
    }

    void openDocument()
    {
        QFETCH(QString, fileName);
        QFETCH(int, sessions);
        ScriptedWindow window;
        action(window, "acEditAdd")->trigger();
        QCOMPARE(window.loadFile(fileName), sessions > 0);
        if (sessions < 0) {
            QCOMPARE(window.sessionCount(), 2);
            QCOMPARE(window.boxesShown, QStringList{fileName + " is not a Quorvane session document."});
            return;
        }
        QTEST(window.sessionCount(), "sessions");
        QTEST(action(window, "acViewQuickSettings")->isChecked(), "quickView");
        QVERIFY(window.sessionsPerRow() >= 1 && window.sessionsPerRow() <= MainWindow::MaxSessions);
        for (int i = 0; i < window.sessionCount(); ++i) {
            const PortSettings &port = window.session(i)->portSettings();
            const FormatSetting &format = window.session(i)->formatSettings();
            QVERIFY(!port.lastTargetHost.contains(QString()));
            QVERIFY(!format.LogFont.family().isEmpty());
            QVERIFY(format.LogFont.pointSize() > 0);
            QVERIFY(format.RxTimeFormat.size() <= 256 && format.LogFilePath.size() <= 4096);
            QVERIFY(format.DisplayBufferSize >= 0);
            QVERIFY(!format.LogRotateAtSize || format.LogRotateSize > 0);
            QVERIFY(!format.SendTextColor.isValid() || format.SendTextColor.name().size() == 7);
        }
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
