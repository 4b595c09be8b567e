#include "common/serialportlist.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QSerialPortInfo>

#include "common/texthelpers.h"

const char *const networkPortEntry = "TCP/UDP";

QString SerialPortItem::entryText() const
{
    return portName + QLatin1Char('(') + description + QLatin1Char(')');
}

QList<SerialPortItem> listedSerialPorts()
{
    QList<SerialPortItem> ports;
    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts()) {
        if (!isListedSerialPort(info.portName()))
            continue;
        const QString details = QStringLiteral("%1\n%2\n%3\n%4\n%5:%6")
                                    .arg(info.portName(), info.description(), info.manufacturer(),
                                         info.systemLocation(),
                                         QString::number(info.vendorIdentifier(), 16),
                                         QString::number(info.productIdentifier(), 16));
        ports.append({info.portName(), info.description(), details});
    }
    return ports;
}

QString portListSignature(const QList<SerialPortItem> &ports)
{
    QString signature;
    for (const SerialPortItem &port : ports)
        signature += port.portName;
    return signature;
}

QList<PortBoxEntry> portBoxEntries(const QList<SerialPortItem> &ports)
{
    QList<PortBoxEntry> entries;
    for (const SerialPortItem &port : ports)
        entries.append({port.entryText(), port.portName, port.details});
    if (entries.isEmpty())
        entries.append({QCoreApplication::translate("SerialPortWidget", "Default (COM2)"), QString(), QString()});
    entries.append({QString::fromLatin1(networkPortEntry), QString(), QString()});
    return entries;
}

void selectPortEntry(QComboBox *box, const QString &portName)
{
    int index = box->findData(portName);
    if (index < 0) {
        index = box->count() - 1;
        box->insertItem(index, portName, portName);
    }
    box->setCurrentIndex(index);
}
