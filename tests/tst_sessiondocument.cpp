#include <QtTest>

#include "app/sessiondocument.h"
#include "testsupport.h"

namespace {

// What a document keeps of a session; read into fresh records, a field the
// document loses comes back as 0, false or empty.
QVariantList kept(const PortSettings &p, const FormatSetting &f)
{
    return {p.connMode, p.name, p.baudRate, p.dataBits, p.parity, p.stopBits, p.flowControl, p.lastTargetPort,
            p.lastTargetHost, f.ReceiveMsgFormat, f.SendMsgFormat, f.AutoFeedLine, f.AutoFeedInterval,
            f.RxTimeFormat, f.TxTimeFormat, f.SendInterval, f.SendTimeUnit, f.AutoAddFeedLine, f.SendList,
            f.LogFilePath, f.LogFileTime, f.LogTimestampEnabled, f.DisplayBufferSize, f.LogFont.family(),
            f.LogFont.pointSize(), int(f.LogFont.weight()), f.SendTextColor, f.ReceiveTextColor,
            f.RawLog, f.RawLogSent};
}

// The seven flags written as booleans but read as integers, then the
// rotation options, which are read but never written.
QList<bool> flagsAndRotation(const FormatSetting &f)
{
    return {f.DisplaySendMsg, f.DisplayMsgTime, f.AutoSend,        f.SupportComment,  f.FormatSend,
            f.LogSaveFlag,    f.FormatDisplayColor, f.LogRotateAtSize, f.LogRotateAtTime, f.NeedHourTimeStamp};
}

} // namespace

class TestSessionDocument : public QObject
{
    Q_OBJECT
    IsolatedEnvironment environment;
    QTemporaryDir dir;

private slots:
    void roundTripKeepsRecordsButNotIntegerFlagsOrRotation()
    {
        PortSettings port{TcpClientMode, QStringLiteral("cu.usbserial"), 115200, 7, 2, 2, 1, 4321,
                          {QStringLiteral("10.0.0.2"), QStringLiteral("example.org")}, {true, false, false, 40}};
        FormatSetting format;
        format.ReceiveMsgFormat = format.SendMsgFormat = HEX;
        format.AutoFeedLine = format.LogTimestampEnabled = true;
        format.AutoAddFeedLine = false;
        format.SendList = {QStringLiteral("AT"), QStringLiteral("AT+RST"), QStringLiteral("a,b")};
        format.LogFont = QFont(QStringLiteral("Courier"), 15, QFont::Bold);
        format.SendTextColor = QColor(QStringLiteral("#12abef"));
        format.ReceiveTextColor = QColor(QStringLiteral("#fe0102"));
        format.DisplaySendMsg = format.DisplayMsgTime = format.AutoSend = format.SupportComment = true;
        format.FormatSend = format.LogSaveFlag = format.FormatDisplayColor = true;
        format.LogRotateAtSize = format.LogRotateAtTime = format.NeedHourTimeStamp = true;
        format.LogRotateSize = 5 << 20;
        format.LogRotateTime = QTime(3, 4, 5);
        format.RawLog = format.RawLogSent = true;
        format.View.hexAscii = format.View.ansiColours = true;
        format.View.highlightRules = {{{QStringLiteral("err|fail"), true, true}, QColor(Qt::red), false},
                                      {{QStringLiteral("warn")}, QColor(0xc8, 0x80, 0x00), true}};
        const QString name = dir.filePath(QStringLiteral("roundtrip.qvn"));
        {
            QSettings file(name, QSettings::IniFormat);
            SessionDocument::writeSession(file, 3, port, format);
            QVERIFY(SessionDocument::flushed(file));
        }
        const QSettings file(name, QSettings::IniFormat);
        PortSettings readPort;
        FormatSetting readFormat;
        SessionDocument::readSession(file, 3, readPort, readFormat);
        QCOMPARE(kept(readPort, readFormat), kept(port, format));
        QVERIFY(readPort.link == port.link);
        QVERIFY(readFormat.View == format.View);
        // Read over records that have them set, so the document must turn them off.
        SessionDocument::readSession(file, 3, port, format);
        QCOMPARE(flagsAndRotation(format), QList<bool>(10, false));
        QCOMPARE(format.LogRotateSize, 0);
        QVERIFY(!format.LogRotateTime.isValid());
    }

    void handWrittenFlagsAndRotationAreHonoured()
    {
        QFile handWritten(dir.filePath(QStringLiteral("handwritten.qvn")));
        QVERIFY(handWritten.open(QIODevice::WriteOnly));
        handWritten.write("[0]\nDisplaySendMsg=1\nDisplayMsgTime=1\nAutoSend=1\nSupportComment=1\nFormatSend=1\n"
                          "LogSaveFlag=1\nFormatDisplayColor=1\nLogRotateAtSize=true\nLogRotateSize=2097152\n"
                          "LogRotateAtTime=true\nLogRotateTime=@Variant(\\0\\0\\0\\xf\\0\\xa4\\xcb\\x80)\n"
                          "NeedHourTimeStamp=true\n");
        handWritten.close();
        PortSettings port;
        FormatSetting format;
        SessionDocument::readSession(QSettings(handWritten.fileName(), QSettings::IniFormat), 0, port, format);
        QCOMPARE(flagsAndRotation(format), QList<bool>(10, true));
        QVERIFY(port.link == LinkSettings());   // a document from before reconnecting
        QCOMPARE(format.LogRotateSize, 2 << 20);
        QCOMPARE(format.LogRotateTime, QTime(3, 0));
        QVERIFY(format.View == ViewSettings());   // a document from before the view's own keys
    }

    void hosts_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QStringList>("hosts");
        QTest::newRow("trailing separator") << "a-||-b-||-" << QStringList{"a", "b"};
        QTest::newRow("empty middle") << "-||-a-||--||-b" << QStringList{"a", "b"};
        QTest::newRow("missing or empty") << QString() << QStringList();
    }

    void hosts()
    {
        QFETCH(QString, stored);
        QTEST(SessionDocument::splitHosts(stored), "hosts");
    }
};

QTEST_GUILESS_MAIN(TestSessionDocument)
#include "tst_sessiondocument.moc"
