#include "plot/plotsamplestore.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();

std::unique_ptr<double[]> missingColumn(qsizetype rows)
{
    std::unique_ptr<double[]> column(new double[size_t(rows)]);
    std::fill_n(column.get(), rows, Missing);
    return column;
}

} // namespace

PlotSampleStore::PlotSampleStore(qsizetype keepLimit)
    : limit(qBound<qsizetype>(1, keepLimit, MaxKept))
{
}

void PlotSampleStore::setKeepLimit(qsizetype keep)
{
    limit = qBound<qsizetype>(1, keep, MaxKept);
    if (count > limit)
        dropOldest(count - limit);
}

void PlotSampleStore::append(qint64 timeMs, const double *values, int valueCount)
{
    valueCount = qMin(valueCount, MaxPlotChannels);
    if (valueCount > channels)
        addChannels(valueCount);
    const qsizetype p = head + count;
    if (p >> BlockShift == qsizetype(blocks.size())) {
        Block block;
        block.times.reset(new qint64[size_t(BlockRows)]);
        for (int c = 0; c < channels; ++c)
            block.values[size_t(c)] = missingColumn(BlockRows);
        blocks.push_back(std::move(block));
    }
    Block &block = blocks[size_t(p >> BlockShift)];
    const qsizetype slot = p & (BlockRows - 1);
    if (count > 0)
        timeMs = std::max(timeMs, time(count - 1));
    block.times[slot] = timeMs;
    for (int c = 0; c < channels; ++c)
        block.values[size_t(c)][slot] = c < valueCount ? values[c] : Missing;
    ++count;
    if (count > limit)
        dropOldest(count - limit);
}

void PlotSampleStore::clear()
{
    blocks.clear();
    head = count = 0;
    channels = 0;
    dropped = 0;
}

qint64 PlotSampleStore::time(qsizetype row) const
{
    const qsizetype p = head + row;
    return blocks[size_t(p >> BlockShift)].times[p & (BlockRows - 1)];
}

double PlotSampleStore::value(int channel, qsizetype row) const
{
    const qsizetype p = head + row;
    return blocks[size_t(p >> BlockShift)].values[size_t(channel)][p & (BlockRows - 1)];
}

PlotSampleStore::Span PlotSampleStore::span(int channel, qsizetype row, qsizetype end) const
{
    const qsizetype p = head + row;
    const Block &block = blocks[size_t(p >> BlockShift)];
    const qsizetype slot = p & (BlockRows - 1);
    return {block.times.get() + slot, block.values[size_t(channel)].get() + slot,
            qMin(end - row, BlockRows - slot)};
}

qsizetype PlotSampleStore::lowerBound(qint64 timeMs) const
{
    qsizetype low = 0;
    qsizetype high = count;
    while (low < high) {
        const qsizetype mid = low + (high - low) / 2;
        if (time(mid) < timeMs)
            low = mid + 1;
        else
            high = mid;
    }
    return low;
}

qsizetype PlotSampleStore::allocatedBytes() const
{
    return qsizetype(blocks.size()) * BlockRows * qsizetype(sizeof(qint64) + channels * sizeof(double));
}

void PlotSampleStore::addChannels(int wanted)
{
    for (Block &block : blocks) {
        for (int c = channels; c < wanted; ++c)
            block.values[size_t(c)] = missingColumn(BlockRows);
    }
    channels = wanted;
}

void PlotSampleStore::dropOldest(qsizetype rows)
{
    head += rows;
    count -= rows;
    dropped += rows;
    while (head >= BlockRows) {
        blocks.pop_front();
        head -= BlockRows;
    }
}
