#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include "app/sessiondocument.h"
#include "testsupport.h"

class TestSessionDocument : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void roundTripKeepsRecords();
    void roundTripDropsIntegerFlagsAndRotation();
    void handWrittenFlagsAndRotationAreHonoured();
    void layout_data();
    void layout();
    void hosts_data();
    void hosts();
    void progress_data();
    void progress();

private:
    QString document(const QByteArray &contents = {});

    IsolatedEnvironment environment;
    QTemporaryDir dir;
    int documents = 0;
};

void TestSessionDocument::initTestCase()
{
    QVERIFY(dir.isValid());
}

void TestSessionDocument::init()
{
    ++documents;
}

QString TestSessionDocument::document(const QByteArray &contents)
{
    const QString name = dir.filePath(QStringLiteral("doc%1.qvn").arg(documents));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot create %s", qPrintable(name));
    file.write(contents);
    return name;
}

static void sampleRecords(PortSettings &port, FormatSetting &format)
{
    port.connMode = TcpClientMode;
    port.name = QStringLiteral("cu.usbserial");
    port.baudRate = 115200;
    port.dataBits = 7;
    port.parity = 2;
    port.stopBits = 2;
    port.flowControl = 1;
    port.lastTargetPort = 4321;
    port.lastTargetHost = {QStringLiteral("10.0.0.2"), QStringLiteral("example.org")};
    format.ReceiveMsgFormat = HEX;
    format.SendMsgFormat = HEX;
    format.AutoFeedLine = true;
    format.AutoFeedInterval = 75;
    format.RxTimeFormat = QStringLiteral("[R]hh");
    format.SendInterval = 300000;
    format.SendTimeUnit = UnitMinutes;
    format.SendList = {QStringLiteral("AT"), QStringLiteral("AT+RST"), QStringLiteral("a,b")};
    format.LogFilePath = QStringLiteral("/tmp/%S_%D.log");
    format.DisplayBufferSize = 3 << 20;
    format.LogFont = QFont(QStringLiteral("Courier"), 15, QFont::Bold);
    format.SendTextColor = QColor(QStringLiteral("#12abef"));
    format.ReceiveTextColor = QColor(QStringLiteral("#fe0102"));
}

void TestSessionDocument::roundTripKeepsRecords()
{
    PortSettings port;
    FormatSetting format;
    sampleRecords(port, format);
    const QString name = document();
    {
        QSettings file(name, QSettings::IniFormat);
        SessionDocument::writeSession(file, 3, port, format);
        QVERIFY(SessionDocument::flushed(file));
    }
    PortSettings readPort;
    FormatSetting readFormat;
    SessionDocument::readSession(QSettings(name, QSettings::IniFormat), 3, readPort, readFormat);

    QCOMPARE(readPort.connMode, port.connMode);
    QCOMPARE(readPort.name, port.name);
    QCOMPARE(readPort.baudRate, 115200);
    QCOMPARE(readPort.dataBits, 7);
    QCOMPARE(readPort.parity, 2);
    QCOMPARE(readPort.stopBits, 2);
    QCOMPARE(readPort.flowControl, 1);
    QCOMPARE(readPort.lastTargetPort, 4321);
    QCOMPARE(readPort.lastTargetHost, port.lastTargetHost);
    QCOMPARE(readFormat.ReceiveMsgFormat, HEX);
    QCOMPARE(readFormat.SendMsgFormat, HEX);
    QCOMPARE(readFormat.AutoFeedLine, true);
    QCOMPARE(readFormat.AutoFeedInterval, 75);
    QCOMPARE(readFormat.RxTimeFormat, format.RxTimeFormat);
    QCOMPARE(readFormat.SendInterval, 300000);
    QCOMPARE(readFormat.SendTimeUnit, int(UnitMinutes));
    QCOMPARE(readFormat.SendList, format.SendList);
    QCOMPARE(readFormat.LogFilePath, format.LogFilePath);
    QCOMPARE(readFormat.DisplayBufferSize, 3 << 20);
    QCOMPARE(readFormat.LogFont.family(), QStringLiteral("Courier"));
    QCOMPARE(readFormat.LogFont.pointSize(), 15);
    QCOMPARE(readFormat.LogFont.weight(), QFont::Bold);
    QCOMPARE(readFormat.SendTextColor, format.SendTextColor);
    QCOMPARE(readFormat.ReceiveTextColor, format.ReceiveTextColor);
    QCOMPARE(readFormat.AutoAddFeedLine, true);
}

// Booleans are written as words but these flags are read as numbers, and the
// rotation options are never written at all.
void TestSessionDocument::roundTripDropsIntegerFlagsAndRotation()
{
    PortSettings port;
    FormatSetting format;
    format.DisplaySendMsg = format.DisplayMsgTime = format.AutoSend = format.SupportComment = true;
    format.FormatSend = format.LogSaveFlag = format.FormatDisplayColor = true;
    format.LogRotateAtSize = format.LogRotateAtTime = format.NeedHourTimeStamp = true;
    format.LogRotateSize = 5 << 20;
    format.LogRotateTime = QTime(3, 4, 5);
    const QString name = document();
    {
        QSettings file(name, QSettings::IniFormat);
        SessionDocument::writeSession(file, 0, port, format);
    }
    FormatSetting readFormat = format;
    SessionDocument::readSession(QSettings(name, QSettings::IniFormat), 0, port, readFormat);
    for (bool flag : {readFormat.DisplaySendMsg, readFormat.DisplayMsgTime, readFormat.AutoSend,
                      readFormat.SupportComment, readFormat.FormatSend, readFormat.LogSaveFlag,
                      readFormat.FormatDisplayColor, readFormat.LogRotateAtSize, readFormat.LogRotateAtTime,
                      readFormat.NeedHourTimeStamp})
        QVERIFY(!flag);
    QCOMPARE(readFormat.LogRotateSize, 0);
    QVERIFY(!readFormat.LogRotateTime.isValid());
}

void TestSessionDocument::handWrittenFlagsAndRotationAreHonoured()
{
    const QString name = document("[0]\nDisplaySendMsg=1\nDisplayMsgTime=1\nAutoSend=1\nSupportComment=1\n"
                                  "FormatSend=1\nLogSaveFlag=1\nFormatDisplayColor=1\nLogRotateAtSize=true\n"
                                  "LogRotateSize=2097152\nLogRotateAtTime=true\nLogRotateTime=@Variant(\\0\\0\\0\\xf\\0"
                                  "\\xa4\\xcb\\x80)\nNeedHourTimeStamp=true\n");
    PortSettings port;
    FormatSetting format;
    SessionDocument::readSession(QSettings(name, QSettings::IniFormat), 0, port, format);
    for (bool flag : {format.DisplaySendMsg, format.DisplayMsgTime, format.AutoSend, format.SupportComment,
                      format.FormatSend, format.LogSaveFlag, format.FormatDisplayColor, format.LogRotateAtSize,
                      format.LogRotateAtTime, format.NeedHourTimeStamp})
        QVERIFY(flag);
    QCOMPARE(format.LogRotateSize, 2 << 20);
    QCOMPARE(format.LogRotateTime, QTime(3, 0));
}

void TestSessionDocument::layout_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<int>("sessions");
    QTest::addColumn<int>("columns");
    QTest::addColumn<bool>("quickView");

    QTest::newRow("empty") << QByteArray() << 1 << 1 << true;
    QTest::newRow("five") << QByteArray("PortNumber=5\nColumnNumber=2\n") << 5 << 2 << false;
    QTest::newRow("three, quick view absent") << QByteArray("PortNumber=3\n") << 3 << 1 << false;
    QTest::newRow("three, quick view on") << QByteArray("PortNumber=3\nQuickView=true\n") << 3 << 1 << true;
    QTest::newRow("zero") << QByteArray("PortNumber=0\n") << 1 << 1 << true;
    QTest::newRow("negative") << QByteArray("PortNumber=-3\nColumnNumber=-1\n") << 1 << 1 << true;
    QTest::newRow("seventeen") << QByteArray("PortNumber=17\nColumnNumber=40\n") << 16 << 16 << false;
    QTest::newRow("huge") << QByteArray("PortNumber=100000\n") << 16 << 1 << false;
    QTest::newRow("text") << QByteArray("PortNumber=abc\nColumnNumber=x\n") << 1 << 1 << true;
}

void TestSessionDocument::layout()
{
    QFETCH(QByteArray, contents);
    const DocumentLayout layout = SessionDocument::readLayout(QSettings(document(contents), QSettings::IniFormat));
    QTEST(layout.portCount, "sessions");
    QTEST(layout.columnCount, "columns");
    QTEST(layout.quickView, "quickView");
}

void TestSessionDocument::hosts_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QStringList>("hosts");

    QTest::newRow("trailing separator") << "a-||-b-||-" << QStringList{"a", "b"};
    QTest::newRow("one") << "10.1.1.1" << QStringList{"10.1.1.1"};
    QTest::newRow("empty") << "" << QStringList{"127.0.0.1"};
    QTest::newRow("only separators") << "-||--||--||-" << QStringList{"127.0.0.1"};
    QTest::newRow("empty middle") << "-||-a-||--||-b" << QStringList{"a", "b"};
}

void TestSessionDocument::hosts()
{
    QFETCH(QString, stored);
    QTEST(SessionDocument::splitHosts(stored), "hosts");
}

void TestSessionDocument::progress_data()
{
    QTest::addColumn<int>("stage");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("value");

    QTest::newRow("single, first stage") << 10 << 0 << 1 << 10;
    QTest::newRow("single, done") << 100 << 0 << 1 << 100;
    QTest::newRow("third of three, done") << 100 << 2 << 3 << 99;
    QTest::newRow("second of three, middle") << 50 << 1 << 3 << 49;
}

void TestSessionDocument::progress()
{
    QFETCH(int, stage);
    QFETCH(int, index);
    QFETCH(int, count);
    QTEST(SessionDocument::progressValue(stage, index, count), "value");
}

QTEST_GUILESS_MAIN(TestSessionDocument)
#include "tst_sessiondocument.moc"
