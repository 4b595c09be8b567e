#include "plot/sessionplot.h"

#include <QLayout>
#include <QSplitter>

SessionPlot::SessionPlot(QWidget *view, QWidget *parent)
    : QObject(parent)
    , receiveView(view)
    , toggle(new QAction(tr("Show Plot"), parent))
{
    toggle->setCheckable(true);
    toggle->setToolTip(tr("Plot the numbers this session receives"));
    connect(toggle, &QAction::toggled, this, &SessionPlot::setShown);
}

PlotSettings SessionPlot::settings() const
{
    PlotSettings s = plotPane ? plotPane->settings() : stored;
    s.visible = toggle->isChecked();
    return s;
}

void SessionPlot::applySettings(const PlotSettings &settings)
{
    stored = settings;
    if (plotPane) {
        plotPane->applySettings(settings);
        place(settings.underView);
    }
    toggle->setChecked(settings.visible);
}

void SessionPlot::setShown(bool shown)
{
    if (!shown) {
        if (plotPane)
            plotPane->hide();
        return;
    }
    if (!plotPane) {
        // The receive view's place in the session is taken by a splitter
        // holding the view and the pane.
        QWidget *holder = receiveView->parentWidget();
        splitter = new QSplitter;
        splitter->setObjectName(QStringLiteral("plotSplitter"));
        // The view's stretch in its place goes with the place.
        splitter->setSizePolicy(receiveView->sizePolicy());
        if (auto *outer = qobject_cast<QSplitter *>(holder)) {
            // Before the session is first laid out every size reads 0, and
            // giving those back would collapse the rest of the splitter.
            const QList<int> sizes = outer->sizes();
            outer->replaceWidget(outer->indexOf(receiveView), splitter);
            if (!sizes.contains(0))
                outer->setSizes(sizes);
        } else if (holder && holder->layout()) {
            holder->layout()->replaceWidget(receiveView, splitter);
        }
        splitter->addWidget(receiveView);
        receiveView->show();
        plotPane = new PlotPane;
        splitter->addWidget(plotPane);
        plotPane->applySettings(stored);
        connect(plotPane, &PlotPane::hideRequested, toggle, [this] { toggle->setChecked(false); });
        connect(plotPane, &PlotPane::placementChanged, this, &SessionPlot::place);
        place(stored.underView);
    }
    plotPane->show();
}

void SessionPlot::place(bool underView)
{
    if (splitter)
        splitter->setOrientation(underView ? Qt::Vertical : Qt::Horizontal);
}
