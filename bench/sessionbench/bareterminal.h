#ifndef QUORVANE_BENCH_BARETERMINAL_H
#define QUORVANE_BENCH_BARETERMINAL_H

#include <QSerialPort>
#include <QStringList>
#include <QTcpServer>
#include <QTimer>
#include <QWidget>

// The least a terminal made of Qt widgets does at a session's timer periods:
// it reads its port when told and every 10 ms, and every 20 ms scrolls the
// rows that arrived into view and draws them, one row to a line of text or to
// as many hex pairs as fit, with nothing kept beyond a screen. The bench runs
// it beside the sessions so that their figures can be read against what this
// machine charges for the event loop, the port and the pixels alone.
class BareTerminal : public QWidget
{
public:
    BareTerminal(bool hex, QWidget *parent);

    bool open(const QString &portName);
    qint64 receivedBytes() const { return received; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void read();
    void refresh();
    void addRow(const QString &row);
    int rowHeight() const;
    int rowsShown() const;

    const bool hex;
    QSerialPort port;
    QTimer readTimer;
    QTimer refreshTimer;
    QByteArray pending;
    qint64 received = 0;
    QStringList rows;    // the last rows, the bottom one still growing
};

// The same for a TCP server: it takes every client, reads what comes and
// lets leavers go, with a session's read and refresh timers running beside
// it doing nothing; what a crowd of sockets costs the event loop alone.
class BareServer
{
public:
    BareServer();

    bool isListening() const { return server.isListening(); }
    quint16 port() const { return server.serverPort(); }
    qint64 receivedBytes() const { return received; }

private:
    QTcpServer server;
    QTimer readTimer;
    QTimer refreshTimer;
    qint64 received = 0;
};

#endif
