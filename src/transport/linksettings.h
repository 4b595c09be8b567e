#ifndef QUORVANE_LINKSETTINGS_H
#define QUORVANE_LINKSETTINGS_H

#include <QString>

class QSettings;

// How a session looks after its link beyond the connection parameters:
// reconnecting by itself and the serial control lines. Kept with the session
// in documents and in the preferences under keys of their own
// ("<prefix>AutoReconnect", ...); missing keys leave everything as it was
// before these options existed.
struct LinkSettings {
    static constexpr int DefaultBreakDuration = 250;
    static constexpr int MaxBreakDuration = 10000;

    bool autoReconnect = false;
    bool dataTerminalReady = true;
    bool requestToSend = true;
    int breakDuration = DefaultBreakDuration; // ms

    bool operator==(const LinkSettings &other) const;

    static LinkSettings read(const QSettings &store, const QString &prefix);
    void write(QSettings &store, const QString &prefix) const;
};

#endif
