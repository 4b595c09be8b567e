#include "session/datalog.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStringEncoder>
#include <QTextStream>

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

QString expandLogFileName(const QString &pattern, const QString &sessionName, const QDateTime &when)
{
    const QDate date = when.date();
    QHash<QChar, QString> values = timeFields(when.time());
    values.insert(QLatin1Char('S'), sessionName);
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

qint64 utf8Size(const QString &text)
{
    // Same encoder settings as the text stream, so the counts agree.
    QStringEncoder encoder(QStringConverter::Utf8);
    return QByteArray(encoder(text)).size();
}

// Appends the text through a UTF-8 stream and checks that every byte landed.
bool appendAll(QFile &file, const QString &text)
{
    const qint64 sizeBefore = file.size();
    QTextStream out(&file);
    out.setEncoding(QStringConverter::Utf8);
    out << text;
    out.flush();
    return out.status() == QTextStream::Ok && file.error() == QFileDevice::NoError
        && file.size() == sizeBefore + utf8Size(text);
}

} // namespace

void DataLog::appendLog(const QString &text)
{
    logText += text;
}

DataLog::Result DataLog::fail(Result result, const QString &message)
{
    errorString = message;
    qCWarning(lcDefault) << "onSaveData:" << message;
    return result;
}

DataLog::Result DataLog::save(FormatSetting &format, const QString &sessionName, const LogHeaderInfo &header)
{
    if (!format.LogSaveFlag) {
        logText.clear();
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

    QFile file(format.currentLogFileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        return fail(OpenFailed, QCoreApplication::translate("DataLog", "Cannot open log file %1: %2")
                                    .arg(file.fileName(), file.errorString()));
    }

    // An empty file counts as new: it may be the remains of a failed first write.
    const qint64 sizeBefore = file.size();
    const bool isNewFile = sizeBefore == 0;
    const QString text = (isNewFile ? fileHeader(file.fileName(), now, header) : hourLine(now, state)) + logText;
    if (!appendAll(file, text)) {
        const QString reason = file.errorString();
        if (file.isSequential() || !file.resize(sizeBefore))
            qCWarning(lcDefault) << "onSaveData: cannot cut back partial write of" << file.fileName();
        return fail(WriteFailed, QCoreApplication::translate("DataLog", "Cannot write log file %1: %2")
                                     .arg(file.fileName(), reason));
    }
    file.close();

    if (!isNewFile)
        state.hourLineWritten = isTopOfHour(now);
    logText.clear();
    errorString.clear();
    return Written;
}
