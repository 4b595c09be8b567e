#include "common/counterlabel.h"

#include <QEvent>

CounterLabel::CounterLabel(int widestWidth, QWidget *parent)
    : QLabel(parent)
    , widestWidth(widestWidth)
{
    fit();
}

void CounterLabel::setCount(const QString &text)
{
    if (text == this->text())
        return;
    setText(text);
    fit();
}

void CounterLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fit();
}

// Room for four more characters comes with each change of width, so a
// count grows from 1,000 to 10,000,000 without one; the width shrinks only
// when the text got much shorter, as when the count is cleared.
void CounterLabel::fit()
{
    const QSize hint = sizeHint();
    const int room = fontMetrics().horizontalAdvance(QStringLiteral("0,000"));
    const int shown = maximumWidth();
    const bool fits = hint.width() <= shown && hint.width() + 2 * room > shown;
    if (fits && maximumHeight() == hint.height())
        return;
    setFixedSize(qMin(widestWidth, fits ? shown : hint.width() + room), hint.height());
}
