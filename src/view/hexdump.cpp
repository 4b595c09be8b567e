#include "view/hexdump.h"

QString HexDump::formatRow(const QString &stamp, qint64 offset, const QByteArray &bytes)
{
    static const char digits[] = "0123456789ABCDEF";
    QString row = stamp;
    row += QStringLiteral("%1  ").arg(offset, 8, 16, QLatin1Char('0')).toUpper();
    const qsizetype hexStart = row.size();
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (i == RowBytes / 2)
            row += QLatin1Char(' ');
        const auto value = quint8(bytes.at(i));
        row += QLatin1Char(digits[value >> 4]);
        row += QLatin1Char(digits[value & 0x0F]);
        row += QLatin1Char(' ');
    }
    // A short row is padded, so that the ASCII column stands where it does on a full one.
    const qsizetype hexWidth = RowBytes * 3 + 1;
    row += QString(hexStart + hexWidth - row.size(), QLatin1Char(' '));
    row += QLatin1Char(' ');
    row += QLatin1Char('|');
    for (const char byte : bytes)
        row += (byte >= 0x20 && byte < 0x7F) ? QLatin1Char(byte) : QLatin1Char('.');
    row += QLatin1Char('|');
    return row;
}

HexDump::Rows HexDump::add(const QByteArray &bytes, const QString &stamp)
{
    Rows rows;
    qsizetype used = 0;
    while (used < bytes.size()) {
        if (rowBytes.isEmpty())
            rowStamp = stamp;
        const qsizetype take = qMin<qsizetype>(RowBytes - rowBytes.size(), bytes.size() - used);
        rowBytes += bytes.mid(used, take);
        used += take;
        if (rowBytes.size() == RowBytes)
            rows.complete += closeRow();
    }
    if (!rowBytes.isEmpty())
        rows.open = formatRow(rowStamp, rowOffset, rowBytes);
    return rows;
}

QString HexDump::closeRow()
{
    if (rowBytes.isEmpty())
        return QString();
    const QString row = formatRow(rowStamp, rowOffset, rowBytes) + QLatin1Char('\n');
    rowOffset += rowBytes.size();
    rowBytes.clear();
    return row;
}

void HexDump::restart()
{
    rowOffset = 0;
    rowBytes.clear();
    rowStamp.clear();
}
