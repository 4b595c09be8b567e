#include <QtTest>

#include <QImage>

#include "common/hled.h"
#include "testsupport.h"

namespace {

// Counts paint events so repaints can be observed.
class PaintCounter : public QObject
{
public:
    int paints = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};

QImage rendered(HLed &led)
{
    QImage image(led.size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    led.render(&image);
    return image;
}

QColor centre(HLed &led)
{
    const QImage image = rendered(led);
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

} // namespace

class TestHLed : public QObject
{
    Q_OBJECT

private slots:
    void ledWidth_data();
    void ledWidth();
    void rendersAtTinySizes_data();
    void rendersAtTinySizes();
    void onIsGreenishOffIsDarker();
    void switching_data();
    void switching();
    void setColorRepaintsButKeepsGreen();
    void creatableByType();

private:
    IsolatedEnvironment environment;
};

void TestHLed::ledWidth_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("width");
    QTest::newRow("20x20") << QSize(20, 20) << 18;
    QTest::newRow("wide") << QSize(40, 10) << 8;
    QTest::newRow("2x2") << QSize(2, 2) << 0;
    QTest::newRow("1x1") << QSize(1, 1) << 0;
    QTest::newRow("3x3") << QSize(3, 3) << 1;
}

void TestHLed::ledWidth()
{
    QFETCH(QSize, size);
    HLed led;
    led.resize(size);
    QTEST(led.ledWidth(), "width");
}

void TestHLed::rendersAtTinySizes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("1x1") << QSize(1, 1);
    QTest::newRow("2x2") << QSize(2, 2);
    QTest::newRow("3x3") << QSize(3, 3);
    QTest::newRow("5x4") << QSize(5, 4);
}

void TestHLed::rendersAtTinySizes()
{
    QFETCH(QSize, size);
    HLed led;
    led.resize(size);
    QCOMPARE(rendered(led).size(), size);
    QCOMPARE(led.grab().size(), size);
}

void TestHLed::onIsGreenishOffIsDarker()
{
    HLed led;
    led.resize(20, 20);
    const QColor on = centre(led);
    QVERIFY2(on.green() > on.red() && on.green() > on.blue(), qPrintable(on.name()));

    led.turnOff();
    const QColor off = centre(led);
    QVERIFY2(off.green() > off.red() && off.green() > off.blue(), qPrintable(off.name()));
    QVERIFY2(off.green() < on.green() && off.lightness() < on.lightness(),
             qPrintable(off.name() + " vs " + on.name()));
}

void TestHLed::switching_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("on");
    QTest::newRow("toggle") << "toggle" << false;
    QTest::newRow("turnOn(false)") << "turnOn(false)" << false;
    QTest::newRow("turnOff()") << "turnOff()" << false;
    QTest::newRow("turnOff(false)") << "turnOff(false)" << true;
    QTest::newRow("toggle twice") << "toggle twice" << true;
}

void TestHLed::switching()
{
    QFETCH(QString, action);
    QFETCH(bool, on);
    HLed led;
    led.resize(20, 20);
    led.turnOff();
    const QColor offCentre = centre(led);
    led.turnOn();
    const QColor onCentre = centre(led);

    if (action == "toggle") {
        led.toggle();
    } else if (action == "toggle twice") {
        led.toggle();
        led.toggle();
    } else if (action == "turnOn(false)") {
        led.turnOn(false);
    } else if (action == "turnOff()") {
        led.turnOff();
    } else {
        led.turnOff(false);
    }
    QCOMPARE(led.isOn(), on);
    QCOMPARE(centre(led), on ? onCentre : offCentre);
}

void TestHLed::setColorRepaintsButKeepsGreen()
{
    HLed led;
    led.resize(20, 20);
    led.show();
    QVERIFY(QTest::qWaitForWindowExposed(&led));
    QCoreApplication::processEvents();

    PaintCounter counter;
    led.installEventFilter(&counter);
    led.setColor(Qt::green);
    QTest::qWait(50);
    QCOMPARE(counter.paints, 0);

    led.setColor(Qt::red);
    QTRY_VERIFY(counter.paints > 0);
    QCOMPARE(led.color(), QColor(Qt::green));
    const QColor shown = centre(led);
    QVERIFY2(shown.green() > shown.red(), qPrintable(shown.name()));
}

void TestHLed::creatableByType()
{
    QScopedPointer<QObject> created(HLed::staticMetaObject.newInstance());
    QVERIFY(qobject_cast<HLed *>(created.data()));
    const int slot = HLed::staticMetaObject.indexOfSlot("turnOff(bool)");
    QVERIFY(slot >= 0);
}

QTEST_MAIN(TestHLed)
#include "tst_hled.moc"
