#ifndef QUORVANE_PLOTSETTINGS_H
#define QUORVANE_PLOTSETTINGS_H

#include <QList>
#include <QString>
#include <QStringList>

class QSettings;

// A session's plot choices, kept with the session in documents and in the
// preferences under keys of their own ("<prefix>Plot...").
struct PlotSettings {
    static constexpr int DefaultWindow = 1000;

    bool visible = false;
    bool underView = false; // beside the receive view unless set
    int format = 0;         // PlotFormat
    int xAxis = 0;          // PlotXAxis
    int window = DefaultWindow;
    bool autoscale = true;
    QStringList channelNames; // empty = unnamed
    QStringList channelColors; // "#rrggbb"; empty = the default colour
    QList<int> hiddenChannels;

    bool operator==(const PlotSettings &other) const;

    // Missing keys read as the defaults; values out of range are brought back into it.
    static PlotSettings read(const QSettings &store, const QString &prefix);
    void write(QSettings &store, const QString &prefix) const;
};

#endif
