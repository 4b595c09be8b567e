#include "common/hled.h"

#include <QPainter>

struct HLed::Private
{
    int darkerFactor = 300;
    QColor color = Qt::green;
    bool on = true;
};

namespace {

constexpr int rimSegments = 12;
constexpr int rimSpan = 240; // sixteenths of a degree: 15 degrees
constexpr int rimDarkening = 110;
constexpr int penWidth = 2;

} // namespace

HLed::HLed(QWidget *parent)
    : QWidget(parent)
    , d(new Private)
{
}

HLed::~HLed() = default;

QColor HLed::color() const
{
    return d->color;
}

bool HLed::isOn() const
{
    return d->on;
}

QSize HLed::sizeHint() const
{
    return QSize(20, 20);
}

QSize HLed::minimumSizeHint() const
{
    return QSize(16, 16);
}

int HLed::ledWidth() const
{
    return qMax(qMin(width(), height()), 2) - 2;
}

void HLed::setColor(const QColor &color)
{
    if (color != d->color)
        update();
}

void HLed::toggle()
{
    d->on = !d->on;
    update();
}

void HLed::turnOn(bool on)
{
    d->on = on;
    update();
}

void HLed::turnOff(bool off)
{
    turnOn(!off);
}

void HLed::paintEvent(QPaintEvent *)
{
    const int diameter = ledWidth();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    QColor color = d->on ? d->color : d->color.darker(d->darkerFactor);
    painter.setBrush(QBrush(color, Qt::SolidPattern));
    painter.drawEllipse(1, 1, diameter - 1, diameter - 1);

    // Highlight: concentric rings, each lighter than the last, drifting
    // towards the upper left.
    if (diameter > 1) {
        QPen pen;
        pen.setWidth(penWidth);
        int size = 2 * diameter / 3;
        int position = diameter / 5 + 1;
        const int lightFactor = size > 0 ? 100 + 260 / size : 100;
        while (size > 0) {
            color = color.lighter(lightFactor);
            pen.setColor(color);
            painter.setPen(pen);
            for (int shrink = 0; shrink < 3 && size - shrink > 0; ++shrink)
                painter.drawEllipse(position, position, size - shrink, size - shrink);
            ++position;
            size -= 3;
        }
    }

    // Rim: light at the lower right, darkening in both directions from there.
    painter.setBrush(Qt::NoBrush);
    QPen rimPen(palette().light().color());
    rimPen.setWidth(penWidth);
    const qreal inset = penWidth / 2.0;
    const QRectF rim = QRectF(1, 1, diameter - 1, diameter - 1).adjusted(inset, inset, -inset, -inset);
    QColor rimColor = rimPen.color();
    for (int segment = 0; segment < rimSegments; ++segment) {
        rimPen.setColor(rimColor);
        painter.setPen(rimPen);
        painter.drawArc(rim, -600 + rimSpan * segment, rimSpan);
        painter.drawArc(rim, -840 - rimSpan * segment, rimSpan);
        rimColor = rimColor.darker(rimDarkening);
    }
}
