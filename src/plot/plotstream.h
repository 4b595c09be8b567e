#ifndef QUORVANE_PLOTSTREAM_H
#define QUORVANE_PLOTSTREAM_H

#include <QByteArrayView>
#include <QStringList>

#include "plot/plotlineparser.h"
#include "plot/plotsamplestore.h"

// Turns a session's received chunks into rows of the sample store: cuts
// lines, parses them in the chosen format, maps names to channels and counts
// the lines it could not read.
class PlotStream
{
public:
    PlotStream();

    void setFormat(PlotFormat format) { plotFormat = format; }
    PlotFormat format() const { return plotFormat; }

    void feed(QByteArrayView chunk, qint64 timeMs);
    // Drops samples, the partial line and the skipped count; names stay.
    void clear();

    PlotSampleStore &store() { return samples; }
    const PlotSampleStore &store() const { return samples; }
    qint64 skippedLines() const { return skipped; }

    // Channel names as received (pairs, header) or preset; empty = unnamed.
    QStringList names() const { return channelNames; }
    void setNames(const QStringList &names);
    QString displayName(int channel) const;

private:
    void takeLine(QByteArrayView line, qint64 timeMs);
    int channelOf(QByteArrayView name);

    PlotFormat plotFormat = PlotFormat::Auto;
    PlotLineSplitter splitter;
    PlotSampleStore samples;
    QStringList channelNames;
    qint64 skipped = 0;
    int lastNumberCount = 0;
};

#endif
