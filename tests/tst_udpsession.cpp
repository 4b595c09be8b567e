#include <QtTest>

#include <QCheckBox>
#include <QNetworkDatagram>
#include <QRadioButton>
#include <QSpinBox>

#include "networksession.h"
#include "send/filesender.h"
#include "testsupport.h"

// A port session in UDP mode; the test plays the remote endpoint.
class TestUdpSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(remote.bind(QHostAddress::LocalHost, 0)); }
    void init()
    {
        panel = std::make_unique<NetworkPanel>(QStringLiteral("UDP Client"));
        session = panel->session.get();
        localPort = freeUdpPort();
        panel->setLocalPort(localPort);
        panel->setHost(QStringLiteral("127.0.0.1"));
        panel->setPort(remote.localPort());
    }
    void cleanup() { panel.reset(); }

    void bindsOnLocalHostAndSendsOnlyOnTheButton();
    void datagramsArriveAsSeparateChunksInOrder();
    void destinationsThatAreNotSent_data();
    void destinationsThatAreNotSent();
    void consoleKeysMacrosAndFilesSend();
    void groupModeShowsItsStatus();

private:
    // Next datagram that reaches the test's endpoint; empty when none came.
    QByteArray receive(int timeout = waitMs)
    {
        const bool arrived = QTest::qWaitFor([this] { return remote.hasPendingDatagrams(); }, timeout);
        return arrived ? remote.receiveDatagram().data() : QByteArray();
    }

    IsolatedEnvironment environment;
    std::unique_ptr<NetworkPanel> panel;
    SerialPortWidget *session = nullptr;
    QUdpSocket remote;
    quint16 localPort = 0;
};

// Timed sending is for serial and TCP only: the armed timer stays silent.
void TestUdpSession::bindsOnLocalHostAndSendsOnlyOnTheButton()
{
    panel->child<QSpinBox>("sendIntervelSB")->setValue(20);
    panel->child<QCheckBox>("autoSendBox")->click();
    session->start();
    QTRY_COMPARE(panel->status(), greenStatus(QStringLiteral("UDP socket is bound to 127.0.0.1:%1.").arg(localPort)));
    QCOMPARE(session->runState(), int(Running));

    panel->send(QStringLiteral("ping"));
    QCOMPARE(receive(), QByteArray("ping"));
    QCOMPARE(receive(300), QByteArray());
    QCOMPARE(session->sentBytes(), qint64(4));
}

// Every datagram is one chunk, in order, the largest one whole. With hex
// display and a line feed at every chunk, the boundaries show as breaks.
void TestUdpSession::datagramsArriveAsSeparateChunksInOrder()
{
    panel->child<QRadioButton>("hexRadio")->setChecked(true);
    panel->child<QCheckBox>("autoFeedBox")->setChecked(true);
    FormatSetting format = session->formatSettings();
    format.AutoFeedInterval = -1;
    session->setFormatSettings(format);
    session->start();

    const QByteArray largest = QByteArray("abcdefghijklmnopqrstuvwxyz").repeated(2520).left(65507);
    for (const QByteArray &datagram : {QByteArray("AB"), QByteArray("CD"), largest})
        QCOMPARE(remote.writeDatagram(datagram, QHostAddress::LocalHost, localPort), qint64(datagram.size()));
    QTRY_COMPARE_WITH_TIMEOUT(session->receivedBytes(), qint64(4 + largest.size()), waitMs);
    QTRY_VERIFY(panel->viewText().startsWith(QLatin1String("41 42 \n43 44 \n61 62 ")));
    QCOMPARE(QByteArray::fromHex(panel->viewText().toLatin1()), "ABCD" + largest);
}

void TestUdpSession::destinationsThatAreNotSent_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("port");
    QTest::newRow("host name") << "localhost" << QString::number(remote.localPort());
    QTest::newRow("port letters") << "127.0.0.1" << "abc";
}

// Names are never looked up, and a bad port text means port 0.
void TestUdpSession::destinationsThatAreNotSent()
{
    QFETCH(QString, host);
    QFETCH(QString, port);
    panel->setHost(host);
    panel->setPort(port);
    session->start();
    panel->send(QStringLiteral("lost"));
    QCOMPARE(receive(300), QByteArray());
    QCOMPARE(session->portSettings().lastTargetPort, port.toInt());   // "abc" reads as 0
}

// Ctrl+Enter sends the box (and clears it when asked), Ctrl+2 the second
// macro with its checksum, and a file goes out in datagrams.
void TestUdpSession::consoleKeysMacrosAndFilesSend()
{
    session->start();
    FormatSetting format = session->formatSettings();
    format.ClearAfterSend = true;
    format.Macros = {SendMacro{"one", "1", false, SendMacro::NoLineEnding, {}, false, 0},
                     SendMacro{"query", "01 03", true, SendMacro::NoLineEnding, "CRC-16/MODBUS", false, 0}};
    session->setFormatSettings(format);
    session->updateDisplay();
    session->show();
    QVERIFY(QTest::qWaitForWindowActive(session));

    auto *box = panel->child<QPlainTextEdit>("textEdit");
    box->setFocus();
    box->setPlainText(QStringLiteral("ping"));
    QTest::keyClick(box, Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(receive(), QByteArray("ping"));
    QCOMPARE(box->toPlainText(), QString());
    QTest::keyClick(box, Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(receive(), QByteArray::fromHex("01034021"));

    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(QByteArray(2500, 'x'));
    file.close();
    auto *sender = session->findChild<FileSender *>();
    QSignalSpy finished(sender, &FileSender::finished);
    QVERIFY(sender->start(file.fileName()));
    QTRY_COMPARE(finished.count(), 1);
    QByteArray received;
    for (QByteArray datagram = receive(); !datagram.isEmpty(); datagram = receive(300))
        received += datagram;
    QCOMPARE(received, QByteArray(2500, 'x'));
    QCOMPARE(session->sentBytes(), qint64(4 + 4 + 2500));
}

// Group sessions, which only documents and the settings dialog choose, show
// their socket's state like the other UDP modes.
void TestUdpSession::groupModeShowsItsStatus()
{
    PortSettings port = session->portSettings();
    port.connMode = UdpGroupMode;
    session->setPortSettings(port);
    session->updateDisplay();
    panel->setLocalPort(localPort);
    session->start();
    QTRY_COMPARE(panel->status(), greenStatus(QStringLiteral("UDP socket is bound to 127.0.0.1:%1.").arg(localPort)));
}

QTEST_MAIN(TestUdpSession)
#include "tst_udpsession.moc"
