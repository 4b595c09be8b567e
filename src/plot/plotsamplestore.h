#ifndef QUORVANE_PLOTSAMPLESTORE_H
#define QUORVANE_PLOTSAMPLESTORE_H

#include <QtGlobal>

#include <array>
#include <deque>
#include <memory>

#include "plot/plotlineparser.h"

// The samples of one plot: a row per parsed line, with its receive time and
// one value per channel (NaN where the line had none). Keeps at most
// keepLimit() rows, dropping the oldest. Rows live in fixed blocks, so
// memory follows the rows kept and nothing is copied as the store grows.
class PlotSampleStore
{
public:
    static constexpr qsizetype MaxKept = 1000000;

    explicit PlotSampleStore(qsizetype keepLimit = MaxKept);

    qsizetype keepLimit() const { return limit; }
    void setKeepLimit(qsizetype keep);

    // Times are kept in order: an earlier time than the last row's (a clock
    // set back) is stored as the last row's.
    void append(qint64 timeMs, const double *values, int count);
    void clear();

    qsizetype size() const { return count; }
    int channelCount() const { return channels; }
    // Running number of row 0 since the last clear: rows dropped are counted.
    qint64 firstIndex() const { return dropped; }
    qint64 time(qsizetype row) const;
    double value(int channel, qsizetype row) const;
    // Rows from `row` on that lie in one block, up to `end`: loops over many
    // rows walk these with plain pointers instead of looking up every row.
    struct Span {
        const qint64 *times;
        const double *values;
        qsizetype rows;
    };
    Span span(int channel, qsizetype row, qsizetype end) const;
    // First row whose time is not before `timeMs`.
    qsizetype lowerBound(qint64 timeMs) const;

    qsizetype allocatedBytes() const;

private:
    static constexpr int BlockShift = 12;
    static constexpr qsizetype BlockRows = qsizetype(1) << BlockShift;
    struct Block {
        std::unique_ptr<qint64[]> times;
        std::array<std::unique_ptr<double[]>, MaxPlotChannels> values;
    };

    void addChannels(int wanted);
    void dropOldest(qsizetype rows);

    std::deque<Block> blocks;
    qsizetype head = 0;
    qsizetype count = 0;
    int channels = 0;
    qint64 dropped = 0;
    qsizetype limit;
};

#endif
