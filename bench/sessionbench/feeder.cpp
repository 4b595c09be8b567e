#include "feeder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QSerialPort>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <deque>
#include <limits>

#include "benchsupport.h"
#include "numberedstream.h"

namespace {

void report(const QByteArray &line)
{
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

void reportSent(const QVector<qint64> &sent)
{
    QByteArray line = "sent";
    for (qint64 bytes : sent)
        line += ' ' + QByteArray::number(bytes);
    report(line);
}

int fail(const QString &why)
{
    std::fprintf(stderr, "feeder: %s\n", qPrintable(why));
    return 1;
}

// Writes stream i to device i, RATE bytes a second or (rate 0) as fast as the
// device takes, for a set time or until every stream has `budget` bytes out;
// reports once everything went out.
class StreamFeed : public QObject
{
public:
    StreamFeed(int rate, double seconds, qint64 budget)
        : rate(rate)
        , durationMs(qint64(seconds * 1000))
        , budget(budget > 0 ? budget : std::numeric_limits<qint64>::max())
    {
        timer.setTimerType(Qt::PreciseTimer);
        connect(&timer, &QTimer::timeout, this, &StreamFeed::tick);
    }

    void add(QIODevice *device)
    {
        const int source = int(devices.size());
        devices.append(device);
        written.append(0);
        if (rate == 0) {
            connect(device, &QIODevice::bytesWritten, this, [this, source] {
                if (feeding)
                    topUp(source);
            });
        }
    }

    void begin()
    {
        report("start");
        clock.start();
        feeding = true;
        timer.start(10);
        tick();
    }

private:
    void tick()
    {
        feeding = feeding && clock.elapsed() < durationMs
            && std::any_of(written.begin(), written.end(), [this](qint64 bytes) { return bytes < budget; });
        if (feeding) {
            for (int source = 0; source < devices.size(); ++source)
                topUp(source);
            return;
        }
        for (QIODevice *device : std::as_const(devices)) {
            if (device->bytesToWrite() > 0)
                return;
        }
        timer.stop();
        reportSent(written);
    }

    void topUp(int source)
    {
        constexpr qint64 queueTarget = 256 << 10;
        const qint64 due = std::min(budget - written.at(source),
                                    rate > 0 ? rate * clock.elapsed() / 1000 - written.at(source)
                                             : queueTarget - devices.at(source)->bytesToWrite());
        if (due <= 0)
            return;
        devices.at(source)->write(NumberedStream::bytes(source, written.at(source), due));
        written[source] += due;
    }

    const qint64 rate;
    const qint64 durationMs;
    const qint64 budget;
    QVector<QIODevice *> devices;
    QVector<qint64> written;
    QElapsedTimer clock;
    QTimer timer;
    bool feeding = false;
};

// Loopback clients that come and go at a steady rate. What the program under
// test does to them is counted: connects refused, connections it reset or
// closed, connects that took a second or more (a dropped handshake is
// retried after one), and clients that waited as long and never got
// connected before they left.
class Churn : public QObject
{
public:
    Churn(quint16 port, int rate, int standing, double seconds, int firstSource)
        : port(port)
        , rate(rate)
        , lifetimeMs(qint64(standing) * 1000 / rate)
        , endMs(lifetimeMs + qint64(seconds * 1000))
        , firstSource(firstSource)
    {
        timer.setTimerType(Qt::PreciseTimer);
        connect(&timer, &QTimer::timeout, this, &Churn::tick);
    }

    void begin()
    {
        report("start");
        clock.start();
        timer.start(10);
    }

private:
    struct Client {
        QTcpSocket *socket = nullptr;
        qint64 openedMs = 0;
        bool connected = false;
        bool leaving = false;
        bool done = false;
    };

    void tick()
    {
        const qint64 now = clock.elapsed();
        if (now < endMs) {
            while (clients.size() < rate * now / 1000 + 1)
                open();
            while (!living.empty() && clients.at(living.front()).openedMs + lifetimeMs <= now) {
                leave(living.front());
                living.pop_front();
            }
            if (!steady && now >= lifetimeMs) {
                steady = true;
                report("steady " + QByteArray::number(clients.size()));
            }
            return;
        }
        if (!ending) {
            ending = true;
            report("ending " + QByteArray::number(clients.size()));
            for (int index : living)
                leave(index);
            living.clear();
        }
        if (openSockets > 0 && now < endMs + 20000)
            return;
        timer.stop();
        reportSent(sent);
        report(QStringLiteral("stats connects=%1 refused=%2 reset=%3 unconnected=%4 slow=%5")
                   .arg(clients.size())
                   .arg(refused)
                   .arg(reset)
                   .arg(unconnected)
                   .arg(slow)
                   .toLatin1());
    }

    void open()
    {
        const int index = int(clients.size());
        auto *socket = new QTcpSocket(this);
        clients.append({socket, clock.elapsed()});
        sent.append(0);
        living.push_back(index);
        ++openSockets;
        connect(socket, &QTcpSocket::connected, this, [this, index] {
            Client &client = clients[index];
            client.connected = true;
            slow += clock.elapsed() - client.openedMs >= 1000;
            writeLine(index);
        });
        connect(socket, &QAbstractSocket::errorOccurred, this, [this, index](QAbstractSocket::SocketError error) {
            if (!clients.at(index).leaving)
                ++(error == QAbstractSocket::ConnectionRefusedError ? refused : reset);
            finish(index);
        });
        connect(socket, &QTcpSocket::disconnected, this, [this, index] {
            if (!clients.at(index).leaving)
                ++reset;
            finish(index);
        });
        socket->connectToHost(QHostAddress::LocalHost, port);
    }

    void leave(int index)
    {
        Client &client = clients[index];
        if (client.done)
            return;
        client.leaving = true;
        if (!client.connected) {
            unconnected += clock.elapsed() - client.openedMs >= 1000;
            client.socket->abort();
            finish(index);
            return;
        }
        writeLine(index);
        client.socket->disconnectFromHost();
    }

    void finish(int index)
    {
        Client &client = clients[index];
        if (client.done)
            return;
        client.done = true;
        client.leaving = true;
        --openSockets;
        client.socket->deleteLater();
    }

    void writeLine(int index)
    {
        constexpr int length = NumberedStream::LineLength;
        clients.at(index).socket->write(NumberedStream::bytes(firstSource + index, sent.at(index), length));
        sent[index] += length;
    }

    const quint16 port;
    const int rate;
    const qint64 lifetimeMs;
    const qint64 endMs;
    const int firstSource;
    QVector<Client> clients;
    QVector<qint64> sent;
    std::deque<int> living;   // in the order they leave
    int openSockets = 0;
    int refused = 0;
    int reset = 0;
    int unconnected = 0;
    int slow = 0;
    bool steady = false;
    bool ending = false;
    QElapsedTimer clock;
    QTimer timer;
};

int feedSerial(int rate, double seconds, qint64 budget, const QStringList &devices)
{
    StreamFeed feed(rate, seconds, budget);
    for (const QString &device : devices) {
        auto *port = new QSerialPort(device, &feed);
        if (!port->open(QIODevice::WriteOnly))
            return fail(QStringLiteral("cannot open %1: %2").arg(device, port->errorString()));
        feed.add(port);
    }
    feed.begin();
    return QCoreApplication::exec();
}

int feedTcp(int rate, double seconds, qint64 budget, quint16 port, int count)
{
    StreamFeed feed(rate, seconds, budget);
    int connected = 0;
    for (int i = 0; i < count; ++i) {
        auto *client = new QTcpSocket(&feed);
        QObject::connect(client, &QTcpSocket::connected, &feed, [&] {
            if (++connected == count)
                feed.begin();
        });
        QObject::connect(client, &QAbstractSocket::errorOccurred, &feed, [client] {
            fail(QStringLiteral("client: %1").arg(client->errorString()));
            QCoreApplication::exit(1);
        });
        client->connectToHost(QHostAddress::LocalHost, port);
        feed.add(client);
    }
    return QCoreApplication::exec();
}

int churn(int rate, int standing, double seconds, quint16 port, int firstSource)
{
    Churn clients(port, rate, standing, seconds, firstSource);
    clients.begin();
    return QCoreApplication::exec();
}

} // namespace

int runFeeder(const QStringList &arguments)
{
    raiseOpenFileLimit();
    const QString kind = arguments.value(0);
    const int rate = arguments.value(1).toInt();
    const double seconds = arguments.value(2).toDouble();
    const qint64 budget = arguments.value(3).toLongLong();
    if (kind == QLatin1String("serial") && arguments.size() >= 5)
        return feedSerial(rate, seconds, budget, arguments.mid(4));
    if (kind == QLatin1String("tcp") && arguments.size() == 6)
        return feedTcp(rate, seconds, budget, quint16(arguments.at(4).toUInt()), arguments.at(5).toInt());
    if (kind == QLatin1String("churn") && arguments.size() == 6 && rate > 0) {
        return churn(rate, arguments.at(2).toInt(), arguments.at(3).toDouble(), quint16(arguments.at(4).toUInt()),
                     arguments.at(5).toInt());
    }
    return fail(QStringLiteral("unknown feed: %1").arg(arguments.join(QLatin1Char(' '))));
}
