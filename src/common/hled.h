#ifndef QUORVANE_HLED_H
#define QUORVANE_HLED_H

#include <QColor>
#include <QScopedPointer>
#include <QWidget>

// A small round indicator lamp: a bright disc when on, a darkened one when
// off, with a ringed highlight and a bevelled rim.
class HLed : public QWidget
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit HLed(QWidget *parent = nullptr);
    ~HLed() override;

    QColor color() const;
    bool isOn() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Diameter available for drawing: the smaller side, at least 2, minus 2.
    int ledWidth() const;

public slots:
    // Repaints when the colour differs but keeps the lamp's own colour:
    // indicators stay green whatever their owners ask for.
    void setColor(const QColor &color);
    void toggle();
    void turnOn(bool on = true);
    void turnOff(bool off = true);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Private;
    QScopedPointer<Private> d;
};

#endif
