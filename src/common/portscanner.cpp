#include "common/portscanner.h"

#include <QCoreApplication>
#include <QTimer>

PortScanner &PortScanner::shared()
{
    static PortScanner *instance = nullptr;
    if (!instance) {
        instance = new PortScanner(listedSerialPorts, QCoreApplication::instance());
        QObject::connect(instance, &QObject::destroyed, [] { instance = nullptr; });
    }
    return *instance;
}

PortScanner::PortScanner(ScanFunction scan, QObject *parent)
    : QObject(parent)
    , scan(std::move(scan))
{
    current = this->scan();
    signature = portListSignature(current);
    timer = new QTimer(this);
    timer->setInterval(1000);
    connect(timer, &QTimer::timeout, this, &PortScanner::rescan);
    timer->start();
}

void PortScanner::rescan()
{
    QList<SerialPortItem> ports = scan();
    const QString scanned = portListSignature(ports);
    if (scanned == signature)
        return;
    signature = scanned;
    current = std::move(ports);
    ++changes;
    emit portsChanged();
}
