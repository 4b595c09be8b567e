#ifndef QUORVANE_HIGHLIGHTRULES_H
#define QUORVANE_HIGHLIGHTRULES_H

#include <QColor>
#include <QList>
#include <QString>
#include <QVector>

#include "view/textsearch.h"

// "error" in red, "warn" in amber: received lines (or only the matches)
// that fit a pattern are drawn in the rule's colour.
struct HighlightRule {
    SearchPattern pattern;
    QColor colour;
    bool wholeLine = true;

    bool operator==(const HighlightRule &o) const
    {
        return pattern == o.pattern && colour == o.colour && wholeLine == o.wholeLine;
    }
    bool operator!=(const HighlightRule &o) const { return !(*this == o); }
};

using HighlightRuleList = QList<HighlightRule>;

constexpr int MaxHighlightRules = 64;
constexpr int MaxHighlightPatternLength = 1000;

// Stored as one JSON text. Reading drops entries without a pattern or a
// valid colour and keeps at most MaxHighlightRules of them.
QString highlightRulesToText(const HighlightRuleList &rules);
HighlightRuleList highlightRulesFromText(const QString &text);

// The rules compiled, for the lines the view lays out.
class Highlighter
{
public:
    struct Span {
        qsizetype start;
        qsizetype length;
        QRgb colour;
    };

    void setRules(const HighlightRuleList &rules);
    const HighlightRuleList &rules() const { return ruleList; }
    bool isEmpty() const { return matchers.isEmpty(); }

    // Where the line is coloured; where rules overlap the earlier rule wins.
    QVector<Span> spans(QStringView line) const;

private:
    HighlightRuleList ruleList;
    QVector<TextMatcher> matchers;   // one per usable rule, in rule order
    QVector<HighlightRule> used;
};

#endif
