#ifndef QUORVANE_CHECKSUM_H
#define QUORVANE_CHECKSUM_H

#include <QByteArray>
#include <QString>
#include <QStringList>

// Checksums a macro can append: every model of the CRC catalogue plus the
// three simple byte checksums below.
namespace Checksum {

inline const QString Sum8 = QStringLiteral("SUM-8");
inline const QString Xor8 = QStringLiteral("XOR-8");
inline const QString Lrc8 = QStringLiteral("LRC-8");

QStringList names();

// Bytes of the checksum of `data`: as many as the width needs (1, 2 or 4),
// most significant first when `bigEndian`. An unknown name gives nothing.
QByteArray compute(const QByteArray &data, const QString &name, bool bigEndian);

} // namespace Checksum

#endif
