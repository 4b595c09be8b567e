#include <QtTest>

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <functional>

#include "session/serialportwidget.h"
#include "testsupport.h"

// The receive view of a port session, driven through the session's own
// pipeline: chunks are queued with pushByteArray and shown by one refresh.
class TestReceiveView : public QObject
{
    Q_OBJECT

private slots:
    void init() { session = std::make_unique<SerialPortWidget>(); }

    void bufferIsCutByHalfTheLimit_data()
    {
        QTest::addColumn<QList<int>>("ticks");   // characters shown per refresh
        QTest::addColumn<int>("expectedLength");
        QTest::newRow("at the limit, no cut") << QList<int>{600, 400} << 1000;
        QTest::newRow("one past the limit") << QList<int>{600, 401} << 501;
        QTest::newRow("cut twice") << QList<int>{900, 200, 500} << 600;
        QTest::newRow("ten times the limit in one tick") << QList<int>{10000} << 1000;
        QTest::newRow("ten times the limit in many ticks") << QList<int>(20, 500) << 1000;
    }

    void bufferIsCutByHalfTheLimit()
    {
        QFETCH(QList<int>, ticks);
        QFETCH(int, expectedLength);
        apply([](FormatSetting &format) { format.DisplayBufferSize = 1000; });
        QByteArray all;
        for (int tick = 0; tick < ticks.size(); ++tick) {
            // Lines of a per-tick letter, so what survives the cut is visible.
            QByteArray data(ticks.at(tick), char('a' + tick));
            for (int i = 39; i < data.size(); i += 40)
                data[i] = '\n';
            all += data;
            receive(data);
        }
        QCOMPARE(view()->toPlainText(), QString::fromLatin1(all.right(expectedLength)));
    }

    // Data arriving moves the view only for a user who was at its end.
    void scrolledUpUserKeepsPosition()
    {
        session->resize(800, 600);
        session->show();
        QVERIFY(QTest::qWaitForWindowExposed(session.get()));
        receive(QByteArray("line\n").repeated(300));
        QScrollBar *bar = view()->verticalScrollBar();
        bar->setValue(40);
        for (bool atEnd : {false, false, true, true}) {
            if (atEnd)
                bar->setValue(bar->maximum());
            const int oldMaximum = bar->maximum();
            receive(QByteArray("more\n").repeated(20));
            QVERIFY(bar->maximum() > oldMaximum);
            QCOMPARE(bar->value(), atEnd ? bar->maximum() : 40);
        }
    }

    // Markup a device sends is shown as it came, in the received colour, and
    // however many chunks were queued the document changes once per refresh.
    void markupIsShownLiterallyInOneInsertion()
    {
        apply([](FormatSetting &format) { format.FormatDisplayColor = true; format.ReceiveTextColor = Qt::darkCyan; });
        const QString device = QStringLiteral("<b>&amp;</b> <font color=red>x</font>").repeated(10);
        QSignalSpy changes(view()->document(), &QTextDocument::contentsChange);
        receive(device.toLatin1());
        QCOMPARE(view()->toPlainText(), device);
        QCOMPARE(changes.size(), 1);
        QTextCursor cursor(view()->document());
        for (int position = 1; position <= device.size(); ++position) {
            cursor.setPosition(position);
            QCOMPARE(cursor.charFormat().foreground().color(), QColor(Qt::darkCyan));
        }
    }

    // One endless line would make every refresh lay it all out again; the view
    // shows it in paragraphs of bounded length, after a blank where there is
    // one, adding nothing but the breaks.
    void endlessLineIsCutIntoParagraphs()
    {
        const QByteArray data = QByteArray("reading ").repeated(3000) + QByteArray(40000, 'x');
        for (int from = 0; from < data.size(); from += 4096)
            receive(data.mid(from, 4096));
        QTextBlock block = view()->document()->begin();
        QVERIFY(block.text().endsWith(QLatin1String("reading ")));
        QString joined;
        for (; block.isValid(); block = block.next()) {
            QVERIFY2(block.text().size() <= 16384, qPrintable(QString::number(block.text().size())));
            joined += block.text();
        }
        QCOMPARE(joined, QString::fromLatin1(data));
    }

private:
    QPlainTextEdit *view() const { return session->findChild<QPlainTextEdit *>(QStringLiteral("receiveView")); }

    // Records and panel agree, so the periodic refresh keeps the format.
    void apply(const std::function<void(FormatSetting &)> &change)
    {
        FormatSetting format = session->formatSettings();
        change(format);
        session->setFormatSettings(format);
        session->updateDisplay();
    }

    // Queues the data in chunks, as a transport delivers it, for one refresh.
    void receive(const QByteArray &data)
    {
        for (qsizetype from = 0; from < data.size(); from += 64)
            session->pushByteArray(data.mid(from, 64), true, RX);
        session->displayPortBuffer();
    }

    IsolatedEnvironment environment;
    std::unique_ptr<SerialPortWidget> session;
};

QTEST_MAIN(TestReceiveView)
#include "tst_receiveview.moc"
