#include "transport/tcpclienttransport.h"

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
    if (clientSocket)
        return;
    clientSocket = new QTcpSocket(this);
    connect(clientSocket, &QTcpSocket::readyRead, this, &TcpClientTransport::poll);
    connect(clientSocket, &QTcpSocket::disconnected, this, &TcpClientTransport::onDisconnected);
    qCDebug(lcDefault) << "start: new Tcp Socket";
    clientSocket->connectToHost(target.host, target.port, QIODevice::ReadWrite, QAbstractSocket::AnyIPProtocol);
}

void TcpClientTransport::onDisconnected()
{
    qCDebug(lcDefault) << "disconnectTcpClient :" << clientSocket->peerAddress() << clientSocket->peerPort();
    // Later, not now: we are inside one of its signals.
    clientSocket->deleteLater();
    clientSocket = nullptr;
}

void TcpClientTransport::close()
{
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
    if (!clientSocket || !clientSocket->isOpen())
        return;
    const QByteArray bytes = clientSocket->readAll();
    if (bytes.isEmpty())
        return;
    qCDebug(lcDefault) << "onReadData:" << bytes;
    emit received(bytes);
}
