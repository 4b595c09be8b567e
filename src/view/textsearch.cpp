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

qsizetype TextMatcher::indexIn(QStringView text, qsizetype from, qsizetype *length) const
{
    if (!isUsable())
        return -1;
    if (!searched.regex) {
        *length = searched.text.size();
        return plain.indexIn(text, from);
    }
    while (from <= text.size()) {
        const QRegularExpressionMatch match = expression.match(text, from);
        if (!match.hasMatch())
            return -1;
        if (match.capturedLength() > 0) {
            *length = match.capturedLength();
            return match.capturedStart();
        }
        from = match.capturedStart() + 1;
    }
    return -1;
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
        qsizetype at = windowStart - textStart;
        qsizetype length = 0;
        while ((at = matcher.indexIn(text, at, &length)) >= 0 && textStart + at < windowEnd) {
            if (!found({textStart + at, length}))
                return;
            at += length;
        }
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
