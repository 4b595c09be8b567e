#include "plot/plotexport.h"

#include <QDateTime>
#include <QIODevice>

#include <cmath>

#include "plot/plotsamplestore.h"

namespace {

QByteArray csvField(const QString &text)
{
    QByteArray field = text.toUtf8();
    if (field.contains(',') || field.contains('"') || field.contains('\n')) {
        field.replace("\"", "\"\"");
        field = '"' + field + '"';
    }
    return field;
}

} // namespace

bool writePlotCsv(QIODevice &out, const PlotSampleStore &store, const QStringList &channelNames)
{
    QByteArray text = "time";
    for (int c = 0; c < store.channelCount(); ++c)
        text += ',' + csvField(channelNames.value(c));
    text += '\n';
    for (qsizetype row = 0; row < store.size(); ++row) {
        text += QDateTime::fromMSecsSinceEpoch(store.time(row)).toString(Qt::ISODateWithMs).toLatin1();
        for (int c = 0; c < store.channelCount(); ++c) {
            text += ',';
            const double value = store.value(c, row);
            if (value == 0 && std::signbit(value))
                text += "-0";
            else if (!std::isnan(value))
                text += QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
        }
        text += '\n';
        if (text.size() >= (1 << 20)) {
            if (out.write(text) != text.size())
                return false;
            text.clear();
        }
    }
    return out.write(text) == text.size();
}
