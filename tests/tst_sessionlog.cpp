#include <QtTest>

#include <QDir>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSerialPort>

#include "session/datalog.h"
#include "session/serialportwidget.h"
#include "testsupport.h"

// The data log as the session drives it: rendering for the log, stamps,
// flushing on pause and stop, and no byte lost across rotations.
class TestSessionLog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void everyLoggedLineIsStamped();
    void displayFeedMovesTheSharedFeedTimeFirst();
    void pauseAndStopFlushAtOnce();
    void shortNameWarnsAndStopsRecording();
    void streamedBytesReachTheLogAcrossRotations();

private:
    FormatSetting loggingFormat(const QString &pattern) const;
    QString readAll(const QString &fileName) const;
    static QString withoutHeader(const QString &text);

    IsolatedEnvironment *environment = nullptr;
    QTemporaryDir *logDir = nullptr;
};

void TestSessionLog::initTestCase()
{
    environment = new IsolatedEnvironment;
}

void TestSessionLog::init()
{
    delete logDir;
    logDir = new QTemporaryDir;
    LogProcessState::instance().reset();
    LogClock::setFixed(QDateTime(QDate(2026, 3, 4), QTime(10, 20, 30)));
}

void TestSessionLog::cleanupTestCase()
{
    LogClock::setFixed(QDateTime());
    delete logDir;
    delete environment;
}

FormatSetting TestSessionLog::loggingFormat(const QString &pattern) const
{
    FormatSetting format;
    format.LogSaveFlag = true;
    format.LogFilePath = logDir->filePath(pattern);
    format.LogFileTime = "[%h:%m:%s.%z] ";
    return format;
}

QString TestSessionLog::readAll(const QString &fileName) const
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

QString TestSessionLog::withoutHeader(const QString &text)
{
    const int end = text.indexOf(QStringLiteral(" Baudrate: "));
    if (end < 0)
        return text;
    return text.mid(text.indexOf(QStringLiteral("\n\n"), end) + 2);
}

void TestSessionLog::everyLoggedLineIsStamped()
{
    SerialPortWidget session;
    FormatSetting format = loggingFormat("stamped.log");
    format.LogTimestampEnabled = true;
    session.setFormatSettings(format);
    session.start(logDir->filePath("no-such-port"));

    session.pushByteArray("first\nsecond\n", true, RX);
    session.pushByteArray("third", true, RX);
    session.displayPortBuffer();
    session.stop();

    const QStringList lines = withoutHeader(readAll(logDir->filePath("stamped.log"))).split('\n');
    QCOMPARE(lines.size(), 3);
    const QRegularExpression stamped(QStringLiteral("^\\[\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d\\] (first|second|third)$"));
    for (const QString &line : lines)
        QVERIFY2(stamped.match(line).hasMatch(), qPrintable(line));
}

void TestSessionLog::displayFeedMovesTheSharedFeedTimeFirst()
{
    SerialPortWidget session;
    FormatSetting format = loggingFormat("hex.log");
    format.ReceiveMsgFormat = HEX;
    format.AutoFeedLine = true;
    format.AutoFeedInterval = 20;
    session.setFormatSettings(format);
    session.updateDisplay();
    session.start(logDir->filePath("no-such-port"));

    session.pushByteArray("\x01", true, RX);
    session.displayPortBuffer();
    QTest::qWait(60);
    session.pushByteArray("\x02", true, RX);
    session.displayPortBuffer();
    session.stop();

    // The display broke the line; the log saw no gap and stays on one line.
    QCOMPARE(session.findChild<QPlainTextEdit *>("receiveView")->toPlainText(), QString("01 \n02 "));
    QCOMPARE(withoutHeader(readAll(logDir->filePath("hex.log"))), QString("01 02 "));
}

void TestSessionLog::pauseAndStopFlushAtOnce()
{
    SerialPortWidget session;
    session.setFormatSettings(loggingFormat("flush.log"));
    session.start(logDir->filePath("no-such-port"));
    const QString fileName = logDir->filePath("flush.log");

    session.pushByteArray("before pause", true, RX);
    session.displayPortBuffer();
    session.pause();
    QCOMPARE(withoutHeader(readAll(fileName)), QString("before pause"));

    session.start(logDir->filePath("no-such-port"));
    session.pushByteArray(" before stop", true, RX);
    session.displayPortBuffer();
    session.stop();
    QCOMPARE(withoutHeader(readAll(fileName)), QString("before pause before stop"));
}

void TestSessionLog::shortNameWarnsAndStopsRecording()
{
    SerialPortWidget session;
    FormatSetting format = loggingFormat("x");
    format.LogFilePath = "ab";
    session.setFormatSettings(format);
    session.start(logDir->filePath("no-such-port"));
    session.onSaveData();

    QVERIFY(!session.formatSettings().LogSaveFlag);
    QMessageBox *box = session.findChild<QMessageBox *>();
    QVERIFY(box);
    QCOMPARE(box->text(), QString("Please input correct log file name!"));
    QCOMPARE(box->windowTitle(), QString("Warning"));
    box->close();
}

void TestSessionLog::streamedBytesReachTheLogAcrossRotations()
{
    QUORVANE_REQUIRE_SOCAT();
    SocatPair pair;
    QVERIFY(pair.start());
    QSerialPort peer(pair.portB());
    QVERIFY(peer.open(QIODevice::ReadWrite));

    SerialPortWidget session;
    FormatSetting format = loggingFormat("stream_%h%m%s.log");
    format.LogRotateAtSize = true;
    format.LogRotateSize = 256 * 1024;
    session.setFormatSettings(format);
    QVERIFY(session.start(pair.portA()));

    QByteArray sent;
    int line = 0;
    while (sent.size() < 2 * 1024 * 1024)
        sent += QByteArray("line ") + QByteArray::number(line++).rightJustified(8, '0')
                + " the quick brown fox jumps over the lazy dog\n";

    QDateTime clock = LogClock::now();
    const int block = 16 * 1024;
    for (int offset = 0; offset < sent.size(); offset += block) {
        peer.write(sent.mid(offset, block));
        // The session reads from the event loop: keep it turning while the
        // pty drains, or both ends wait for each other.
        QDeadlineTimer drained(5000);
        while (peer.bytesToWrite() > 0 && !drained.hasExpired()) {
            peer.waitForBytesWritten(5);
            QCoreApplication::processEvents();
        }
        if ((offset / block) % 8 == 7) {
            // Far enough apart for the shared guard to allow a new file.
            clock = clock.addSecs(31);
            LogClock::setFixed(clock);
            session.onSaveData();
        }
    }
    QTRY_COMPARE_WITH_TIMEOUT(session.receivedBytes(), qint64(sent.size()), 10000);
    session.displayPortBuffer();
    session.stop();

    const QStringList files = QDir(logDir->path()).entryList({"stream_*.log"}, QDir::Files, QDir::Name);
    QVERIFY2(files.size() >= 2, qPrintable(files.join(',')));
    QByteArray logged;
    for (const QString &file : files)
        logged += withoutHeader(readAll(logDir->filePath(file))).toUtf8();
    QCOMPARE(logged.size(), sent.size());
    QVERIFY(logged == sent);
}

QTEST_MAIN(TestSessionLog)
#include "tst_sessionlog.moc"
