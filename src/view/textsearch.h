#ifndef QUORVANE_TEXTSEARCH_H
#define QUORVANE_TEXTSEARCH_H

#include <QRegularExpression>
#include <QString>
#include <QStringMatcher>

#include <deque>
#include <functional>

class LineStore;

// What the user looks for: plain text or a regular expression, with or
// without regard to case.
struct SearchPattern {
    QString text;
    bool regex = false;
    bool matchCase = false;

    bool operator==(const SearchPattern &o) const
    {
        return text == o.text && regex == o.regex && matchCase == o.matchCase;
    }
    bool operator!=(const SearchPattern &o) const { return !(*this == o); }
};

// A compiled pattern. Empty matches (of "x*", say) do not count.
class TextMatcher
{
public:
    TextMatcher() = default;
    explicit TextMatcher(const SearchPattern &pattern);

    bool isEmpty() const { return searched.text.isEmpty(); }
    // False for a regular expression that does not compile.
    bool isValid() const { return !searched.regex || expression.isValid(); }
    bool isUsable() const { return !isEmpty() && isValid(); }
    QString errorText() const { return expression.errorString(); }
    const SearchPattern &pattern() const { return searched; }

    // Calls found(start, length) for every match in text that starts in
    // [from, until), until it returns false.
    void forEachIn(QStringView text, qsizetype from, qsizetype until,
                   const std::function<bool(qsizetype, qsizetype)> &found) const;

private:
    SearchPattern searched;
    QStringMatcher plain;
    QRegularExpression expression;
};

struct TextMatch {
    qint64 start = -1;
    qint64 length = 0;

    bool isValid() const { return start >= 0; }
    qint64 end() const { return start + length; }
};

// Searches a line store window by window. A match is found if it starts in
// the range searched and is at most Overhang characters longer than the
// window it starts in; a regular expression sees Context characters before
// it, so that "^" and look-behinds work across windows.
class StoreSearch
{
public:
    static constexpr qint64 Overhang = 1024;
    static constexpr qint64 Context = 256;

    StoreSearch(const LineStore &store, const TextMatcher &matcher);

    // Calls found for every match starting in [from, to) until it returns false.
    void forEach(qint64 from, qint64 to, const std::function<bool(const TextMatch &)> &found) const;
    TextMatch next(qint64 from) const;
    TextMatch previous(qint64 before) const;
    qint64 count(qint64 from, qint64 to) const;

private:
    const LineStore &store;
    const TextMatcher &matcher;
};

// The number of matches in a store, kept per chunk: as the stream flows only
// the chunks it reached or left are counted again.
class MatchTally
{
public:
    void invalidate() { valid = false; }
    void update(const LineStore &store, const TextMatcher &matcher);
    qint64 total() const;
    qint64 countBefore(const LineStore &store, const TextMatcher &matcher, qint64 position) const;

private:
    std::deque<qint64> counts;   // counts[i] for chunk firstCounted + i
    qint64 firstCounted = 0;
    qint64 countedBegin = 0;
    qint64 countedEnd = 0;
    quint64 generation = 0;
    bool valid = false;
};

#endif
