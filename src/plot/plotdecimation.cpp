#include "plot/plotdecimation.h"

#include <cmath>
#include <limits>

#include "plot/plotsamplestore.h"

double plotX(const PlotSampleStore &store, qsizetype row, const PlotXMapping &mapping)
{
    if (mapping.axis == PlotXAxis::SampleIndex)
        return double(store.firstIndex() + row);
    return double(store.time(row) - mapping.timeOriginMs) / 1000.0;
}

PlotRowRange plotRows(const PlotSampleStore &store, double x0, double x1, const PlotXMapping &mapping)
{
    const qsizetype n = store.size();
    qsizetype first = 0;
    qsizetype last = 0;
    if (mapping.axis == PlotXAxis::SampleIndex) {
        const double base = double(store.firstIndex());
        first = qsizetype(qBound(0.0, std::ceil(x0 - base), double(n)));
        last = qsizetype(qBound(0.0, std::floor(x1 - base) + 1, double(n)));
    } else {
        first = store.lowerBound(mapping.timeOriginMs + qint64(std::ceil(x0 * 1000.0)));
        last = store.lowerBound(mapping.timeOriginMs + qint64(std::floor(x1 * 1000.0)) + 1);
    }
    return {qMax<qsizetype>(0, first - 1), qMin(n, qMax(first, last) + 1)};
}

QList<QPointF> decimateMinMax(const PlotSampleStore &store, int channel, PlotRowRange rows,
                              double x0, double x1, int columns, const PlotXMapping &mapping)
{
    QList<QPointF> points;
    if (channel >= store.channelCount() || rows.first >= rows.last)
        return points;
    columns = qMax(1, columns);
    const qsizetype count = rows.last - rows.first;
    if (count <= 2 * qsizetype(columns)) {
        points.reserve(count);
        for (qsizetype row = rows.first; row < rows.last; ++row) {
            const double y = store.value(channel, row);
            if (!std::isnan(y))
                points.append({plotX(store, row, mapping), y});
        }
        return points;
    }

    points.reserve(2 * columns + 4);
    const double scale = x1 > x0 ? columns / (x1 - x0) : 0.0;
    qint64 bucket = 0;
    double bucketStart = qInf();
    double bucketEnd = -qInf();
    QPointF low;
    QPointF high;
    bool any = false;
    auto flush = [&] {
        if (!any)
            return;
        if (low.x() < high.x()) {
            points.append(low);
            points.append(high);
        } else if (high.x() < low.x()) {
            points.append(high);
            points.append(low);
        } else {
            points.append(low);
        }
        any = false;
    };
    const bool byIndex = mapping.axis == PlotXAxis::SampleIndex;
    for (qsizetype row = rows.first; row < rows.last;) {
        const PlotSampleStore::Span span = store.span(channel, row, rows.last);
        for (qsizetype i = 0; i < span.rows; ++i) {
            const double y = span.values[i];
            if (std::isnan(y))
                continue;
            const double x = byIndex ? double(store.firstIndex() + row + i)
                                     : double(span.times[i] - mapping.timeOriginMs) / 1000.0;
            // x only grows, so the column changes only past its right edge.
            if (x >= bucketEnd || x < bucketStart) {
                flush();
                bucket = qint64(std::floor((x - x0) * scale));
                bucketStart = scale > 0 ? x0 + double(bucket) / scale : -qInf();
                bucketEnd = scale > 0 ? x0 + double(bucket + 1) / scale : qInf();
            }
            if (!any) {
                low = high = {x, y};
                any = true;
            } else if (y < low.y()) {
                low = {x, y};
            } else if (y > high.y()) {
                high = {x, y};
            }
        }
        row += span.rows;
    }
    flush();
    return points;
}
