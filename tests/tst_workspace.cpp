#include <QtTest>
#include <QtWidgets>

#include "common/statuscolors.h"
#include "common/types.h"
#include "testsupport.h"
#include "workspace/sessiontitlebar.h"

class TestWorkspace : public QObject
{
    Q_OBJECT
    IsolatedEnvironment environment;

private slots:
    void title_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("title");
        QTest::newRow("serial") << int(SerialPortMode) << "COM3";
        QTest::newRow("TCP client") << int(TcpClientMode) << "TCP Client 10.0.0.5:502";
        QTest::newRow("TCP server, every address") << int(TcpServerMode) << "TCP Server :502";
        QTest::newRow("UDP client") << int(UdpClientMode) << "UDP Client 10.0.0.5:502";
        QTest::newRow("UDP server") << int(UdpServerMode) << "UDP Server :502";
        QTest::newRow("unused mode") << int(UnusedMode) << "COM3";
    }

    void title()
    {
        QFETCH(int, mode);
        QTEST(SessionTitleBar::titleFor(mode, "COM3", " 10.0.0.5", "502 "), "title");
    }

    void lamp_data()
    {
        QTest::addColumn<bool>("started");
        QTest::addColumn<int>("runState");
        QTest::addColumn<bool>("connectionOk");
        QTest::addColumn<int>("lamp");
        QTest::newRow("never started") << false << int(Stopped) << false << int(SessionTitleBar::LampStopped);
        QTest::newRow("running") << true << int(Running) << true << int(SessionTitleBar::LampRunning);
        QTest::newRow("open failed") << true << int(Running) << false << int(SessionTitleBar::LampError);
        QTest::newRow("peer refused") << true << int(Stopped) << false << int(SessionTitleBar::LampError);
        QTest::newRow("paused") << true << int(Paused) << true << int(SessionTitleBar::LampPaused);
    }

    void lamp()
    {
        QFETCH(bool, started);
        QFETCH(int, runState);
        QFETCH(bool, connectionOk);
        QTEST(int(SessionTitleBar::lampFor(started, runState, connectionOk)), "lamp");
    }

    void titleBarSignals()
    {
        SessionTitleBar bar;
        QSignalSpy maximize(&bar, &SessionTitleBar::maximizeToggled);
        QSignalSpy close(&bar, &SessionTitleBar::closeRequested);
        QTest::mouseDClick(&bar, Qt::LeftButton);
        QCOMPARE(maximize.size(), 1);
        bar.setClosable(false);
        auto *button = bar.findChild<QToolButton *>("closeButton");
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(close.size(), 0);
        bar.setClosable(true);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(close.size(), 1);
    }

    // Status colours keep a readable contrast on light and dark windows;
    // light ones keep the classic named colours in the markup.
    void statusColorsReadable_data()
    {
        QTest::addColumn<QColor>("window");
        QTest::addColumn<QString>("goodMarkup");
        QTest::newRow("light") << QColor(0xef, 0xef, 0xef) << "<font color = green>up </font>";
        QTest::newRow("white") << QColor(Qt::white) << "<font color = green>up </font>";
        QTest::newRow("dark") << QColor(0x35, 0x35, 0x35) << "<font color = #6fdc7c>up </font>";
        QTest::newRow("black") << QColor(Qt::black) << "<font color = #6fdc7c>up </font>";
    }

    void statusColorsReadable()
    {
        QFETCH(QColor, window);
        QPalette palette;
        palette.setColor(QPalette::Window, window);
        const auto luminance = [](const QColor &c) {
            const auto channel = [](qreal v) { return v <= 0.03928 ? v / 12.92 : qPow((v + 0.055) / 1.055, 2.4); };
            return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
        };
        for (const QColor &color : {StatusColors::good(palette), StatusColors::bad(palette), StatusColors::warning(palette)}) {
            const qreal a = luminance(color), b = luminance(window);
            const qreal contrast = (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
            QVERIFY2(contrast >= 3.0, qPrintable(color.name() + " on " + window.name()));
        }
        QTEST(StatusColors::html("up", true, palette), "goodMarkup");
    }
};

QTEST_MAIN(TestWorkspace)
#include "tst_workspace.moc"
