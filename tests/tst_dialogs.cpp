#include <QtTest>
#include <QtWidgets>

#include "dialogs/multiportsettingdlg.h"
#include "dialogs/settingsdialog.h"
#include "testsupport.h"

namespace {

// Closes each message box as soon as it turns modal and keeps what it said,
// so no test ever waits on a box.
struct BoxCloser : QTimer {
    QStringList shown;
    BoxCloser()
    {
        connect(this, &QTimer::timeout, [this] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                shown << box->windowTitle() + QStringLiteral(": ") + box->text();
                box->done(QMessageBox::Ok);
            }
        });
        start(10);
    }
};

template<typename T>
T *widget(QWidget *parent, const char *name)
{
    if (T *found = parent->findChild<T *>(QLatin1String(name)))
        return found;
    qFatal("missing widget %s", name);
}

// Every field away from its default: mode, name, baud, data bits, parity,
// stop bits, flow control, port, hosts.
PortSettings portRecord(qint32 mode)
{
    return {mode, QStringLiteral("ttyQV9"), mode == SerialPortMode ? 250000 : 115200, 7, 3, 2, 1, 7001,
            {QStringLiteral("example.org"), QStringLiteral("10.1.1.1")}};
}

// Every field away from its default.
FormatSetting changedFormat()
{
    FormatSetting f;
    f.ReceiveMsgFormat = f.SendMsgFormat = HEX;
    f.AutoFeedLine = f.DisplaySendMsg = f.DisplayMsgTime = f.AutoSend = f.SupportComment = f.FormatSend = true;
    f.LogSaveFlag = f.LogTimestampEnabled = f.LogRotateAtSize = f.LogRotateAtTime = true;
    f.NeedHourTimeStamp = f.FormatDisplayColor = true;
    f.AutoAddFeedLine = false;
    f.AutoFeedInterval = 75;
    f.RxTimeFormat = QStringLiteral("<hh:mm> ");
    f.TxTimeFormat = QStringLiteral("{ss.zzz} ");
    f.SendInterval = 300000;
    f.SendTimeUnit = UnitMinutes;
    f.LineEndingMode = LineFeedCarriageReturn;
    f.LogFilePath = QStringLiteral("logs/%S_%Y%M%D.log");
    f.LogFileTime = QStringLiteral("[%h:%m] ");
    f.LogRotateSize = 3 << 20;
    f.LogRotateTime = QTime(13, 45, 10);
    f.DisplayBufferSize = 5 << 20;
    f.LogFont = QFont(QStringLiteral("Courier"), 13, QFont::Bold);
    f.SendTextColor = QColor(QStringLiteral("#12AB34"));
    f.ReceiveTextColor = QColor(QStringLiteral("#FE0099"));
    return f;
}

// Every field the dialog edits, in declaration order; a failed comparison
// names the index of the first one that differs.
QVariantList fields(const SettingsDialog &d)
{
    const PortSettings &p = d.portSettings;
    const FormatSetting &f = d.formatSetting;
    return {p.connMode, p.name, p.baudRate, p.dataBits, p.parity, p.stopBits, p.flowControl, p.lastTargetPort,
            p.lastTargetHost, f.ReceiveMsgFormat, f.SendMsgFormat, f.AutoFeedLine, f.AutoFeedInterval,
            f.DisplaySendMsg, f.DisplayMsgTime, f.RxTimeFormat, f.TxTimeFormat, f.AutoSend, f.SendInterval,
            f.SendTimeUnit, f.SupportComment, f.FormatSend, f.AutoAddFeedLine, f.LineEndingMode, f.LogSaveFlag,
            f.LogFilePath, f.LogFileTime, f.LogTimestampEnabled, f.LogRotateAtSize, f.LogRotateSize,
            f.LogRotateAtTime, f.LogRotateTime, f.NeedHourTimeStamp, f.DisplayBufferSize, f.LogFont,
            f.FormatDisplayColor, f.SendTextColor, f.ReceiveTextColor};
}

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT
    IsolatedEnvironment environment;

private slots:
    void roundTripKeepsEveryField_data()
    {
        QTest::addColumn<PortSettings>("port");
        QTest::newRow("serial, custom baud") << portRecord(SerialPortMode);
        QTest::newRow("TCP client") << portRecord(TcpClientMode);
    }

    void roundTripKeepsEveryField()
    {
        QFETCH(PortSettings, port);
        SettingsDialog dialog;
        dialog.portSettings = port;
        dialog.formatSetting = changedFormat();
        const QVariantList given = fields(dialog);
        dialog.updateDisplay();
        QVERIFY(dialog.updatePara());
        QCOMPARE(fields(dialog), given);
        // 300000 ms in minutes shows as 5 "m".
        QCOMPARE(widget<QSpinBox>(&dialog, "sendIntervalSB")->value(), 5);
        QCOMPARE(widget<QComboBox>(&dialog, "sendInterUnitCB")->currentText(), QStringLiteral("m"));
    }

    void customBaudRate_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("baudRate");
        QTest::newRow("custom rate") << "250000" << 250000;
        QTest::newRow("tenth digit refused") << "1000000001" << 100000000;
        QTest::newRow("above the range keeps rate") << "200000000" << 9600;
        QTest::newRow("letters refused, rate kept") << "abc" << 9600;
    }

    void customBaudRate()
    {
        QFETCH(QString, typed);
        SettingsDialog dialog;
        dialog.updateDisplay();
        auto *baudBox = widget<QComboBox>(&dialog, "baudRateBox");
        baudBox->setCurrentText(QStringLiteral("Custom"));
        QVERIFY(baudBox->isEditable());
        baudBox->lineEdit()->clear();
        QTest::keyClicks(baudBox->lineEdit(), typed);
        QVERIFY(dialog.updatePara());
        QTEST(dialog.portSettings.baudRate, "baudRate");
    }

    void sendIntervalUnits_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("interval");
        QTest::addColumn<int>("multiplier");
        QTest::newRow("m") << "m" << 5 << 300000 << 60000;
        QTest::newRow("h is 24 minutes") << "h" << 1 << 1440000 << 1440000;
        QTest::newRow("h bounded to the record") << "h" << 5000 << 1491 * 1440000 << 1440000;
        // -1 leaves the spin box as the unit change left it.
        QTest::newRow("1500 ms shown in s") << "s" << -1 << 1000 << 1000;
    }

    void sendIntervalUnits()
    {
        QFETCH(QString, unit);
        QFETCH(int, value);
        SettingsDialog dialog;
        dialog.formatSetting.SendInterval = 1500;
        dialog.formatSetting.SendTimeUnit = UnitMilliseconds;
        dialog.updateDisplay();
        widget<QComboBox>(&dialog, "sendInterUnitCB")->setCurrentText(unit);
        if (value >= 0)
            widget<QSpinBox>(&dialog, "sendIntervalSB")->setValue(value);
        QVERIFY(dialog.updatePara());
        QTEST(dialog.formatSetting.SendInterval, "interval");
        QTEST(dialog.formatSetting.SendTimeUnit, "multiplier");
    }

    void noLineEndingCheckedGivesCrLf()
    {
        SettingsDialog dialog;
        dialog.formatSetting.LineEndingMode = 0; // no button stands for it
        dialog.updateDisplay();
        for (const char *name : {"rbCRandLF", "rbNewLine", "rbCarrageReturn", "rbLFandCR"})
            QVERIFY2(!widget<QRadioButton>(&dialog, name)->isChecked(), name);
        QVERIFY(dialog.updatePara());
        QCOMPARE(dialog.formatSetting.LineEndingMode, 3);
    }

    void pageCount_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("pages");
        QTest::newRow("one, without tabs") << 1 << 1;
        QTest::newRow("three") << 3 << 3;
        QTest::newRow("twenty clamps to sixteen") << 20 << 16;
    }

    void pageCount()
    {
        QFETCH(int, count);
        QFETCH(int, pages);
        MultiPortSettingDlg dialog(nullptr, count);
        QCOMPARE(dialog.pageCount(), pages);
        QCOMPARE(dialog.page(pages), nullptr);
        auto *tabs = widget<QTabWidget>(&dialog, "tabWidget");
        QCOMPARE(tabs->isHidden(), pages == 1);
        QCOMPARE(tabs->count(), pages == 1 ? 0 : pages);
        for (int i = 0; i < tabs->count(); ++i)
            QCOMPARE(tabs->tabText(i), QStringLiteral("Connection %1").arg(i + 1));
    }

    void pageButtons_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<bool>("logging");
        QTest::addColumn<QString>("logName"); // of the second of three pages
        QTest::addColumn<bool>("accepted");
        QTest::newRow("OK, too short") << QByteArray("pbOK") << true << "ab" << false;
        QTest::newRow("OK, too short once trimmed") << QByteArray("pbOK") << true << "  ab  " << false;
        QTest::newRow("OK, three characters") << QByteArray("pbOK") << true << "a.l" << true;
        QTest::newRow("OK, short but not logging") << QByteArray("pbOK") << false << "ab" << true;
        QTest::newRow("Apply, too short") << QByteArray("pbApply") << true << "ab" << false;
    }

    void pageButtons()
    {
        QFETCH(QByteArray, button);
        QFETCH(bool, logging);
        QFETCH(QString, logName);
        QFETCH(bool, accepted);
        MultiPortSettingDlg dialog(nullptr, 3);
        dialog.updateDisplay();
        for (int i = 0; i < 3; ++i)
            widget<QCheckBox>(dialog.page(i), "autoFeedBox")->setChecked(true);
        SettingsDialog *second = dialog.page(1);
        widget<QCheckBox>(second, "saveCheckBox")->setChecked(logging);
        widget<QLineEdit>(second, "logFileNameLE")->setText(logName);
        QSignalSpy finished(&dialog, &QDialog::finished);
        BoxCloser closer;

        widget<QPushButton>(&dialog, button.constData())->click();
        const bool ok = button == "pbOK";
        QCOMPARE(finished.count(), ok && accepted ? 1 : 0);
        QCOMPARE(closer.shown, accepted ? QStringList() : QStringList{"Warning: Please input correct log file name!"});
        // A refusing page takes nothing, not even from its other tabs; OK
        // stops there and shows it, Apply goes on to the third page.
        QVERIFY(dialog.page(0)->formatSetting.AutoFeedLine);
        QCOMPARE(second->formatSetting.AutoFeedLine, accepted);
        QCOMPARE(second->formatSetting.LogFilePath, accepted ? logName : QStringLiteral("%S.log"));
        QCOMPARE(dialog.page(2)->formatSetting.AutoFeedLine, accepted || !ok);
        if (!accepted && ok)
            QCOMPARE(widget<QTabWidget>(&dialog, "tabWidget")->currentIndex(), 1);
        QCOMPARE(second->updatePara(), accepted);
    }
};

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
