#ifndef QUORVANE_RECEIVEQUEUE_H
#define QUORVANE_RECEIVEQUEUE_H

#include <QQueue>

#include "common/types.h"

// The session's traffic between the transports and the refresh tick.
//
// It counts the bytes it holds, so that the session can hold its transport
// back while a flood waits and let it read again once most of that is worked
// off; the flood then waits in the device or the system, not in memory.
// A received chunk larger than a slice is queued as slices with the same
// time, which render exactly as the whole chunk would, so that a tick can
// stop between them.
class ReceiveQueue
{
public:
    static constexpr qsizetype SliceSize = 64 << 10;
    // Reading stops above the high mark and starts again below the low one.
    static constexpr qint64 HighMark = qint64(4) << 20;
    static constexpr qint64 LowMark = qint64(1) << 20;

    void enqueue(const rxData &chunk);
    rxData dequeue();
    bool isEmpty() const { return chunks.isEmpty(); }
    qint64 bytes() const { return queued; }

    // Whether the transport should read, given what waits here and, beyond
    // it, elsewhere on its way out (log text not yet written).
    bool wantsReading(qint64 waitingElsewhere);

private:
    QQueue<rxData> chunks;
    qint64 queued = 0;
    bool reading = true;
};

#endif
