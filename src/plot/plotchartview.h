#ifndef QUORVANE_PLOTCHARTVIEW_H
#define QUORVANE_PLOTCHARTVIEW_H

#include <QChartView>

// A chart view that zooms with the wheel (x; y with Ctrl), pans by dragging
// and reports where the pointer is, in chart values.
class PlotChartView : public QChartView
{
    Q_OBJECT

public:
    explicit PlotChartView(QChart *chart, QWidget *parent = nullptr);

signals:
    // The user moved or scaled an axis: the view stops following the data.
    void viewChangedByUser(bool yChanged);
    void pointerMoved(QPointF value);
    void pointerLeft();
    void resetRequested();

protected:
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    QPointF lastDrag;
    bool dragging = false;
};

#endif
