#ifndef QUORVANE_STATUSCOLORS_H
#define QUORVANE_STATUSCOLORS_H

#include <QColor>
#include <QString>

class QPalette;

// Colours of status texts and lamps that stay readable on the palette's
// window colour: the classic green and red on light themes, lighter shades
// on dark ones.
namespace StatusColors {

bool isDark(const QPalette &palette);
QColor good(const QPalette &palette);
QColor bad(const QPalette &palette);
QColor warning(const QPalette &palette);

// "<font color = green>text </font>" with the good or bad colour.
QString html(const QString &text, bool ok, const QPalette &palette);

} // namespace StatusColors

#endif
