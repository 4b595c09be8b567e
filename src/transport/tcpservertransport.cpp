#include "transport/tcpservertransport.h"

#include <QTcpSocket>

#include "net/multiclientserver.h"

TcpServerTransport::TcpServerTransport(ChosenClient chosen, QObject *parent)
    : Transport(parent)
    , chosenClient(std::move(chosen))
{
}

void TcpServerTransport::open()
{
    if (!listener) {
        listener = new MultiClientServer(this);
        listener->setReading(isReading());
        connect(listener, &MultiClientServer::connectionStateChange, this, &TcpServerTransport::clientsChanged);
        connect(listener, &MultiClientServer::newMessage, this, [this](const QString &clientKey) {
            emit received(listener->lastMessages().value(clientKey));
        });
    }
    listener->close();
    listener->listen(QHostAddress::Any, listenPort);
}

void TcpServerTransport::close()
{
    if (listener)
        listener->stop();
}

void TcpServerTransport::readingChanged(bool on)
{
    if (listener)
        listener->setReading(on);
}

Transport::State TcpServerTransport::state() const
{
    return listener && listener->isListening() ? Up : Down;
}

QTcpSocket *TcpServerTransport::chosenSocket() const
{
    const int row = listener ? chosenClient() : -1;
    if (row < 0)
        return nullptr;
    const QList<QTcpSocket *> &clients = listener->clients();
    return row < clients.size() ? clients.at(row) : nullptr;
}

void TcpServerTransport::write(const QByteArray &bytes)
{
    if (QTcpSocket *client = chosenSocket())
        client->write(bytes);
}

qint64 TcpServerTransport::sendBacklog() const
{
    QTcpSocket *client = chosenSocket();
    return client ? client->bytesToWrite() : -1;
}
