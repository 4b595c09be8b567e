#ifndef QUORVANE_ROWMAP_H
#define QUORVANE_ROWMAP_H

#include <QPointF>
#include <QtGlobal>

class LineLayouts;
class LineStore;

// The rows of a line store as laid out for the view: where a position or a
// point lies, where rows lead, and where the first row is when the last one
// is at the bottom. Lays out only the lines it passes over.
class RowMap
{
public:
    // A row of one of the store's lines.
    struct Place {
        qint64 line = 0;
        int row = 0;
        bool operator==(const Place &o) const { return line == o.line && row == o.row; }
        bool operator<(const Place &o) const { return line < o.line || (line == o.line && row < o.row); }
    };

    RowMap(const LineStore &store, LineLayouts &layouts);

    // The first row when the last one is at the bottom of room pixels.
    Place endPlace(qreal room);
    // rows down (or up, when negative), stopping at the first and last row.
    Place moved(Place place, int rows);
    // The place brought back into the store and its line.
    Place clamped(Place place);
    Place placeOf(qint64 position);
    qint64 positionOf(const Place &place);
    // point: relative to the text's top left, with the top place's row at 0.
    qint64 positionAt(const Place &top, const QPointF &point);
    // The position rows away, as near as the text allows to the same x.
    qint64 rowMove(qint64 position, int rows);
    // Pixels from the top of one row to the top of another; negative when
    // `to` lies above `from`.
    qreal distance(const Place &from, const Place &to);
    qint64 rowEnd(qint64 position);

private:
    const LineStore &store;
    LineLayouts &layouts;
};

#endif
