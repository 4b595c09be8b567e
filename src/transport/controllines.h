#ifndef QUORVANE_CONTROLLINES_H
#define QUORVANE_CONTROLLINES_H

#include <optional>

#include <QSerialPort>

// The modem control lines of a serial link, as the session panel drives and
// shows them.
class ControlLines
{
public:
    virtual ~ControlLines() = default;

    virtual bool isOpen() const = 0;
    // Under RTS/CTS flow control the driver owns RTS.
    virtual bool hardwareFlowControl() const = 0;
    // The wanted level: applied at once while open, and at every open.
    virtual void setDataTerminalReady(bool on) = 0;
    virtual void setRequestToSend(bool on) = 0;
    virtual bool dataTerminalReady() const = 0;
    virtual bool requestToSend() const = 0;
    virtual void setBreakEnabled(bool on) = 0;
    // Every line as the device reports it; nothing when it cannot.
    virtual std::optional<QSerialPort::PinoutSignals> pinoutSignals() = 0;
};

#endif
