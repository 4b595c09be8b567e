#include <QtTest>

#include <QTcpServer>
#include <QTcpSocket>

#include "testsupport.h"
#include "transport/reconnectpolicy.h"
#include "transport/tcpclienttransport.h"

// A link whose every move the test makes: reopen() ends as `nextAttempt`
// says.
struct FakeLink : Transport
{
    State linkState = Up;
    State nextAttempt = Down;
    int reopens = 0;

    void open() override {}
    void reopen() override
    {
        ++reopens;
        linkState = nextAttempt;
        if (linkState == Up)
            emit opened();
        else if (linkState == Down)
            emit openFailed();
    }
    void close() override { linkState = Down; }
    State state() const override { return linkState; }
    void write(const QByteArray &) override {}
    qint64 sendBacklog() const override { return 0; }
    void drop()
    {
        linkState = Down;
        emit lost();
    }
};

class TestLinkControl : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        link = std::make_unique<FakeLink>();
        policy = std::make_unique<ReconnectPolicy>();
        policy->setEnabled(true);
        policy->watch(link.get(), {10, 40, 0});
    }

    void lossIsAnnouncedOnceAndRetriedWithBackOff();
    void nothingIsRetriedWhenOffOrStopped();
    void silentHostIsGivenUpAndTriedAgain();

private:
    IsolatedEnvironment environment;
    std::unique_ptr<FakeLink> link;
    std::unique_ptr<ReconnectPolicy> policy;
};

// Failed attempts wait 10, 20, 40, 40 ms; a return resets the delay.
void TestLinkControl::lossIsAnnouncedOnceAndRetriedWithBackOff()
{
    QSignalSpy disconnected(policy.get(), &ReconnectPolicy::disconnected);
    QSignalSpy reconnected(policy.get(), &ReconnectPolicy::reconnected);
    link->drop();
    QList<int> delays{policy->pendingDelay()};
    connect(link.get(), &Transport::openFailed, this, [&] { delays << policy->pendingDelay(); });
    QTRY_VERIFY(delays.size() >= 4);
    QCOMPARE(delays.mid(0, 4), QList<int>({10, 20, 40, 40}));
    QVERIFY(policy->isWaiting());
    link->nextAttempt = Transport::Up;
    QTRY_VERIFY(!policy->isWaiting());
    QCOMPARE(disconnected.count(), 1);
    QCOMPARE(reconnected.count(), 1);

    link->drop();
    QCOMPARE(disconnected.count(), 2);
    QCOMPARE(policy->pendingDelay(), 10);
}

// Off, a loss is neither announced nor retried. Switched on, a link that is
// down is waited for; Stop ends the waiting before any attempt.
void TestLinkControl::nothingIsRetriedWhenOffOrStopped()
{
    QSignalSpy disconnected(policy.get(), &ReconnectPolicy::disconnected);
    policy->setEnabled(false);
    link->drop();
    QCOMPARE(disconnected.count(), 0);
    QVERIFY(!policy->isWaiting());
    policy->setEnabled(true);
    QVERIFY(policy->isWaiting());
    policy->stop();
    QTest::qWait(50);
    QCOMPARE(link->reopens, 0);
    QVERIFY(!policy->isWaiting());
}

// A listener whose backlog is full never answers; each attempt is given up
// after its timeout and a new one made, until the listener takes it.
void TestLinkControl::silentHostIsGivenUpAndTriedAgain()
{
    QTcpServer listener;
    listener.setListenBacklogSize(0);
    QVERIFY(listener.listen(QHostAddress::LocalHost, 0));
    listener.pauseAccepting();
    QTcpSocket filler;
    filler.connectToHost(QHostAddress::LocalHost, listener.serverPort());
    QVERIFY(filler.waitForConnected(5000));

    TcpClientTransport client;
    client.setTarget({QStringLiteral("127.0.0.1"), listener.serverPort()});
    client.open();
    policy->watch(&client, {100, 100, 300});
    const QTcpSocket *firstAttempt = client.socket();
    QTRY_VERIFY_WITH_TIMEOUT(client.socket() != firstAttempt, 2000);
    QCOMPARE(client.state(), Transport::Connecting);
    listener.resumeAccepting();
    QTRY_COMPARE_WITH_TIMEOUT(client.state(), Transport::Up, 5000);
}

QTEST_MAIN(TestLinkControl)
#include "tst_linkcontrol.moc"
