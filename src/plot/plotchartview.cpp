#include "plot/plotchartview.h"

#include <QMouseEvent>
#include <QValueAxis>
#include <QWheelEvent>

namespace {

void scaleAxis(QAbstractAxis *axis, double at, double factor)
{
    auto *values = qobject_cast<QValueAxis *>(axis);
    if (!values)
        return;
    values->setRange(at - (at - values->min()) * factor, at + (values->max() - at) * factor);
}

} // namespace

PlotChartView::PlotChartView(QChart *chart, QWidget *parent)
    : QChartView(chart, parent)
{
    setRenderHint(QPainter::Antialiasing, false);
    setMouseTracking(true);
}

void PlotChartView::wheelEvent(QWheelEvent *event)
{
    const QPointF at = chart()->mapToValue(event->position());
    const double factor = event->angleDelta().y() > 0 ? 0.8 : 1.25;
    const bool vertical = event->modifiers() & Qt::ControlModifier;
    const auto orientation = vertical ? Qt::Vertical : Qt::Horizontal;
    for (QAbstractAxis *axis : chart()->axes(orientation))
        scaleAxis(axis, vertical ? at.y() : at.x(), factor);
    emit viewChangedByUser(vertical);
    event->accept();
}

void PlotChartView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return QChartView::mousePressEvent(event);
    dragging = true;
    lastDrag = event->position();
    setCursor(Qt::ClosedHandCursor);
}

void PlotChartView::mouseMoveEvent(QMouseEvent *event)
{
    if (dragging) {
        const QPointF delta = event->position() - lastDrag;
        lastDrag = event->position();
        chart()->scroll(-delta.x(), delta.y());
        emit viewChangedByUser(delta.y() != 0);
    }
    if (chart()->plotArea().contains(event->position()))
        emit pointerMoved(chart()->mapToValue(event->position()));
    else
        emit pointerLeft();
    QChartView::mouseMoveEvent(event);
}

void PlotChartView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return QChartView::mouseReleaseEvent(event);
    dragging = false;
    unsetCursor();
}

void PlotChartView::mouseDoubleClickEvent(QMouseEvent *event)
{
    emit resetRequested();
    event->accept();
}

void PlotChartView::leaveEvent(QEvent *event)
{
    emit pointerLeft();
    QChartView::leaveEvent(event);
}
