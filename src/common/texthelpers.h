#ifndef QUORVANE_TEXTHELPERS_H
#define QUORVANE_TEXTHELPERS_H

#include <QByteArray>
#include <QColor>
#include <QString>
#include <QVector>

// Digit value of one hexadecimal character; anything else counts as 0.
quint8 ConvertHexChar(char c);

// Typed hexadecimal to bytes: spaces between pairs are skipped, every other
// character is a digit (non-digits count 0), a lone final digit is dropped.
QByteArray GetHexValue(const QString &text);
QVector<quint8> GetHexValueArray(const QString &text);

// "cu.usbserial (USB Serial)" -> "cu.usbserial"; texts under 6 characters
// come back untouched.
QString embracedString(const QString &text);

// Characters from the last "(" to the end, the "(" included.
qint32 getBraceLengt(const QString &text);

// Shortens descriptions above 100 characters around their trailing "(...)".
QString trimFriendName(const QString &name);

// File name without folder, and without a leading "Session_".
QString strippedName(const QString &fullFileName);

// Whether a serial device belongs in the port lists. On macOS every device
// exists twice, as tty.* and cu.*; only the cu.* call-out nodes are listed.
// Elsewhere every device is named tty* and all are listed.
bool isListedSerialPort(const QString &portName, bool macOS);
bool isListedSerialPort(const QString &portName);

// A chosen colour as stored ("#rrggbb"); empty when none was chosen, which
// shows text in the palette's own colour.
QString storedColorName(const QColor &color);

// A port number typed into a box; anything but a number in 0..65535 is 0.
quint16 portFromText(const QString &text);

#endif
