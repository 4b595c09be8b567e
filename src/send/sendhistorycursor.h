#ifndef QUORVANE_SENDHISTORYCURSOR_H
#define QUORVANE_SENDHISTORYCURSOR_H

#include <optional>

#include <QString>
#include <QStringList>

// A position in the send history (newest first) while the user walks it
// from the send box. The text typed before the walk began comes back when
// walking past the newest entry.
class SendHistoryCursor
{
public:
    // The text to show one step older; nothing at the oldest entry.
    std::optional<QString> older(const QStringList &history, const QString &current);
    // One step newer; past the newest entry the draft comes back, and
    // nothing happens once it is back.
    std::optional<QString> newer(const QStringList &history);
    void reset() { index = -1; }

private:
    int index = -1;
    QString draft;
};

#endif
