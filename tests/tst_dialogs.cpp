#include <QtTest>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>

#include "common/texthelpers.h"
#include "dialogs/multiportsettingdlg.h"
#include "dialogs/newconnection.h"
#include "dialogs/settingsdialog.h"
#include "dialogs/settingsfields.h"
#include "testsupport.h"

namespace {

// Closes every message box that becomes modal while it lives and remembers
// what it said, so no test ever waits on a box.
class MessageBoxCloser : public QObject
{
public:
    MessageBoxCloser()
    {
        connect(&timer, &QTimer::timeout, this, [this] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                shown.append({box->windowTitle(), box->text()});
                box->done(QMessageBox::Ok);
            }
        });
        timer.start(10);
    }
    QList<QPair<QString, QString>> shown;

private:
    QTimer timer;
};

template<typename T>
T *widget(QWidget *parent, const char *name)
{
    T *found = parent->findChild<T *>(QLatin1String(name));
    if (!found)
        qFatal("missing widget %s", name);
    return found;
}

void selectText(QComboBox *box, const QString &text)
{
    const int index = box->findText(text);
    QVERIFY2(index >= 0, qPrintable(text));
    box->setCurrentIndex(index);
}

PortSettings serialRecord()
{
    PortSettings port;
    port.connMode = SerialPortMode;
    port.name = QStringLiteral("ttyQV9");
    port.baudRate = 250000;
    port.dataBits = 7;
    port.parity = 3;
    port.stopBits = 2;
    port.flowControl = 1;
    port.lastTargetPort = 7001;
    port.lastTargetHost = {QStringLiteral("10.0.0.5"), QStringLiteral("192.168.1.2")};
    return port;
}

PortSettings networkRecord(qint32 mode)
{
    PortSettings port = serialRecord();
    port.connMode = mode;
    port.baudRate = 115200;
    port.lastTargetPort = 8080;
    port.lastTargetHost = {QStringLiteral("example.org"), QStringLiteral("10.1.1.1")};
    return port;
}

FormatSetting changedFormat()
{
    FormatSetting f;
    f.ReceiveMsgFormat = HEX;
    f.SendMsgFormat = HEX;
    f.AutoFeedLine = true;
    f.AutoFeedInterval = 75;
    f.DisplaySendMsg = true;
    f.DisplayMsgTime = true;
    f.RxTimeFormat = QStringLiteral("<hh:mm> ");
    f.TxTimeFormat = QStringLiteral("{ss.zzz} ");
    f.AutoSend = true;
    f.SendInterval = 300000;
    f.SendTimeUnit = UnitMinutes;
    f.SupportComment = true;
    f.FormatSend = true;
    f.AutoAddFeedLine = false;
    f.LineEndingMode = LineFeedCarriageReturn;
    f.LogSaveFlag = true;
    f.LogFilePath = QStringLiteral("logs/%S_%Y%M%D.log");
    f.LogFileTime = QStringLiteral("[%h:%m] ");
    f.LogTimestampEnabled = true;
    f.LogRotateAtSize = true;
    f.LogRotateSize = 3 << 20;
    f.LogRotateAtTime = true;
    f.LogRotateTime = QTime(13, 45, 10);
    f.NeedHourTimeStamp = true;
    f.DisplayBufferSize = 5 << 20;
    f.LogFont = QFont(QStringLiteral("Courier"), 13, QFont::Bold);
    f.FormatDisplayColor = true;
    f.SendTextColor = QColor(QStringLiteral("#12AB34"));
    f.ReceiveTextColor = QColor(QStringLiteral("#FE0099"));
    return f;
}

void compareRecords(const PortSettings &a, const PortSettings &b)
{
    QCOMPARE(a.connMode, b.connMode);
    QCOMPARE(a.name, b.name);
    QCOMPARE(a.baudRate, b.baudRate);
    QCOMPARE(a.dataBits, b.dataBits);
    QCOMPARE(a.parity, b.parity);
    QCOMPARE(a.stopBits, b.stopBits);
    QCOMPARE(a.flowControl, b.flowControl);
    QCOMPARE(a.lastTargetPort, b.lastTargetPort);
    QCOMPARE(a.lastTargetHost, b.lastTargetHost);
}

void compareRecords(const FormatSetting &a, const FormatSetting &b)
{
    QCOMPARE(a.ReceiveMsgFormat, b.ReceiveMsgFormat);
    QCOMPARE(a.SendMsgFormat, b.SendMsgFormat);
    QCOMPARE(a.AutoFeedLine, b.AutoFeedLine);
    QCOMPARE(a.AutoFeedInterval, b.AutoFeedInterval);
    QCOMPARE(a.DisplaySendMsg, b.DisplaySendMsg);
    QCOMPARE(a.DisplayMsgTime, b.DisplayMsgTime);
    QCOMPARE(a.RxTimeFormat, b.RxTimeFormat);
    QCOMPARE(a.TxTimeFormat, b.TxTimeFormat);
    QCOMPARE(a.AutoSend, b.AutoSend);
    QCOMPARE(a.SendInterval, b.SendInterval);
    QCOMPARE(a.SendTimeUnit, b.SendTimeUnit);
    QCOMPARE(a.SupportComment, b.SupportComment);
    QCOMPARE(a.FormatSend, b.FormatSend);
    QCOMPARE(a.AutoAddFeedLine, b.AutoAddFeedLine);
    QCOMPARE(a.LineEndingMode, b.LineEndingMode);
    QCOMPARE(a.LogSaveFlag, b.LogSaveFlag);
    QCOMPARE(a.LogFilePath, b.LogFilePath);
    QCOMPARE(a.LogFileTime, b.LogFileTime);
    QCOMPARE(a.LogTimestampEnabled, b.LogTimestampEnabled);
    QCOMPARE(a.LogRotateAtSize, b.LogRotateAtSize);
    QCOMPARE(a.LogRotateSize, b.LogRotateSize);
    QCOMPARE(a.LogRotateAtTime, b.LogRotateAtTime);
    QCOMPARE(a.LogRotateTime, b.LogRotateTime);
    QCOMPARE(a.NeedHourTimeStamp, b.NeedHourTimeStamp);
    QCOMPARE(a.DisplayBufferSize, b.DisplayBufferSize);
    QCOMPARE(a.LogFont, b.LogFont);
    QCOMPARE(a.FormatDisplayColor, b.FormatDisplayColor);
    QCOMPARE(a.SendTextColor, b.SendTextColor);
    QCOMPARE(a.ReceiveTextColor, b.ReceiveTextColor);
}

// Shows the records, takes them straight back and returns what came out.
QPair<PortSettings, FormatSetting> roundTrip(const PortSettings &port, const FormatSetting &format)
{
    SettingsDialog dialog;
    dialog.portSettings = port;
    dialog.formatSetting = format;
    dialog.updateDisplay();
    if (!dialog.updatePara())
        qFatal("updatePara refused unchanged records");
    return {dialog.portSettings, dialog.formatSetting};
}

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void portEntriesGiveBackTheirName_data();
    void portEntriesGiveBackTheirName();
    void listedPortsGiveBackTheirName();
    void scaledValues_data();
    void scaledValues();
    void lineEndingChoice_data();
    void lineEndingChoice();

    void roundTripKeepsEveryField_data();
    void roundTripKeepsEveryField();
    void customBaudRate_data();
    void customBaudRate();
    void sendIntervalUnits_data();
    void sendIntervalUnits();
    void storedUnitBelowOne_data();
    void storedUnitBelowOne();
    void noLineEndingCheckedGivesCrLf();
    void shortLogNameIsRefused_data();
    void shortLogNameIsRefused();
    void timeFormatPreview();
    void networkRowsFollowTheMode();
    void badNetworkInputKeepsRecord_data();
    void badNetworkInputKeepsRecord();
    void unknownNetworkModeIsKept();

    void singlePageHasNoTabs();
    void pageCountIsBounded_data();
    void pageCountIsBounded();
    void okStopsAtFirstRefusingPage();
    void applyTakesEveryAcceptingPage();
    void cancelRejects();
    void escapeInPageClosesHost();
    void newConnectionOffersKinds();

private:
    IsolatedEnvironment environment;
};

void TestDialogs::portEntriesGiveBackTheirName_data()
{
    QTest::addColumn<QString>("portName");
    QTest::addColumn<QString>("description");

    QTest::newRow("described") << "cu.usbserial-1420" << "USB Serial";
    QTest::newRow("short name") << "COM3" << "Communications Port";
    QTest::newRow("no description") << "ttyS0" << "";
    QTest::newRow("description with parentheses") << "ttyUSB0" << "CP2102 (Silicon Labs)";
    QTest::newRow("path") << "/dev/pts/7" << "pty";
}

void TestDialogs::portEntriesGiveBackTheirName()
{
    QFETCH(QString, portName);
    QFETCH(QString, description);
    QCOMPARE(embracedString(SettingsFields::portEntryText(portName, description)), portName);
}

void TestDialogs::listedPortsGiveBackTheirName()
{
    SettingsDialog dialog;
    auto *portBox = widget<QComboBox>(&dialog, "portBox");
    QCOMPARE(portBox->itemText(portBox->count() - 1), SettingsDialog::NetworkPortEntry);
    for (int i = 0; i < portBox->count() - 1; ++i)
        QCOMPARE(embracedString(portBox->itemText(i)), portBox->itemData(i).toString());
}

void TestDialogs::scaledValues_data()
{
    QTest::addColumn<int>("shown");
    QTest::addColumn<int>("scale");
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("result");

    QTest::newRow("untouched whole megabytes") << 3 << (1 << 20) << (3 << 20) << (3 << 20);
    QTest::newRow("untouched odd byte count survives") << 0 << (1 << 20) << 1000 << 1000;
    QTest::newRow("changed megabytes") << 5 << (1 << 20) << (3 << 20) << (5 << 20);
    QTest::newRow("largest megabytes fit") << 2047 << (1 << 20) << 0 << (2047 << 20);
    QTest::newRow("overflow is bounded") << 4000 << (1 << 20) << 0 << std::numeric_limits<qint32>::max();
    QTest::newRow("negative stored value replaced") << 0 << (1 << 20) << -5 << 0;
    QTest::newRow("zero scale counts as one") << 7 << 0 << 3 << 7;
}

void TestDialogs::scaledValues()
{
    QFETCH(int, shown);
    QFETCH(int, scale);
    QFETCH(int, stored);
    QFETCH(int, result);
    QCOMPARE(SettingsFields::scaledFromShown(shown, scale, stored), result);
}

void TestDialogs::lineEndingChoice_data()
{
    QTest::addColumn<bool>("crlf");
    QTest::addColumn<bool>("lf");
    QTest::addColumn<bool>("cr");
    QTest::addColumn<bool>("lfcr");
    QTest::addColumn<int>("mode");

    QTest::newRow("none") << false << false << false << false << 3;
    QTest::newRow("CR LF") << true << false << false << false << 3;
    QTest::newRow("LF") << false << true << false << false << 1;
    QTest::newRow("CR") << false << false << true << false << 2;
    QTest::newRow("LF CR") << false << false << false << true << 4;
    QTest::newRow("first checked wins") << false << true << true << true << 1;
}

void TestDialogs::lineEndingChoice()
{
    QFETCH(bool, crlf);
    QFETCH(bool, lf);
    QFETCH(bool, cr);
    QFETCH(bool, lfcr);
    QFETCH(int, mode);
    QCOMPARE(SettingsFields::lineEndingFromChecks(crlf, lf, cr, lfcr), mode);
}

void TestDialogs::roundTripKeepsEveryField_data()
{
    QTest::addColumn<PortSettings>("port");
    QTest::addColumn<FormatSetting>("format");

    QTest::newRow("serial, custom baud") << serialRecord() << changedFormat();
    QTest::newRow("serial, listed baud, defaults") << PortSettings() << FormatSetting();
    FormatSetting oddValues = changedFormat();
    oddValues.SendInterval = 1500;
    oddValues.SendTimeUnit = UnitSeconds;
    oddValues.LogRotateSize = 1000;
    oddValues.LogRotateAtTime = false;
    oddValues.LogRotateTime = QTime();
    oddValues.SendTextColor = QColor();
    QTest::newRow("serial, values between units") << serialRecord() << oddValues;
    QTest::newRow("TCP client") << networkRecord(TcpClientMode) << changedFormat();
    QTest::newRow("TCP server") << networkRecord(TcpServerMode) << changedFormat();
    QTest::newRow("UDP group") << networkRecord(UdpGroupMode) << changedFormat();
}

void TestDialogs::roundTripKeepsEveryField()
{
    QFETCH(PortSettings, port);
    QFETCH(FormatSetting, format);
    if (format.RxTimeFormat.isEmpty()) {
        // An empty stamp format is offered as the display's own default.
        format.RxTimeFormat = QStringLiteral("[Rx][hh:mm:ss.zzz] ");
        format.TxTimeFormat = QStringLiteral("[Tx][hh:mm:ss.zzz] ");
    }
    const auto result = roundTrip(port, format);
    compareRecords(result.first, port);
    compareRecords(result.second, format);
}

void TestDialogs::customBaudRate_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("baudRate");

    QTest::newRow("custom rate") << "250000" << 250000;
    QTest::newRow("largest rate") << "100000000" << 100000000;
    QTest::newRow("tenth digit refused") << "1000000001" << 100000000;
    QTest::newRow("above the range keeps rate") << "200000000" << 9600;
    QTest::newRow("letters refused, rate kept") << "abc" << 9600;
    QTest::newRow("empty keeps rate") << "" << 9600;
    QTest::newRow("zero keeps rate") << "0" << 9600;
}

void TestDialogs::customBaudRate()
{
    QFETCH(QString, typed);
    QFETCH(int, baudRate);

    SettingsDialog dialog;
    dialog.updateDisplay();
    auto *baudBox = widget<QComboBox>(&dialog, "baudRateBox");
    QVERIFY(!baudBox->isEditable());
    selectText(baudBox, QStringLiteral("Custom"));
    QVERIFY(baudBox->isEditable());
    QCOMPARE(baudBox->currentText(), QStringLiteral("9600"));
    baudBox->lineEdit()->clear();
    QTest::keyClicks(baudBox->lineEdit(), typed);

    QVERIFY(dialog.updatePara());
    QCOMPARE(dialog.portSettings.baudRate, baudRate);

    selectText(baudBox, QStringLiteral("57600"));
    QVERIFY(!baudBox->isEditable());
    QVERIFY(dialog.updatePara());
    QCOMPARE(dialog.portSettings.baudRate, 57600);
}

void TestDialogs::sendIntervalUnits_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("multiplier");

    QTest::newRow("ms") << "ms" << 250 << 250 << 1;
    QTest::newRow("s") << "s" << 3 << 3000 << 1000;
    QTest::newRow("m") << "m" << 5 << 300000 << 60000;
    QTest::newRow("h is 24 minutes") << "h" << 1 << 1440000 << 1440000;
    QTest::newRow("h bounded to the record") << "h" << 5000 << 1491 * 1440000 << 1440000;
}

void TestDialogs::sendIntervalUnits()
{
    QFETCH(QString, unit);
    QFETCH(int, value);
    QFETCH(int, interval);
    QFETCH(int, multiplier);

    SettingsDialog dialog;
    dialog.updateDisplay();
    selectText(widget<QComboBox>(&dialog, "sendInterUnitCB"), unit);
    widget<QSpinBox>(&dialog, "sendIntervalSB")->setValue(value);
    QVERIFY(dialog.updatePara());
    QCOMPARE(dialog.formatSetting.SendInterval, interval);
    QCOMPARE(dialog.formatSetting.SendTimeUnit, multiplier);

    SettingsDialog reopened;
    reopened.formatSetting = dialog.formatSetting;
    reopened.updateDisplay();
    QCOMPARE(widget<QSpinBox>(&reopened, "sendIntervalSB")->value(), interval / multiplier);
    QCOMPARE(widget<QComboBox>(&reopened, "sendInterUnitCB")->currentText(), unit);
}

void TestDialogs::storedUnitBelowOne_data()
{
    QTest::addColumn<int>("unit");
    QTest::newRow("zero") << 0;
    QTest::newRow("negative") << -60000;
    QTest::newRow("not a listed unit") << 7;
}

void TestDialogs::storedUnitBelowOne()
{
    QFETCH(int, unit);
    SettingsDialog dialog;
    dialog.formatSetting.SendTimeUnit = unit;
    dialog.formatSetting.SendInterval = 500;
    dialog.updateDisplay();
    QCOMPARE(widget<QComboBox>(&dialog, "sendInterUnitCB")->currentText(), QStringLiteral("ms"));
    QVERIFY(dialog.updatePara());
    QCOMPARE(dialog.formatSetting.SendTimeUnit, 1);
    QCOMPARE(dialog.formatSetting.SendInterval, 500);
}

void TestDialogs::noLineEndingCheckedGivesCrLf()
{
    SettingsDialog dialog;
    dialog.formatSetting.LineEndingMode = 0;
    dialog.updateDisplay();
    for (const char *name : {"rbCRandLF", "rbNewLine", "rbCarrageReturn", "rbLFandCR"})
        QVERIFY2(!widget<QRadioButton>(&dialog, name)->isChecked(), name);
    QVERIFY(dialog.updatePara());
    QCOMPARE(dialog.formatSetting.LineEndingMode, 3);

    widget<QRadioButton>(&dialog, "rbCarrageReturn")->setChecked(true);
    QVERIFY(dialog.updatePara());
    QCOMPARE(dialog.formatSetting.LineEndingMode, 2);
}

void TestDialogs::shortLogNameIsRefused_data()
{
    QTest::addColumn<bool>("logging");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("two characters") << true << "ab" << false;
    QTest::newRow("padded two characters") << true << "  ab  " << false;
    QTest::newRow("empty") << true << "" << false;
    QTest::newRow("three characters") << true << "a.l" << true;
    QTest::newRow("short name while not logging") << false << "ab" << true;
}

void TestDialogs::shortLogNameIsRefused()
{
    QFETCH(bool, logging);
    QFETCH(QString, name);
    QFETCH(bool, accepted);

    SettingsDialog dialog;
    dialog.updateDisplay();
    widget<QCheckBox>(&dialog, "saveCheckBox")->setChecked(logging);
    widget<QLineEdit>(&dialog, "logFileNameLE")->setText(name);
    widget<QCheckBox>(&dialog, "autoFeedBox")->setChecked(true);

    MessageBoxCloser closer;
    QCOMPARE(dialog.updatePara(), accepted);
    if (accepted) {
        QVERIFY(closer.shown.isEmpty());
        QCOMPARE(dialog.formatSetting.LogFilePath, name);
        return;
    }
    QCOMPARE(closer.shown.size(), 1);
    QCOMPARE(closer.shown.first().first, QStringLiteral("Warning"));
    QCOMPARE(closer.shown.first().second, QStringLiteral("Please input correct log file name!"));
    // Nothing of the refused input reaches the records.
    QCOMPARE(dialog.formatSetting.LogSaveFlag, false);
    QCOMPARE(dialog.formatSetting.LogFilePath, QStringLiteral("%S.log"));
    QCOMPARE(dialog.formatSetting.AutoFeedLine, false);
}

void TestDialogs::timeFormatPreview()
{
    SettingsDialog dialog;
    dialog.updateDisplay();
    auto *edit = widget<QLineEdit>(&dialog, "rxTimeFormatLE");
    auto *preview = widget<QLabel>(&dialog, "rxTimeFormatLB");
    QVERIFY(preview->text().startsWith(QStringLiteral("[Rx][")));

    edit->setText(QStringLiteral("[hh:mm:ss.zzz]"));
    QVERIFY2(QRegularExpression(QStringLiteral("^\\[\\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\]$")).match(preview->text()).hasMatch(),
             qPrintable(preview->text()));

    edit->clear();
    QVERIFY(preview->text().startsWith(QStringLiteral("[Rx][")));
    QVERIFY(dialog.updatePara());
    QCOMPARE(dialog.formatSetting.RxTimeFormat, QString());

    auto *logName = widget<QLineEdit>(&dialog, "logFileNameLE");
    logName->setText(QStringLiteral("%S-%Y.log"));
    QCOMPARE(widget<QLabel>(&dialog, "logFileNameResultLB")->text(),
             QStringLiteral("COM1-%1.log").arg(QDate::currentDate().year()));
}

void TestDialogs::networkRowsFollowTheMode()
{
    SettingsDialog dialog;
    dialog.portSettings = serialRecord();
    dialog.updateDisplay();
    selectText(widget<QComboBox>(&dialog, "portBox"), SettingsDialog::NetworkPortEntry);

    auto *mode = widget<QComboBox>(&dialog, "baudRateBox");
    QCOMPARE(widget<QLabel>(&dialog, "baudRateLabel")->text(), QStringLiteral("Mode"));
    QCOMPARE(mode->currentText(), QStringLiteral("TCP Client"));
    QCOMPARE(widget<QLabel>(&dialog, "dataBitsLabel")->text(), QStringLiteral("Host"));
    QCOMPARE(widget<QComboBox>(&dialog, "dataBitsBox")->currentText(), QStringLiteral("10.0.0.5"));
    QVERIFY(widget<QComboBox>(&dialog, "stopBitsBox")->isHidden());

    selectText(mode, QStringLiteral("UDP Client"));
    QCOMPARE(widget<QLabel>(&dialog, "dataBitsLabel")->text(), QStringLiteral("Dest Host"));
    QCOMPARE(widget<QLabel>(&dialog, "stopBitsLabel")->text(), QStringLiteral("Local IP"));
    QVERIFY(!widget<QComboBox>(&dialog, "stopBitsBox")->isHidden());
    QCOMPARE(widget<QComboBox>(&dialog, "flowControlBox")->currentText(), QStringLiteral("60001"));

    QVERIFY(dialog.updatePara());
    QCOMPARE(dialog.portSettings.connMode, qint32(UdpClientMode));
    QCOMPARE(dialog.portSettings.name, QStringLiteral("ttyQV9"));
    QCOMPARE(dialog.portSettings.baudRate, 250000);

    // Back on the device, the serial lists show the record again.
    selectText(widget<QComboBox>(&dialog, "portBox"), QStringLiteral("ttyQV9"));
    QCOMPARE(mode->currentText(), QStringLiteral("250000"));
    QCOMPARE(widget<QComboBox>(&dialog, "dataBitsBox")->currentText(), QStringLiteral("7"));
}

void TestDialogs::badNetworkInputKeepsRecord_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QStringList>("hosts");
    QTest::addColumn<int>("portNumber");

    const QStringList history{QStringLiteral("example.org"), QStringLiteral("10.1.1.1")};
    QTest::newRow("new host goes first") << " 10.9.9.9 " << "9000" << QStringList{"10.9.9.9", "example.org", "10.1.1.1"} << 9000;
    QTest::newRow("known host moves first") << "10.1.1.1" << "9000" << QStringList{"10.1.1.1", "example.org"} << 9000;
    QTest::newRow("empty host keeps history") << "  " << "9000" << history << 9000;
    QTest::newRow("non-numeric port kept") << "example.org" << "http" << history << 8080;
    QTest::newRow("port out of range kept") << "example.org" << "70000" << history << 8080;
    QTest::newRow("port zero kept") << "example.org" << "0" << history << 8080;
    QTest::newRow("empty port kept") << "example.org" << "" << history << 8080;
}

void TestDialogs::badNetworkInputKeepsRecord()
{
    QFETCH(QString, host);
    QFETCH(QString, port);
    QFETCH(QStringList, hosts);
    QFETCH(int, portNumber);

    SettingsDialog dialog;
    dialog.portSettings = networkRecord(TcpClientMode);
    dialog.updateDisplay();
    widget<QComboBox>(&dialog, "dataBitsBox")->setEditText(host);
    // Set directly: typing would be stopped by the port validator already.
    widget<QComboBox>(&dialog, "parityBox")->setEditText(port);
    QVERIFY(dialog.updatePara());
    QCOMPARE(dialog.portSettings.lastTargetHost, hosts);
    QCOMPARE(dialog.portSettings.lastTargetPort, portNumber);
}

void TestDialogs::unknownNetworkModeIsKept()
{
    SettingsDialog dialog;
    dialog.portSettings = networkRecord(UnusedMode);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("^Unknown Connection Mode")));
    dialog.updateDisplay();
    QCOMPARE(widget<QComboBox>(&dialog, "baudRateBox")->currentIndex(), -1);
    QVERIFY(dialog.updatePara());
    QCOMPARE(dialog.portSettings.connMode, qint32(UnusedMode));
}

void TestDialogs::singlePageHasNoTabs()
{
    MultiPortSettingDlg dialog(nullptr, 1);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Option"));
    QCOMPARE(dialog.pageCount(), 1);
    QVERIFY(widget<QTabWidget>(&dialog, "tabWidget")->isHidden());
    QCOMPARE(widget<QTabWidget>(&dialog, "tabWidget")->count(), 0);
    QVERIFY(dialog.page(0));
    QVERIFY(dialog.isAncestorOf(dialog.page(0)));
    QVERIFY(!dialog.page(0)->isWindow());
    QCOMPARE(dialog.page(1), nullptr);
    QCOMPARE(dialog.page(-1), nullptr);
    QCOMPARE(widget<QPushButton>(&dialog, "pbApply")->text(), QStringLiteral("Apply"));
}

void TestDialogs::pageCountIsBounded_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("pages");
    QTest::newRow("three") << 3 << 3;
    QTest::newRow("sixteen") << 16 << 16;
    QTest::newRow("twenty clamps") << 20 << 16;
    QTest::newRow("zero") << 0 << 0;
    QTest::newRow("negative") << -2 << 0;
}

void TestDialogs::pageCountIsBounded()
{
    QFETCH(int, count);
    QFETCH(int, pages);
    MultiPortSettingDlg dialog(nullptr, count);
    QCOMPARE(dialog.pageCount(), pages);
    auto *tabs = widget<QTabWidget>(&dialog, "tabWidget");
    QCOMPARE(tabs->count(), pages);
    for (int i = 0; i < pages; ++i) {
        QCOMPARE(tabs->tabText(i), QStringLiteral("Connection %1").arg(i + 1));
        QCOMPARE(tabs->widget(i), dialog.page(i));
        QVERIFY(!dialog.page(i)->isWindow());
    }
}

namespace {

// Three pages; each gets a visible change, the second an unusable log name.
void prepareThreePages(MultiPortSettingDlg &dialog)
{
    dialog.updateDisplay();
    for (int i = 0; i < 3; ++i)
        widget<QCheckBox>(dialog.page(i), "autoFeedBox")->setChecked(true);
    widget<QCheckBox>(dialog.page(1), "saveCheckBox")->setChecked(true);
    widget<QLineEdit>(dialog.page(1), "logFileNameLE")->setText(QStringLiteral("ab"));
}

} // namespace

void TestDialogs::okStopsAtFirstRefusingPage()
{
    MultiPortSettingDlg dialog(nullptr, 3);
    prepareThreePages(dialog);
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    MessageBoxCloser closer;

    widget<QPushButton>(&dialog, "pbOK")->click();
    QCOMPARE(accepted.count(), 0);
    QCOMPARE(closer.shown.size(), 1);
    QCOMPARE(widget<QTabWidget>(&dialog, "tabWidget")->currentIndex(), 1);
    QVERIFY(dialog.page(0)->formatSetting.AutoFeedLine);
    QVERIFY(!dialog.page(1)->formatSetting.AutoFeedLine);
    QVERIFY(!dialog.page(2)->formatSetting.AutoFeedLine);

    widget<QLineEdit>(dialog.page(1), "logFileNameLE")->setText(QStringLiteral("abc.log"));
    widget<QPushButton>(&dialog, "pbOK")->click();
    QCOMPARE(accepted.count(), 1);
    QVERIFY(dialog.page(2)->formatSetting.AutoFeedLine);
}

void TestDialogs::applyTakesEveryAcceptingPage()
{
    MultiPortSettingDlg dialog(nullptr, 3);
    prepareThreePages(dialog);
    QSignalSpy finished(&dialog, &QDialog::finished);
    MessageBoxCloser closer;

    widget<QPushButton>(&dialog, "pbApply")->click();
    QCOMPARE(finished.count(), 0);
    QVERIFY(dialog.page(0)->formatSetting.AutoFeedLine);
    QVERIFY(!dialog.page(1)->formatSetting.AutoFeedLine);
    QVERIFY(dialog.page(2)->formatSetting.AutoFeedLine);
}

void TestDialogs::cancelRejects()
{
    MultiPortSettingDlg dialog(nullptr, 2);
    dialog.updateDisplay();
    widget<QCheckBox>(dialog.page(0), "autoFeedBox")->setChecked(true);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    widget<QPushButton>(&dialog, "pbCancel")->click();
    QCOMPARE(rejected.count(), 1);
    QVERIFY(!dialog.page(0)->formatSetting.AutoFeedLine);
}

void TestDialogs::escapeInPageClosesHost()
{
    MultiPortSettingDlg dialog(nullptr, 1);
    dialog.show();
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    QTest::keyClick(widget<QLineEdit>(dialog.page(0), "logFileNameLE"), Qt::Key_Escape);
    QCOMPARE(rejected.count(), 1);
    QVERIFY(!dialog.page(0)->isHidden());
}

void TestDialogs::newConnectionOffersKinds()
{
    NewConnection dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("New Connection"));
    auto *kinds = widget<QComboBox>(&dialog, "comboBox");
    QCOMPARE(kinds->count(), 3);
    QCOMPARE(kinds->itemText(0), QStringLiteral("Serial Port"));
    QCOMPARE(kinds->itemText(1), QStringLiteral("TCP/IP"));
    QCOMPARE(kinds->itemText(2), QStringLiteral("Bridger"));
}

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
