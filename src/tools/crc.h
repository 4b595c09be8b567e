#ifndef QUORVANE_CRC_H
#define QUORVANE_CRC_H

#include <QByteArray>
#include <QString>
#include <QStringList>

// A CRC in the usual parameterised form: poly, init and xorout are given
// unreflected, refin/refout say whether input bytes and the result are
// bit-reversed.
struct CrcModel
{
    quint32 width = 32;
    quint64 poly = 0;
    quint64 init = 0;
    quint64 xorout = 0;
    bool refin = false;
    bool refout = false;
};

// The catalogue names, in the order the calculator lists them.
QStringList crcModelNames();

// The parameters shown for a name; unknown names get the fallback model
// (32 bits, poly 04C11DB7, init FFFFFFFF, no xorout, no reflection).
CrcModel crcModelByName(const QString &name);

// The parameters a name is actually computed with. Identical to the shown
// ones except for "CRC-16/USB", which computes exactly like "CRC-16/MODBUS"
// although it shows its catalogue xorout of FFFF.
CrcModel crcComputationModel(const QString &name);

// Bit-by-bit CRC for any width from 1 to 64; other widths give 0.
quint64 calcCRC(const QByteArray &data, const CrcModel &model);

#endif
