#include "view/ansiparser.h"

#include <QStringList>

namespace {

constexpr QChar escape(u'\x1b');
// Longer than any sequence a device sends; past it the text is shown as it is.
constexpr qsizetype maxSequenceLength = 64;

QRgb basicColour(int index)
{
    static const QRgb colours[16] = {
        qRgb(0, 0, 0),       qRgb(205, 0, 0),     qRgb(0, 205, 0),     qRgb(205, 205, 0),
        qRgb(0, 0, 238),     qRgb(205, 0, 205),   qRgb(0, 205, 205),   qRgb(229, 229, 229),
        qRgb(127, 127, 127), qRgb(255, 0, 0),     qRgb(0, 255, 0),     qRgb(255, 255, 0),
        qRgb(92, 92, 255),   qRgb(255, 0, 255),   qRgb(0, 255, 255),   qRgb(255, 255, 255),
    };
    return colours[index & 15];
}

// The 256-colour palette: 16 basic colours, a 6x6x6 cube, 24 greys.
QRgb paletteColour(int index)
{
    if (index < 16)
        return basicColour(index);
    if (index < 232) {
        const int i = index - 16;
        auto level = [](int v) { return v == 0 ? 0 : 55 + v * 40; };
        return qRgb(level(i / 36), level(i / 6 % 6), level(i % 6));
    }
    const int grey = 8 + (index - 232) * 10;
    return qRgb(grey, grey, grey);
}

// A CSI sequence: ESC '[' parameter bytes (0x30-0x3F), intermediate bytes
// (0x20-0x2F), one final byte (0x40-0x7E). Returns its length, 0 if the text
// ends before it does, -1 if it is no such sequence.
qsizetype sequenceLength(QStringView text)
{
    if (text.size() < 2)
        return 0;
    if (text.at(1) != QLatin1Char('['))
        return -1;
    for (qsizetype i = 2; i < text.size(); ++i) {
        const char16_t c = text.at(i).unicode();
        if (c >= 0x40 && c <= 0x7E)
            return i + 1;
        if (c < 0x20 || c > 0x3F)
            return -1;
    }
    return text.size() >= maxSequenceLength ? -1 : 0;
}

} // namespace

void AnsiParser::reset()
{
    pending.clear();
    sgr = TextStyle();
}

TextStyle AnsiParser::styled(const TextStyle &base) const
{
    TextStyle style = base;
    if (sgr.has(TextStyle::Foreground))
        style.foreground = sgr.foreground;
    if (sgr.has(TextStyle::Background))
        style.background = sgr.background;
    style.flags |= sgr.flags;
    return style;
}

QVector<AnsiParser::Run> AnsiParser::feed(QStringView input, const TextStyle &base)
{
    QString joined;
    QStringView text = input;
    if (!pending.isEmpty()) {
        joined = pending + input.toString();
        text = joined;
        pending.clear();
    }
    QVector<Run> runs;
    auto show = [&](QStringView piece) {
        if (piece.isEmpty())
            return;
        const TextStyle style = styled(base);
        if (!runs.isEmpty() && runs.last().style == style)
            runs.last().text += piece;
        else
            runs.append({piece.toString(), style});
    };
    qsizetype shown = 0;
    for (qsizetype i = text.indexOf(escape); i >= 0; i = text.indexOf(escape, i)) {
        const qsizetype length = sequenceLength(text.mid(i));
        if (length < 0) {
            ++i;
            continue;
        }
        show(text.mid(shown, i - shown));
        if (length == 0) {
            pending = text.mid(i).toString();
            return runs;
        }
        if (text.at(i + length - 1) == QLatin1Char('m'))
            apply(text.mid(i + 2, length - 3));
        i += length;
        shown = i;
    }
    show(text.mid(shown));
    return runs;
}

void AnsiParser::apply(QStringView parameters)
{
    const QList<QStringView> fields = parameters.split(QLatin1Char(';'));
    auto number = [&](qsizetype i) { return i < fields.size() ? fields.at(i).toInt() : 0; };
    for (qsizetype i = 0; i < fields.size(); ++i) {
        const int code = number(i);
        if (code == 0) {
            sgr = TextStyle();
        } else if (code == 1) {
            sgr.flags |= TextStyle::Bold;
        } else if (code == 22) {
            sgr.flags &= ~TextStyle::Bold;
        } else if (code == 4) {
            sgr.flags |= TextStyle::Underline;
        } else if (code == 24) {
            sgr.flags &= ~TextStyle::Underline;
        } else if (code == 7) {
            sgr.flags |= TextStyle::Inverse;
        } else if (code == 27) {
            sgr.flags &= ~TextStyle::Inverse;
        } else if ((code >= 30 && code <= 37) || (code >= 90 && code <= 97)) {
            sgr.foreground = basicColour(code % 10 + (code >= 90 ? 8 : 0));
            sgr.flags |= TextStyle::Foreground;
        } else if ((code >= 40 && code <= 47) || (code >= 100 && code <= 107)) {
            sgr.background = basicColour(code % 10 + (code >= 100 ? 8 : 0));
            sgr.flags |= TextStyle::Background;
        } else if (code == 39) {
            sgr.flags &= ~TextStyle::Foreground;
        } else if (code == 49) {
            sgr.flags &= ~TextStyle::Background;
        } else if (code == 38 || code == 48) {
            // 38;5;n (palette) or 38;2;r;g;b (true colour); likewise 48.
            QRgb colour = 0;
            if (number(i + 1) == 5) {
                colour = paletteColour(qBound(0, number(i + 2), 255));
                i += 2;
            } else if (number(i + 1) == 2) {
                colour = qRgb(qBound(0, number(i + 2), 255), qBound(0, number(i + 3), 255),
                              qBound(0, number(i + 4), 255));
                i += 4;
            } else {
                continue;
            }
            if (code == 38) {
                sgr.foreground = colour;
                sgr.flags |= TextStyle::Foreground;
            } else {
                sgr.background = colour;
                sgr.flags |= TextStyle::Background;
            }
        }
    }
}
