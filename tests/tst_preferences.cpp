#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include "app/preferences.h"
#include "scriptedwindow.h"
#include "testsupport.h"

class TestPreferences : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void defaultsFromEmptyStore();
    void unusableValuesFallBack();
    void writtenKeyVocabulary();
    void languageCheckMark_data();
    void languageCheckMark();
    void freshStoreStartsFirstSession();
    void firstSessionCarriesOverToNextStart();

private:
    QScopedPointer<IsolatedEnvironment> environment;
};

void TestPreferences::initTestCase()
{
    environment.reset(new IsolatedEnvironment);
}

void TestPreferences::init()
{
    QSettings().clear();
}

void TestPreferences::defaultsFromEmptyStore()
{
    const Preferences p = Preferences::read(QSettings());
    QCOMPARE(p.baudRate, 9600);
    QCOMPARE(p.dataBits, 8);
    QCOMPARE(p.receiveMsgFormat, int(ASCII));
    QCOMPARE(p.targetHosts, QStringList{"127.0.0.1"});
    QCOMPARE(p.logFileName, QStringLiteral("qvn_"));
    QCOMPARE(p.logTimestamp, QStringLiteral("[%h:%m:%s.%z] "));
    QCOMPARE(p.logRotateTime, QTime(0, 0));
    QVERIFY(p.logRotateAtSize);
    QVERIFY(p.needHourTimeStamp);
    QVERIFY(p.logFilePath.startsWith(QDir::homePath()));
    QVERIFY(!p.openLastConnection);
}

void TestPreferences::unusableValuesFallBack()
{
    QSettings store;
    store.setValue("LastDisplayFontFamily", "");
    store.setValue("LastDisplayFontSize", "huge");
    store.setValue("LastSendTextColor", "not a colour");
    store.setValue("LastReceiveTextColor", "#00ff00");
    store.setValue("LastLogRotateTime", "25:99");
    store.setValue("LastTargetHost", "");
    store.setValue("LastTargetHosts", QStringList{"", ""});
    const Preferences p = Preferences::read(store);
    QCOMPARE(p.fontFamily, QStringLiteral("Consolas"));
    QCOMPARE(p.fontSize, 12);
    QCOMPARE(p.sendTextColor, QColor(Qt::black));
    QCOMPARE(p.receiveTextColor, QColor(Qt::green));
    QCOMPARE(p.logRotateTime, QTime(0, 0));
    QCOMPARE(p.targetHosts, QStringList{"127.0.0.1"});
}

void TestPreferences::writtenKeyVocabulary()
{
    QSettings store;
    store.setValue("LastLogFileName", "mine_");
    Preferences p = Preferences::read(store);
    p.dataBits = 7;
    p.displayMsgTime = true;
    p.logFileName = QStringLiteral("changed_");
    p.openLastConnection = true;
    p.language = 1;
    p.write(store);

    QCOMPARE(store.value("LastDatabits").toInt(), 7);
    QCOMPARE(store.value("LastStopbits").toInt(), 1);
    QCOMPARE(store.value("LastDisplaySendTime").toBool(), true);
    QCOMPARE(store.value("LastSendTextColor").toString(), QStringLiteral("#000000"));
    QCOMPARE(store.value("LastLogFileName").toString(), QStringLiteral("mine_"));
    QVERIFY(!store.contains("OpenLastConnection"));
    QVERIFY(!store.contains("ValueL"));
}

void TestPreferences::languageCheckMark_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<bool>("chinese");

    QTest::newRow("system, zh_CN") << 0 << "zh_CN" << true;
    QTest::newRow("system, zh_TW") << 0 << "zh_TW" << false;
    QTest::newRow("system, en_US") << 0 << "en_US" << false;
    QTest::newRow("chinese on en_US") << 1 << "en_US" << true;
    QTest::newRow("english on zh_CN") << 2 << "zh_CN" << false;
    QTest::newRow("unknown follows locale") << 3 << "zh_CN" << true;
}

void TestPreferences::languageCheckMark()
{
    QFETCH(int, language);
    QFETCH(QString, locale);
    QTEST(Preferences::chineseChecked(language, locale), "chinese");
}

void TestPreferences::freshStoreStartsFirstSession()
{
    ScriptedWindow window;
    const PortSettings &port = window.session(0)->portSettings();
    const FormatSetting &format = window.session(0)->formatSettings();
    QCOMPARE(port.connMode, int(SerialPortMode));
    QCOMPARE(port.baudRate, 9600);
    QCOMPARE(port.dataBits, 8);
    QCOMPARE(port.parity, 0);
    QCOMPARE(port.stopBits, 1);
    QCOMPARE(port.flowControl, 0);
    QCOMPARE(format.LogFont.family(), QStringLiteral("Consolas"));
    QCOMPARE(format.LogFont.pointSize(), 12);
    QCOMPARE(format.SendTextColor, QColor(Qt::black));
    QCOMPARE(format.ReceiveTextColor, QColor(Qt::black));
    QCOMPARE(format.DisplayBufferSize, 10 << 20);
    QVERIFY(format.LogRotateAtSize);
    QCOMPARE(format.LogRotateSize, 100 << 20);
    QCOMPARE(format.currentLogFileName, QStringLiteral("NULL"));
}

static void setBaudRate(SerialPortWidget *session, int baudRate)
{
    PortSettings port = session->portSettings();
    port.baudRate = baudRate;
    session->setPortSettings(port);
    session->updateDisplay();
}

void TestPreferences::firstSessionCarriesOverToNextStart()
{
    {
        ScriptedWindow window;
        window.show();
        setBaudRate(window.session(0), 115200);
        window.close();
    }
    {
        ScriptedWindow window;
        window.show();
        QCOMPARE(window.session(0)->portSettings().baudRate, 115200);
        window.findChild<QAction *>("acEditAdd")->trigger();
        setBaudRate(window.session(1), 57600);
        window.close();
    }
    ScriptedWindow window;
    QCOMPARE(window.session(0)->portSettings().baudRate, 115200);
    QCOMPARE(QSettings().value("LastBaudrate").toInt(), 115200);
}

QTEST_MAIN(TestPreferences)
#include "tst_preferences.moc"
