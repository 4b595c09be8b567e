#ifndef QUORVANE_PLOTPANE_H
#define QUORVANE_PLOTPANE_H

#include <QColor>
#include <QList>
#include <QWidget>

#include "plot/plotdecimation.h"
#include "plot/plotsettings.h"
#include "plot/plotstream.h"

class QChart;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineSeries;
class QMenu;
class QSpinBox;
class QTimer;
class QToolButton;
class QValueAxis;
class PlotChartView;

// Curves of the numbers a session receives. Fed with the received chunks;
// redraws at most 30 times a second while shown and nothing while hidden.
class PlotPane : public QWidget
{
    Q_OBJECT

public:
    explicit PlotPane(QWidget *parent = nullptr);

    void feed(QByteArrayView chunk, qint64 timeMs);

    // Everything but `visible`, which belongs to whoever shows the pane.
    PlotSettings settings() const;
    void applySettings(const PlotSettings &settings);

    // Brings the chart up to date now (normally done by the frame timer).
    void redraw();
    void clear();
    bool exportCsv(const QString &fileName, QString *error = nullptr) const;
    bool exportPng(const QString &fileName) const;

    const PlotStream &stream() const { return plotStream; }
    PlotChartView *chartView() const { return view; }
    QString readoutText() const;

signals:
    void hideRequested();
    void placementChanged(bool underView);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void buildControls();
    void buildMenu();
    void syncSeries();
    void setChannelVisible(int channel, bool visible);
    void chooseColor(int channel);
    QColor channelColor(int channel) const;
    void showReadout(QPointF value);
    void followData();
    void resetView();
    void askCsv();
    void askPng();
    PlotXMapping mapping() const;

    PlotStream plotStream;
    qint64 timeOrigin = 0;
    bool dirty = false;
    bool following = true;
    bool underView = false;
    QStringList colors;
    QList<int> hidden;

    QChart *chart = nullptr;
    PlotChartView *view = nullptr;
    QValueAxis *axisX = nullptr;
    QValueAxis *axisY = nullptr;
    QList<QLineSeries *> series;
    QTimer *frameTimer = nullptr;
    QComboBox *formatBox = nullptr;
    QComboBox *axisBox = nullptr;
    QSpinBox *windowBox = nullptr;
    QCheckBox *autoscaleBox = nullptr;
    QToolButton *pauseButton = nullptr;
    QToolButton *menuButton = nullptr;
    QMenu *menu = nullptr;
    QLabel *readout = nullptr;
    QLabel *skippedLabel = nullptr;
};

#endif
