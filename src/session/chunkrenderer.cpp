#include "session/chunkrenderer.h"

#include <array>
#include <cstring>

#include "common/logging.h"
#include "session/datalog.h"

namespace {

const QString lineFeed = QStringLiteral("\n");

// Drops every carriage return that a line feed follows (or, with
// feedBefore, precedes), jumping from one carriage return to the next.
void dropCarriageReturns(QString &text, bool feedBefore)
{
    const qsizetype size = text.size();
    QChar *data = nullptr;
    qsizetype write = 0;
    qsizetype read = 0;
    for (qsizetype cr = text.indexOf(QLatin1Char('\r')); cr >= 0; cr = text.indexOf(QLatin1Char('\r'), cr + 1)) {
        const QChar *original = text.constData();
        const bool paired = feedBefore ? cr > 0 && original[cr - 1] == QLatin1Char('\n')
                                       : cr + 1 < size && original[cr + 1] == QLatin1Char('\n');
        if (!paired)
            continue;
        if (!data)
            data = text.data();
        std::memmove(data + write, data + read, (cr - read) * sizeof(QChar));
        write += cr - read;
        read = cr + 1;
    }
    if (!data)
        return;
    std::memmove(data + write, data + read, (size - read) * sizeof(QChar));
    text.truncate(write + size - read);
}

// "\r\n" becomes "\n", then "\n\r" becomes "\n": two passes, as two replacements
// would do, without searching for the pairs with a matcher built per chunk.
QString foldLineBreaks(QString text)
{
    dropCarriageReturns(text, false);
    dropCarriageReturns(text, true);
    return text;
}

} // namespace

QString toHexString(const QByteArray &bytes)
{
    // Every byte's three characters, copied whole.
    static const auto table = [] {
        static const char digits[] = "0123456789ABCDEF";
        std::array<std::array<char16_t, 3>, 256> forms {};
        for (int value = 0; value < 256; ++value)
            forms[size_t(value)] = {char16_t(digits[value >> 4]), char16_t(digits[value & 0x0F]), u' '};
        return forms;
    }();
    QString text(bytes.size() * 3, Qt::Uninitialized);
    char16_t *out = reinterpret_cast<char16_t *>(text.data());
    for (const char byte : bytes) {
        std::memcpy(out, table[quint8(byte)].data(), 3 * sizeof(char16_t));
        out += 3;
    }
    return text;
}

QString decodeByteArray(const QByteArray &bytes, int format)
{
    if (format == ASCII)
        return foldLineBreaks(QString::fromUtf8(bytes));
    return toHexString(bytes);
}

QString insertTimeStamp(QString text, const QString &stamp)
{
    text = foldLineBreaks(std::move(text));
    const QString stampedBreak = lineFeed + stamp;
    const bool endsWithBreak = text.endsWith(lineFeed);
    if (endsWithBreak)
        text.chop(1);
    text.replace(QLatin1Char('\n'), stampedBreak);
    if (endsWithBreak)
        text.append(lineFeed);
    return text;
}

QString ChunkRenderer::render(const rxData &chunk, const FormatSetting &format, bool stamped,
                              const QString &stamp, bool endsWithLineFeed, Utf8Streams &streams)
{
    if (chunk.direction == NOTE) {
        const QString line = QString::fromUtf8(chunk.data) + lineFeed;
        return endsWithLineFeed ? line : lineFeed + line;
    }
    const bool received = chunk.direction == RX;
    const int shownFormat = received ? format.ReceiveMsgFormat : format.SendMsgFormat;
    if (shownFormat != HEX && shownFormat != ASCII) {
        qCWarning(lcDefault) << (received ? "Unknown ReceiveMsgForamt:" : "Unknown SendMsgFormat:")
                             << shownFormat;
        return QString();
    }
    const bool hex = shownFormat == HEX;
    // Decoded once per chunk by a decoder that keeps a character cut off at
    // the chunk's end for the next one.
    const QString text = hex ? QString() : QString((received ? streams.received : streams.sent)(chunk.data));

    if (!received) {
        QString line;
        if (hex)
            line = (stamped ? stamp : QString()) + toHexString(chunk.data) + lineFeed;
        else if (stamped)
            line = stamp + insertTimeStamp(foldLineBreaks(text), stamp);
        else
            line = foldLineBreaks(text);
        return endsWithLineFeed ? line : lineFeed + line;
    }

    // A pause longer than the interval starts a new line. The interval runs
    // from the chunk that opened the current line, not from the previous one.
    const bool pauseElapsed = chunk.time > lastFeedTime.addMSecs(format.AutoFeedInterval);

    if (!stamped) {
        if (!hex)
            return text;
        QString line = toHexString(chunk.data);
        if (format.AutoFeedLine && pauseElapsed) {
            lastFeedTime = chunk.time;
            if (!endsWithLineFeed)
                line.prepend(lineFeed);
        }
        return line;
    }

    if (!hex) {
        const QString line = insertTimeStamp(text, stamp);
        return endsWithLineFeed ? stamp + line : line;
    }
    // With stamps the interval always splits hex output into stamped lines.
    if (!pauseElapsed)
        return toHexString(chunk.data);
    lastFeedTime = chunk.time;
    return (endsWithLineFeed ? stamp : lineFeed + stamp) + toHexString(chunk.data);
}

ChunkRenderer::Piece ChunkRenderer::renderForDisplay(const rxData &chunk, const FormatSetting &format)
{
    const QString &timeFormat = chunk.direction == RX ? format.RxTimeFormat : format.TxTimeFormat;
    const QString stamp = format.DisplayMsgTime ? displayStamp(chunk.time, timeFormat) : QString();

    Piece piece;
    piece.text = render(chunk, format, format.DisplayMsgTime, stamp, isEndWithLineFeed, displayStreams);
    if (piece.text.isEmpty())
        return piece;
    if (piece.text == lineFeed && isEndWithLineFeed) {
        qCDebug(lcDefault) << "Skip feed for isEndWithLineFeed";
        return piece;
    }
    piece.show = true;
    if (format.FormatDisplayColor && chunk.direction != NOTE)
        piece.color = chunk.direction == RX ? format.ReceiveTextColor : format.SendTextColor;
    isEndWithLineFeed = piece.text.endsWith(lineFeed);
    qCDebug(lcDefault) << "decodedLine: " << piece.text;
    return piece;
}

// Chunks read in one burst share their millisecond; the stamp is formatted
// once for them.
QString ChunkRenderer::displayStamp(const QTime &time, const QString &timeFormat)
{
    if (time != stampTime || timeFormat != stampFormat) {
        stampTime = time;
        stampFormat = timeFormat;
        stampText = time.toString(timeFormat);
    }
    return stampText;
}

QString ChunkRenderer::renderForLog(const rxData &chunk, const FormatSetting &format)
{
    const QString stamp = format.LogTimestampEnabled ? expandLogStamp(format.LogFileTime, chunk.time)
                                                     : QString();
    const QString line = render(chunk, format, format.LogTimestampEnabled, stamp, isLogEndWithLineFeed, logStreams);
    if (line.isEmpty() || (line == lineFeed && isLogEndWithLineFeed))
        return QString();
    isLogEndWithLineFeed = line.endsWith(lineFeed);
    return line;
}
