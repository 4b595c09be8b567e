#ifndef QUORVANE_SESSIONPLOT_H
#define QUORVANE_SESSIONPLOT_H

#include <QAction>
#include <QByteArray>
#include <QDateTime>
#include <QObject>
#include <QPointer>

#include "plot/plotpane.h"
#include "plot/plotsettings.h"

class QSplitter;

// A session's plot: its show/hide action, and the pane, made the first time
// it is shown and put beside or under the receive view. While hidden,
// received chunks cost one flag test.
class SessionPlot : public QObject
{
    Q_OBJECT

public:
    SessionPlot(QWidget *receiveView, QWidget *parent);

    QAction *toggleAction() const { return toggle; }
    void feed(const QByteArray &chunk)
    {
        if (toggle->isChecked())
            plotPane->feed(chunk, QDateTime::currentMSecsSinceEpoch());
    }

    PlotSettings settings() const;
    void applySettings(const PlotSettings &settings);
    PlotPane *pane() const { return plotPane; }

private:
    void setShown(bool shown);
    void place(bool underView);

    QWidget *receiveView;
    QAction *toggle;
    QPointer<QSplitter> splitter;
    PlotPane *plotPane = nullptr;
    PlotSettings stored;
};

#endif
