#ifndef QUORVANE_RECONNECTPOLICY_H
#define QUORVANE_RECONNECTPOLICY_H

#include <QPointer>
#include <QTimer>

#include "transport/transport.h"

// Brings a lost link back by itself: after the link ends or an attempt
// fails, it tries again with the same settings after a delay that doubles
// up to a cap, and gives up an attempt that takes too long. Each loss is
// announced once, and the return after it once.
class ReconnectPolicy : public QObject
{
    Q_OBJECT

public:
    struct Timing {
        int firstDelay;     // ms before the first new attempt
        int maxDelay;       // each failure doubles the delay up to this
        int attemptTimeout; // ms an attempt may take; 0: as long as it takes
    };
    // A device is looked for once a second; a host is tried ever less often.
    static constexpr Timing DeviceTiming{1000, 1000, 0};
    static constexpr Timing HostTiming{1000, 30000, 10000};

    explicit ReconnectPolicy(QObject *parent = nullptr);

    void setEnabled(bool enabled);
    bool isEnabled() const { return enabled; }
    // Looks after this transport from now on, which has just been opened;
    // null looks after none.
    void watch(Transport *transport, const Timing &timing);
    // Looks after nothing any more: no attempt, no announcement pending.
    void stop() { watch(nullptr, timing); }
    bool isWaiting() const;
    // The delay before the attempt now pending; 0 when none is.
    int pendingDelay() const { return retryTimer.isActive() ? retryTimer.interval() : 0; }

signals:
    void disconnected();
    void reconnected();

private:
    void followState();
    void linkLost();
    void attemptFailed();
    void linkOpened();
    void retry();
    void giveUpAttempt();
    void scheduleRetry();
    void armAttempt();

    QPointer<Transport> transport;
    Timing timing = DeviceTiming;
    QTimer retryTimer;
    QTimer attemptTimer;
    int delay = 0;
    bool enabled = false;
    bool lossAnnounced = false;
};

#endif
