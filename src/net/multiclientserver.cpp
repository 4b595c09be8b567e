#include "net/multiclientserver.h"

#include <QTcpSocket>

#include "common/logging.h"

MultiClientServer::MultiClientServer(QObject *parent)
    : QTcpServer(parent)
{
    // Room for a burst of connections while the program is busy.
    setListenBacklogSize(1024);
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
        // A client that floods is held back by its own connection once this
        // much waits, instead of by this program's memory.
        socket->setReadBufferSize(64 << 10);
        // The socket comes with the call: finding a signal's sender walks
        // every connection made to this server, one per client and signal.
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] { dropClient(socket); });
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readWhenAllowed(socket); });
        connectedClients.append(socket);
        qCDebug(lcDefault) << "hasPendingConnections" << socket->peerAddress() << socket->peerPort();
    }
    emit connectionStateChange();
}

void MultiClientServer::setReading(bool on)
{
    reading = on;
    // Each read may fill the session up again, which turns reading off: the
    // clients not reached yet wait for the next turn.
    while (reading && !unread.isEmpty()) {
        QTcpSocket *socket = *unread.begin();
        unread.erase(unread.begin());
        readClient(socket);
    }
}

void MultiClientServer::readReady()
{
    if (auto *socket = qobject_cast<QTcpSocket *>(sender()))
        readWhenAllowed(socket);
}

void MultiClientServer::readWhenAllowed(QTcpSocket *socket)
{
    if (!reading) {
        unread.insert(socket);
        return;
    }
    readClient(socket);
}

void MultiClientServer::readClient(QTcpSocket *socket)
{
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
    if (auto *socket = qobject_cast<QTcpSocket *>(sender()))
        dropClient(socket);
}

void MultiClientServer::dropClient(QTcpSocket *socket)
{
    // What it sent last is read before it goes, whether reading is on or not.
    unread.remove(socket);
    if (socket->bytesAvailable() > 0)
        readClient(socket);
    connectedClients.removeAll(socket);
    // We are inside one of the socket's own signals.
    socket->deleteLater();
    emit connectionStateChange();
}
