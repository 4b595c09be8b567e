#ifndef QUORVANE_MULTICLIENTSERVER_H
#define QUORVANE_MULTICLIENTSERVER_H

#include <QByteArray>
#include <QHash>
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

signals:
    void connectionStateChange();
    void newMessage(const QString &clientKey);

public slots:
    void handleNewConnection();
    void readReady();
    void clientDisconnected();

private:
    QList<QTcpSocket *> connectedClients;
    QHash<QString, QByteArray> lastMessageByClient;
};

#endif
