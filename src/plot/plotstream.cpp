#include "plot/plotstream.h"

#include <QCoreApplication>

#include <cmath>
#include <limits>

PlotStream::PlotStream() = default;

void PlotStream::feed(QByteArrayView chunk, qint64 timeMs)
{
    splitter.feed(
        chunk, [&](QByteArrayView line) { takeLine(line, timeMs); }, [this] { ++skipped; });
}

void PlotStream::clear()
{
    splitter.clear();
    samples.clear();
    skipped = 0;
    lastNumberCount = 0;
}

void PlotStream::setNames(const QStringList &names)
{
    channelNames = names.mid(0, MaxPlotChannels);
}

QString PlotStream::displayName(int channel) const
{
    const QString name = channelNames.value(channel);
    return name.isEmpty() ? QCoreApplication::translate("PlotStream", "Channel %1").arg(channel + 1) : name;
}

void PlotStream::takeLine(QByteArrayView line, qint64 timeMs)
{
    const PlotLine parsed = parsePlotLine(line, plotFormat);
    switch (parsed.kind) {
    case PlotLine::Empty:
        return;
    case PlotLine::Numbers:
        lastNumberCount = int(parsed.values.size());
        samples.append(timeMs, parsed.values.constData(), lastNumberCount);
        return;
    case PlotLine::Pairs: {
        double row[MaxPlotChannels];
        std::fill_n(row, MaxPlotChannels, std::numeric_limits<double>::quiet_NaN());
        int width = 0;
        for (qsizetype i = 0; i < parsed.values.size(); ++i) {
            const int channel = channelOf(parsed.names[i]);
            if (channel < 0)
                continue;
            row[channel] = parsed.values[i];
            width = qMax(width, channel + 1);
        }
        if (width > 0)
            samples.append(timeMs, row, width);
        return;
    }
    case PlotLine::Header:
        // A banner such as "Booting" is no header for three columns: names
        // are taken before the first numbers or when they match their count.
        if (lastNumberCount == 0 || parsed.names.size() == lastNumberCount) {
            for (qsizetype i = 0; i < parsed.names.size(); ++i) {
                while (channelNames.size() <= i)
                    channelNames.append(QString());
                channelNames[i] = QString::fromUtf8(parsed.names[i]);
            }
            return;
        }
        break;
    case PlotLine::Junk:
        break;
    }
    ++skipped;
}

int PlotStream::channelOf(QByteArrayView name)
{
    const QString text = QString::fromUtf8(name);
    const int known = int(channelNames.indexOf(text));
    if (known >= 0)
        return known;
    if (channelNames.size() >= MaxPlotChannels)
        return -1;
    channelNames.append(text);
    return int(channelNames.size()) - 1;
}
