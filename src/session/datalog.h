#ifndef QUORVANE_DATALOG_H
#define QUORVANE_DATALOG_H

#include <QDateTime>
#include <QString>
#include <QTime>

#include "session/portsettings.h"

// "Now" for the data log. Tests set a fixed time; the program uses the clock.
class LogClock
{
public:
    static QDateTime now();
    static void setFixed(const QDateTime &when); // an invalid time restores the real clock
};

// State shared by every session's log in the process.
struct LogProcessState {
    // When a log file name was last made; a full date-time rather than a time
    // of day, so that the 30-second guard still works across midnight.
    QDateTime lastLogCreatedAt; // invalid until first use
    // The time-of-day rotation happens once per run, for whichever session
    // gets there first.
    bool rotatedForTime = false;
    bool hourLineWritten = false;

    static LogProcessState &instance();
    void reset();
};

// Expands %S (session name), %Y %y %M %D %h %m %s %z of a log file name in a
// single pass: a "%" inside the session name is never expanded again, and
// unknown "%x" sequences stay as they are. The session name is inserted
// literally, so a name holding "/" (a device path such as "/dev/ttyUSB0")
// makes "%S.log" a path into that device's folder, which normally cannot be
// written; ":" (as in "0.0.0.0:6000") is an ordinary file name character on
// macOS and Linux.
QString expandLogFileName(const QString &pattern, const QString &sessionName, const QDateTime &when);
// Expands %h %m %s %z of a log line stamp from a chunk's time.
QString expandLogStamp(const QString &pattern, const QTime &time);

// Header facts of a new log file.
struct LogHeaderInfo {
    QString portName;
    qint32 baudRate = 0;
};

// Collects rendered log text and writes it to the session's log file on
// every save tick, starting new files by size and time of day. The file is
// opened for appending and closed again on every tick.
class DataLog
{
public:
    enum Result { Disabled, Written, NameTooShort, OpenFailed, WriteFailed };

    void appendLog(const QString &text);
    const QString &pendingText() const { return logText; }

    // One save tick. With recording off the pending text is dropped (it was
    // never meant to be recorded). A name under 3 characters switches
    // LogSaveFlag off and keeps the text. When the file cannot be opened or
    // written the text is kept for the next tick and a failed write is cut
    // back off the file, so nothing is lost and nothing is written twice.
    Result save(FormatSetting &format, const QString &sessionName, const LogHeaderInfo &header);
    // Why the last tick failed; empty after a successful one.
    QString lastErrorString() const { return errorString; }

private:
    Result fail(Result result, const QString &message);

    QString logText;
    QString errorString;
};

#endif
