#include "view/rowmap.h"

#include "view/linelayouts.h"
#include "view/linestore.h"

RowMap::RowMap(const LineStore &store, LineLayouts &layouts)
    : store(store)
    , layouts(layouts)
{
}

RowMap::Place RowMap::endPlace(qreal room)
{
    qreal used = 0;
    Place place{store.lastLine(), 0};
    for (qint64 n = store.lastLine(); n >= store.firstLine(); --n) {
        const LineLayouts::Line &line = layouts.line(n);
        for (int row = line.rows() - 1; row >= 0; --row) {
            const qreal height = line.layout.lineAt(row).height();
            if (used > 0 && used + height > room)
                return place;
            used += height;
            place = {n, row};
        }
    }
    return place;
}

RowMap::Place RowMap::moved(Place place, int rows)
{
    for (; rows > 0; --rows) {
        if (place.row + 1 < layouts.line(place.line).rows())
            ++place.row;
        else if (place.line < store.lastLine())
            place = {place.line + 1, 0};
        else
            break;
    }
    for (; rows < 0; ++rows) {
        if (place.row > 0)
            --place.row;
        else if (place.line > store.firstLine())
            place = {place.line - 1, layouts.line(place.line - 1).rows() - 1};
        else
            break;
    }
    return place;
}

RowMap::Place RowMap::clamped(Place place)
{
    if (place.line > store.lastLine())
        return {store.lastLine(), layouts.line(store.lastLine()).rows() - 1};
    if (place.line < store.firstLine())
        return {store.firstLine(), 0};
    place.row = qMin(place.row, layouts.line(place.line).rows() - 1);
    return place;
}

RowMap::Place RowMap::placeOf(qint64 position)
{
    const qint64 number = store.lineAt(position);
    const LineLayouts::Line &line = layouts.line(number);
    const QTextLine row = line.layout.lineForTextPosition(int(position - line.start));
    return {number, row.isValid() ? row.lineNumber() : line.rows() - 1};
}

qint64 RowMap::positionOf(const Place &place)
{
    const LineLayouts::Line &line = layouts.line(place.line);
    return line.start + line.layout.lineAt(place.row).textStart();
}

qint64 RowMap::positionAt(const Place &top, const QPointF &point)
{
    qreal y = -layouts.line(top.line).rowTop(top.row);
    for (qint64 n = top.line; n <= store.lastLine(); ++n) {
        const LineLayouts::Line &line = layouts.line(n);
        if (point.y() < y + line.height) {
            for (int r = 0; r < line.rows(); ++r) {
                const QTextLine row = line.layout.lineAt(r);
                if (point.y() < y + row.y() + row.height() || r + 1 == line.rows())
                    return line.start + row.xToCursor(point.x());
            }
        }
        y += line.height;
    }
    return store.end();
}

qint64 RowMap::rowMove(qint64 position, int rows)
{
    const Place from = placeOf(position);
    const LineLayouts::Line &line = layouts.line(from.line);
    const qreal x = line.layout.lineAt(from.row).cursorToX(int(position - line.start));
    const Place to = moved(from, rows);
    const LineLayouts::Line &target = layouts.line(to.line);
    return target.start + target.layout.lineAt(to.row).xToCursor(x);
}

qreal RowMap::distance(const Place &from, const Place &to)
{
    if (to < from)
        return -distance(to, from);
    qreal y = -layouts.line(from.line).rowTop(from.row);
    for (qint64 n = from.line; n < to.line; ++n)
        y += layouts.line(n).height;
    return y + layouts.line(to.line).rowTop(to.row);
}

qint64 RowMap::rowEnd(qint64 position)
{
    const Place place = placeOf(position);
    const LineLayouts::Line &line = layouts.line(place.line);
    const QTextLine row = line.layout.lineAt(place.row);
    return qMin(line.end, line.start + row.textStart() + row.textLength());
}
