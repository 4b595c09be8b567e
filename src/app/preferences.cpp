#include "app/preferences.h"

#include <QDir>
#include <QFont>
#include <QSettings>

#include "common/logging.h"
#include "common/texthelpers.h"

namespace {

QColor colorOr(const QVariant &value, const QColor &fallback)
{
    const QColor color = QColor::fromString(value.toString());
    return color.isValid() ? color : fallback;
}

QTime timeOr(const QVariant &value, const QTime &fallback)
{
    const QTime time = value.toTime();
    return time.isValid() ? time : fallback;
}

// The current host goes first in the history, without duplicates or blanks.
QStringList hostHistory(const QString &current, const QStringList &history)
{
    QStringList hosts;
    for (const QString &host : QStringList{current} + history) {
        if (!host.trimmed().isEmpty() && !hosts.contains(host))
            hosts << host;
    }
    return hosts.isEmpty() ? QStringList{QStringLiteral("127.0.0.1")} : hosts;
}

} // namespace

Preferences Preferences::read(const QSettings &store)
{
    const Preferences d;
    Preferences p;
    auto value = [&store](const char *key, const QVariant &fallback = {}) {
        return store.value(QLatin1String(key), fallback);
    };
    p.connMode = value("LastConnMode", d.connMode).toInt();
    p.portName = value("LastPortName").toString();
    p.recentFiles = value("RecentFiles").toStringList();
    p.baudRate = value("LastBaudrate", d.baudRate).toInt();
    p.dataBits = value("LastDatabits", d.dataBits).toInt();
    p.stopBits = value("LastStopbits", d.stopBits).toInt();
    p.parity = value("LastParity", d.parity).toInt();
    p.flowControl = value("LastFlowControl", d.flowControl).toInt();
    p.targetHost = value("LastTargetHost", d.targetHost).toString();
    p.targetHosts = hostHistory(p.targetHost, value("LastTargetHosts", d.targetHosts).toStringList());
    p.targetPort = value("LastTargetPort", d.targetPort).toInt();
    p.receiveMsgFormat = value("LastReceiveMessageFormat", d.receiveMsgFormat).toInt();
    p.sendMsgFormat = value("LastSendMessageFormat", d.sendMsgFormat).toInt();
    p.autoFeedLine = value("LastAutoFeedLine").toBool();
    p.autoAddFeedLine = value("LastAutoAddFeedLine", d.autoAddFeedLine).toBool();
    p.autoFeedInterval = value("LastAutoFeedInterval", d.autoFeedInterval).toInt();
    p.splitterLeft = value("LastSplitterLeft", d.splitterLeft).toInt();
    p.splitterRight = value("LastSplitterRight", d.splitterRight).toInt();
    qCDebug(lcDefault) << "##### lastSplitterLeft:" << p.splitterLeft << "lastSplitterRight:" << p.splitterRight;
    p.displaySendMsg = value("LastDisplaySendMsg").toBool();
    p.displayMsgTime = value("LastDisplaySendTime").toBool();
    p.rxTimeFormat = value("LastDisplayRxTimeFormat", d.rxTimeFormat).toString();
    p.txTimeFormat = value("LastDisplayTxTimeFormat", d.txTimeFormat).toString();
    p.logSaveFlag = value("LastLogSaveFlag", d.logSaveFlag).toBool();
    // Logs land in the home folder unless the user chose otherwise.
    p.logFilePath = value("LastLogFilePath", QDir::homePath() + QStringLiteral("/%S.log")).toString();
    p.logFileName = value("LastLogFileName", d.logFileName).toString();
    p.logTimestampEnabled = value("LastLogTimestampEnabled", d.logTimestampEnabled).toBool();
    p.logTimestamp = value("LastLogTimestamp", d.logTimestamp).toString();
    p.logRotateAtSize = value("LastLogRotateAtSize", d.logRotateAtSize).toBool();
    p.logRotateSize = value("LastLogRotateSize", d.logRotateSize).toInt();
    p.logRotateAtTime = value("LastLogRotateAtTime", d.logRotateAtTime).toBool();
    p.logRotateTime = timeOr(value("LastLogRotateTime", d.logRotateTime), d.logRotateTime);
    p.needHourTimeStamp = value("LastNeedHourTimeStamp", d.needHourTimeStamp).toBool();
    p.displayBufferSize = value("LastDisplayBufferSize", d.displayBufferSize).toInt();
    p.fontFamily = value("LastDisplayFontFamily", d.fontFamily).toString();
    if (p.fontFamily.trimmed().isEmpty())
        p.fontFamily = d.fontFamily;
    p.fontSize = value("LastDisplayFontSize", d.fontSize).toInt();
    if (p.fontSize < 1)
        p.fontSize = d.fontSize;
    p.formatDisplayColor = value("LastFormatDisplayColor", d.formatDisplayColor).toBool();
    p.sendTextColor = colorOr(value("LastSendTextColor"), d.sendTextColor);
    p.receiveTextColor = colorOr(value("LastReceiveTextColor"), d.receiveTextColor);
    qCDebug(lcDefault) << "lastSendTextColor: " << p.sendTextColor;
    p.openLastConnection = value("OpenLastConnection", d.openLastConnection).toBool();
    p.lastLogFile = value("LastLogFile").toString();
    p.lastDirectory = value("LastDirectory").toString();
    p.sendList = value("SendList").toStringList();
    p.enterSends = value("EnterSends", d.enterSends).toBool();
    p.clearAfterSend = value("ClearAfterSend", d.clearAfterSend).toBool();
    p.rawLog = value("RawLog", d.rawLog).toBool();
    p.rawLogSent = value("RawLogSent", d.rawLogSent).toBool();
    p.macros = macrosFromText(value("SendMacros").toString());
    p.plot = PlotSettings::read(store, QStringLiteral("Last"));
    p.link = LinkSettings::read(store, QStringLiteral("Last"));
    p.view = ViewSettings::read(store, QStringLiteral("Last"));
    p.language = value("ValueL", d.language).toInt();
    return p;
}

void Preferences::write(QSettings &store) const
{
    auto set = [&store](const char *key, const QVariant &value) { store.setValue(QLatin1String(key), value); };
    qCDebug(lcDefault) << "### writeSettings ###";
    set("LastConnMode", connMode);
    set("LastPortName", portName);
    set("LastBaudrate", baudRate);
    set("LastDatabits", dataBits);
    set("LastStopbits", stopBits);
    set("LastParity", parity);
    set("LastFlowControl", flowControl);
    set("LastTargetHost", targetHost);
    set("LastTargetHosts", targetHosts);
    set("LastTargetPort", targetPort);
    set("LastReceiveMessageFormat", receiveMsgFormat);
    set("LastSendMessageFormat", sendMsgFormat);
    set("LastAutoFeedLine", autoFeedLine);
    set("LastAutoAddFeedLine", autoAddFeedLine);
    set("LastAutoFeedInterval", autoFeedInterval);
    qCDebug(lcDefault) << "LastSplitterLeft:" << splitterLeft << "\n" << "LastSplitterRight:" << splitterRight;
    set("LastSplitterLeft", splitterLeft);
    set("LastSplitterRight", splitterRight);
    set("LastDisplaySendMsg", displaySendMsg);
    set("LastDisplaySendTime", displayMsgTime);
    set("LastDisplayRxTimeFormat", rxTimeFormat);
    set("LastDisplayTxTimeFormat", txTimeFormat);
    set("LastLogSaveFlag", logSaveFlag);
    set("LastLogFilePath", logFilePath);
    set("LastLogTimestampEnabled", logTimestampEnabled);
    set("LastLogTimestamp", logTimestamp);
    set("LastLogRotateAtSize", logRotateAtSize);
    set("LastLogRotateSize", logRotateSize);
    set("LastLogRotateAtTime", logRotateAtTime);
    set("LastLogRotateTime", logRotateTime);
    set("LastNeedHourTimeStamp", needHourTimeStamp);
    set("LastDisplayBufferSize", displayBufferSize);
    set("LastDisplayFontFamily", fontFamily);
    set("LastDisplayFontSize", fontSize);
    set("LastFormatDisplayColor", formatDisplayColor);
    set("LastSendTextColor", storedColorName(sendTextColor));
    set("LastReceiveTextColor", storedColorName(receiveTextColor));
    set("SendList", sendList);
    set("EnterSends", enterSends);
    set("ClearAfterSend", clearAfterSend);
    set("RawLog", rawLog);
    set("RawLogSent", rawLogSent);
    set("SendMacros", macrosToText(macros));
    plot.write(store, QStringLiteral("Last"));
    link.write(store, QStringLiteral("Last"));
    view.write(store, QStringLiteral("Last"));
    set("RecentFiles", recentFiles);
    set("LastFile", lastFile);
    set("LastLogFile", lastLogFile);
    set("LastDirectory", lastDirectory);
}

void Preferences::applyTo(PortSettings &port, FormatSetting &format) const
{
    port.connMode = connMode;
    if (!portName.isEmpty())
        port.name = portName;
    port.baudRate = baudRate;
    port.dataBits = dataBits;
    port.stopBits = stopBits;
    port.parity = parity;
    port.flowControl = flowControl;
    port.lastTargetHost = hostHistory(targetHost, targetHosts);
    port.lastTargetPort = targetPort;
    port.link = link;

    format.ReceiveMsgFormat = receiveMsgFormat;
    format.SendMsgFormat = sendMsgFormat;
    format.AutoFeedLine = autoFeedLine;
    format.AutoAddFeedLine = autoAddFeedLine;
    format.AutoFeedInterval = autoFeedInterval;
    format.DisplaySendMsg = displaySendMsg;
    format.DisplayMsgTime = displayMsgTime;
    format.RxTimeFormat = rxTimeFormat;
    format.TxTimeFormat = txTimeFormat;
    format.LogSaveFlag = logSaveFlag;
    format.LogFilePath = logFilePath;
    format.LogTimestampEnabled = logTimestampEnabled;
    format.LogFileTime = logTimestamp;
    format.LogRotateAtSize = logRotateAtSize;
    format.LogRotateSize = logRotateSize;
    format.LogRotateAtTime = logRotateAtTime;
    format.LogRotateTime = logRotateTime;
    format.NeedHourTimeStamp = needHourTimeStamp;
    format.DisplayBufferSize = displayBufferSize;
    format.LogFont = QFont(fontFamily, fontSize);
    format.FormatDisplayColor = formatDisplayColor;
    format.SendTextColor = sendTextColor;
    format.ReceiveTextColor = receiveTextColor;
    format.SendList = sendList;
    format.EnterSends = enterSends;
    format.ClearAfterSend = clearAfterSend;
    format.RawLog = rawLog;
    format.RawLogSent = rawLogSent;
    format.Macros = macros;
    format.Plot = plot;
    format.View = view;
}

void Preferences::takeFrom(const PortSettings &port, const FormatSetting &format)
{
    connMode = port.connMode;
    portName = port.name;
    baudRate = port.baudRate;
    dataBits = port.dataBits;
    stopBits = port.stopBits;
    parity = port.parity;
    flowControl = port.flowControl;
    targetHost = port.lastTargetHost.value(0, QStringLiteral("127.0.0.1"));
    targetHosts = hostHistory(targetHost, port.lastTargetHost);
    targetPort = port.lastTargetPort;
    link = port.link;

    receiveMsgFormat = format.ReceiveMsgFormat;
    sendMsgFormat = format.SendMsgFormat;
    autoFeedLine = format.AutoFeedLine;
    autoAddFeedLine = format.AutoAddFeedLine;
    autoFeedInterval = format.AutoFeedInterval;
    splitterLeft = format.SplitterLeft;
    splitterRight = format.SplitterRight;
    displaySendMsg = format.DisplaySendMsg;
    displayMsgTime = format.DisplayMsgTime;
    rxTimeFormat = format.RxTimeFormat;
    txTimeFormat = format.TxTimeFormat;
    logSaveFlag = format.LogSaveFlag;
    logFilePath = format.LogFilePath;
    logTimestampEnabled = format.LogTimestampEnabled;
    logTimestamp = format.LogFileTime;
    logRotateAtSize = format.LogRotateAtSize;
    logRotateSize = format.LogRotateSize;
    logRotateAtTime = format.LogRotateAtTime;
    logRotateTime = format.LogRotateTime;
    needHourTimeStamp = format.NeedHourTimeStamp;
    displayBufferSize = format.DisplayBufferSize;
    fontFamily = format.LogFont.family();
    fontSize = format.LogFont.pointSize();
    formatDisplayColor = format.FormatDisplayColor;
    sendTextColor = format.SendTextColor;
    receiveTextColor = format.ReceiveTextColor;
    sendList = format.SendList;
    enterSends = format.EnterSends;
    clearAfterSend = format.ClearAfterSend;
    rawLog = format.RawLog;
    rawLogSent = format.RawLogSent;
    macros = format.Macros;
    plot = format.Plot;
    view = format.View;
}

bool Preferences::chineseChecked(int language, const QString &systemLocaleName)
{
    if (language == 2)
        return false;
    if (language == 1)
        return true;
    return systemLocaleName == QLatin1String("zh_CN");
}
