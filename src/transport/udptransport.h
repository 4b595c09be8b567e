#ifndef QUORVANE_UDPTRANSPORT_H
#define QUORVANE_UDPTRANSPORT_H

#include <functional>

#include "transport/transport.h"

class QUdpSocket;

// A UDP socket bound to the local host, made anew by every open. Each
// datagram is received on its own and each write sends one datagram to the
// destination of that moment.
class UdpTransport : public Transport
{
    Q_OBJECT

public:
    using Destination = std::function<Endpoint()>;

    explicit UdpTransport(Destination destination, QObject *parent = nullptr);

    QUdpSocket *socket() const { return udpSocket; }
    void setLocalPort(quint16 port) { localPort = port; }

    void open() override;
    void close() override;
    State state() const override;
    // Numeric addresses only: a name is never looked up.
    void write(const QByteArray &bytes) override;
    qint64 sendBacklog() const override;

private:
    void readDatagrams();

    Destination destination;
    QUdpSocket *udpSocket = nullptr;
    quint16 localPort = 0;
};

#endif
