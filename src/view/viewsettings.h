#ifndef QUORVANE_VIEWSETTINGS_H
#define QUORVANE_VIEWSETTINGS_H

#include <QString>

#include "view/highlightrules.h"

class QSettings;

// A session's receive view choices, kept with the session in documents and
// in the preferences under keys of their own ("<prefix>HexAsciiView",
// "<prefix>AnsiColours", "<prefix>HighlightRules").
struct ViewSettings {
    bool hexAscii = false;     // received bytes as hex+ASCII rows (with the Hex format)
    bool ansiColours = false;  // ANSI colour sequences drawn, not shown
    HighlightRuleList highlightRules;

    bool operator==(const ViewSettings &o) const
    {
        return hexAscii == o.hexAscii && ansiColours == o.ansiColours && highlightRules == o.highlightRules;
    }
    bool operator!=(const ViewSettings &o) const { return !(*this == o); }

    // Missing keys read as the defaults.
    static ViewSettings read(const QSettings &store, const QString &prefix);
    void write(QSettings &store, const QString &prefix) const;
};

#endif
