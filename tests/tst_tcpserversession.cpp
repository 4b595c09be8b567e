#include <QtTest>

#include <QRadioButton>
#include <QTcpSocket>
#include <QTreeWidget>
#include <vector>

#include "net/multiclientserver.h"
#include "networksession.h"
#include "testsupport.h"

// A port session in TCP server mode with real clients played by the test.
class TestTcpServerSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); }
    void init()
    {
        panel = std::make_unique<NetworkPanel>(QStringLiteral("TCP Server"));
        session = panel->session.get();
        clientList = panel->child<QTreeWidget>("clientTw");
        port = freeTcpPort();
        panel->setPort(port);
    }
    void cleanup() { panel.reset(); }

    void clientsAreListedAndAddressedInConnectOrder();
    void stopEmptiesTheListButDataStillArrivesAndStartListensAgain();
    void everyByteOfFiftyOfAHundredClientsArrivesInOrder();
    void aFloodIsHeldBackInTheConnection();

private:
    std::unique_ptr<QTcpSocket> connectClient()
    {
        auto client = std::make_unique<QTcpSocket>();
        client->connectToHost(QHostAddress::LocalHost, port);
        return client->waitForConnected(waitMs) ? std::move(client) : nullptr;
    }
    QStringList listedClients() const
    {
        QStringList rows;
        for (int i = 0; i < clientList->topLevelItemCount(); ++i)
            rows << clientList->topLevelItem(i)->text(0);
        return rows;
    }
    // Clients of a dual-stack listener show by their IPv4 address.
    static QString keyOf(const QTcpSocket &client) { return QStringLiteral("127.0.0.1:%1").arg(client.localPort()); }

    IsolatedEnvironment environment;
    std::unique_ptr<NetworkPanel> panel;
    SerialPortWidget *session = nullptr;
    QTreeWidget *clientList = nullptr;
    quint16 port = 0;
};

// A send goes to the selected row, or to the first when none is selected.
void TestTcpServerSession::clientsAreListedAndAddressedInConnectOrder()
{
    session->start();
    const QString where = QStringLiteral("%1:%2").arg(session->server()->serverAddress().toString()).arg(port);
    QCOMPARE(session->portSettings().name, where);
    QTRY_COMPARE(panel->status(), greenStatus(QStringLiteral("Waiting for Connections on %1...").arg(where)));
    QVERIFY(!session->portIsOpen());

    auto first = connectClient();
    QVERIFY(first);
    QTRY_COMPARE(clientList->topLevelItemCount(), 1);
    auto second = connectClient();
    QVERIFY(second);
    QTRY_COMPARE(listedClients(), QStringList({keyOf(*first), keyOf(*second)}));
    QTRY_COMPARE(panel->status(), greenStatus(QStringLiteral("Listening on %1").arg(where)));

    panel->send(QStringLiteral("to the first"));
    QTRY_COMPARE_WITH_TIMEOUT(first->peek(64), QByteArray("to the first"), waitMs);
    clientList->setCurrentItem(clientList->topLevelItem(1));
    panel->send(QStringLiteral("to the second"));
    QTRY_COMPARE_WITH_TIMEOUT(second->peek(64), QByteArray("to the second"), waitMs);
    QTest::qWait(100);
    QCOMPARE(first->readAll(), QByteArray("to the first"));

    first->write("bye");
    first->disconnectFromHost();
    QTRY_COMPARE_WITH_TIMEOUT(listedClients(), QStringList{keyOf(*second)}, waitMs);
    QTRY_COMPARE(panel->viewText(), QStringLiteral("bye"));
    auto third = connectClient();
    QVERIFY(third);
    QTRY_COMPARE(listedClients(), QStringList({keyOf(*second), keyOf(*third)}));
    QTRY_VERIFY(clientList->updatesEnabled());   // the changes are drawn at the next refresh
}

// A second start listens on the port now in the panel.
void TestTcpServerSession::stopEmptiesTheListButDataStillArrivesAndStartListensAgain()
{
    session->start();
    auto client = connectClient();
    QVERIFY(client);
    QTRY_COMPARE(clientList->topLevelItemCount(), 1);

    session->stop();
    QCOMPARE(clientList->topLevelItemCount(), 0);
    QCOMPARE(session->runState(), int(Stopped));
    client->write("after stop");
    QTRY_COMPARE_WITH_TIMEOUT(panel->viewText(), QStringLiteral("after stop"), waitMs);
    QTRY_COMPARE(session->rxStatusText(), QStringLiteral("Rx: 10 Bytes"));

    const quint16 oldPort = port;
    port = freeTcpPort();
    panel->setPort(port);
    session->start();
    QCOMPARE(session->server()->serverPort(), port);
    auto again = connectClient();
    QVERIFY(again);
    QTRY_COMPARE(clientList->topLevelItemCount(), 1);
    QTcpSocket stale;
    stale.connectToHost(QHostAddress::LocalHost, oldPort);
    QVERIFY(!stale.waitForConnected(waitMs));
}

// Client c writes only the byte values 5c to 5c + 4: records of eight base-4
// digits (a sequence number) ended by 5c + 4. Every received byte names its
// sender, so each stream can be taken back out of the shared view in order.
static QByteArray patternOf(int client, int size)
{
    const char base = char(5 * client);
    QByteArray bytes;
    for (int sequence = 0; bytes.size() < size; ++sequence) {
        for (int shift = 14; shift >= 0; shift -= 2)
            bytes += char(base + ((sequence >> shift) & 3));
        bytes += char(base + 4);
    }
    return bytes.left(size);
}

// A hundred clients connect at once; fifty of them send 64 KiB each. All are
// released when they go.
void TestTcpServerSession::everyByteOfFiftyOfAHundredClientsArrivesInOrder()
{
    constexpr int clientCount = 50;
    constexpr int size = 64 * 1024;
    constexpr qint64 total = qint64(clientCount) * size;
    panel->child<QRadioButton>("hexRadio")->setChecked(true);
    FormatSetting format = session->formatSettings();
    format.DisplayBufferSize = 64 << 20;
    session->setFormatSettings(format);
    session->start();

    std::vector<std::unique_ptr<QTcpSocket>> clients;
    for (int i = 0; i < 100; ++i) {
        clients.push_back(std::make_unique<QTcpSocket>());
        clients.back()->connectToHost(QHostAddress::LocalHost, port);
    }
    QTRY_COMPARE_WITH_TIMEOUT(clientList->topLevelItemCount(), 100, waitMs);
    for (int i = 0; i < clientCount; ++i)
        clients[i]->write(patternOf(i, size));

    QTRY_COMPARE_WITH_TIMEOUT(session->receivedBytes(), total, 10000);
    QTRY_COMPARE(session->rxStatusText(), QStringLiteral("Rx: %L1 Bytes").arg(total));
    QTRY_COMPARE(session->queuedBytes(), qint64(0));   // the view catches up over a few refreshes
    const QByteArray shown = QByteArray::fromHex(panel->viewText().toLatin1());
    QCOMPARE(shown.size(), total);
    std::vector<QByteArray> received(clientCount);
    for (const char byte : shown)
        received[quint8(byte) / 5] += byte;
    for (int i = 0; i < clientCount; ++i)
        QVERIFY2(received[i] == patternOf(i, size), qPrintable(QStringLiteral("client %1").arg(i)));

    clients.clear();
    QTRY_COMPARE_WITH_TIMEOUT(clientList->topLevelItemCount(), 0, waitMs);
    QTRY_COMPARE_WITH_TIMEOUT(session->server()->findChildren<QTcpSocket *>().size(), qsizetype(0), waitMs);
}

// A client that sends faster than the view can show is held back by its
// own connection: what waits in the session stays near its mark, and every
// byte arrives in order.
void TestTcpServerSession::aFloodIsHeldBackInTheConnection()
{
    FormatSetting format = session->formatSettings();
    format.DisplayBufferSize = 64 << 20;
    session->setFormatSettings(format);
    session->start();
    auto client = connectClient();
    QVERIFY(client);
    QByteArray sent;
    for (int i = 0; sent.size() < (16 << 20); ++i)
        sent += QByteArray::number(i).rightJustified(8, '0') + " the quick brown fox\n";
    client->write(sent);
    qint64 mostQueued = 0;
    QTRY_VERIFY_WITH_TIMEOUT((mostQueued = qMax(mostQueued, session->queuedBytes()),
                              session->receivedBytes() == sent.size() && session->queuedBytes() == 0), 60000);
    QVERIFY2(mostQueued <= ReceiveQueue::HighMark + (1 << 20), qPrintable(QString::number(mostQueued)));
    QCOMPARE(panel->viewText(), QString::fromLatin1(sent));
}

QTEST_MAIN(TestTcpServerSession)
#include "tst_tcpserversession.moc"
