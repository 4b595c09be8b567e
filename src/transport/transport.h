#ifndef QUORVANE_TRANSPORT_H
#define QUORVANE_TRANSPORT_H

#include <QByteArray>
#include <QObject>
#include <QString>

// A host as the user typed it and a port.
struct Endpoint {
    QString host;
    quint16 port = 0;
};

// One kind of link a session talks over: a serial port, a TCP client, a TCP
// server or a UDP socket. Each keeps its own rules for opening and closing;
// what it receives, how its link ends and what it has to tell the user come
// out as signals.
class Transport : public QObject
{
    Q_OBJECT

public:
    enum State { Down, Connecting, Up };

    using QObject::QObject;

    // What the session's start does for this transport.
    virtual void open() = 0;
    // A new attempt with the settings of the last open, for reconnecting.
    virtual void reopen() { open(); }
    // What the session's stop does for this transport.
    virtual void close() = 0;
    virtual State state() const = 0;
    virtual void write(const QByteArray &bytes) = 0;
    // Bytes still queued for sending; negative when it cannot send now.
    virtual qint64 sendBacklog() const = 0;
    // Reads what has arrived without waiting for the device to signal it.
    virtual void poll() {}
    // While off, nothing more is read: what arrives waits in the device, the
    // socket or the system, so a sender that floods is held back there
    // rather than in this program's memory, and nothing is lost. Turned on
    // again, it reads what waited. Datagrams cannot wait and are always read.
    void setReading(bool on);
    bool isReading() const { return reading; }

signals:
    void received(const QByteArray &bytes);
    void opened();
    // An open link ended without close() asking for it.
    void lost();
    // An attempt to open ended without a link.
    void openFailed();
    // For the session's status bar, shown for the given time.
    void message(const QString &text, int milliseconds);
    // A failure the session keeps as its last error.
    void errorOccurred(const QString &text);

protected:
    // Bytes a device or socket may hold for this program before the system
    // keeps the rest: enough for a burst, small enough that holding back works.
    static constexpr qint64 ReadBufferSize = qint64(1) << 20;

    virtual void readingChanged(bool on);

private:
    bool reading = true;
};

#endif
