#include <QtTest>

#include <QTcpServer>
#include <QTcpSocket>
#include <memory>

#include "networksession.h"
#include "testsupport.h"

namespace {
constexpr int waitMs = 3000;
const QString notConnected = QStringLiteral("The socket is not connected");
const QString established = QStringLiteral("Connection is established.");
}

// A port session in TCP client mode against a server played by the test.
class TestTcpClientSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void exchangesDataBothWays();
    void serverClosingTurnsStatusRed();
    void lastBytesBeforeCloseAreNotLost();
    void peerResetEndsTheConnectionCalmly();
    void secondStartMakesNoSecondConnection();
    void failedAttemptKeepsItsSocket();
    void unresolvableHostFailsCalmly();
    void newHostJoinsTheHistoryOnce();
    void reconnectsDoNotPileUpSockets();
    void portIsOpenWithoutSocketIsFalse();
    void pausedDataIsShownAfterResume();
    void deletingAConnectedSessionIsSafe();

private:
    QTcpSocket *startAndAccept();
    int socketCount() const { return int(session->findChildren<QTcpSocket *>().size()); }

    std::unique_ptr<IsolatedEnvironment> environment;
    std::unique_ptr<QTcpServer> server;
    SerialPortWidget *session = nullptr;
    std::unique_ptr<NetworkPanel> panel;
};

void TestTcpClientSession::initTestCase()
{
    environment = std::make_unique<IsolatedEnvironment>();
}

void TestTcpClientSession::init()
{
    server = std::make_unique<QTcpServer>();
    QVERIFY(server->listen(QHostAddress::LocalHost, 0));
    session = new SerialPortWidget;
    panel = std::make_unique<NetworkPanel>(session);
    panel->choose(QStringLiteral("TCP Client"));
    panel->setHost(QStringLiteral("127.0.0.1"));
    panel->setPort(server->serverPort());
    panel->sendRawText();
}

void TestTcpClientSession::cleanup()
{
    panel.reset();
    delete session;
    session = nullptr;
    server.reset();
}

// Starts the session and hands back the server's end of its connection.
QTcpSocket *TestTcpClientSession::startAndAccept()
{
    session->start();
    // Not waitForNewConnection(): a host name is looked up in the event loop.
    if (!QTest::qWaitFor([this] { return server->hasPendingConnections(); }, waitMs))
        return nullptr;
    QTcpSocket *peer = server->nextPendingConnection();
    const bool shown = QTest::qWaitFor([this] { return session->connectionStatusText() == greenStatus(established); },
                                       waitMs);
    return shown ? peer : nullptr;
}

void TestTcpClientSession::exchangesDataBothWays()
{
    QTcpSocket *peer = startAndAccept();
    QVERIFY(peer);
    QCOMPARE(session->runState(), int(Running));
    QVERIFY(session->portIsOpen());

    peer->write("from server <&>\n");
    QTRY_COMPARE_WITH_TIMEOUT(panel->viewText(), QStringLiteral("from server <&>\n"), waitMs);
    QTRY_COMPARE(session->rxStatusText(), QStringLiteral("Rx: 16 Bytes"));

    panel->send(QStringLiteral("from client"));
    QTRY_COMPARE_WITH_TIMEOUT(peer->bytesAvailable(), qint64(11), waitMs);
    QCOMPARE(peer->readAll(), QByteArray("from client"));
    QCOMPARE(session->sentBytes(), qint64(11));
}

void TestTcpClientSession::serverClosingTurnsStatusRed()
{
    QTcpSocket *peer = startAndAccept();
    QVERIFY(peer);
    QCOMPARE(session->runState(), int(Running));

    peer->disconnectFromHost();
    QTRY_COMPARE_WITH_TIMEOUT(session->connectionStatusText(), redStatus(notConnected), waitMs);
    QCOMPARE(session->runState(), int(Stopped));
    QVERIFY(!session->portIsOpen());
}

void TestTcpClientSession::lastBytesBeforeCloseAreNotLost()
{
    QTcpSocket *peer = startAndAccept();
    QVERIFY(peer);

    QByteArray sent;
    for (int i = 0; i < 200; ++i)
        sent += "last words " + QByteArray::number(i) + "\n";
    peer->write(sent);
    peer->disconnectFromHost();
    QTRY_COMPARE_WITH_TIMEOUT(session->connectionStatusText(), redStatus(notConnected), waitMs);
    QTRY_COMPARE_WITH_TIMEOUT(panel->viewText(), QString::fromLatin1(sent), waitMs);
    QCOMPARE(session->receivedBytes(), qint64(sent.size()));
}

// Closing with unread input makes the peer's system answer with a reset.
void TestTcpClientSession::peerResetEndsTheConnectionCalmly()
{
    QTcpSocket *peer = startAndAccept();
    QVERIFY(peer);
    peer->setReadBufferSize(1);

    panel->send(QString(4096, QLatin1Char('x')));
    QTest::qWait(100);
    peer->abort();

    QTRY_COMPARE_WITH_TIMEOUT(session->connectionStatusText(), redStatus(notConnected), waitMs);
    QCOMPARE(session->runState(), int(Stopped));
    panel->send(QStringLiteral("after the reset"));
    session->stop();
}

void TestTcpClientSession::secondStartMakesNoSecondConnection()
{
    QVERIFY(startAndAccept());
    session->start();
    QTest::qWait(300);
    QVERIFY(!server->hasPendingConnections());
    QCOMPARE(socketCount(), 1);
    QCOMPARE(session->connectionStatusText(), greenStatus(established));
}

// A refused attempt leaves its socket behind, so later starts do not try
// again until that socket is gone.
void TestTcpClientSession::failedAttemptKeepsItsSocket()
{
    const quint16 closedPort = freeTcpPort();
    panel->setPort(closedPort);
    session->start();
    QTRY_COMPARE_WITH_TIMEOUT(session->connectionStatusText(), redStatus(notConnected), waitMs);
    QCOMPARE(session->runState(), int(Stopped));
    QCOMPARE(socketCount(), 1);

    QTcpServer lateServer;
    QVERIFY(lateServer.listen(QHostAddress::LocalHost, closedPort));
    session->start();
    QTest::qWait(300);
    QVERIFY(!lateServer.hasPendingConnections());
    QCOMPARE(socketCount(), 1);
    QCOMPARE(session->connectionStatusText(), redStatus(notConnected));
}

void TestTcpClientSession::unresolvableHostFailsCalmly()
{
    panel->setHost(QStringLiteral("no-such-host.invalid"));
    session->start();
    QTRY_VERIFY_WITH_TIMEOUT(session->connectionStatusText() == redStatus(notConnected)
                                 || session->connectionStatusText()
                                        == redStatus(QStringLiteral("The socket is performing a host name lookup.")),
                             waitMs);
    session->stop();
    QTRY_COMPARE_WITH_TIMEOUT(session->connectionStatusText(), redStatus(notConnected), waitMs);
    QCOMPARE(session->runState(), int(Stopped));
}

void TestTcpClientSession::newHostJoinsTheHistoryOnce()
{
    QComboBox *hosts = panel->box("dataBitsServerAddressBox");
    const QStringList expected = {QStringLiteral("127.0.0.1"), QStringLiteral("localhost")};
    panel->setHost(QStringLiteral("localhost"));

    for (int round = 0; round < 2; ++round) {
        QTcpSocket *peer = startAndAccept();
        QVERIFY(peer);
        QCOMPARE(session->portSettings().lastTargetHost, expected);
        QStringList offered;
        for (int i = 0; i < hosts->count(); ++i)
            offered << hosts->itemText(i);
        QCOMPARE(offered, expected);
        QCOMPARE(hosts->currentText(), QStringLiteral("localhost"));

        peer->disconnectFromHost();
        QTRY_COMPARE_WITH_TIMEOUT(session->connectionStatusText(), redStatus(notConnected), waitMs);
    }
}

// Every disconnect leaves a socket behind; the session must release them.
void TestTcpClientSession::reconnectsDoNotPileUpSockets()
{
    for (int round = 0; round < 20; ++round) {
        QTcpSocket *peer = startAndAccept();
        QVERIFY(peer);
        peer->disconnectFromHost();
        QTRY_COMPARE_WITH_TIMEOUT(session->connectionStatusText(), redStatus(notConnected), waitMs);
        delete peer;
    }
    QTRY_VERIFY(socketCount() <= 1);
}

void TestTcpClientSession::portIsOpenWithoutSocketIsFalse()
{
    QVERIFY(!session->portIsOpen());
    panel->choose(QStringLiteral("TCP Server"));
    panel->setPort(freeTcpPort());
    session->start();
    QVERIFY(!session->portIsOpen());
    session->stop();
}

void TestTcpClientSession::pausedDataIsShownAfterResume()
{
    QTcpSocket *peer = startAndAccept();
    QVERIFY(peer);
    session->pause();
    peer->write("held");
    QTest::qWait(200);
    QCOMPARE(panel->viewText(), QString());

    session->start();
    QTRY_COMPARE(panel->viewText(), QStringLiteral("held"));
    QCOMPARE(socketCount(), 1);
}

void TestTcpClientSession::deletingAConnectedSessionIsSafe()
{
    QTcpSocket *peer = startAndAccept();
    QVERIFY(peer);
    peer->write("pending");
    QTest::qWait(50);
    delete session;
    session = nullptr;
    panel.reset();
    QTRY_COMPARE_WITH_TIMEOUT(peer->state(), QAbstractSocket::UnconnectedState, waitMs);
}

QTEST_MAIN(TestTcpClientSession)
#include "tst_tcpclientsession.moc"
