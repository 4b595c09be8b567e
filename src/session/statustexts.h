#ifndef QUORVANE_STATUSTEXTS_H
#define QUORVANE_STATUSTEXTS_H

#include <QAbstractSocket>
#include <QCoreApplication>
#include <QSerialPort>
#include <QString>
#include <QTime>

// The connection texts a session shows in its status bar. ok tells whether
// the text is shown in the good colour. The socket state names stay in
// English in every language; the other texts are translated.
class StatusTexts
{
    Q_DECLARE_TR_FUNCTIONS(StatusTexts)

public:
    struct Status {
        QString text;
        bool ok = false;
    };

    // boundText: what a bound socket reports as good; empty for the plain
    // bad text.
    static Status socketState(QAbstractSocket::SocketState state, const QString &boundText = QString());
    static QString udpBound(const QString &address, quint16 port);
    static QString serverWaiting(const QString &address, quint16 port);
    static QString serverListening(const QString &address, quint16 port);
    static QString serialOpened(const QString &portName, const QSerialPort &port);
    static QString serialClosed(const QString &portName);
    static QString serialWaiting(const QString &portName);
    // Lines put into the traffic when a link is lost and when it is back.
    static QString disconnectedMarker(const QTime &time);
    static QString reconnectedMarker(const QTime &time);

    static QString parity(QSerialPort::Parity parity);
    static QString stopBits(QSerialPort::StopBits stopBits);
    static QString flowControl(QSerialPort::FlowControl flow);
};

#endif
