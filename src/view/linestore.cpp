#include "view/linestore.h"

#include <algorithm>

namespace {

bool isLineBreak(char16_t c)
{
    return c == u'\n' || c == u'\r' || c == u'\x2029';
}

} // namespace

LineStore::LineStore()
{
    starts.push_back(0);
}

QString &LineStore::writableChunk()
{
    if (chunks.empty() || chunks.back().size() == ChunkSize) {
        chunks.emplace_back();
        chunks.back().reserve(ChunkSize);
    }
    return chunks.back();
}

void LineStore::append(QStringView text, const TextStyle &style)
{
    if (text.isEmpty())
        return;
    const bool plainSoFar = runs.empty() && style == TextStyle();
    if (!plainSoFar && (runs.empty() || runs.back().style != style)) {
        if (!runs.empty() && runs.back().start == last)
            runs.back().style = style;
        else
            runs.push_back({last, style});
    }

    const char16_t *from = text.utf16();
    qsizetype left = text.size();
    while (left > 0) {
        QString &chunk = writableChunk();
        const qsizetype lineRoom = MaxLineLength - (last - starts.back());
        const qsizetype span = std::min({left, ChunkSize - chunk.size(), lineRoom});
        qsizetype plain = 0;
        while (plain < span && !isLineBreak(from[plain]))
            ++plain;
        chunk.append(QStringView(from, plain));
        last += plain;
        from += plain;
        left -= plain;
        if (plain < span) {
            chunk.append(QLatin1Char('\n'));
            ++last;
            ++from;
            --left;
            starts.push_back(last);
        } else if (last - starts.back() >= MaxLineLength) {
            breakLongLine();
        }
    }
}

// The next piece starts after a blank near the end, so that words and hex
// bytes stay whole on screen.
void LineStore::breakLongLine()
{
    const qint64 floor = std::max(starts.back() + 1, last - BlankSearchLength);
    qint64 breakAt = last;
    for (qint64 p = last; p > floor; --p) {
        if (at(p - 1) == QLatin1Char(' ')) {
            breakAt = p;
            break;
        }
    }
    starts.push_back(breakAt);
}

void LineStore::truncate(qint64 position)
{
    position = std::clamp(position, first, last);
    if (position == last)
        return;
    const qint64 offset = position - chunkBase;
    const size_t keep = size_t(offset / ChunkSize);
    chunks.resize(keep + 1);
    chunks.back().truncate(offset % ChunkSize);
    while (starts.size() > 1 && starts.back() > position)
        starts.pop_back();
    while (!runs.empty() && runs.back().start >= position)
        runs.pop_back();
    last = position;
}

qint64 LineStore::cutToLimit(qint64 limit)
{
    if (size() <= limit)
        return 0;
    const qint64 half = std::max<qint64>(1, limit / 2);
    const qint64 halves = (size() - limit + half - 1) / half;
    const qint64 dropped = std::min(size(), halves * half);
    first += dropped;
    while (!chunks.empty() && chunkBase + ChunkSize <= first) {
        chunks.pop_front();
        chunkBase += ChunkSize;
    }
    while (starts.size() > 1 && starts[1] <= first) {
        starts.pop_front();
        ++firstLineNumber;
    }
    starts.front() = first;
    while (runs.size() > 1 && runs[1].start <= first)
        runs.pop_front();
    if (!runs.empty())
        runs.front().start = std::max(runs.front().start, first);
    return dropped;
}

void LineStore::clear()
{
    chunks.clear();
    chunkBase = first = last = 0;
    starts = {0};
    firstLineNumber = 0;
    runs.clear();
    ++clears;
}

QString LineStore::text(qint64 from, qint64 to) const
{
    from = std::max(from, first);
    to = std::min(to, last);
    QString result;
    if (to <= from)
        return result;
    result.reserve(to - from);
    while (from < to) {
        const qint64 offset = from - chunkBase;
        const QString &chunk = chunks[size_t(offset / ChunkSize)];
        const qsizetype inChunk = offset % ChunkSize;
        const qsizetype length = qsizetype(std::min<qint64>(to - from, chunk.size() - inChunk));
        result.append(QStringView(chunk).mid(inChunk, length));
        from += length;
    }
    return result;
}

QChar LineStore::at(qint64 position) const
{
    const qint64 offset = position - chunkBase;
    return chunks[size_t(offset / ChunkSize)].at(offset % ChunkSize);
}

qint64 LineStore::lineEnd(qint64 line) const
{
    if (line >= lastLine())
        return last;
    const qint64 next = lineStart(line + 1);
    return at(next - 1) == QLatin1Char('\n') ? next - 1 : next;
}

qint64 LineStore::lineAt(qint64 position) const
{
    const auto after = std::upper_bound(starts.begin(), starts.end(), position);
    return firstLineNumber + std::max<qint64>(0, qint64(after - starts.begin()) - 1);
}

QVector<LineStore::StyleRun> LineStore::styleRuns(qint64 from, qint64 to) const
{
    QVector<StyleRun> result;
    auto run = std::upper_bound(runs.begin(), runs.end(), from,
                                [](qint64 position, const StyleRun &r) { return position < r.start; });
    if (run == runs.begin())
        result.append({from, TextStyle()});
    else
        result.append({from, std::prev(run)->style});
    for (; run != runs.end() && run->start < to; ++run)
        result.append(*run);
    return result;
}
