#include "transport/udptransport.h"

#include <QUdpSocket>

#include "common/logging.h"

UdpTransport::UdpTransport(Destination where, QObject *parent)
    : Transport(parent)
    , destination(std::move(where))
{
}

void UdpTransport::open()
{
    if (udpSocket) {
        udpSocket->abort();
        delete udpSocket;
    }
    udpSocket = new QUdpSocket(this);
    udpSocket->bind(QHostAddress::LocalHost, localPort, QAbstractSocket::ShareAddress);
    connect(udpSocket, &QUdpSocket::readyRead, this, &UdpTransport::readDatagrams);
}

void UdpTransport::close()
{
    if (udpSocket)
        udpSocket->abort();
}

Transport::State UdpTransport::state() const
{
    return udpSocket && udpSocket->state() == QAbstractSocket::BoundState ? Up : Down;
}

void UdpTransport::write(const QByteArray &bytes)
{
    if (!udpSocket)
        return;
    const Endpoint to = destination();
    const QHostAddress address(to.host);
    if (address.isNull())
        return;
    udpSocket->writeDatagram(bytes, address, to.port);
    qCDebug(lcDefault) << "udpSend:" << bytes;
}

qint64 UdpTransport::sendBacklog() const
{
    return state() == Up ? 0 : -1;
}

void UdpTransport::readDatagrams()
{
    while (udpSocket && udpSocket->hasPendingDatagrams()) {
        const qint64 size = udpSocket->pendingDatagramSize();
        qCDebug(lcDefault) << "[readUdpSocket] packetSize:" << size;
        QByteArray datagram(qMax<qint64>(size, 0), Qt::Uninitialized);
        const qint64 read = udpSocket->readDatagram(datagram.data(), datagram.size());
        if (read < 0)
            break;
        datagram.truncate(int(read));
        emit received(datagram);
    }
    qCDebug(lcDefault) << "readUdpSocket";
}
