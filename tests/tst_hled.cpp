#include <QtTest>

#include "common/hled.h"
#include "testsupport.h"

using Action = std::function<void(HLed &)>;
Q_DECLARE_METATYPE(Action)

// The lamp rendered to an image, sampled in the middle.
static QColor centre(HLed &led)
{
    return led.grab().toImage().pixelColor(led.width() / 2, led.height() / 2);
}

struct CountedLed : HLed
{
    int paints = 0;
    void paintEvent(QPaintEvent *event) override { ++paints; HLed::paintEvent(event); }
};

class TestHLed : public QObject
{
    Q_OBJECT

private slots:
    void switching_data();
    void switching();

private:
    IsolatedEnvironment environment;
};

void TestHLed::switching_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("on");
    QTest::newRow("turnOff(false) turns on") << QSize(20, 20) << Action([](HLed &led) { led.turnOff(false); }) << true;
    QTest::newRow("toggle") << QSize(20, 20) << Action([](HLed &led) { led.toggle(); }) << true;
    QTest::newRow("setColor keeps green") << QSize(20, 20) << Action([](HLed &led) { led.setColor(Qt::red); }) << false;
    QTest::newRow("2x2") << QSize(2, 2) << Action([](HLed &led) { led.turnOff(false); }) << true;
}

// Each action on a lamp that was just turned off repaints it and shows the
// lit or the off look. Where there is room for the disc, on is green and off
// a darker green; a tiny lamp must still draw without fault.
void TestHLed::switching()
{
    QFETCH(QSize, size);
    QFETCH(Action, action);
    CountedLed led;
    led.resize(size);
    led.show();
    QVERIFY(QTest::qWaitForWindowExposed(&led));
    const QColor lit = centre(led);
    led.turnOff();
    const QColor off = centre(led);
    QVERIFY2(size.width() <= 2 || (lit.green() > qMax(lit.red(), lit.blue()) && off.green() > qMax(off.red(), off.blue())
                                   && off.lightness() < lit.lightness()), qPrintable(lit.name() + " / " + off.name()));
    QCoreApplication::processEvents();
    led.paints = 0;
    action(led);
    QTRY_VERIFY(led.paints > 0);
    QTEST(led.isOn(), "on");
    QCOMPARE(centre(led), led.isOn() ? lit : off);
}

QTEST_MAIN(TestHLed)
#include "tst_hled.moc"
