#ifndef QUORVANE_HEXDUMP_H
#define QUORVANE_HEXDUMP_H

#include <QByteArray>
#include <QString>

// Received bytes as rows of 16: offset, hexadecimal bytes, ASCII column.
//   00000010  48 65 6C 6C 6F 0A 00 01  02 03 04 05 06 07 08 09  |Hello...........|
// The offset counts the bytes received since the last restart. A row stays
// open until 16 bytes fill it or it is closed (after a pause, before other
// output); a closed row is shown as far as it got.
class HexDump
{
public:
    static constexpr int RowBytes = 16;

    struct Rows {
        QString complete;   // finished rows, each ending in "\n"
        QString open;       // the row still being filled, without "\n"
    };

    // stamp: put in front of each row the bytes start.
    Rows add(const QByteArray &bytes, const QString &stamp);
    // The open row, finished as it is ("\n" included), or empty.
    QString closeRow();
    bool hasOpenRow() const { return !rowBytes.isEmpty(); }
    void restart();

    static QString formatRow(const QString &stamp, qint64 offset, const QByteArray &bytes);

private:
    qint64 rowOffset = 0;
    QByteArray rowBytes;
    QString rowStamp;
};

#endif
