#include <QtTest>

#include <QCheckBox>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>

#include "common/hled.h"
#include "session/controllinespanel.h"
#include "testsupport.h"
#include "transport/controllines.h"
#include "transport/reconnectpolicy.h"
#include "transport/tcpclienttransport.h"

using Signals = QSerialPort::PinoutSignals;

// A link whose every move the test makes: reopen() ends as `nextAttempt`
// says, and the lines report `reported` (nothing: the device cannot tell).
struct FakeLink : Transport, ControlLines
{
    State linkState = Up;
    State nextAttempt = Down;
    int reopens = 0;
    bool hardware = false;
    bool dtr = true;
    bool rts = true;
    QList<bool> breaks;
    std::optional<Signals> reported = Signals();

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

    bool isOpen() const override { return linkState == Up; }
    bool hardwareFlowControl() const override { return hardware; }
    void setDataTerminalReady(bool on) override { dtr = on; }
    void setRequestToSend(bool on) override { rts = on; }
    bool dataTerminalReady() const override { return dtr; }
    bool requestToSend() const override { return rts; }
    void setBreakEnabled(bool on) override { breaks << on; }
    std::optional<Signals> pinoutSignals() override { return reported; }
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
    void panelShowsTheLines_data();
    void panelShowsTheLines();
    void togglesAndBreakDriveTheLines();

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

void TestLinkControl::panelShowsTheLines_data()
{
    QTest::addColumn<bool>("open");
    QTest::addColumn<bool>("hardwareFlow");
    QTest::addColumn<int>("reported");        // -1: the device cannot tell
    QTest::addColumn<QList<bool>>("lamps");   // CTS, DSR, DCD, RI
    QTest::addColumn<bool>("dtrShown");

    const int ctsDcd = QSerialPort::ClearToSendSignal | QSerialPort::DataCarrierDetectSignal;
    QTest::newRow("reported, DTR low") << true << false << ctsDcd << QList<bool>{true, false, true, false} << false;
    QTest::newRow("ring, RTS/CTS flow") << true << true
                                        << int(QSerialPort::RingIndicatorSignal | QSerialPort::DataTerminalReadySignal)
                                        << QList<bool>{false, false, false, true} << true;
    QTest::newRow("cannot tell: wanted level") << true << false << -1 << QList<bool>(4, false) << true;
    QTest::newRow("closed") << false << false << ctsDcd << QList<bool>(4, false) << true;
}

void TestLinkControl::panelShowsTheLines()
{
    QFETCH(bool, open);
    QFETCH(bool, hardwareFlow);
    QFETCH(int, reported);
    link->linkState = open ? Transport::Up : Transport::Down;
    link->hardware = hardwareFlow;
    link->reported = reported < 0 ? std::nullopt : std::optional<Signals>(Signals::fromInt(reported));
    ControlLinesPanel panel(link.get());
    QList<bool> lamps;
    for (const HLed *lamp : panel.findChildren<HLed *>())
        lamps << lamp->isOn();
    QTEST(lamps, "lamps");
    QCOMPARE(panel.findChild<QWidget *>("modemLines")->isEnabled(), open && reported >= 0);
    QTEST(panel.findChild<QCheckBox *>("dtrBox")->isChecked(), "dtrShown");
    QCOMPARE(panel.findChild<QCheckBox *>("rtsBox")->isEnabled(), !hardwareFlow);
    QCOMPARE(panel.findChild<QPushButton *>("breakButton")->isEnabled(), open);
}

// A toggle applies its level at once and then shows what the device
// reports; a break lasts as long as asked.
void TestLinkControl::togglesAndBreakDriveTheLines()
{
    ControlLinesPanel panel(link.get());
    auto *dtrBox = panel.findChild<QCheckBox *>("dtrBox");
    link->reported = Signals(QSerialPort::DataTerminalReadySignal);
    panel.refresh();
    QVERIFY(dtrBox->isChecked());
    link->reported = Signals();   // the device drops DTR as asked
    dtrBox->click();
    QVERIFY(!link->dtr);
    QVERIFY(!dtrBox->isChecked());

    panel.setBreakDuration(50);
    auto *breakButton = panel.findChild<QPushButton *>("breakButton");
    breakButton->click();
    QCOMPARE(link->breaks, QList<bool>{true});
    QVERIFY(!breakButton->isEnabled());
    QTRY_COMPARE(link->breaks, QList<bool>({true, false}));
    QVERIFY(breakButton->isEnabled());
}

QTEST_MAIN(TestLinkControl)
#include "tst_linkcontrol.moc"
