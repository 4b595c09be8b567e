#include "plot/plotsettings.h"

#include <QSettings>

#include "plot/plotlineparser.h"
#include "plot/plotsamplestore.h"

PlotSettings PlotSettings::read(const QSettings &store, const QString &prefix)
{
    const PlotSettings d;
    auto value = [&](const char *name, const QVariant &fallback) {
        return store.value(prefix + QLatin1String(name), fallback);
    };
    PlotSettings s;
    s.visible = value("PlotVisible", d.visible).toBool();
    s.underView = value("PlotUnderView", d.underView).toBool();
    s.format = qBound(0, value("PlotFormat", d.format).toInt(), 2);
    s.xAxis = qBound(0, value("PlotXAxis", d.xAxis).toInt(), 1);
    s.window = int(qBound<qsizetype>(2, value("PlotWindow", d.window).toLongLong(), PlotSampleStore::MaxKept));
    s.autoscale = value("PlotAutoscale", d.autoscale).toBool();
    s.channelNames = value("PlotChannels", {}).toStringList().mid(0, MaxPlotChannels);
    s.channelColors = value("PlotColors", {}).toStringList().mid(0, MaxPlotChannels);
    for (const QString &text : value("PlotHidden", {}).toStringList()) {
        bool ok = false;
        const int channel = text.toInt(&ok);
        if (ok && channel >= 0 && channel < MaxPlotChannels)
            s.hiddenChannels.append(channel);
    }
    return s;
}

void PlotSettings::write(QSettings &store, const QString &prefix) const
{
    auto set = [&](const char *name, const QVariant &value) { store.setValue(prefix + QLatin1String(name), value); };
    set("PlotVisible", visible);
    set("PlotUnderView", underView);
    set("PlotFormat", format);
    set("PlotXAxis", xAxis);
    set("PlotWindow", window);
    set("PlotAutoscale", autoscale);
    set("PlotChannels", channelNames);
    set("PlotColors", channelColors);
    QStringList hidden;
    for (int channel : hiddenChannels)
        hidden << QString::number(channel);
    set("PlotHidden", hidden);
}

bool PlotSettings::operator==(const PlotSettings &o) const
{
    return visible == o.visible && underView == o.underView && format == o.format && xAxis == o.xAxis
        && window == o.window && autoscale == o.autoscale && channelNames == o.channelNames
        && channelColors == o.channelColors && hiddenChannels == o.hiddenChannels;
}
