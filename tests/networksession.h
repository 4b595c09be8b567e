#ifndef QUORVANE_NETWORKSESSION_H
#define QUORVANE_NETWORKSESSION_H

#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTcpServer>
#include <QUdpSocket>
#include <memory>

#include "session/serialportwidget.h"
#include "view/receiveview.h"

constexpr int waitMs = 5000;

// Ports the system handed out a moment ago, so parallel test runs do not
// collide on fixed numbers.
inline quint16 freeTcpPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

inline quint16 freeUdpPort()
{
    QUdpSocket probe;
    probe.bind(QHostAddress::LocalHost, 0);
    return probe.localPort();
}

// A session in a network mode, driven through its panel as a user does: the
// "TCP/UDP" entry, the mode, then host and ports typed into the boxes. Sent
// text goes out as typed, without the automatic line ending.
class NetworkPanel
{
public:
    explicit NetworkPanel(const QString &mode)
        : session(std::make_unique<SerialPortWidget>())
    {
        box("portBox")->setCurrentIndex(box("portBox")->findText(QStringLiteral("TCP/UDP")));
        box("baudRateModeBox")->setCurrentText(mode);
        FormatSetting format = session->formatSettings();
        format.AutoAddFeedLine = false;
        session->setFormatSettings(format);
    }

    template<typename T>
    T *child(const char *name) const { return session->findChild<T *>(QString::fromLatin1(name)); }
    QComboBox *box(const char *name) const { return child<QComboBox>(name); }
    QStringList items(const char *name) const
    {
        QStringList texts;
        for (int i = 0; i < box(name)->count(); ++i)
            texts << box(name)->itemText(i);
        return texts;
    }
    void setHost(const QString &text) { box("dataBitsServerAddressBox")->setCurrentText(text); }
    void setPort(const QString &text) { box("parityServerPortBox")->setCurrentText(text); }
    void setPort(quint16 port) { setPort(QString::number(port)); }
    void setLocalPort(quint16 port) { box("stopBitsClientAddressBox")->setCurrentText(QString::number(port)); }
    QString viewText() const { return session->receiveView()->toPlainText(); }
    QString status() const { return session->connectionStatusText(); }

    // Types the text into the send box and presses the send button.
    void send(const QString &text)
    {
        child<QPlainTextEdit>("textEdit")->setPlainText(text);
        child<QPushButton>("sendButton")->click();
    }

    std::unique_ptr<SerialPortWidget> session;
};

inline QString greenStatus(const QString &text) { return QStringLiteral("<font color = green>%1 </font>").arg(text); }
inline QString redStatus(const QString &text) { return QStringLiteral("<font color = red>%1 </font>").arg(text); }

#endif
