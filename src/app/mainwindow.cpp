#include "app/mainwindow.h"
#include "app/startup.h"
#include "ui_mainwindow.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QApplication>
#include <QDateTime>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLocale>
#include <QProcess>
#include <QProgressBar>
#include <QScrollArea>
#include <QSerialPortInfo>
#include <QSettings>
#include <QTimer>
#include <QUrl>

#include "common/portscanner.h"
#include "common/logging.h"
#include "common/serialportlist.h"
#include "common/statuscolors.h"
#include "common/texthelpers.h"
#include "dialogs/multiportsettingdlg.h"
#include "dialogs/newconnection.h"
#include "dialogs/settingsdialog.h"
#include "plot/sessionplot.h"
#include "session/serialportwidget.h"
#include "tools/asciicode.h"
#include "tools/toolbox.h"
#include "view/receiveview.h"
#include "workspace/sessiontitlebar.h"

namespace {

const QString AppTitle = QStringLiteral("Quorvane");
const QString HomepageUrl = QStringLiteral("https://www.verdane.example/quorvane");
const QList<int> CollapsedPanel = {0, 100};

QLabel *statusLabel(const char *objectName, int maxWidth, int indent)
{
    auto *label = new QLabel;
    label->setObjectName(QLatin1String(objectName));
    if (maxWidth > 0)
        label->setMaximumWidth(maxWidth);
    label->setIndent(indent);
    return label;
}

QString folderOf(const QString &fileName)
{
    return QFileInfo(fileName).absolutePath();
}

} // namespace

QString MainWindow::documentFilter()
{
    return tr("Quorvane files (*.qvn)");
}

MainWindow::MainWindow(QWidget *parent, const QString &startDocument)
    : QMainWindow(parent), ui(new Ui::MainWindow)
{
    ui->setupUi(this);
    createRecentFileActions();
    adoptWorkspaceIntoScrollArea();

    displayTimer = new QTimer(this);
    connect(displayTimer, &QTimer::timeout, this, &MainWindow::onUpdateDisplay);
    displayTimer->start(100);
    errorTimer = new QTimer(this);
    connect(errorTimer, &QTimer::timeout, this, &MainWindow::clearErrorMessage);

    QSettings store;
    readSettings(store);

    ui->menuDebug->menuAction()->setVisible(false);
    addPlotAction();
    addFindAction();

    appendSession();
    ui->acViewQuickSettings->setChecked(true);
    createStatusBar();
    updateGrid();

    PortSettings port = sessions[0]->portSettings();
    FormatSetting format = sessions[0]->formatSettings();
    prefs.applyTo(port, format);
    format.currentLogFileName = currentLogFile;
    sessions[0]->setPortSettings(port);
    sessions[0]->setFormatSettings(format);
    qCDebug(lcDefault) << "MainWindow: lastBaudrate=" << port.baudRate;
    sessions[0]->updateDisplay();

    setWindowTitle(AppTitle + QStringLiteral("[*]"));

    const QString lastDocument = prefs.recentFiles.value(0);
    if (!startDocument.isEmpty())
        loadFile(startDocument);
    else if (prefs.openLastConnection && !lastDocument.isEmpty() && QFileInfo::exists(lastDocument))
        loadFile(lastDocument);

    runState = Stopped;
    if (prefs.openLastConnection)
        start(QString());
}

MainWindow::~MainWindow()
{
    // Focus moves while the widgets below go away; by then this is no
    // longer a main window to tell.
    disconnect(qApp, nullptr, this, nullptr);
    displayTimer->stop();
    QSettings store;
    qCDebug(lcDefault) << "position:" << pos() << "size:" << size();
    storeWindowGeometry(*this, store);
    for (SerialPortWidget *&session : sessions) {
        delete session;
        session = nullptr;
    }
    delete ui;
}

SerialPortWidget *MainWindow::session(int index) const
{
    return index >= 0 && index < portCount ? sessions[size_t(index)] : nullptr;
}

int MainWindow::indexOfSession(const SerialPortWidget *wanted) const
{
    for (int i = 0; i < portCount; ++i) {
        if (sessions[size_t(i)] == wanted)
            return i;
    }
    return -1;
}

SerialPortWidget *MainWindow::maximizedWorkspaceSession() const
{
    return maximizedSession;
}

// The session Close Session and Clear Session act on: the one given the
// whole workspace, else the one that last held the keyboard focus.
SerialPortWidget *MainWindow::currentSession() const
{
    if (maximizedSession)
        return maximizedSession;
    if (indexOfSession(focusedSession) >= 0)
        return focusedSession;
    return portCount == 1 ? sessions[0] : nullptr;
}

// --- hooks ---------------------------------------------------------------

QString MainWindow::chooseOpenFile(const QString &caption, const QString &folder, const QString &filter)
{
    return QFileDialog::getOpenFileName(this, caption, folder, filter);
}

QString MainWindow::chooseSaveFile(const QString &caption, const QString &folder, const QString &filter)
{
    return QFileDialog::getSaveFileName(this, caption, folder, filter);
}

QMessageBox::StandardButton MainWindow::ask(QMessageBox::Icon icon, const QString &title, const QString &text,
                                            QMessageBox::StandardButtons buttons)
{
    QMessageBox box(icon, title, text, buttons, this);
    return QMessageBox::StandardButton(box.exec());
}

int MainWindow::askSessionsPerRow(int current)
{
    bool ok = false;
    const int value = QInputDialog::getInt(this, tr("Set Port Number Per Column"), tr("Port Number Per Column:"),
                                           current, 1, MaxSessions, 1, &ok);
    return ok ? value : current;
}

bool MainWindow::runDialog(QDialog &dialog)
{
    return dialog.exec() == QDialog::Accepted;
}

bool MainWindow::startSession(SerialPortWidget &session, const QString &portName)
{
    return session.start(portName);
}

// --- construction helpers --------------------------------------------------

void MainWindow::createRecentFileActions()
{
    // The recent files sit between the two separators above Exit.
    const QList<QAction *> fileActions = ui->fileMenu->actions();
    QAction *separatorAboveExit = fileActions.value(fileActions.indexOf(ui->acFileExit) - 1);
    for (QAction *&action : recentFileActions) {
        action = new QAction(this);
        action->setVisible(false);
        connect(action, &QAction::triggered, this, &MainWindow::openRecentFile);
        ui->fileMenu->insertAction(separatorAboveExit, action);
    }
}

// Sessions keep a usable size and the workspace scrolls, so that no number
// of sessions pushes the window past the screen.
void MainWindow::adoptWorkspaceIntoScrollArea()
{
    auto *scrollArea = new QScrollArea;
    scrollArea->setObjectName(QStringLiteral("workspaceScrollArea"));
    scrollArea->setWidgetResizable(true);
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setWidget(takeCentralWidget());
    setCentralWidget(scrollArea);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        for (int i = 0; i < portCount; ++i) {
            if (sessions[size_t(i)]->isAncestorOf(now))
                focusedSession = sessions[size_t(i)];
        }
    });
}

void MainWindow::createStatusBar()
{
    errorLabel = statusLabel("errorLabel", 500, -1);
    stateLabel1 = statusLabel("stateLabel1", 500, 3);
    stateLabel2 = statusLabel("stateLabel2", 300, 3);
    stateLabel3 = statusLabel("stateLabel3", 300, 3);
    logLabel = statusLabel("logLabel", 500, 3);
    logLabel->setOpenExternalLinks(true);
    noticeLabel = statusLabel("noticeLabel", 0, 3);
    connect(noticeLabel, &QLabel::linkActivated, this, &MainWindow::openURL);

    ui->statusBar->addWidget(errorLabel, 0);
    ui->statusBar->addWidget(stateLabel1, 3);
    ui->statusBar->addWidget(stateLabel2, 3);
    ui->statusBar->addWidget(stateLabel3, 3);
    ui->statusBar->addPermanentWidget(logLabel, 3);
    ui->statusBar->addPermanentWidget(noticeLabel, 1);
}

void MainWindow::readSettings(QSettings &store)
{
    prefs = Preferences::read(store);
    currentLogFile = QStringLiteral("NULL");
    ui->acControlOpen->setChecked(prefs.openLastConnection);
    if (!prefs.recentFiles.isEmpty())
        updateRecentFileActions(true);
    updateLanguageChecks();
}

void MainWindow::writeSettings()
{
    SerialPortWidget *first = sessions[0];
    first->updateSettings();
    const int splitterLeft = prefs.splitterLeft;
    const int splitterRight = prefs.splitterRight;
    prefs.takeFrom(first->portSettings(), first->formatSettings());
    // A collapsed panel is not a size the user chose.
    if (!ui->acViewQuickSettings->isChecked()) {
        prefs.splitterLeft = splitterLeft;
        prefs.splitterRight = splitterRight;
    }
    prefs.lastFile = curFile;
    QSettings store;
    prefs.write(store);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    qCDebug(lcDefault) << "closeEvent...";
    if (!shuttingDown && !okToLoseUnloggedText()) {
        event->ignore();
        return;
    }
    hide();
    writeSettings();
    event->accept();
}

// Log text that cannot reach its file is lost on quitting: the user decides.
bool MainWindow::okToLoseUnloggedText()
{
    qint64 unlogged = 0;
    for (int i = 0; i < portCount; ++i) {
        SerialPortWidget *session = sessions[size_t(i)];
        session->onSaveData();
        if (session->hasLogProblem())
            unlogged += session->unloggedBytes();
    }
    return unlogged == 0
        || ask(QMessageBox::Warning, AppTitle,
               tr("%L1 bytes of log text cannot be written and would be lost.\nQuit anyway?").arg(unlogged),
               QMessageBox::Yes | QMessageBox::No)
        == QMessageBox::Yes;
}

// A termination signal: everything Quit saves is saved, without questions.
void MainWindow::shutDown()
{
    shuttingDown = true;
    close();
    QCoreApplication::quit();
}

// --- workspace -------------------------------------------------------------

SerialPortWidget *MainWindow::appendSession()
{
    if (portCount >= MaxSessions) {
        qCWarning(lcDefault) << "appendSession: workspace is full at" << portCount;
        return nullptr;
    }
    auto *session = new SerialPortWidget;
    sessions[size_t(portCount)] = session;
    ++portCount;
    const QPointer<SerialPortWidget> guarded(session);
    SessionTitleBar *titleBar = session->sessionTitleBar();
    // Queued: the session goes away with the button that asked for it.
    connect(titleBar, &SessionTitleBar::closeRequested, this, [this, guarded] { removeSession(guarded); },
            Qt::QueuedConnection);
    connect(titleBar, &SessionTitleBar::maximizeToggled, this, [this, guarded] { toggleMaximized(guarded); });
    connect(session, &SerialPortWidget::settingsEdited, this, [this] { setWindowModified(true); });
    return session;
}

void MainWindow::removeSession(SerialPortWidget *session)
{
    const int index = indexOfSession(session);
    if (index < 0 || portCount < 2)
        return;
    destroySession(index);
    std::move(sessions.begin() + index + 1, sessions.begin() + portCount, sessions.begin() + index);
    --portCount;
    sessions[size_t(portCount)] = nullptr;
    if (ui->acViewHorizontal->isChecked())
        portNumberPerColumn = portCount;
    updateGrid();
    setWindowModified(true);
    qCDebug(lcDefault) << "removeSession: Port Number =" << portCount;
}

void MainWindow::toggleMaximized(SerialPortWidget *session)
{
    if (indexOfSession(session) < 0)
        return;
    maximizedSession = maximizedSession == session ? nullptr : session;
    updateGrid();
}

void MainWindow::destroySession(int index)
{
    SerialPortWidget *&session = sessions[size_t(index)];
    if (!session)
        return;
    session->hide();
    ui->gridLayout->removeWidget(session);
    session->stop();
    delete session;
    session = nullptr;
}

void MainWindow::destroyAllSessions()
{
    for (int i = 0; i < MaxSessions; ++i)
        destroySession(i);
    portCount = 0;
}

void MainWindow::updateGrid()
{
    for (SerialPortWidget *session : sessions) {
        if (!session)
            continue;
        session->hide();
        ui->gridLayout->removeWidget(session);
    }
    for (int i = 0; i < portCount; ++i) {
        const int row = portNumberPerColumn > 0 ? i / portNumberPerColumn : 0;
        const int column = i - row * portNumberPerColumn;
        ui->gridLayout->addWidget(sessions[size_t(i)], row, column);
        sessions[size_t(i)]->show();
    }

    const bool single = portCount == 1;
    ui->statusBar->setVisible(single);
    if (sessions[0])
        sessions[0]->setStatusBarVisible(!single);

    const QList<int> splitterSizes = ui->acViewQuickSettings->isChecked()
                                         ? QList<int>{prefs.splitterLeft, prefs.splitterRight}
                                         : CollapsedPanel;
    for (int i = 0; i < portCount; ++i) {
        SerialPortWidget *session = sessions[size_t(i)];
        session->updateSplitterSizes(splitterSizes);
        session->sessionTitleBar()->setClosable(portCount > 1);
        if (maximizedSession && session != maximizedSession)
            session->hide();
    }
}

void MainWindow::start(const QString &name)
{
    runState = Running;
    if (!name.isEmpty()) {
        startSession(*sessions[0], name);
        sessions[0]->updateSplitterSizes(CollapsedPanel);
        return;
    }
    for (int i = 0; i < portCount; ++i) {
        if (startSession(*sessions[size_t(i)], QString()))
            continue;
        // The first session's port is named whichever session failed.
        const QString text = tr("Serial Port %1 OPEN FAILED").arg(firstPortName());
        if (i == 0)
            ask(QMessageBox::Warning, AppTitle, text, QMessageBox::Ok);
        else
            qCWarning(lcDefault).noquote() << text;
    }
}

QString MainWindow::firstPortName() const
{
    return sessions[0]->portSettings().name;
}

void MainWindow::chooseLayout(QAction *layoutAction, int sessionsPerRow)
{
    for (QAction *action : {ui->acViewHorizontal, ui->acViewVertical, ui->acViewGrid, ui->acViewCustom})
        action->setChecked(action == layoutAction);
    portNumberPerColumn = sessionsPerRow;
    maximizedSession = nullptr;
    updateGrid();
}

void MainWindow::on_acViewHorizontal_triggered()
{
    chooseLayout(ui->acViewHorizontal, portCount);
    setWindowModified(true);
}

void MainWindow::on_acViewVertical_triggered()
{
    chooseLayout(ui->acViewVertical, 1);
    setWindowModified(true);
}

void MainWindow::on_acViewGrid_triggered()
{
    chooseLayout(ui->acViewGrid, 2);
    setWindowModified(true);
}

void MainWindow::on_acViewCustom_triggered()
{
    chooseLayout(ui->acViewCustom, askSessionsPerRow(portNumberPerColumn));
    setWindowModified(true);
}

void MainWindow::on_acViewQuickSettings_triggered()
{
    updateGrid();
    updatePort(ui->acViewQuickSettings->isChecked());
}

void MainWindow::on_acViewAlwaysTop_triggered()
{
    const QPoint position = pos();
    hide();
    if (ui->acViewAlwaysTop->isChecked())
        setWindowFlags(windowFlags() | Qt::WindowStaysOnTopHint);
    else
        setWindowFlags(Qt::Window);
    move(position);
    show();
}

void MainWindow::on_acEditAdd_triggered()
{
    if (portCount >= MaxSessions)
        return;
    MultiPortSettingDlg dialog(nullptr, 1);
    SettingsDialog *page = dialog.page(0);
    page->portSettings = PortSettings();
    page->formatSetting = FormatSetting();
    dialog.updateDisplay();
    if (!runDialog(dialog))
        return;

    SerialPortWidget *session = appendSession();
    session->setPortSettings(page->portSettings);
    session->setFormatSettings(page->formatSetting);
    session->updateDisplay();
    if (portCount == 2)
        ui->acViewQuickSettings->setChecked(false);
    chooseLayout(ui->acViewHorizontal, portCount);
    setWindowModified(true);
    qCDebug(lcDefault) << "on_actionAd_triggered: Port Number =" << portCount;
}

void MainWindow::on_acEditRemove_triggered()
{
    if (portCount < 2) {
        sessions[0]->showMessage(tr("Port Number = %1").arg(portCount), 2000);
    } else {
        --portCount;
        destroySession(portCount);
        chooseLayout(ui->acViewHorizontal, portCount);
        setWindowModified(true);
    }
    qCDebug(lcDefault) << "on_acEditRemove_triggered: Port Number =" << portCount;
}

void MainWindow::on_acEditCloseSession_triggered()
{
    if (SerialPortWidget *current = currentSession())
        removeSession(current);
    else
        sessions[0]->showMessage(tr("Click into the session to close first"), 2000);
}

void MainWindow::on_acEditClearSession_triggered()
{
    if (SerialPortWidget *current = currentSession())
        current->clear();
    else
        sessions[0]->showMessage(tr("Click into the session to clear first"), 2000);
}

void MainWindow::on_acMonStart_triggered()
{
    start(QString());
}

void MainWindow::on_acEditPause_triggered()
{
    for (int i = 0; i < portCount; ++i)
        sessions[size_t(i)]->pause();
    runState = Paused;
}

void MainWindow::on_acMonStop_triggered()
{
    for (int i = 0; i < portCount; ++i)
        sessions[size_t(i)]->stop();
    runState = Stopped;
}

void MainWindow::on_acEditClear_triggered()
{
    for (int i = 0; i < portCount; ++i)
        sessions[size_t(i)]->clear();
}

void MainWindow::on_actionClearSendHistory_triggered()
{
    for (int i = 0; i < portCount; ++i)
        sessions[size_t(i)]->clearSendList();
}

void MainWindow::on_actionNewLine_triggered()
{
    sessions[0]->setLineEndingMode(LineFeedOnly);
}

void MainWindow::on_actionCarriage_Return_triggered()
{
    sessions[0]->setLineEndingMode(CarriageReturnOnly);
}

void MainWindow::on_actionCR_NL_triggered()
{
    sessions[0]->setLineEndingMode(CarriageReturnLineFeed);
}

void MainWindow::on_actionNL_CR_triggered()
{
    sessions[0]->setLineEndingMode(LineFeedCarriageReturn);
}

// --- toolbar port chooser ----------------------------------------------------

void MainWindow::updatePort(bool remove)
{
    if (portComboAction) {
        delete portComboAction; // owns the combo box
        portComboAction = nullptr;
        portCombo = nullptr;
    }
    if (portCount >= 2 || remove)
        return;
    portCombo = new QComboBox;
    portCombo->setObjectName(QStringLiteral("portCombo"));
    fillPortCombo();
    lastPortCount = int(QSerialPortInfo::availablePorts().size());
    portComboAction = ui->toolBar->addWidget(portCombo);
    connect(portCombo, &QComboBox::currentIndexChanged, this, &MainWindow::changePort);
}

void MainWindow::fillPortCombo()
{
    portCombo->clear();
    for (const SerialPortItem &port : PortScanner::shared().ports())
        portCombo->addItem(port.entryText(), port.portName);
    const int current = portCombo->findData(sessions[0]->portSettings().name);
    if (current >= 0)
        portCombo->setCurrentIndex(current);
}

void MainWindow::changePort()
{
    qCDebug(lcDefault) << "Start to change port...";
    SerialPortWidget *first = sessions[0];
    const QString chosen = embracedString(portCombo->currentText());
    QSerialPort *serial = first->serialPort();
    if (serial && serial->isOpen()) {
        serial->close();
        serial->setPortName(first->portSettings().name);
        first->setPortName(chosen);
        startSession(*first, QString());
    } else {
        first->setPortName(chosen);
    }
    curFile = first->portSettings().name;
}

// --- periodic refresh -------------------------------------------------------

void MainWindow::onUpdateDisplay()
{
    SerialPortWidget *first = sessions[0];
    if (portCount != 1) {
        ui->acEditRemove->setEnabled(true);
        bool allLogging = true;
        for (int i = 0; i < portCount; ++i)
            allLogging = allLogging && sessions[size_t(i)]->formatSettings().LogSaveFlag;
        ui->acFileRecordDataLog->setChecked(allLogging);
    } else {
        ui->acEditRemove->setEnabled(false);
        updateStatusBar();
        if (!ui->acViewQuickSettings->isChecked()) {
            const int ports = int(QSerialPortInfo::availablePorts().size());
            if (ports != lastPortCount) {
                lastPortCount = ports;
                if (portCombo) {
                    qCDebug(lcDefault) << "Start to refresh port list...";
                    const QSignalBlocker quiet(portCombo);
                    fillPortCombo();
                }
            }
        }
        ui->acFileRecordDataLog->setChecked(first->formatSettings().LogSaveFlag);
    }

    ui->acEditAdd->setEnabled(portCount != MaxSessions);
    ui->acEditCloseSession->setEnabled(portCount > 1);
    SerialPortWidget *current = portCount > 1 ? currentSession() : nullptr;
    for (int i = 0; i < portCount; ++i)
        sessions[size_t(i)]->sessionTitleBar()->setCurrent(sessions[size_t(i)] == current);
    ui->acMonStart->setChecked(runState == Running);
    ui->acEditPause->setChecked(runState == Paused);
    ui->acMonStop->setChecked(runState == Stopped);
    const int lineEnding = first->formatSettings().LineEndingMode;
    ui->actionNewLine->setChecked(lineEnding == LineFeedOnly);
    ui->actionCarriage_Return->setChecked(lineEnding == CarriageReturnOnly);
    ui->actionCR_NL->setChecked(lineEnding == CarriageReturnLineFeed);
    ui->actionNL_CR->setChecked(lineEnding == LineFeedCarriageReturn);
    ui->acControlOpen->setChecked(prefs.openLastConnection);
}

void MainWindow::updateStatusBar()
{
    SerialPortWidget *first = sessions[0];
    runState = first->runState();
    stateLabel1->setText(first->connectionStatusText());
    stateLabel2->setText(first->rxStatusText());
    stateLabel3->setText(first->txStatusText());
    const QString logFile = first->logFileText();
    logLabel->setText(first->hasLogProblem() ? logFile // already the reason, in red
                      : logFile.isEmpty()
                          ? QString()
                          : QStringLiteral("<a href=\"%1\">%2</a>")
                                .arg(QUrl::fromLocalFile(QFileInfo(logFile).absoluteFilePath()).toString(),
                                     QFileInfo(logFile).fileName().toHtmlEscaped()));
    if (first->hasNewError()) {
        qCDebug(lcDefault) << "updateStatusBar: " << first->lastErrorText();
        first->clearNewError();
        errorTimer->start(5000);
        errorLabel->setText(StatusColors::html(QLatin1Char(' ') + first->lastErrorText(), false, palette()));
    }
}

void MainWindow::clearErrorMessage()
{
    errorTimer->stop();
    errorLabel->clear();
}

void MainWindow::openURL(const QString &url)
{
    qCDebug(lcDefault) << "URL: " << url;
    QDesktopServices::openUrl(QUrl(url));
}

// --- data log ----------------------------------------------------------------

void MainWindow::on_acFileRecordDataLog_triggered()
{
    qCDebug(lcDefault) << "acFileRecordDataLog" << (ui->acFileRecordDataLog->isChecked() ? "true" : "false");
    SerialPortWidget *first = sessions[0];
    if (first->formatSettings().LogSaveFlag)
        first->setLogSaveFlag(false);
    else if (portCount >= 1)
        first->setLogSaveFlag(true);
}

// Both viewers are Windows programs; elsewhere they fail to start, quietly.
void MainWindow::on_acFileViewCurrentDataLog_triggered()
{
    QProcess::startDetached(QStringLiteral("notepad ") + currentLogFile, {});
}

void MainWindow::on_acFileOpenLogFolder_triggered()
{
    QString folder = QFileInfo(currentLogFile).path();
    qCDebug(lcDefault) << "on_acFileOpenLogFolder_triggered" << folder;
    folder.replace(QLatin1Char('/'), QLatin1Char('\\'));
    qCDebug(lcDefault) << "on_acFileOpenLogFolder_triggered" << folder;
    QProcess::startDetached(QStringLiteral("explorer ") + folder, {});
}

void MainWindow::on_acFileExit_triggered()
{
    close();
}

// --- preferences actions -----------------------------------------------------

void MainWindow::updateLanguageChecks()
{
    const bool chinese = Preferences::chineseChecked(prefs.language, QLocale::system().name());
    ui->actionChinese->setChecked(chinese);
    ui->actionEnglish->setChecked(!chinese);
}

void MainWindow::chooseLanguage(int language)
{
    prefs.language = language;
    QSettings().setValue(QStringLiteral("ValueL"), language);
    updateLanguageChecks();
    ask(QMessageBox::Information, AppTitle, tr("The changes will take effect when the program is restarted."),
        QMessageBox::Ok);
}

void MainWindow::on_actionEnglish_triggered()
{
    chooseLanguage(2);
}

void MainWindow::on_actionChinese_triggered()
{
    chooseLanguage(1);
}

void MainWindow::on_acControlOpen_triggered()
{
    prefs.openLastConnection = ui->acControlOpen->isChecked();
    QSettings().setValue(QStringLiteral("OpenLastConnection"), prefs.openLastConnection);
    if (prefs.openLastConnection)
        ask(QMessageBox::Information, AppTitle, tr("The Connection will be restored when launched from next time."),
            QMessageBox::Ok);
}

void MainWindow::on_acToolsSetting_triggered()
{
    MultiPortSettingDlg dialog(nullptr, portCount);
    for (int i = 0; i < portCount; ++i) {
        SerialPortWidget *session = sessions[size_t(i)];
        session->updateSettings();
        dialog.page(i)->portSettings = session->portSettings();
        dialog.page(i)->formatSetting = session->formatSettings();
    }
    dialog.updateDisplay();
    if (!runDialog(dialog))
        return;

    for (int i = 0; i < portCount; ++i) {
        SerialPortWidget *session = sessions[size_t(i)];
        qCDebug(lcDefault) << "!!!connMode " << dialog.page(i)->portSettings.connMode;
        session->setPortSettings(dialog.page(i)->portSettings);
        session->setFormatSettings(dialog.page(i)->formatSetting);
        session->updateDisplay();
    }
    setWindowModified(true);
    if (!curFile.isEmpty())
        save();
}

void MainWindow::on_actionNew_Connection_triggered()
{
    NewConnection dialog;
    runDialog(dialog);
}

// --- tools -------------------------------------------------------------------

// Tool windows are independent of the main window and free themselves.
void MainWindow::on_acToolCalc_triggered()
{
    auto *toolBox = new ToolBox;
    toolBox->setAttribute(Qt::WA_DeleteOnClose);
    toolBox->show();
}

void MainWindow::on_acToolsAscii_triggered()
{
    auto *chart = new AsciiCode;
    chart->setAttribute(Qt::WA_DeleteOnClose);
    chart->show();
}

void MainWindow::on_acDebugSend_triggered()
{
    ToolBox toolBox;
    runDialog(toolBox);
    qCDebug(lcDefault) << "Quick Send";
}

void MainWindow::on_acHelpHomepage_triggered()
{
    openURL(HomepageUrl);
}

void MainWindow::on_actionAbout_triggered()
{
    QMessageBox box(this);
    box.setWindowTitle(tr("About Quorvane"));
    box.setText(tr("<h3>About Quorvane</h3>"));
    box.setIconPixmap(QPixmap(QStringLiteral(":/images/resource/logo.png")));
    const QString version = QStringLiteral("%1.%2").arg(QStringLiteral(QUORVANE_VERSION), QStringLiteral(QUORVANE_BUILD));
    box.setInformativeText(
        QStringLiteral("<table><tr><td align=\"right\">%1</td><td>%2</td></tr></table>").arg(tr("Verstion:"), version)
        + tr("<h4>Provide fully customized software solutions.</h4>")
        + tr("<p>Contact: support@verdane.example</p>")
        + QStringLiteral("<p><a href=\"%1\">%1</a></p>").arg(HomepageUrl)
        + tr("<p>Copyright (C) VERDANE. All rights reserved.</p>"));
    runDialog(box);
}

void MainWindow::on_actionTest_triggered() {}

// --- session documents -------------------------------------------------------

bool MainWindow::readSettingFile(const QString &fileName)
{
    if (!SessionDocument::isSessionDocument(fileName)) {
        ask(QMessageBox::Warning, AppTitle, tr("%1 is not a Quorvane session document.").arg(fileName),
            QMessageBox::Ok);
        return false;
    }
    QSettings file(fileName, QSettings::IniFormat);
    destroyAllSessions();

    const DocumentLayout layout = SessionDocument::readLayout(file);
    portNumberPerColumn = layout.columnCount;
    for (int i = 0; i < layout.portCount; ++i)
        ui->gridLayout->addWidget(appendSession(), 0, i);
    ui->acViewQuickSettings->setChecked(layout.quickView);

    if (file.status() != QSettings::NoError)
        qCWarning(lcDefault) << "readFile: read parameter FAILED!" << fileName;
    for (int i = 0; i < portCount; ++i) {
        SerialPortWidget *session = sessions[size_t(i)];
        PortSettings port = session->portSettings();
        FormatSetting format = session->formatSettings();
        SessionDocument::readSession(file, i, port, format);
        session->setPortSettings(port);
        session->setFormatSettings(format);
        session->updateDisplay();
    }
    return true;
}

bool MainWindow::writeSettingFile(const QString &fileName, bool showProgress)
{
    qCDebug(lcDefault) << "writeFile: fileName = " << fileName;
    QSettings file(fileName, QSettings::IniFormat);
    file.clear(); // the document holds exactly the workspace, nothing stale

    QProgressBar progress;
    progress.setWindowTitle(tr("Saving..."));
    auto showStage = [&](int value) {
        progress.setValue(value);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    };
    if (showProgress) {
        progress.resize(400, 40);
        progress.setRange(0, 100);
        showStage(0);
        progress.show();
    }

    qCDebug(lcDefault) << "write settings to file >>" << fileName;
    SessionDocument::writeLayout(file, {portCount, portNumberPerColumn, ui->acViewQuickSettings->isChecked()});
    for (int i = 0; i < portCount; ++i) {
        SerialPortWidget *session = sessions[size_t(i)];
        session->updateSettings();
        SessionDocument::ProgressStage stage;
        if (showProgress)
            stage = [&, i](int at) { showStage(SessionDocument::progressValue(at, i, portCount)); };
        SessionDocument::writeSession(file, i, session->portSettings(), session->formatSettings(), stage);
    }
    if (showProgress) {
        progress.setValue(100);
        progress.hide();
    }

    if (!SessionDocument::flushed(file))
        return false;
    qCDebug(lcDefault) << "writeFile: Write Success!";
    return true;
}

bool MainWindow::loadFile(const QString &fileName)
{
    const bool ok = readSettingFile(fileName);
    if (ok) {
        setCurrentFile(fileName);
        updateGrid();
    }
    return ok;
}

bool MainWindow::save()
{
    if (curFile.isEmpty())
        return saveAs();
    prefs.lastDirectory = folderOf(curFile);
    return saveFile(curFile, true);
}

bool MainWindow::saveAs()
{
    QString fileName = chooseSaveFile(tr("Save Quorvane"), prefs.lastDirectory, documentFilter());
    if (fileName.isEmpty())
        return false;
    prefs.lastDirectory = folderOf(fileName);
    qCDebug(lcDefault) << "saveAs: lastDirectory =" << prefs.lastDirectory;
    if (QFileInfo(fileName).suffix().isEmpty())
        fileName += QStringLiteral(".qvn");
    return saveFile(fileName, true);
}

bool MainWindow::saveFile(const QString &fileName, bool showProgress)
{
    const bool ok = writeSettingFile(fileName, showProgress);
    if (ok) {
        qCDebug(lcDefault) << "Write OK " << QDateTime::currentDateTime();
        setCurrentFile(fileName);
        sessions[0]->showMessage(tr("File saved"), 2000);
    } else {
        sessions[0]->showMessage(tr("Saving FAILED"), 2000);
    }
    return ok;
}

bool MainWindow::okToContinue()
{
    if (!isWindowModified())
        return true;
    const auto answer = ask(QMessageBox::Warning, AppTitle,
                            tr("The document has been modified.\nDo you want to save your changes?"),
                            QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Cancel)
        return false;
    if (answer == QMessageBox::Yes)
        return save();
    return true;
}

void MainWindow::open()
{
    if (!okToContinue())
        return;
    const QString fileName = chooseOpenFile(tr("Open Quorvane"), prefs.lastDirectory, documentFilter());
    // The folder remembered is that of the document open before this command.
    if (!curFile.isEmpty())
        prefs.lastDirectory = folderOf(curFile);
    if (!fileName.isEmpty())
        loadFile(fileName);
}

void MainWindow::openDocument(const QString &fileName)
{
    if (!okToContinue())
        return;
    prefs.lastDirectory = folderOf(fileName);
    loadFile(fileName);
}

void MainWindow::openRecentFile()
{
    auto *action = qobject_cast<QAction *>(sender());
    if (!action)
        return;
    const QString fileName = action->data().toString();
    // A vanished document would replace the workspace with an empty one.
    if (!QFileInfo::exists(fileName)) {
        updateRecentFileActions(true);
        return;
    }
    prefs.lastDirectory = folderOf(fileName);
    loadFile(fileName);
}

void MainWindow::setCurrentFile(const QString &fileName)
{
    curFile = fileName;
    QString shownName = tr("Untitled");
    if (!fileName.isEmpty()) {
        prefs.recentFiles.removeAll(fileName);
        prefs.recentFiles.prepend(fileName);
        while (prefs.recentFiles.size() > MaxRecentFiles)
            prefs.recentFiles.removeLast();
        updateRecentFileActions(false);
        shownName = strippedName(fileName);
    }
    setWindowModified(false);
    setWindowTitle(QStringLiteral("%1[*] - %2").arg(shownName, AppTitle));
}

void MainWindow::updateRecentFileActions(bool dropMissing)
{
    if (dropMissing) {
        for (auto it = prefs.recentFiles.begin(); it != prefs.recentFiles.end();) {
            if (QFileInfo::exists(*it)) {
                ++it;
                continue;
            }
            qCWarning(lcDefault).noquote() << "Remove recent file for not exists " << *it;
            it = prefs.recentFiles.erase(it);
        }
    }
    for (int j = 0; j < MaxRecentFiles; ++j) {
        QAction *action = recentFileActions[size_t(j)];
        if (j < prefs.recentFiles.size()) {
            const QString fileName = prefs.recentFiles.at(j);
            action->setText(QStringLiteral("&%1 %2").arg(j + 1).arg(strippedName(fileName)));
            action->setData(fileName);
            action->setVisible(true);
        } else {
            action->setVisible(false);
        }
    }
}

void MainWindow::on_acFileNew_triggered()
{
    if (!okToContinue()) {
        qCWarning(lcDefault) << "on_acFileNew_triggered: okToContinue FAILED!";
        return;
    }
    destroyAllSessions();
    appendSession();
    updateGrid();
    setCurrentFile(QString());
}

void MainWindow::on_acFileOpen_triggered()
{
    open();
}

void MainWindow::on_acFileSave_triggered()
{
    save();
}

void MainWindow::on_acFileSaveAs_triggered()
{
    saveAs();
}

// View > Plot shows or hides the plot of every session; its check follows
// the first session.
void MainWindow::addPlotAction()
{
    QAction *plotAction = ui->menuView->addAction(tr("Plot"));
    plotAction->setCheckable(true);
    connect(ui->menuView, &QMenu::aboutToShow, plotAction, [this, plotAction] {
        plotAction->setChecked(sessions[0]->sessionPlot()->toggleAction()->isChecked());
    });
    connect(plotAction, &QAction::triggered, this, [this](bool on) {
        for (int i = 0; i < portCount; ++i)
            sessions[size_t(i)]->sessionPlot()->toggleAction()->setChecked(on);
    });
}

// Edit > Find opens the find bar of the session in hand, or of the first.
void MainWindow::addFindAction()
{
    auto *find = new QAction(tr("Find..."), this);
    find->setObjectName(QStringLiteral("acEditFind"));
    find->setShortcut(QKeySequence::Find);
    ui->menu_Edit->insertAction(ui->menuLine_Mode->menuAction(), find);
    ui->menu_Edit->insertSeparator(ui->menuLine_Mode->menuAction());
    connect(find, &QAction::triggered, this, [this] {
        SerialPortWidget *current = currentSession();
        (current ? current : sessions[0])->receiveView()->openFindBar();
    });
}
