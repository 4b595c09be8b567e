#include "common/texthelpers.h"

#include <QFileInfo>

quint8 ConvertHexChar(char c)
{
    if (c >= '0' && c <= '9')
        return quint8(c - '0');
    if (c >= 'A' && c <= 'F')
        return quint8(c - 'A' + 10);
    if (c >= 'a' && c <= 'f')
        return quint8(c - 'a' + 10);
    return 0;
}

namespace {

// Walks the text as GetHexValue defines and hands every byte to emit.
template<typename Sink>
void parseHexPairs(const QString &text, Sink sink)
{
    const int length = text.size();
    int pos = 0;
    while (pos < length) {
        while (pos < length && text.at(pos) == QLatin1Char(' '))
            ++pos;
        if (pos >= length || pos + 1 >= length)
            return;
        const quint8 high = ConvertHexChar(text.at(pos).toLatin1());
        const quint8 low = ConvertHexChar(text.at(pos + 1).toLatin1());
        sink(quint8(high * 16 + low));
        pos += 2;
    }
}

} // namespace

QByteArray GetHexValue(const QString &text)
{
    QByteArray bytes;
    bytes.reserve(text.size() / 2);
    parseHexPairs(text, [&bytes](quint8 value) { bytes.append(char(value)); });
    return bytes;
}

QVector<quint8> GetHexValueArray(const QString &text)
{
    QVector<quint8> bytes;
    parseHexPairs(text, [&bytes](quint8 value) { bytes.append(value); });
    return bytes;
}

QString embracedString(const QString &text)
{
    if (text.size() < 6)
        return text;
    return text.split(QLatin1Char('(')).first().trimmed();
}

qint32 getBraceLengt(const QString &text)
{
    return qint32(text.size() - text.lastIndexOf(QLatin1Char('(')));
}

QString trimFriendName(const QString &name)
{
    const int limit = 100;
    if (name.size() <= limit)
        return name;
    const int tail = getBraceLengt(name);
    // QString::left/right take the whole text for counts out of range,
    // which doubles a long name without "(": kept as established.
    return name.left(limit - tail) + QStringLiteral("...") + name.right(tail);
}

QString strippedName(const QString &fullFileName)
{
    const QString fileName = QFileInfo(fullFileName).fileName();
    const QString prefix = QStringLiteral("Session_");
    if (fileName.startsWith(prefix))
        return fileName.mid(prefix.size());
    return fileName;
}

bool isListedSerialPort(const QString &portName, bool macOS)
{
    return !macOS || !portName.startsWith(QStringLiteral("tty"));
}

bool isListedSerialPort(const QString &portName)
{
#ifdef Q_OS_MACOS
    return isListedSerialPort(portName, true);
#else
    return isListedSerialPort(portName, false);
#endif
}

quint16 portFromText(const QString &text)
{
    bool ok = false;
    const int port = text.toInt(&ok, 10);
    if (!ok || port < 0 || port > 65535)
        return 0;
    return quint16(port);
}

QString storedColorName(const QColor &color)
{
    return color.isValid() ? color.name() : QString();
}
