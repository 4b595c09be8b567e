#ifndef QUORVANE_DATALOG_H
#define QUORVANE_DATALOG_H

#include <functional>

#include <QByteArray>
#include <QDateTime>
#include <QFile>
#include <QSet>
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

// A session name as one file name: path separators, characters that file
// systems refuse and control characters become "_", so "TCP/UDP" or
// "/dev/ttyUSB0" never turn the log into a path through folders.
QString fileNameSafe(const QString &name);
// Expands %S (session name, made file-name safe), %Y %y %M %D %h %m %s %z of
// a log file name in a single pass: a "%" inside the session name is never
// expanded again, and unknown "%x" sequences stay as they are. Folders in
// the pattern itself stay as typed.
QString expandLogFileName(const QString &pattern, const QString &sessionName, const QDateTime &when);
// Expands %h %m %s %z of a log line stamp from a chunk's time.
QString expandLogStamp(const QString &pattern, const QTime &time);

// Header facts of a new log file.
struct LogHeaderInfo {
    QString portName;
    qint32 baudRate = 0;
};

// Collects rendered log text, encoded once as UTF-8, and writes it to the
// session's log file on every save tick, starting new files by size and time
// of day. The file is opened for appending and closed again on every tick.
class DataLog
{
public:
    enum Result { Disabled, Written, NameTooShort, OpenFailed, WriteFailed, ForeignFile };

    // Text waiting for the file is bounded: past this, the oldest is dropped
    // and the next successful write records how much and since when.
    static constexpr qint64 PendingLimit = qint64(64) << 20;

    // How a tick writes to the open file; tests stand in a short or failing
    // device. Returns the bytes written, or -1 with the reason in *error.
    using WriteFunction = std::function<qint64(QFile &file, const QByteArray &data, QString *error)>;
    void setWriteFunction(WriteFunction write) { writeFunction = std::move(write); }

    void appendLog(const QString &text);
    void appendBytes(const QByteArray &bytes);
    const QByteArray &pendingBytes() const { return pending; }

    // One save tick. With recording off the pending text is dropped (it was
    // never meant to be recorded). A name under 3 characters switches
    // LogSaveFlag off and keeps the text. What fits is written and the rest
    // stays pending, in order, for the next tick; nothing is written twice.
    // A non-empty file that is not one of this program's logs is never
    // appended to; a raw log (no header, just the bytes) only writes to
    // files it made itself.
    Result save(FormatSetting &format, const QString &sessionName, const LogHeaderInfo &header);
    // Between save ticks, once WriteAheadSize bytes wait, a slice of them is
    // appended to the current file already, so that no tick has a flood's
    // worth to write at once. Only a file this log already wrote to is
    // continued; new files, headers, hour lines and rotation stay with the
    // save tick, and a failure leaves the text for the tick to report.
    static constexpr qint64 WriteAheadSize = qint64(1) << 20;
    void writeAhead(const FormatSetting &format);

    // Why the last tick failed, in the system's words; empty after a
    // successful one.
    QString lastErrorString() const { return errorString; }

private:
    Result fail(Result result, const QString &message);
    bool isForeign(const QString &fileName, bool raw);
    qint64 write(QFile &file, const QByteArray &data, QString *error) const;

    QByteArray pending;
    qint64 droppedBytes = 0;
    QDateTime droppedSince;
    QString errorString;
    QSet<QString> ownFiles;  // files this log made or found to be its own kind
    WriteFunction writeFunction;
};

#endif
