#ifndef QUORVANE_LINELAYOUTS_H
#define QUORVANE_LINELAYOUTS_H

#include <QFont>
#include <QPalette>
#include <QTextLayout>
#include <QVector>

#include <memory>
#include <unordered_map>

class Highlighter;
class LineStore;
class QPaintDevice;

// Lays out the store's lines wrapped to the view's width, one line at a time
// as the view asks for it, and keeps the layouts it made last, bounded by
// the characters they hold. A layout whose line grew or shrank since is
// made again.
class LineLayouts
{
public:
    struct Line {
        qint64 start = 0;    // the shown text: [start, end)
        qint64 end = 0;
        QTextLayout layout;
        qreal height = 0;
        // Highlight rule colours, drawn over the text.
        QVector<QTextLayout::FormatRange> highlights;
        quint64 lastUse = 0;

        int rows() const { return layout.lineCount(); }
        qreal rowTop(int row) const { return row < rows() ? layout.lineAt(row).y() : height; }
    };

    LineLayouts(const LineStore &store, const Highlighter &highlighter);
    ~LineLayouts();

    // Drops every layout when the font, width or palette changed.
    void setGeometry(const QFont &font, qreal width, const QPaintDevice *device);
    void setPalette(const QPalette &palette);
    void invalidate();

    // Valid until the next trim() or invalidation.
    const Line &line(qint64 number);
    // Drops the least recently used layouts while they hold too much.
    void trim();

private:
    void layOut(Line &line) const;

    const LineStore &store;
    const Highlighter &highlighter;
    QFont shownFont;   // the view's font, as given
    QFont font;        // the same, as laid out
    QPalette palette;
    qreal width = 0;
    const QPaintDevice *device = nullptr;
    std::unordered_map<qint64, std::unique_ptr<Line>> lines;
    qint64 cachedCharacters = 0;
    quint64 useClock = 0;
    quint64 storeGeneration = 0;
};

#endif
