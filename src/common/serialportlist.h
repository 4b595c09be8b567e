#ifndef QUORVANE_SERIALPORTLIST_H
#define QUORVANE_SERIALPORTLIST_H

#include <QList>
#include <QString>

class QComboBox;

// One serial device as the port lists show it.
struct SerialPortItem {
    QString portName;
    QString description;
    QString details;   // name, description, maker, location, USB ids

    // "ttyUSB0(FT232R USB UART)": the name, then the description in brackets.
    QString entryText() const;
};

// The system's serial devices that belong in port lists, in system order.
QList<SerialPortItem> listedSerialPorts();

// Names of the listed devices run together: changes when one comes or goes.
QString portListSignature(const QList<SerialPortItem> &ports);

// Entries of a session's port box: the devices, "Default (COM2)" when there
// is none, and always the network entry last.
struct PortBoxEntry {
    QString text;
    QString portName;  // empty for the placeholder and the network entry
    QString details;
};
QList<PortBoxEntry> portBoxEntries(const QList<SerialPortItem> &ports);

extern const char *const networkPortEntry;

// Selects the entry of a device in a port box whose last entry is the
// network entry. A device the scan does not list (a pty, a by-id link, an
// unplugged adapter) keeps its name as an entry of its own, just before the
// network entry, so the box never falls back to another device.
void selectPortEntry(QComboBox *box, const QString &portName);

#endif
