#include <QtTest>

#include <QCheckBox>

#include "scriptedwindow.h"
#include "testsupport.h"

class TestPreferences : public QObject
{
    Q_OBJECT
    IsolatedEnvironment environment;

    static void setBaudRate(SerialPortWidget *session, int baudRate)
    {
        PortSettings port = session->portSettings();
        port.baudRate = baudRate;
        session->setPortSettings(port);
        session->updateDisplay();
    }

private slots:
    void init() { QSettings().clear(); }

    // Unusable stored values fall back to the defaults one by one.
    void storeStartsFirstSession_data()
    {
        QTest::addColumn<QVariantMap>("store");
        QTest::newRow("fresh store") << QVariantMap();
        QTest::newRow("unusable values") << QVariantMap{
            {"LastDisplayFontFamily", ""},     {"LastDisplayFontSize", "huge"}, {"LastSendTextColor", "not a colour"},
            {"LastReceiveTextColor", "#zz"},   {"LastLogRotateTime", "25:99"},  {"LastTargetHost", ""},
            {"LastTargetHosts", QStringList{"", ""}}};
    }

    void storeStartsFirstSession()
    {
        QFETCH(QVariantMap, store);
        for (auto it = store.cbegin(); it != store.cend(); ++it)
            QSettings().setValue(it.key(), it.value());
        ScriptedWindow window;
        const PortSettings &port = window.session(0)->portSettings();
        const FormatSetting &format = window.session(0)->formatSettings();
        QCOMPARE((QList<int>{port.connMode, port.baudRate, port.dataBits, port.parity, port.stopBits, port.flowControl}),
                 (QList<int>{SerialPortMode, 9600, 8, 0, 1, 0}));
        QCOMPARE(port.lastTargetHost, QStringList{"127.0.0.1"});
        QCOMPARE(format.LogFont.family(), QStringLiteral("Consolas"));
        QCOMPARE(format.LogFont.pointSize(), 12);
        // No colour chosen: the view's own, which follows the palette.
        QCOMPARE((QList<QColor>{format.SendTextColor, format.ReceiveTextColor}), (QList<QColor>(2, QColor())));
        QCOMPARE(format.DisplayBufferSize, 10 << 20);
        QVERIFY(format.LogRotateAtSize);
        QCOMPARE(format.LogRotateSize, 100 << 20);
        QCOMPARE(format.LogRotateTime, QTime(0, 0));
    }

    void firstSessionCarriesOverToNextStart()
    {
        {
            ScriptedWindow window;
            window.show();
            setBaudRate(window.session(0), 115200);
            FormatSetting format = window.session(0)->formatSettings();
            format.ReceiveTextColor = QColor(0x12, 0x34, 0x56);
            window.session(0)->setFormatSettings(format);
            window.session(0)->findChild<QCheckBox *>("autoReconnectBox")->setChecked(true);
            window.close();
        }
        { // comes up at 115200; a change to the second session is not remembered
            ScriptedWindow window;
            window.show();
            window.findChild<QAction *>("acEditAdd")->trigger();
            setBaudRate(window.session(1), 57600);
            window.close();
        }
        ScriptedWindow window;
        QCOMPARE(window.session(0)->portSettings().baudRate, 115200);
        QVERIFY(window.session(0)->findChild<QCheckBox *>("autoReconnectBox")->isChecked());
        // A chosen colour is kept; an unchosen one stays the palette's.
        QCOMPARE(window.session(0)->formatSettings().ReceiveTextColor, QColor(0x12, 0x34, 0x56));
        QVERIFY(!window.session(0)->formatSettings().SendTextColor.isValid());
        // The keys as spelt in existing stores; the ones read here but written
        // elsewhere, or never, are left out.
        QSettings store;
        QCOMPARE(store.value("LastBaudrate").toInt(), 115200);
        QCOMPARE(store.value("LastDatabits").toInt(), 8);
        QVERIFY(store.contains("LastDisplaySendTime"));
        for (const char *key : {"LastLogFileName", "OpenLastConnection", "ValueL"})
            QVERIFY2(!store.contains(key), key);
    }
};

QTEST_MAIN(TestPreferences)
#include "tst_preferences.moc"
