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

void CounterLabel::fit()
{
    const QSize hint = sizeHint();
    const QSize size(qMin(widestWidth, hint.width()), hint.height());
    if (minimumSize() != size || maximumSize() != size)
        setFixedSize(size);
}
