#ifndef QUORVANE_PLOTDECIMATION_H
#define QUORVANE_PLOTDECIMATION_H

#include <QList>
#include <QPointF>

class PlotSampleStore;

// What the x axis of a plot counts.
enum class PlotXAxis {
    SampleIndex = 0, // running number of the line since the plot was cleared
    ReceiveTime = 1  // seconds since the first sample kept at the last clear
};

struct PlotXMapping {
    PlotXAxis axis = PlotXAxis::SampleIndex;
    qint64 timeOriginMs = 0;
};

double plotX(const PlotSampleStore &store, qsizetype row, const PlotXMapping &mapping);

// Rows whose x lies in [x0, x1], widened by one row on each side so that
// lines run to the edges: [first, last).
struct PlotRowRange {
    qsizetype first = 0;
    qsizetype last = 0;
};
PlotRowRange plotRows(const PlotSampleStore &store, double x0, double x1, const PlotXMapping &mapping);

// The points of one channel over `rows`, reduced to the lowest and highest
// value of each of `columns` equal slices of [x0, x1] (in the order they
// came), so a one-sample spike survives and the count stays at most
// 2 × columns plus the two edge rows. NaN values are left out.
QList<QPointF> decimateMinMax(const PlotSampleStore &store, int channel, PlotRowRange rows,
                              double x0, double x1, int columns, const PlotXMapping &mapping);

#endif
