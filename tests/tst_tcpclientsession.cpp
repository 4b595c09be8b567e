#include <QtTest>

#include <QCheckBox>
#include <QTcpSocket>

#include "networksession.h"
#include "testsupport.h"

// A port session in TCP client mode against a server played by the test.
class TestTcpClientSession : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        server = std::make_unique<QTcpServer>();
        QVERIFY(server->listen(QHostAddress::LocalHost, 0));
        panel = std::make_unique<NetworkPanel>(QStringLiteral("TCP Client"));
        session = panel->session.get();
        panel->setHost(QStringLiteral("127.0.0.1"));
        panel->setPort(server->serverPort());
    }
    void cleanup() { panel.reset(); server.reset(); }

    void exchangesDataBothWaysAndHoldsItWhilePaused();
    void serverClosingTurnsStatusRedEveryRound();
    void failedAttempt_data();
    void failedAttempt();
    void reconnectsWhenTheServerComesBack();

private:
    const QString notConnected = redStatus(QStringLiteral("The socket is not connected"));
    const QString established = greenStatus(QStringLiteral("Connection is established."));
    // Starts the session and hands back the server's end of its connection.
    QTcpSocket *startAndAccept()
    {
        session->start();
        // Not waitForNewConnection(): a host name is looked up in the event loop.
        if (!QTest::qWaitFor([this] { return server->hasPendingConnections(); }, waitMs))
            return nullptr;
        QTcpSocket *peer = server->nextPendingConnection();
        return QTest::qWaitFor([this] { return panel->status() == established; }, waitMs) ? peer : nullptr;
    }
    int socketCount() const { return int(session->findChildren<QTcpSocket *>().size()); }

    IsolatedEnvironment environment;
    std::unique_ptr<QTcpServer> server;
    std::unique_ptr<NetworkPanel> panel;
    SerialPortWidget *session = nullptr;
};

// Starting again while connected makes no second connection; a pause holds
// through the periodic status refreshes.
void TestTcpClientSession::exchangesDataBothWaysAndHoldsItWhilePaused()
{
    QTcpSocket *peer = startAndAccept();
    QVERIFY(peer);
    QCOMPARE(session->runState(), int(Running));
    QVERIFY(session->portIsOpen());
    session->start();
    QTest::qWait(300);
    QVERIFY(!server->hasPendingConnections());

    session->pause();
    peer->write("from server <&>\n");
    QTest::qWait(200);
    QCOMPARE(panel->viewText(), QString());
    session->start();
    QTRY_COMPARE_WITH_TIMEOUT(panel->viewText(), QStringLiteral("from server <&>\n"), waitMs);
    QCOMPARE(socketCount(), 1);

    panel->send(QStringLiteral("from client"));
    QTRY_COMPARE_WITH_TIMEOUT(peer->peek(64), QByteArray("from client"), waitMs);
    QCOMPARE(session->sentBytes(), qint64(11));
}

void TestTcpClientSession::failedAttempt_data()
{
    QTest::addColumn<bool>("reconnect");
    QTest::newRow("reconnect off") << false;
    QTest::newRow("reconnect on") << true;
}

// A refused attempt leaves its socket behind, so later starts do not try
// again until that socket is gone; reconnecting tries again by itself.
void TestTcpClientSession::failedAttempt()
{
    QFETCH(bool, reconnect);
    panel->child<QCheckBox>("autoReconnectBox")->setChecked(reconnect);
    QVERIFY(!session->portIsOpen());   // no socket yet
    const quint16 closedPort = freeTcpPort();
    panel->setPort(closedPort);
    session->start();
    QTRY_COMPARE_WITH_TIMEOUT(panel->status(), notConnected, waitMs);
    QCOMPARE(session->runState(), int(Stopped));

    QTcpServer lateServer;
    QVERIFY(lateServer.listen(QHostAddress::LocalHost, closedPort));
    if (reconnect) {
        QTRY_VERIFY_WITH_TIMEOUT(lateServer.hasPendingConnections(), waitMs);
        QTRY_COMPARE(panel->status(), established);
        return;
    }
    QCOMPARE(socketCount(), 1);
    session->start();
    QTest::qWait(300);
    QVERIFY(!lateServer.hasPendingConnections());
    QCOMPARE(socketCount(), 1);
    QCOMPARE(panel->status(), notConnected);
}

// A server that goes away and comes back on its port is found again: the
// attempt after 1 s is refused, the one 2 s later gets through. The loss is
// marked once.
void TestTcpClientSession::reconnectsWhenTheServerComesBack()
{
    panel->child<QCheckBox>("autoReconnectBox")->setChecked(true);
    QTcpSocket *peer = startAndAccept();
    QVERIFY(peer);
    peer->write("before\n");
    QTRY_COMPARE_WITH_TIMEOUT(panel->viewText(), QStringLiteral("before\n"), waitMs);
    const quint16 port = server->serverPort();
    server->close();
    peer->disconnectFromHost();
    QTest::qWait(1500);
    QVERIFY(server->listen(QHostAddress::LocalHost, port));
    QTRY_VERIFY_WITH_TIMEOUT(server->hasPendingConnections(), waitMs);
    QTRY_COMPARE(panel->status(), established);
    QVERIFY2(QRegularExpression("^before\n--- disconnected [\\d:]{8} ---\n--- reconnected [\\d:]{8} ---\n$")
                 .match(panel->viewText()).hasMatch(),
             qPrintable(panel->viewText()));
}

// Each round ends with the server closing: the last bytes still arrive, the
// host joins the history once, and the session releases the old sockets.
void TestTcpClientSession::serverClosingTurnsStatusRedEveryRound()
{
    const QStringList hosts = {QStringLiteral("127.0.0.1"), QStringLiteral("localhost")};
    panel->setHost(hosts.last());
    QByteArray sent;
    for (int round = 0; round < 10; ++round) {
        std::unique_ptr<QTcpSocket> peer(startAndAccept());
        QVERIFY(peer);
        QCOMPARE(session->portSettings().lastTargetHost, hosts);
        QCOMPARE(panel->items("dataBitsServerAddressBox"), hosts);
        QCOMPARE(panel->box("dataBitsServerAddressBox")->currentText(), hosts.last());

        const QByteArray last = QByteArray::number(round).repeated(4000) + '\n';
        sent += last;
        peer->write(last);
        peer->disconnectFromHost();
        QTRY_COMPARE_WITH_TIMEOUT(panel->status(), notConnected, waitMs);
        QCOMPARE(session->runState(), int(Stopped));
        QVERIFY(!session->portIsOpen());
        QTRY_COMPARE_WITH_TIMEOUT(panel->viewText(), QString::fromLatin1(sent), waitMs);
    }
    QCOMPARE(session->receivedBytes(), qint64(sent.size()));
    QTRY_VERIFY(socketCount() <= 1);
}

QTEST_MAIN(TestTcpClientSession)
#include "tst_tcpclientsession.moc"
