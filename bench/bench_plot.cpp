// Cost of the live plot on the stream its targets name: 8 channels at 1,000
// lines per second for 60 s (simulated time) after 40 s of history, so that
// 100,000 lines are kept at the end,
// redrawn at 30 frames per second into a 900×500 pane (offscreen). Prints
// parse time per sample, redraw time per frame (mean and worst, chart paint
// included) for the default window and for a window over everything kept,
// and the store's bytes per kept sample per channel.
//
// Usage: bench_plot [simulated seconds, default 60]

#include <QApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <cmath>
#include <ctime>

#include "plot/plotchartview.h"
#include "plot/plotpane.h"
#include "plot/plotstream.h"

namespace {

constexpr int Channels = 8;
constexpr int LinesPerSecond = 1000;
constexpr int FramesPerSecond = 30;
constexpr qsizetype Kept = 100000;

double cpuSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

// The lines of one 20 ms read tick, as a device would print them.
QByteArray tick(qint64 firstLine, int lines)
{
    QByteArray chunk;
    for (qint64 line = firstLine; line < firstLine + lines; ++line) {
        for (int c = 0; c < Channels; ++c) {
            if (c)
                chunk += ',';
            chunk += QByteArray::number(std::sin(line / (40.0 + c * 7)) * (c + 1), 'f', 4);
        }
        chunk += "\r\n";
    }
    return chunk;
}

// CPU time of cutting and parsing the whole stream, per sample (value).
double parseMicrosPerSample(int seconds)
{
    const int linesPerTick = LinesPerSecond / 50;
    QList<QByteArray> chunks;
    for (qint64 line = 0; line < qint64(seconds) * LinesPerSecond; line += linesPerTick)
        chunks << tick(line, linesPerTick);
    PlotStream stream;
    stream.store().setKeepLimit(Kept);
    const double start = cpuSeconds();
    for (const QByteArray &chunk : chunks)
        stream.feed(chunk, 0);
    const double cpu = cpuSeconds() - start;
    return cpu * 1e6 / double(stream.store().firstIndex() + stream.store().size()) / Channels;
}

struct Figures {
    double redrawTotalMs = 0;
    double redrawCpuMs = 0;   // the same frames in processor time: other load excluded
    double updateMs = 0;
    double redrawWorstMs = 0;
    int frames = 0;
};

Figures run(int seconds, int window)
{
    PlotPane pane;
    PlotSettings settings;
    settings.window = window;
    pane.applySettings(settings);
    pane.resize(900, 500);
    pane.show();
    QCoreApplication::processEvents();

    Figures f;
    const int ticksPerSecond = 50;
    const int linesPerTick = LinesPerSecond / ticksPerSecond;
    // History received before the measured minute, so that 100,000 lines
    // are kept at its end.
    qint64 line = 0;
    qint64 now = 1'700'000'000'000;
    for (; line < Kept - qint64(seconds) * LinesPerSecond; line += 1000, now += 1000)
        pane.feed(tick(line, 1000), now);
    for (int t = 0; t < seconds * ticksPerSecond; ++t) {
        pane.feed(tick(line, linesPerTick), now);
        line += linesPerTick;
        now += 1000 / ticksPerSecond;
        if (t == 0 || (t * FramesPerSecond) / ticksPerSecond != ((t - 1) * FramesPerSecond) / ticksPerSecond) {
            QElapsedTimer frame;
            frame.start();
            const double cpuStart = cpuSeconds();
            pane.redraw();
            f.updateMs += frame.nsecsElapsed() / 1e6;
            pane.chartView()->grab();
            const double ms = frame.nsecsElapsed() / 1e6;
            f.redrawCpuMs += (cpuSeconds() - cpuStart) * 1e3;
            f.redrawTotalMs += ms;
            f.redrawWorstMs = qMax(f.redrawWorstMs, ms);
            ++f.frames;
        }
    }
    return f;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int seconds = argc > 1 ? QByteArray(argv[1]).toInt() : 60;
    QTextStream out(stdout);
    out << "8 channels, " << LinesPerSecond << " lines/s, " << seconds << " s simulated, "
        << FramesPerSecond << " frames/s, pane 900x500, offscreen\n";
    out << QString("parse: %1 us per sample (CPU)\n").arg(parseMicrosPerSample(seconds), 0, 'f', 3);
    out << "window              frames  redraw ms/frame (mean / worst; mean CPU)\n";
    for (int window : {1000, int(Kept)}) {
        const Figures f = run(seconds, window);
        out << QString("%1  %2  %3 / %4; %6 CPU   (series update %5, paint the rest)\n")
                   .arg(window == Kept ? QStringLiteral("all kept (100,000)") : QStringLiteral("1,000 (default)    "))
                   .arg(f.frames, 6)
                   .arg(f.redrawTotalMs / qMax(1, f.frames), 6, 'f', 2)
                   .arg(f.redrawWorstMs, 6, 'f', 2)
                   .arg(f.updateMs / qMax(1, f.frames), 0, 'f', 2)
                   .arg(f.redrawCpuMs / qMax(1, f.frames), 6, 'f', 2);
    }

    PlotSampleStore store(Kept);
    const double row[Channels] = {};
    for (qsizetype i = 0; i < Kept + 12345; ++i)
        store.append(i, row, Channels);
    out << QString("store: %1 rows kept x %2 channels, %3 bytes allocated = %4 bytes per kept sample per channel\n")
               .arg(store.size())
               .arg(store.channelCount())
               .arg(store.allocatedBytes())
               .arg(double(store.allocatedBytes()) / double(store.size() * Channels), 0, 'f', 2);
    return 0;
}
