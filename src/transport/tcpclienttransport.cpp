#include "transport/tcpclienttransport.h"

#include <QScopedValueRollback>
#include <QTcpSocket>

#include "common/logging.h"

TcpClientTransport::TcpClientTransport(QObject *parent)
    : Transport(parent)
{
}

void TcpClientTransport::setTarget(const Endpoint &endpoint)
{
    target = endpoint;
}

QAbstractSocket::SocketState TcpClientTransport::socketState() const
{
    // The socket is dropped on disconnect, so a missing one is not connected.
    return clientSocket ? clientSocket->state() : QAbstractSocket::UnconnectedState;
}

void TcpClientTransport::open()
{
    if (!clientSocket)
        connectSocket();
}

void TcpClientTransport::reopen()
{
    dropSocket();
    connectSocket();
}

void TcpClientTransport::connectSocket()
{
    clientSocket = new QTcpSocket(this);
    clientSocket->setReadBufferSize(ReadBufferSize);
    connect(clientSocket, &QTcpSocket::readyRead, this, &TcpClientTransport::poll);
    connect(clientSocket, &QTcpSocket::connected, this, &Transport::opened);
    connect(clientSocket, &QTcpSocket::disconnected, this, &TcpClientTransport::onDisconnected);
    connect(clientSocket, &QTcpSocket::errorOccurred, this, &TcpClientTransport::onSocketError);
    qCDebug(lcDefault) << "start: new Tcp Socket";
    clientSocket->connectToHost(target.host, target.port, QIODevice::ReadWrite, QAbstractSocket::AnyIPProtocol);
}

void TcpClientTransport::dropSocket()
{
    if (!clientSocket)
        return;
    clientSocket->disconnect(this);
    clientSocket->abort();
    clientSocket->deleteLater();
    clientSocket = nullptr;
}

void TcpClientTransport::onDisconnected()
{
    // The last bytes may still wait in the socket, which goes now.
    if (const QByteArray rest = clientSocket->readAll(); !rest.isEmpty())
        emit received(rest);
    qCDebug(lcDefault) << "disconnectTcpClient :" << clientSocket->peerAddress() << clientSocket->peerPort();
    // Later, not now: we are inside one of its signals.
    clientSocket->deleteLater();
    clientSocket = nullptr;
    if (!closing)
        emit lost();
}

// An attempt that fails falls back to unconnected without disconnected();
// an established link reports its errors while still connected.
void TcpClientTransport::onSocketError()
{
    if (clientSocket && clientSocket->state() == QAbstractSocket::UnconnectedState)
        emit openFailed();
}

void TcpClientTransport::close()
{
    const QScopedValueRollback<bool> closingNow(closing, true);
    if (clientSocket)
        clientSocket->abort();
}

Transport::State TcpClientTransport::state() const
{
    switch (socketState()) {
    case QAbstractSocket::ConnectedState:
        return Up;
    case QAbstractSocket::UnconnectedState:
        return Down;
    default:
        return Connecting;
    }
}

void TcpClientTransport::write(const QByteArray &bytes)
{
    if (clientSocket)
        clientSocket->write(bytes);
}

qint64 TcpClientTransport::sendBacklog() const
{
    return socketState() == QAbstractSocket::ConnectedState ? clientSocket->bytesToWrite() : -1;
}

void TcpClientTransport::poll()
{
    if (!clientSocket || !clientSocket->isOpen() || !isReading())
        return;
    const QByteArray bytes = clientSocket->readAll();
    if (bytes.isEmpty())
        return;
    qCDebug(lcDefault) << "onReadData:" << bytes;
    emit received(bytes);
}
