// End-to-end cost of port sessions. Real sessions run in this process, shown
// in one window as the workspace arranges them; a second process (this
// program again, as a feeder) plays the devices behind socat pty pairs or the
// clients of a TCP server session over loopback, so this process's processor
// time is the sessions' own. The traffic is numbered lines, and what reaches
// each view and log is checked byte by byte. Prints one row per case.
//
// Usage: bench_session [--scale F] [--only WORD[,WORD...]] [--debug]
//   --scale F  multiplies every case's duration (0.1 runs in about a minute)
//   --only     runs the cases of those names, or whose names contain one of the words
//   --debug    keeps the program's debug output

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGridLayout>
#include <QLoggingCategory>
#include <QProcess>
#include <QSerialPort>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <cctype>
#include <functional>
#include <memory>
#include <numeric>
#include <vector>

#include "benchsupport.h"
#include "net/multiclientserver.h"
#include "sessionbench/bareterminal.h"
#include "sessionbench/feeder.h"
#include "sessionbench/numberedstream.h"
#include "session/serialportwidget.h"
#include "testsupport.h"

namespace {

enum class Transport { Serial, TcpFlood, TcpChurn };
constexpr int FlatOut = 0;
constexpr int Idle = -1;
constexpr int Baud115200 = 11520;   // bytes a second, 10 bits a byte on the line

struct Case {
    const char *name;
    const char *what;
    Transport transport;
    int sessions;   // serial sessions; a TCP case has one server session
    int clients;    // TCP clients flooding, or standing in the churn
    int rate;       // bytes a second per stream (or FlatOut, Idle); connects a second in the churn
    int format;
    bool logging;
    double seconds;
    qint64 bytesPerStream = 0;   // sooner done once every stream sent this much
    bool bare = false;           // bare terminals in the sessions' places
};

const Case cases[] = {
    {"text", "1 serial session, text, 11.5 kB/s", Transport::Serial, 1, 0, Baud115200, ASCII, false, 20},
    {"hex", "1 serial session, hex, 11.5 kB/s", Transport::Serial, 1, 0, Baud115200, HEX, false, 20},
    {"idle-16", "16 serial sessions, ports open, nothing arriving", Transport::Serial, 16, 0, Idle, ASCII, false, 20},
    {"text-16", "16 serial sessions, text, 11.5 kB/s each", Transport::Serial, 16, 0, Baud115200, ASCII, false, 20},
    {"flood-16", "16 serial sessions, text, flat out until each view held a full display buffer (10 MiB)",
     Transport::Serial, 16, 0, FlatOut, ASCII, false, 300, 11 << 20},
    {"flood-log-text", "1 serial session, text, flat out, logging", Transport::Serial, 1, 0, FlatOut, ASCII, true, 20},
    {"flood-log-hex", "1 serial session, hex, flat out, logging", Transport::Serial, 1, 0, FlatOut, HEX, true, 20},
    {"tcp-1", "TCP server, 1 loopback client flat out", Transport::TcpFlood, 1, 1, FlatOut, ASCII, false, 20},
    {"tcp-100", "TCP server, 100 loopback clients flat out", Transport::TcpFlood, 1, 100, FlatOut, ASCII, false, 20},
    {"tcp-churn", "TCP server, 1,000 clients standing, 100 connects/s, logging", Transport::TcpChurn, 1, 1000, 100,
     ASCII, true, 60},
    {"floor-text", "a bare terminal in the place of \"text\"'s session", Transport::Serial, 1, 0, Baud115200, ASCII,
     false, 20, 0, true},
    {"floor-hex", "a bare terminal in the place of \"hex\"'s session", Transport::Serial, 1, 0, Baud115200, HEX, false,
     20, 0, true},
    {"floor-idle-16", "bare terminals in the places of \"idle-16\"'s sessions", Transport::Serial, 16, 0, Idle, ASCII,
     false, 20, 0, true},
    {"floor-text-16", "bare terminals in the places of \"text-16\"'s sessions", Transport::Serial, 16, 0, Baud115200,
     ASCII, false, 20, 0, true},
    {"floor-tcp-churn", "a bare TCP server in the place of \"tcp-churn\"'s session", Transport::TcpChurn, 1, 1000, 100,
     ASCII, false, 60, 0, true},
};

qint64 clockNs()
{
    static QElapsedTimer clock;
    if (!clock.isValid())
        clock.start();
    return clock.nsecsElapsed();
}

// Runs the event loop until `done` holds (asked every `everyMs`) or the time
// is up; answers `done`.
bool runUntil(const std::function<bool()> &done, double seconds, int everyMs = 20)
{
    if (done())
        return true;
    QEventLoop loop;
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    check.start(everyMs);
    QTimer::singleShot(int(seconds * 1000), &loop, &QEventLoop::quit);
    loop.exec();
    return done();
}

// A moment of a case: this process's processor time, the wall clock and the
// bytes the sessions had received.
struct Mark {
    double cpu = 0;
    qint64 ns = 0;
    qint64 received = 0;
    QList<QByteArray> words;   // what the feeder said with it

    static Mark now(qint64 received) { return {processCpuSeconds(), clockNs(), received, {}}; }
};

// How late a 5 ms timer fires: the time the event loop kept it waiting. The
// same lateness counting only the time this thread was working ("own") is
// what an otherwise idle machine would see.
class LatencyProbe
{
public:
    LatencyProbe()
    {
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, [this] {
            const qint64 now = clockNs();
            const qint64 cpuNow = threadCpuNs();
            const qint64 waited = now - lastNs;
            lateness.push_back(std::max<qint64>(0, waited - PeriodNs));
            ownLateness.push_back(std::max<qint64>(0, std::min(waited, cpuNow - lastCpuNs) - PeriodNs));
            lastNs = now;
            lastCpuNs = cpuNow;
        });
    }
    void start()
    {
        lateness.clear();
        ownLateness.clear();
        lastNs = clockNs();
        lastCpuNs = threadCpuNs();
        timer.start(PeriodNs / 1000000);
    }
    void stop() { timer.stop(); }
    double percentileMs(double share, bool own = false) const
    {
        std::vector<qint64> sorted = own ? ownLateness : lateness;
        if (sorted.empty())
            return 0;
        const size_t at = std::min(sorted.size() - 1, size_t(share * double(sorted.size())));
        std::nth_element(sorted.begin(), sorted.begin() + qsizetype(at), sorted.end());
        return sorted[at] / 1e6;
    }

private:
    static constexpr qint64 PeriodNs = 5000000;
    QTimer timer;
    qint64 lastNs = 0;
    qint64 lastCpuNs = 0;
    std::vector<qint64> lateness;
    std::vector<qint64> ownLateness;
};

// This program again, as the feeder of a case. Each line it reports becomes
// a Mark, taken as the line arrives.
class FeederProcess
{
public:
    FeederProcess(const QStringList &arguments, std::function<qint64()> received)
        : received(std::move(received))
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [this] {
            while (process.canReadLine()) {
                QList<QByteArray> words = process.readLine().trimmed().split(' ');
                const QByteArray keyword = words.takeFirst();
                Mark mark = Mark::now(this->received());
                mark.words = words;
                marks.insert(keyword, mark);
            }
        });
        process.start(QCoreApplication::applicationFilePath(), QStringList{QStringLiteral("--feed")} + arguments);
    }
    ~FeederProcess()
    {
        process.terminate();
        if (!process.waitForFinished(5000)) {
            process.kill();
            process.waitForFinished();
        }
    }

    // False when the feeder ended or the time ran out first.
    bool waitFor(const QByteArray &keyword, double seconds)
    {
        runUntil([&] { return marks.contains(keyword) || process.state() == QProcess::NotRunning; }, seconds);
        return marks.contains(keyword);
    }
    Mark mark(const QByteArray &keyword) const { return marks.value(keyword); }
    qint64 number(const QByteArray &keyword) const { return mark(keyword).words.value(0).toLongLong(); }
    QVector<qint64> sent() const
    {
        QVector<qint64> bytes;
        for (const QByteArray &word : mark("sent").words)
            bytes.append(word.toLongLong());
        return bytes;
    }

private:
    std::function<qint64()> received;
    QProcess process;
    QHash<QByteArray, Mark> marks;
};

struct Figures {
    double mbPerSecond = 0;
    double cpuPerMb = -1;
    double corePercent = 0;
    double peakMiB = 0;
    double p99Ms = 0;
    double maxMs = 0;
    double ownP99Ms = 0;
    double ownMaxMs = 0;
    double drainSeconds = 0;
    qint64 endNs = 0;
    StreamDamage view;
    StreamDamage log;
    QString problem;
    QString note;

    void measure(const Mark &begin, const Mark &end)
    {
        const double seconds = (end.ns - begin.ns) / 1e9;
        const double cpu = end.cpu - begin.cpu;
        const double mb = (end.received - begin.received) / 1e6;
        mbPerSecond = mb / seconds;
        cpuPerMb = mb > 0 ? cpu / mb : -1;
        corePercent = 100 * cpu / seconds;
        endNs = end.ns;
    }
    // Latency over the window, memory up to its end (before the bench reads
    // the views).
    void measureEnd(const LatencyProbe &probe)
    {
        peakMiB = peakResidentMiB();
        p99Ms = probe.percentileMs(0.99);
        maxMs = probe.percentileMs(1);
        ownP99Ms = probe.percentileMs(0.99, true);
        ownMaxMs = probe.percentileMs(1, true);
    }
};

// The bytes a hex view or log shows ("30 31 0A "). A view may break a long
// line anywhere, even inside a pair; words that are no pair (a note in the
// log) are left out.
QByteArray bytesFromHex(const QByteArray &text)
{
    QByteArray bytes;
    QByteArray pair;
    bool valid = true;
    for (const char c : text + ' ') {
        if (c == '\n')
            continue;
        if (c != ' ') {
            pair += c;
            valid = valid && std::isxdigit(static_cast<unsigned char>(c));
            continue;
        }
        if (valid && pair.size() == 2)
            bytes += char(pair.toInt(nullptr, 16));
        pair.clear();
        valid = true;
    }
    return bytes;
}

// The sessions of a case, configured through their settings as a document
// or the options dialog would, shown in one window as the workspace arranges
// them, and started.
class Workspace
{
public:
    Workspace(const Case &scenario, const QString &logFolder)
        : scenario(scenario)
    {
        if (scenario.bare && scenario.transport != Transport::Serial) {
            bareServer = std::make_unique<BareServer>();
            return;
        }
        auto *grid = new QGridLayout(&window);
        const int columns = scenario.sessions > 1 ? 4 : 1;
        for (int i = 0; i < scenario.sessions; ++i) {
            auto *session = new SerialPortWidget(&window);
            configure(session, QDir(logFolder).filePath(QStringLiteral("session%1.log").arg(i)));
            grid->addWidget(session, i / columns, i % columns);
            sessions.push_back(session);
        }
        window.resize(scenario.sessions > 1 ? QSize(1920, 1080) : QSize(1200, 800));
        window.show();
        if (scenario.bare)
            replaceViewsWithBareTerminals();
    }

    // Empty, or why the sessions could not start.
    QString start()
    {
        for (SerialPortWidget *session : sessions) {
            if (scenario.transport != Transport::Serial) {
                session->start();
                if (!session->server() || !session->server()->isListening())
                    return QStringLiteral("the TCP server session does not listen");
                continue;
            }
            if (!makePair())
                return QStringLiteral("socat made no pty pair");
            session->start(pairs.back()->portA());
            if (!session->serialPort()->isOpen())
                return QStringLiteral("the session did not open %1").arg(pairs.back()->portA());
        }
        if (bareServer && !bareServer->isListening())
            return QStringLiteral("the bare server does not listen");
        for (BareTerminal *terminal : terminals) {
            if (!makePair())
                return QStringLiteral("socat made no pty pair");
            if (!terminal->open(pairs.back()->portA()))
                return QStringLiteral("the bare terminal did not open %1").arg(pairs.back()->portA());
        }
        return QString();
    }

    QStringList feedArguments(double scale) const
    {
        QStringList arguments = {scenario.transport == Transport::Serial ? QStringLiteral("serial") : QStringLiteral("tcp"),
                                 QString::number(scenario.rate), QString::number(scenario.seconds * scale),
                                 QString::number(qint64(scenario.bytesPerStream * scale))};
        for (const auto &pair : pairs)
            arguments << pair->portB();
        if (scenario.transport != Transport::Serial)
            arguments << QString::number(serverPort()) << QString::number(scenario.clients);
        return arguments;
    }

    quint16 serverPort() const { return bareServer ? bareServer->port() : sessions.front()->server()->serverPort(); }

    qint64 received() const
    {
        qint64 total = 0;
        for (const SerialPortWidget *session : sessions)
            total += session->receivedBytes();
        for (const BareTerminal *terminal : terminals)
            total += terminal->receivedBytes();
        if (bareServer)
            total += bareServer->receivedBytes();
        return total;
    }

    // Seconds from `sinceNs` until the sessions have every byte sent and
    // have shown all of it (a refresh works off a flood over several
    // ticks); -1 if that does not come within a minute.
    double waitDrained(qint64 total, qint64 sinceNs)
    {
        const bool settled = runUntil([&] {
            return received() >= total
                && std::all_of(sessions.begin(), sessions.end(),
                               [](const SerialPortWidget *session) { return session->queuedBytes() == 0; });
        }, 60);
        return settled ? (clockNs() - sinceNs) / 1e9 : -1;
    }

    void stop()
    {
        for (SerialPortWidget *session : sessions)
            session->stop();   // the log gets what it still holds
    }

    StreamDamage damage(const QVector<qint64> &sent, bool inLogs) const
    {
        StreamDamage total;
        for (int i = 0; i < int(sessions.size()); ++i) {
            const QByteArray text = inLogs ? logText(i) : viewText(i).toLocal8Bit();
            total += checkStreams(scenario.format == HEX ? bytesFromHex(text) : text, streamsOf(i, sent), inLogs);
        }
        return total;
    }

private:
    bool makePair()
    {
        pairs.push_back(std::make_unique<SocatPair>());
        return pairs.back()->start();
    }

    // Each session's receive view becomes a bare terminal of the same place,
    // size and font; the sessions go, timers and all.
    void replaceViewsWithBareTerminals()
    {
        QCoreApplication::sendPostedEvents();
        for (SerialPortWidget *session : sessions) {
            const QWidget *view = session->findChild<QWidget *>(QStringLiteral("receiveView"));
            auto *terminal = new BareTerminal(scenario.format == HEX, &window);
            terminal->setGeometry(QRect(view->mapTo(&window, QPoint()), view->size()));
            // Unshaped, as the views lay out received text.
            QFont font = view->font();
            font.setStyleStrategy(QFont::StyleStrategy(font.styleStrategy() | QFont::PreferNoShaping));
            terminal->setFont(font);
            terminals.push_back(terminal);
            delete session;
        }
        sessions.clear();
        for (BareTerminal *terminal : terminals)
            terminal->show();
    }

    void configure(SerialPortWidget *session, const QString &logFile) const
    {
        PortSettings port = session->portSettings();
        port.baudRate = 115200;
        if (scenario.transport != Transport::Serial) {
            port.connMode = TcpServerMode;
            port.lastTargetPort = 0;   // any free port
        }
        session->setPortSettings(port);
        FormatSetting format = session->formatSettings();
        format.ReceiveMsgFormat = scenario.format;
        format.LogSaveFlag = scenario.logging;
        format.LogFilePath = logFile;
        if (scenario.sessions > 1) {
            // Beyond one session the workspace folds the settings panels away.
            format.SplitterLeft = 0;
            format.SplitterRight = 100;
        }
        session->setFormatSettings(format);
        session->updateDisplay();
    }

    QString viewText(int i) const
    {
        return sessions.at(size_t(i))->findChild<QWidget *>(QStringLiteral("receiveView"))->property("plainText").toString();
    }

    // What the log recorded, without the header of the file.
    QByteArray logText(int i) const
    {
        QFile file(sessions.at(size_t(i))->formatSettings().currentLogFileName);
        const QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        const qsizetype headerEnd = content.indexOf("\n\n");
        return headerEnd < 0 ? QByteArray() : content.mid(headerEnd + 2);
    }

    // A serial session gets the stream of its own feeder; the server session all of them.
    QVector<qint64> streamsOf(int i, const QVector<qint64> &sent) const
    {
        if (scenario.transport != Transport::Serial)
            return sent;
        QVector<qint64> own(sent.size(), 0);
        if (i < sent.size())
            own[i] = sent.at(i);
        return own;
    }

    const Case &scenario;
    std::vector<std::unique_ptr<SocatPair>> pairs;   // outlive the sessions
    QWidget window;
    std::vector<SerialPortWidget *> sessions;
    std::vector<BareTerminal *> terminals;
    std::unique_ptr<BareServer> bareServer;
};

// Runs a feeder through. The case's window is from its first byte to its
// last one sent (or to `windowEnd`, an earlier mark).
bool feedThrough(FeederProcess &feeder, double seconds, LatencyProbe &probe, Figures &figures,
                 const QByteArray &windowEnd = "sent")
{
    if (!feeder.waitFor("start", 60)) {
        figures.problem = QStringLiteral("the feeder did not start");
        return false;
    }
    probe.start();
    const bool ended = feeder.waitFor(windowEnd, seconds + 120);
    probe.stop();
    if (!ended || !feeder.waitFor("sent", 120)) {
        figures.problem = QStringLiteral("the feeder did not finish");
        return false;
    }
    figures.measure(feeder.mark("start"), feeder.mark(windowEnd));
    figures.measureEnd(probe);
    return true;
}

// Clients come and go at the case's rate: first with a handful standing,
// then with the case's crowd; the figures are those of the second.
QVector<qint64> churn(const Case &scenario, double seconds, Workspace &workspace, LatencyProbe &probe, Figures &figures)
{
    struct Phase {
        int standing;
        double seconds;
        double cpuPerConnectMs = 0;
    } phases[] = {{10, std::max(1.0, seconds / 12)}, {scenario.clients, seconds}};
    QVector<qint64> sent;
    QMap<QByteArray, qint64> stats;
    for (Phase &phase : phases) {
        FeederProcess clients({QStringLiteral("churn"), QString::number(scenario.rate), QString::number(phase.standing),
                               QString::number(phase.seconds), QString::number(workspace.serverPort()),
                               QString::number(sent.size())},
                              [&] { return workspace.received(); });
        // The last clients all leave at once when it ends: not part of the churn.
        if (!feedThrough(clients, phase.standing / double(scenario.rate) + phase.seconds, probe, figures, "ending"))
            return sent;
        const Mark steady = clients.mark("steady");
        const Mark ending = clients.mark("ending");
        phase.cpuPerConnectMs =
            1000 * (ending.cpu - steady.cpu) / std::max<qint64>(1, clients.number("ending") - clients.number("steady"));
        clients.waitFor("stats", 10);
        for (const QByteArray &word : clients.mark("stats").words)
            stats[word.split('=').first()] += word.split('=').value(1).toLongLong();
        sent += clients.sent();
    }
    figures.note = QStringLiteral("connects %1: refused %2, reset or closed %3, never connected %4, slower than 1 s %5; "
                                  "CPU per connect %6 ms with %7 standing, %8 ms with %9")
                       .arg(stats.value("connects"))
                       .arg(stats.value("refused"))
                       .arg(stats.value("reset"))
                       .arg(stats.value("unconnected"))
                       .arg(stats.value("slow"))
                       .arg(phases[0].cpuPerConnectMs, 0, 'f', 2)
                       .arg(phases[0].standing)
                       .arg(phases[1].cpuPerConnectMs, 0, 'f', 2)
                       .arg(phases[1].standing);
    return sent;
}

Figures runCase(const Case &scenario, double scale)
{
    resetPeakResident();
    Figures figures;
    const double seconds = scenario.seconds * scale;
    QTemporaryDir logFolder;
    Workspace workspace(scenario, logFolder.path());
    figures.problem = workspace.start();
    if (!figures.problem.isEmpty())
        return figures;
    runUntil([] { return false; }, 1);   // first paint and port scan are not the case's

    LatencyProbe probe;
    QVector<qint64> sent;
    if (scenario.rate == Idle) {
        const Mark begin = Mark::now(workspace.received());
        probe.start();
        runUntil([] { return false; }, seconds);
        probe.stop();
        figures.measure(begin, Mark::now(workspace.received()));
        figures.measureEnd(probe);
    } else {
        // A feeder stays until the sessions are stopped: a serial far end
        // that goes away takes socat, and the port, with it.
        std::unique_ptr<FeederProcess> feeder;
        if (scenario.transport == Transport::TcpChurn) {
            sent = churn(scenario, seconds, workspace, probe, figures);
        } else {
            feeder = std::make_unique<FeederProcess>(workspace.feedArguments(scale), [&] { return workspace.received(); });
            if (feedThrough(*feeder, seconds, probe, figures))
                sent = feeder->sent();
        }
        if (!figures.problem.isEmpty())
            return figures;
        figures.drainSeconds = workspace.waitDrained(std::accumulate(sent.begin(), sent.end(), qint64(0)), figures.endNs);
        workspace.stop();
    }
    figures.view = workspace.damage(sent, false);
    if (scenario.logging)
        figures.log = workspace.damage(sent, true);
    if (scenario.transport == Transport::TcpChurn && scenario.logging) {
        const qint64 total = std::accumulate(sent.begin(), sent.end(), qint64(0));
        figures.note += QStringLiteral("; lines sent %1, logged %2")
                            .arg(total / NumberedStream::LineLength)
                            .arg((total - figures.log.lost) / NumberedStream::LineLength);
    }
    return figures;
}

QString damageText(const StreamDamage &damage)
{
    return QStringLiteral("%1/%2").arg(damage.lost).arg(damage.misplaced);
}

// The case name left-aligned, then the figures right-aligned under their titles.
QString tableLine(const QStringList &cells)
{
    static const int widths[] = {-15, 8, 9, 7, 9, 7, 8, 8, 8, 8, 11, 11};
    QString line;
    for (int i = 0; i < cells.size(); ++i)
        line += QStringLiteral("%1 ").arg(cells.at(i), i < int(std::size(widths)) ? widths[i] : 0);
    return line.trimmed();
}

QString row(const Case &scenario, const Figures &f)
{
    const QString name = QString::fromLatin1(scenario.name);
    if (!f.problem.isEmpty())
        return tableLine({name, f.problem});
    auto number = [](double value, int decimals) { return QString::number(value, 'f', decimals); };
    return tableLine({name, number(f.mbPerSecond, 3), f.cpuPerMb < 0 ? QStringLiteral("-") : number(f.cpuPerMb, 2),
                      number(f.corePercent, 1), number(f.peakMiB, 0), number(f.p99Ms, 1), number(f.maxMs, 1),
                      number(f.ownP99Ms, 1), number(f.ownMaxMs, 1),
                      f.drainSeconds < 0 ? QStringLiteral("never") : number(f.drainSeconds, 1),
                      scenario.bare ? QStringLiteral("-") : damageText(f.view),
                      scenario.logging ? damageText(f.log) : QStringLiteral("-")});
}

QtMessageHandler usualMessageHandler = nullptr;

// The offscreen platform says this of every window it shows.
void dropPlatformNoise(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (!message.contains(QLatin1String("does not support propagateSizeHints")))
        usualMessageHandler(type, context, message);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--feed") == 0) {
        QCoreApplication app(argc, argv);
        return runFeeder(app.arguments().mid(2));
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const IsolatedEnvironment environment;   // settings and home in a temporary folder
    raiseOpenFileLimit();

    const QStringList args = QCoreApplication::arguments();
    const int scaleAt = int(args.indexOf(QStringLiteral("--scale")));
    const double scale = scaleAt > 0 ? args.value(scaleAt + 1).toDouble() : 1.0;
    const int onlyAt = int(args.indexOf(QStringLiteral("--only")));
    const QStringList only = onlyAt > 0 ? args.value(onlyAt + 1).split(QLatin1Char(',')) : QStringList();
    const bool debug = args.contains(QStringLiteral("--debug"));
    if (scale <= 0 || args.contains(QStringLiteral("--help"))) {
        QTextStream(stdout) << "Usage: bench_session [--scale F] [--only WORD[,WORD...]] [--debug]\n";
        return scale <= 0 ? 2 : 0;
    }
    if (!debug) {
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
        usualMessageHandler = qInstallMessageHandler(dropPlatformNoise);
    }

    QTextStream out(stdout);
    out << "Port sessions end to end: sessions in this process, their far ends in a feeder process\n"
           "(socat pty pairs, loopback TCP clients). Durations x" << scale << ", debug output "
        << (debug ? "on" : "off") << ".\n\n";
    for (const Case &scenario : cases)
        out << QStringLiteral("  %1 %2\n").arg(QString::fromLatin1(scenario.name), -15).arg(QString::fromLatin1(scenario.what));
    out << "\nFrom the feeder's first byte to its last (the churn: until it stops connecting):\n"
           "  MB/s      bytes received by the sessions, 10^6 a MB, per second of wall time\n"
           "  CPU-s/MB  this process's processor time (user + system) per MB received;\n"
           "            core % is the same time per second of wall time\n"
           "  p99, max  event-loop latency: how late a 5 ms timer fired, 99th percentile and worst;\n"
           "  own ...   the same, counting only the time the event loop was busy itself\n"
           "  peak MiB  highest resident memory, from the start of the case\n"
           "Then:\n"
           "  drain s   from the last byte sent until the sessions had shown every byte\n"
           "  view/log  bytes lost / bytes misplaced (out of order, repeated, foreign) in the views'\n"
           "            text (a tail of what was sent: the view keeps its display buffer) and in the logs\n"
           "A floor case runs a bare terminal in each session's place: a port read at the read timer's\n"
           "period, new rows scrolled in and drawn at the refresh period, no store, wrapping, stamps or\n"
           "log; what the machine charges for the event loop, the ports and the pixels before any\n"
           "session work.\n"
           "Processor time is the steady figure; wall-clock ones (MB/s, latency) move with the machine's other load.\n\n";
    out << tableLine({QStringLiteral("case"), QStringLiteral("MB/s"), QStringLiteral("CPU-s/MB"), QStringLiteral("core %"),
                      QStringLiteral("peak MiB"), QStringLiteral("p99 ms"), QStringLiteral("max ms"),
                      QStringLiteral("own p99"), QStringLiteral("own max"), QStringLiteral("drain s"),
                      QStringLiteral("view"), QStringLiteral("log")})
        << '\n';
    out.flush();
    // A word picks the case of that name, or else the cases whose names hold it.
    const auto named = [&](const QString &word) {
        return std::any_of(std::begin(cases), std::end(cases), [&](const Case &c) { return word == QLatin1String(c.name); });
    };
    for (const Case &scenario : cases) {
        const QString name = QString::fromLatin1(scenario.name);
        if (!only.isEmpty() && std::none_of(only.begin(), only.end(), [&](const QString &word) {
                return named(word) ? name == word : name.contains(word);
            }))
            continue;
        const Figures figures = runCase(scenario, scale);
        out << row(scenario, figures) << '\n';
        if (!figures.note.isEmpty())
            out << "    " << figures.note << '\n';
        out.flush();
    }
    return 0;
}
