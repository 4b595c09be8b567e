#ifndef QUORVANE_CONNECTIONCHOICES_H
#define QUORVANE_CONNECTIONCHOICES_H

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

class QComboBox;

// The values a session's connection can be given, as the session panel and
// the settings dialog both offer them.

struct Choice {
    QString text;
    QVariant data;   // the value stored in the records; null for "Custom"
};

// Listed rates, then "Custom", which takes any typed rate.
QList<Choice> baudRateChoices();
QList<Choice> dataBitsChoices();
QList<Choice> parityChoices();
QList<Choice> stopBitsChoices();
QList<Choice> flowControlChoices();

// Refills a combo box with choices.
void fillChoices(QComboBox *box, const QList<Choice> &choices);

struct NetworkMode {
    qint32 mode;
    QString name;
};
const QList<NetworkMode> &networkModes();
// Display name of a network mode; empty for modes without one.
QString networkModeName(qint32 mode);

// Address names offered where a local address is chosen.
QStringList localAddressNames();

#endif
