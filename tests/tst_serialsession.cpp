#include <QtTest>

#include <QPlainTextEdit>
#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QSpinBox>
#include <QSerialPort>

#include "send/filesender.h"
#include "session/serialportwidget.h"
#include "view/receiveview.h"
#include "testsupport.h"

// A port session against a real virtual serial pair: the session opens one
// end, the test plays the device on the other.
class TestSerialSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); }

    void init()
    {
        QUORVANE_REQUIRE_SOCAT();
        pair = std::make_unique<SocatPair>();
        QVERIFY2(pair->start(), "socat did not create the pty pair");
        session = std::make_unique<SerialPortWidget>();
        peer = std::make_unique<QSerialPort>(pair->portB());
        QVERIFY(peer->open(QIODevice::ReadWrite));
        QVERIFY(session->start(pair->portA()));
        QVERIFY(session->serialPort()->isOpen());
        QCOMPARE(session->runState(), int(Running));
    }

    void cleanup() { session.reset(); peer.reset(); pair.reset(); }

    // A file arrives whole and counts as sent; Cancel halfway stops it with
    // exactly the bytes sent so far delivered.
    void sendFile_data()
    {
        QTest::addColumn<bool>("cancelHalfway");
        QTest::newRow("whole") << false;
        QTest::newRow("cancel halfway") << true;
    }

    void sendFile()
    {
        QFETCH(bool, cancelHalfway);
        QByteArray data;
        for (int i = 0; i < 300 * 1024; ++i)
            data += char(i * 7 + i / 256);
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write(data);
        file.close();

        auto *sender = session->findChild<FileSender *>();
        QVERIFY(sender);
        if (cancelHalfway) {
            connect(sender, &FileSender::progressed, sender, [sender](qint64 sent, qint64 total) {
                if (sent >= total / 2)
                    sender->cancel();
            });
        }
        QByteArray received;
        connect(peer.get(), &QSerialPort::readyRead, this, [&] { received += peer->readAll(); });
        QSignalSpy finished(sender, &FileSender::finished);
        QVERIFY(sender->start(file.fileName()));
        QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 30000);
        QCOMPARE(finished.at(0).at(0).toBool(), !cancelHalfway);
        QCOMPARE(sender->sentBytes() < data.size(), cancelHalfway);
        QTRY_COMPARE_WITH_TIMEOUT(received.size(), sender->sentBytes(), 5000);
        QCOMPARE(received, data.left(sender->sentBytes()));
        QCOMPARE(session->sentBytes(), sender->sentBytes());
    }

    // End to end: every byte in order in the view and in the Rx counter.
    void peerBytesReachTheView()
    {
        QByteArray sent;
        for (int i = 0; i < 20; ++i)
            sent += QByteArray("line ") + QByteArray::number(i) + " <&>\n";
        writePeer(sent);
        QTRY_COMPARE_WITH_TIMEOUT(viewText(), QString::fromLatin1(sent), 3000);
        QTRY_COMPARE(session->rxStatusText(), QStringLiteral("Rx: %L1 Bytes").arg(sent.size()));
    }

    // The held bytes are kept and delivered again on the next resume.
    void pauseHoldsAndResumeDelivers()
    {
        session->pause();
        writePeer("AB");
        QTest::qWait(200);
        QCOMPARE(viewText(), QString());
        session->start();
        QTRY_COMPARE(viewText(), QString("AB"));

        session->pause();
        writePeer("C");
        QTest::qWait(200);
        session->start();
        QTRY_COMPARE(viewText(), QString("ABABC"));
    }

    // A failed open still leaves the session running, with the port shown closed.
    void missingPortReportsOpenFailed()
    {
        SerialPortWidget other;
        other.start(pair->portA() + QStringLiteral("-missing"));
        QVERIFY(!other.serialPort()->isOpen());
        QVERIFY(other.hasNewError());
        const QString error = other.serialPort()->errorString();
        QVERIFY(other.lastErrorText().endsWith(QStringLiteral("OPEN FAILED! ERROR: ") + error));
        QCOMPARE(other.runState(), int(Running));
        QTRY_VERIFY(other.connectionStatusText().contains(QStringLiteral("CLOSED")));
    }

    void startingAnOpenPortChangesNothing()
    {
        QVERIFY(session->serialPort()->setBaudRate(19200));
        session->clearNewError();
        QVERIFY(session->start(pair->portA()));
        QCOMPARE(session->serialPort()->baudRate(), 19200);
        QVERIFY(!session->hasNewError());
    }

    // A vanished device closes the port calmly (its errors stop) and says
    // why. With reconnecting on, the device is waited for and reopened with
    // the session's settings, the loss marked once; Stop ends the waiting.
    // Either way the traffic before it stays in view and log.
    void unpluggedDevice_data()
    {
        QTest::addColumn<bool>("reconnect");
        QTest::addColumn<bool>("stopWhileWaiting");
        QTest::addColumn<QString>("markers");
        const QString lost = "--- disconnected \\d\\d:\\d\\d:\\d\\d ---\n";
        const QString back = "--- reconnected \\d\\d:\\d\\d:\\d\\d ---\n";
        QTest::newRow("reconnect off") << false << false << QString();
        QTest::newRow("replugged") << true << false << lost + back;
        QTest::newRow("stopped while waiting") << true << true << lost;
    }

    void unpluggedDevice()
    {
        QFETCH(bool, reconnect);
        QFETCH(bool, stopWhileWaiting);
        QFETCH(QString, markers);
        const QString logFile = logDir.filePath(QTest::currentDataTag() + QStringLiteral(".log"));
        session->stop();
        FormatSetting format = session->formatSettings();
        format.LogSaveFlag = true;
        format.LogFilePath = logFile;
        session->setFormatSettings(format);
        child<QComboBox>("baudRateModeBox")->setCurrentText("115200");
        child<QCheckBox>("autoReconnectBox")->setChecked(reconnect);
        QVERIFY(session->start(pair->portA()));
        writePeer("before\n");
        QTRY_COMPARE(viewText(), QString("before\n"));

        QSignalSpy errors(session->serialPort(), &QSerialPort::errorOccurred);
        peer.reset();
        pair->kill();
        QTRY_VERIFY_WITH_TIMEOUT(!session->serialPort()->isOpen(), 3000);
        QVERIFY(session->hasNewError());
        const QString status = reconnect ? pair->portA() + " waiting for device..." : "CLOSED";
        QTRY_VERIFY(session->connectionStatusText().contains(status));
        const int settled = errors.count();
        QTest::qWait(300);
        QVERIFY2(errors.count() - settled < 5, qPrintable(QString::number(errors.count() - settled)));
        QVERIFY2(settled < 1000, qPrintable(QString::number(settled)));

        if (stopWhileWaiting)
            session->stop();
        QVERIFY(pair->start());
        const bool reopens = reconnect && !stopWhileWaiting;
        QCOMPARE(QTest::qWaitFor([this] { return session->serialPort()->isOpen(); }, 2000), reopens);
        if (!reopens) {
            QTRY_VERIFY(session->connectionStatusText().contains("CLOSED"));
            session->stop();
            QVERIFY(session->start(pair->portA()));
        }
        QCOMPARE(session->serialPort()->baudRate(), 115200);
        peer = std::make_unique<QSerialPort>(pair->portB());
        QVERIFY(peer->open(QIODevice::ReadWrite));
        writePeer("after\n");
        QTRY_VERIFY(viewText().endsWith("after\n"));
        session->stop();

        // The log has its header before the traffic.
        const QRegularExpression traffic("(^|\n\n)before\n" + markers + "after\n$");
        QVERIFY2(traffic.match(viewText()).hasMatch(), qPrintable(viewText()));
        QFile log(logFile);
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QString logged = QString::fromUtf8(log.readAll());
        QVERIFY2(traffic.match(logged).hasMatch(), qPrintable(logged));
    }

    // Sent data is shown as sent chunks and counted.
    void autoSendWholeTextUntilUnchecked()
    {
        child<QCheckBox>("displaySendBox")->setChecked(true);
        QTest::qWait(60);   // the refresh tick takes the panel's checks
        child<QPlainTextEdit>("textEdit")->setPlainText("ping");
        child<QSpinBox>("sendIntervelSB")->setValue(30);
        child<QCheckBox>("autoSendBox")->click();
        QByteArray received = readPeer(18);
        QCOMPARE(received.left(18), QByteArray("ping\r\nping\r\nping\r\n"));

        child<QCheckBox>("autoSendBox")->click();
        received += readPeer(INT_MAX, 300);
        QCOMPARE(readPeer(1, 300), QByteArray());
        QTRY_COMPARE(session->txStatusText(), QStringLiteral("Tx: %L1 Bytes").arg(received.size()));
        QCOMPARE(viewText(), QString("ping\n").repeated(received.size() / 6));
    }

    // Ticks by hand: a timer too slow to fire keeps the order exact. An edited
    // text continues at the line index modulo its new line count.
    void autoSendLineByLine()
    {
        auto *editor = child<QPlainTextEdit>("textEdit");
        editor->setPlainText("1\n2\n3");
        child<QCheckBox>("cbLinebyLine")->setChecked(true);
        child<QSpinBox>("sendIntervelSB")->setValue(100000);
        child<QCheckBox>("autoSendBox")->click();
        for (int tick = 0; tick < 5; ++tick)
            session->onSendData();
        QCOMPARE(readPeer(15), QByteArray("1\r\n2\r\n3\r\n1\r\n2\r\n"));

        editor->setPlainText("a\nb\nc\nd");
        session->onSendData();   // index 2 of 4
        editor->setPlainText("x\ny");
        session->onSendData();   // index 3 modulo 2
        QCOMPARE(readPeer(6), QByteArray("c\r\ny\r\n"));
    }

    void keyboardSendsInTextModeOnly()
    {
        session->show();
        QVERIFY(QTest::qWaitForWindowExposed(session.get()));
        session->activateWindow();
        auto *view = session->receiveView();
        view->setFocus();
        QTRY_VERIFY(view->hasFocus());
        QTest::keyClick(view, Qt::Key_A, Qt::NoModifier);
        QCOMPARE(readPeer(1), QByteArray("a"));

        child<QRadioButton>("hexSendRadio")->setChecked(true);
        QTest::qWait(60);   // the refresh tick takes the panel's send format
        QTest::keyClick(view, Qt::Key_B, Qt::NoModifier);
        QCOMPARE(readPeer(1, 300), QByteArray());
    }

private:
    template<typename T> T *child(const char *name) { return session->findChild<T *>(QString::fromLatin1(name)); }
    QString viewText() { return session->receiveView()->toPlainText(); }
    // What the peer reads until it has count bytes or the time is up.
    QByteArray readPeer(int count, int timeout = 3000)
    {
        QByteArray bytes;
        (void)QTest::qWaitFor([&] { return (bytes += peer->readAll()).size() >= count; }, timeout);
        return bytes;
    }

    void writePeer(const QByteArray &bytes) { peer->write(bytes); peer->waitForBytesWritten(1000); }

    IsolatedEnvironment environment;
    QTemporaryDir logDir;
    std::unique_ptr<SocatPair> pair;
    std::unique_ptr<SerialPortWidget> session;
    std::unique_ptr<QSerialPort> peer;
};

QTEST_MAIN(TestSerialSession)
#include "tst_serialsession.moc"
