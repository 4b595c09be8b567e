#include "view/linelayouts.h"

#include <QTextCharFormat>

#include <algorithm>

#include "view/highlightrules.h"
#include "view/linestore.h"

namespace {

// Layouts hold some tens of bytes per character; this bounds them to a few
// screens of text, however long the lines are.
constexpr qint64 maxCachedCharacters = 64 * 1024;

QTextCharFormat charFormat(const TextStyle &style, const QPalette &palette)
{
    QTextCharFormat format;
    QColor foreground = style.has(TextStyle::Foreground) ? QColor(style.foreground) : QColor();
    QColor background = style.has(TextStyle::Background) ? QColor(style.background) : QColor();
    if (style.has(TextStyle::Inverse)) {
        const QColor text = foreground.isValid() ? foreground : palette.color(QPalette::Text);
        foreground = background.isValid() ? background : palette.color(QPalette::Base);
        background = text;
    }
    if (foreground.isValid())
        format.setForeground(foreground);
    if (background.isValid())
        format.setBackground(background);
    if (style.has(TextStyle::Bold))
        format.setFontWeight(QFont::Bold);
    if (style.has(TextStyle::Underline))
        format.setFontUnderline(true);
    return format;
}

} // namespace

LineLayouts::LineLayouts(const LineStore &store, const Highlighter &highlighter)
    : store(store)
    , highlighter(highlighter)
{
}

LineLayouts::~LineLayouts() = default;

void LineLayouts::setGeometry(const QFont &newFont, qreal newWidth, const QPaintDevice *newDevice)
{
    if (newFont == shownFont && newWidth == width && newDevice == device)
        return;
    shownFont = newFont;
    // Received text is shown character for character: no ligatures or
    // kerning pairs, which also spares shaping Latin text at every layout.
    font = newFont;
    font.setStyleStrategy(QFont::StyleStrategy(font.styleStrategy() | QFont::PreferNoShaping));
    width = newWidth;
    device = newDevice;
    invalidate();
}

void LineLayouts::setPalette(const QPalette &newPalette)
{
    if (newPalette == palette)
        return;
    palette = newPalette;
    invalidate();
}

void LineLayouts::invalidate()
{
    lines.clear();
    cachedCharacters = 0;
}

const LineLayouts::Line &LineLayouts::line(qint64 number)
{
    if (store.generation() != storeGeneration) {
        invalidate();
        storeGeneration = store.generation();
    }
    std::unique_ptr<Line> &entry = lines[number];
    const qint64 start = store.lineStart(number);
    const qint64 end = store.lineEnd(number);
    if (!entry || entry->start != start || entry->end != end) {
        if (entry)
            cachedCharacters -= entry->end - entry->start;
        entry = std::make_unique<Line>();
        entry->start = start;
        entry->end = end;
        layOut(*entry);
        cachedCharacters += end - start;
    }
    entry->lastUse = ++useClock;
    return *entry;
}

void LineLayouts::layOut(Line &line) const
{
    const QString text = store.text(line.start, line.end);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    line.layout.setText(text);
    line.layout.setFont(font);
    line.layout.setTextOption(option);
    line.layout.setCacheEnabled(true);

    const QVector<LineStore::StyleRun> runs = store.styleRuns(line.start, line.end);
    if (runs.size() > 1 || runs.first().style != TextStyle()) {
        QList<QTextLayout::FormatRange> formats;
        for (qsizetype i = 0; i < runs.size(); ++i) {
            const qint64 runEnd = i + 1 < runs.size() ? runs.at(i + 1).start : line.end;
            if (runs.at(i).style != TextStyle())
                formats.append({int(runs.at(i).start - line.start), int(runEnd - runs.at(i).start),
                                charFormat(runs.at(i).style, palette)});
        }
        line.layout.setFormats(formats);
    }

    line.layout.beginLayout();
    qreal y = 0;
    for (QTextLine row = line.layout.createLine(); row.isValid(); row = line.layout.createLine()) {
        row.setLineWidth(width);
        row.setPosition(QPointF(0, y));
        y += row.height();
    }
    line.layout.endLayout();
    line.height = y;

    for (const Highlighter::Span &span : highlighter.spans(text)) {
        QTextCharFormat format;
        format.setForeground(QColor(span.colour));
        line.highlights.append({int(span.start), int(span.length), format});
    }
}

void LineLayouts::trim()
{
    if (cachedCharacters <= maxCachedCharacters || lines.size() < 2)
        return;
    std::vector<quint64> uses;
    uses.reserve(lines.size());
    for (const auto &entry : lines)
        uses.push_back(entry.second->lastUse);
    auto middle = uses.begin() + qsizetype(uses.size() / 2);
    std::nth_element(uses.begin(), middle, uses.end());
    const quint64 cutoff = *middle;
    for (auto it = lines.begin(); it != lines.end();) {
        if (it->second->lastUse < cutoff) {
            cachedCharacters -= it->second->end - it->second->start;
            it = lines.erase(it);
        } else {
            ++it;
        }
    }
}
