#include "view/linestore.h"

#include <cstring>

namespace {

// Copies text one byte a character; false when a character does not fit
// Latin-1 (out is then written all the same). Blocks of a fixed size, on
// copies that alias nothing, let the compiler use vector instructions.
bool copyLatin1(QStringView text, char *out)
{
    constexpr qsizetype block = 16;
    const char16_t *in = text.utf16();
    const qsizetype size = text.size();
    char16_t any = 0;
    qsizetype i = 0;
    for (; i + block <= size; i += block) {
        char16_t wide[block];
        char narrow[block];
        std::memcpy(wide, in + i, sizeof wide);
        for (qsizetype k = 0; k < block; ++k) {
            any |= wide[k];
            narrow[k] = char(wide[k]);
        }
        std::memcpy(out + i, narrow, sizeof narrow);
    }
    for (; i < size; ++i) {
        any |= in[i];
        out[i] = char(in[i]);
    }
    return any < 0x100;
}

} // namespace

#include <algorithm>

LineStore::Chunk::Chunk()
{
    latin1.reserve(ChunkSize);
}

void LineStore::Chunk::append(QStringView text)
{
    if (!wide) {
        const qsizetype old = latin1.size();
        latin1.resize(old + text.size());
        if (copyLatin1(text, latin1.data() + old))
            return;
        latin1.truncate(old);
        utf16.reserve(ChunkSize);
        utf16.append(QLatin1StringView(latin1));
        latin1 = QByteArray();
        wide = true;
    }
    utf16.append(text);
}

void LineStore::Chunk::appendTo(QString &out, qsizetype from, qsizetype length) const
{
    if (wide)
        out.append(QStringView(utf16).mid(from, length));
    else
        out.append(QLatin1StringView(latin1.constData() + from, length));
}

void LineStore::Chunk::truncate(qsizetype length)
{
    if (wide)
        utf16.truncate(length);
    else
        latin1.truncate(length);
}

LineStore::LineStore()
{
    starts.push_back(0);
}

LineStore::Chunk &LineStore::writableChunk()
{
    if (chunks.empty() || chunks.back().size() == ChunkSize)
        chunks.emplace_back();
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

    // Where the next break of each kind is; each is looked for again only
    // once it has been passed, so a long text is searched once.
    const QChar paragraphSeparator(0x2029);
    qsizetype feed = text.indexOf(QLatin1Char('\n'));
    qsizetype carriageReturn = text.indexOf(QLatin1Char('\r'));
    qsizetype paragraph = text.indexOf(paragraphSeparator);
    auto nextBreak = [&](qsizetype from) {
        if (feed >= 0 && feed < from)
            feed = text.indexOf(QLatin1Char('\n'), from);
        if (carriageReturn >= 0 && carriageReturn < from)
            carriageReturn = text.indexOf(QLatin1Char('\r'), from);
        if (paragraph >= 0 && paragraph < from)
            paragraph = text.indexOf(paragraphSeparator, from);
        qsizetype nearest = text.size();
        for (const qsizetype at : {feed, carriageReturn, paragraph}) {
            if (at >= 0)
                nearest = std::min(nearest, at);
        }
        return nearest;
    };

    qsizetype done = 0;
    if (carriageReturnLast && text.startsWith(QLatin1Char('\n')))
        done = 1;
    carriageReturnLast = false;
    while (done < text.size()) {
        Chunk &chunk = writableChunk();
        const qsizetype lineRoom = MaxLineLength - (last - starts.back());
        const qsizetype span = std::min({text.size() - done, ChunkSize - chunk.size(), lineRoom});
        const qsizetype plain = std::min(span, nextBreak(done) - done);
        chunk.append(text.mid(done, plain));
        last += plain;
        done += plain;
        if (plain < span) {
            chunk.append(QStringView(u"\n"));
            ++last;
            const bool pair = text.at(done) == QLatin1Char('\r');
            ++done;
            if (pair && done == text.size())
                carriageReturnLast = true;
            else if (pair && text.at(done) == QLatin1Char('\n'))
                ++done;
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
    carriageReturnLast = false;
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
    carriageReturnLast = false;
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
        const Chunk &chunk = chunks[size_t(offset / ChunkSize)];
        const qsizetype inChunk = offset % ChunkSize;
        const qsizetype length = qsizetype(std::min<qint64>(to - from, chunk.size() - inChunk));
        chunk.appendTo(result, inChunk, length);
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
