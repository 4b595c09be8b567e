#include "view/steadyscrollbar.h"

#include <QStyle>
#include <QStyleOptionSlider>

void SteadyScrollBar::sliderChange(SliderChange change)
{
    if (change == SliderRangeChange || change == SliderValueChange) {
        QStyleOptionSlider option;
        initStyleOption(&option);
        const QRect slider = style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
        if (slider == shownSlider && maximum() > minimum())
            return;
        shownSlider = slider;
    }
    QScrollBar::sliderChange(change);
}
