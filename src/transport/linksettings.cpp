#include "transport/linksettings.h"

#include <QSettings>

bool LinkSettings::operator==(const LinkSettings &o) const
{
    return autoReconnect == o.autoReconnect;
}

LinkSettings LinkSettings::read(const QSettings &store, const QString &prefix)
{
    LinkSettings settings;
    settings.autoReconnect = store.value(prefix + QLatin1String("AutoReconnect"), settings.autoReconnect).toBool();
    return settings;
}

void LinkSettings::write(QSettings &store, const QString &prefix) const
{
    store.setValue(prefix + QLatin1String("AutoReconnect"), autoReconnect);
}
