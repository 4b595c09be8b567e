#ifndef QUORVANE_SENDENCODER_H
#define QUORVANE_SENDENCODER_H

#include <QByteArray>
#include <QString>
#include <QStringList>

struct SendOptions {
    bool hexMode = false;
    bool autoAddFeedLine = true;
    int lineEndingMode = 3;
    bool formatSend = false;
};

struct EncodedSend {
    QByteArray bytes;
    // Hex mode rewrites the send box (formatted when FormatSend is on);
    // text mode leaves it alone and this stays null.
    QString boxText;
    QString historyEntry;
};

// Text -> bytes as the send box defines it: text with the automatic line
// feed and the line-ending mode, or hex pairs with an optional "//" comment.
EncodedSend encodeSendText(const QString &text, const SendOptions &options);

// Newest first, no duplicates, at most 257 entries.
QStringList addToSendHistory(QStringList history, const QString &entry);

// What the history combo box shows of an entry: at most 80 characters.
QString sendHistoryLabel(const QString &entry);

#endif
