#ifndef QUORVANE_HEXINPUTFEEDBACK_H
#define QUORVANE_HEXINPUTFEEDBACK_H

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

class QLabel;
class QPlainTextEdit;

// What the hex parser makes of the send box's text: the bytes it sends and
// the characters it reads as a zero digit although they are no hex digit.
struct HexInputCheck {
    struct Run {
        int start = 0;
        int length = 0;
        bool operator==(const Run &o) const { return start == o.start && length == o.length; }
    };
    QByteArray bytes;
    QList<Run> invalid;
};

HexInputCheck checkHexInput(const QString &text);

// "3 bytes: 00 7E 00", the bytes cut after `shownBytes` with an ellipsis.
QString hexSendHint(const QByteArray &bytes, int shownBytes = 16);

// Underlines invalid characters of a send box in red and keeps a hint label
// up to date while the box is in hex mode; does nothing in text mode.
class HexInputMarker : public QObject
{
    Q_OBJECT

public:
    HexInputMarker(QPlainTextEdit *box, QLabel *hint, QObject *parent = nullptr);

    void setHexMode(bool on);

private:
    void refresh();

    QPlainTextEdit *box;
    QLabel *hint;
    bool hexMode = false;
};

#endif
