#ifndef QUORVANE_PREFERENCES_H
#define QUORVANE_PREFERENCES_H

#include <QColor>
#include <QString>
#include <QStringList>
#include <QTime>

#include "session/portsettings.h"

class QSettings;

// What the application remembers between runs: the first session's last
// parameters and the main window's own values (recent files, folders).
struct Preferences {
    qint32 connMode = SerialPortMode;
    QString portName;
    qint32 baudRate = 9600;
    qint32 dataBits = 8;
    qint32 stopBits = 1;
    qint32 parity = 0;
    qint32 flowControl = 0;
    QString targetHost = QStringLiteral("127.0.0.1");
    QStringList targetHosts = {QStringLiteral("127.0.0.1")};
    qint32 targetPort = 6000;
    qint32 receiveMsgFormat = ASCII;
    qint32 sendMsgFormat = ASCII;
    bool autoFeedLine = false;
    bool autoAddFeedLine = true;
    qint32 autoFeedInterval = 20;
    qint32 splitterLeft = 10000;
    qint32 splitterRight = 50000;
    bool displaySendMsg = false;
    bool displayMsgTime = false;
    QString rxTimeFormat = QStringLiteral("[Rx][hh:mm:ss.zzz] ");
    QString txTimeFormat = QStringLiteral("[Tx][hh:mm:ss.zzz] ");
    bool logSaveFlag = false;
    QString logFilePath;
    QString logFileName = QStringLiteral("qvn_");
    bool logTimestampEnabled = false;
    QString logTimestamp = QStringLiteral("[%h:%m:%s.%z] ");
    bool logRotateAtSize = true;
    qint32 logRotateSize = 100 << 20;
    bool logRotateAtTime = false;
    QTime logRotateTime = QTime(0, 0);
    bool needHourTimeStamp = true;
    qint32 displayBufferSize = 10 << 20;
    QString fontFamily = QStringLiteral("Consolas");
    qint32 fontSize = 12;
    bool formatDisplayColor = false;
    // None chosen: the palette's text colour, readable on dark and light.
    QColor sendTextColor;
    QColor receiveTextColor;
    QStringList sendList;
    bool enterSends = false;
    bool clearAfterSend = false;
    bool rawLog = false;
    bool rawLogSent = false;
    SendMacroList macros;
    PlotSettings plot;
    LinkSettings link;
    ViewSettings view;
    bool openLastConnection = false;
    QStringList recentFiles;
    QString lastFile;
    QString lastLogFile;
    QString lastDirectory;
    int language = 0; // ValueL: 0 system locale, 1 Chinese, other English

    // Every key of the store, each falling back to its default.
    static Preferences read(const QSettings &store);
    // The keys remembered at exit; OpenLastConnection, ValueL and
    // LastLogFileName have their own writers (or none) and are left alone.
    void write(QSettings &store) const;

    void applyTo(PortSettings &port, FormatSetting &format) const;
    void takeFrom(const PortSettings &port, const FormatSetting &format);

    // Check mark of the Chinese language entry; English gets the opposite.
    static bool chineseChecked(int language, const QString &systemLocaleName);
};

#endif
