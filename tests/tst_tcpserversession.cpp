#include <QtTest>

#include <QRadioButton>
#include <QTcpSocket>
#include <QTreeWidget>
#include <memory>
#include <vector>

#include "net/multiclientserver.h"
#include "networksession.h"
#include "testsupport.h"

namespace {
constexpr int waitMs = 5000;
using Clients = std::vector<std::unique_ptr<QTcpSocket>>;
}

// A port session in TCP server mode with real clients played by the test.
class TestTcpServerSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void statusFollowsTheClients();
    void clientsAreListedInConnectOrder();
    void sendGoesToTheSelectedClient();
    void disconnectingClientLeavesTheList();
    void stopEmptiesTheList();
    void dataAfterStopStillReachesTheView();
    void secondStartListensOnThePanelPort();
    void badPortTextListensOnPortZero_data();
    void badPortTextListensOnPortZero();
    void busyPortFailsCalmly();
    void vanishingClientsAreReleased();
    void hundredClientsConnectAtOnce();
    void everyByteOfFiftyClientsArrivesInOrder();

private:
    void startOn(quint16 port);
    std::unique_ptr<QTcpSocket> connectClient();
    QStringList listedClients() const;
    int serverSocketCount() const;

    std::unique_ptr<IsolatedEnvironment> environment;
    SerialPortWidget *session = nullptr;
    std::unique_ptr<NetworkPanel> panel;
    QTreeWidget *clientList = nullptr;
    quint16 port = 0;
};

void TestTcpServerSession::initTestCase()
{
    environment = std::make_unique<IsolatedEnvironment>();
    // The load tests would otherwise print every chunk.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

void TestTcpServerSession::init()
{
    session = new SerialPortWidget;
    panel = std::make_unique<NetworkPanel>(session);
    clientList = panel->child<QTreeWidget>("clientTw");
    panel->choose(QStringLiteral("TCP Server"));
    panel->sendRawText();
    port = freeTcpPort();
}

void TestTcpServerSession::cleanup()
{
    panel.reset();
    delete session;
    session = nullptr;
}

void TestTcpServerSession::startOn(quint16 listenPort)
{
    panel->setPort(listenPort);
    session->start();
}

std::unique_ptr<QTcpSocket> TestTcpServerSession::connectClient()
{
    auto client = std::make_unique<QTcpSocket>();
    client->connectToHost(QHostAddress::LocalHost, port);
    if (!client->waitForConnected(waitMs))
        return nullptr;
    return client;
}

QStringList TestTcpServerSession::listedClients() const
{
    QStringList rows;
    for (int i = 0; i < clientList->topLevelItemCount(); ++i)
        rows << clientList->topLevelItem(i)->text(0);
    return rows;
}

int TestTcpServerSession::serverSocketCount() const
{
    return int(session->server()->findChildren<QTcpSocket *>().size());
}

static QString keyOf(const QTcpSocket &client)
{
    return QStringLiteral("%1:%2").arg(client.localAddress().toString()).arg(client.localPort());
}

void TestTcpServerSession::statusFollowsTheClients()
{
    startOn(port);
    const QString address = session->server()->serverAddress().toString();
    QCOMPARE(session->portSettings().name, QStringLiteral("%1:%2").arg(address).arg(port));
    QTRY_COMPARE(session->connectionStatusText(),
                 greenStatus(QStringLiteral("Waiting for Connections on %1:%2...").arg(address).arg(port)));

    session->pause();
    auto client = connectClient();
    QVERIFY(client);
    QTRY_COMPARE(session->connectionStatusText(),
                 greenStatus(QStringLiteral("Listening on %1:%2").arg(address).arg(port)));
    QCOMPARE(session->runState(), int(Paused));
    session->start();
    QTRY_COMPARE(session->runState(), int(Running));
}

void TestTcpServerSession::clientsAreListedInConnectOrder()
{
    startOn(port);
    Clients clients;
    for (int i = 0; i < 3; ++i) {
        clients.push_back(connectClient());
        QVERIFY(clients.back());
        QTRY_COMPARE(clientList->topLevelItemCount(), i + 1);
    }
    QStringList expected;
    for (const auto &client : clients)
        expected << keyOf(*client);
    QCOMPARE(listedClients(), expected);
}

void TestTcpServerSession::sendGoesToTheSelectedClient()
{
    startOn(port);
    auto first = connectClient();
    QVERIFY(first);
    QTRY_COMPARE(clientList->topLevelItemCount(), 1);
    auto second = connectClient();
    QVERIFY(second);
    QTRY_COMPARE(clientList->topLevelItemCount(), 2);

    panel->send(QStringLiteral("to nobody in particular"));
    QTRY_COMPARE_WITH_TIMEOUT(first->bytesAvailable(), qint64(23), waitMs);
    QCOMPARE(first->readAll(), QByteArray("to nobody in particular"));

    clientList->setCurrentItem(clientList->topLevelItem(1));
    panel->send(QStringLiteral("to the second"));
    QTRY_COMPARE_WITH_TIMEOUT(second->bytesAvailable(), qint64(13), waitMs);
    QCOMPARE(second->readAll(), QByteArray("to the second"));

    QTest::qWait(100);
    QCOMPARE(first->bytesAvailable(), qint64(0));
}

void TestTcpServerSession::disconnectingClientLeavesTheList()
{
    startOn(port);
    auto first = connectClient();
    QVERIFY(first);
    QTRY_COMPARE(clientList->topLevelItemCount(), 1);
    auto second = connectClient();
    QVERIFY(second);
    QTRY_COMPARE(clientList->topLevelItemCount(), 2);

    first->write("bye");
    first->disconnectFromHost();
    QTRY_COMPARE_WITH_TIMEOUT(listedClients(), QStringList{keyOf(*second)}, waitMs);
    QTRY_COMPARE(panel->viewText(), QStringLiteral("bye"));

    // The remaining client is now the first row and gets unselected sends.
    panel->send(QStringLiteral("still here"));
    QTRY_COMPARE_WITH_TIMEOUT(second->bytesAvailable(), qint64(10), waitMs);
    QCOMPARE(second->readAll(), QByteArray("still here"));
}

void TestTcpServerSession::stopEmptiesTheList()
{
    startOn(port);
    auto client = connectClient();
    QVERIFY(client);
    QTRY_COMPARE(clientList->topLevelItemCount(), 1);

    session->stop();
    QCOMPARE(clientList->topLevelItemCount(), 0);
    QCOMPARE(session->runState(), int(Stopped));
    panel->send(QStringLiteral("nowhere"));
    QTest::qWait(100);
    QCOMPARE(client->bytesAvailable(), qint64(0));
}

void TestTcpServerSession::dataAfterStopStillReachesTheView()
{
    startOn(port);
    auto client = connectClient();
    QVERIFY(client);
    QTRY_COMPARE(clientList->topLevelItemCount(), 1);

    session->stop();
    client->write("after stop");
    QTRY_COMPARE_WITH_TIMEOUT(panel->viewText(), QStringLiteral("after stop"), waitMs);
    QTRY_COMPARE(session->rxStatusText(), QStringLiteral("Rx: 10 Bytes"));

    client->disconnectFromHost();
    QTRY_COMPARE(serverSocketCount(), 0);
}

void TestTcpServerSession::secondStartListensOnThePanelPort()
{
    startOn(port);
    session->stop();

    const quint16 oldPort = port;
    port = freeTcpPort();
    startOn(port);
    QCOMPARE(session->server()->serverPort(), port);
    QCOMPARE(session->portSettings().name,
             QStringLiteral("%1:%2").arg(session->server()->serverAddress().toString()).arg(port));

    auto client = connectClient();
    QVERIFY(client);
    QTRY_COMPARE(clientList->topLevelItemCount(), 1);

    QTcpSocket stale;
    stale.connectToHost(QHostAddress::LocalHost, oldPort);
    QVERIFY(!stale.waitForConnected(waitMs));
}

void TestTcpServerSession::badPortTextListensOnPortZero_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("too large") << "70000";
    QTest::newRow("letters") << "abc";
    QTest::newRow("negative") << "-6000";
    QTest::newRow("empty") << "";
}

// Port 0 lets the system choose, so the listener still works.
void TestTcpServerSession::badPortTextListensOnPortZero()
{
    QFETCH(QString, text);
    panel->setPort(text);
    session->start();
    QCOMPARE(session->portSettings().lastTargetPort, 0);
    QVERIFY(session->server()->isListening());
    port = session->server()->serverPort();
    QVERIFY(port != 0);
    QVERIFY(connectClient());
}

void TestTcpServerSession::busyPortFailsCalmly()
{
    QTcpServer occupant;
    QVERIFY(occupant.listen(QHostAddress::LocalHost, port));

    startOn(port);
    QVERIFY(!session->server()->isListening());
    QVERIFY(session->portSettings().name.endsWith(QLatin1String(":0")));
    QTRY_VERIFY(session->connectionStatusText().contains(QLatin1String("Waiting for Connections")));

    auto client = connectClient();
    QVERIFY(client);
    QVERIFY(occupant.waitForNewConnection(waitMs));
    QTest::qWait(100);
    QCOMPARE(clientList->topLevelItemCount(), 0);
}

// Clients that connect and vanish at once must neither linger in the list
// nor leave sockets behind.
void TestTcpServerSession::vanishingClientsAreReleased()
{
    startOn(port);
    for (int i = 0; i < 30; ++i) {
        QTcpSocket client;
        client.connectToHost(QHostAddress::LocalHost, port);
        QVERIFY(client.waitForConnected(waitMs));
        if (i % 2)
            client.write("x");
        client.abort();
    }
    QTRY_COMPARE_WITH_TIMEOUT(clientList->topLevelItemCount(), 0, waitMs);
    QTRY_COMPARE_WITH_TIMEOUT(serverSocketCount(), 0, waitMs);
    QVERIFY(session->receivedBytes() <= 15);
}

void TestTcpServerSession::hundredClientsConnectAtOnce()
{
    startOn(port);
    Clients clients;
    for (int i = 0; i < 100; ++i) {
        clients.push_back(std::make_unique<QTcpSocket>());
        clients.back()->connectToHost(QHostAddress::LocalHost, port);
    }
    QTRY_COMPARE_WITH_TIMEOUT(clientList->topLevelItemCount(), 100, waitMs);
    for (const auto &client : clients)
        QCOMPARE(client->state(), QAbstractSocket::ConnectedState);

    clients.clear();
    QTRY_COMPARE_WITH_TIMEOUT(clientList->topLevelItemCount(), 0, waitMs);
    QTRY_COMPARE_WITH_TIMEOUT(serverSocketCount(), 0, waitMs);
}

namespace {

// Client c writes only the byte values 5c to 5c + 4: records of eight
// base-4 digits (a sequence number) ended by the value 5c + 4. So every
// received byte names its sender, and each sender's stream can be taken
// back out of the shared view and checked for order.
QByteArray patternOf(int client, int size)
{
    const char base = char(5 * client);
    QByteArray bytes;
    bytes.reserve(size + 9);
    for (int sequence = 0; bytes.size() < size; ++sequence) {
        for (int shift = 14; shift >= 0; shift -= 2)
            bytes += char(base + ((sequence >> shift) & 3));
        bytes += char(base + 4);
    }
    bytes.truncate(size);
    return bytes;
}

} // namespace

void TestTcpServerSession::everyByteOfFiftyClientsArrivesInOrder()
{
    constexpr int clientCount = 50;
    constexpr int size = 64 * 1024;
    constexpr qint64 total = qint64(clientCount) * size;

    panel->child<QRadioButton>("hexRadio")->setChecked(true);
    FormatSetting format = session->formatSettings();
    format.DisplayBufferSize = 64 << 20;
    session->setFormatSettings(format);
    startOn(port);

    Clients clients;
    for (int i = 0; i < clientCount; ++i) {
        clients.push_back(connectClient());
        QVERIFY(clients.back());
    }
    QTRY_COMPARE_WITH_TIMEOUT(clientList->topLevelItemCount(), clientCount, waitMs);
    for (int i = 0; i < clientCount; ++i)
        clients[i]->write(patternOf(i, size));

    QTRY_COMPARE_WITH_TIMEOUT(session->receivedBytes(), total, 10000);
    QTRY_COMPARE(session->rxStatusText(), QStringLiteral("Rx: %L1 Bytes").arg(total));

    const QByteArray shown = QByteArray::fromHex(panel->viewText().toLatin1());
    QCOMPARE(shown.size(), total);
    std::vector<QByteArray> received(clientCount);
    for (const char byte : shown)
        received[quint8(byte) / 5] += byte;
    for (int i = 0; i < clientCount; ++i)
        QVERIFY2(received[i] == patternOf(i, size), qPrintable(QStringLiteral("client %1").arg(i)));
}

QTEST_MAIN(TestTcpServerSession)
#include "tst_tcpserversession.moc"
