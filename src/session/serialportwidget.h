#ifndef QUORVANE_SERIALPORTWIDGET_H
#define QUORVANE_SERIALPORTWIDGET_H

#include <QAbstractSocket>
#include <QByteArray>
#include <QList>
#include <QSerialPort>
#include <QWidget>

#include <array>
#include <memory>

#include "common/changegate.h"
#include "common/types.h"
#include "session/chunkrenderer.h"
#include "session/datalog.h"
#include "session/portsettings.h"
#include "session/receivequeue.h"

class QCheckBox;
class QLabel;
class QStatusBar;
class QTimer;
class QIntValidator;
class ClientRows;
class CounterLabel;
class MultiClientServer;
class ControlLinesPanel;
class ReconnectPolicy;
class SerialTransport;
class TcpClientTransport;
class TcpServerTransport;
class Transport;
class UdpTransport;
class HexInputMarker;
class FileSender;
class MacroBar;
class SendBoxController;
class SessionTitleBar;
class SessionPlot;
class ReceiveFeed;
class ReceiveView;
class ReceiveViewOptions;

namespace Ui {
class SerialPortWidget;
}

// One port session: coordinates a transport (serial port, TCP client, TCP
// server or UDP socket) and its reconnect policy, the receive pipeline and
// its view, the send path, the data log and the parameter panel. Transports,
// rendering, encoding and log writing live in their own classes; this one
// wires them to the widgets and timers.
class SerialPortWidget : public QWidget
{
    Q_OBJECT

public:
    explicit SerialPortWidget(QWidget *parent = nullptr);
    ~SerialPortWidget() override;

    bool start(const QString &portName = QString());
    void stop();
    void pause();
    bool openPort(const QString &portName);
    bool portIsOpen() const;
    void setPortName(const QString &name);

    void clear();
    void clearSendList();

    // Panel widgets -> records, and records -> panel widgets.
    void updateSettings();
    void updateDisplay();

    const PortSettings &portSettings() const { return currentSettings; }
    void setPortSettings(const PortSettings &settings) { currentSettings = settings; }
    const FormatSetting &formatSettings() const { return formatSetting; }
    void setFormatSettings(const FormatSetting &settings) { formatSetting = settings; }
    void setLineEndingMode(int mode) { formatSetting.LineEndingMode = mode; }
    void setLogSaveFlag(bool on) { formatSetting.LogSaveFlag = on; }

    int runState() const { return m_runState; }
    QSerialPort *serialPort() const;
    // Null until the first start as a TCP server.
    MultiClientServer *server() const;

    // Texts of the session's status bar: connection, "Rx", "Tx", log file
    // (or, in red, why it cannot be written).
    QString connectionStatusText() const;
    QString rxStatusText() const;
    QString txStatusText() const;
    QString logFileText() const;
    bool hasLogProblem() const { return !logProblem.isEmpty(); }
    qint64 unloggedBytes() const { return dataLog.pendingBytes().size(); }
    qint64 receivedBytes() const { return receivedCount; }
    qint64 sentBytes() const { return sentCount; }

    // The last open failure, flagged until the main window has shown it.
    QString lastErrorText() const { return lastError; }
    bool hasNewError() const { return hasError; }
    void clearNewError() { hasError = false; }

    SessionTitleBar *sessionTitleBar() const { return titleBar; }
    SessionPlot *sessionPlot() const { return plot; }
    ReceiveView *receiveView() const;

    void updateSplitterSizes(const QList<int> &sizes);
    void setStatusBarVisible(bool visible);
    void showMessage(const QString &text, int milliseconds);
    QString currentMessage() const;

    // The single entry of the receive pipeline; every transport ends here.
    void pushByteArray(const QByteArray &data, bool countAsReceived, RXorTx direction);
    void displayPortBuffer();
    // Traffic queued and not yet shown: a refresh works off at most a tick's
    // worth of it.
    qint64 queuedBytes() const { return rxDataList.bytes(); }

    QByteArray encodeSendData(const QString &text);
    void sendMessage(const QByteArray &data);
    // Bytes that bypass the send box (macros, files): counted, shown as
    // sent and handed to the transport, without history.
    void sendBytes(const QByteArray &data);

signals:
    // The user changed a setting in the panel.
    void settingsEdited();

public slots:
    void onReadData();
    void onRefreshDisplay();
    void onSendData();
    void onSaveData();
    void onRefreshAvalablePorts();
    void changeConnState();
    void displayError(QAbstractSocket::SocketError error);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private slots:
    void on_sendButton_clicked();
    void on_sendBox_activated(int index);
    void on_autoSendBox_clicked();
    void on_sendIntervelSB_valueChanged(int value);
    void on_cbLinebyLine_stateChanged(int state);
    void on_portBox_currentIndexChanged(int index);
    void on_baudRateModeBox_currentTextChanged(const QString &text);
    void on_baudRateModeBox_currentIndexChanged(int index);
    void on_dataBitsServerAddressBox_currentIndexChanged(int index);
    void on_parityServerPortBox_currentIndexChanged(int index);
    void on_stopBitsClientAddressBox_currentIndexChanged(int index);
    void on_flowControlClientPortBox_currentIndexChanged(int index);
    void on_splitter_splitterMoved(int pos, int index);

private:
    void initPlot();
    void initTimers();
    void initSendTools();
    void initTransports();
    void initLinkControls();
    void showLinkOptions();
    QList<Transport *> links() const;
    // The transport of a connection mode; null for a mode without one.
    Transport *linkFor(int mode) const;
    void receive(const Transport *link, const QByteArray &bytes);
    // A line of the session's own (a marker), shown and logged like traffic.
    void pushNote(const QString &text);
    void regulateIntake();
    void recordSent(const QByteArray &data, qsizetype shownBytes);
    void sendFileChunk(const QByteArray &chunk, qint64 offset);
    // Bytes the transport still holds; negative when it cannot send now.
    qint64 sendBacklog() const;
    void createStatusBar();
    void updateCommonStatus();
    void fillPortsInfo();
    void fillPortsParameters();
    void fillTcpParameters();
    void checkCustomBaudRatePolicy(int index);
    void onRefreshSerialPortDisplay();
    void onRefreshTcpServerDisplay();
    void onRefreshTcpClientDisplay();
    void onRefreshUdpClientDisplay();
    void setConnectionStatus(const QString &text, bool ok);
    QString shownPortName() const;
    QString boxPortName() const;
    QString chosenPortName() const;
    void watchPanelEdits();
    QString panelSignature() const;
    void copyPanelChecks();
    void refreshConnectionDisplay();
    std::array<qint64, 7> linkFacts() const;
    void updateTitleBar();
    int panelNetworkMode() const;
    void showWarning(const QString &title, const QString &text);
    DataLog::Result saveLog();
    QByteArray encodeSendData(const QString &text, bool rewriteBox);

    void startTcpClient();
    void updateSendListDisplay();
    bool isReceiveViewFocused() const;
    void sendKeyText(const QString &text);

    Ui::SerialPortWidget *ui;
    PortSettings currentSettings;
    FormatSetting formatSetting;
    int m_runState = Stopped;
    bool started = false;      // between start() and stop()
    bool connectionOk = false; // the status text is a good one

    SerialTransport *serialLink = nullptr;
    TcpServerTransport *serverLink = nullptr;
    std::unique_ptr<ClientRows> clientRows;
    TcpClientTransport *clientLink = nullptr;
    UdpTransport *udpLink = nullptr;
    ReconnectPolicy *reconnect = nullptr;
    ControlLinesPanel *controlLines = nullptr;
    QCheckBox *reconnectBox = nullptr;

    QByteArray pausedData;
    QString lastError;
    bool hasError = false;
    QString logProblem;  // why the log cannot be written now; empty while it can

    QTimer *readTimer = nullptr;
    QTimer *sendTimer = nullptr;
    QTimer *saveTimer = nullptr;
    QTimer *refreshTimer = nullptr;
    QTimer *portScanTimer = nullptr;
    const int refreshPhase;   // ms after the refresh beat

    ReceiveQueue rxDataList;
    ChunkRenderer renderer;
    ReceiveFeed *receiveFeed = nullptr;
    ReceiveViewOptions *viewOptions = nullptr;
    DataLog dataLog;

    SendBoxController *sendBoxController = nullptr;
    HexInputMarker *hexInputMarker = nullptr;
    MacroBar *macroBar = nullptr;
    FileSender *fileSender = nullptr;

    qint64 receivedCount = 0;
    qint64 sentCount = 0;
    int lineIndex = 0;
    bool networkPanel = false;

    quint64 portListGeneration = 0;
    quint64 panelRevision = 0;   // counts the changes of the panel's boxes and buttons
    ChangeGate<std::array<qint64, 7>, int, int, bool, QString, quint64, qint64> statusGate;
    ChangeGate<qint64, qint64, bool, QString, QString, qint64> countersGate;  // of the shared port scan the box was filled from
    QString panelBaseline;
    bool applyingSettings = false;
    QIntValidator *baudRateValidator = nullptr;
    SessionTitleBar *titleBar = nullptr;
    SessionPlot *plot = nullptr;
    QStatusBar *statusBar = nullptr;
    QLabel *connectionStatusLabel = nullptr;
    CounterLabel *rxLabel = nullptr;
    CounterLabel *txLabel = nullptr;
    QLabel *logFileLabel = nullptr;
    QLabel *messageLabel = nullptr;
    QTimer *messageTimer = nullptr;
};

#endif
