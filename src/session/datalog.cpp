#include "session/datalog.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>

#include "common/logging.h"

namespace {

QDateTime fixedNow;

QString zeroPadded(int value, int width)
{
    return QStringLiteral("%1").arg(value, width, 10, QLatin1Char('0'));
}

QHash<QChar, QString> timeFields(const QTime &time)
{
    return {
        {QLatin1Char('h'), zeroPadded(time.hour(), 2)},
        {QLatin1Char('m'), zeroPadded(time.minute(), 2)},
        {QLatin1Char('s'), zeroPadded(time.second(), 2)},
        {QLatin1Char('z'), zeroPadded(time.msec(), 3)},
    };
}

// One pass over the pattern, so inserted values are never expanded again.
QString expandPlaceholders(const QString &pattern, const QHash<QChar, QString> &values)
{
    QString result;
    result.reserve(pattern.size() + 32);
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        if (pattern.at(i) == QLatin1Char('%') && i + 1 < pattern.size()) {
            const auto value = values.constFind(pattern.at(i + 1));
            if (value != values.constEnd()) {
                result += *value;
                ++i;
                continue;
            }
        }
        result += pattern.at(i);
    }
    return result;
}

} // namespace

QDateTime LogClock::now()
{
    return fixedNow.isValid() ? fixedNow : QDateTime::currentDateTime();
}

void LogClock::setFixed(const QDateTime &when)
{
    fixedNow = when;
}

LogProcessState &LogProcessState::instance()
{
    static LogProcessState state;
    return state;
}

void LogProcessState::reset()
{
    *this = LogProcessState();
}

QString fileNameSafe(const QString &name)
{
    static const QString refused = QStringLiteral("/\\:*?\"<>|");
    QString safe = name;
    for (QChar &c : safe) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7f || refused.contains(c))
            c = QLatin1Char('_');
    }
    return safe;
}

QString expandLogFileName(const QString &pattern, const QString &sessionName, const QDateTime &when)
{
    const QDate date = when.date();
    QHash<QChar, QString> values = timeFields(when.time());
    values.insert(QLatin1Char('S'), fileNameSafe(sessionName));
    values.insert(QLatin1Char('Y'), zeroPadded(date.year(), 4));
    values.insert(QLatin1Char('y'), zeroPadded(date.year() % 100, 2));
    values.insert(QLatin1Char('M'), zeroPadded(date.month(), 2));
    values.insert(QLatin1Char('D'), zeroPadded(date.day(), 2));
    return expandPlaceholders(pattern, values);
}

QString expandLogStamp(const QString &pattern, const QTime &time)
{
    return expandPlaceholders(pattern, timeFields(time));
}

namespace {

constexpr qsizetype MinimumFileNameLength = 3;
constexpr qint64 NewFileGuardSecs = 30;
constexpr qint64 FirstUseLeadSecs = 100;
constexpr int RotateTimeSlackMs = 200;

QString logDateTime(const QDateTime &when)
{
    return when.toString(QStringLiteral("yyyy-MM-ddThh:mm:ss"));
}

bool rotationTimePassed(const FormatSetting &format, const QTime &now)
{
    // No wrap past midnight: a rotation time in the last 200 ms of the day
    // simply never triggers, instead of triggering all day long.
    return format.LogRotateTime.isValid()
        && now.msecsSinceStartOfDay() > format.LogRotateTime.msecsSinceStartOfDay() + RotateTimeSlackMs;
}

// Every condition is checked, so that a time rotation due at the first tick
// is used up there even when the file is missing anyway.
bool needsNewFile(const FormatSetting &format, const QDateTime &now, LogProcessState &state)
{
    const QFileInfo file(format.currentLogFileName);
    bool needed = false;
    if (!file.exists()) {
        qCDebug(lcDefault) << "Rotate log file as file not exist. file:" << format.currentLogFileName;
        needed = true;
    }
    if (format.LogRotateAtSize && file.exists() && file.size() > format.LogRotateSize) {
        qCDebug(lcDefault) << "Rotate log file for file size: " << file.size();
        needed = true;
    }
    if (format.LogRotateAtTime && !state.rotatedForTime && rotationTimePassed(format, now.time())) {
        qCDebug(lcDefault) << "Rotate log file for time";
        state.rotatedForTime = true;
        needed = true;
    }
    return needed;
}

// Names a new file unless any session made one in the last 30 seconds.
void startNewFile(FormatSetting &format, const QString &sessionName, const QDateTime &now,
                  LogProcessState &state)
{
    if (!state.lastLogCreatedAt.isValid())
        state.lastLogCreatedAt = now.addSecs(-FirstUseLeadSecs);
    if (state.lastLogCreatedAt.addSecs(NewFileGuardSecs) < now) {
        state.lastLogCreatedAt = now;
        format.currentLogFileName = expandLogFileName(format.LogFilePath, sessionName, now);
        qCDebug(lcDefault) << "formatSetting.currentLogFileName:" << format.currentLogFileName;
        qCDebug(lcDefault) << "Change log file to" << format.currentLogFileName;
    } else {
        qCDebug(lcDefault) << "Skip log as file created just now";
        qCDebug(lcDefault) << "last_log_created_at:" << state.lastLogCreatedAt;
        qCDebug(lcDefault) << "        currentTime:" << now;
    }
}

QString fileHeader(const QString &fileName, const QDateTime &now, const LogHeaderInfo &header)
{
    const QString version = QStringLiteral("%1.%2").arg(QStringLiteral(QUORVANE_VERSION),
                                                          QStringLiteral(QUORVANE_BUILD));
    return QStringLiteral("  Product: %1\n"
                          "  Version: %2\n"
                          "File Name: %3\n"
                          "Launch at: %4\n"
                          "Port Name: %5\n"
                          " Baudrate: %6\n"
                          "\n")
        .arg(QStringLiteral("Quorvane"), version, fileName, logDateTime(now), header.portName,
             QString::number(header.baudRate));
}

bool isTopOfHour(const QDateTime &now)
{
    return now.time().minute() == 0;
}

QString hourLine(const QDateTime &now, const LogProcessState &state)
{
    if (!isTopOfHour(now) || state.hourLineWritten)
        return QString();
    return QStringLiteral("\nCurrent Time: ") + logDateTime(now);
}

// Writes as much as the device takes; a short write is followed by another
// until the device refuses, so the count is what really landed.
qint64 writeAvailable(QFile &file, const QByteArray &data, QString *error)
{
    qint64 done = 0;
    while (done < data.size()) {
        const qint64 written = file.write(data.constData() + done, data.size() - done);
        if (written <= 0) {
            *error = file.errorString();
            break;
        }
        done += written;
    }
    return done;
}

const QByteArray HeaderStart = QByteArrayLiteral("  Product: Quorvane\n");

} // namespace

void DataLog::appendLog(const QString &text)
{
    appendBytes(text.toUtf8());
}

void DataLog::appendBytes(const QByteArray &bytes)
{
    pending += bytes;
    const qint64 excess = pending.size() - PendingLimit;
    if (excess > 0) {
        if (droppedBytes == 0)
            droppedSince = LogClock::now();
        droppedBytes += excess;
        pending.remove(0, excess);
    }
}

qint64 DataLog::write(QFile &file, const QByteArray &data, QString *error) const
{
    return writeFunction ? writeFunction(file, data, error) : writeAvailable(file, data, error);
}

void DataLog::writeAhead(const FormatSetting &format)
{
    if (pending.size() < WriteAheadSize || !format.LogSaveFlag || droppedBytes > 0
        || !ownFiles.contains(format.currentLogFileName))
        return;
    QFile file(format.currentLogFileName);
    if (file.size() == 0 || !file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        return;
    // Whole slices of the threshold, so one call stays short however much waits.
    QString reason;
    const qint64 written = write(file, QByteArray::fromRawData(pending.constData(), WriteAheadSize), &reason);
    if (written > 0)
        pending.remove(0, written);
}

DataLog::Result DataLog::fail(Result result, const QString &message)
{
    errorString = message;
    qCWarning(lcDefault) << "onSaveData:" << message;
    return result;
}

// A file that holds something else (a document pointed the log at a user's
// file) is never written into.
bool DataLog::isForeign(const QString &fileName, bool raw)
{
    if (ownFiles.contains(fileName))
        return false;
    QFile existing(fileName);
    if (raw)
        return existing.exists();
    if (existing.size() == 0 || (existing.open(QIODevice::ReadOnly) && existing.read(HeaderStart.size()) == HeaderStart)) {
        ownFiles.insert(fileName);
        return false;
    }
    return true;
}

DataLog::Result DataLog::save(FormatSetting &format, const QString &sessionName, const LogHeaderInfo &header)
{
    if (!format.LogSaveFlag) {
        pending.clear();
        return Disabled;
    }
    if (format.currentLogFileName.size() < MinimumFileNameLength) {
        format.LogSaveFlag = false;
        return NameTooShort;
    }

    LogProcessState &state = LogProcessState::instance();
    const QDateTime now = LogClock::now();
    if (needsNewFile(format, now, state))
        startNewFile(format, sessionName, now, state);
    if (!format.NeedHourTimeStamp)
        state.hourLineWritten = true;

    if (isForeign(format.currentLogFileName, format.RawLog)) {
        return fail(ForeignFile, QCoreApplication::translate("DataLog", "%1 is not a Quorvane log; nothing is written to it")
                                     .arg(format.currentLogFileName));
    }
    QFile file(format.currentLogFileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        return fail(OpenFailed, QCoreApplication::translate("DataLog", "Cannot open log file %1: %2")
                                    .arg(file.fileName(), file.errorString()));
    }

    // An empty file counts as new: it may be the remains of a failed first write.
    const bool isNewFile = file.size() == 0;
    QByteArray prefix;
    if (!format.RawLog)
        prefix = (isNewFile ? fileHeader(file.fileName(), now, header) : hourLine(now, state)).toUtf8();
    if (droppedBytes > 0 && !format.RawLog) {
        // Log content, like the header: the same words in every language.
        prefix += QStringLiteral("\n--- %1 bytes not logged since %2: the log file could not be written ---\n")
                      .arg(droppedBytes)
                      .arg(logDateTime(droppedSince))
                      .toUtf8();
    }
    const QByteArray data = prefix + pending;
    QString reason;
    const qint64 written = write(file, data, &reason);
    file.close();
    // Once anything landed, the rest (a cut header included) waits in order
    // for the next tick; when nothing did, the next tick decides afresh.
    if (written > 0) {
        pending = data.mid(written);
        droppedBytes = 0;
        if (!isNewFile)
            state.hourLineWritten = isTopOfHour(now);
    }
    ownFiles.insert(file.fileName());
    if (written < data.size()) {
        return fail(WriteFailed, QCoreApplication::translate("DataLog", "Cannot write log file %1: %2")
                                     .arg(file.fileName(), reason));
    }
    errorString.clear();
    return Written;
}
