#include "session/receivequeue.h"

void ReceiveQueue::enqueue(const rxData &chunk)
{
    queued += chunk.data.size();
    if (chunk.direction != RX || chunk.data.size() <= SliceSize) {
        chunks.enqueue(chunk);
        return;
    }
    for (qsizetype at = 0; at < chunk.data.size(); at += SliceSize)
        chunks.enqueue({chunk.time, chunk.direction, chunk.data.mid(at, SliceSize)});
}

rxData ReceiveQueue::dequeue()
{
    rxData chunk = chunks.dequeue();
    queued -= chunk.data.size();
    return chunk;
}

bool ReceiveQueue::wantsReading(qint64 waitingElsewhere)
{
    const qint64 waiting = queued + waitingElsewhere;
    if (reading && waiting > HighMark)
        reading = false;
    else if (!reading && waiting < LowMark)
        reading = true;
    return reading;
}
