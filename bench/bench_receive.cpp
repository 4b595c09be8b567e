// Throughput of the receive path: bytes queued by a transport, rendered by
// the 20 ms refresh, put into a shown receive view and painted, with the
// view's buffer cuts included. Prints one row per display format and chunk
// size, then how long finding takes in a full buffer.
//
// Usage: bench_receive [MiB per case, default 32] [KiB per tick, default 256]
//                      [only the cases whose name contains this] [--debug]

#include <QApplication>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QTextStream>

#include <algorithm>
#include <ctime>

#include "benchsupport.h"
#include "common/logging.h"
#include "session/chunkrenderer.h"
#include "session/serialportwidget.h"
#include "view/findbar.h"
#include "view/linestore.h"
#include "view/receiveview.h"
#include "view/textsearch.h"

namespace {

constexpr qint64 bufferLimit = 10 << 20;

double cpuMs(std::clock_t since)
{
    return (std::clock() - since) * 1000.0 / CLOCKS_PER_SEC;
}

// Device-like text: numbered measurement lines of varying length.
QByteArray sampleData()
{
    QByteArray data;
    for (int i = 0; data.size() < (1 << 20); ++i) {
        data += "SENSOR " + QByteArray::number(i % 97) + ": t=" + QByteArray::number(20 + (i * 7) % 150 / 10.0)
                + " C, rh=" + QByteArray::number(30 + i % 61) + " %, seq=" + QByteArray::number(i);
        data += (i % 5 == 0) ? "\n" : "\r\n";
    }
    return data;
}

struct Case {
    const char *name;
    int receiveFormat;
    bool stamps;
    bool colours;
};

struct Result {
    double mbPerSecond = 0;
    double mbPerCpuSecond = 0;
    double longestTickMs = 0;      // queue drained, rendered, inserted, cut and painted
    double longestTickCpuMs = 0;   // the same in processor time: other load excluded
    double bytesPerChar = 0;       // resident growth over the characters held at most
    qint64 heldChars = 0;
};

void configure(SerialPortWidget &session, const Case &testCase)
{
    FormatSetting format = session.formatSettings();
    format.ReceiveMsgFormat = testCase.receiveFormat;
    format.DisplayMsgTime = testCase.stamps;
    format.RxTimeFormat = QStringLiteral("[Rx][hh:mm:ss.zzz] ");
    format.FormatDisplayColor = testCase.colours;
    format.ReceiveTextColor = QColor(0x20, 0x80, 0x20);
    format.DisplayBufferSize = bufferLimit;
    session.setFormatSettings(format);
    session.updateDisplay();   // the panel agrees, so the refresh keeps the format
    session.resize(1200, 800);
    session.show();
    QApplication::processEvents();
}

Result runCase(const Case &testCase, int chunkSize, qint64 totalBytes, int bytesPerTick, const QByteArray &sample)
{
    Result result;
    SerialPortWidget session;
    configure(session, testCase);
    ReceiveView *view = session.receiveView();
    resetPeakResident();
    const double baseMiB = residentMiB();

    QElapsedTimer total;
    total.start();
    const std::clock_t totalCpu = std::clock();
    qint64 sent = 0;
    int offset = 0;
    while (sent < totalBytes) {
        for (int queued = 0; queued < bytesPerTick && sent < totalBytes; queued += chunkSize) {
            if (offset + chunkSize > sample.size())
                offset = 0;
            session.pushByteArray(sample.mid(offset, chunkSize), true, RX);
            offset += chunkSize;
            sent += chunkSize;
        }
        // A refresh works off at most a tick's worth; the rest waits for the next.
        do {
            QElapsedTimer tick;
            tick.start();
            const std::clock_t tickCpu = std::clock();
            session.displayPortBuffer();
            QApplication::processEvents();
            result.longestTickMs = std::max(result.longestTickMs, tick.nsecsElapsed() / 1e6);
            result.longestTickCpuMs = std::max(result.longestTickCpuMs, cpuMs(tickCpu));
        } while (session.queuedBytes() > 0);
        result.heldChars = std::max(result.heldChars, view->characterCount());
    }
    result.mbPerSecond = sent / 1e6 / (total.nsecsElapsed() / 1e9);
    result.mbPerCpuSecond = sent / 1e6 / (cpuMs(totalCpu) / 1e3);
    result.bytesPerChar = (peakResidentMiB() - baseMiB) * (1 << 20) / std::max<qint64>(1, result.heldChars);
    return result;
}

// Finding in a buffer filled to the limit with the text case's rendering.
void runFind(QTextStream &out, const QByteArray &sample)
{
    ChunkRenderer renderer;
    FormatSetting format;
    LineStore store;
    for (qsizetype offset = 0; store.size() < bufferLimit - sample.size(); offset = 0) {
        for (; offset < sample.size() && store.size() < bufferLimit - 1024; offset += 1024)
            store.append(renderer.renderForDisplay({QTime::currentTime(), RX, sample.mid(offset, 1024)}, format).text);
    }
    store.append(QStringLiteral("last line: MARKER-END\n"));

    auto timed = [](const std::function<qint64()> &work, qint64 *value) {
        QElapsedTimer timer;
        timer.start();
        *value = work();
        return timer.nsecsElapsed() / 1e6;
    };
    struct Probe {
        const char *what;
        SearchPattern pattern;
        bool count;
    };
    const Probe probes[] = {
        {"first match, plain, at the very end", {QStringLiteral("MARKER-END")}, false},
        {"first match, expression, at the very end", {QStringLiteral("MARKER-\\w+"), true}, false},
        {"count all, plain \"SENSOR 4\"", {QStringLiteral("SENSOR 4")}, true},
        {"count all, expression \"rh=\\d+ %\"", {QStringLiteral("rh=\\d+ %"), true}, true},
    };
    out << "\nFind in a full buffer (" << store.size() << " characters):\n";
    for (const Probe &probe : probes) {
        const TextMatcher matcher(probe.pattern);
        qint64 value = 0;
        const double ms = timed([&] {
            if (!probe.count)
                return StoreSearch(store, matcher).next(store.begin()).start;
            MatchTally tally;
            tally.update(store, matcher);
            return tally.total();
        }, &value);
        out << QStringLiteral("  %1 %2 ms  (%3 %4)\n")
                   .arg(QString::fromLatin1(probe.what), -44)
                   .arg(ms, 7, 'f', 1)
                   .arg(probe.count ? QStringLiteral("matches") : QStringLiteral("at"))
                   .arg(value);
    }

    // What a user waits for: a pattern typed into the find bar of a full
    // view, the first match selected and every match counted.
    SerialPortWidget session;
    configure(session, {"text", ASCII, false, false});
    for (qsizetype offset = 0; session.receiveView()->characterCount() < bufferLimit - sample.size();) {
        for (int i = 0; i < 256; ++i, offset = (offset + 1024) % sample.size())
            session.pushByteArray(sample.mid(offset, 1024), true, RX);
        session.displayPortBuffer();
    }
    ReceiveView *view = session.receiveView();
    view->openFindBar();
    qint64 held = view->characterCount();
    const double typed = timed([&] {
        view->findBar()->startWith(QStringLiteral("SENSOR 4"));
        return view->characterCount();
    }, &held);
    const double next = timed([&] {
        view->findNext();
        return view->characterCount();
    }, &held);
    out << QStringLiteral("  %1 %2 ms\n  %3 %4 ms\n")
               .arg(QStringLiteral("find bar: typed pattern, match and count"), -44)
               .arg(typed, 7, 'f', 1)
               .arg(QStringLiteral("find bar: next match, count kept"), -44)
               .arg(next, 7, 'f', 1);
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("VERDANE"));
    QCoreApplication::setApplicationName(QStringLiteral("QuorvaneBench"));

    QStringList args = QCoreApplication::arguments();
    // Debug output would measure the log, not the view.
    if (!args.removeAll(QStringLiteral("--debug")))
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const qint64 totalBytes = qint64(args.value(1, QStringLiteral("32")).toInt()) << 20;
    const int bytesPerTick = args.value(2, QStringLiteral("256")).toInt() << 10;
    const QString only = args.value(3);
    const QByteArray sample = sampleData();

    const Case cases[] = {
        {"text", ASCII, false, false},
        {"hex", HEX, false, false},
        {"text+stamps", ASCII, true, false},
        {"text+colours", ASCII, false, true},
    };
    const int chunkSizes[] = {64, 1024, 16384};

    QTextStream out(stdout);
    out << "Receive path: " << (totalBytes >> 20) << " MiB per case, " << (bytesPerTick >> 10)
        << " KiB per 20 ms tick (" << QString::number(bytesPerTick / 0.02 / 1e6, 'f', 1)
        << " MB/s offered), display buffer 10 MiB, debug log "
        << (lcDefault().isDebugEnabled() ? "on" : "off") << "\n";
    out << "MB/cpu-s = megabytes per processor second (other load excluded);\n"
           "tick = the longest refresh (render + insert + cut + paint), in wall and processor time;\n"
           "B/char = resident growth at the peak over the most characters the view held\n\n";
    out << QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8\n")
               .arg(QStringLiteral("case"), -14)
               .arg(QStringLiteral("chunk"), 7)
               .arg(QStringLiteral("MB/s"), 8)
               .arg(QStringLiteral("MB/cpu-s"), 9)
               .arg(QStringLiteral("tick ms"), 8)
               .arg(QStringLiteral("cpu ms"), 7)
               .arg(QStringLiteral("B/char"), 7)
               .arg(QStringLiteral("view chars"), 11);
    out.flush();
    for (const Case &testCase : cases) {
        if (!QString::fromLatin1(testCase.name).contains(only))
            continue;
        for (int chunkSize : chunkSizes) {
            const Result r = runCase(testCase, chunkSize, totalBytes, bytesPerTick, sample);
            out << QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8\n")
                       .arg(QString::fromLatin1(testCase.name), -14)
                       .arg(chunkSize, 7)
                       .arg(r.mbPerSecond, 8, 'f', 1)
                       .arg(r.mbPerCpuSecond, 9, 'f', 1)
                       .arg(r.longestTickMs, 8, 'f', 1)
                       .arg(r.longestTickCpuMs, 7, 'f', 1)
                       .arg(r.bytesPerChar, 7, 'f', 2)
                       .arg(r.heldChars, 11);
            out.flush();
        }
    }
    if (only.isEmpty() || QStringLiteral("find").contains(only))
        runFind(out, sample);
    return 0;
}
