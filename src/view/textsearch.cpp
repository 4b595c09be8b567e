#include "view/textsearch.h"

#include <algorithm>

#include "view/linestore.h"

TextMatcher::TextMatcher(const SearchPattern &pattern)
    : searched(pattern)
{
    const Qt::CaseSensitivity cs = pattern.matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (!pattern.regex) {
        plain = QStringMatcher(pattern.text, cs);
        return;
    }
    QRegularExpression::PatternOptions options = QRegularExpression::MultilineOption;
    if (!pattern.matchCase)
        options |= QRegularExpression::CaseInsensitiveOption;
    expression = QRegularExpression(pattern.text, options);
    expression.optimize();
}

void TextMatcher::forEachIn(QStringView text, qsizetype from, qsizetype until,
                            const std::function<bool(qsizetype, qsizetype)> &found) const
{
    if (!isUsable())
        return;
    if (!searched.regex) {
        const qsizetype length = searched.text.size();
        for (qsizetype at = plain.indexIn(text, from); at >= 0 && at < until; at = plain.indexIn(text, at + length)) {
            if (!found(at, length))
                return;
        }
        return;
    }
    // One iteration checks the text's encoding once; single matches would
    // check it again for every match.
    QRegularExpressionMatchIterator matches = expression.globalMatch(text, from);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedStart() >= until)
            return;
        if (match.capturedLength() > 0 && !found(match.capturedStart(), match.capturedLength()))
            return;
    }
}

StoreSearch::StoreSearch(const LineStore &store, const TextMatcher &matcher)
    : store(store)
    , matcher(matcher)
{
}

void StoreSearch::forEach(qint64 from, qint64 to, const std::function<bool(const TextMatch &)> &found) const
{
    from = std::max(from, store.begin());
    to = std::min(to, store.end());
    if (!matcher.isUsable())
        return;
    for (qint64 windowStart = from; windowStart < to;) {
        const qint64 windowEnd = std::min(to, windowStart + LineStore::ChunkSize);
        const qint64 textStart = std::max(store.begin(), windowStart - Context);
        const QString text = store.text(textStart, std::min(store.end(), windowEnd + Overhang));
        bool more = true;
        matcher.forEachIn(text, windowStart - textStart, windowEnd - textStart, [&](qsizetype at, qsizetype length) {
            more = found({textStart + at, length});
            return more;
        });
        if (!more)
            return;
        windowStart = windowEnd;
    }
}

TextMatch StoreSearch::next(qint64 from) const
{
    TextMatch first;
    forEach(from, store.end(), [&first](const TextMatch &match) {
        first = match;
        return false;
    });
    return first;
}

TextMatch StoreSearch::previous(qint64 before) const
{
    before = std::min(before, store.end());
    for (qint64 windowEnd = before; windowEnd > store.begin();) {
        const qint64 windowStart = std::max(store.begin(), windowEnd - LineStore::ChunkSize);
        TextMatch last;
        forEach(windowStart, windowEnd, [&last](const TextMatch &match) {
            last = match;
            return true;
        });
        if (last.isValid())
            return last;
        windowEnd = windowStart;
    }
    return {};
}

qint64 StoreSearch::count(qint64 from, qint64 to) const
{
    qint64 found = 0;
    forEach(from, to, [&found](const TextMatch &) {
        ++found;
        return true;
    });
    return found;
}

void MatchTally::update(const LineStore &store, const TextMatcher &matcher)
{
    const StoreSearch search(store, matcher);
    auto countChunk = [&](qint64 chunk) {
        return search.count(chunk * LineStore::ChunkSize, (chunk + 1) * LineStore::ChunkSize);
    };
    const qint64 firstChunk = store.firstChunk();
    const qint64 lastChunk = store.lastChunk();
    qint64 recountFrom = firstChunk;
    if (valid && generation == store.generation() && firstChunk >= firstCounted) {
        while (firstCounted < firstChunk && !counts.empty()) {
            counts.pop_front();
            ++firstCounted;
        }
        if (store.begin() != countedBegin && !counts.empty())
            counts.front() = countChunk(firstChunk);
        // Matches near the old end may have grown or gone with the text.
        recountFrom = std::max(firstChunk,
                               (std::min(countedEnd, store.end()) - StoreSearch::Overhang) / LineStore::ChunkSize);
    }
    counts.resize(size_t(std::max<qint64>(0, recountFrom - firstChunk)));
    for (qint64 chunk = recountFrom; chunk <= lastChunk; ++chunk)
        counts.push_back(countChunk(chunk));
    firstCounted = firstChunk;
    countedBegin = store.begin();
    countedEnd = store.end();
    generation = store.generation();
    valid = true;
}

qint64 MatchTally::total() const
{
    qint64 sum = 0;
    for (qint64 count : counts)
        sum += count;
    return sum;
}

qint64 MatchTally::countBefore(const LineStore &store, const TextMatcher &matcher, qint64 position) const
{
    const qint64 chunk = position / LineStore::ChunkSize;
    qint64 sum = 0;
    for (qint64 i = 0; i < qint64(counts.size()) && firstCounted + i < chunk; ++i)
        sum += counts[size_t(i)];
    return sum + StoreSearch(store, matcher).count(chunk * LineStore::ChunkSize, position);
}
