#include "bareterminal.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTcpSocket>

#include "common/timerbeat.h"

BareTerminal::BareTerminal(bool hex, QWidget *parent)
    : QWidget(parent)
    , hex(hex)
    , rows(1)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&port, &QSerialPort::readyRead, this, &BareTerminal::read);
    connect(&readTimer, &QTimer::timeout, this, &BareTerminal::read);
    connect(&refreshTimer, &QTimer::timeout, this, &BareTerminal::refresh);
    startOnBeat(&refreshTimer, 20);
}

bool BareTerminal::open(const QString &portName)
{
    port.setPortName(portName);
    if (!port.open(QIODevice::ReadWrite))
        return false;
    startOnBeat(&readTimer, 10);
    return true;
}

void BareTerminal::read()
{
    if (port.bytesAvailable() == 0)
        return;
    const QByteArray bytes = port.readAll();
    received += bytes.size();
    pending += bytes;
}

int BareTerminal::rowHeight() const
{
    return fontMetrics().lineSpacing();
}

int BareTerminal::rowsShown() const
{
    return height() / rowHeight() + 1;
}

void BareTerminal::addRow(const QString &row)
{
    rows.append(row);
    if (rows.size() > rowsShown())
        rows.removeFirst();
}

// New rows scroll what is shown up; the row that was growing is drawn again
// with them.
void BareTerminal::refresh()
{
    if (pending.isEmpty())
        return;
    int added = 0;
    const int hexPairsPerRow = qMax(1, width() / (3 * fontMetrics().horizontalAdvance(QLatin1Char('0'))));
    for (const char byte : std::as_const(pending)) {
        if (hex) {
            if (rows.last().size() >= 3 * hexPairsPerRow) {
                addRow(QString());
                ++added;
            }
            rows.last() += QString::asprintf("%02X ", quint8(byte));
        } else if (byte == '\n') {
            addRow(QString());
            ++added;
        } else {
            rows.last() += QLatin1Char(byte);
        }
    }
    pending.clear();
    if (added >= rowsShown()) {
        update();
        return;
    }
    if (added > 0)
        scroll(0, -added * rowHeight());
    const int changed = (added + 1) * rowHeight();
    update(0, height() - changed, width(), changed);
}

void BareTerminal::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().base());
    painter.setPen(palette().text().color());
    const int lineHeight = rowHeight();
    const int ascent = fontMetrics().ascent();
    // The bottom row sits at the bottom edge, the others above it.
    int y = height() - int(rows.size()) * lineHeight;
    for (const QString &row : std::as_const(rows)) {
        if (y + lineHeight > event->rect().top() && y < event->rect().bottom() + 1)
            painter.drawText(0, y + ascent, row);
        y += lineHeight;
    }
}

BareServer::BareServer()
{
    server.setListenBacklogSize(1024);
    QObject::connect(&server, &QTcpServer::newConnection, &server, [this] {
        while (QTcpSocket *socket = server.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { received += socket->readAll().size(); });
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
    startOnBeat(&readTimer, 10);
    startOnBeat(&refreshTimer, 20);
    server.listen(QHostAddress::Any);
}
