#ifndef QUORVANE_TCPCLIENTTRANSPORT_H
#define QUORVANE_TCPCLIENTTRANSPORT_H

#include <QAbstractSocket>

#include "transport/transport.h"

class QTcpSocket;

// A TCP client. A socket is made by an open only while there is none: one
// whose attempt failed stays, so later opens try nothing until it is gone;
// only reopen() replaces it. A socket that disconnects is released.
class TcpClientTransport : public Transport
{
    Q_OBJECT

public:
    explicit TcpClientTransport(QObject *parent = nullptr);

    // Where the next open connects.
    void setTarget(const Endpoint &target);
    QTcpSocket *socket() const { return clientSocket; }
    QAbstractSocket::SocketState socketState() const;

    void open() override;
    void reopen() override;
    void close() override;
    State state() const override;
    void write(const QByteArray &bytes) override;
    qint64 sendBacklog() const override;
    void poll() override;

private:
    void connectSocket();
    void dropSocket();
    void onDisconnected();
    void onSocketError();

    Endpoint target;
    QTcpSocket *clientSocket = nullptr;
    bool closing = false;
};

#endif
