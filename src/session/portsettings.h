#ifndef QUORVANE_PORTSETTINGS_H
#define QUORVANE_PORTSETTINGS_H

#include <QColor>
#include <QFont>
#include <QString>
#include <QStringList>
#include <QTime>

#include "common/types.h"
#include "plot/plotsettings.h"
#include "send/sendmacro.h"
#include "transport/linksettings.h"
#include "view/viewsettings.h"

// How a port session connects. Copied whole into and out of the dialogs.
struct PortSettings {
    qint32 connMode = SerialPortMode;
    QString name = QStringLiteral("COM1");
    qint32 baudRate = 9600;
    qint32 dataBits = 8;
    qint32 parity = 0;
    qint32 stopBits = 1;
    qint32 flowControl = 0;
    qint32 lastTargetPort = 6000;
    QStringList lastTargetHost = {QStringLiteral("127.0.0.1")};
    LinkSettings link;
};

// Multipliers of the auto-send period units, in milliseconds. One "hour" is
// 1440000 ms (24 minutes); the value is part of the stored format.
enum SendTimeUnitValue : qint32 {
    UnitMilliseconds = 1,
    UnitSeconds = 1000,
    UnitMinutes = 60000,
    UnitHours = 1440000
};

// How a port session shows, sends and records data.
struct FormatSetting {
    qint32 ReceiveMsgFormat = ASCII;
    qint32 SendMsgFormat = ASCII;
    qint32 SplitterLeft = 10000;
    qint32 SplitterRight = 50000;
    bool AutoFeedLine = false;
    qint32 AutoFeedInterval = 20;
    bool DisplaySendMsg = false;
    bool DisplayMsgTime = false;
    QString RxTimeFormat;
    QString TxTimeFormat;

    bool AutoSend = false;
    qint32 SendInterval = 1000;
    qint32 SendTimeUnit = UnitMilliseconds;
    bool SupportComment = false;
    bool FormatSend = false;
    bool AutoAddFeedLine = true;
    qint32 LineEndingMode = CarriageReturnLineFeed;
    QStringList SendList;
    bool EnterSends = false;
    bool ClearAfterSend = false;
    SendMacroList Macros;

    bool LogSaveFlag = false;
    QString LogFilePath = QStringLiteral("%S.log");
    // Pattern of the stamp written in front of logged lines.
    QString LogFileTime = QStringLiteral("[%h:%m:%s.%z]");
    QString currentLogFileName;
    bool LogTimestampEnabled = false;
    bool LogRotateAtSize = false;
    qint32 LogRotateSize = 0;
    bool LogRotateAtTime = false;
    QTime LogRotateTime;
    bool NeedHourTimeStamp = false;
    // Raw log: the file gets exactly the bytes received (and sent, if
    // chosen), with no header and no rendering.
    bool RawLog = false;
    bool RawLogSent = false;

    qint32 DisplayBufferSize = 10 << 20;
    QFont LogFont;
    bool FormatDisplayColor = false;
    QColor SendTextColor;
    QColor ReceiveTextColor;

    PlotSettings Plot;
    ViewSettings View;
};

// A stored unit below 1 is read as 1 before it multiplies or divides.
inline qint32 sanitizedTimeUnit(qint32 unit)
{
    return unit < 1 ? 1 : unit;
}

#endif
