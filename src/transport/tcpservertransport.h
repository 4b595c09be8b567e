#ifndef QUORVANE_TCPSERVERTRANSPORT_H
#define QUORVANE_TCPSERVERTRANSPORT_H

#include <functional>

#include "transport/transport.h"

class MultiClientServer;
class QTcpSocket;

// A TCP server over MultiClientServer, made at the first open and kept.
// Each open listens anew; close() only forgets the clients, whose data keeps
// arriving until the next open closes the listener.
class TcpServerTransport : public Transport
{
    Q_OBJECT

public:
    // The client row chosen for sending: negative when there is none.
    using ChosenClient = std::function<int()>;

    explicit TcpServerTransport(ChosenClient chosenClient, QObject *parent = nullptr);

    MultiClientServer *server() const { return listener; }
    void setListenPort(quint16 port) { listenPort = port; }

    void open() override;
    void close() override;
    State state() const override;
    // To the chosen client only.
    void write(const QByteArray &bytes) override;
    qint64 sendBacklog() const override;

signals:
    void clientsChanged();

protected:
    void readingChanged(bool on) override;

private:
    QTcpSocket *chosenSocket() const;

    ChosenClient chosenClient;
    MultiClientServer *listener = nullptr;
    quint16 listenPort = 0;
};

#endif
