#include <QtTest>

#include "session/datalog.h"
#include "testsupport.h"

namespace {

const QString Session = QStringLiteral("0.0.0.0:6000");
const LogHeaderInfo Header{QStringLiteral("/dev/ttyUSB0"), 115200};

QDateTime at(int hour, int minute, int second, int msec = 0)
{
    return QDateTime(QDate(2024, 3, 7), QTime(hour, minute, second, msec));
}

QString readText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

void writeBytes(const QString &path, qint64 size)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(QByteArray(size, 'x')), size);
}

QString expectedHeader(const QString &fileName, const QDateTime &launch)
{
    return QStringLiteral("  Product: Quorvane\n"
                          "  Version: 6.0.3.0103\n"
                          "File Name: ")
        + fileName + QStringLiteral("\nLaunch at: ") + launch.toString(Qt::ISODate)
        + QStringLiteral("\nPort Name: /dev/ttyUSB0\n Baudrate: 115200\n\n");
}

} // namespace

class TestDataLog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fileNameExpansion_data();
    void fileNameExpansion();
    void stampExpansion_data();
    void stampExpansion();

    void newFileGetsHeader();
    void continuedFileGetsNoHeader();
    void sizeRotationHonoursGuard_data();
    void sizeRotationHonoursGuard();
    void timeRotationOncePerRun();
    void hourLines();
    void pendingTextOnceAcrossRotation();

    void tooShortNameStopsRecording_data();
    void tooShortNameStopsRecording();
    void recordingOffDropsText();
    void unwritableFolderKeepsText_data();
    void unwritableFolderKeepsText();
    void failedWriteKeepsText();

private:
    // Recording into "<tmp>/%S_%h%m%s.log", started at the given time.
    FormatSetting recordingFrom(const QDateTime &start) const;

    IsolatedEnvironment environment;
    QTemporaryDir dir;
};

void TestDataLog::init()
{
    LogProcessState::instance().reset();
    QVERIFY(dir.isValid());
}

void TestDataLog::cleanup()
{
    LogClock::setFixed(QDateTime());
    for (const QFileInfo &entry : QDir(dir.path()).entryInfoList(QDir::NoDotAndDotDot | QDir::AllEntries)) {
        QFile::setPermissions(entry.filePath(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        if (entry.isDir())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
}

FormatSetting TestDataLog::recordingFrom(const QDateTime &start) const
{
    LogClock::setFixed(start);
    FormatSetting format;
    format.LogSaveFlag = true;
    format.LogFilePath = dir.filePath(QStringLiteral("%S_%h%m%s.log"));
    format.currentLogFileName = expandLogFileName(format.LogFilePath, Session, LogClock::now());
    return format;
}

void TestDataLog::fileNameExpansion_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("sessionName");
    QTest::addColumn<QString>("expanded");

    QTest::newRow("session") << "%S.log" << "COM3" << "COM3.log";
    QTest::newRow("tcp server name") << "%S.log" << "0.0.0.0:6000" << "0.0.0.0:6000.log";
    QTest::newRow("device path kept literally") << "%S.log" << "/dev/ttyUSB0" << "/dev/ttyUSB0.log";
    QTest::newRow("year") << "%Y" << "" << "2004";
    QTest::newRow("short year") << "%y" << "" << "04";
    QTest::newRow("month") << "%M" << "" << "03";
    QTest::newRow("day") << "%D" << "" << "07";
    QTest::newRow("hour") << "%h" << "" << "09";
    QTest::newRow("minute") << "%m" << "" << "05";
    QTest::newRow("second") << "%s" << "" << "04";
    QTest::newRow("milliseconds") << "%z" << "" << "007";
    QTest::newRow("all together") << "log/%S_%Y%M%D-%h%m%s.%z.txt" << "A"
                                  << "log/A_20040307-090504.007.txt";
    QTest::newRow("percent in session name not expanded") << "%S" << "%Y%h" << "%Y%h";
    QTest::newRow("unknown placeholder kept") << "%x%q.log" << "A" << "%x%q.log";
    QTest::newRow("trailing percent kept") << "a%" << "A" << "a%";
}

void TestDataLog::fileNameExpansion()
{
    QFETCH(QString, pattern);
    QFETCH(QString, sessionName);
    QFETCH(QString, expanded);
    // 2004, so that the two-digit year shows its zero padding.
    QCOMPARE(expandLogFileName(pattern, sessionName, QDateTime(QDate(2004, 3, 7), QTime(9, 5, 4, 7))),
             expanded);
}

void TestDataLog::stampExpansion_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("expanded");

    QTest::newRow("default pattern") << "[%h:%m:%s.%z] " << "[09:05:04.007] ";
    QTest::newRow("date fields are not stamp fields") << "%Y %D %S %h" << "%Y %D %S 09";
}

void TestDataLog::stampExpansion()
{
    QFETCH(QString, pattern);
    QFETCH(QString, expanded);
    QCOMPARE(expandLogStamp(pattern, QTime(9, 5, 4, 7)), expanded);
}

void TestDataLog::newFileGetsHeader()
{
    FormatSetting format = recordingFrom(at(10, 0, 0));
    DataLog log;
    log.appendLog(QStringLiteral("Grüße 25 °C\n"));

    QCOMPARE(log.save(format, Session, Header), DataLog::Written);
    QCOMPARE(format.currentLogFileName, dir.filePath(QStringLiteral("0.0.0.0:6000_100000.log")));
    QCOMPARE(readText(format.currentLogFileName),
             expectedHeader(format.currentLogFileName, at(10, 0, 0)) + QStringLiteral("Grüße 25 °C\n"));
    QVERIFY(log.pendingText().isEmpty());
    QVERIFY(log.lastErrorString().isEmpty());
}

void TestDataLog::continuedFileGetsNoHeader()
{
    FormatSetting format = recordingFrom(at(10, 0, 0));
    writeBytes(format.currentLogFileName, 10);
    DataLog log;
    log.appendLog(QStringLiteral("one\n"));
    QCOMPARE(log.save(format, Session, Header), DataLog::Written);
    LogClock::setFixed(at(10, 0, 5));
    log.appendLog(QStringLiteral("two\n"));
    QCOMPARE(log.save(format, Session, Header), DataLog::Written);

    QCOMPARE(readText(format.currentLogFileName), QStringLiteral("xxxxxxxxxxone\ntwo\n"));
}

void TestDataLog::sizeRotationHonoursGuard_data()
{
    QTest::addColumn<int>("otherFileAgeSecs"); // -1: no other file made in this run
    QTest::addColumn<bool>("rotates");

    QTest::newRow("no file made yet") << -1 << true;
    QTest::newRow("other file 10 s ago") << 10 << false;
    QTest::newRow("other file 30 s ago") << 30 << false;
    QTest::newRow("other file 31 s ago") << 31 << true;
}

void TestDataLog::sizeRotationHonoursGuard()
{
    QFETCH(int, otherFileAgeSecs);
    QFETCH(bool, rotates);
    const QDateTime tick = at(10, 0, 40);

    if (otherFileAgeSecs >= 0) {
        FormatSetting other = recordingFrom(tick.addSecs(-otherFileAgeSecs));
        other.LogFilePath = dir.filePath(QStringLiteral("other_%h%m%s.log"));
        other.currentLogFileName = dir.filePath(QStringLiteral("missing.log"));
        QCOMPARE(DataLog().save(other, QStringLiteral("other"), Header), DataLog::Written);
    }

    FormatSetting format = recordingFrom(at(10, 0, 0));
    format.LogRotateAtSize = true;
    format.LogRotateSize = 1000;
    const QString full = format.currentLogFileName;
    writeBytes(full, 1001);

    LogClock::setFixed(tick);
    DataLog log;
    log.appendLog(QStringLiteral("data\n"));
    QCOMPARE(log.save(format, Session, Header), DataLog::Written);

    if (rotates) {
        QCOMPARE(format.currentLogFileName, dir.filePath(QStringLiteral("0.0.0.0:6000_100040.log")));
        QCOMPARE(QFileInfo(full).size(), 1001);
        QCOMPARE(readText(format.currentLogFileName),
                 expectedHeader(format.currentLogFileName, tick) + QStringLiteral("data\n"));
    } else {
        QCOMPARE(format.currentLogFileName, full);
        QCOMPARE(readText(full), QString(1001, QLatin1Char('x')) + QStringLiteral("data\n"));
    }
}

void TestDataLog::timeRotationOncePerRun()
{
    FormatSetting format = recordingFrom(at(10, 0, 0));
    format.LogRotateAtTime = true;
    format.LogRotateTime = QTime(9, 0);
    format.currentLogFileName = dir.filePath(QStringLiteral("yesterday.log"));
    writeBytes(format.currentLogFileName, 5);

    DataLog log;
    QCOMPARE(log.save(format, Session, Header), DataLog::Written);
    const QString rotated = dir.filePath(QStringLiteral("0.0.0.0:6000_100000.log"));
    QCOMPARE(format.currentLogFileName, rotated);

    for (const QDateTime &tick : {at(10, 1, 0), at(23, 59, 59)}) {
        LogClock::setFixed(tick);
        QCOMPARE(log.save(format, Session, Header), DataLog::Written);
        QCOMPARE(format.currentLogFileName, rotated);
    }
    QCOMPARE(QFileInfo(dir.filePath(QStringLiteral("yesterday.log"))).size(), 5);
}

void TestDataLog::hourLines()
{
    FormatSetting format = recordingFrom(at(9, 59, 50));
    format.NeedHourTimeStamp = true;
    DataLog log;
    QCOMPARE(log.save(format, Session, Header), DataLog::Written);
    const qint64 headerSize = QFileInfo(format.currentLogFileName).size();

    for (const QDateTime &tick : {at(10, 0, 5), at(10, 0, 45), at(10, 30, 0), at(11, 0, 10), at(11, 0, 50)}) {
        LogClock::setFixed(tick);
        log.appendLog(QLatin1Char('|') + tick.time().toString());
        QCOMPARE(log.save(format, Session, Header), DataLog::Written);
    }

    QCOMPARE(readText(format.currentLogFileName).mid(headerSize),
             QStringLiteral("\nCurrent Time: 2024-03-07T10:00:05|10:00:05|10:00:45|10:30:00"
                            "\nCurrent Time: 2024-03-07T11:00:10|11:00:10|11:00:50"));
}

void TestDataLog::pendingTextOnceAcrossRotation()
{
    FormatSetting format = recordingFrom(at(10, 0, 0));
    format.LogRotateAtSize = true;
    format.LogRotateSize = 1000;
    DataLog log;
    log.appendLog(QStringLiteral("first\n"));
    QCOMPARE(log.save(format, Session, Header), DataLog::Written);
    const QString firstFile = format.currentLogFileName;
    const QString firstText = readText(firstFile);

    log.appendLog(QString(1000, QLatin1Char('a')));
    LogClock::setFixed(at(10, 0, 5));
    QCOMPARE(log.save(format, Session, Header), DataLog::Written); // guard: same file
    QCOMPARE(format.currentLogFileName, firstFile);

    log.appendLog(QStringLiteral("second\n"));
    LogClock::setFixed(at(10, 1, 0));
    QCOMPARE(log.save(format, Session, Header), DataLog::Written);
    QVERIFY(format.currentLogFileName != firstFile);

    QCOMPARE(readText(firstFile), firstText + QString(1000, QLatin1Char('a')));
    QCOMPARE(readText(format.currentLogFileName),
             expectedHeader(format.currentLogFileName, at(10, 1, 0)) + QStringLiteral("second\n"));
}

void TestDataLog::tooShortNameStopsRecording_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("empty") << "";
    QTest::newRow("two characters") << "ab";
}

void TestDataLog::tooShortNameStopsRecording()
{
    QFETCH(QString, fileName);
    FormatSetting format = recordingFrom(at(10, 0, 0));
    format.currentLogFileName = fileName;
    DataLog log;
    log.appendLog(QStringLiteral("kept"));

    QCOMPARE(log.save(format, Session, Header), DataLog::NameTooShort);
    QVERIFY(!format.LogSaveFlag);
    QCOMPARE(format.currentLogFileName, fileName);
    QCOMPARE(log.pendingText(), QStringLiteral("kept"));
    QVERIFY(QDir(dir.path()).isEmpty());
}

void TestDataLog::recordingOffDropsText()
{
    FormatSetting format = recordingFrom(at(10, 0, 0));
    format.LogSaveFlag = false;
    DataLog log;
    log.appendLog(QStringLiteral("unrecorded"));

    QCOMPARE(log.save(format, Session, Header), DataLog::Disabled);
    QVERIFY(log.pendingText().isEmpty());
    QVERIFY(QDir(dir.path()).isEmpty());
}

void TestDataLog::unwritableFolderKeepsText_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::newRow("missing folder") << "missing";
    QTest::newRow("read-only folder") << "read-only";
    QTest::newRow("file in place of the folder") << "file";
}

void TestDataLog::unwritableFolderKeepsText()
{
    QFETCH(QString, obstacle);
    const QString folder = dir.filePath(QStringLiteral("logs"));
    if (obstacle == QLatin1String("read-only")) {
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        QFile probe(folder + QStringLiteral("/probe"));
        if (probe.open(QIODevice::WriteOnly))
            QSKIP("folder permissions are not enforced for this user");
    } else if (obstacle == QLatin1String("file")) {
        writeBytes(folder, 1);
    }

    FormatSetting format = recordingFrom(at(10, 0, 0));
    format.LogFilePath = folder + QStringLiteral("/%S_%h%m%s.log");
    format.currentLogFileName = expandLogFileName(format.LogFilePath, Session, LogClock::now());
    DataLog log;
    log.appendLog(QStringLiteral("one\n"));
    QCOMPARE(log.save(format, Session, Header), DataLog::OpenFailed);
    QVERIFY(log.lastErrorString().contains(format.currentLogFileName));
    LogClock::setFixed(at(10, 0, 5));
    log.appendLog(QStringLiteral("two\n"));
    QCOMPARE(log.save(format, Session, Header), DataLog::OpenFailed);
    QCOMPARE(log.pendingText(), QStringLiteral("one\ntwo\n"));

    if (obstacle == QLatin1String("read-only"))
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    else {
        QFile::remove(folder);
        QVERIFY(QDir().mkdir(folder));
    }
    LogClock::setFixed(at(10, 0, 10));
    log.appendLog(QStringLiteral("three\n"));
    QCOMPARE(log.save(format, Session, Header), DataLog::Written);
    LogClock::setFixed(at(10, 0, 15));
    QCOMPARE(log.save(format, Session, Header), DataLog::Written);

    QVERIFY(log.pendingText().isEmpty());
    QVERIFY(log.lastErrorString().isEmpty());
    QCOMPARE(QDir(folder).entryList(QDir::Files).size(), 1);
    QCOMPARE(readText(format.currentLogFileName),
             expectedHeader(format.currentLogFileName, at(10, 0, 10)) + QStringLiteral("one\ntwo\nthree\n"));
}

void TestDataLog::failedWriteKeepsText()
{
    const QString deviceFull = QStringLiteral("/dev/full");
    if (!QFileInfo::exists(deviceFull))
        QSKIP("no device that reports a full disk");
    FormatSetting format = recordingFrom(at(10, 0, 0));
    format.currentLogFileName = deviceFull;
    DataLog log;
    log.appendLog(QStringLiteral("pending"));

    QCOMPARE(log.save(format, Session, Header), DataLog::WriteFailed);
    QCOMPARE(log.pendingText(), QStringLiteral("pending"));
    QVERIFY(log.lastErrorString().contains(deviceFull));
    QCOMPARE(format.currentLogFileName, deviceFull);
}

QTEST_GUILESS_MAIN(TestDataLog)
#include "tst_datalog.moc"
