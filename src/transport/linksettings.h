#ifndef QUORVANE_LINKSETTINGS_H
#define QUORVANE_LINKSETTINGS_H

#include <QString>

class QSettings;

// How a session looks after its link beyond the connection parameters:
// reconnecting by itself. Kept with the session in documents and in the
// preferences under keys of their own ("<prefix>AutoReconnect"); missing
// keys leave everything as it was before these options existed.
struct LinkSettings {
    bool autoReconnect = false;

    bool operator==(const LinkSettings &other) const;

    static LinkSettings read(const QSettings &store, const QString &prefix);
    void write(QSettings &store, const QString &prefix) const;
};

#endif
