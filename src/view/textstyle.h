#ifndef QUORVANE_TEXTSTYLE_H
#define QUORVANE_TEXTSTYLE_H

#include <QColor>
#include <QtGlobal>

// How a run of received text is drawn. Colours that are not set are the
// view's own, so a change of palette reaches them.
struct TextStyle {
    enum Flag : quint8 {
        Foreground = 1,
        Background = 2,
        Bold = 4,
        Underline = 8,
        Inverse = 16,
    };

    QRgb foreground = 0;
    QRgb background = 0;
    quint8 flags = 0;

    // An invalid colour gives the plain style.
    static TextStyle inColour(const QColor &colour)
    {
        TextStyle style;
        if (colour.isValid()) {
            style.foreground = colour.rgb();
            style.flags = Foreground;
        }
        return style;
    }

    bool has(Flag flag) const { return flags & flag; }
    bool operator==(const TextStyle &o) const
    {
        return flags == o.flags && (!(flags & Foreground) || foreground == o.foreground)
            && (!(flags & Background) || background == o.background);
    }
    bool operator!=(const TextStyle &o) const { return !(*this == o); }
};

#endif
