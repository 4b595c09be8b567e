#include "dialogs/settingsdialog.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QGridLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QSignalBlocker>

#include "common/portscanner.h"
#include "common/connectionchoices.h"
#include "common/logging.h"
#include "common/serialportlist.h"
#include "common/texthelpers.h"
#include "dialogs/settingsfields.h"
#include "session/datalog.h"
#include "ui_settingsdialog.h"

using namespace SettingsFields;

const QString SettingsDialog::NetworkPortEntry = QStringLiteral("TCP/UDP");

namespace {

const QString DefaultRxTimeFormat = QStringLiteral("[Rx][hh:mm:ss.zzz] ");
const QString DefaultTxTimeFormat = QStringLiteral("[Tx][hh:mm:ss.zzz] ");
const QString LocalPortExample = QStringLiteral("60001");

// Empties a combo box without firing its slots and sets its editability.
void resetCombo(QComboBox *box, bool editable, QIntValidator *validator = nullptr)
{
    const QSignalBlocker blocker(box);
    box->clear();
    box->setEditable(editable);
    if (editable) {
        box->setInsertPolicy(QComboBox::NoInsert);
        box->lineEdit()->setValidator(validator);
    }
}

void selectData(QComboBox *box, const QVariant &value)
{
    box->setCurrentIndex(box->findData(value));
}

// The item data of the current entry, or the fallback when nothing valid is
// chosen (an unknown value from a record shows as no selection).
qint32 currentDataOr(const QComboBox *box, qint32 fallback)
{
    const QVariant data = box->currentData();
    return data.isValid() ? data.toInt() : fallback;
}

void setRowVisible(QLabel *label, QComboBox *box, bool visible)
{
    label->setVisible(visible);
    box->setVisible(visible);
}

// Radio buttons of one auto-exclusive group refuse to be all unchecked;
// an unknown record value must show as no choice, so lift that briefly.
void checkOnly(const QList<QAbstractButton *> &buttons, int index)
{
    for (int i = 0; i < buttons.size(); ++i) {
        buttons[i]->setAutoExclusive(false);
        buttons[i]->setChecked(i == index);
        buttons[i]->setAutoExclusive(true);
    }
}

} // namespace

SettingsDialog::SettingsDialog(QWidget *parent)
    : QDialog(parent),
      ui(new Ui::SettingsDialog),
      baudRateValidator(new QIntValidator(0, MaxCustomBaudRate, this)),
      portValidator(new QIntValidator(0, 65535, this)),
      // The whole text is the family name; replaced once a session is shown.
      chosenFont(QStringLiteral("Consolas, 11"))
{
    ui->setupUi(this);
    lineEndingButtons = {ui->rbCRandLF, ui->rbNewLine, ui->rbCarrageReturn, ui->rbLFandCR};
    // Shown for orientation only; no record field stands behind them.
    for (QWidget *widget : {static_cast<QWidget *>(ui->radioButton), static_cast<QWidget *>(ui->radioButton_2),
                            static_cast<QWidget *>(ui->checkBox_4), static_cast<QWidget *>(ui->checkBox)})
        widget->setEnabled(false);
    initialPara();
}

SettingsDialog::~SettingsDialog()
{
    delete ui;
}

void SettingsDialog::keyPressEvent(QKeyEvent *event)
{
    // Embedded as a page, Return and Escape belong to the hosting dialog;
    // handled here they would close just this page.
    if (!isWindow()) {
        event->ignore();
        return;
    }
    QDialog::keyPressEvent(event);
}

void SettingsDialog::initialPara()
{
    fillPortsInfo();
    if (networkPanelShown())
        fillTcpParameters();
    else
        fillPortsParameters();

    ui->sendInterUnitCB->addItem(tr("ms"), UnitMilliseconds);
    ui->sendInterUnitCB->addItem(tr("s"), UnitSeconds);
    ui->sendInterUnitCB->addItem(tr("m"), UnitMinutes);
    ui->sendInterUnitCB->addItem(tr("h"), UnitHours);
    ui->sendIntervalSB->setValue(1000);
    ui->fontLE->setText(fontDescription(chosenFont));
    for (QLineEdit *colorField : {ui->sendTextColorLE, ui->receiveTextColorLE})
        colorField->setPlaceholderText(tr("Theme colour"));
    addRawLogOptions();
}

// Below the other log options: the raw log records bytes, not lines.
void SettingsDialog::addRawLogOptions()
{
    rawLogBox = new QCheckBox(tr("Raw log: exactly the bytes received, no header"), this);
    rawLogBox->setObjectName(QStringLiteral("rawLogBox"));
    rawLogSentBox = new QCheckBox(tr("Raw log includes sent bytes"), this);
    rawLogSentBox->setObjectName(QStringLiteral("rawLogSentBox"));
    connect(rawLogBox, &QCheckBox::toggled, rawLogSentBox, &QWidget::setEnabled);
    rawLogSentBox->setEnabled(false);
    auto *grid = qobject_cast<QGridLayout *>(ui->needHourTimeStamp->parentWidget()->layout());
    const int row = grid->rowCount();
    grid->addWidget(rawLogBox, row, 0, 1, grid->columnCount());
    grid->addWidget(rawLogSentBox, row + 1, 0, 1, grid->columnCount());
}

void SettingsDialog::fillPortsInfo()
{
    const QSignalBlocker blocker(ui->portBox);
    ui->portBox->clear();
    for (const SerialPortItem &port : PortScanner::shared().ports())
        ui->portBox->addItem(portEntryText(port.portName, port.description), port.portName);
    ui->portBox->addItem(NetworkPortEntry, NetworkPortEntry);
}

void SettingsDialog::fillPortsParameters()
{
    networkPanel = false;
    ui->baudRateLabel->setText(tr("Baudrate"));
    ui->dataBitsLabel->setText(tr("Data Bits"));
    ui->parityLabel->setText(tr("Parity"));
    ui->stopBitsLabel->setText(tr("Stop Bits"));
    ui->flowControlLabel->setText(tr("Flow Type"));
    setRowVisible(ui->stopBitsLabel, ui->stopBitsBox, true);
    setRowVisible(ui->flowControlLabel, ui->flowControlBox, true);

    resetCombo(ui->baudRateBox, false);
    {
        const QSignalBlocker blocker(ui->baudRateBox);
        fillChoices(ui->baudRateBox, baudRateChoices());
        ui->baudRateBox->setCurrentIndex(0);
    }

    resetCombo(ui->dataBitsBox, false);
    fillChoices(ui->dataBitsBox, dataBitsChoices());
    ui->dataBitsBox->setCurrentIndex(3);

    resetCombo(ui->parityBox, false);
    fillChoices(ui->parityBox, parityChoices());

    resetCombo(ui->stopBitsBox, false);
    fillChoices(ui->stopBitsBox, stopBitsChoices());

    resetCombo(ui->flowControlBox, false);
    fillChoices(ui->flowControlBox, flowControlChoices());
}

void SettingsDialog::fillTcpParameters()
{
    networkPanel = true;
    ui->baudRateLabel->setText(tr("Mode"));
    resetCombo(ui->baudRateBox, false);
    {
        const QSignalBlocker blocker(ui->baudRateBox);
        for (const NetworkMode &entry : networkModes())
            ui->baudRateBox->addItem(entry.name, entry.mode);
        // A serial record switched to the network entry starts as a TCP client.
        const int index = portSettings.connMode == SerialPortMode ? 0 : ui->baudRateBox->findData(portSettings.connMode);
        if (index < 0)
            qCDebug(lcDefault) << "Unknown Connection Mode" << portSettings.connMode;
        ui->baudRateBox->setCurrentIndex(index);
    }
    applyNetworkRows(currentDataOr(ui->baudRateBox, portSettings.connMode));
}

void SettingsDialog::applyNetworkRows(qint32 mode)
{
    const NetworkRows rows = networkRows(mode);

    ui->dataBitsLabel->setText(rows.hostLabel);
    if (rows.hostIsLocalAddress) {
        resetCombo(ui->dataBitsBox, false);
        ui->dataBitsBox->addItems(localAddressNames());
    } else {
        resetCombo(ui->dataBitsBox, true);
        ui->dataBitsBox->addItems(portSettings.lastTargetHost);
        if (portSettings.lastTargetHost.isEmpty())
            ui->dataBitsBox->setEditText(rows.hostExample);
    }

    ui->parityLabel->setText(rows.portLabel);
    resetCombo(ui->parityBox, true, portValidator);
    ui->parityBox->setEditText(QString::number(portSettings.lastTargetPort));

    ui->stopBitsLabel->setText(tr("Local IP"));
    resetCombo(ui->stopBitsBox, false);
    ui->stopBitsBox->addItems(localAddressNames());
    ui->flowControlLabel->setText(tr("Local Port"));
    resetCombo(ui->flowControlBox, true, portValidator);
    ui->flowControlBox->setEditText(LocalPortExample);
    setRowVisible(ui->stopBitsLabel, ui->stopBitsBox, rows.localRows);
    setRowVisible(ui->flowControlLabel, ui->flowControlBox, rows.localRows);
}

bool SettingsDialog::networkPanelShown() const
{
    return ui->portBox->currentText() == NetworkPortEntry;
}

void SettingsDialog::on_portBox_currentIndexChanged(int)
{
    const bool network = networkPanelShown();
    if (network == networkPanel)
        return;
    if (network) {
        fillTcpParameters();
    } else {
        fillPortsParameters();
        showSerialParameters();
    }
}

void SettingsDialog::on_baudRateBox_currentIndexChanged(int index)
{
    if (networkPanel)
        applyNetworkRows(currentDataOr(ui->baudRateBox, portSettings.connMode));
    else
        checkCustomBaudRatePolicy(index);
}

void SettingsDialog::checkCustomBaudRatePolicy(int index)
{
    QComboBox *box = ui->baudRateBox;
    const bool custom = index >= 0 && !box->itemData(index).isValid();
    if (!custom) {
        box->setEditable(false);
        return;
    }
    qCDebug(lcDefault) << "Customer baud rate! ";
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    // Inline completion would turn a typed "1" into a listed rate.
    box->setCompleter(nullptr);
    box->clearEditText();
    box->lineEdit()->setValidator(baudRateValidator);
    box->setEditText(QString::number(portSettings.baudRate));
}

void SettingsDialog::on_rxTimeFormatLE_textChanged(const QString &text)
{
    ui->rxTimeFormatLB->setText(timeFormatPreview(text, DefaultRxTimeFormat, QDateTime::currentDateTime()));
}

void SettingsDialog::on_txTimeFormatLE_textChanged(const QString &text)
{
    ui->txTimeFormatLB->setText(timeFormatPreview(text, DefaultTxTimeFormat, QDateTime::currentDateTime()));
}

void SettingsDialog::on_logFileNameLE_textChanged(const QString &text)
{
    ui->logFileNameResultLB->setText(expandLogFileName(text.trimmed(), portSettings.name, QDateTime::currentDateTime()));
}

// A new unit shows the same period in whole units of it (1500 ms becomes
// 1 s), so what is stored is what the user sees.
void SettingsDialog::on_sendInterUnitCB_currentIndexChanged(int index)
{
    const qint32 unit = sanitizedTimeUnit(ui->sendInterUnitCB->itemData(index).toInt());
    const qint64 period = qint64(ui->sendIntervalSB->value()) * shownSendUnit;
    shownSendUnit = unit;
    ui->sendIntervalSB->setMaximum(maxIntervalForUnit(unit));
    ui->sendIntervalSB->setValue(int(period / unit));
}

void SettingsDialog::on_filePathButton_clicked()
{
    const QString folder = QFileInfo(ui->logFileNameLE->text().trimmed()).absolutePath();
    const QString file = QFileDialog::getSaveFileName(this, tr("Select Log File"), folder,
                                                      tr("Log files (*.log);;All files (*.*);;Text files (*.txt)"));
    if (file.isEmpty())
        return;
    ui->logFileNameLE->setText(file);
    ui->saveCheckBox->setChecked(true);
}

void SettingsDialog::on_fontPB_clicked()
{
    bool ok = false;
    const QFont font = QFontDialog::getFont(&ok, chosenFont, this);
    if (!ok)
        return;
    chosenFont = font;
    ui->fontLE->setText(fontDescription(chosenFont));
}

void SettingsDialog::on_sendTextColorPB_clicked()
{
    chooseColor(chosenSendColor, ui->sendTextColorLE);
}

void SettingsDialog::on_receiveTextColorPB_clicked()
{
    chooseColor(chosenReceiveColor, ui->receiveTextColorLE);
}

void SettingsDialog::chooseColor(QColor &color, QLineEdit *display)
{
    const QColor chosen = QColorDialog::getColor(color.isValid() ? color : palette().color(QPalette::Text), this);
    if (!chosen.isValid())
        return;
    color = chosen;
    display->setText(colorText(color));
}

// ---- records -> widgets

void SettingsDialog::updateDisplay()
{
    qCDebug(lcDefault) << "updateDisplay portSettings.connMode =" << portSettings.connMode;
    qCDebug(lcDefault) << "updateDisplay DisplayBufferSize =" << formatSetting.DisplayBufferSize;
    showConnectionSettings();
    showReceiveSettings();
    showSendSettings();
    showLogSettings();
    showDisplaySettings();
}

void SettingsDialog::showConnectionSettings()
{
    {
        const QSignalBlocker blocker(ui->portBox);
        selectPortEntry(ui->portBox, portSettings.connMode == SerialPortMode ? portSettings.name : NetworkPortEntry);
    }
    if (portSettings.connMode == SerialPortMode) {
        fillPortsParameters();
        showSerialParameters();
    } else {
        fillTcpParameters();
    }
}

void SettingsDialog::showSerialParameters()
{
    QComboBox *baud = ui->baudRateBox;
    int baudIndex = baud->findData(portSettings.baudRate);
    if (baudIndex < 0)
        baudIndex = baud->count() - 1;
    {
        const QSignalBlocker blocker(baud);
        baud->setCurrentIndex(baudIndex);
    }
    checkCustomBaudRatePolicy(baudIndex);

    selectData(ui->dataBitsBox, portSettings.dataBits);
    selectData(ui->parityBox, portSettings.parity);
    selectData(ui->stopBitsBox, portSettings.stopBits);
    selectData(ui->flowControlBox, portSettings.flowControl);
}

void SettingsDialog::showReceiveSettings()
{
    const FormatSetting &f = formatSetting;
    (f.ReceiveMsgFormat == ASCII ? ui->asciiRadio : ui->hexRadio)->setChecked(true);
    ui->autoFeedBox->setChecked(f.AutoFeedLine);
    ui->autoFeedIntervalSpinBox->setValue(f.AutoFeedInterval);
    ui->displaySendBox->setChecked(f.DisplaySendMsg);
    ui->displayTimeBox->setChecked(f.DisplayMsgTime);
    ui->rxTimeFormatLE->setText(f.RxTimeFormat.isEmpty() ? DefaultRxTimeFormat : f.RxTimeFormat);
    ui->txTimeFormatLE->setText(f.TxTimeFormat.isEmpty() ? DefaultTxTimeFormat : f.TxTimeFormat);
}

void SettingsDialog::showSendSettings()
{
    FormatSetting &f = formatSetting;
    (f.SendMsgFormat == ASCII ? ui->asciiSendRaido : ui->hexSendRadio)->setChecked(true);
    ui->autoSendBox->setChecked(f.AutoSend);

    f.SendTimeUnit = sanitizedTimeUnit(f.SendTimeUnit);
    int unitIndex = ui->sendInterUnitCB->findData(f.SendTimeUnit);
    if (unitIndex < 0) {
        qCDebug(lcDefault) << "updateDisplay: unknown SendTimeUnit" << f.SendTimeUnit << "shown in ms";
        unitIndex = 0;
    }
    ui->sendInterUnitCB->setCurrentIndex(unitIndex);
    ui->sendIntervalSB->setValue(f.SendInterval / sanitizedTimeUnit(ui->sendInterUnitCB->currentData().toInt()));

    ui->autoAddFeedLine->setChecked(f.AutoAddFeedLine);
    ui->commentSupportCB->setChecked(f.SupportComment);
    ui->formatSendCB->setChecked(f.FormatSend);
    checkOnly(lineEndingButtons, lineEndingButtonIndex(f.LineEndingMode));
}

void SettingsDialog::showLogSettings()
{
    const FormatSetting &f = formatSetting;
    ui->saveCheckBox->setChecked(f.LogSaveFlag);
    rawLogBox->setChecked(f.RawLog);
    rawLogSentBox->setChecked(f.RawLogSent);
    ui->logFileNameLE->setText(f.LogFilePath);
    // The session name may have changed while the pattern did not.
    on_logFileNameLE_textChanged(f.LogFilePath);
    ui->timestampEachLineCB->setChecked(f.LogTimestampEnabled);
    ui->timestampFmtLE->setText(f.LogFileTime);
    ui->needHourTimeStamp->setChecked(f.NeedHourTimeStamp);
    ui->cbRotateAtTime->setChecked(f.LogRotateAtTime);
    ui->teRotateTime->setTime(f.LogRotateTime.isValid() ? f.LogRotateTime : QTime(0, 0));
    ui->cbRotateAtSize->setChecked(f.LogRotateAtSize);
    ui->sbRotateSize->setValue(megabytesFromBytes(f.LogRotateSize));
}

void SettingsDialog::showDisplaySettings()
{
    const FormatSetting &f = formatSetting;
    chosenFont = f.LogFont;
    ui->fontLE->setText(fontDescription(chosenFont));
    chosenSendColor = f.SendTextColor;
    ui->sendTextColorLE->setText(colorText(chosenSendColor));
    chosenReceiveColor = f.ReceiveTextColor;
    ui->receiveTextColorLE->setText(colorText(chosenReceiveColor));
    ui->formatDisplayColor->setChecked(f.FormatDisplayColor);
    ui->displayBufferSizeSb->setValue(megabytesFromBytes(f.DisplayBufferSize));
}

// ---- widgets -> records

bool SettingsDialog::updatePara()
{
    if (ui->saveCheckBox->isChecked() && !isUsableLogFileName(ui->logFileNameLE->text())) {
        ui->tabWidget->setCurrentWidget(ui->logTab);
        ui->logFileNameLE->setFocus();
        QMessageBox::warning(this, tr("Warning"), tr("Please input correct log file name!"), QMessageBox::Ok);
        return false;
    }

    PortSettings port = portSettings;
    FormatSetting format = formatSetting;
    if (networkPanel)
        takeNetworkSettings(port);
    else
        takeSerialSettings(port);
    takeReceiveSettings(format);
    takeSendSettings(format);
    takeLogSettings(format);
    takeDisplaySettings(format);
    portSettings = port;
    formatSetting = format;

    qCDebug(lcDefault) << "updatePara: baudRate =" << portSettings.baudRate;
    qCDebug(lcDefault) << "updatePara: DisplayBufferSize =" << formatSetting.DisplayBufferSize;
    return true;
}

void SettingsDialog::takeSerialSettings(PortSettings &port) const
{
    port.connMode = SerialPortMode;
    if (ui->portBox->currentIndex() >= 0)
        port.name = embracedString(ui->portBox->currentText());

    const QVariant listedRate = ui->baudRateBox->currentData();
    const qint32 rate = listedRate.isValid() ? listedRate.toInt() : customBaudRate(ui->baudRateBox->currentText());
    if (rate > 0)
        port.baudRate = rate;
    else
        qCDebug(lcDefault) << "updatePara: no usable baud rate in" << ui->baudRateBox->currentText() << "keeping" << port.baudRate;

    port.dataBits = currentDataOr(ui->dataBitsBox, port.dataBits);
    port.parity = currentDataOr(ui->parityBox, port.parity);
    port.stopBits = currentDataOr(ui->stopBitsBox, port.stopBits);
    port.flowControl = currentDataOr(ui->flowControlBox, port.flowControl);
}

void SettingsDialog::takeNetworkSettings(PortSettings &port) const
{
    port.connMode = currentDataOr(ui->baudRateBox, port.connMode);
    if (!networkRows(port.connMode).hostIsLocalAddress)
        port.lastTargetHost = hostHistoryWith(ui->dataBitsBox->currentText(), port.lastTargetHost);

    const quint16 number = portFromText(ui->parityBox->currentText().trimmed());
    if (number > 0)
        port.lastTargetPort = number;
    else
        qCDebug(lcDefault) << "updatePara: no usable port in" << ui->parityBox->currentText() << "keeping" << port.lastTargetPort;
}

void SettingsDialog::takeReceiveSettings(FormatSetting &format) const
{
    format.ReceiveMsgFormat = ui->asciiRadio->isChecked() ? ASCII : HEX;
    format.AutoFeedLine = ui->autoFeedBox->isChecked();
    format.AutoFeedInterval = ui->autoFeedIntervalSpinBox->value();
    format.DisplaySendMsg = ui->displaySendBox->isChecked();
    format.DisplayMsgTime = ui->displayTimeBox->isChecked();
    format.RxTimeFormat = ui->rxTimeFormatLE->text();
    format.TxTimeFormat = ui->txTimeFormatLE->text();
}

void SettingsDialog::takeSendSettings(FormatSetting &format) const
{
    format.SendMsgFormat = ui->asciiSendRaido->isChecked() ? ASCII : HEX;
    format.AutoSend = ui->autoSendBox->isChecked();
    format.SendTimeUnit = sanitizedTimeUnit(ui->sendInterUnitCB->currentData().toInt());
    format.SendInterval = scaledFromShown(ui->sendIntervalSB->value(), format.SendTimeUnit);
    format.AutoAddFeedLine = ui->autoAddFeedLine->isChecked();
    format.SupportComment = ui->commentSupportCB->isChecked();
    format.FormatSend = ui->formatSendCB->isChecked();
    format.LineEndingMode = lineEndingFromChecks(ui->rbCRandLF->isChecked(), ui->rbNewLine->isChecked(),
                                                 ui->rbCarrageReturn->isChecked(), ui->rbLFandCR->isChecked());
}

void SettingsDialog::takeLogSettings(FormatSetting &format) const
{
    format.LogSaveFlag = ui->saveCheckBox->isChecked();
    format.LogFilePath = ui->logFileNameLE->text().trimmed();
    format.LogTimestampEnabled = ui->timestampEachLineCB->isChecked();
    format.LogFileTime = ui->timestampFmtLE->text();
    format.NeedHourTimeStamp = ui->needHourTimeStamp->isChecked();
    format.LogRotateAtTime = ui->cbRotateAtTime->isChecked();
    // An unset rotation time shows as midnight; it stays unset unless used.
    const QTime shownTime = ui->teRotateTime->time();
    if (format.LogRotateAtTime || format.LogRotateTime.isValid() || shownTime != QTime(0, 0))
        format.LogRotateTime = shownTime;
    format.LogRotateAtSize = ui->cbRotateAtSize->isChecked();
    format.LogRotateSize = scaledFromShown(ui->sbRotateSize->value(), 1 << 20);
    format.RawLog = rawLogBox->isChecked();
    format.RawLogSent = rawLogSentBox->isChecked();
}

void SettingsDialog::takeDisplaySettings(FormatSetting &format) const
{
    format.LogFont = chosenFont;
    format.SendTextColor = chosenSendColor;
    format.ReceiveTextColor = chosenReceiveColor;
    format.FormatDisplayColor = ui->formatDisplayColor->isChecked();
    format.DisplayBufferSize = scaledFromShown(ui->displayBufferSizeSb->value(), 1 << 20);
}
