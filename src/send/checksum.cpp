#include "send/checksum.h"

#include "tools/crc.h"

namespace Checksum {

namespace {

QByteArray toBytes(quint64 value, int size, bool bigEndian)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        bytes[bigEndian ? size - 1 - i : i] = char((value >> (8 * i)) & 0xFF);
    return bytes;
}

} // namespace

QStringList names()
{
    return crcModelNames() + QStringList{Sum8, Xor8, Lrc8};
}

QByteArray compute(const QByteArray &data, const QString &name, bool bigEndian)
{
    quint8 sum = 0;
    quint8 parity = 0;
    for (const char byte : data) {
        sum += quint8(byte);
        parity ^= quint8(byte);
    }
    if (name == Sum8)
        return toBytes(sum, 1, bigEndian);
    if (name == Xor8)
        return toBytes(parity, 1, bigEndian);
    if (name == Lrc8)
        return toBytes(quint8(-sum), 1, bigEndian);
    if (!crcModelNames().contains(name))
        return QByteArray();

    const CrcModel model = crcComputationModel(name);
    const int size = model.width <= 8 ? 1 : model.width <= 16 ? 2 : 4;
    return toBytes(calcCRC(data, model), size, bigEndian);
}

} // namespace Checksum
