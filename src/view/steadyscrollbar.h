#ifndef QUORVANE_STEADYSCROLLBAR_H
#define QUORVANE_STEADYSCROLLBAR_H

#include <QRect>
#include <QScrollBar>

// A scroll bar that paints again only when its slider moves or resizes on
// screen. A view following a stream changes the bar's range at every
// refresh, while the slider mostly stays where it is, pixel for pixel.
class SteadyScrollBar : public QScrollBar
{
    Q_OBJECT

public:
    using QScrollBar::QScrollBar;

    // Sets range, page and value as one change: a range that grows ahead of
    // its value would otherwise show the slider one step off the end first.
    void setPosition(int maximum, int pageStep, int value);

protected:
    void sliderChange(SliderChange change) override;

private:
    bool sliderMoved();

    QRect shownSlider;
    bool settling = false;
};

#endif
