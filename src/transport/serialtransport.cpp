#include "transport/serialtransport.h"

#include "common/logging.h"
#include "common/portscanner.h"

SerialTransport::SerialTransport(QObject *parent)
    : Transport(parent)
    , serial(new QSerialPort(this))
{
    serial->setPortName(settings.name);
    serial->setReadBufferSize(ReadBufferSize);
    connect(serial, &QSerialPort::readyRead, this, &SerialTransport::poll);
    connect(serial, &QSerialPort::errorOccurred, this, &SerialTransport::onError);
}

void SerialTransport::setSettings(const PortSettings &portSettings)
{
    settings = portSettings;
}

bool SerialTransport::openPort()
{
    serial->setPortName(settings.name);
    if (serial->isOpen())
        return true;
    if (tryOpen())
        return true;
    const QString error = tr("Serial Port %1 OPEN FAILED! ERROR: ").arg(settings.name) + serial->errorString();
    qCDebug(lcDefault) << "openPort: " << error;
    emit errorOccurred(error);
    emit message(error, 5000);
    emit openFailed();
    return false;
}

bool SerialTransport::tryOpen()
{
    serial->setPortName(settings.name);
    if (!serial->open(QIODevice::ReadWrite))
        return false;
    closingAfterError = false;
    configure();
    emit message(tr("Serial Port %1 OPEN SUCCESS").arg(settings.name), 1000);
    emit opened();
    return true;
}

void SerialTransport::configure()
{
    serial->setBaudRate(settings.baudRate);
    serial->setDataBits(QSerialPort::DataBits(settings.dataBits));
    serial->setParity(QSerialPort::Parity(settings.parity));
    serial->setStopBits(QSerialPort::StopBits(settings.stopBits));
    serial->setFlowControl(QSerialPort::FlowControl(settings.flowControl));
    if (serial->isOpen()) {
        serial->setDataTerminalReady(wantDtr);
        serial->setRequestToSend(wantRts);
    }
}

void SerialTransport::reopen()
{
    if (!deviceMayBeBack() || !tryOpen())
        emit openFailed();
}

// A device the scan lists is back once it is listed again; a path the scan
// never lists (a pty, a by-id link) can only be told by trying to open it.
bool SerialTransport::deviceMayBeBack() const
{
    if (settings.name.contains(QLatin1Char('/')))
        return true;
    for (const SerialPortItem &port : PortScanner::shared().ports()) {
        if (port.portName == settings.name)
            return true;
    }
    return false;
}

void SerialTransport::close()
{
    if (serial->isOpen()) {
        serial->close();
        if (serial->isOpen())
            emit message(tr("Serial Port %1 CLOSE FAILED").arg(settings.name), 3000);
        else
            emit message(tr("Serial Port %1 CLOSE SUCCESS").arg(settings.name), 3000);
    }
    // The stop path has always dropped DTR and then RTS after the close; on
    // a closed port that changes nothing, and the refusal is not an error
    // worth keeping. The user's chosen levels stay for the next open.
    serial->setDataTerminalReady(false);
    serial->setRequestToSend(false);
    serial->clearError();
}

void SerialTransport::write(const QByteArray &bytes)
{
    if (!serial->isOpen()) {
        if (!tryOpen()) {
            emit message(tr("Serial Port %1 OPEN FAILED: %2").arg(settings.name, serial->errorString()), 3000);
            qCDebug(lcDefault) << "Open Failed!";
            return;
        }
    }
    if (serial->write(bytes) < 0)
        qCWarning(lcDefault) << "Send message failed!" << serial->error() << serial->errorString();
}

qint64 SerialTransport::sendBacklog() const
{
    return serial->isOpen() ? serial->bytesToWrite() : -1;
}

void SerialTransport::poll()
{
    if (isReading())
        deliverAll();
}

void SerialTransport::deliverAll()
{
    // Most timer polls find nothing: an empty read would still allocate.
    if (!serial->isOpen() || serial->bytesAvailable() == 0)
        return;
    const QByteArray bytes = serial->readAll();
    if (!bytes.isEmpty())
        emit received(bytes);
}

// A vanished device makes the port report read or resource errors in a
// tight loop while it stays open; closing it calms the session down.
void SerialTransport::onError(QSerialPort::SerialPortError error)
{
    if (error != QSerialPort::ResourceError && error != QSerialPort::ReadError
        && error != QSerialPort::WriteError)
        return;
    if (closingAfterError || !serial->isOpen())
        return;
    closingAfterError = true;
    const QString text = tr("Serial Port %1 ERROR: %2").arg(settings.name, serial->errorString());
    qCWarning(lcDefault) << "onSerialError:" << text;
    emit errorOccurred(text);
    // Closed from the event loop: the error may be raised inside the port's
    // own notifier, which must not be destroyed under its feet.
    QMetaObject::invokeMethod(this, [this, text] {
        const bool wasOpen = serial->isOpen();
        deliverAll();   // what came before the error is not lost
        serial->close();
        serial->clearError();
        emit message(text, 5000);
        if (wasOpen)
            emit lost();
    }, Qt::QueuedConnection);
}

bool SerialTransport::hardwareFlowControl() const
{
    return serial->flowControl() == QSerialPort::HardwareControl;
}

void SerialTransport::setDataTerminalReady(bool on)
{
    wantDtr = on;
    if (serial->isOpen())
        serial->setDataTerminalReady(on);
}

void SerialTransport::setRequestToSend(bool on)
{
    wantRts = on;
    if (serial->isOpen() && !hardwareFlowControl())
        serial->setRequestToSend(on);
}

void SerialTransport::setBreakEnabled(bool on)
{
    if (serial->isOpen())
        serial->setBreakEnabled(on);
}

std::optional<QSerialPort::PinoutSignals> SerialTransport::pinoutSignals()
{
    // An earlier failure (a line the driver owns) must not read as this one.
    if (serial->error() != QSerialPort::NoError)
        serial->clearError();
    const QSerialPort::PinoutSignals lines = serial->pinoutSignals();
    if (serial->error() == QSerialPort::NoError)
        return lines;
    serial->clearError();
    return std::nullopt;
}
