#include "session/controllinespanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include "common/hled.h"
#include "transport/controllines.h"
#include "transport/linksettings.h"

namespace {

// The lamps in the order they are shown.
const QSerialPort::PinoutSignal lampSignals[] = {QSerialPort::ClearToSendSignal, QSerialPort::DataSetReadySignal,
                                                 QSerialPort::DataCarrierDetectSignal, QSerialPort::RingIndicatorSignal};

void showChecked(QCheckBox *box, bool checked)
{
    // Not a user's edit: nothing may react as if it were.
    const QSignalBlocker blocker(box);
    box->setChecked(checked);
}

} // namespace

ControlLinesPanel::ControlLinesPanel(ControlLines *controlLines, QWidget *parent)
    : QGroupBox(tr("Control Lines"), parent)
    , lines(controlLines)
    , dtrBox(new QCheckBox(tr("DTR"), this))
    , rtsBox(new QCheckBox(tr("RTS"), this))
    , breakButton(new QPushButton(tr("Send Break"), this))
    , breakDurationBox(new QSpinBox(this))
    , lampRow(new QWidget(this))
{
    setObjectName(QStringLiteral("controlLinesPanel"));
    dtrBox->setObjectName(QStringLiteral("dtrBox"));
    rtsBox->setObjectName(QStringLiteral("rtsBox"));
    breakButton->setObjectName(QStringLiteral("breakButton"));
    breakDurationBox->setObjectName(QStringLiteral("breakDurationBox"));
    lampRow->setObjectName(QStringLiteral("modemLines"));
    breakDurationBox->setRange(1, LinkSettings::MaxBreakDuration);
    breakDurationBox->setValue(LinkSettings::DefaultBreakDuration);
    breakDurationBox->setSuffix(tr(" ms"));
    breakDurationBox->setToolTip(tr("How long a break lasts"));

    auto *layout = new QGridLayout(this);
    layout->addWidget(dtrBox, 0, 0);
    layout->addWidget(rtsBox, 0, 1);
    layout->addWidget(breakButton, 1, 0);
    layout->addWidget(breakDurationBox, 1, 1);
    auto *lampLayout = new QHBoxLayout(lampRow);
    lampLayout->setContentsMargins(0, 0, 0, 0);
    const QStringList names = {tr("CTS"), tr("DSR"), tr("DCD"), tr("RI")};
    for (const QString &name : names) {
        auto *lamp = new HLed(lampRow);
        lamp->setFixedSize(16, 16);
        lamp->turnOff();
        lamps << lamp;
        lampLayout->addWidget(lamp);
        lampLayout->addWidget(new QLabel(name, lampRow));
    }
    lampLayout->addStretch();
    layout->addWidget(lampRow, 2, 0, 1, 2);

    connect(dtrBox, &QCheckBox::toggled, this, [this](bool on) {
        lines->setDataTerminalReady(on);
        refresh();
    });
    connect(rtsBox, &QCheckBox::toggled, this, [this](bool on) {
        lines->setRequestToSend(on);
        refresh();
    });
    connect(breakButton, &QPushButton::clicked, this, &ControlLinesPanel::sendBreak);
    pollTimer.setInterval(PollInterval);
    connect(&pollTimer, &QTimer::timeout, this, &ControlLinesPanel::refresh);
    breakTimer.setSingleShot(true);
    connect(&breakTimer, &QTimer::timeout, this, &ControlLinesPanel::endBreak);
    refresh();
}

int ControlLinesPanel::breakDuration() const
{
    return breakDurationBox->value();
}

void ControlLinesPanel::setBreakDuration(int milliseconds)
{
    breakDurationBox->setValue(milliseconds);
}

void ControlLinesPanel::refresh()
{
    const bool open = lines->isOpen();
    std::optional<QSerialPort::PinoutSignals> reported;
    if (!open)
        linesUnknown = false;
    else if (!linesUnknown)
        reported = lines->pinoutSignals();
    linesUnknown = open && !reported;

    showChecked(dtrBox, reported ? reported->testFlag(QSerialPort::DataTerminalReadySignal) : lines->dataTerminalReady());
    showChecked(rtsBox, reported ? reported->testFlag(QSerialPort::RequestToSendSignal) : lines->requestToSend());
    const bool driverOwnsRts = lines->hardwareFlowControl();
    rtsBox->setEnabled(!driverOwnsRts);
    rtsBox->setToolTip(driverOwnsRts ? tr("RTS/CTS flow control drives RTS") : QString());
    breakButton->setEnabled(open && !breakTimer.isActive());
    for (int i = 0; i < lamps.size(); ++i) {
        const bool on = reported && reported->testFlag(lampSignals[i]);
        if (lamps.at(i)->isOn() != on)
            lamps.at(i)->turnOn(on);
    }
    // Greyed while there is nothing to show.
    lampRow->setEnabled(reported.has_value());
    lampRow->setToolTip(linesUnknown ? tr("The device does not report its modem lines") : QString());

    if (reported && !pollTimer.isActive())
        pollTimer.start();
    else if (!reported)
        pollTimer.stop();
}

void ControlLinesPanel::sendBreak()
{
    if (!lines->isOpen())
        return;
    lines->setBreakEnabled(true);
    breakTimer.start(breakDurationBox->value());
    refresh();
}

void ControlLinesPanel::endBreak()
{
    lines->setBreakEnabled(false);
    refresh();
}
