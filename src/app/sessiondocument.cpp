#include "app/sessiondocument.h"

#include <limits>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include "common/logging.h"
#include "common/texthelpers.h"

namespace SessionDocument {

namespace {

const QString HostSeparator = QStringLiteral("-||-");

QString key(int index, const char *name)
{
    return QStringLiteral("%1/%2").arg(index).arg(QLatin1String(name));
}

// Out-of-range or unreadable counts fall back to the nearest usable one.
int boundedCount(const QVariant &value, int fallback)
{
    bool ok = false;
    const int count = value.toInt(&ok);
    if (!ok)
        return fallback;
    return qBound(1, count, MaxSessions);
}

// These flags are written as booleans but read as integers, so a document
// written by the program brings them back off; documents that store 1 set them.
bool intFlag(const QSettings &file, int index, const char *name)
{
    // Through text, so a value still cached as a boolean reads like the file.
    return file.value(key(index, name)).toString().toInt() != 0;
}

QFont readFont(const QSettings &file, int index, const QFont &current)
{
    QFont font = current;
    const QString family = file.value(key(index, "LogFontFamily")).toString();
    if (!family.trimmed().isEmpty())
        font.setFamily(family);
    const int size = file.value(key(index, "LogFontSize")).toInt();
    if (size > 0)
        font.setPointSize(size);
    const int weight = file.value(key(index, "LogFontWeight")).toInt();
    font.setWeight(weight >= 1 && weight <= 1000 ? QFont::Weight(weight) : QFont::Normal);
    font.setItalic(false);
    return font;
}

QColor readColor(const QSettings &file, int index, const char *name)
{
    // Text that names no colour reads as a missing colour: invalid.
    return QColor::fromString(file.value(key(index, name)).toString());
}

// Field lengths a document may bring: enough for any real value, small
// enough that no document can stall the window rendering them.
constexpr int MaxTextLength = 4096;
constexpr int MaxFormatLength = 256;
constexpr int MaxSendListEntries = 1000;

QString boundedText(const QSettings &file, int index, const char *name, int maxLength = MaxTextLength)
{
    return file.value(key(index, name)).toString().left(maxLength);
}

int nonNegative(const QSettings &file, int index, const char *name)
{
    return qMax(0, file.value(key(index, name)).toInt());
}

void report(const ProgressStage &progress, int stage)
{
    if (progress)
        progress(stage);
}

} // namespace

bool isSessionDocument(const QString &fileName)
{
    const QFileInfo info(fileName);
    if (!info.isFile() || !info.isReadable() || info.size() > MaxDocumentBytes)
        return false;
    QFile raw(fileName);
    if (!raw.open(QIODevice::ReadOnly) || raw.readAll().contains('\0'))
        return false;
    const QSettings file(fileName, QSettings::IniFormat);
    if (file.status() != QSettings::NoError)
        return false;
    if (file.contains(QStringLiteral("PortNumber")))
        return true;
    const QStringList groups = file.childGroups();
    for (int i = 0; i < MaxSessions; ++i) {
        if (groups.contains(QString::number(i)))
            return true;
    }
    return false;
}

void writeLayout(QSettings &file, const DocumentLayout &layout)
{
    file.setValue(QStringLiteral("PortNumber"), QString::number(layout.portCount));
    file.setValue(QStringLiteral("ColumnNumber"), QString::number(layout.columnCount));
    file.setValue(QStringLiteral("QuickView"), layout.quickView);
}

DocumentLayout readLayout(const QSettings &file)
{
    DocumentLayout layout;
    layout.portCount = boundedCount(file.value(QStringLiteral("PortNumber"), 1), 1);
    layout.columnCount = boundedCount(file.value(QStringLiteral("ColumnNumber"), 1), 1);
    layout.quickView = file.value(QStringLiteral("QuickView"), layout.portCount < 2).toBool();
    return layout;
}

void writeSession(QSettings &file, int i, const PortSettings &port, const FormatSetting &format,
                  const ProgressStage &progress)
{
    report(progress, 10);
    file.setValue(key(i, "PortName"), port.name);
    file.setValue(key(i, "BaudRate"), port.baudRate);
    file.setValue(key(i, "DataBits"), port.dataBits);
    file.setValue(key(i, "StopBits"), port.stopBits);
    file.setValue(key(i, "Parity"), port.parity);
    file.setValue(key(i, "FlowControl"), port.flowControl);
    report(progress, 20);
    file.setValue(key(i, "ReceiveMsgForamt"), format.ReceiveMsgFormat);
    file.setValue(key(i, "AutoFeedLine"), format.AutoFeedLine);
    file.setValue(key(i, "SplitterLeft"), format.SplitterLeft);
    file.setValue(key(i, "SplitterRight"), format.SplitterRight);
    file.setValue(key(i, "AutoFeedInterval"), format.AutoFeedInterval);
    file.setValue(key(i, "DisplaySendMsg"), format.DisplaySendMsg);
    file.setValue(key(i, "DisplayMsgTime"), format.DisplayMsgTime);
    file.setValue(key(i, "RxTimeFormat"), format.RxTimeFormat);
    file.setValue(key(i, "TxTimeFormat"), format.TxTimeFormat);
    file.setValue(key(i, "SendMsgFormat"), format.SendMsgFormat);
    file.setValue(key(i, "AutoSend"), format.AutoSend);
    file.setValue(key(i, "SendInterval"), format.SendInterval);
    file.setValue(key(i, "SendTimeUnit"), format.SendTimeUnit);
    file.setValue(key(i, "SupportComment"), format.SupportComment);
    file.setValue(key(i, "FormatSend"), format.FormatSend);
    file.setValue(key(i, "AutoAddFeedLine"), format.AutoAddFeedLine);
    file.setValue(key(i, "SendList"), format.SendList);
    file.setValue(key(i, "EnterSends"), format.EnterSends);
    file.setValue(key(i, "ClearAfterSend"), format.ClearAfterSend);
    file.setValue(key(i, "SendMacros"), macrosToText(format.Macros));
    report(progress, 30);
    file.setValue(key(i, "LogSaveFlag"), format.LogSaveFlag);
    file.setValue(key(i, "RawLog"), format.RawLog);
    file.setValue(key(i, "RawLogSent"), format.RawLogSent);
    file.setValue(key(i, "LogFilePath"), format.LogFilePath);
    file.setValue(key(i, "LogTimestampEnabled"), format.LogTimestampEnabled);
    file.setValue(key(i, "LogFileTime"), format.LogFileTime);
    report(progress, 50);
    file.setValue(key(i, "DisplayBufferSize"), format.DisplayBufferSize);
    file.setValue(key(i, "LogFontFamily"), format.LogFont.family());
    file.setValue(key(i, "LogFontSize"), format.LogFont.pointSize());
    file.setValue(key(i, "LogFontWeight"), int(format.LogFont.weight()));
    file.setValue(key(i, "FormatDisplayColor"), format.FormatDisplayColor);
    file.setValue(key(i, "SendTextColor"), storedColorName(format.SendTextColor));
    file.setValue(key(i, "ReceiveTextColor"), storedColorName(format.ReceiveTextColor));
    file.setValue(key(i, "LastTargetHost"), joinHosts(port.lastTargetHost));
    file.setValue(key(i, "LastTargetPort"), port.lastTargetPort);
    file.setValue(key(i, "ConnMode"), port.connMode);
    format.Plot.write(file, QStringLiteral("%1/").arg(i));
    port.link.write(file, QStringLiteral("%1/").arg(i));
    format.View.write(file, QStringLiteral("%1/").arg(i));
    report(progress, 100);
}

void readSession(const QSettings &file, int i, PortSettings &port, FormatSetting &format)
{
    port.name = boundedText(file, i, "PortName");
    port.baudRate = file.value(key(i, "BaudRate")).toInt();
    port.dataBits = file.value(key(i, "DataBits")).toInt();
    port.stopBits = file.value(key(i, "StopBits")).toInt();
    port.parity = file.value(key(i, "Parity")).toInt();
    port.flowControl = file.value(key(i, "FlowControl")).toInt();
    format.ReceiveMsgFormat = file.value(key(i, "ReceiveMsgForamt")).toInt();
    format.AutoFeedLine = file.value(key(i, "AutoFeedLine")).toBool();
    format.SplitterLeft = file.value(key(i, "SplitterLeft")).toInt();
    format.SplitterRight = file.value(key(i, "SplitterRight")).toInt();
    format.AutoFeedInterval = nonNegative(file, i, "AutoFeedInterval");
    format.DisplaySendMsg = intFlag(file, i, "DisplaySendMsg");
    format.DisplayMsgTime = intFlag(file, i, "DisplayMsgTime");
    format.RxTimeFormat = boundedText(file, i, "RxTimeFormat", MaxFormatLength);
    format.TxTimeFormat = boundedText(file, i, "TxTimeFormat", MaxFormatLength);
    format.SendMsgFormat = file.value(key(i, "SendMsgFormat")).toInt();
    format.AutoSend = intFlag(file, i, "AutoSend");
    format.SendInterval = nonNegative(file, i, "SendInterval");
    format.SendTimeUnit = file.value(key(i, "SendTimeUnit")).toInt();
    format.SupportComment = intFlag(file, i, "SupportComment");
    format.FormatSend = intFlag(file, i, "FormatSend");
    format.AutoAddFeedLine = file.value(key(i, "AutoAddFeedLine")).toBool();
    format.SendList = file.value(key(i, "SendList")).toStringList().mid(0, MaxSendListEntries);
    for (QString &entry : format.SendList)
        entry.truncate(MaxTextLength);
    format.EnterSends = file.value(key(i, "EnterSends")).toBool();
    format.ClearAfterSend = file.value(key(i, "ClearAfterSend")).toBool();
    format.Macros = macrosFromText(file.value(key(i, "SendMacros")).toString());
    format.LogSaveFlag = intFlag(file, i, "LogSaveFlag");
    format.RawLog = file.value(key(i, "RawLog")).toBool();
    format.RawLogSent = file.value(key(i, "RawLogSent")).toBool();
    format.LogFilePath = boundedText(file, i, "LogFilePath");
    format.LogTimestampEnabled = file.value(key(i, "LogTimestampEnabled")).toBool();
    format.LogFileTime = boundedText(file, i, "LogFileTime", MaxFormatLength);
    // Rotation options are honoured when present but never written.
    // A size that is not a positive 32-bit number switches size rotation off.
    bool sizeOk = false;
    const qlonglong rotateSize = file.value(key(i, "LogRotateSize")).toLongLong(&sizeOk);
    sizeOk = sizeOk && rotateSize > 0 && rotateSize <= std::numeric_limits<qint32>::max();
    format.LogRotateAtSize = sizeOk && file.value(key(i, "LogRotateAtSize")).toBool();
    format.LogRotateSize = sizeOk ? qint32(rotateSize) : 0;
    format.LogRotateAtTime = file.value(key(i, "LogRotateAtTime")).toBool();
    format.LogRotateTime = file.value(key(i, "LogRotateTime")).toTime();
    format.NeedHourTimeStamp = file.value(key(i, "NeedHourTimeStamp")).toBool();
    format.DisplayBufferSize = nonNegative(file, i, "DisplayBufferSize");
    format.LogFont = readFont(file, i, format.LogFont);
    format.FormatDisplayColor = intFlag(file, i, "FormatDisplayColor");
    format.SendTextColor = readColor(file, i, "SendTextColor");
    format.ReceiveTextColor = readColor(file, i, "ReceiveTextColor");
    port.lastTargetHost = splitHosts(boundedText(file, i, "LastTargetHost"));
    port.lastTargetPort = file.value(key(i, "LastTargetPort")).toInt();
    port.connMode = file.value(key(i, "ConnMode")).toInt();
    format.Plot = PlotSettings::read(file, QStringLiteral("%1/").arg(i));
    port.link = LinkSettings::read(file, QStringLiteral("%1/").arg(i));
    format.View = ViewSettings::read(file, QStringLiteral("%1/").arg(i));
}

QString joinHosts(const QStringList &hosts)
{
    return hosts.join(HostSeparator);
}

QStringList splitHosts(const QString &text)
{
    return text.split(HostSeparator, Qt::SkipEmptyParts);
}

int progressValue(int stage, int index, int count)
{
    if (count < 1)
        return stage;
    return stage / count + (100 * index) / count;
}

bool flushed(QSettings &file)
{
    file.sync();
    if (file.status() != QSettings::NoError) {
        qCWarning(lcDefault) << "writeFile: settings status" << file.status() << "for" << file.fileName();
        return false;
    }
    return true;
}

} // namespace SessionDocument
