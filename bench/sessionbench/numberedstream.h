#ifndef QUORVANE_BENCH_NUMBEREDSTREAM_H
#define QUORVANE_BENCH_NUMBEREDSTREAM_H

#include <QByteArray>
#include <QVector>

// The traffic of the session bench: one stream per source (a serial feeder
// or a TCP client) of 64-byte lines "sssss:nnnnnnnnnn payload\n", source and
// line number first, then characters drawn from both. Every byte follows from
// its source and offset, so a view or a log can be checked byte by byte, and
// a piece of one stream does not pass for a piece of another.
namespace NumberedStream {

constexpr int LineLength = 64;

char byteAt(int source, qint64 offset);
QByteArray bytes(int source, qint64 offset, qint64 count);

} // namespace NumberedStream

// What a text holds of the streams.
struct StreamDamage {
    qint64 lost = 0;       // sent, but not there
    qint64 misplaced = 0;  // there, but out of order, repeated or foreign

    StreamDamage &operator+=(const StreamDamage &other)
    {
        lost += other.lost;
        misplaced += other.misplaced;
        return *this;
    }
};

// Checks that `text` interleaves the streams, each in order, where sent[s]
// bytes of stream s were sent. A whole text (a log) holds every byte; any
// other (a view cut at its display buffer) holds a tail of the interleaving.
StreamDamage checkStreams(const QByteArray &text, const QVector<qint64> &sent, bool whole);

#endif
