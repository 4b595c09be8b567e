#ifndef QUORVANE_ANSIPARSER_H
#define QUORVANE_ANSIPARSER_H

#include <QString>
#include <QVector>

#include "view/textstyle.h"

// Turns ANSI colour sequences (SGR: ESC [ ... m) in received text into
// styles and hides them; other control sequences (ESC [ ... final byte) are
// hidden as well, since the view cannot move a cursor. A sequence cut off at
// the end of one piece of text is completed by the next.
class AnsiParser
{
public:
    struct Run {
        QString text;
        TextStyle style;
    };

    // base: the style of the text where no sequence says otherwise.
    QVector<Run> feed(QStringView text, const TextStyle &base);
    void reset();

private:
    void apply(QStringView parameters);
    TextStyle styled(const TextStyle &base) const;

    QString pending;       // an unfinished sequence
    TextStyle sgr;         // what the sequences set; unset parts follow the base
};

#endif
