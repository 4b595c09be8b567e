#ifndef QUORVANE_PORTSCANNER_H
#define QUORVANE_PORTSCANNER_H

#include <functional>

#include <QList>
#include <QObject>
#include <QString>

#include "common/serialportlist.h"

class QTimer;

// The system's serial ports, scanned once a second for the whole program.
// A scan walks the system's device tree, so every session, dialog and chooser
// reads the list made by the last scan instead of scanning for itself, and
// learns of a change through one signal; a second with no change costs them
// nothing.
class PortScanner : public QObject
{
    Q_OBJECT

public:
    using ScanFunction = std::function<QList<SerialPortItem>()>;

    // The program's scanner, made on first use as a child of the application.
    static PortScanner &shared();

    explicit PortScanner(ScanFunction scan = listedSerialPorts, QObject *parent = nullptr);

    const QList<SerialPortItem> &ports() const { return current; }
    // Counts the scans that found a different list: a reader that kept the
    // number knows whether its copy is still current.
    quint64 generation() const { return changes; }

    // Scans now (the timer does it every second).
    void rescan();
    // Where the ports come from; tests stand in a list of their own.
    void setScanFunction(ScanFunction function) { scan = std::move(function); }

signals:
    void portsChanged();

private:
    ScanFunction scan;
    QList<SerialPortItem> current;
    QString signature;
    quint64 changes = 0;
    QTimer *timer = nullptr;
};

#endif
