#include "session/serialportwidget.h"
#include "ui_serialportwidget.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QScopedValueRollback>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QStatusBar>
#include <QTcpSocket>
#include <QTimer>
#include <QUdpSocket>
#include <QVBoxLayout>

#include "common/changegate.h"
#include "common/counterlabel.h"
#include "common/connectionchoices.h"
#include "common/logging.h"
#include "common/portscanner.h"
#include "common/serialportlist.h"
#include "common/statuscolors.h"
#include "common/timerbeat.h"
#include "common/texthelpers.h"
#include "net/clientrows.h"
#include "net/multiclientserver.h"
#include "plot/sessionplot.h"
#include "send/filesender.h"
#include "send/filesendpanel.h"
#include "send/hexinputfeedback.h"
#include "send/macrobar.h"
#include "send/sendboxcontroller.h"
#include "session/controllinespanel.h"
#include "session/sendencoder.h"
#include "session/statustexts.h"
#include "transport/reconnectpolicy.h"
#include "transport/serialtransport.h"
#include "transport/tcpclienttransport.h"
#include "transport/tcpservertransport.h"
#include "transport/udptransport.h"
#include "view/receivefeed.h"
#include "view/receiveview.h"
#include "view/receiveviewoptions.h"
#include "workspace/sessiontitlebar.h"

namespace {

const QString networkEntry = QString::fromLatin1(networkPortEntry);

// Sessions refresh on alternate halves of the refresh beat, so a
// workspace's views are not all rendered and drawn in one go; while ports
// are open, the read timers' beat wakes the event loop then anyway.
int nextRefreshPhase()
{
    static int sessions = 0;
    return sessions++ % 2 == 0 ? 0 : 10;
}

void selectData(QComboBox *box, const QVariant &data)
{
    const int index = box->findData(data);
    if (index >= 0)
        box->setCurrentIndex(index);
}

// The time of day of a received chunk. Asking the system for local time on
// every read costs a time-zone lookup each time; the offset from UTC is
// taken once a second instead.
QTime currentTimeOfDay()
{
    static qint64 offsetValidUntil = 0;
    static qint64 offsetMsecs = 0;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (now >= offsetValidUntil) {
        offsetMsecs = qint64(QDateTime::fromMSecsSinceEpoch(now).offsetFromUtc()) * 1000;
        offsetValidUntil = now + 1000;
    }
    const qint64 msecsPerDay = 24 * 60 * 60 * 1000;
    const qint64 local = ((now + offsetMsecs) % msecsPerDay + msecsPerDay) % msecsPerDay;
    return QTime::fromMSecsSinceStartOfDay(int(local));
}

} // namespace

SerialPortWidget::SerialPortWidget(QWidget *parent)
    : QWidget(parent)
    , ui(new Ui::SerialPortWidget)
    , refreshPhase(nextRefreshPhase())
{
    initTransports();
    baudRateValidator = new QIntValidator(0, 100000000, this);

    ui->setupUi(this);
    clientRows = std::make_unique<ClientRows>(ui->clientTw);
    titleBar = new SessionTitleBar(this);
    ui->verticalLayout->insertWidget(0, titleBar);
    // Room beyond the minimum goes to the traffic, not to the bars around it.
    ui->verticalLayout->setStretchFactor(ui->splitter, 1);
    ui->splitter_data->setStretchFactor(0, 3);
    ui->splitter_data->setStretchFactor(1, 1);
    receiveFeed = new ReceiveFeed(ui->receiveView, &renderer);
    viewOptions = new ReceiveViewOptions(ui->receiveGroupLayout, ui->hexRadio, this);
    connect(ui->receiveView, &ReceiveView::highlightRulesEdited, this, [this] {
        formatSetting.View.highlightRules = ui->receiveView->highlightRules();
        emit settingsEdited();
    });
    formatSetting.LogFont = ui->receiveView->font();
    formatSetting.SendInterval = ui->sendIntervelSB->value();
    initPlot();

    initTimers();
    initSendTools();
    initLinkControls();
    createStatusBar();
    fillPortsInfo();
    fillPortsParameters();
    // A change of the port list shows at once, not at this session's next scan tick.
    connect(&PortScanner::shared(), &PortScanner::portsChanged, this, &SerialPortWidget::onRefreshAvalablePorts);
    // Any device the system accepts can be typed in, not only the listed ones.
    ui->portBox->setEditable(true);
    ui->portBox->setInsertPolicy(QComboBox::NoInsert);
    watchPanelEdits();
}

SerialPortWidget::~SerialPortWidget()
{
    // Pending log text reaches the file when a session goes away; there is
    // no one left to warn about a bad name then.
    saveLog();
    // The transports die with the child widgets; their last signals must not
    // reach a session that is half gone by then.
    for (Transport *link : links())
        link->disconnect(this);
    delete receiveFeed;
    delete ui;
}

// The plot's show/hide entry sits in the session's context menus: the
// receive view's and the title bar's.
void SerialPortWidget::initPlot()
{
    plot = new SessionPlot(ui->receiveView, this);
    titleBar->addAction(plot->toggleAction());
    titleBar->setContextMenuPolicy(Qt::ActionsContextMenu);
    ui->receiveView->addContextAction(plot->toggleAction());
}

ReceiveView *SerialPortWidget::receiveView() const
{
    return ui->receiveView;
}

void SerialPortWidget::initTimers()
{
    auto makeTimer = [this](int interval, void (SerialPortWidget::*slot)()) {
        auto *timer = new QTimer(this);
        timer->setInterval(interval);
        connect(timer, &QTimer::timeout, this, slot);
        return timer;
    };
    readTimer = makeTimer(10, &SerialPortWidget::onReadData);
    sendTimer = makeTimer(ui->sendIntervelSB->value(), &SerialPortWidget::onSendData);
    sendTimer->setTimerType(Qt::PreciseTimer);
    saveTimer = makeTimer(5000, &SerialPortWidget::onSaveData);
    refreshTimer = makeTimer(20, &SerialPortWidget::onRefreshDisplay);
    portScanTimer = makeTimer(1000, &SerialPortWidget::onRefreshAvalablePorts);
    startOnBeat(refreshTimer, 20, refreshPhase);
    startOnBeat(portScanTimer, 1000);
}

// The console keys, hex feedback and macro bar around the send box.
void SerialPortWidget::initSendTools()
{
    sendBoxController = new SendBoxController(ui->textEdit, [this] { return formatSetting.SendList; }, ui->sendArea);
    ui->sendButtonsLayout->insertWidget(ui->sendButtonsLayout->indexOf(ui->sendBox) + 1,
                                        sendBoxController->optionsWidget());
    connect(sendBoxController, &SendBoxController::sendRequested, this, &SerialPortWidget::on_sendButton_clicked);
    connect(sendBoxController, &SendBoxController::optionsChanged, this, [this] {
        formatSetting.EnterSends = sendBoxController->enterSends();
        formatSetting.ClearAfterSend = sendBoxController->clearAfterSend();
    });

    auto *hexHint = new QLabel(ui->sendArea);
    hexHint->setObjectName(QStringLiteral("hexSendHint"));
    hexInputMarker = new HexInputMarker(ui->textEdit, hexHint, this);
    connect(ui->hexSendRadio, &QRadioButton::toggled, hexInputMarker, &HexInputMarker::setHexMode);

    macroBar = new MacroBar(this, ui->sendArea);
    connect(macroBar, &MacroBar::sendRequested, this, &SerialPortWidget::sendBytes);
    connect(macroBar, &MacroBar::macrosEdited, this, [this] { formatSetting.Macros = macroBar->macros(); });

    fileSender = new FileSender([this] { return sendBacklog(); }, this);
    connect(fileSender, &FileSender::chunkReady, this, &SerialPortWidget::sendFileChunk);

    auto *belowBox = new QHBoxLayout;
    belowBox->addWidget(hexHint);
    belowBox->addWidget(new FileSendPanel(fileSender, ui->sendArea), 1);
    auto *boxColumn = new QVBoxLayout;
    const int boxAt = ui->sendLayout->indexOf(ui->textEdit);
    ui->sendLayout->removeWidget(ui->textEdit);
    boxColumn->addWidget(macroBar);
    boxColumn->addWidget(ui->textEdit, 1);
    boxColumn->addLayout(belowBox);
    ui->sendLayout->insertLayout(boxAt, boxColumn, 1);
}

// The network transports read where to send from the panel at send time.
void SerialPortWidget::initTransports()
{
    serialLink = new SerialTransport(this);
    serverLink = new TcpServerTransport([this] {
        return ui->clientTw->topLevelItemCount() == 0 ? -1 : qMax(0, ui->clientTw->currentIndex().row());
    }, this);
    clientLink = new TcpClientTransport(this);
    udpLink = new UdpTransport([this] {
        return Endpoint{ui->dataBitsServerAddressBox->currentText(),
                        portFromText(ui->parityServerPortBox->currentText())};
    }, this);
    for (Transport *link : links()) {
        connect(link, &Transport::received, this, [this, link](const QByteArray &bytes) { receive(link, bytes); });
        connect(link, &Transport::message, this, &SerialPortWidget::showMessage);
        connect(link, &Transport::errorOccurred, this, [this](const QString &text) {
            lastError = text;
            hasError = true;
        });
    }
    connect(serverLink, &TcpServerTransport::clientsChanged, this, &SerialPortWidget::changeConnState);
}

// Reconnecting and the serial control lines, added to the panel here rather
// than in the form.
void SerialPortWidget::initLinkControls()
{
    reconnect = new ReconnectPolicy(this);
    connect(reconnect, &ReconnectPolicy::disconnected, this, [this] {
        pushNote(StatusTexts::disconnectedMarker(QTime::currentTime()));
    });
    connect(reconnect, &ReconnectPolicy::reconnected, this, [this] {
        pushNote(StatusTexts::reconnectedMarker(QTime::currentTime()));
    });
    reconnectBox = new QCheckBox(tr("Auto Reconnect"), ui->portGroup);
    reconnectBox->setObjectName(QStringLiteral("autoReconnectBox"));
    reconnectBox->setToolTip(tr("Reopen a lost serial port or TCP connection by itself"));
    ui->portGroupLayout->addWidget(reconnectBox, ui->portGroupLayout->rowCount(), 0, 1, 2);
    connect(reconnectBox, &QCheckBox::toggled, this, [this](bool on) {
        currentSettings.link.autoReconnect = on;
        reconnect->setEnabled(on);
    });

    controlLines = new ControlLinesPanel(serialLink, ui->panelWidget);
    ui->panelLayout->insertWidget(ui->panelLayout->indexOf(ui->portGroup) + 1, controlLines);
    connect(serialLink, &Transport::opened, controlLines, &ControlLinesPanel::refresh);
    connect(serialLink, &Transport::lost, controlLines, &ControlLinesPanel::refresh);
    showLinkOptions();
}

// Reconnecting serves serial ports and TCP clients; the lines, serial ports.
void SerialPortWidget::showLinkOptions()
{
    const bool serial = !networkPanel;
    reconnectBox->setVisible(serial || ui->baudRateModeBox->currentText() == QLatin1String("TCP Client"));
    controlLines->setVisible(serial);
}

QList<Transport *> SerialPortWidget::links() const
{
    return {serialLink, serverLink, clientLink, udpLink};
}

Transport *SerialPortWidget::linkFor(int mode) const
{
    switch (mode) {
    case SerialPortMode:
        return serialLink;
    case TcpServerMode:
        return serverLink;
    case TcpClientMode:
        return clientLink;
    case UdpServerMode:
    case UdpClientMode:
    case UdpGroupMode:
        return udpLink;
    default:
        return nullptr;
    }
}

QSerialPort *SerialPortWidget::serialPort() const
{
    return serialLink->port();
}

MultiClientServer *SerialPortWidget::server() const
{
    return serverLink->server();
}

// ---------------------------------------------------------------------------
// Connection lifecycle

bool SerialPortWidget::start(const QString &portName)
{
    if (!portName.isEmpty())
        setPortName(portName);
    updateSettings();
    startOnBeat(refreshTimer, 20, refreshPhase);

    if (m_runState == Paused && !pausedData.isEmpty()) {
        // Held bytes are delivered on every resume; the buffer is kept.
        pushByteArray(pausedData, true, RX);
    }
    m_runState = Running;
    started = true;

    switch (currentSettings.connMode) {
    case SerialPortMode:
        openPort(portName);
        reconnect->watch(serialLink, ReconnectPolicy::DeviceTiming);
        break;
    case UdpServerMode:
    case UdpClientMode:
    case UdpGroupMode:
        reconnect->stop();
        udpLink->setLocalPort(portFromText(ui->stopBitsClientAddressBox->currentText()));
        udpLink->open();
        break;
    case TcpServerMode:
        reconnect->stop();
        serverLink->setListenPort(portFromText(ui->parityServerPortBox->currentText()));
        serverLink->open();
        currentSettings.name = QStringLiteral("%1:%2").arg(server()->serverAddress().toString()).arg(server()->serverPort());
        break;
    case TcpClientMode:
        startTcpClient();
        reconnect->watch(clientLink, ReconnectPolicy::HostTiming);
        break;
    default:
        reconnect->stop();
        break;
    }

    formatSetting.currentLogFileName =
        expandLogFileName(formatSetting.LogFilePath, currentSettings.name, LogClock::now());
    startOnBeat(readTimer, 10);
    sendTimer->start();
    saveTimer->start();
    qCDebug(lcDefault) << "Start saveTimer";
    displayPortBuffer();
    return true;
}

bool SerialPortWidget::openPort(const QString &portName)
{
    PortSettings settings = currentSettings;
    if (!portName.isNull()) {
        settings.name = portName;
        qCDebug(lcDefault) << "setPortName:" << portName;
    }
    serialLink->setSettings(settings);
    return serialLink->openPort();
}

// The name of the port the session talks to, for its messages: the name the
// user chose, never the driver's shortened form of a device path.
QString SerialPortWidget::shownPortName() const
{
    return currentSettings.name;
}

void SerialPortWidget::stop()
{
    m_runState = Stopped;
    started = false;
    macroBar->stopRepeats();
    readTimer->stop();
    sendTimer->stop();
    saveTimer->stop();

    reconnect->stop();
    if (Transport *link = linkFor(currentSettings.connMode))
        link->close();

    m_runState = Stopped;
    onSaveData();
}

void SerialPortWidget::pause()
{
    sendTimer->stop();
    m_runState = Paused;
    onSaveData();
}

bool SerialPortWidget::portIsOpen() const
{
    switch (currentSettings.connMode) {
    case TcpServerMode:
    case TcpClientMode:
        // The client's socket in both modes: a server has none of its own.
        return clientLink->socket() && clientLink->socket()->isOpen();
    case SerialPortMode:
        return serialPort()->isOpen();
    default:
        return false;
    }
}

void SerialPortWidget::setPortName(const QString &name)
{
    currentSettings.name = name;
    const QSignalBlocker blocker(ui->portBox);
    selectPortEntry(ui->portBox, name);
}

// The serial device chosen in the port box: the entry's device, or what the
// user typed; empty for the network entry and the placeholder.
QString SerialPortWidget::boxPortName() const
{
    const int index = ui->portBox->currentIndex();
    if (index >= 0 && ui->portBox->itemText(index) == ui->portBox->currentText())
        return ui->portBox->itemData(index).toString();
    return ui->portBox->currentText().trimmed();
}

QString SerialPortWidget::chosenPortName() const
{
    const QString device = boxPortName();
    return device.isEmpty() ? embracedString(ui->portBox->currentText()) : device;
}

// ---------------------------------------------------------------------------
// Receive pipeline

void SerialPortWidget::pushByteArray(const QByteArray &data, bool countAsReceived, RXorTx direction)
{
    if (data.isEmpty())
        return;
    rxDataList.enqueue({currentTimeOfDay(), direction, data});
    if (direction == RX)
        plot->feed(data);
    if (countAsReceived)
        receivedCount += data.size();
    regulateIntake();
}

// While more than a burst waits to be shown or logged, the transport stops
// reading and the flood waits in the device or the system. Log text counts
// only while the log can be written: a failing log sheds its oldest text.
void SerialPortWidget::regulateIntake()
{
    const bool logging = formatSetting.LogSaveFlag && logProblem.isEmpty();
    const bool reading = rxDataList.wantsReading(logging ? dataLog.pendingBytes().size() : 0);
    for (Transport *link : links())
        link->setReading(reading);
}

void SerialPortWidget::pushNote(const QString &text)
{
    rxDataList.enqueue({currentTimeOfDay(), NOTE, text.toUtf8()});
}

void SerialPortWidget::onReadData()
{
    if (Transport *link = linkFor(currentSettings.connMode))
        link->poll();
}

// Datagrams and the messages of a server's clients are shown at once, even
// while paused.
void SerialPortWidget::receive(const Transport *link, const QByteArray &bytes)
{
    if (m_runState == Paused && (link == serialLink || link == clientLink)) {
        pausedData.append(bytes);
        return;
    }
    pushByteArray(bytes, true, RX);
}

void SerialPortWidget::onRefreshDisplay()
{
    displayPortBuffer();
    if (formatSetting.LogSaveFlag)
        dataLog.writeAhead(formatSetting);
    // Also with nothing queued: log text written since lets reading resume.
    regulateIntake();
    refreshConnectionDisplay();
    clientRows->showChanges();
}

void SerialPortWidget::displayPortBuffer()
{
    if (rxDataList.isEmpty())
        return;

    // A flood is worked off over several ticks, so the event loop keeps
    // answering: a tick renders at least a slice, then stops once it has
    // spent its time.
    constexpr qint64 tickBudgetNs = 6'000'000;
    QElapsedTimer spent;
    spent.start();
    qint64 rendered = 0;
    QString logBatch;
    while (!rxDataList.isEmpty() && (rendered < ReceiveQueue::SliceSize || spent.nsecsElapsed() < tickBudgetNs)) {
        const rxData chunk = rxDataList.dequeue();
        rendered += chunk.data.size();
        receiveFeed->show(chunk, formatSetting);
        if (!formatSetting.LogSaveFlag)
            continue;
        if (!formatSetting.RawLog)
            logBatch += renderer.renderForLog(chunk, formatSetting);
        else if (chunk.direction == RX || (chunk.direction == TX && formatSetting.RawLogSent))
            dataLog.appendBytes(chunk.data);
    }
    const int defaultLimit = 10 << 20;
    ui->receiveView->flush(formatSetting.DisplayBufferSize > 0 ? formatSetting.DisplayBufferSize : defaultLimit);
    if (formatSetting.LogSaveFlag)
        dataLog.appendLog(logBatch);
}

void SerialPortWidget::clear()
{
    receiveFeed->clear();
    receivedCount = 0;
    sentCount = 0;
    renderer.restartDisplayLine();
}

// ---------------------------------------------------------------------------
// Data log

DataLog::Result SerialPortWidget::saveLog()
{
    return dataLog.save(formatSetting, currentSettings.name, {serialPort()->portName(), serialPort()->baudRate()});
}

void SerialPortWidget::onSaveData()
{
    switch (saveLog()) {
    case DataLog::NameTooShort:
        showWarning(tr("Warning"), tr("Please input correct log file name!"));
        break;
    case DataLog::OpenFailed:
    case DataLog::WriteFailed:
    case DataLog::ForeignFile:
        // Said once when it starts; the log label keeps showing it.
        if (logProblem.isEmpty())
            showMessage(dataLog.lastErrorString(), 5000);
        logProblem = dataLog.lastErrorString();
        break;
    default:
        logProblem.clear();
        break;
    }
    updateCommonStatus();
}

void SerialPortWidget::showWarning(const QString &title, const QString &text)
{
    // Not exec(): a nested event loop would let the timers re-enter the session.
    auto *box = new QMessageBox(QMessageBox::Warning, title, text, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

// ---------------------------------------------------------------------------
// Send pipeline

QByteArray SerialPortWidget::encodeSendData(const QString &text)
{
    return encodeSendData(text, true);
}

QByteArray SerialPortWidget::encodeSendData(const QString &text, bool rewriteBox)
{
    if (text.isEmpty()) {
        ui->textEdit->setFocus();
        return QByteArray();
    }

    SendOptions options;
    options.hexMode = ui->hexSendRadio->isChecked();
    options.autoAddFeedLine = formatSetting.AutoAddFeedLine;
    options.lineEndingMode = formatSetting.LineEndingMode;
    options.formatSend = formatSetting.FormatSend;
    const EncodedSend encoded = encodeSendText(text, options);

    // Line-by-line sending encodes one line; rewriting the box with it would
    // throw the other lines away.
    if (options.hexMode && rewriteBox && ui->textEdit->toPlainText() != encoded.boxText)
        ui->textEdit->setPlainText(encoded.boxText);

    formatSetting.SendList = addToSendHistory(formatSetting.SendList, encoded.historyEntry);
    recordSent(encoded.bytes, encoded.bytes.size());
    updateSendListDisplay();
    return encoded.bytes;
}

void SerialPortWidget::recordSent(const QByteArray &data, qsizetype shownBytes)
{
    sentCount += data.size();
    if (formatSetting.DisplaySendMsg && !data.isEmpty() && shownBytes > 0) {
        pushByteArray(data.left(shownBytes), false, TX);
        displayPortBuffer();
    }
}

void SerialPortWidget::sendBytes(const QByteArray &data)
{
    recordSent(data, data.size());
    sendMessage(data);
}

// Only the start of a file is shown, so a large one cannot flood the view;
// the file panel sums up the rest.
void SerialPortWidget::sendFileChunk(const QByteArray &chunk, qint64 offset)
{
    const qint64 shownLimit = 64 << 10;
    recordSent(chunk, qsizetype(qMax<qint64>(0, shownLimit - offset)));
    sendMessage(chunk);
}

qint64 SerialPortWidget::sendBacklog() const
{
    const Transport *link = linkFor(currentSettings.connMode);
    return link ? link->sendBacklog() : -1;
}

void SerialPortWidget::updateSendListDisplay()
{
    ui->sendBox->clear();
    for (const QString &entry : std::as_const(formatSetting.SendList))
        ui->sendBox->addItem(sendHistoryLabel(entry));
}

void SerialPortWidget::sendMessage(const QByteArray &data)
{
    if (currentSettings.connMode == SerialPortMode && !serialPort()->isOpen()) {
        // Sending opens the port chosen in the panel.
        currentSettings.name = chosenPortName();
        serialLink->setSettings(currentSettings);
    }
    if (Transport *link = linkFor(currentSettings.connMode))
        link->write(data);
}

void SerialPortWidget::on_sendButton_clicked()
{
    sendMessage(encodeSendData(ui->textEdit->toPlainText()));
    sendBoxController->sent();
}

void SerialPortWidget::on_sendBox_activated(int index)
{
    if (index < 0 || index >= formatSetting.SendList.size())
        return;
    ui->textEdit->clear();
    ui->textEdit->setPlainText(formatSetting.SendList.at(index));
}

void SerialPortWidget::clearSendList()
{
    ui->textEdit->clear();
    ui->sendBox->clear();
    formatSetting.SendList.clear();
}

void SerialPortWidget::onSendData()
{
    const int mode = currentSettings.connMode;
    bool open = false;
    if (mode == SerialPortMode)
        open = serialPort()->isOpen();
    else if (mode == TcpServerMode || mode == TcpClientMode)
        open = portIsOpen();
    // UDP takes no part in timed sending.
    if (!open || !formatSetting.AutoSend)
        return;

    const QString text = ui->textEdit->toPlainText();
    if (!ui->cbLinebyLine->isChecked()) {
        sendMessage(encodeSendData(text));
        return;
    }
    const QStringList lines = text.split(QLatin1Char('\n'));
    lineIndex %= lines.size();
    const QString line = lines.at(lineIndex);
    ++lineIndex;
    sendMessage(encodeSendData(line, false));
}

void SerialPortWidget::on_autoSendBox_clicked()
{
    formatSetting.SendInterval = ui->sendIntervelSB->value();
    formatSetting.AutoSend = ui->autoSendBox->isChecked();
    startOnBeat(refreshTimer, 20, refreshPhase);
    qCDebug(lcDefault) << "Change refresh timer to " << refreshTimer->interval();
    if (ui->autoSendBox->isChecked()) {
        sendTimer->setInterval(ui->sendIntervelSB->value());
        qCDebug(lcDefault) << "Update sendTimer interval to" << ui->sendIntervelSB->value();
        if (m_runState != Stopped)
            sendTimer->start();
    }
}

void SerialPortWidget::on_sendIntervelSB_valueChanged(int value)
{
    formatSetting.SendInterval = value;
    if (sendTimer)
        sendTimer->setInterval(value);
}

void SerialPortWidget::on_cbLinebyLine_stateChanged(int)
{
    lineIndex = 0;
}

bool SerialPortWidget::isReceiveViewFocused() const
{
    return ui->receiveView->hasFocus();
}

void SerialPortWidget::sendKeyText(const QString &text)
{
    if (text.isEmpty() || !isReceiveViewFocused() || !serialPort()->isOpen()
        || formatSetting.SendMsgFormat != ASCII)
        return;
    sendMessage(text.toUtf8());
}

void SerialPortWidget::keyPressEvent(QKeyEvent *event)
{
    sendKeyText(event->text());
    QWidget::keyPressEvent(event);
}

// The read-only view takes the space bar's press for paging, so a space
// reaches the session on its release.
void SerialPortWidget::keyReleaseEvent(QKeyEvent *event)
{
    if (isReceiveViewFocused() && event->text() == QLatin1String(" ")) {
        qCDebug(lcDefault) << "  key input:" << event->text();
        sendKeyText(event->text());
    }
    QWidget::keyReleaseEvent(event);
}

// ---------------------------------------------------------------------------
// Network transports

void SerialPortWidget::startTcpClient()
{
    // A socket that failed its attempt stays: no second try while it does.
    if (clientLink->socket())
        return;
    const QString host = ui->dataBitsServerAddressBox->currentText();
    if (!currentSettings.lastTargetHost.contains(host)) {
        currentSettings.lastTargetHost.append(host);
        const QSignalBlocker blocker(ui->dataBitsServerAddressBox);
        ui->dataBitsServerAddressBox->clear();
        ui->dataBitsServerAddressBox->addItems(currentSettings.lastTargetHost);
        ui->dataBitsServerAddressBox->setCurrentText(host);
    }
    clientLink->setTarget({host, portFromText(ui->parityServerPortBox->currentText())});
    clientLink->open();
}

void SerialPortWidget::displayError(QAbstractSocket::SocketError error)
{
    clientLink->close();
    m_runState = Stopped;
    QString text;
    switch (error) {
    case QAbstractSocket::RemoteHostClosedError:
        return;
    case QAbstractSocket::HostNotFoundError:
        text = tr("The host was not found. Please check the host name and port settings.");
        break;
    case QAbstractSocket::ConnectionRefusedError:
        text = tr("The connection was refused by the peer. Make sure the fortune server is running, "
                  "and check that the host name and port settings are correct.");
        break;
    default:
        text = tr("The following error occurred: %1.").arg(clientLink->socket() ? clientLink->socket()->errorString()
                                                                                : QString());
        break;
    }
    auto *box = new QMessageBox(QMessageBox::Information, tr("Quorvane"), text, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void SerialPortWidget::changeConnState()
{
    clientRows->update(server() ? server()->clients() : QList<QTcpSocket *>());
}

// ---------------------------------------------------------------------------
// Session panel

void SerialPortWidget::fillPortsInfo()
{
    const PortScanner &scanner = PortScanner::shared();
    portListGeneration = scanner.generation();
    ui->portBox->clear();
    for (const PortBoxEntry &entry : portBoxEntries(scanner.ports())) {
        ui->portBox->addItem(entry.text, entry.portName.isEmpty() ? QVariant() : QVariant(entry.portName));
        if (!entry.details.isEmpty())
            ui->portBox->setItemData(ui->portBox->count() - 1, entry.details, Qt::ToolTipRole);
    }
}

void SerialPortWidget::fillPortsParameters()
{
    networkPanel = false;
    ui->baudRateModeLb->setText(tr("Baudrate"));
    ui->dataBitsIpLb->setText(tr("Data Bits"));
    ui->parityPortLb->setText(tr("Parity"));
    ui->stopBitsLb->setText(tr("Stop Bits"));
    ui->flowTypeLb->setText(tr("Flow Type"));

    fillChoices(ui->baudRateModeBox, baudRateChoices());
    fillChoices(ui->dataBitsServerAddressBox, dataBitsChoices());
    ui->dataBitsServerAddressBox->setCurrentIndex(3);
    fillChoices(ui->parityServerPortBox, parityChoices());
    fillChoices(ui->stopBitsClientAddressBox, stopBitsChoices());
    fillChoices(ui->flowControlClientPortBox, flowControlChoices());
    for (QComboBox *box : {ui->baudRateModeBox, ui->dataBitsServerAddressBox, ui->parityServerPortBox,
                           ui->stopBitsClientAddressBox, ui->flowControlClientPortBox})
        box->setEditable(false);

    ui->clientTw->hide();
    for (QWidget *widget : {static_cast<QWidget *>(ui->baudRateModeLb), static_cast<QWidget *>(ui->baudRateModeBox),
                            static_cast<QWidget *>(ui->dataBitsIpLb), static_cast<QWidget *>(ui->dataBitsServerAddressBox),
                            static_cast<QWidget *>(ui->parityPortLb), static_cast<QWidget *>(ui->parityServerPortBox),
                            static_cast<QWidget *>(ui->stopBitsLb), static_cast<QWidget *>(ui->stopBitsClientAddressBox),
                            static_cast<QWidget *>(ui->flowTypeLb), static_cast<QWidget *>(ui->flowControlClientPortBox)})
        widget->show();
}

void SerialPortWidget::fillTcpParameters()
{
    networkPanel = true;
    ui->baudRateModeLb->setText(tr("Mode"));
    ui->baudRateModeBox->setEditable(false);
    {
        const QSignalBlocker blocker(ui->baudRateModeBox);
        ui->baudRateModeBox->clear();
        ui->baudRateModeBox->addItems({QStringLiteral("TCP Client"), QStringLiteral("TCP Server"),
                                       QStringLiteral("UDP Client")});
        ui->baudRateModeBox->setCurrentIndex(0);
    }
    ui->dataBitsIpLb->setText(tr("Host"));
    ui->parityPortLb->setText(tr("Port"));
    ui->stopBitsLb->setText(tr("Local Port"));
    for (QComboBox *box : {ui->dataBitsServerAddressBox, ui->parityServerPortBox, ui->stopBitsClientAddressBox}) {
        box->clear();
        box->setEditable(true);
    }
    ui->flowTypeLb->hide();
    ui->flowControlClientPortBox->hide();
    ui->clientTw->hide();
}

void SerialPortWidget::on_portBox_currentIndexChanged(int)
{
    const bool network = ui->portBox->currentText().startsWith(QStringLiteral("TCP"));
    if (network == networkPanel)
        return;
    if (network) {
        fillTcpParameters();
        on_baudRateModeBox_currentTextChanged(ui->baudRateModeBox->currentText());
    } else {
        fillPortsParameters();
        showLinkOptions();
    }
}

void SerialPortWidget::on_baudRateModeBox_currentTextChanged(const QString &text)
{
    if (!networkPanel)
        return;
    showLinkOptions();

    auto showPair = [](QLabel *label, QComboBox *box, bool visible) {
        label->setVisible(visible);
        box->setVisible(visible);
    };
    auto setItems = [](QComboBox *box, const QStringList &items) {
        const QSignalBlocker blocker(box);
        box->clear();
        box->addItems(items);
    };
    const QString port = QString::number(currentSettings.lastTargetPort);
    const bool udpClientLike = text == QLatin1String("UDP Client") || text == QLatin1String("UDP Group");

    showPair(ui->stopBitsLb, ui->stopBitsClientAddressBox, udpClientLike);
    showPair(ui->flowTypeLb, ui->flowControlClientPortBox, udpClientLike);
    ui->clientTw->setVisible(text == QLatin1String("TCP Server"));
    ui->parityPortLb->setText(udpClientLike ? tr("Dest Port") : tr("Port"));

    if (text == QLatin1String("TCP Client")) {
        ui->dataBitsIpLb->setText(tr("Host"));
        setItems(ui->dataBitsServerAddressBox, currentSettings.lastTargetHost);
        ui->parityServerPortBox->setCurrentText(port);
    } else if (text == QLatin1String("TCP Server")) {
        ui->dataBitsIpLb->setText(tr(" IP"));
        setItems(ui->dataBitsServerAddressBox, localAddressNames());
        ui->parityServerPortBox->setCurrentText(port);
    } else if (text == QLatin1String("UDP Server")) {
        ui->dataBitsIpLb->setText(tr(" IP"));
        setItems(ui->dataBitsServerAddressBox, localAddressNames());
        ui->parityServerPortBox->setCurrentText(QStringLiteral("60000"));
    } else if (udpClientLike) {
        ui->dataBitsIpLb->setText(tr("Dest Host"));
        ui->dataBitsServerAddressBox->setCurrentText(text == QLatin1String("UDP Client") ? QStringLiteral("127.0.0.1")
                                                                                          : QStringLiteral("224.0.1.0"));
        ui->parityServerPortBox->setCurrentText(port);
        ui->stopBitsLb->setText(tr("Local IP"));
        setItems(ui->stopBitsClientAddressBox, localAddressNames());
        ui->flowTypeLb->setText(tr("Local Port"));
        ui->flowControlClientPortBox->setEditable(true);
        ui->flowControlClientPortBox->setCurrentText(QStringLiteral("60001"));
    }
}

void SerialPortWidget::on_baudRateModeBox_currentIndexChanged(int index)
{
    checkCustomBaudRatePolicy(index);
}

void SerialPortWidget::checkCustomBaudRatePolicy(int index)
{
    if (networkPanel || index < 0)
        return;
    if (ui->baudRateModeBox->itemData(index).isValid()) {
        ui->baudRateModeBox->setEditable(false);
        return;
    }
    ui->baudRateModeBox->setEditable(true);
    ui->baudRateModeBox->clearEditText();
    ui->baudRateModeBox->lineEdit()->setValidator(baudRateValidator);
}

void SerialPortWidget::on_dataBitsServerAddressBox_currentIndexChanged(int index)
{
    const QVariant value = ui->dataBitsServerAddressBox->itemData(index);
    if (!networkPanel && value.isValid())
        serialPort()->setDataBits(QSerialPort::DataBits(value.toInt()));
}

void SerialPortWidget::on_parityServerPortBox_currentIndexChanged(int index)
{
    const QVariant value = ui->parityServerPortBox->itemData(index);
    if (!networkPanel && value.isValid())
        serialPort()->setParity(QSerialPort::Parity(value.toInt()));
}

void SerialPortWidget::on_stopBitsClientAddressBox_currentIndexChanged(int index)
{
    const QVariant value = ui->stopBitsClientAddressBox->itemData(index);
    if (!networkPanel && value.isValid())
        serialPort()->setStopBits(QSerialPort::StopBits(value.toInt()));
}

void SerialPortWidget::on_flowControlClientPortBox_currentIndexChanged(int index)
{
    const QVariant value = ui->flowControlClientPortBox->itemData(index);
    if (!networkPanel && value.isValid()) {
        serialPort()->setFlowControl(QSerialPort::FlowControl(value.toInt()));
        controlLines->refresh();
    }
}

// The program scans its ports once a second for every session; this session
// only refills its box when that scan found a different list.
void SerialPortWidget::onRefreshAvalablePorts()
{
    if (PortScanner::shared().generation() != portListGeneration) {
        qCDebug(lcDefault) << "Refill Ports Info.";
        const QString chosen = networkPanel ? QString() : boxPortName();
        {
            const QSignalBlocker blocker(ui->portBox);
            fillPortsInfo();
        }
        if (!chosen.isEmpty()) {
            selectPortEntry(ui->portBox, chosen);
        } else {
            const int index = networkPanel ? ui->portBox->findText(networkEntry)
                                           : ui->portBox->findData(currentSettings.name);
            if (index >= 0)
                ui->portBox->setCurrentIndex(index);
        }
        qCDebug(lcDefault) << "currnetSettings.name =" << currentSettings.name;
    }
    if (!networkPanel)
        controlLines->refresh();
}

// The user's changes to the panel mark the document modified; changes made
// by loading settings into it do not.
void SerialPortWidget::watchPanelEdits()
{
    panelBaseline = panelSignature();
    const auto check = [this] {
        ++panelRevision;
        if (applyingSettings)
            return;
        const QString signature = panelSignature();
        if (signature == panelBaseline)
            return;
        panelBaseline = signature;
        emit settingsEdited();
    };
    for (QComboBox *box : ui->panelWidget->findChildren<QComboBox *>())
        connect(box, &QComboBox::currentTextChanged, this, check);
    for (QAbstractButton *button : ui->panelWidget->findChildren<QAbstractButton *>()) {
        if (button->isCheckable())
            connect(button, &QAbstractButton::toggled, this, check);
    }
    for (QSpinBox *box : ui->panelWidget->findChildren<QSpinBox *>())
        connect(box, &QSpinBox::valueChanged, this, check);
}

QString SerialPortWidget::panelSignature() const
{
    QStringList values;
    for (const QComboBox *box : ui->panelWidget->findChildren<QComboBox *>())
        values << box->currentText();
    for (const QAbstractButton *button : ui->panelWidget->findChildren<QAbstractButton *>()) {
        if (button->isCheckable())
            values << QString::number(button->isChecked());
    }
    for (const QSpinBox *box : ui->panelWidget->findChildren<QSpinBox *>())
        values << QString::number(box->value());
    return values.join(QChar(0));
}

void SerialPortWidget::copyPanelChecks()
{
    formatSetting.ReceiveMsgFormat = ui->asciiRadio->isChecked() ? ASCII : HEX;
    formatSetting.AutoFeedLine = ui->autoFeedBox->isChecked();
    formatSetting.DisplaySendMsg = ui->displaySendBox->isChecked();
    formatSetting.DisplayMsgTime = ui->displayTimeBox->isChecked();
    formatSetting.SendMsgFormat = ui->asciiSendRaido->isChecked() ? ASCII : HEX;
    viewOptions->copyTo(formatSetting.View);
}

// What the connection's status, the send button and the title bar show; the
// link's part is a few numbers that change with its state.
std::array<qint64, 7> SerialPortWidget::linkFacts() const
{
    switch (currentSettings.connMode) {
    case SerialPortMode: {
        const QSerialPort *port = serialPort();
        if (!port->isOpen())
            return {0, reconnect->isWaiting()};
        return {1, port->baudRate(), port->dataBits(), port->parity(), port->stopBits(), port->flowControl()};
    }
    case TcpClientMode:
        return {clientLink->socketState()};
    case TcpServerMode:
        if (const MultiClientServer *listener = server())
            return {1, listener->clients().isEmpty(), listener->serverPort()};
        return {};
    case UdpServerMode:
    case UdpClientMode:
    case UdpGroupMode:
        if (const QUdpSocket *socket = udpLink->socket())
            return {1, socket->state(), socket->localPort()};
        return {};
    default:
        return {};
    }
}

// The texts are made again only when something they show changed, which
// few of the refreshes find.
void SerialPortWidget::refreshConnectionDisplay()
{
    copyPanelChecks();
    if (!statusGate.changed(linkFacts(), currentSettings.connMode, m_runState, started, currentSettings.name,
                            panelRevision, palette().cacheKey())) {
        updateCommonStatus();
        return;
    }
    ui->sendButton->setText(m_runState == Running ? tr("Send") : tr("Open"));
    switch (currentSettings.connMode) {
    case SerialPortMode:
        onRefreshSerialPortDisplay();
        break;
    case TcpServerMode:
        onRefreshTcpServerDisplay();
        break;
    case TcpClientMode:
        onRefreshTcpClientDisplay();
        break;
    case UdpServerMode:
    case UdpClientMode:
    case UdpGroupMode:
        onRefreshUdpClientDisplay();
        break;
    default:
        updateCommonStatus();
        break;
    }
    updateTitleBar();
}

void SerialPortWidget::updateTitleBar()
{
    const int mode = networkPanel ? panelNetworkMode() : SerialPortMode;
    titleBar->setTitle(SessionTitleBar::titleFor(mode, chosenPortName(),
                                                 ui->dataBitsServerAddressBox->currentText(),
                                                 ui->parityServerPortBox->currentText()));
    titleBar->setLamp(SessionTitleBar::lampFor(started, m_runState, connectionOk));
}

int SerialPortWidget::panelNetworkMode() const
{
    const QString mode = ui->baudRateModeBox->currentText();
    for (const NetworkMode &entry : networkModes()) {
        if (mode.startsWith(entry.name))
            return entry.mode;
    }
    return currentSettings.connMode;
}

void SerialPortWidget::setConnectionStatus(const QString &text, bool ok)
{
    connectionOk = ok;
    const QString html = StatusColors::html(text, ok, palette());
    if (connectionStatusLabel->text() != html)
        connectionStatusLabel->setText(html);
}

void SerialPortWidget::onRefreshSerialPortDisplay()
{
    if (serialPort()->isOpen()) {
        setConnectionStatus(QLatin1Char(' ') + StatusTexts::serialOpened(shownPortName(), *serialPort()), true);
        if (m_runState != Paused)
            m_runState = Running;
    } else if (reconnect->isWaiting()) {
        setConnectionStatus(QLatin1Char(' ') + StatusTexts::serialWaiting(shownPortName()), false);
    } else {
        // A closed port is shown by the name chosen in the panel, which the
        // next start opens.
        setConnectionStatus(QLatin1Char(' ') + StatusTexts::serialClosed(chosenPortName()),
                            false);
    }
    updateCommonStatus();
}

namespace {

// The run state follows the socket, except that a pause is the user's to end.
int followSocket(QAbstractSocket::SocketState state, int runState)
{
    if (state == QAbstractSocket::UnconnectedState)
        return Stopped;
    if (state == QAbstractSocket::ConnectedState && runState != Paused)
        return Running;
    return runState;
}

} // namespace

void SerialPortWidget::onRefreshTcpClientDisplay()
{
    const QAbstractSocket::SocketState socketState = clientLink->socketState();
    const StatusTexts::Status state = StatusTexts::socketState(socketState);
    m_runState = followSocket(socketState, m_runState);
    setConnectionStatus(state.text, state.ok);
    updateCommonStatus();
}

void SerialPortWidget::onRefreshUdpClientDisplay()
{
    if (const QUdpSocket *socket = udpLink->socket()) {
        const QString bound = StatusTexts::udpBound(socket->localAddress().toString(), socket->localPort());
        const StatusTexts::Status state = StatusTexts::socketState(socket->state(), bound);
        m_runState = followSocket(socket->state(), m_runState);
        setConnectionStatus(state.text, state.ok);
    }
    updateCommonStatus();
}

void SerialPortWidget::onRefreshTcpServerDisplay()
{
    if (const MultiClientServer *listener = server()) {
        const QString address = listener->serverAddress().toString();
        const quint16 port = listener->serverPort();
        QString text;
        if (listener->clients().isEmpty()) {
            text = StatusTexts::serverWaiting(address, port);
            ui->sendButton->setText(tr("Open"));
        } else {
            text = StatusTexts::serverListening(address, port);
            ui->sendButton->setText(tr("Send"));
            if (m_runState != Paused)
                m_runState = Running;
        }
        setConnectionStatus(text, true);
    }
    updateCommonStatus();
}

void SerialPortWidget::createStatusBar()
{
    statusBar = new QStatusBar(this);
    statusBar->setSizeGripEnabled(false);
    connectionStatusLabel = new QLabel;
    rxLabel = new CounterLabel(200);
    txLabel = new CounterLabel(200);
    logFileLabel = new QLabel;
    messageLabel = new QLabel;
    const QList<QLabel *> labels{connectionStatusLabel, rxLabel, txLabel, logFileLabel, messageLabel};
    for (QLabel *label : labels) {
        label->setIndent(3);
        statusBar->addWidget(label, label == messageLabel ? 1 : 0);
    }
    // Messages get a label of their own rather than the bar's temporary
    // message, which would be painted over the status labels; a long one
    // must not widen the session either.
    messageLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    messageTimer = new QTimer(this);
    messageTimer->setSingleShot(true);
    connect(messageTimer, &QTimer::timeout, messageLabel, &QLabel::clear);
    ui->verticalLayout->addWidget(statusBar);
    updateCommonStatus();
}

void SerialPortWidget::updateCommonStatus()
{
    if (!countersGate.changed(receivedCount, sentCount, formatSetting.LogSaveFlag, formatSetting.currentLogFileName,
                              logProblem, palette().cacheKey()))
        return;
    const QString rx = tr("Rx: %L1 Bytes").arg(receivedCount);
    const QString tx = tr("Tx: %L1 Bytes").arg(sentCount);
    QString log = formatSetting.LogSaveFlag ? formatSetting.currentLogFileName : QStringLiteral("  ");
    if (formatSetting.LogSaveFlag && !logProblem.isEmpty())
        log = StatusColors::html(logProblem.toHtmlEscaped(), false, palette());
    rxLabel->setCount(rx);
    txLabel->setCount(tx);
    if (logFileLabel->text() != log)
        logFileLabel->setText(log);
}

QString SerialPortWidget::connectionStatusText() const
{
    return connectionStatusLabel->text();
}

QString SerialPortWidget::rxStatusText() const
{
    return rxLabel->text();
}

QString SerialPortWidget::txStatusText() const
{
    return txLabel->text();
}

QString SerialPortWidget::logFileText() const
{
    return logFileLabel->text();
}

void SerialPortWidget::setStatusBarVisible(bool visible)
{
    statusBar->setVisible(visible);
}

void SerialPortWidget::showMessage(const QString &text, int milliseconds)
{
    messageLabel->setText(text);
    messageLabel->setToolTip(text);
    messageTimer->start(milliseconds);
}

QString SerialPortWidget::currentMessage() const
{
    return messageLabel->text();
}

void SerialPortWidget::updateSplitterSizes(const QList<int> &sizes)
{
    ui->splitter->setSizes(sizes);
    if (sizes.size() == 2) {
        formatSetting.SplitterLeft = sizes.at(0);
        formatSetting.SplitterRight = sizes.at(1);
    }
}

void SerialPortWidget::on_splitter_splitterMoved(int, int)
{
    const QList<int> sizes = ui->splitter->sizes();
    formatSetting.SplitterLeft = sizes.value(0);
    formatSetting.SplitterRight = sizes.value(1);
}

// ---------------------------------------------------------------------------
// Records <-> panel

void SerialPortWidget::updateSettings()
{
    currentSettings.name = chosenPortName();
    if (ui->portBox->currentText().startsWith(QStringLiteral("TCP"))) {
        currentSettings.connMode = panelNetworkMode();
        currentSettings.lastTargetPort = portFromText(ui->parityServerPortBox->currentText());
    } else {
        currentSettings.connMode = SerialPortMode;
        currentSettings.baudRate = ui->baudRateModeBox->currentText().toInt();
        currentSettings.dataBits = ui->dataBitsServerAddressBox->currentData().toInt();
        currentSettings.parity = ui->parityServerPortBox->currentData().toInt();
        currentSettings.stopBits = ui->stopBitsClientAddressBox->currentData().toInt();
        currentSettings.flowControl = ui->flowControlClientPortBox->currentData().toInt();
    }
    copyPanelChecks();
    currentSettings.link.dataTerminalReady = serialLink->dataTerminalReady();
    currentSettings.link.requestToSend = serialLink->requestToSend();
    currentSettings.link.breakDuration = controlLines->breakDuration();
    formatSetting.Plot = plot->settings();
    formatSetting.AutoSend = ui->autoSendBox->isChecked();
    if (sendTimer->interval() != ui->sendIntervelSB->value()) {
        sendTimer->setInterval(ui->sendIntervelSB->value());
        qCDebug(lcDefault) << "Update sendTimer interval to" << ui->sendIntervelSB->value();
    }
}

void SerialPortWidget::updateDisplay()
{
    const QScopedValueRollback<bool> applying(applyingSettings, true);
    if (currentSettings.connMode == SerialPortMode) {
        if (!currentSettings.name.isEmpty())
            selectPortEntry(ui->portBox, currentSettings.name);
        else if (ui->portBox->currentText() == networkEntry)
            ui->portBox->setCurrentIndex(0);
        on_portBox_currentIndexChanged(ui->portBox->currentIndex());

        const int baudIndex = ui->baudRateModeBox->findData(currentSettings.baudRate);
        if (baudIndex >= 0) {
            ui->baudRateModeBox->setCurrentIndex(baudIndex);
        } else {
            ui->baudRateModeBox->setCurrentIndex(ui->baudRateModeBox->count() - 1);
            ui->baudRateModeBox->setEditText(QString::number(currentSettings.baudRate));
        }
        selectData(ui->dataBitsServerAddressBox, currentSettings.dataBits);
        selectData(ui->parityServerPortBox, currentSettings.parity);
        selectData(ui->stopBitsClientAddressBox, currentSettings.stopBits);
        selectData(ui->flowControlClientPortBox, currentSettings.flowControl);
    } else {
        ui->portBox->setCurrentIndex(ui->portBox->findText(networkEntry));
        on_portBox_currentIndexChanged(ui->portBox->currentIndex());
        const QString mode = networkModeName(currentSettings.connMode);
        if (!mode.isEmpty()) {
            if (ui->baudRateModeBox->findText(mode) < 0)
                ui->baudRateModeBox->addItem(mode);
            ui->baudRateModeBox->setCurrentText(mode);
            on_baudRateModeBox_currentTextChanged(mode);
        }
    }

    ui->asciiRadio->setChecked(formatSetting.ReceiveMsgFormat != HEX);
    ui->hexRadio->setChecked(formatSetting.ReceiveMsgFormat == HEX);
    viewOptions->show(formatSetting.View, formatSetting.ReceiveMsgFormat == HEX);
    ui->autoFeedBox->setChecked(formatSetting.AutoFeedLine);
    ui->displaySendBox->setChecked(formatSetting.DisplaySendMsg);
    ui->displayTimeBox->setChecked(formatSetting.DisplayMsgTime);
    ui->asciiSendRaido->setChecked(formatSetting.SendMsgFormat != HEX);
    ui->hexSendRadio->setChecked(formatSetting.SendMsgFormat == HEX);
    ui->autoSendBox->setChecked(formatSetting.AutoSend);
    if (formatSetting.SendInterval > 0)
        ui->sendIntervelSB->setValue(formatSetting.SendInterval);
    if (!formatSetting.LogFont.family().isEmpty()) {
        ui->receiveView->setFont(formatSetting.LogFont);
        ui->textEdit->setFont(formatSetting.LogFont);
    }
    updateSplitterSizes({formatSetting.SplitterLeft, formatSetting.SplitterRight});
    updateSendListDisplay();
    sendBoxController->setOptions(formatSetting.EnterSends, formatSetting.ClearAfterSend);
    if (macroBar->macros() != formatSetting.Macros)
        macroBar->setMacros(formatSetting.Macros);
    plot->applySettings(formatSetting.Plot);
    reconnectBox->setChecked(currentSettings.link.autoReconnect);
    serialLink->setDataTerminalReady(currentSettings.link.dataTerminalReady);
    serialLink->setRequestToSend(currentSettings.link.requestToSend);
    controlLines->setBreakDuration(currentSettings.link.breakDuration);
    controlLines->refresh();
    ui->receiveView->setHighlightRules(formatSetting.View.highlightRules);
    panelBaseline = panelSignature();
}
