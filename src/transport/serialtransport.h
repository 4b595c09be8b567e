#ifndef QUORVANE_SERIALTRANSPORT_H
#define QUORVANE_SERIALTRANSPORT_H

#include "session/portsettings.h"
#include "transport/controllines.h"
#include "transport/transport.h"

// A serial port. The port object lives as long as the transport; the line
// parameters are applied after each open, never before.
class SerialTransport : public Transport, public ControlLines
{
    Q_OBJECT

public:
    explicit SerialTransport(QObject *parent = nullptr);

    QSerialPort *port() const { return serial; }
    // The device (by the name the user chose, which messages show) and the
    // line parameters of the next open.
    void setSettings(const PortSettings &settings);
    // Opens and configures the port; a port already open is left exactly as
    // it is. A failure is reported as the session's last error.
    bool openPort();

    void open() override { openPort(); }
    // Quiet: only a device the port scan lists again, or a path the scan
    // never lists, is tried.
    void reopen() override;
    void close() override;
    State state() const override { return serial->isOpen() ? Up : Down; }
    // Opens the port first when it is closed.
    void write(const QByteArray &bytes) override;
    qint64 sendBacklog() const override;
    void poll() override;

    bool isOpen() const override { return serial->isOpen(); }
    bool hardwareFlowControl() const override;
    void setDataTerminalReady(bool on) override;
    void setRequestToSend(bool on) override;
    bool dataTerminalReady() const override { return wantDtr; }
    bool requestToSend() const override { return wantRts; }
    void setBreakEnabled(bool on) override;
    std::optional<QSerialPort::PinoutSignals> pinoutSignals() override;

private:
    bool tryOpen();
    void deliverAll();
    void configure();
    bool deviceMayBeBack() const;
    void onError(QSerialPort::SerialPortError error);

    QSerialPort *serial = nullptr;
    PortSettings settings;
    bool wantDtr = true;
    bool wantRts = true;
    bool closingAfterError = false;
};

#endif
