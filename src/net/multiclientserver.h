#ifndef QUORVANE_MULTICLIENTSERVER_H
#define QUORVANE_MULTICLIENTSERVER_H

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QList>
#include <QString>
#include <QTcpServer>

class QTcpSocket;

// A TCP listener that accepts any number of clients, keeps them in accept
// order and remembers the bytes of each client's most recent read.
//
// Accepted sockets stay children of the server. stop() only forgets them
// (and announces the emptied list): they stay connected and keep reporting
// data, and each one is still released with deleteLater() once its peer
// goes away.
class MultiClientServer : public QTcpServer
{
    Q_OBJECT

public:
    explicit MultiClientServer(QObject *parent = nullptr);

    // "address:port" of the socket's peer.
    static QString clientKey(const QTcpSocket *socket);

    bool start(quint16 port);
    void stop();
    void sendHello(QTcpSocket *socket);

    const QList<QTcpSocket *> &clients() const { return connectedClients; }
    const QHash<QString, QByteArray> &lastMessages() const { return lastMessageByClient; }

    // While off, clients' bytes wait in their sockets (and then in the
    // system, which holds their senders back); turned on again, every client
    // that has something waiting is read.
    void setReading(bool on);

signals:
    void connectionStateChange();
    void newMessage(const QString &clientKey);

public slots:
    void handleNewConnection();
    void readReady();
    void clientDisconnected();

private:
    void readWhenAllowed(QTcpSocket *socket);
    void readClient(QTcpSocket *socket);
    void dropClient(QTcpSocket *socket);

    QList<QTcpSocket *> connectedClients;
    QSet<QTcpSocket *> unread;   // clients skipped while reading was off
    bool reading = true;
    QHash<QString, QByteArray> lastMessageByClient;
};

#endif
