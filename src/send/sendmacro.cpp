#include "send/sendmacro.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "common/types.h"
#include "send/checksum.h"
#include "session/sendencoder.h"

namespace {

QByteArray lineEndingBytes(int lineEnding)
{
    switch (lineEnding) {
    case SendMacro::LineFeed: return QByteArrayLiteral("\n");
    case SendMacro::CarriageReturn: return QByteArrayLiteral("\r");
    case SendMacro::CarriageReturnLineFeed: return QByteArrayLiteral("\r\n");
    default: return QByteArray();
    }
}

} // namespace

QByteArray encodeMacro(const SendMacro &macro)
{
    SendOptions options;
    options.hexMode = macro.hex;
    options.autoAddFeedLine = false;
    options.lineEndingMode = LineFeedOnly;
    QByteArray bytes = encodeSendText(macro.payload, options).bytes;
    bytes += Checksum::compute(bytes, macro.checksum, macro.bigEndian);
    if (!macro.hex)
        bytes += lineEndingBytes(macro.lineEnding);
    return bytes;
}

QString macrosToText(const SendMacroList &macros)
{
    QJsonArray array;
    for (const SendMacro &macro : macros) {
        array.append(QJsonObject{
            {QStringLiteral("name"), macro.name},
            {QStringLiteral("payload"), macro.payload},
            {QStringLiteral("hex"), macro.hex},
            {QStringLiteral("lineEnding"), macro.lineEnding},
            {QStringLiteral("checksum"), macro.checksum},
            {QStringLiteral("bigEndian"), macro.bigEndian},
            {QStringLiteral("repeatMs"), macro.repeatMs},
        });
    }
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

SendMacroList macrosFromText(const QString &text)
{
    SendMacroList macros;
    const QJsonArray array = QJsonDocument::fromJson(text.toUtf8()).array();
    for (const QJsonValue &value : array) {
        if (!value.isObject() || macros.size() >= MaxSendMacros)
            continue;
        const QJsonObject object = value.toObject();
        SendMacro macro;
        macro.name = object.value(QStringLiteral("name")).toString();
        macro.payload = object.value(QStringLiteral("payload")).toString();
        macro.hex = object.value(QStringLiteral("hex")).toBool();
        macro.lineEnding = qBound(int(SendMacro::NoLineEnding),
                                  object.value(QStringLiteral("lineEnding")).toInt(SendMacro::CarriageReturnLineFeed),
                                  int(SendMacro::CarriageReturnLineFeed));
        macro.checksum = object.value(QStringLiteral("checksum")).toString();
        if (!Checksum::names().contains(macro.checksum))
            macro.checksum.clear();
        macro.bigEndian = object.value(QStringLiteral("bigEndian")).toBool();
        macro.repeatMs = qMax(0, object.value(QStringLiteral("repeatMs")).toInt());
        macros.append(macro);
    }
    return macros;
}
