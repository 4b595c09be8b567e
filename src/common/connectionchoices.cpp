#include "common/connectionchoices.h"

#include <QComboBox>
#include <QCoreApplication>

#include "common/types.h"

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("ConnectionChoices", text);
}

} // namespace

QList<Choice> baudRateChoices()
{
    QList<Choice> choices;
    for (int rate : {9600, 19200, 38400, 57600, 115200})
        choices.append({QString::number(rate), rate});
    choices.append({translated(QT_TRANSLATE_NOOP("ConnectionChoices", "Custom")), QVariant()});
    return choices;
}

QList<Choice> dataBitsChoices()
{
    QList<Choice> choices;
    for (int bits = 5; bits <= 8; ++bits)
        choices.append({QString::number(bits), bits});
    return choices;
}

QList<Choice> parityChoices()
{
    return {{translated(QT_TRANSLATE_NOOP("ConnectionChoices", "None")), 0},
            {translated(QT_TRANSLATE_NOOP("ConnectionChoices", "Even")), 2},
            {translated(QT_TRANSLATE_NOOP("ConnectionChoices", "Odd")), 3},
            {translated(QT_TRANSLATE_NOOP("ConnectionChoices", "Mark")), 5},
            {translated(QT_TRANSLATE_NOOP("ConnectionChoices", "Space")), 4}};
}

QList<Choice> stopBitsChoices()
{
    return {{QStringLiteral("1"), 1}, {QStringLiteral("2"), 2}};
}

QList<Choice> flowControlChoices()
{
    return {{translated(QT_TRANSLATE_NOOP("ConnectionChoices", "None")), 0},
            {translated(QT_TRANSLATE_NOOP("ConnectionChoices", "RTS/CTS")), 1},
            {translated(QT_TRANSLATE_NOOP("ConnectionChoices", "XON/XOFF")), 2}};
}

void fillChoices(QComboBox *box, const QList<Choice> &choices)
{
    box->clear();
    for (const Choice &choice : choices)
        box->addItem(choice.text, choice.data);
}

const QList<NetworkMode> &networkModes()
{
    static const QList<NetworkMode> modes = {
        {TcpClientMode, QStringLiteral("TCP Client")},
        {TcpServerMode, QStringLiteral("TCP Server")},
        {UdpClientMode, QStringLiteral("UDP Client")},
        {UdpServerMode, QStringLiteral("UDP Server")},
        {UdpGroupMode, QStringLiteral("UDP Group")},
    };
    return modes;
}

QString networkModeName(qint32 mode)
{
    for (const NetworkMode &entry : networkModes()) {
        if (entry.mode == mode)
            return entry.name;
    }
    return QString();
}

QStringList localAddressNames()
{
    return {QStringLiteral("LocalHost"), QStringLiteral("LocalHostIPv6"), QStringLiteral("Broadcast"),
            QStringLiteral("AnyIPv4"), QStringLiteral("AnyIPv6"), QStringLiteral("Any")};
}
