#include "session/datalog.h"

#include <QHash>

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
