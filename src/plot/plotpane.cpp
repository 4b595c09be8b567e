#include "plot/plotpane.h"

#include <QChart>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLegendMarker>
#include <QLineSeries>
#include <QMenu>
#include <QMessageBox>
#include <QSaveFile>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>
#include <QValueAxis>
#include <QVBoxLayout>

#include <cmath>

#include "plot/plotchartview.h"
#include "plot/plotexport.h"

namespace {

// Distinct on light and dark backgrounds, in the order channels appear.
const char *const DefaultColors[MaxPlotChannels] = {
    "#1f77b4", "#d62728", "#2ca02c", "#ff7f0e", "#9467bd", "#8c564b", "#e377c2", "#17becf",
    "#7f7f7f", "#bcbd22", "#393b79", "#ad494a", "#637939", "#e6550d", "#7b4173", "#3182bd"};

constexpr int FrameMs = 33;

} // namespace

PlotPane::PlotPane(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("plotPane"));
    chart = new QChart;
    chart->setMargins(QMargins(4, 4, 4, 4));
    chart->legend()->setAlignment(Qt::AlignTop);
    axisX = new QValueAxis(chart);
    axisY = new QValueAxis(chart);
    axisX->setLabelFormat(QStringLiteral("%g"));
    axisY->setLabelFormat(QStringLiteral("%g"));
    chart->addAxis(axisX, Qt::AlignBottom);
    chart->addAxis(axisY, Qt::AlignLeft);
    axisX->setRange(0, PlotSettings::DefaultWindow);
    axisY->setRange(-1, 1);

    view = new PlotChartView(chart, this);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view, &PlotChartView::viewChangedByUser, this, [this](bool yChanged) {
        following = false;
        if (yChanged)
            autoscaleBox->setChecked(false);
        dirty = true;
    });
    connect(view, &PlotChartView::resetRequested, this, &PlotPane::resetView);
    connect(view, &PlotChartView::pointerMoved, this, &PlotPane::showReadout);
    connect(view, &PlotChartView::pointerLeft, this, [this] { readout->clear(); });

    frameTimer = new QTimer(this);
    frameTimer->setInterval(FrameMs);
    connect(frameTimer, &QTimer::timeout, this, [this] {
        if (dirty && !pauseButton->isChecked())
            redraw();
    });

    buildControls();
    buildMenu();
    connect(view, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &pos) { menu->exec(view->mapToGlobal(pos)); });
}

void PlotPane::buildControls()
{
    formatBox = new QComboBox(this);
    formatBox->addItem(tr("Auto"), int(PlotFormat::Auto));
    formatBox->addItem(tr("Numbers"), int(PlotFormat::Numbers));
    formatBox->addItem(tr("Name:value pairs"), int(PlotFormat::Pairs));
    formatBox->setToolTip(tr("How received lines are read as samples"));
    connect(formatBox, &QComboBox::currentIndexChanged, this,
            [this] { plotStream.setFormat(PlotFormat(formatBox->currentData().toInt())); });

    axisBox = new QComboBox(this);
    axisBox->addItem(tr("Sample index"), int(PlotXAxis::SampleIndex));
    axisBox->addItem(tr("Receive time (s)"), int(PlotXAxis::ReceiveTime));
    connect(axisBox, &QComboBox::currentIndexChanged, this, &PlotPane::followData);

    windowBox = new QSpinBox(this);
    windowBox->setRange(2, int(PlotSampleStore::MaxKept));
    windowBox->setValue(PlotSettings::DefaultWindow);
    windowBox->setPrefix(tr("Last "));
    windowBox->setSuffix(tr(" samples"));
    windowBox->setToolTip(tr("Samples shown; up to 1,000,000 are kept for export"));
    connect(windowBox, &QSpinBox::valueChanged, this, &PlotPane::followData);

    autoscaleBox = new QCheckBox(tr("Autoscale"), this);
    autoscaleBox->setChecked(true);
    connect(autoscaleBox, &QCheckBox::toggled, this, [this] { dirty = true; });

    pauseButton = new QToolButton(this);
    pauseButton->setText(tr("Pause"));
    pauseButton->setCheckable(true);
    pauseButton->setToolTip(tr("Freeze the curves; samples are still collected"));
    connect(pauseButton, &QToolButton::toggled, this, [this](bool paused) {
        pauseButton->setText(paused ? tr("Resume") : tr("Pause"));
        dirty = true;
    });

    menuButton = new QToolButton(this);
    menuButton->setText(tr("Plot"));
    menuButton->setPopupMode(QToolButton::InstantPopup);

    readout = new QLabel(this);
    readout->setTextInteractionFlags(Qt::TextSelectableByMouse);
    skippedLabel = new QLabel(this);
    skippedLabel->setToolTip(tr("Lines that held no numbers in the chosen format"));

    auto *controls = new QHBoxLayout;
    controls->setContentsMargins(0, 0, 0, 0);
    for (QWidget *w : {static_cast<QWidget *>(formatBox), static_cast<QWidget *>(axisBox),
                       static_cast<QWidget *>(windowBox), static_cast<QWidget *>(autoscaleBox),
                       static_cast<QWidget *>(pauseButton), static_cast<QWidget *>(menuButton)})
        controls->addWidget(w);
    controls->addStretch();
    auto *status = new QHBoxLayout;
    status->setContentsMargins(4, 0, 4, 0);
    status->addWidget(readout, 1);
    status->addWidget(skippedLabel);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addLayout(controls);
    layout->addWidget(view, 1);
    layout->addLayout(status);
}

void PlotPane::buildMenu()
{
    menu = new QMenu(this);
    menuButton->setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this] {
        menu->clear();
        menu->addAction(pauseButton->isChecked() ? tr("Resume") : tr("Pause"), pauseButton, &QToolButton::toggle);
        menu->addAction(tr("Reset View"), this, &PlotPane::resetView);
        menu->addAction(tr("Clear Plot"), this, &PlotPane::clear);
        QMenu *channels = menu->addMenu(tr("Channels"));
        channels->setEnabled(!series.isEmpty());
        for (int c = 0; c < series.size(); ++c) {
            QMenu *channel = channels->addMenu(plotStream.displayName(c));
            QAction *shown = channel->addAction(tr("Show"));
            shown->setCheckable(true);
            shown->setChecked(!hidden.contains(c));
            connect(shown, &QAction::toggled, this, [this, c](bool on) { setChannelVisible(c, on); });
            channel->addAction(tr("Colour..."), this, [this, c] { chooseColor(c); });
        }
        menu->addSeparator();
        menu->addAction(tr("Export CSV..."), this, &PlotPane::askCsv);
        menu->addAction(tr("Export PNG..."), this, &PlotPane::askPng);
        menu->addSeparator();
        QAction *under = menu->addAction(tr("Show Under the View"));
        under->setCheckable(true);
        under->setChecked(underView);
        connect(under, &QAction::toggled, this, [this](bool on) {
            underView = on;
            emit placementChanged(on);
        });
        menu->addAction(tr("Hide Plot"), this, &PlotPane::hideRequested);
    });
}

void PlotPane::feed(QByteArrayView chunk, qint64 timeMs)
{
    if (plotStream.store().size() == 0)
        timeOrigin = timeMs;
    plotStream.feed(chunk, timeMs);
    dirty = true;
}

void PlotPane::clear()
{
    plotStream.clear();
    resetView();
    redraw();
}

PlotSettings PlotPane::settings() const
{
    PlotSettings s;
        s.underView = underView;
    s.format = formatBox->currentData().toInt();
    s.xAxis = axisBox->currentData().toInt();
    s.window = windowBox->value();
    s.autoscale = autoscaleBox->isChecked();
    s.channelNames = plotStream.names();
    s.channelColors = colors;
    s.hiddenChannels = hidden;
    return s;
}

void PlotPane::applySettings(const PlotSettings &s)
{
    underView = s.underView;
    formatBox->setCurrentIndex(qMax(0, formatBox->findData(s.format)));
    axisBox->setCurrentIndex(qMax(0, axisBox->findData(s.xAxis)));
    windowBox->setValue(s.window);
    autoscaleBox->setChecked(s.autoscale);
    plotStream.setNames(s.channelNames);
    colors = s.channelColors;
    hidden = s.hiddenChannels;
    for (int c = 0; c < series.size(); ++c) {
        series[c]->setColor(channelColor(c));
        setChannelVisible(c, !hidden.contains(c));
    }
    dirty = true;
}

PlotXMapping PlotPane::mapping() const
{
    return {PlotXAxis(axisBox->currentData().toInt()), timeOrigin};
}

void PlotPane::redraw()
{
    dirty = false;
    syncSeries();
    const PlotSampleStore &store = plotStream.store();
    const PlotXMapping map = mapping();
    double x0 = axisX->min();
    double x1 = axisX->max();
    if (following) {
        const qsizetype n = store.size();
        const qsizetype window = windowBox->value();
        if (map.axis == PlotXAxis::SampleIndex) {
            x1 = double(qMax<qint64>(store.firstIndex() + n - 1, window - 1));
            x0 = x1 - double(window - 1);
        } else if (n > 0) {
            x0 = plotX(store, qMax<qsizetype>(0, n - window), map);
            x1 = qMax(plotX(store, n - 1, map), x0 + 0.001);
        }
    }

    const PlotRowRange rows = plotRows(store, x0, x1, map);
    // A lowest and a highest point per two pixels draw the same curve as one
    // per pixel, for half of what the chart lays out each frame.
    const int columns = qMax(1, int(chart->plotArea().width()) / 2);
    double low = qInf();
    double high = -qInf();
    QList<QList<QPointF>> curves(series.size());
    for (int c = 0; c < series.size(); ++c) {
        if (hidden.contains(c))
            continue;
        curves[c] = decimateMinMax(store, c, rows, x0, x1, columns, map);
        for (const QPointF &p : std::as_const(curves[c])) {
            if (std::isfinite(p.y()) && p.x() >= x0 && p.x() <= x1) {
                low = qMin(low, p.y());
                high = qMax(high, p.y());
            }
        }
    }
    // The chart lays out every curve again at each change of an axis: the
    // curves are emptied first, so that they are laid out once, when filled.
    for (QLineSeries *line : std::as_const(series))
        line->clear();
    axisX->setRange(x0, x1);
    if (autoscaleBox->isChecked() && low <= high) {
        const double margin = high > low ? (high - low) * 0.05 : qMax(1.0, std::abs(high) * 0.05);
        axisY->setRange(low - margin, high + margin);
    }
    for (int c = 0; c < series.size(); ++c)
        series[c]->replace(curves[c]);
    skippedLabel->setText(plotStream.skippedLines() ? tr("Skipped lines: %1").arg(plotStream.skippedLines())
                                                    : QString());
}

void PlotPane::syncSeries()
{
    const int channels = plotStream.store().channelCount();
    while (series.size() < channels) {
        const int c = int(series.size());
        auto *line = new QLineSeries(chart);
        line->setColor(channelColor(c));
        chart->addSeries(line);
        line->attachAxis(axisX);
        line->attachAxis(axisY);
        series.append(line);
        for (QLegendMarker *marker : chart->legend()->markers(line)) {
            connect(marker, &QLegendMarker::clicked, this,
                    [this, c] { setChannelVisible(c, hidden.contains(c)); });
        }
        setChannelVisible(c, !hidden.contains(c));
    }
    for (int c = 0; c < series.size(); ++c) {
        const QString name = plotStream.displayName(c);
        if (series[c]->name() != name)
            series[c]->setName(name);
    }
}

void PlotPane::setChannelVisible(int channel, bool visible)
{
    hidden.removeAll(channel);
    if (!visible)
        hidden.append(channel);
    if (channel >= series.size())
        return;
    series[channel]->setVisible(visible);
    // A hidden curve keeps its legend entry, dimmed, so it can be shown again.
    for (QLegendMarker *marker : chart->legend()->markers(series[channel])) {
        marker->setVisible(true);
        QColor text = palette().color(QPalette::WindowText);
        text.setAlphaF(visible ? 1.0 : 0.4);
        marker->setLabelBrush(text);
    }
    dirty = true;
}

QColor PlotPane::channelColor(int channel) const
{
    const QColor chosen = QColor::fromString(colors.value(channel));
    return chosen.isValid() ? chosen : QColor::fromString(QLatin1String(DefaultColors[channel % MaxPlotChannels]));
}

void PlotPane::chooseColor(int channel)
{
    const QColor color = QColorDialog::getColor(channelColor(channel), this, plotStream.displayName(channel));
    if (!color.isValid())
        return;
    while (colors.size() <= channel)
        colors.append(QString());
    colors[channel] = color.name();
    if (channel < series.size())
        series[channel]->setColor(color);
}

void PlotPane::showReadout(QPointF value)
{
    const PlotSampleStore &store = plotStream.store();
    if (store.size() == 0)
        return;
    const PlotXMapping map = mapping();
    qsizetype row = 0;
    if (map.axis == PlotXAxis::SampleIndex)
        row = qsizetype(std::llround(value.x())) - store.firstIndex();
    else
        row = store.lowerBound(map.timeOriginMs + qint64(std::llround(value.x() * 1000.0)));
    row = qBound<qsizetype>(0, row, store.size() - 1);
    QStringList parts{QStringLiteral("x = %1").arg(plotX(store, row, map))};
    for (int c = 0; c < store.channelCount(); ++c) {
        if (!hidden.contains(c))
            parts << QStringLiteral("%1 = %2").arg(plotStream.displayName(c)).arg(store.value(c, row));
    }
    readout->setText(parts.join(QStringLiteral("   ")));
}

QString PlotPane::readoutText() const
{
    return readout->text();
}

void PlotPane::followData()
{
    following = true;
    dirty = true;
}

void PlotPane::resetView()
{
    autoscaleBox->setChecked(true);
    followData();
}

bool PlotPane::exportCsv(const QString &fileName, QString *error) const
{
    QSaveFile file(fileName);
    QStringList names;
    for (int c = 0; c < plotStream.store().channelCount(); ++c)
        names << plotStream.displayName(c);
    const bool ok = file.open(QIODevice::WriteOnly) && writePlotCsv(file, plotStream.store(), names) && file.commit();
    if (!ok && error)
        *error = file.errorString();
    return ok;
}

bool PlotPane::exportPng(const QString &fileName) const
{
    return view->grab().save(fileName, "PNG");
}

void PlotPane::askCsv()
{
    const QString name = QFileDialog::getSaveFileName(this, tr("Export Samples"), QString(), tr("CSV files (*.csv)"));
    QString error;
    if (!name.isEmpty() && !exportCsv(name, &error))
        QMessageBox::warning(this, QStringLiteral("Quorvane"), tr("Could not write %1: %2").arg(name, error));
}

void PlotPane::askPng()
{
    const QString name = QFileDialog::getSaveFileName(this, tr("Export Plot"), QString(), tr("PNG images (*.png)"));
    if (!name.isEmpty() && !exportPng(name))
        QMessageBox::warning(this, QStringLiteral("Quorvane"), tr("Could not write %1.").arg(name));
}

void PlotPane::showEvent(QShowEvent *event)
{
    frameTimer->start();
    dirty = true;
    QWidget::showEvent(event);
}

void PlotPane::hideEvent(QHideEvent *event)
{
    frameTimer->stop();
    QWidget::hideEvent(event);
}
