#ifndef QUORVANE_SETTINGSFIELDS_H
#define QUORVANE_SETTINGSFIELDS_H

#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QString>
#include <QStringList>

// Conversions between what the settings dialog shows and what the records
// store. Kept free of widgets so every rule can be checked on its own.
namespace SettingsFields {

constexpr int MaxCustomBaudRate = 100000000;

// Port list entry: the device name first, so that embracedString() gives it
// back, then the description in parentheses.
QString portEntryText(const QString &portName, const QString &description);

int megabytesFromBytes(qint32 bytes);

// Value stored for a widget showing a scaled record value (megabytes,
// interval units): always whole units of what is shown.
qint32 scaledFromShown(int shown, qint32 scale);

// Largest spin value whose product with the unit fits a 32-bit field.
int maxIntervalForUnit(qint32 unit);

// Checked state of the four line-ending buttons in the order CR LF, LF, CR,
// LF CR; the first checked one decides, none checked means CR LF.
qint32 lineEndingFromChecks(bool crlf, bool lf, bool cr, bool lfcr);
// Index of the button for a mode in the order above; -1 for unknown modes.
int lineEndingButtonIndex(qint32 mode);

// A baud rate typed into the custom entry; 0 when it is not a whole number
// from 1 to MaxCustomBaudRate.
qint32 customBaudRate(const QString &text);

// What a time-stamp pattern gives at the given moment. An empty pattern
// previews the fallback the display uses for it.
QString timeFormatPreview(const QString &pattern, const QString &fallback, const QDateTime &now);

QString fontDescription(const QFont &font);
QString colorText(const QColor &color);

// Log names shorter than this cannot be a real file name.
bool isUsableLogFileName(const QString &name);

// The host typed into the host box first, then the rest of the history
// without repeats or blanks. An empty host leaves the history unchanged.
QStringList hostHistoryWith(const QString &host, const QStringList &history);

// How the four reusable rows read for one network mode.
struct NetworkRows {
    QString hostLabel;
    bool hostIsLocalAddress = false; // server modes pick a local address, not a target
    QString hostExample;             // offered when the host history is empty
    QString portLabel;
    bool localRows = false;          // UDP client and group also choose a local end
};
NetworkRows networkRows(qint32 mode);

} // namespace SettingsFields

#endif
