#include "session/serialportwidget.h"

// Interface stub: the real session lands on main shortly.
SerialPortWidget::SerialPortWidget(QWidget *parent) : QWidget(parent), ui(nullptr) {}
SerialPortWidget::~SerialPortWidget() = default;

void SerialPortWidget::stop() {  }
void SerialPortWidget::pause() {  }
bool SerialPortWidget::openPort(const QString &portName) { return false; }
bool SerialPortWidget::portIsOpen() const { return false; }
void SerialPortWidget::setPortName(const QString &name) {  }
void SerialPortWidget::clear() {  }
void SerialPortWidget::clearSendList() {  }
void SerialPortWidget::updateSettings() {  }
void SerialPortWidget::updateDisplay() {  }
QString SerialPortWidget::connectionStatusText() const { return {}; }
QString SerialPortWidget::rxStatusText() const { return {}; }
QString SerialPortWidget::txStatusText() const { return {}; }
QString SerialPortWidget::logFileText() const { return {}; }
void SerialPortWidget::updateSplitterSizes(const QList<int> &sizes) {  }
void SerialPortWidget::setStatusBarVisible(bool visible) {  }
void SerialPortWidget::showMessage(const QString &text, int milliseconds) {  }
void SerialPortWidget::pushByteArray(const QByteArray &data, bool countAsReceived, RXorTx direction) {  }
void SerialPortWidget::displayPortBuffer() {  }
QByteArray SerialPortWidget::encodeSendData(const QString &text) { return {}; }
void SerialPortWidget::sendMessage(const QByteArray &data) {  }

void SerialPortWidget::onReadData() {  }
void SerialPortWidget::onRefreshDisplay() {  }
void SerialPortWidget::onSendData() {  }
void SerialPortWidget::onSaveData() {  }
void SerialPortWidget::onRefreshAvalablePorts() {  }
void SerialPortWidget::changeConnState() {  }
void SerialPortWidget::disconnectTcpClient() {  }
void SerialPortWidget::displayError(QAbstractSocket::SocketError error) {  }
void SerialPortWidget::readUdpSocket() {  }
void SerialPortWidget::readSocket(QTcpSocket *socket) {  }
void SerialPortWidget::handleNewMessage(const QString &clientKey) {  }

void SerialPortWidget::keyPressEvent(QKeyEvent *event) {  }
void SerialPortWidget::keyReleaseEvent(QKeyEvent *event) {  }

void SerialPortWidget::on_sendButton_clicked() {  }
void SerialPortWidget::on_sendBox_activated(int index) {  }
void SerialPortWidget::on_autoSendBox_clicked() {  }
void SerialPortWidget::on_sendIntervelSB_valueChanged(int value) {  }
void SerialPortWidget::on_cbLinebyLine_stateChanged(int state) {  }
void SerialPortWidget::on_portBox_currentIndexChanged(int index) {  }
void SerialPortWidget::on_baudRateModeBox_currentTextChanged(const QString &text) {  }
void SerialPortWidget::on_baudRateModeBox_currentIndexChanged(int index) {  }
void SerialPortWidget::on_dataBitsServerAddressBox_currentIndexChanged(int index) {  }
void SerialPortWidget::on_parityServerPortBox_currentIndexChanged(int index) {  }
void SerialPortWidget::on_stopBitsClientAddressBox_currentIndexChanged(int index) {  }
void SerialPortWidget::on_flowControlClientPortBox_currentIndexChanged(int index) {  }
void SerialPortWidget::on_splitter_splitterMoved(int pos, int index) {  }
void SerialPortWidget::onSerialError(QSerialPort::SerialPortError error) {  }

void SerialPortWidget::initTimers() {  }
void SerialPortWidget::createStatusBar() {  }
void SerialPortWidget::updateCommonStatus() {  }
void SerialPortWidget::fillPortsInfo() {  }
void SerialPortWidget::fillPortsParameters() {  }
void SerialPortWidget::fillTcpParameters() {  }
void SerialPortWidget::checkCustomBaudRatePolicy(int index) {  }
void SerialPortWidget::onRefreshSerialPortDisplay() {  }
void SerialPortWidget::onRefreshTcpServerDisplay() {  }
void SerialPortWidget::onRefreshTcpClientDisplay() {  }
void SerialPortWidget::onRefreshUdpClientDisplay() {  }
void SerialPortWidget::setConnectionStatus(const QString &text, bool ok) {  }
QString SerialPortWidget::shownPortName() const { return {}; }
void SerialPortWidget::startUdp() {  }
void SerialPortWidget::startTcpServer() {  }
void SerialPortWidget::startTcpClient() {  }
void SerialPortWidget::serialPortSend(const QByteArray &data) {  }
void SerialPortWidget::tcpClientSend(const QByteArray &data) {  }
void SerialPortWidget::tcpServerSend(const QByteArray &data) {  }
void SerialPortWidget::udpSend(const QByteArray &data) {  }
void SerialPortWidget::updateSendListDisplay() {  }
bool SerialPortWidget::isReceiveViewFocused() const { return false; }
void SerialPortWidget::sendKeyText(const QString &text) {  }
