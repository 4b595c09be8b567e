#ifndef QUORVANE_COUNTERLABEL_H
#define QUORVANE_COUNTERLABEL_H

#include <QLabel>

// A label for a count that changes many times a second. A plain label asks
// the whole window to lay itself out again at every new text, and a wider
// one moves and rewraps everything beside it; this one keeps a fixed size
// with room to grow, so a new count repaints the label alone.
class CounterLabel : public QLabel
{
    Q_OBJECT

public:
    explicit CounterLabel(int widestWidth, QWidget *parent = nullptr);

    void setCount(const QString &text);

protected:
    void changeEvent(QEvent *event) override;

private:
    void fit();

    int widestWidth;
};

#endif
