#include "view/highlightrules.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

QString highlightRulesToText(const HighlightRuleList &rules)
{
    QJsonArray array;
    for (const HighlightRule &rule : rules) {
        array.append(QJsonObject{
            {QStringLiteral("pattern"), rule.pattern.text},
            {QStringLiteral("regex"), rule.pattern.regex},
            {QStringLiteral("matchCase"), rule.pattern.matchCase},
            {QStringLiteral("wholeLine"), rule.wholeLine},
            {QStringLiteral("colour"), rule.colour.name()},
        });
    }
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

HighlightRuleList highlightRulesFromText(const QString &text)
{
    HighlightRuleList rules;
    const QJsonArray array = QJsonDocument::fromJson(text.toUtf8()).array();
    for (const QJsonValue &value : array) {
        const QJsonObject object = value.toObject();
        HighlightRule rule;
        rule.pattern.text = object.value(QStringLiteral("pattern")).toString().left(MaxHighlightPatternLength);
        rule.pattern.regex = object.value(QStringLiteral("regex")).toBool();
        rule.pattern.matchCase = object.value(QStringLiteral("matchCase")).toBool();
        rule.wholeLine = object.value(QStringLiteral("wholeLine")).toBool(true);
        rule.colour = QColor(object.value(QStringLiteral("colour")).toString());
        if (rule.pattern.text.isEmpty() || !rule.colour.isValid())
            continue;
        rules.append(rule);
        if (rules.size() == MaxHighlightRules)
            break;
    }
    return rules;
}

void Highlighter::setRules(const HighlightRuleList &rules)
{
    ruleList = rules;
    matchers.clear();
    used.clear();
    for (const HighlightRule &rule : rules) {
        TextMatcher matcher(rule.pattern);
        if (!matcher.isUsable() || !rule.colour.isValid())
            continue;
        matchers.append(matcher);
        used.append(rule);
    }
}

QVector<Highlighter::Span> Highlighter::spans(QStringView line) const
{
    QVector<Span> result;
    // Later rules first: what is painted last shows.
    for (qsizetype r = matchers.size() - 1; r >= 0; --r) {
        const QRgb colour = used.at(r).colour.rgb();
        const bool wholeLine = used.at(r).wholeLine;
        matchers.at(r).forEachIn(line, 0, line.size(), [&](qsizetype at, qsizetype length) {
            result.append(wholeLine ? Span{0, line.size(), colour} : Span{at, length, colour});
            return !wholeLine;
        });
    }
    return result;
}
