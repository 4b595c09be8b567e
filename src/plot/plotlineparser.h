#ifndef QUORVANE_PLOTLINEPARSER_H
#define QUORVANE_PLOTLINEPARSER_H

#include <QByteArray>
#include <QByteArrayView>
#include <QVarLengthArray>

#include <functional>

// How the lines of a session's received data are read as plot samples.
enum class PlotFormat {
    Auto = 0,    // pairs when a line holds ':' or '=', otherwise numbers
    Numbers = 1, // numbers separated by commas, spaces, tabs or semicolons
    Pairs = 2    // "name:value" or "name=value" fields
};

constexpr int MaxPlotChannels = 16;

// One line read as a sample, a header or nothing. Names point into the line.
struct PlotLine {
    enum Kind { Empty, Numbers, Pairs, Header, Junk };
    Kind kind = Empty;
    QVarLengthArray<double, MaxPlotChannels> values;
    QVarLengthArray<QByteArrayView, MaxPlotChannels> names;
};

// Reads one line (without its line break). Fields past the sixteenth are
// ignored; "nan" and "inf" are numbers.
PlotLine parsePlotLine(QByteArrayView line, PlotFormat format);

// Cuts a stream of chunks into lines at LF, CR or CR LF. A line split across
// chunks is handed on whole once its end arrives; a line longer than
// MaxLineLength is dropped and reported once as overlong.
class PlotLineSplitter
{
public:
    static constexpr qsizetype MaxLineLength = 4096;

    // `line` is called for every complete line, `overlong` for every line dropped.
    void feed(QByteArrayView chunk, const std::function<void(QByteArrayView)> &line,
              const std::function<void()> &overlong);
    void clear();

private:
    QByteArray pending;
    bool dropping = false;
};

#endif
