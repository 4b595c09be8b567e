#ifndef QUORVANE_PORTSCANNER_H
#define QUORVANE_PORTSCANNER_H

#include <functional>

#include <QList>
#include <QObject>
#include <QString>

#include "common/serialportlist.h"

class QTimer;

// The system's serial ports, looked at once a second for the whole program.
// A scan walks the system's device tree, so every session, dialog and chooser
// reads the list made by the last scan instead of scanning for itself, and
// learns of a change through one signal. A serial device comes and goes with
// its device file, so while the device folder holds the same names the scan
// itself is skipped; a second with no change costs next to nothing.
class PortScanner : public QObject
{
    Q_OBJECT

public:
    using ScanFunction = std::function<QList<SerialPortItem>()>;

    // The program's scanner, made on first use as a child of the application.
    static PortScanner &shared();

    // deviceFolder: where device files appear ("/dev"); empty, or a folder
    // that does not exist, scans every time.
    explicit PortScanner(ScanFunction scan = listedSerialPorts, QObject *parent = nullptr,
                         const QString &deviceFolder = QString());

    const QList<SerialPortItem> &ports() const { return current; }
    // Counts the scans that found a different list: a reader that kept the
    // number knows whether its copy is still current.
    quint64 generation() const { return changes; }

    // Scans now if the device folder changed (the timer looks every second).
    void rescan();
    // Where the ports come from; tests stand in a list and a folder of their own.
    void setSource(ScanFunction function, const QString &folder);

signals:
    void portsChanged();

private:
    QString deviceFiles() const;

    ScanFunction scan;
    QString deviceFolder;
    QString deviceFilesSeen;
    QList<SerialPortItem> current;
    QString signature;
    quint64 changes = 0;
    QTimer *timer = nullptr;
};

#endif
