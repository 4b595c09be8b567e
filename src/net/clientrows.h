#ifndef QUORVANE_CLIENTROWS_H
#define QUORVANE_CLIENTROWS_H

#include <QList>

class QTcpSocket;
class QTreeWidget;

// The rows of a TCP server's "Connections" list, one per client in accept
// order. Clients only ever leave or join at the end, so an update removes
// the rows of clients that left and appends the newcomers: its cost follows
// what changed, not how many are connected.
//
// Every change of the client list must reach update() before a departed
// socket is deleted (the server announces changes as they happen), so a new
// socket at a reused address is never mistaken for an old row.
class ClientRows
{
public:
    explicit ClientRows(QTreeWidget *list);

    void update(const QList<QTcpSocket *> &clients);
    // Draws the rows that changed since the last call. Clients come and go
    // many times between two refreshes; the list is drawn once for them.
    void showChanges();

private:
    QTreeWidget *list;
    QList<QTcpSocket *> shown;
};

#endif
