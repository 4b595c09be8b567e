#include "session/sendencoder.h"

#include "common/texthelpers.h"
#include "common/types.h"
#include "session/chunkrenderer.h"

namespace {

QByteArray applyLineEnding(const QByteArray &bytes, int mode)
{
    QByteArray result = bytes;
    switch (mode) {
    case CarriageReturnOnly:
        result.replace('\n', '\r');
        break;
    case CarriageReturnLineFeed:
        result.replace("\n", "\r\n");
        break;
    case LineFeedCarriageReturn:
        result.replace("\n", "\n\r");
        break;
    default:
        break;
    }
    return result;
}

} // namespace

EncodedSend encodeSendText(const QString &text, const SendOptions &options)
{
    EncodedSend encoded;
    if (text.isEmpty())
        return encoded;

    if (!options.hexMode) {
        encoded.historyEntry = text;
        QString withFeed = text;
        if (options.autoAddFeedLine && !withFeed.endsWith(QLatin1Char('\n')))
            withFeed.append(QLatin1Char('\n'));
        encoded.bytes = applyLineEnding(withFeed.toLocal8Bit(), options.lineEndingMode);
        return encoded;
    }

    const QString separator = QStringLiteral("//");
    const int commentAt = text.indexOf(separator);
    const QString data = commentAt < 0 ? text : text.left(commentAt);
    encoded.bytes = GetHexValue(data);

    QString boxText = text;
    if (options.formatSend) {
        boxText = toHexString(encoded.bytes);
        if (commentAt >= 0)
            boxText += separator + text.mid(commentAt + separator.size()).section(separator, 0, 0);
    }
    encoded.boxText = boxText;
    encoded.historyEntry = boxText.toUpper();
    return encoded;
}

QStringList addToSendHistory(QStringList history, const QString &entry)
{
    const int limit = 257;
    if (history.size() >= limit)
        history.removeLast();
    history.removeAll(entry);
    history.prepend(entry);
    return history;
}

QString sendHistoryLabel(const QString &entry)
{
    return entry.left(80);
}
