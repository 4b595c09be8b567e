#include "common/portscanner.h"

#include <QCoreApplication>
#include <QDir>
#include <QTimer>

PortScanner &PortScanner::shared()
{
    static PortScanner *instance = nullptr;
    if (!instance) {
        instance = new PortScanner(listedSerialPorts, QCoreApplication::instance(), QStringLiteral("/dev"));
        QObject::connect(instance, &QObject::destroyed, [] { instance = nullptr; });
    }
    return *instance;
}

PortScanner::PortScanner(ScanFunction scan, QObject *parent, const QString &deviceFolder)
    : QObject(parent)
    , scan(std::move(scan))
    , deviceFolder(deviceFolder)
{
    deviceFilesSeen = deviceFiles();
    current = this->scan();
    signature = portListSignature(current);
    timer = new QTimer(this);
    timer->setInterval(1000);
    connect(timer, &QTimer::timeout, this, &PortScanner::rescan);
    timer->start();
}

void PortScanner::setSource(ScanFunction function, const QString &folder)
{
    scan = std::move(function);
    deviceFolder = folder;
    deviceFilesSeen.clear();
}

// The names in the device folder, each on a line of its own; null where
// there is no such folder, so that every look scans.
QString PortScanner::deviceFiles() const
{
    const QDir folder(deviceFolder);
    if (deviceFolder.isEmpty() || !folder.exists())
        return QString();
    QString names(QLatin1Char('\n'));
    for (const QString &name :
         folder.entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name))
        names += name + QLatin1Char('\n');
    return names;
}

void PortScanner::rescan()
{
    const QString files = deviceFiles();
    if (!files.isNull() && files == deviceFilesSeen)
        return;
    deviceFilesSeen = files;
    QList<SerialPortItem> ports = scan();
    const QString scanned = portListSignature(ports);
    if (scanned == signature)
        return;
    signature = scanned;
    current = std::move(ports);
    ++changes;
    emit portsChanged();
}
