#include "common/statuscolors.h"

#include <QPalette>

namespace {

// Light themes keep the named colours, so status markup reads as it always did.
QString colorName(bool ok, const QPalette &palette)
{
    if (StatusColors::isDark(palette))
        return ok ? QStringLiteral("#6fdc7c") : QStringLiteral("#ff7a70");
    return ok ? QStringLiteral("green") : QStringLiteral("red");
}

} // namespace

namespace StatusColors {

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

QColor good(const QPalette &palette)
{
    return QColor::fromString(colorName(true, palette));
}

QColor bad(const QPalette &palette)
{
    return QColor::fromString(colorName(false, palette));
}

QColor warning(const QPalette &palette)
{
    return isDark(palette) ? QColor(0xf0, 0xc0, 0x40) : QColor(0xa0, 0x68, 0x00);
}

QString html(const QString &text, bool ok, const QPalette &palette)
{
    return QStringLiteral("<font color = %1>%2 </font>").arg(colorName(ok, palette), text);
}

} // namespace StatusColors
