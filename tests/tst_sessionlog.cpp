#include <QtTest>

#include <QDir>
#include <QMessageBox>
#include <QSerialPort>

#include "session/datalog.h"
#include "session/serialportwidget.h"
#include "view/receiveview.h"
#include "testsupport.h"

// The data log as the session drives it: rendering for the log, stamps,
// flushing on pause and stop, and no byte lost across rotations.
class TestSessionLog : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        logDir = std::make_unique<QTemporaryDir>();
        LogProcessState::instance().reset();
        LogClock::setFixed(QDateTime(QDate(2026, 3, 4), QTime(10, 20, 30)));
        session = std::make_unique<SerialPortWidget>();
    }

    void cleanup() { session.reset(); }

    // Pause and stop write the log at once, with every line of a multi-line
    // chunk stamped.
    void pauseAndStopFlushStampedLines()
    {
        FormatSetting format = loggingFormat("stamped.log");
        format.LogTimestampEnabled = true;
        startWithoutPort(format);
        show("first\nsecond\n");
        session->pause();
        QCOMPARE(logged("stamped.log").count('\n'), 2);
        session->start(logDir->filePath("no-such-port"));
        show("third");
        session->stop();

        const QStringList lines = logged("stamped.log").split('\n');
        QCOMPARE(lines.size(), 3);
        const QRegularExpression stamped(QStringLiteral("^\\[\\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] (first|second|third)$"));
        for (const QString &line : lines)
            QVERIFY2(stamped.match(line).hasMatch(), qPrintable(line));
    }

    // The display broke the line after the gap; the log saw no gap, so it stays
    // on one line.
    void displayFeedMovesTheSharedFeedTimeFirst()
    {
        FormatSetting format = loggingFormat("hex.log");
        format.ReceiveMsgFormat = HEX;
        format.AutoFeedLine = true;
        format.AutoFeedInterval = 20;
        startWithoutPort(format);
        show("\x01");
        QTest::qWait(60);
        show("\x02");
        session->stop();
        QCOMPARE(session->receiveView()->toPlainText(), QString("01 \n02 "));
        QCOMPARE(logged("hex.log"), QString("01 02 "));
    }

    void shortNameWarnsAndStopsRecording()
    {
        FormatSetting format = loggingFormat("x");
        format.LogFilePath = "ab";
        startWithoutPort(format);
        session->onSaveData();
        QVERIFY(!session->formatSettings().LogSaveFlag);
        QMessageBox *box = session->findChild<QMessageBox *>();
        QVERIFY(box);
        QCOMPARE(box->text(), QString("Please input correct log file name!"));
    }

    // A network session's default name lands as one file in the chosen
    // folder; a folder that is missing shows in red until it exists.
    void networkSessionLogsIntoItsFolder()
    {
        const QString folder = logDir->filePath(QStringLiteral("logs"));
        FormatSetting format = loggingFormat(QStringLiteral("logs/%S.log"));
        session->setFormatSettings(format);
        session->updateDisplay();
        session->setPortName(QStringLiteral("TCP/UDP"));
        QVERIFY(session->start());
        show("kept\n");
        session->onSaveData();
        QVERIFY(session->hasLogProblem());
        QVERIFY(session->logFileText().contains(QStringLiteral("color")));
        QVERIFY(QDir().mkdir(folder));
        session->onSaveData();
        QVERIFY(!session->hasLogProblem());
        QCOMPARE(session->logFileText(), folder + QStringLiteral("/TCP_UDP.log"));
        QCOMPARE(logged(QStringLiteral("logs/TCP_UDP.log")), QStringLiteral("kept\n"));
    }

    // A raw log holds exactly the received bytes (and the sent ones when
    // chosen), and never writes into a file that was there before.
    void rawLogIsByteExact_data()
    {
        QTest::addColumn<bool>("withSent");
        QTest::newRow("received only") << false;
        QTest::newRow("with sent") << true;
    }

    void rawLogIsByteExact()
    {
        QFETCH(bool, withSent);
        FormatSetting format = loggingFormat(QStringLiteral("raw.bin"));
        format.RawLog = true;
        format.RawLogSent = withSent;
        startWithoutPort(format);
        QByteArray all;
        for (int i = 0; i < 256; ++i)
            all += char(i);
        all += "caf\xC3\xA9\r\n";
        QByteArray expected;
        for (qsizetype at = 0; at < all.size(); at += 7) {
            const QByteArray piece = all.mid(at, 7);
            session->pushByteArray(piece, true, RX);
            session->pushByteArray("<sent>", false, TX);
            expected += piece + (withSent ? "<sent>" : "");
        }
        session->displayPortBuffer();
        session->onSaveData();
        QFile file(logDir->filePath(QStringLiteral("raw.bin")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), expected);

        session->stop();
        FormatSetting other = loggingFormat(QStringLiteral("raw.bin"));
        other.RawLog = true;
        session = std::make_unique<SerialPortWidget>();
        startWithoutPort(other);
        show("more");
        session->onSaveData();
        QVERIFY(session->hasLogProblem());
        QCOMPARE(QFileInfo(file).size(), expected.size());
    }

    void streamedBytesReachTheLogAcrossRotations()
    {
        QUORVANE_REQUIRE_SOCAT();
        SocatPair pair;
        QVERIFY(pair.start());
        QSerialPort peer(pair.portB());
        QVERIFY(peer.open(QIODevice::ReadWrite));

        FormatSetting format = loggingFormat("stream_%h%m%s.log");
        format.LogRotateAtSize = true;
        format.LogRotateSize = 256 * 1024;
        session->setFormatSettings(format);
        QVERIFY(session->start(pair.portA()));

        QByteArray sent;
        for (int line = 0; sent.size() < 2 * 1024 * 1024; ++line)
            sent += "line " + QByteArray::number(line).rightJustified(8, '0') + " the quick brown fox\n";

        const int block = 16 * 1024;
        for (int offset = 0; offset < sent.size(); offset += block) {
            peer.write(sent.mid(offset, block));
            // The session reads from the event loop: keep it turning while
            // the pty drains, or both ends wait for each other.
            QVERIFY(QTest::qWaitFor([&] { peer.waitForBytesWritten(5); return peer.bytesToWrite() == 0; }));
            if ((offset / block) % 8 == 7) {
                // Far enough apart for the shared guard to allow a new file.
                LogClock::setFixed(LogClock::now().addSecs(31));
                session->onSaveData();
            }
        }
        QTRY_COMPARE_WITH_TIMEOUT(session->receivedBytes(), qint64(sent.size()), 10000);
        session->displayPortBuffer();
        session->stop();

        const QStringList files = QDir(logDir->path()).entryList({"stream_*.log"}, QDir::Files, QDir::Name);
        QVERIFY2(files.size() >= 2, qPrintable(files.join(',')));
        QByteArray inFiles;
        for (const QString &file : files)
            inFiles += logged(file).toUtf8();
        QCOMPARE(inFiles.size(), sent.size());
        QVERIFY(inFiles == sent);
    }

private:
    FormatSetting loggingFormat(const QString &pattern) const
    {
        FormatSetting format;
        format.LogSaveFlag = true;
        format.LogFilePath = logDir->filePath(pattern);
        format.LogFileTime = "[%h:%m:%s.%z] ";
        return format;
    }

    // A session with no port: chunks are pushed straight into its pipeline.
    void startWithoutPort(const FormatSetting &format)
    {
        session->setFormatSettings(format);
        session->updateDisplay();
        session->start(logDir->filePath("no-such-port"));
    }

    void show(const QByteArray &data)
    {
        session->pushByteArray(data, true, RX);
        session->displayPortBuffer();
    }

    // The logged text of a file, after its header.
    QString logged(const QString &fileName) const
    {
        QFile file(logDir->filePath(fileName));
        const QString text = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        const int end = text.indexOf(QStringLiteral(" Baudrate: "));
        return end < 0 ? text : text.mid(text.indexOf(QStringLiteral("\n\n"), end) + 2);
    }

    IsolatedEnvironment environment;
    std::unique_ptr<QTemporaryDir> logDir;
    std::unique_ptr<SerialPortWidget> session;
};

QTEST_MAIN(TestSessionLog)
#include "tst_sessionlog.moc"
