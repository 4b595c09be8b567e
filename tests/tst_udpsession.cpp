#include <QtTest>

#include <QCheckBox>
#include <QNetworkDatagram>
#include <QRadioButton>
#include <QSpinBox>
#include <QUdpSocket>
#include <memory>

#include "networksession.h"
#include "testsupport.h"

namespace {
constexpr int waitMs = 3000;
}

// A port session in UDP mode; the test plays the remote endpoints.
class TestUdpSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void bindsToLocalHostOnTheLocalPortBox();
    void datagramsArriveAsSeparateChunksInOrder();
    void largestDatagramArrivesWhole();
    void sendReachesANumericDestination();
    void destinationsThatAreNotSent_data();
    void destinationsThatAreNotSent();
    void autoSendTimerDoesNotSendButTheButtonDoes();
    void stopTurnsStatusRedAndStartBindsAgain();

private:
    QByteArray receive(int timeout = waitMs);

    std::unique_ptr<IsolatedEnvironment> environment;
    SerialPortWidget *session = nullptr;
    std::unique_ptr<NetworkPanel> panel;
    QUdpSocket remote;
    quint16 localPort = 0;
};

void TestUdpSession::initTestCase()
{
    environment = std::make_unique<IsolatedEnvironment>();
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QVERIFY(remote.bind(QHostAddress::LocalHost, 0));
}

void TestUdpSession::init()
{
    session = new SerialPortWidget;
    panel = std::make_unique<NetworkPanel>(session);
    panel->choose(QStringLiteral("UDP Client"));
    localPort = freeUdpPort();
    panel->setLocalPort(localPort);
    panel->setHost(QStringLiteral("127.0.0.1"));
    panel->setPort(remote.localPort());
    panel->sendRawText();
    while (remote.hasPendingDatagrams())
        remote.receiveDatagram();
}

void TestUdpSession::cleanup()
{
    panel.reset();
    delete session;
    session = nullptr;
}

// Next datagram that reaches the test's endpoint; empty when none came.
QByteArray TestUdpSession::receive(int timeout)
{
    QDeadlineTimer deadline(timeout);
    while (!remote.hasPendingDatagrams() && !deadline.hasExpired())
        QTest::qWait(10);
    return remote.hasPendingDatagrams() ? remote.receiveDatagram().data() : QByteArray();
}

void TestUdpSession::bindsToLocalHostOnTheLocalPortBox()
{
    session->start();
    QTRY_COMPARE(session->connectionStatusText(),
                 greenStatus(QStringLiteral("UDP socket is bound to 127.0.0.1:%1.").arg(localPort)));
    QCOMPARE(session->runState(), int(Running));
    QVERIFY(!session->portIsOpen());

    // Shared binding: a second socket may bind the same port beside it.
    QUdpSocket neighbour;
    QVERIFY(neighbour.bind(QHostAddress::LocalHost, localPort, QAbstractSocket::ShareAddress));
}

// Each datagram is one chunk; with hex display and automatic line feeds at
// every chunk, the boundaries show as line breaks.
void TestUdpSession::datagramsArriveAsSeparateChunksInOrder()
{
    panel->child<QRadioButton>("hexRadio")->setChecked(true);
    panel->child<QCheckBox>("autoFeedBox")->setChecked(true);
    FormatSetting format = session->formatSettings();
    format.AutoFeedInterval = -1;
    session->setFormatSettings(format);
    session->start();

    remote.writeDatagram("AB", QHostAddress::LocalHost, localPort);
    remote.writeDatagram("CD", QHostAddress::LocalHost, localPort);
    QTRY_COMPARE_WITH_TIMEOUT(panel->viewText(), QStringLiteral("41 42 \n43 44 "), waitMs);
    QTRY_COMPARE(session->rxStatusText(), QStringLiteral("Rx: 4 Bytes"));
}

void TestUdpSession::largestDatagramArrivesWhole()
{
    QByteArray datagram(65507, Qt::Uninitialized);
    for (int i = 0; i < datagram.size(); ++i)
        datagram[i] = char('a' + i % 26);
    session->start();

    QCOMPARE(remote.writeDatagram(datagram, QHostAddress::LocalHost, localPort), qint64(datagram.size()));
    QTRY_COMPARE_WITH_TIMEOUT(session->receivedBytes(), qint64(datagram.size()), waitMs);
    // The view breaks very long lines; the bytes are all there, in order.
    QTRY_COMPARE(panel->viewText().remove(QLatin1Char('\n')), QString::fromLatin1(datagram));
}

void TestUdpSession::sendReachesANumericDestination()
{
    session->start();
    panel->send(QStringLiteral("ping"));
    QCOMPARE(receive(), QByteArray("ping"));
    QCOMPARE(session->sentBytes(), qint64(4));
}

void TestUdpSession::destinationsThatAreNotSent_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("port");
    QTest::newRow("host name") << "localhost" << QString();
    QTest::newRow("empty host") << "" << QString();
    QTest::newRow("port letters") << "127.0.0.1" << "abc";
    QTest::newRow("port too large") << "127.0.0.1" << "70000";
}

// Names are never looked up, and a bad port text means port 0: nothing may
// reach the endpoint the panel otherwise points at.
void TestUdpSession::destinationsThatAreNotSent()
{
    QFETCH(QString, host);
    QFETCH(QString, port);
    panel->setHost(host);
    if (!port.isNull())
        panel->setPort(port);
    session->start();
    panel->send(QStringLiteral("lost"));
    QCOMPARE(receive(300), QByteArray());
}

// Timed sending is for serial and TCP only.
void TestUdpSession::autoSendTimerDoesNotSendButTheButtonDoes()
{
    panel->child<QSpinBox>("sendIntervelSB")->setValue(20);
    panel->child<QCheckBox>("autoSendBox")->click();
    panel->child<QPlainTextEdit>("textEdit")->setPlainText(QStringLiteral("tick"));
    session->start();
    QCOMPARE(receive(300), QByteArray());

    panel->child<QPushButton>("sendButton")->click();
    QCOMPARE(receive(), QByteArray("tick"));
    QCOMPARE(receive(200), QByteArray());
}

void TestUdpSession::stopTurnsStatusRedAndStartBindsAgain()
{
    session->start();
    session->stop();
    QTRY_COMPARE(session->connectionStatusText(),
                 redStatus(QStringLiteral("The socket is not connected")));
    QCOMPARE(session->runState(), int(Stopped));

    session->start();
    QTRY_COMPARE(session->connectionStatusText(),
                 greenStatus(QStringLiteral("UDP socket is bound to 127.0.0.1:%1.").arg(localPort)));
    remote.writeDatagram("again", QHostAddress::LocalHost, localPort);
    QTRY_COMPARE_WITH_TIMEOUT(panel->viewText(), QStringLiteral("again"), waitMs);
}

QTEST_MAIN(TestUdpSession)
#include "tst_udpsession.moc"
