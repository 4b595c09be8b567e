#include "view/steadyscrollbar.h"

#include <QScopedValueRollback>
#include <QStyle>
#include <QStyleOptionSlider>

void SteadyScrollBar::setPosition(int maximum, int pageStep, int value)
{
    {
        const QScopedValueRollback<bool> quiet(settling, true);
        setRange(0, maximum);
        setPageStep(pageStep);
        setValue(value);
    }
    if (sliderMoved())
        update();
}

void SteadyScrollBar::sliderChange(SliderChange change)
{
    if ((change == SliderRangeChange || change == SliderValueChange) && (settling || !sliderMoved()))
        return;
    QScrollBar::sliderChange(change);
}

// Notes where the slider is now; false when that is where it was shown.
bool SteadyScrollBar::sliderMoved()
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect slider = style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
    if (slider == shownSlider && maximum() > minimum())
        return false;
    shownSlider = slider;
    return true;
}
