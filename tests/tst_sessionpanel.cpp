#include <QtTest>

#include <QComboBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>

#include "common/portscanner.h"
#include "common/serialportlist.h"
#include "session/serialportwidget.h"
#include "testsupport.h"

// Each network mode and what the boxes below the mode show for it.
static const std::tuple<const char *, int, const char *> networkModes[] = {
    {"TCP Client", TcpClientMode, "Host=192.168.7.2, Port=6123, reconnect"},
    {"TCP Server", TcpServerMode, " IP=LocalHost, Port=6123, clients"},
    {"UDP Server", UdpServerMode, " IP=LocalHost, Port=60000"},
    {"UDP Client", UdpClientMode, "Dest Host=127.0.0.1, Dest Port=6123, Local IP=LocalHost, Local Port=60001"},
    {"UDP Group", UdpGroupMode, "Dest Host=224.0.1.0, Dest Port=6123, Local IP=LocalHost, Local Port=60001"},
};

// Label and box of each row below the port box.
static const std::pair<const char *, const char *> panelRows[] = {
    {"baudRateModeLb", "baudRateModeBox"}, {"dataBitsIpLb", "dataBitsServerAddressBox"},
    {"parityPortLb", "parityServerPortBox"}, {"stopBitsLb", "stopBitsClientAddressBox"},
    {"flowTypeLb", "flowControlClientPortBox"}};

// The parameter panel of a port session: port list, the boxes relabelled per
// network mode, the custom baud rate, and the way from panel to records.
class TestSessionPanel : public QObject
{
    Q_OBJECT

private slots:
    void init() { session = std::make_unique<SerialPortWidget>(); }

    // The entries for one device, then for none.
    void portBoxEntries()
    {
        QStringList texts;
        for (const PortBoxEntry &entry : ::portBoxEntries({{"COM3", "USB Serial", "details"}}) + ::portBoxEntries({}))
            texts << entry.text;
        QCOMPARE(texts, QStringList({"COM3(USB Serial)", "TCP/UDP", "Default (COM2)", "TCP/UDP"}));
    }

    // Sessions share one scan, made only when the device folder changed: a
    // device that comes shows in every session's box at once, and each keeps
    // its own choice.
    void sessionsShareOnePortScan()
    {
        int scans = 0;
        QList<SerialPortItem> devices;
        QTemporaryDir deviceFolder;
        PortScanner &scanner = PortScanner::shared();
        scanner.setSource([&] { ++scans; return devices; }, deviceFolder.path());
        scanner.rescan();
        SerialPortWidget other;
        session->setPortName(QStringLiteral("/dev/pts/7"));
        scanner.rescan();
        QCOMPARE(scans, 1);
        devices = {{"COM3", "USB Serial", "details"}};
        QVERIFY(QFile(deviceFolder.filePath(QStringLiteral("COM3"))).open(QIODevice::WriteOnly));
        scanner.rescan();
        scanner.rescan();
        QCOMPARE(scans, 2);
        for (SerialPortWidget *s : {session.get(), &other}) {
            QComboBox *portBox = s->findChild<QComboBox *>(QStringLiteral("portBox"));
            QCOMPARE(portBox->findText(QStringLiteral("COM3(USB Serial)")), 0);
        }
        QCOMPARE(box("portBox")->currentText(), QStringLiteral("/dev/pts/7"));
        scanner.setSource(listedSerialPorts, QStringLiteral("/dev"));
    }

    void networkModesRelabelThePanel_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<bool>("afterOthers");   // the other modes were visited first
        QTest::addColumn<int>("connMode");
        QTest::addColumn<QString>("panel");
        for (bool after : {false, true}) {
            for (const auto &[name, connMode, panel] : networkModes)
                QTest::addRow("%s%s", name, after ? ", after others" : "") << name << after << connMode << panel;
        }
    }

    // updateSettings reads the mode from the panel, not from the records. A
    // device entry afterwards brings the serial panel back whole.
    void networkModesRelabelThePanel()
    {
        QFETCH(QString, mode);
        QFETCH(bool, afterOthers);
        QFETCH(int, connMode);
        QFETCH(QString, panel);
        PortSettings settings = session->portSettings();
        settings.lastTargetPort = 6123;
        settings.lastTargetHost = QStringList{"192.168.7.2", "127.0.0.1"};
        session->setPortSettings(settings);
        box("portBox")->setCurrentIndex(box("portBox")->findText(QStringLiteral("TCP/UDP")));
        if (afterOthers) {
            for (const auto &[other, otherMode, otherPanel] : networkModes)
                selectMode(other, otherMode);
        }
        selectMode(mode, connMode);
        QCOMPARE(shownBoxes(), QStringLiteral("Mode=%1, %2").arg(mode, panel));
        session->updateSettings();
        QCOMPARE(session->portSettings().connMode, connMode);

        box("portBox")->setCurrentIndex(0);
        QCOMPARE(shownBoxes(), QStringLiteral("Baudrate=9600, Data Bits=8, Parity=None, Stop Bits=1, Flow Type=None, "
                                              "reconnect, control lines"));
        QVERIFY(!box("flowControlClientPortBox")->isEditable());
        session->updateSettings();
        QCOMPARE(session->portSettings().connMode, int(SerialPortMode));
    }

    // "Custom" opens an empty, editable box that takes digits only: typing
    // gives just the digits.
    void customBaudRateIsEditable()
    {
        QComboBox *baudBox = box("baudRateModeBox");
        QVERIFY(!baudBox->isEditable());
        baudBox->setCurrentText(QStringLiteral("Custom"));
        QVERIFY(baudBox->isEditable());
        auto *validator = qobject_cast<const QIntValidator *>(baudBox->lineEdit()->validator());
        QVERIFY(validator);
        QCOMPARE(std::pair(validator->bottom(), validator->top()), std::pair(0, 100000000));
        QTest::keyClicks(baudBox->lineEdit(), QStringLiteral("25x0-000"));
        QCOMPARE(baudBox->currentText(), QStringLiteral("250000"));
    }

    // A port text that is not a number in 0..65535 reads as 0.
    void updateSettingsReadsABadPortAsZero()
    {
        box("portBox")->setCurrentIndex(box("portBox")->findText(QStringLiteral("TCP/UDP")));
        for (const auto &[text, port] : {std::pair{"8080", 8080}, {"70000", 0}, {"65535", 65535}, {"abc", 0}}) {
            box("parityServerPortBox")->setEditText(text);
            session->updateSettings();
            QCOMPARE(session->portSettings().lastTargetPort, port);
        }
    }

private:
    template<typename T = QWidget>
    T *child(const char *name) const { return session->findChild<T *>(QString::fromLatin1(name)); }
    QComboBox *box(const char *name) const { return child<QComboBox>(name); }
    QString label(const char *name) const { return child<QLabel>(name)->text(); }
    bool shown(const char *name) const { return child(name)->isVisibleTo(session.get()); }
    // "label=text" of every shown row, then the client list and the link
    // options when shown.
    QString shownBoxes() const
    {
        QStringList pairs;
        for (const auto &[label, box] : panelRows) {
            if (shown(label) || shown(box))
                pairs << this->label(label) + "=" + (shown(box) ? this->box(box)->currentText() : "(hidden)");
        }
        for (const auto &[name, text] : {std::pair{"clientTw", "clients"}, {"autoReconnectBox", "reconnect"},
                                         {"controlLinesPanel", "control lines"}}) {
            if (shown(name))
                pairs << QString::fromLatin1(text);
        }
        return pairs.join(QStringLiteral(", "));
    }

    // The mode box does not offer every mode; the others come in as a loaded
    // document brings them.
    void selectMode(const QString &mode, int connMode)
    {
        if (box("baudRateModeBox")->findText(mode) < 0) {
            PortSettings settings = session->portSettings();
            settings.connMode = connMode;
            session->setPortSettings(settings);
            session->updateDisplay();
        }
        box("baudRateModeBox")->setCurrentText(mode);
    }

    IsolatedEnvironment environment;
    std::unique_ptr<SerialPortWidget> session;
};

QTEST_MAIN(TestSessionPanel)
#include "tst_sessionpanel.moc"
