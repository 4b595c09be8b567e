#include "common/counterlabel.h"

#include <QEvent>

CounterLabel::CounterLabel(int widestWidth, QWidget *parent)
    : QLabel(parent)
    , widestWidth(widestWidth)
{
    // Opaque, a new count repaints the label alone, not the bar under it.
    setAutoFillBackground(true);
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

// Room for seven more digits comes with each change of width, so a count
// from 0 grows to 99,999,999 without one: a new width lays out the whole
// workspace, which sixteen sessions counting up together would otherwise
// do at once at every new digit. The width shrinks only when the text got
// much shorter, as when the count is cleared.
void CounterLabel::fit()
{
    const QSize hint = sizeHint();
    const int room = fontMetrics().horizontalAdvance(QStringLiteral("0,000,000"));
    const int shown = maximumWidth();
    const bool fits = hint.width() <= shown && hint.width() + 2 * room > shown;
    if (fits && maximumHeight() == hint.height())
        return;
    setFixedSize(qMin(widestWidth, fits ? shown : hint.width() + room), hint.height());
}
