#ifndef QUORVANE_SESSIONTITLEBAR_H
#define QUORVANE_SESSIONTITLEBAR_H

#include <QWidget>

class QLabel;
class QToolButton;

// The slim bar on top of a port session: what it talks to, a lamp for its
// state and a close button. A double-click asks the workspace to give the
// session all of its room, and the next one to give it back.
class SessionTitleBar : public QWidget
{
    Q_OBJECT

public:
    enum Lamp { LampStopped, LampRunning, LampPaused, LampError };

    explicit SessionTitleBar(QWidget *parent = nullptr);

    // "COM3" for a serial port, "TCP Client 10.0.0.5:502" for a client and
    // "TCP Server :6000" for a listener on every address.
    static QString titleFor(int connMode, const QString &portName, const QString &host, const QString &port);
    // Lamp for a session: stopped until started; once started the
    // connection decides between running and error, unless paused.
    static Lamp lampFor(bool started, int runState, bool connectionOk);

    void setTitle(const QString &title);
    QString title() const;
    void setLamp(Lamp lamp);
    Lamp lamp() const { return currentLamp; }
    void setClosable(bool closable);
    void setCurrent(bool current);

signals:
    void closeRequested();
    void maximizeToggled();

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void paintLamp();

    QLabel *lampLabel = nullptr;
    QLabel *titleLabel = nullptr;
    QToolButton *closeButton = nullptr;
    Lamp currentLamp = LampStopped;
};

#endif
