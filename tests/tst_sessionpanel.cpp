#include <QtTest>

#include <QCheckBox>
#include <QComboBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTreeWidget>

#include "common/serialportlist.h"
#include "session/serialportwidget.h"
#include "testsupport.h"

// The parameter panel of a port session: port list, serial and network
// boxes, the custom baud rate, and the way between panel and records.
class TestSessionPanel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void portBoxEntries_data();
    void portBoxEntries();
    void sessionListsTheSystemPorts();
    void networkModesRelabelThePanel_data();
    void networkModesRelabelThePanel();
    void customBaudRateIsEditable();
    void updateSettingsReadsTheMode_data();
    void updateSettingsReadsTheMode();
    void updateSettingsReadsThePort_data();
    void updateSettingsReadsThePort();
    void updateSettingsReadsSerialParameters();
    void updateDisplayShowsSerialRecords();
    void updateDisplayShowsNetworkRecords();

private:
    template<typename T>
    T *child(const char *name) const
    {
        T *widget = session->findChild<T *>(QString::fromLatin1(name));
        Q_ASSERT(widget);
        return widget;
    }
    QComboBox *box(const char *name) const { return child<QComboBox>(name); }
    QString label(const char *name) const { return child<QLabel>(name)->text(); }
    bool shown(const char *name) const { return child<QWidget>(name)->isVisibleTo(session); }
    QStringList items(const char *name) const;
    void selectNetwork();
    // Picks the mode in the box when it is offered there, otherwise brings it
    // in as a loaded document does.
    void selectMode(const QString &mode);

    IsolatedEnvironment *environment = nullptr;
    SerialPortWidget *session = nullptr;
};

namespace {

const QStringList addressNames = {QStringLiteral("LocalHost"), QStringLiteral("LocalHostIPv6"),
                                  QStringLiteral("Broadcast"), QStringLiteral("AnyIPv4"),
                                  QStringLiteral("AnyIPv6"), QStringLiteral("Any")};

const QList<QPair<QString, qint32>> networkModes = {
    {QStringLiteral("TCP Server"), TcpServerMode}, {QStringLiteral("TCP Client"), TcpClientMode},
    {QStringLiteral("UDP Server"), UdpServerMode}, {QStringLiteral("UDP Client"), UdpClientMode},
    {QStringLiteral("UDP Group"), UdpGroupMode},
};

qint32 modeNumber(const QString &text)
{
    for (const auto &mode : networkModes) {
        if (mode.first == text)
            return mode.second;
    }
    return -1;
}

} // namespace

void TestSessionPanel::initTestCase()
{
    environment = new IsolatedEnvironment;
}

void TestSessionPanel::init()
{
    session = new SerialPortWidget;
}

void TestSessionPanel::cleanup()
{
    delete session;
    session = nullptr;
}

QStringList TestSessionPanel::items(const char *name) const
{
    QStringList texts;
    QComboBox *combo = box(name);
    for (int i = 0; i < combo->count(); ++i)
        texts << combo->itemText(i);
    return texts;
}

void TestSessionPanel::selectNetwork()
{
    QComboBox *portBox = box("portBox");
    portBox->setCurrentIndex(portBox->findText(QStringLiteral("TCP/UDP")));
    QCOMPARE(label("baudRateModeLb"), QStringLiteral("Mode"));
}

void TestSessionPanel::selectMode(const QString &mode)
{
    QComboBox *modeBox = box("baudRateModeBox");
    const int index = modeBox->findText(mode);
    if (index >= 0) {
        modeBox->setCurrentIndex(index);
    } else {
        PortSettings settings = session->portSettings();
        settings.connMode = modeNumber(mode);
        session->setPortSettings(settings);
        session->updateDisplay();
    }
    QCOMPARE(modeBox->currentText(), mode);
}

void TestSessionPanel::portBoxEntries_data()
{
    QTest::addColumn<QList<SerialPortItem>>("ports");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QStringList>("names");

    QTest::newRow("no device") << QList<SerialPortItem>{} << QStringList{"Default (COM2)", "TCP/UDP"}
                               << QStringList{QString(), QString()};
    QTest::newRow("one device") << QList<SerialPortItem>{{"COM3", "USB Serial", "details"}}
                                << QStringList{"COM3(USB Serial)", "TCP/UDP"} << QStringList{"COM3", QString()};
    QTest::newRow("two devices, system order")
        << QList<SerialPortItem>{{"cu.usbserial-1", "FT232R", ""}, {"COM1", "", ""}}
        << QStringList{"cu.usbserial-1(FT232R)", "COM1()", "TCP/UDP"}
        << QStringList{"cu.usbserial-1", "COM1", QString()};
}

void TestSessionPanel::portBoxEntries()
{
    QFETCH(QList<SerialPortItem>, ports);
    QFETCH(QStringList, texts);
    QFETCH(QStringList, names);

    QStringList gotTexts;
    QStringList gotNames;
    for (const PortBoxEntry &entry : ::portBoxEntries(ports)) {
        gotTexts << entry.text;
        gotNames << entry.portName;
    }
    QCOMPARE(gotTexts, texts);
    QCOMPARE(gotNames, names);
}

void TestSessionPanel::sessionListsTheSystemPorts()
{
    QStringList expected;
    for (const PortBoxEntry &entry : ::portBoxEntries(listedSerialPorts()))
        expected << entry.text;
    QCOMPARE(items("portBox"), expected);
    QCOMPARE(items("baudRateModeBox"),
             (QStringList{"9600", "19200", "38400", "57600", "115200", "Custom"}));
    QCOMPARE(box("dataBitsServerAddressBox")->currentText(), QStringLiteral("8"));
    QCOMPARE(items("stopBitsClientAddressBox"), (QStringList{"1", "2"}));
    QVERIFY(!shown("clientTw"));
    QVERIFY(shown("flowControlClientPortBox"));
}

void TestSessionPanel::networkModesRelabelThePanel_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("afterOthers");   // the other modes were visited first
    QTest::addColumn<QString>("hostLabel");
    QTest::addColumn<QStringList>("hostItems");   // empty: not checked
    QTest::addColumn<QString>("hostText");
    QTest::addColumn<QString>("portLabel");
    QTest::addColumn<QString>("portText");
    QTest::addColumn<bool>("localPairs");
    QTest::addColumn<bool>("clients");

    const QStringList hosts = {"192.168.7.2", "127.0.0.1"};
    for (bool afterOthers : {false, true}) {
        const char *when = afterOthers ? "after the others" : "fresh";
        QTest::addRow("TCP Client, %s", when) << "TCP Client" << afterOthers << "Host" << hosts << "192.168.7.2"
                                              << "Port" << "6123" << false << false;
        QTest::addRow("TCP Server, %s", when) << "TCP Server" << afterOthers << " IP" << addressNames
                                              << "LocalHost" << "Port" << "6123" << false << true;
        QTest::addRow("UDP Server, %s", when) << "UDP Server" << afterOthers << " IP" << addressNames
                                              << "LocalHost" << "Port" << "60000" << false << false;
        QTest::addRow("UDP Client, %s", when) << "UDP Client" << afterOthers << "Dest Host" << QStringList()
                                              << "127.0.0.1" << "Dest Port" << "6123" << true << false;
        QTest::addRow("UDP Group, %s", when) << "UDP Group" << afterOthers << "Dest Host" << QStringList()
                                             << "224.0.1.0" << "Dest Port" << "6123" << true << false;
    }
}

void TestSessionPanel::networkModesRelabelThePanel()
{
    QFETCH(QString, mode);
    QFETCH(bool, afterOthers);
    QFETCH(QString, hostLabel);
    QFETCH(QStringList, hostItems);
    QFETCH(QString, hostText);
    QFETCH(QString, portLabel);
    QFETCH(QString, portText);
    QFETCH(bool, localPairs);
    QFETCH(bool, clients);

    PortSettings settings = session->portSettings();
    settings.lastTargetPort = 6123;
    settings.lastTargetHost = QStringList{"192.168.7.2", "127.0.0.1"};
    session->setPortSettings(settings);
    selectNetwork();
    if (afterOthers) {
        for (const auto &other : networkModes) {
            if (other.first != mode)
                selectMode(other.first);
        }
    }
    selectMode(mode);

    QCOMPARE(label("dataBitsIpLb"), hostLabel);
    if (!hostItems.isEmpty())
        QCOMPARE(items("dataBitsServerAddressBox"), hostItems);
    QCOMPARE(box("dataBitsServerAddressBox")->currentText(), hostText);
    QCOMPARE(label("parityPortLb"), portLabel);
    QCOMPARE(box("parityServerPortBox")->currentText(), portText);

    QCOMPARE(shown("stopBitsLb"), localPairs);
    QCOMPARE(shown("stopBitsClientAddressBox"), localPairs);
    QCOMPARE(shown("flowTypeLb"), localPairs);
    QCOMPARE(shown("flowControlClientPortBox"), localPairs);
    if (localPairs) {
        QCOMPARE(label("stopBitsLb"), QStringLiteral("Local IP"));
        QCOMPARE(items("stopBitsClientAddressBox"), addressNames);
        QCOMPARE(label("flowTypeLb"), QStringLiteral("Local Port"));
        QVERIFY(box("flowControlClientPortBox")->isEditable());
        QCOMPARE(box("flowControlClientPortBox")->currentText(), QStringLiteral("60001"));
    }
    QCOMPARE(shown("clientTw"), clients);
    QVERIFY(shown("dataBitsServerAddressBox"));
    QVERIFY(shown("parityServerPortBox"));

    // A device entry brings the serial panel back whole.
    box("portBox")->setCurrentIndex(0);
    QCOMPARE(label("baudRateModeLb"), QStringLiteral("Baudrate"));
    QCOMPARE(label("flowTypeLb"), QStringLiteral("Flow Type"));
    QVERIFY(shown("flowControlClientPortBox"));
    QVERIFY(!box("flowControlClientPortBox")->isEditable());
    QVERIFY(!shown("clientTw"));
}

void TestSessionPanel::customBaudRateIsEditable()
{
    QComboBox *baudBox = box("baudRateModeBox");
    QVERIFY(!baudBox->isEditable());

    baudBox->setCurrentIndex(baudBox->findText(QStringLiteral("Custom")));
    QVERIFY(baudBox->isEditable());
    QCOMPARE(baudBox->currentText(), QString());
    auto *validator = qobject_cast<const QIntValidator *>(baudBox->lineEdit()->validator());
    QVERIFY(validator);
    QCOMPARE(validator->bottom(), 0);
    QCOMPARE(validator->top(), 100000000);
    QTest::keyClicks(baudBox->lineEdit(), QStringLiteral("25x0-000"));
    QCOMPARE(baudBox->currentText(), QStringLiteral("250000"));

    baudBox->setCurrentIndex(baudBox->findText(QStringLiteral("115200")));
    QVERIFY(!baudBox->isEditable());
    QCOMPARE(baudBox->currentText(), QStringLiteral("115200"));

    // Chosen again, "Custom" starts from an empty edit.
    baudBox->setCurrentIndex(baudBox->findText(QStringLiteral("Custom")));
    QVERIFY(baudBox->isEditable());
    QCOMPARE(baudBox->currentText(), QString());
}

void TestSessionPanel::updateSettingsReadsTheMode_data()
{
    QTest::addColumn<QString>("mode");   // empty: the first device entry
    QTest::addColumn<int>("connMode");

    QTest::newRow("device entry") << QString() << int(SerialPortMode);
    for (const auto &mode : networkModes)
        QTest::newRow(qPrintable(mode.first)) << mode.first << int(mode.second);
}

void TestSessionPanel::updateSettingsReadsTheMode()
{
    QFETCH(QString, mode);
    QFETCH(int, connMode);

    if (mode.isEmpty()) {
        selectNetwork();
        box("portBox")->setCurrentIndex(0);
    } else {
        selectNetwork();
        selectMode(mode);
    }
    // The panel, not the record, decides.
    PortSettings settings = session->portSettings();
    settings.connMode = 3;
    session->setPortSettings(settings);

    session->updateSettings();
    QCOMPARE(session->portSettings().connMode, connMode);
}

void TestSessionPanel::updateSettingsReadsThePort_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("port");

    QTest::newRow("valid") << "8080" << 8080;
    QTest::newRow("highest") << "65535" << 65535;
    QTest::newRow("too large") << "70000" << 0;
    QTest::newRow("not a number") << "abc" << 0;
    QTest::newRow("empty") << "" << 0;
}

void TestSessionPanel::updateSettingsReadsThePort()
{
    QFETCH(QString, text);
    QFETCH(int, port);

    selectNetwork();
    box("parityServerPortBox")->setEditText(text);
    session->updateSettings();
    QCOMPARE(session->portSettings().connMode, qint32(TcpClientMode));
    QCOMPARE(session->portSettings().lastTargetPort, port);
}

void TestSessionPanel::updateSettingsReadsSerialParameters()
{
    box("baudRateModeBox")->setCurrentIndex(box("baudRateModeBox")->findText(QStringLiteral("Custom")));
    box("baudRateModeBox")->setEditText(QStringLiteral("250000"));
    box("dataBitsServerAddressBox")->setCurrentText(QStringLiteral("7"));
    box("parityServerPortBox")->setCurrentText(QStringLiteral("Mark"));
    box("stopBitsClientAddressBox")->setCurrentText(QStringLiteral("2"));
    box("flowControlClientPortBox")->setCurrentText(QStringLiteral("XON/XOFF"));
    child<QRadioButton>("hexRadio")->setChecked(true);
    child<QCheckBox>("displayTimeBox")->setChecked(true);

    session->updateSettings();
    const PortSettings &settings = session->portSettings();
    QCOMPARE(settings.connMode, qint32(SerialPortMode));
    QCOMPARE(settings.baudRate, 250000);
    QCOMPARE(settings.dataBits, 7);
    QCOMPARE(settings.parity, 5);
    QCOMPARE(settings.stopBits, 2);
    QCOMPARE(settings.flowControl, 2);
    QCOMPARE(session->formatSettings().ReceiveMsgFormat, qint32(HEX));
    QVERIFY(session->formatSettings().DisplayMsgTime);
}

void TestSessionPanel::updateDisplayShowsSerialRecords()
{
    // Coming back from the network panel, as after loading a document.
    selectNetwork();

    PortSettings settings = session->portSettings();
    settings.baudRate = 250000;
    settings.dataBits = 6;
    settings.parity = 2;
    settings.stopBits = 2;
    settings.flowControl = 1;
    session->setPortSettings(settings);
    FormatSetting format = session->formatSettings();
    format.ReceiveMsgFormat = HEX;
    format.AutoFeedLine = true;
    format.DisplaySendMsg = true;
    format.DisplayMsgTime = true;
    format.SendMsgFormat = HEX;
    session->setFormatSettings(format);
    session->updateDisplay();

    QComboBox *baudBox = box("baudRateModeBox");
    QCOMPARE(label("baudRateModeLb"), QStringLiteral("Baudrate"));
    QVERIFY(baudBox->isEditable());
    QCOMPARE(baudBox->currentText(), QStringLiteral("250000"));
    QCOMPARE(box("dataBitsServerAddressBox")->currentText(), QStringLiteral("6"));
    QCOMPARE(box("parityServerPortBox")->currentText(), QStringLiteral("Even"));
    QCOMPARE(box("stopBitsClientAddressBox")->currentText(), QStringLiteral("2"));
    QCOMPARE(box("flowControlClientPortBox")->currentText(), QStringLiteral("RTS/CTS"));
    QVERIFY(child<QRadioButton>("hexRadio")->isChecked());
    QVERIFY(child<QCheckBox>("autoFeedBox")->isChecked());
    QVERIFY(child<QCheckBox>("displaySendBox")->isChecked());
    QVERIFY(child<QCheckBox>("displayTimeBox")->isChecked());
    QVERIFY(child<QRadioButton>("hexSendRadio")->isChecked());

    // A listed rate afterwards selects its entry and locks the box again.
    settings.baudRate = 57600;
    session->setPortSettings(settings);
    session->updateDisplay();
    QCOMPARE(baudBox->currentText(), QStringLiteral("57600"));
    QVERIFY(!baudBox->isEditable());

    session->updateSettings();
    QCOMPARE(session->portSettings().baudRate, 57600);
    QCOMPARE(session->portSettings().parity, 2);
}

void TestSessionPanel::updateDisplayShowsNetworkRecords()
{
    PortSettings settings = session->portSettings();
    settings.connMode = TcpClientMode;
    settings.lastTargetPort = 8081;
    settings.lastTargetHost = QStringList{"10.1.2.3", "127.0.0.1"};
    session->setPortSettings(settings);
    session->updateDisplay();

    QCOMPARE(box("portBox")->currentText(), QStringLiteral("TCP/UDP"));
    QCOMPARE(box("baudRateModeBox")->currentText(), QStringLiteral("TCP Client"));
    QCOMPARE(box("dataBitsServerAddressBox")->currentText(), QStringLiteral("10.1.2.3"));
    QCOMPARE(box("parityServerPortBox")->currentText(), QStringLiteral("8081"));

    settings.connMode = TcpServerMode;
    session->setPortSettings(settings);
    session->updateDisplay();
    QCOMPARE(box("baudRateModeBox")->currentText(), QStringLiteral("TCP Server"));
    QCOMPARE(box("parityServerPortBox")->currentText(), QStringLiteral("8081"));
    QVERIFY(shown("clientTw"));

    // What is shown is what updateSettings reads back.
    session->setPortSettings(PortSettings());
    session->updateSettings();
    QCOMPARE(session->portSettings().connMode, qint32(TcpServerMode));
    QCOMPARE(session->portSettings().lastTargetPort, 8081);
}

QTEST_MAIN(TestSessionPanel)
#include "tst_sessionpanel.moc"
