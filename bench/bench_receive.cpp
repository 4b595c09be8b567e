// Throughput of the receive path: bytes queued by a transport, rendered by
// the 20 ms refresh and inserted into a shown receive view, with the view's
// buffer cuts included. Prints one row per display format and chunk size.
//
// Usage: bench_receive [MiB per case, default 32] [KiB per tick, default 256]
//                      [only the cases whose name contains this]

#include <QApplication>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTextStream>

#include <algorithm>
#include <ctime>

#include "benchsupport.h"
#include "common/logging.h"
#include "session/serialportwidget.h"

namespace {

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
    double longestTickMs = 0;
    double longestTickCpuMs = 0;   // the same tick in processor time: other load excluded
    double longestEventsMs = 0;
    double peakMiB = 0;
    int viewChars = 0;
};

Result runCase(const Case &testCase, int chunkSize, qint64 totalBytes, int bytesPerTick, const QByteArray &sample)
{
    resetPeakResident();
    Result result;
    {
        SerialPortWidget session;
        FormatSetting format = session.formatSettings();
        format.ReceiveMsgFormat = testCase.receiveFormat;
        format.DisplayMsgTime = testCase.stamps;
        format.RxTimeFormat = QStringLiteral("[Rx][hh:mm:ss.zzz] ");
        format.FormatDisplayColor = testCase.colours;
        format.ReceiveTextColor = QColor(0x20, 0x80, 0x20);
        format.DisplayBufferSize = 10 << 20;
        session.setFormatSettings(format);
        session.updateDisplay();   // the panel agrees, so the refresh keeps the format
        session.resize(1200, 800);
        session.show();
        QApplication::processEvents();

        QElapsedTimer total;
        total.start();
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
            QElapsedTimer tick;
            tick.start();
            const std::clock_t tickCpu = std::clock();
            session.displayPortBuffer();
            result.longestTickMs = std::max(result.longestTickMs, tick.nsecsElapsed() / 1e6);
            result.longestTickCpuMs =
                std::max(result.longestTickCpuMs, (std::clock() - tickCpu) * 1000.0 / CLOCKS_PER_SEC);

            QElapsedTimer events;
            events.start();
            QApplication::processEvents();
            result.longestEventsMs = std::max(result.longestEventsMs, events.nsecsElapsed() / 1e6);
        }
        result.mbPerSecond = sent / 1e6 / (total.nsecsElapsed() / 1e9);
        result.viewChars = session.findChild<QPlainTextEdit *>(QStringLiteral("receiveView"))
                               ->document()->characterCount();
        result.peakMiB = peakResidentMiB();
    }
    QApplication::processEvents();
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("VERDANE"));
    QCoreApplication::setApplicationName(QStringLiteral("QuorvaneBench"));

    const QStringList args = QCoreApplication::arguments();
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
    out << "tick = the longest refresh (render + insert + cut), in wall and processor time;\n"
           "events = the longest event processing (painting) after a refresh;\n"
           "peak = highest resident memory during the case\n\n";
    out << QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8\n")
               .arg(QStringLiteral("case"), -14)
               .arg(QStringLiteral("chunk"), 7)
               .arg(QStringLiteral("MB/s"), 9)
               .arg(QStringLiteral("tick ms"), 9)
               .arg(QStringLiteral("cpu ms"), 8)
               .arg(QStringLiteral("events ms"), 10)
               .arg(QStringLiteral("peak MiB"), 9)
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
                       .arg(r.mbPerSecond, 9, 'f', 1)
                       .arg(r.longestTickMs, 9, 'f', 1)
                       .arg(r.longestTickCpuMs, 8, 'f', 1)
                       .arg(r.longestEventsMs, 10, 'f', 1)
                       .arg(r.peakMiB, 9, 'f', 1)
                       .arg(r.viewChars, 11);
            out.flush();
        }
    }
    return 0;
}
