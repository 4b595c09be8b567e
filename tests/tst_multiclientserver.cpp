#include <QtTest>

#include <QTcpServer>
#include <QTcpSocket>
#include <memory>
#include <vector>

#include "net/multiclientserver.h"
#include "testsupport.h"

namespace {
constexpr int waitMs = 5000;
}

class TestMultiClientServer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void clientsAreListedInConnectOrder();
    void dataRaisesNewMessageWithTheLastRead();
    void disconnectRemovesClientButKeepsItsLastMessage();
    void stopForgetsClientsButTheyStillDeliverData();
    void socketForgottenByStopIsReleasedOnDisconnect();
    void manyClientsConnectingAtOnceAreAllAccepted();
    void clientThatVanishesAtOnceIsReleased();
    void sendHelloWritesHelloLine();
    void sendHelloIgnoresNullSocket();
    void listenOnBusyPortFails();

private:
    std::unique_ptr<QTcpSocket> connectClient();
    bool waitForClientCount(int count);
    bool waitUntilNoSocketIsLeft();

    IsolatedEnvironment environment;
    std::unique_ptr<MultiClientServer> server;
};

void TestMultiClientServer::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

void TestMultiClientServer::init()
{
    server = std::make_unique<MultiClientServer>();
    QVERIFY(server->listen(QHostAddress::LocalHost, 0));
}

void TestMultiClientServer::cleanup()
{
    server.reset();
}

std::unique_ptr<QTcpSocket> TestMultiClientServer::connectClient()
{
    auto socket = std::make_unique<QTcpSocket>();
    socket->connectToHost(QHostAddress::LocalHost, server->serverPort());
    if (!socket->waitForConnected(waitMs))
        return nullptr;
    return socket;
}

bool TestMultiClientServer::waitForClientCount(int count)
{
    return QTest::qWaitFor([&] { return server->clients().size() == count; }, waitMs);
}

// Accepted sockets are children of the server until they are released.
bool TestMultiClientServer::waitUntilNoSocketIsLeft()
{
    return QTest::qWaitFor([&] { return server->findChildren<QTcpSocket *>().isEmpty(); }, waitMs);
}

void TestMultiClientServer::clientsAreListedInConnectOrder()
{
    QSignalSpy changes(server.get(), &MultiClientServer::connectionStateChange);

    auto first = connectClient();
    QVERIFY(first);
    QVERIFY(waitForClientCount(1));
    auto second = connectClient();
    QVERIFY(second);
    QVERIFY(waitForClientCount(2));

    QCOMPARE(server->clients().at(0)->peerPort(), first->localPort());
    QCOMPARE(server->clients().at(1)->peerPort(), second->localPort());
    QVERIFY(changes.size() >= 2);
}

void TestMultiClientServer::dataRaisesNewMessageWithTheLastRead()
{
    auto client = connectClient();
    QVERIFY(client);
    QVERIFY(waitForClientCount(1));
    const QString key = MultiClientServer::clientKey(server->clients().first());
    QCOMPARE(key, QStringLiteral("127.0.0.1:%1").arg(client->localPort()));

    QSignalSpy messages(server.get(), &MultiClientServer::newMessage);
    for (const QByteArray bytes : {QByteArray("first\r\n"), QByteArray("\x00\xff", 2)}) {
        messages.clear();
        client->write(bytes);
        QVERIFY(messages.wait(waitMs));
        QCOMPARE(messages.first().first().toString(), key);
        // Each read replaces the previous one.
        QCOMPARE(server->lastMessages().value(key), bytes);
    }
}

void TestMultiClientServer::disconnectRemovesClientButKeepsItsLastMessage()
{
    auto leaving = connectClient();
    auto staying = connectClient();
    QVERIFY(leaving && staying);
    QVERIFY(waitForClientCount(2));
    QSignalSpy messages(server.get(), &MultiClientServer::newMessage);
    leaving->write("bye");
    QVERIFY(messages.wait(waitMs));
    const QString key = messages.first().first().toString();

    QSignalSpy changes(server.get(), &MultiClientServer::connectionStateChange);
    leaving->disconnectFromHost();
    QVERIFY(waitForClientCount(1));
    QVERIFY(!changes.isEmpty());
    QCOMPARE(server->clients().first()->peerPort(), staying->localPort());
    QCOMPARE(server->lastMessages().value(key), QByteArray("bye"));
}

void TestMultiClientServer::stopForgetsClientsButTheyStillDeliverData()
{
    auto client = connectClient();
    QVERIFY(client);
    QVERIFY(waitForClientCount(1));

    QSignalSpy changes(server.get(), &MultiClientServer::connectionStateChange);
    server->stop();
    QVERIFY(server->clients().isEmpty());
    QCOMPARE(changes.count(), 1);
    QVERIFY(server->isListening());

    QSignalSpy messages(server.get(), &MultiClientServer::newMessage);
    client->write("after stop");
    QVERIFY(messages.wait(waitMs));
    QCOMPARE(server->lastMessages().value(messages.first().first().toString()),
             QByteArray("after stop"));
}

void TestMultiClientServer::socketForgottenByStopIsReleasedOnDisconnect()
{
    auto client = connectClient();
    QVERIFY(client);
    QVERIFY(waitForClientCount(1));
    QPointer<QTcpSocket> accepted = server->clients().first();

    server->stop();
    client->disconnectFromHost();
    QVERIFY(QTest::qWaitFor([&] { return accepted.isNull(); }, waitMs));
    QVERIFY(server->clients().isEmpty());
    QVERIFY(waitUntilNoSocketIsLeft());
}

void TestMultiClientServer::manyClientsConnectingAtOnceAreAllAccepted()
{
    constexpr int count = 100;
    std::vector<std::unique_ptr<QTcpSocket>> sockets;
    for (int i = 0; i < count; ++i) {
        sockets.push_back(std::make_unique<QTcpSocket>());
        sockets.back()->connectToHost(QHostAddress::LocalHost, server->serverPort());
    }
    QVERIFY(waitForClientCount(count));

    for (int i = 0; i < count; i += 2)
        sockets[i]->abort();
    QVERIFY(waitForClientCount(count / 2));
    sockets.clear();
    QVERIFY(waitForClientCount(0));
    QVERIFY(waitUntilNoSocketIsLeft());
}

void TestMultiClientServer::clientThatVanishesAtOnceIsReleased()
{
    // The handshake completes in the kernel before the server sees the
    // connection, so the peer is gone by the time it is accepted.
    for (int i = 0; i < 5; ++i) {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, server->serverPort());
        QVERIFY(socket.waitForConnected(waitMs));
        socket.abort();
    }
    QTest::qWait(100);
    QVERIFY(waitForClientCount(0));
    QVERIFY(waitUntilNoSocketIsLeft());
}

void TestMultiClientServer::sendHelloWritesHelloLine()
{
    auto client = connectClient();
    QVERIFY(client);
    QVERIFY(waitForClientCount(1));

    server->sendHello(server->clients().first());
    QVERIFY(QTest::qWaitFor([&] { return client->bytesAvailable() >= 6; }, waitMs));
    QCOMPARE(client->readAll(), QByteArray("Hello\n"));
}

void TestMultiClientServer::sendHelloIgnoresNullSocket()
{
    server->sendHello(nullptr);
}

void TestMultiClientServer::listenOnBusyPortFails()
{
    QTcpServer occupant;
    QVERIFY(occupant.listen(QHostAddress::Any, 0));

    MultiClientServer second;
    QVERIFY(!second.start(occupant.serverPort()));
    QVERIFY(!second.isListening());
    QCOMPARE(second.serverPort(), quint16(0));
}

QTEST_GUILESS_MAIN(TestMultiClientServer)
#include "tst_multiclientserver.moc"
