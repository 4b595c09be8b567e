#include "plot/plotlineparser.h"

namespace {

bool isSeparator(char c)
{
    return c == ',' || c == ' ' || c == '\t' || c == ';';
}

bool isNameStart(char c)
{
    const auto u = static_cast<unsigned char>(c);
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || u >= 0x80;
}

// Names may carry a unit or an index: "temp(C)", "v[2]", "rpm/s", "duty%".
bool isName(QByteArrayView token)
{
    if (token.isEmpty() || !isNameStart(token.front()))
        return false;
    for (char c : token) {
        if (!isNameStart(c) && !(c >= '0' && c <= '9') && !QByteArrayView("-.()[]/%").contains(c))
            return false;
    }
    return true;
}

bool toNumber(QByteArrayView token, double &value)
{
    bool ok = false;
    value = token.toDouble(&ok);
    return ok;
}

// Splits at runs of separators; stops when `visit` returns false.
template<typename Visit>
void forEachField(QByteArrayView line, Visit visit)
{
    qsizetype i = 0;
    const qsizetype n = line.size();
    while (i < n) {
        while (i < n && isSeparator(line[i]))
            ++i;
        const qsizetype start = i;
        while (i < n && !isSeparator(line[i]))
            ++i;
        if (i > start && !visit(line.sliced(start, i - start)))
            return;
    }
}

PlotLine parseNumbers(QByteArrayView line)
{
    PlotLine result;
    result.kind = PlotLine::Numbers;
    bool allNames = true;
    bool allNumbers = true;
    forEachField(line, [&](QByteArrayView field) {
        if (result.names.size() + result.values.size() >= MaxPlotChannels)
            return false;
        double value = 0;
        if (allNumbers && toNumber(field, value)) {
            result.values.append(value);
            allNames = false;
        } else if (allNames && isName(field)) {
            result.names.append(field);
            allNumbers = false;
        } else {
            allNames = allNumbers = false;
            return false;
        }
        return true;
    });
    if (allNumbers && !result.values.isEmpty())
        return result;
    if (allNames && !result.names.isEmpty()) {
        result.kind = PlotLine::Header;
        return result;
    }
    return {PlotLine::Junk, {}, {}};
}

// "a:1 b=2", "a: 1, b: 2": a field ending in ':' or '=' takes the next
// field as its value.
PlotLine parsePairs(QByteArrayView line)
{
    PlotLine result;
    result.kind = PlotLine::Pairs;
    bool ok = true;
    QByteArrayView waitingName;
    forEachField(line, [&](QByteArrayView field) {
        if (!waitingName.isNull()) {
            double value = 0;
            ok = toNumber(field, value);
            if (ok && result.values.size() < MaxPlotChannels) {
                result.names.append(waitingName);
                result.values.append(value);
            }
            waitingName = {};
            return ok;
        }
        qsizetype mark = field.indexOf(':');
        if (mark < 0)
            mark = field.indexOf('=');
        const QByteArrayView name = mark < 0 ? QByteArrayView() : field.first(mark);
        ok = isName(name);
        if (!ok)
            return false;
        const QByteArrayView text = field.sliced(mark + 1);
        if (text.isEmpty()) {
            waitingName = name;
            return true;
        }
        double value = 0;
        ok = toNumber(text, value);
        if (ok && result.values.size() < MaxPlotChannels) {
            result.names.append(name);
            result.values.append(value);
        }
        return ok;
    });
    if (!ok || !waitingName.isNull() || result.values.isEmpty())
        return {PlotLine::Junk, {}, {}};
    return result;
}

} // namespace

PlotLine parsePlotLine(QByteArrayView line, PlotFormat format)
{
    line = line.trimmed();
    if (line.isEmpty())
        return {};
    const bool looksPaired = line.contains(':') || line.contains('=');
    switch (format) {
    case PlotFormat::Numbers:
        return parseNumbers(line);
    case PlotFormat::Pairs:
        return parsePairs(line);
    case PlotFormat::Auto:
        break;
    }
    return looksPaired ? parsePairs(line) : parseNumbers(line);
}

void PlotLineSplitter::feed(QByteArrayView chunk, const std::function<void(QByteArrayView)> &line,
                            const std::function<void()> &overlong)
{
    qsizetype start = 0;
    const qsizetype n = chunk.size();
    for (qsizetype i = 0; i < n; ++i) {
        const char c = chunk[i];
        if (c != '\n' && c != '\r')
            continue;
        const QByteArrayView piece = chunk.sliced(start, i - start);
        start = i + 1;
        if (dropping) {
            dropping = false;
            pending.clear();
            overlong();
        } else if (pending.isEmpty()) {
            line(piece);
        } else if (pending.size() + piece.size() > MaxLineLength) {
            pending.clear();
            overlong();
        } else {
            pending.append(piece);
            line(pending);
            pending.clear();
        }
    }
    if (start >= n || dropping)
        return;
    const QByteArrayView rest = chunk.sliced(start);
    if (pending.size() + rest.size() > MaxLineLength) {
        pending.clear();
        dropping = true;
    } else {
        pending.append(rest);
    }
}

void PlotLineSplitter::clear()
{
    pending.clear();
    dropping = false;
}
