#include "common/timerbeat.h"

#include <QElapsedTimer>
#include <QTimer>

void startOnBeat(QTimer *timer, int interval, int phase)
{
    static const QElapsedTimer epoch = [] {
        QElapsedTimer clock;
        clock.start();
        return clock;
    }();
    if (interval <= 0) {
        timer->start(interval);
        return;
    }
    const int untilBeat = interval - int(((epoch.elapsed() - phase) % interval + interval) % interval);
    timer->start(untilBeat);
    if (untilBeat != interval) {
        // Set again when the beat comes, the interval starts counting there.
        QObject::connect(timer, &QTimer::timeout, timer, [timer, interval] { timer->setInterval(interval); },
                         Qt::SingleShotConnection);
    }
}
