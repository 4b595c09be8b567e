#include "session/chunkrenderer.h"

#include "common/logging.h"
#include "session/datalog.h"

namespace {

const QString lineFeed = QStringLiteral("\n");

// Drops the second character of every pair "first second", left to right,
// or the first one when keepFirst is false.
void dropFromPairs(QString &text, QChar first, QChar second, bool keepFirst)
{
    QChar *out = text.data();
    const QChar *in = out;
    const QChar *end = in + text.size();
    while (in < end) {
        if (*in == first && in + 1 < end && in[1] == second) {
            *out++ = keepFirst ? first : second;
            in += 2;
        } else {
            *out++ = *in++;
        }
    }
    text.truncate(out - text.constData());
}

// "\r\n" becomes "\n", then "\n\r" becomes "\n": two passes, as two replacements
// would do, without searching for the pairs with a matcher built per chunk.
QString foldLineBreaks(QString text)
{
    if (!text.contains(QLatin1Char('\r')))
        return text;
    dropFromPairs(text, QLatin1Char('\r'), QLatin1Char('\n'), false);
    dropFromPairs(text, QLatin1Char('\n'), QLatin1Char('\r'), true);
    return text;
}

} // namespace

QString toHexString(const QByteArray &bytes)
{
    static const char digits[] = "0123456789ABCDEF";
    QString text(bytes.size() * 3, Qt::Uninitialized);
    QChar *out = text.data();
    for (const char byte : bytes) {
        const auto value = quint8(byte);
        *out++ = QLatin1Char(digits[value >> 4]);
        *out++ = QLatin1Char(digits[value & 0x0F]);
        *out++ = QLatin1Char(' ');
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
    if (format.FormatDisplayColor)
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
