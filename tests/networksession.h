#ifndef QUORVANE_NETWORKSESSION_H
#define QUORVANE_NETWORKSESSION_H

#include <QAbstractSocket>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTcpServer>
#include <QUdpSocket>

#include "session/serialportwidget.h"

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

// Drives a session's panel the way a user does: the "TCP/UDP" port entry,
// a mode text, then host and port typed into the boxes.
class NetworkPanel
{
public:
    explicit NetworkPanel(SerialPortWidget *session)
        : session(session)
    {
    }

    template<typename T>
    T *child(const char *name) const
    {
        return session->findChild<T *>(QString::fromLatin1(name));
    }
    QComboBox *box(const char *name) const { return child<QComboBox>(name); }

    void choose(const QString &mode)
    {
        QComboBox *port = box("portBox");
        port->setCurrentIndex(port->findText(QStringLiteral("TCP/UDP")));
        box("baudRateModeBox")->setCurrentText(mode);
    }
    void setHost(const QString &text) { box("dataBitsServerAddressBox")->setCurrentText(text); }
    void setPort(const QString &text) { box("parityServerPortBox")->setCurrentText(text); }
    void setPort(quint16 port) { setPort(QString::number(port)); }
    void setLocalPort(const QString &text) { box("stopBitsClientAddressBox")->setCurrentText(text); }
    void setLocalPort(quint16 port) { setLocalPort(QString::number(port)); }

    // Types the text into the send box and presses the send button.
    void send(const QString &text)
    {
        child<QPlainTextEdit>("textEdit")->setPlainText(text);
        child<QPushButton>("sendButton")->click();
    }

    QString viewText() const { return child<QPlainTextEdit>("receiveView")->toPlainText(); }

    // Sent text goes out as typed, without the automatic line ending.
    void sendRawText()
    {
        FormatSetting format = session->formatSettings();
        format.AutoAddFeedLine = false;
        session->setFormatSettings(format);
    }

private:
    SerialPortWidget *session;
};

inline QString greenStatus(const QString &text)
{
    return QStringLiteral("<font color = green>%1 </font>").arg(text);
}

inline QString redStatus(const QString &text)
{
    return QStringLiteral("<font color = red>%1 </font>").arg(text);
}

#endif
