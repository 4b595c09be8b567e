#ifndef QUORVANE_PLOTEXPORT_H
#define QUORVANE_PLOTEXPORT_H

#include <QStringList>

class QIODevice;
class PlotSampleStore;

// Writes the kept samples as CSV: a header "time" plus one column per
// channel, then a row per sample with its local receive time
// ("yyyy-MM-ddThh:mm:ss.zzz") and its values (shortest text that reads back
// to the same number; an empty cell where the line had no value).
// Names holding a comma or a quote are quoted. Returns false when writing fails.
bool writePlotCsv(QIODevice &out, const PlotSampleStore &store, const QStringList &channelNames);

#endif
