#ifndef QUORVANE_SENDMACRO_H
#define QUORVANE_SENDMACRO_H

#include <QByteArray>
#include <QList>
#include <QString>

// One button of a session's macro bar.
struct SendMacro {
    enum LineEnding { NoLineEnding, LineFeed, CarriageReturn, CarriageReturnLineFeed };

    QString name;
    QString payload;
    bool hex = false;
    int lineEnding = CarriageReturnLineFeed; // text payloads only
    QString checksum;                        // empty: none; else a Checksum::names() entry
    bool bigEndian = false;                  // byte order of 16/32-bit checksums
    int repeatMs = 0;                        // 0: sends once per click

    bool operator==(const SendMacro &o) const
    {
        return name == o.name && payload == o.payload && hex == o.hex && lineEnding == o.lineEnding
            && checksum == o.checksum && bigEndian == o.bigEndian && repeatMs == o.repeatMs;
    }
    bool operator!=(const SendMacro &o) const { return !(*this == o); }
};

using SendMacroList = QList<SendMacro>;

constexpr int MaxSendMacros = 24;

// The bytes a macro sends: the payload (text in the local 8-bit encoding, or
// hex read like the send box reads it, "//" comment included), then the
// checksum over those bytes, then the line ending of a text payload.
QByteArray encodeMacro(const SendMacro &macro);

// A compact JSON text for documents and preferences; reading skips what it
// cannot use and keeps at most MaxSendMacros entries.
QString macrosToText(const SendMacroList &macros);
SendMacroList macrosFromText(const QString &text);

#endif
