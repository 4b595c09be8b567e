#include "transport/linksettings.h"

#include <QSettings>

namespace {

struct FlagKey {
    const char *name;
    bool LinkSettings::*flag;
};

const FlagKey flagKeys[] = {{"AutoReconnect", &LinkSettings::autoReconnect},
                            {"LineDTR", &LinkSettings::dataTerminalReady},
                            {"LineRTS", &LinkSettings::requestToSend}};

const char *const breakDurationKey = "BreakDuration";

} // namespace

bool LinkSettings::operator==(const LinkSettings &o) const
{
    return autoReconnect == o.autoReconnect && dataTerminalReady == o.dataTerminalReady
        && requestToSend == o.requestToSend && breakDuration == o.breakDuration;
}

LinkSettings LinkSettings::read(const QSettings &store, const QString &prefix)
{
    LinkSettings settings;
    for (const FlagKey &key : flagKeys)
        settings.*key.flag = store.value(prefix + QLatin1String(key.name), settings.*key.flag).toBool();
    bool ok = false;
    const int duration = store.value(prefix + QLatin1String(breakDurationKey)).toInt(&ok);
    if (ok)
        settings.breakDuration = qBound(1, duration, MaxBreakDuration);
    return settings;
}

void LinkSettings::write(QSettings &store, const QString &prefix) const
{
    for (const FlagKey &key : flagKeys)
        store.setValue(prefix + QLatin1String(key.name), this->*key.flag);
    store.setValue(prefix + QLatin1String(breakDurationKey), breakDuration);
}
