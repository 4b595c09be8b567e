#include "session/statustexts.h"

StatusTexts::Status StatusTexts::socketState(QAbstractSocket::SocketState state, const QString &boundText)
{
    switch (state) {
    case QAbstractSocket::UnconnectedState:
        return {QStringLiteral("The socket is not connected"), false};
    case QAbstractSocket::HostLookupState:
        return {QStringLiteral("The socket is performing a host name lookup."), false};
    case QAbstractSocket::ConnectingState:
        return {QStringLiteral("The socket has started establishing a connection..."), false};
    case QAbstractSocket::ConnectedState:
        return {QStringLiteral("Connection is established."), true};
    case QAbstractSocket::BoundState:
        if (!boundText.isEmpty())
            return {boundText, true};
        return {QStringLiteral("The socket is bound to an address and port."), false};
    case QAbstractSocket::ListeningState:
        return {QStringLiteral("For internal use only."), false};
    case QAbstractSocket::ClosingState:
        return {QStringLiteral("The socket is about to close (data may still be waiting to be written)."), false};
    }
    return {};
}

QString StatusTexts::udpBound(const QString &address, quint16 port)
{
    return tr("UDP socket is bound to %1:%2.").arg(address).arg(port);
}

QString StatusTexts::serverWaiting(const QString &address, quint16 port)
{
    return tr("Waiting for Connections on %1:%2...").arg(address).arg(port);
}

QString StatusTexts::serverListening(const QString &address, quint16 port)
{
    return tr("Listening on %1:%2").arg(address).arg(port);
}

QString StatusTexts::serialOpened(const QString &portName, const QSerialPort &port)
{
    return tr("%1 OPENED, %2, %3, %4, %5, %6")
        .arg(portName)
        .arg(port.baudRate())
        .arg(port.dataBits())
        .arg(parity(port.parity()), stopBits(port.stopBits()), flowControl(port.flowControl()));
}

QString StatusTexts::serialClosed(const QString &portName)
{
    return tr("%1 CLOSED").arg(portName);
}

QString StatusTexts::serialWaiting(const QString &portName)
{
    return tr("%1 waiting for device...").arg(portName);
}

QString StatusTexts::disconnectedMarker(const QTime &time)
{
    return tr("--- disconnected %1 ---").arg(time.toString(QStringLiteral("hh:mm:ss")));
}

QString StatusTexts::reconnectedMarker(const QTime &time)
{
    return tr("--- reconnected %1 ---").arg(time.toString(QStringLiteral("hh:mm:ss")));
}

QString StatusTexts::parity(QSerialPort::Parity parity)
{
    switch (parity) {
    case QSerialPort::NoParity: return tr("NONE");
    case QSerialPort::EvenParity: return tr("EVEN");
    case QSerialPort::OddParity: return tr("ODD");
    case QSerialPort::SpaceParity: return tr("SPACE");
    case QSerialPort::MarkParity: return tr("MARK");
    }
    return QString();
}

QString StatusTexts::stopBits(QSerialPort::StopBits stopBits)
{
    switch (stopBits) {
    case QSerialPort::OneStop: return QStringLiteral("1");
    case QSerialPort::OneAndHalfStop: return QStringLiteral("1.5");
    case QSerialPort::TwoStop: return QStringLiteral("2");
    }
    return QString();
}

QString StatusTexts::flowControl(QSerialPort::FlowControl flow)
{
    switch (flow) {
    case QSerialPort::NoFlowControl: return tr("OFF");
    case QSerialPort::HardwareControl: return tr("Hardware");
    case QSerialPort::SoftwareControl: return tr("Xon/Xoff");
    }
    return QString();
}
