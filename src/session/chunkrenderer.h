#ifndef QUORVANE_CHUNKRENDERER_H
#define QUORVANE_CHUNKRENDERER_H

#include <QColor>
#include <QString>
#include <QStringDecoder>
#include <QTime>

#include "common/types.h"
#include "session/portsettings.h"

// Bytes -> "0A FF " (two upper-case digits and a space per byte).
QString toHexString(const QByteArray &bytes);
// Text (2) decodes UTF-8 and folds "\r\n" and "\n\r"
// into "\n"; any other format renders hexadecimal.
QString decodeByteArray(const QByteArray &bytes, int format);
// Puts the stamp after every inner line break of a text chunk; the caller
// adds the stamp of its first line.
QString insertTimeStamp(QString text, const QString &stamp);

// Renders queued chunks for the screen and for the data log: text or hex,
// time stamps, automatic line feeds after a pause, colours by direction.
// Holds the line state that carries from one chunk to the next.
class ChunkRenderer
{
public:
    struct Piece {
        QString text;
        QColor color;        // invalid: the view's own colour
        bool show = false;   // false: nothing goes to the screen
    };

    Piece renderForDisplay(const rxData &chunk, const FormatSetting &format);
    QString renderForLog(const rxData &chunk, const FormatSetting &format);

    // After the view is cleared the next stamped chunk starts with its stamp.
    void restartDisplayLine() { isEndWithLineFeed = true; }
    bool displayEndsWithLineFeed() const { return isEndWithLineFeed; }

private:
    // Received and sent bytes are separate UTF-8 streams; the screen and the
    // log each decode every chunk once, with their own state.
    struct Utf8Streams {
        QStringDecoder received{QStringDecoder::Utf8};
        QStringDecoder sent{QStringDecoder::Utf8};
    };

    QString render(const rxData &chunk, const FormatSetting &format, bool stamped,
                   const QString &stamp, bool endsWithLineFeed, Utf8Streams &streams);

    QString displayStamp(const QTime &time, const QString &timeFormat);

    Utf8Streams displayStreams;
    Utf8Streams logStreams;
    QTime lastFeedTime;           // shared by display and log, display first
    bool isEndWithLineFeed = true;
    bool isLogEndWithLineFeed = true;
    QTime stampTime;
    QString stampFormat;
    QString stampText;
};

#endif
