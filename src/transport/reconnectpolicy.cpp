#include "transport/reconnectpolicy.h"

ReconnectPolicy::ReconnectPolicy(QObject *parent)
    : QObject(parent)
{
    retryTimer.setSingleShot(true);
    attemptTimer.setSingleShot(true);
    connect(&retryTimer, &QTimer::timeout, this, &ReconnectPolicy::retry);
    connect(&attemptTimer, &QTimer::timeout, this, &ReconnectPolicy::giveUpAttempt);
}

void ReconnectPolicy::setEnabled(bool on)
{
    if (enabled == on)
        return;
    enabled = on;
    retryTimer.stop();
    attemptTimer.stop();
    lossAnnounced = false;
    delay = timing.firstDelay;
    if (enabled)
        followState();
}

void ReconnectPolicy::watch(Transport *link, const Timing &newTiming)
{
    // Starting the same link again while it is away keeps its loss pending.
    const bool keepLoss = lossAnnounced && link == transport;
    if (transport)
        transport->disconnect(this);
    retryTimer.stop();
    attemptTimer.stop();
    transport = link;
    timing = newTiming;
    delay = timing.firstDelay;
    lossAnnounced = keepLoss;
    if (!transport)
        return;
    connect(transport, &Transport::lost, this, &ReconnectPolicy::linkLost);
    connect(transport, &Transport::openFailed, this, &ReconnectPolicy::attemptFailed);
    connect(transport, &Transport::opened, this, &ReconnectPolicy::linkOpened);
    if (enabled)
        followState();
}

bool ReconnectPolicy::isWaiting() const
{
    return enabled && transport && transport->state() != Transport::Up;
}

// Picks up a link as it is now: down, it is tried again; on its way, it is
// given its time.
void ReconnectPolicy::followState()
{
    if (!transport)
        return;
    if (transport->state() == Transport::Down)
        scheduleRetry();
    else if (transport->state() == Transport::Connecting)
        armAttempt();
}

void ReconnectPolicy::linkLost()
{
    if (!enabled)
        return;
    if (!lossAnnounced) {
        lossAnnounced = true;
        emit disconnected();
    }
    scheduleRetry();
}

void ReconnectPolicy::attemptFailed()
{
    if (!enabled)
        return;
    attemptTimer.stop();
    scheduleRetry();
}

void ReconnectPolicy::linkOpened()
{
    retryTimer.stop();
    attemptTimer.stop();
    delay = timing.firstDelay;
    if (lossAnnounced) {
        lossAnnounced = false;
        emit reconnected();
    }
}

void ReconnectPolicy::retry()
{
    if (!transport)
        return;
    transport->reopen();
    if (transport && transport->state() == Transport::Connecting)
        armAttempt();
}

void ReconnectPolicy::giveUpAttempt()
{
    if (!transport || transport->state() == Transport::Up)
        return;
    transport->close();
    if (!retryTimer.isActive())
        scheduleRetry();
}

void ReconnectPolicy::scheduleRetry()
{
    retryTimer.start(delay);
    delay = qMin(delay * 2, timing.maxDelay);
}

void ReconnectPolicy::armAttempt()
{
    if (timing.attemptTimeout > 0)
        attemptTimer.start(timing.attemptTimeout);
}
