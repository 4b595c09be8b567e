#ifndef QUORVANE_CONTROLLINESPANEL_H
#define QUORVANE_CONTROLLINESPANEL_H

#include <QGroupBox>
#include <QTimer>

class ControlLines;
class HLed;
class QCheckBox;
class QPushButton;
class QSpinBox;

// The serial control lines in a session panel: DTR and RTS toggles, a timed
// break, and lamps for CTS, DSR, DCD and RI. The toggles show the lines as
// the device reports them while it can, the wanted levels otherwise; the
// lamps are polled only while the port is open.
class ControlLinesPanel : public QGroupBox
{
    Q_OBJECT

public:
    static constexpr int PollInterval = 250;

    explicit ControlLinesPanel(ControlLines *lines, QWidget *parent = nullptr);

    int breakDuration() const;
    void setBreakDuration(int milliseconds);

public slots:
    // Reads the lines again; also picks up a port that was opened or closed.
    void refresh();

private:
    void sendBreak();
    void endBreak();

    ControlLines *lines;
    QCheckBox *dtrBox;
    QCheckBox *rtsBox;
    QPushButton *breakButton;
    QSpinBox *breakDurationBox;
    QWidget *lampRow;
    QList<HLed *> lamps;
    QTimer pollTimer;
    QTimer breakTimer;
    bool linesUnknown = false; // the open device cannot report them
};

#endif
