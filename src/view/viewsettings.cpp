#include "view/viewsettings.h"

#include <QSettings>

ViewSettings ViewSettings::read(const QSettings &store, const QString &prefix)
{
    ViewSettings s;
    s.hexAscii = store.value(prefix + QLatin1String("HexAsciiView"), false).toBool();
    s.ansiColours = store.value(prefix + QLatin1String("AnsiColours"), false).toBool();
    s.highlightRules = highlightRulesFromText(store.value(prefix + QLatin1String("HighlightRules")).toString());
    return s;
}

void ViewSettings::write(QSettings &store, const QString &prefix) const
{
    store.setValue(prefix + QLatin1String("HexAsciiView"), hexAscii);
    store.setValue(prefix + QLatin1String("AnsiColours"), ansiColours);
    store.setValue(prefix + QLatin1String("HighlightRules"), highlightRulesToText(highlightRules));
}
