#include "net/multiclientserver.h"

#include <QTcpSocket>

#include "common/logging.h"

MultiClientServer::MultiClientServer(QObject *parent)
    : QTcpServer(parent)
{
    connect(this, &QTcpServer::newConnection, this, &MultiClientServer::handleNewConnection);
}

QString MultiClientServer::clientKey(const QTcpSocket *socket)
{
    // A listener on any address sees IPv4 peers as mapped IPv6 addresses;
    // show them the way users know them.
    QHostAddress address = socket->peerAddress();
    bool isIPv4 = false;
    const quint32 ipv4 = address.toIPv4Address(&isIPv4);
    if (isIPv4)
        address = QHostAddress(ipv4);
    return QStringLiteral("%1:%2").arg(address.toString()).arg(socket->peerPort());
}

bool MultiClientServer::start(quint16 port)
{
    return listen(QHostAddress::Any, port);
}

void MultiClientServer::stop()
{
    connectedClients.clear();
    emit connectionStateChange();
}

void MultiClientServer::sendHello(QTcpSocket *socket)
{
    if (socket)
        socket->write("Hello\n");
}

void MultiClientServer::handleNewConnection()
{
    qCDebug(lcDefault) << "handleNewConnection";
    while (hasPendingConnections()) {
        QTcpSocket *socket = nextPendingConnection();
        // A peer that vanished before we got to it will never signal
        // disconnected(), so release it here instead of listing it.
        if (socket->state() != QAbstractSocket::ConnectedState) {
            socket->deleteLater();
            continue;
        }
        connect(socket, &QTcpSocket::disconnected, this, &MultiClientServer::clientDisconnected);
        connect(socket, &QTcpSocket::readyRead, this, &MultiClientServer::readReady);
        connectedClients.append(socket);
        qCDebug(lcDefault) << "hasPendingConnections" << socket->peerAddress() << socket->peerPort();
    }
    emit connectionStateChange();
}

void MultiClientServer::readReady()
{
    auto *socket = qobject_cast<QTcpSocket *>(sender());
    if (!socket)
        return;
    const QString key = clientKey(socket);
    // Kept for the life of the server: only its bytes, not the read's spare
    // capacity, so thousands of short-lived clients cost what they sent.
    QByteArray message = socket->readAll();
    message.squeeze();
    lastMessageByClient.insert(key, message);
    emit newMessage(key);
}

void MultiClientServer::clientDisconnected()
{
    auto *socket = qobject_cast<QTcpSocket *>(sender());
    if (!socket)
        return;
    connectedClients.removeAll(socket);
    // We are inside one of the socket's own signals.
    socket->deleteLater();
    emit connectionStateChange();
}
