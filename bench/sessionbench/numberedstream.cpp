#include "numberedstream.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace NumberedStream {
namespace {

constexpr int SourceDigits = 5;
constexpr int NumberDigits = 10;
constexpr int HeaderLength = SourceDigits + 1 + NumberDigits + 1;

constexpr qint64 powersOfTen[NumberDigits] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000,
                                              100000000, 1000000000};

char digit(qint64 value, int fromRight)
{
    return char('0' + value / powersOfTen[fromRight] % 10);
}

char payloadAt(int source, qint64 number, int column)
{
    static const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    quint32 h = quint32(source) * 0x9E3779B1u ^ quint32(number) * 0x85EBCA77u
        ^ quint32(number >> 32) * 0x27D4EB2Fu ^ quint32(column) * 0xC2B2AE3Du;
    h ^= h >> 15;
    h *= 0x2C1B3C6Du;
    h ^= h >> 12;
    return alphabet[h % (sizeof alphabet - 1)];
}

// Reads "sssss:nnnnnnnnnn " at `at`.
bool parseHeader(const QByteArray &text, qint64 at, int *source, qint64 *number)
{
    if (text.at(at + SourceDigits) != ':' || text.at(at + HeaderLength - 1) != ' ')
        return false;
    bool sourceOk = false;
    bool numberOk = false;
    *source = text.mid(at, SourceDigits).toInt(&sourceOk);
    *number = text.mid(at + SourceDigits + 1, NumberDigits).toLongLong(&numberOk);
    return sourceOk && numberOk;
}

} // namespace

char byteAt(int source, qint64 offset)
{
    const qint64 number = offset / LineLength;
    const int column = int(offset % LineLength);
    if (column < SourceDigits)
        return digit(source, SourceDigits - 1 - column);
    if (column == SourceDigits)
        return ':';
    if (column < HeaderLength - 1)
        return digit(number, HeaderLength - 2 - column);
    if (column == HeaderLength - 1)
        return ' ';
    if (column == LineLength - 1)
        return '\n';
    return payloadAt(source, number, column);
}

QByteArray bytes(int source, qint64 offset, qint64 count)
{
    QByteArray data(count, Qt::Uninitialized);
    for (qint64 i = 0; i < count; ++i)
        data[i] = byteAt(source, offset + i);
    return data;
}

} // namespace NumberedStream

namespace {

using NumberedStream::byteAt;

// Walks the text back from its end, taking at each point the run of the
// stream that continues it, as long as another stream (or the start of the
// text) then takes over; where no stream goes on, the header of the line
// there tells whose piece it is and where it belongs.
class ReverseMatch
{
public:
    ReverseMatch(const QByteArray &text, const QVector<qint64> &sent)
        : text(text)
        , sent(sent)
        , at(sent.size(), 0)
    {
        for (int source = 0; source < sent.size(); ++source)
            moveTo(source, sent.at(source));
    }

    StreamDamage run(bool whole)
    {
        qint64 end = text.size();
        while (end > 0) {
            const Step step = chooseStep(end);
            if (step.source >= 0) {
                moveTo(step.source, at.at(step.source) - step.length);
                end -= step.length;
            } else {
                resync(end);
            }
        }
        if (whole) {
            for (qint64 unread : std::as_const(at))
                damage.lost += unread;
        }
        return damage;
    }

private:
    struct Step {
        int source = -1;
        qint64 length = 0;
    };

    // A run can reach into the piece before it where their bytes agree (a
    // line's final "\n" always does, line headers often do), and a short
    // piece can pass for the end of another stream. So the step taken is the
    // longest after which other streams go on for half a line, else the one
    // after which they go on furthest; a step that nothing follows leaves
    // the place to resync().
    Step chooseStep(qint64 end) const
    {
        constexpr qint64 overreach = 16;
        QVector<Step> runs;
        for (int source : byNextBytes.value(textKey(end)))
            runs.append({source, runLength(source, end)});
        std::sort(runs.begin(), runs.end(), [](const Step &a, const Step &b) { return a.length > b.length; });
        Step best;
        qint64 bestFollow = -1;
        auto consider = [&](const Step &step) {
            const qint64 follow = followingRun(end - step.length, step, step.source);
            if (follow > bestFollow) {
                best = step;
                bestFollow = follow;
            }
            return follow >= Enough / 2;
        };
        for (const Step &run : std::as_const(runs)) {
            for (qint64 length = run.length; length > std::max<qint64>(0, run.length - overreach); --length) {
                if (consider({run.source, length}))
                    return best;
            }
        }
        for (int source = 0; source < at.size(); ++source) {   // a piece of one byte
            if (at.at(source) > 0 && runLength(source, end, 1) == 1 && consider({source, 1}))
                return best;
        }
        return best.length + bestFollow >= Enough / 4 ? best : Step();
    }

    // How far other streams go on back from `end`, one after another (a few
    // at most), up to `budget` bytes; the start of the text counts as going
    // on. The step's own stream may come back further on, from where the
    // step leaves it.
    qint64 followingRun(qint64 end, const Step &step, int except, qint64 budget = Enough, int depth = 3) const
    {
        if (end == 0)
            return budget;
        QVector<int> candidates = byNextBytes.value(textKey(end));
        if (except != step.source)
            candidates.append(step.source);
        qint64 longest = 0;
        for (int source : std::as_const(candidates)) {
            if (source == except)
                continue;
            const qint64 offset = at.at(source) - (source == step.source ? step.length : 0);
            const qint64 run = runLength(source, end, budget, offset);
            const qint64 chain =
                run == budget || depth == 0 ? run : run + followingRun(end - run, step, source, budget - run, depth - 1);
            longest = std::max(longest, chain);
            if (longest == budget)
                break;
        }
        return longest;
    }

    static constexpr qint64 Enough = NumberedStream::LineLength;

    static quint32 key(char last, char beforeLast) { return quint8(last) | quint32(quint8(beforeLast)) << 8; }
    quint32 textKey(qint64 end) const { return key(text.at(end - 1), end >= 2 ? text.at(end - 2) : 0); }
    quint32 streamKey(int source) const
    {
        const qint64 offset = at.at(source);
        return key(byteAt(source, offset - 1), offset >= 2 ? byteAt(source, offset - 2) : 0);
    }

    void moveTo(int source, qint64 offset)
    {
        if (at.at(source) > 0)
            byNextBytes[streamKey(source)].removeOne(source);
        at[source] = offset;
        if (offset > 0)
            byNextBytes[streamKey(source)].append(source);
    }

    qint64 runLength(int source, qint64 end, qint64 limit = std::numeric_limits<qint64>::max(), qint64 offset = -1) const
    {
        if (offset < 0)
            offset = at.at(source);
        const qint64 most = std::min({end, offset, limit});
        qint64 n = 0;
        while (n < most && text.at(end - 1 - n) == byteAt(source, offset - 1 - n))
            ++n;
        return n;
    }

    // No stream goes on here. A line whose header and bytes agree is a piece
    // that comes back after a gap (the gap is lost) or a piece out of order;
    // anything else is foreign. Either way the walk goes on before it.
    void resync(qint64 &end)
    {
        const qint64 lineStart = (end >= 2 ? text.lastIndexOf('\n', end - 2) : -1) + 1;
        const qint64 length = end - lineStart;
        int source = 0;
        qint64 number = 0;
        if (length >= NumberedStream::HeaderLength && NumberedStream::parseHeader(text, lineStart, &source, &number)
            && source < sent.size()) {
            const qint64 to = number * NumberedStream::LineLength + length;
            if (to <= at.at(source) && text.mid(lineStart, length) == NumberedStream::bytes(source, to - length, length)) {
                damage.lost += at.at(source) - to;
                moveTo(source, to);
                return;
            }
        }
        damage.misplaced += length;
        end = lineStart;
    }

    const QByteArray &text;
    const QVector<qint64> &sent;
    QVector<qint64> at;                         // each stream is matched back down to here
    QHash<quint32, QVector<int>> byNextBytes;   // streams by the two bytes they need next
    StreamDamage damage;
};

} // namespace

StreamDamage checkStreams(const QByteArray &text, const QVector<qint64> &sent, bool whole)
{
    return ReverseMatch(text, sent).run(whole);
}
