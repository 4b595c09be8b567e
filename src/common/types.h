#ifndef QUORVANE_TYPES_H
#define QUORVANE_TYPES_H

#include <QByteArray>
#include <QTime>

// Kind of connection a port session makes. 3 is never produced and starts
// no transport.
enum ConnMode : qint32 {
    SerialPortMode = 0,
    TcpServerMode = 1,
    TcpClientMode = 2,
    UnusedMode = 3,
    UdpServerMode = 4,
    UdpClientMode = 5,
    UdpGroupMode = 6
};

inline bool isUdpMode(int mode)
{
    return mode == UdpServerMode || mode == UdpClientMode || mode == UdpGroupMode;
}

// How data is shown or interpreted. There is deliberately no 0.
enum msgFormat : qint32 { HEX = 1, ASCII = 2 };

// NOTE: a line of the session's own, such as a reconnect marker: shown and
// logged on a line of its own, never counted, plotted or raw-logged.
enum RXorTx : qint32 { RX = 1, TX = 2, NOTE = 3 };

// The ending appended to sent text when the automatic line feed is on.
enum LineEndingMode : qint32 {
    LineFeedOnly = 1,
    CarriageReturnOnly = 2,
    CarriageReturnLineFeed = 3,
    LineFeedCarriageReturn = 4
};

// Run state of a session and of the whole workspace.
enum RunState : qint32 { Running = 0, Paused = 1, Stopped = 2 };

// One queued chunk of traffic: time of day it was queued, direction, bytes.
struct rxData {
    QTime time;
    qint32 direction = RX;
    QByteArray data;
};

#endif
