#include <QtTest>

#include <QTcpSocket>
#include <memory>

#include "net/multiclientserver.h"
#include "testsupport.h"

class TestMultiClientServer : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        server = std::make_unique<MultiClientServer>();
        QVERIFY(server->listen(QHostAddress::LocalHost, 0));
    }

    void clientsAreKeptInConnectOrderWithTheirLastMessage();
    void stopForgetsClientsButTheyStillDeliverData();
    void vanishingClientsAreReleased();

private:
    std::unique_ptr<QTcpSocket> connectClient()
    {
        auto socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(QHostAddress::LocalHost, server->serverPort());
        return socket->waitForConnected(5000) ? std::move(socket) : nullptr;
    }
    // Accepted sockets are children of the server until they are released.
    int socketCount() const { return int(server->findChildren<QTcpSocket *>().size()); }

    IsolatedEnvironment environment;
    std::unique_ptr<MultiClientServer> server;
};

// Each read replaces the client's last message; it outlives the client.
void TestMultiClientServer::clientsAreKeptInConnectOrderWithTheirLastMessage()
{
    auto first = connectClient();
    QVERIFY(first);
    QTRY_COMPARE(server->clients().size(), 1);
    auto second = connectClient();
    QVERIFY(second);
    QTRY_COMPARE(server->clients().size(), 2);
    QCOMPARE(server->clients().at(0)->peerPort(), first->localPort());
    QCOMPARE(server->clients().at(1)->peerPort(), second->localPort());

    const QString key = MultiClientServer::clientKey(server->clients().first());
    QSignalSpy messages(server.get(), &MultiClientServer::newMessage);
    for (const QByteArray &bytes : {QByteArray("first\r\n"), QByteArray("\x00\xff", 2)}) {
        first->write(bytes);
        QVERIFY(messages.wait(5000));
        QCOMPARE(messages.takeFirst().first().toString(), key);
        QCOMPARE(server->lastMessages().value(key), bytes);
        QCOMPARE(server->lastMessages().value(key).capacity(), bytes.size()); // memory is the data
    }

    first->disconnectFromHost();
    QTRY_COMPARE(server->clients().size(), 1);
    QCOMPARE(server->clients().first()->peerPort(), second->localPort());
    QCOMPARE(server->lastMessages().value(key), QByteArray("\x00\xff", 2));
}

// A socket forgotten by stop is still released when its peer goes.
void TestMultiClientServer::stopForgetsClientsButTheyStillDeliverData()
{
    auto client = connectClient();
    QVERIFY(client);
    QTRY_COMPARE(server->clients().size(), 1);
    const QString key = MultiClientServer::clientKey(server->clients().first());
    QSignalSpy changes(server.get(), &MultiClientServer::connectionStateChange);
    server->stop();
    QVERIFY(server->clients().isEmpty());
    QCOMPARE(changes.count(), 1);
    QVERIFY(server->isListening());

    client->write("after stop");
    QTRY_COMPARE(server->lastMessages().value(key), QByteArray("after stop"));
    client->disconnectFromHost();
    QTRY_COMPARE(socketCount(), 0);
}

// The handshake completes in the kernel before the server sees the
// connection, so the peer is gone by the time it is accepted.
void TestMultiClientServer::vanishingClientsAreReleased()
{
    for (int i = 0; i < 5; ++i) {
        auto client = connectClient();
        QVERIFY(client);
        client->abort();
    }
    QTest::qWait(100);
    QCOMPARE(server->clients().size(), 0);
    QTRY_COMPARE(socketCount(), 0);
}

QTEST_GUILESS_MAIN(TestMultiClientServer)
#include "tst_multiclientserver.moc"
