#include "net/clientrows.h"

#include <QTcpSocket>
#include <QTreeWidget>

#include "net/multiclientserver.h"

ClientRows::ClientRows(QTreeWidget *list)
    : list(list)
{
    // Rows of one line each: with a thousand clients, the list is laid out
    // again without measuring every row at each connect.
    list->setUniformRowHeights(true);
}

void ClientRows::update(const QList<QTcpSocket *> &clients)
{
    bool changed = false;
    qsizetype next = 0;
    for (qsizetype row = 0; row < shown.size();) {
        if (next < clients.size() && clients.at(next) == shown.at(row)) {
            ++row;
            ++next;
        } else {
            delete list->takeTopLevelItem(int(row));
            shown.removeAt(row);
            changed = true;
        }
    }
    for (; next < clients.size(); ++next) {
        auto *item = new QTreeWidgetItem(list);
        item->setText(0, MultiClientServer::clientKey(clients.at(next)));
        shown.append(clients.at(next));
        changed = true;
    }
    if (changed)
        list->setUpdatesEnabled(false);
}

void ClientRows::showChanges()
{
    if (!list->updatesEnabled())
        list->setUpdatesEnabled(true);
}
