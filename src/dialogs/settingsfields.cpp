#include "dialogs/settingsfields.h"

#include <QCoreApplication>

#include <limits>

#include "common/texthelpers.h"
#include "common/types.h"
#include "session/portsettings.h"

namespace SettingsFields {

QString portEntryText(const QString &portName, const QString &description)
{
    if (description.isEmpty())
        return portName;
    return QStringLiteral("%1 (%2)").arg(portName, trimFriendName(description));
}

int megabytesFromBytes(qint32 bytes)
{
    return bytes < 0 ? 0 : bytes >> 20;
}

qint32 scaledFromShown(int shown, qint32 scale)
{
    const qint64 value = qint64(shown) * (scale < 1 ? 1 : scale);
    return qint32(qBound(qint64(0), value, qint64(std::numeric_limits<qint32>::max())));
}

int maxIntervalForUnit(qint32 unit)
{
    return std::numeric_limits<qint32>::max() / sanitizedTimeUnit(unit);
}

qint32 lineEndingFromChecks(bool crlf, bool lf, bool cr, bool lfcr)
{
    if (crlf)
        return CarriageReturnLineFeed;
    if (lf)
        return LineFeedOnly;
    if (cr)
        return CarriageReturnOnly;
    if (lfcr)
        return LineFeedCarriageReturn;
    return CarriageReturnLineFeed;
}

int lineEndingButtonIndex(qint32 mode)
{
    switch (mode) {
    case CarriageReturnLineFeed: return 0;
    case LineFeedOnly: return 1;
    case CarriageReturnOnly: return 2;
    case LineFeedCarriageReturn: return 3;
    default: return -1;
    }
}

qint32 customBaudRate(const QString &text)
{
    bool ok = false;
    const qint64 rate = text.trimmed().toLongLong(&ok, 10);
    if (!ok || rate < 1 || rate > MaxCustomBaudRate)
        return 0;
    return qint32(rate);
}

QString timeFormatPreview(const QString &pattern, const QString &fallback, const QDateTime &now)
{
    return now.toString(pattern.isEmpty() ? fallback : pattern);
}

QString fontDescription(const QFont &font)
{
    return QStringLiteral("%1, %2, %3").arg(font.family()).arg(font.pointSize()).arg(int(font.weight()));
}

QString colorText(const QColor &color)
{
    return color.isValid() ? color.name().toUpper() : QString();
}

bool isUsableLogFileName(const QString &name)
{
    return name.trimmed().size() >= 3;
}

QStringList hostHistoryWith(const QString &host, const QStringList &history)
{
    const QString current = host.trimmed();
    if (current.isEmpty())
        return history;
    QStringList hosts{current};
    for (const QString &entry : history) {
        if (!entry.isEmpty() && !hosts.contains(entry))
            hosts.append(entry);
    }
    return hosts;
}

NetworkRows networkRows(qint32 mode)
{
    NetworkRows rows;
    switch (mode) {
    case TcpServerMode:
    case UdpServerMode:
        rows.hostLabel = QCoreApplication::translate("SettingsDialog", " IP");
        rows.hostIsLocalAddress = true;
        rows.portLabel = QCoreApplication::translate("SettingsDialog", "Port");
        break;
    case UdpClientMode:
    case UdpGroupMode:
        rows.hostLabel = QCoreApplication::translate("SettingsDialog", "Dest Host");
        rows.hostExample = mode == UdpGroupMode ? QStringLiteral("224.0.1.0") : QStringLiteral("127.0.0.1");
        rows.portLabel = QCoreApplication::translate("SettingsDialog", "Dest Port");
        rows.localRows = true;
        break;
    default:
        rows.hostLabel = QCoreApplication::translate("SettingsDialog", "Host");
        rows.hostExample = QStringLiteral("127.0.0.1");
        rows.portLabel = QCoreApplication::translate("SettingsDialog", "Port");
        break;
    }
    return rows;
}

} // namespace SettingsFields
