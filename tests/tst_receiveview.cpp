#include <QtTest>

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include "session/chunkrenderer.h"
#include "session/serialportwidget.h"
#include "testsupport.h"

// The receive view of a port session, driven through the session's own
// pipeline: chunks are queued with pushByteArray and shown by one refresh.
class TestReceiveView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void bufferIsCutByHalfTheLimit_data();
    void bufferIsCutByHalfTheLimit();
    void scrolledUpUserKeepsPosition();
    void userAtTheEndFollows();
    void markupIsShownLiterally_data();
    void markupIsShownLiterally();
    void endlessLineIsCutIntoParagraphs_data();
    void endlessLineIsCutIntoParagraphs();
    void oneTickIsOneInsertion_data();
    void oneTickIsOneInsertion();
    void clearEmptiesViewAndCounters();

private:
    QPlainTextEdit *view() const { return session->findChild<QPlainTextEdit *>(QStringLiteral("receiveView")); }
    // Records and panel agree, so the periodic refresh keeps the format.
    void applyFormat(const FormatSetting &format);
    void receive(const QByteArray &data);
    void showAtFixedSize();
    void fillLines(int count);

    IsolatedEnvironment *environment = nullptr;
    SerialPortWidget *session = nullptr;
};

void TestReceiveView::initTestCase()
{
    environment = new IsolatedEnvironment;
}

void TestReceiveView::init()
{
    session = new SerialPortWidget;
}

void TestReceiveView::cleanup()
{
    delete session;
    session = nullptr;
}

void TestReceiveView::applyFormat(const FormatSetting &format)
{
    session->setFormatSettings(format);
    session->updateDisplay();
}

void TestReceiveView::receive(const QByteArray &data)
{
    session->pushByteArray(data, true, RX);
    session->displayPortBuffer();
}

void TestReceiveView::showAtFixedSize()
{
    session->resize(800, 600);
    session->show();
    QVERIFY(QTest::qWaitForWindowExposed(session));
}

void TestReceiveView::fillLines(int count)
{
    QByteArray lines;
    for (int i = 0; i < count; ++i)
        lines += "line " + QByteArray::number(i) + '\n';
    receive(lines);
}

void TestReceiveView::bufferIsCutByHalfTheLimit_data()
{
    QTest::addColumn<QList<int>>("ticks");   // characters shown per refresh
    QTest::addColumn<int>("expectedLength");

    QTest::newRow("at the limit, no cut") << QList<int>{600, 400} << 1000;
    QTest::newRow("one past the limit") << QList<int>{600, 401} << 501;
    QTest::newRow("well past the limit") << QList<int>{600, 500} << 600;
    QTest::newRow("one big tick") << QList<int>{1300} << 800;
    QTest::newRow("cut twice") << QList<int>{900, 200, 500} << 600;
}

void TestReceiveView::bufferIsCutByHalfTheLimit()
{
    QFETCH(QList<int>, ticks);
    QFETCH(int, expectedLength);

    FormatSetting format = session->formatSettings();
    format.DisplayBufferSize = 1000;
    applyFormat(format);

    QByteArray all;
    for (int tick = 0; tick < ticks.size(); ++tick) {
        // Lines of a per-tick letter, so what survives the cut is visible.
        QByteArray data(ticks.at(tick), char('a' + tick));
        for (int i = 39; i < data.size(); i += 40)
            data[i] = '\n';
        all += data;
        // Several chunks per tick, as a transport delivers them.
        for (int from = 0; from < data.size(); from += 64)
            session->pushByteArray(data.mid(from, 64), true, RX);
        session->displayPortBuffer();
    }
    const QString text = view()->toPlainText();
    QCOMPARE(text.size(), expectedLength);
    QCOMPARE(text, QString::fromLatin1(all.right(expectedLength)));
}

void TestReceiveView::scrolledUpUserKeepsPosition()
{
    showAtFixedSize();
    fillLines(300);
    QScrollBar *bar = view()->verticalScrollBar();
    QVERIFY(bar->maximum() > 100);
    QCOMPARE(bar->value(), bar->maximum());

    bar->setValue(40);
    const int oldMaximum = bar->maximum();
    for (int i = 0; i < 5; ++i)
        fillLines(20);
    QVERIFY(bar->maximum() > oldMaximum);
    QCOMPARE(bar->value(), 40);
    QVERIFY(view()->toPlainText().endsWith(QLatin1String("line 19\n")));
}

void TestReceiveView::userAtTheEndFollows()
{
    showAtFixedSize();
    fillLines(300);
    QScrollBar *bar = view()->verticalScrollBar();
    bar->setValue(40);
    bar->setValue(bar->maximum());

    for (int i = 0; i < 5; ++i) {
        const int oldMaximum = bar->maximum();
        fillLines(20);
        QVERIFY(bar->maximum() > oldMaximum);
        QCOMPARE(bar->value(), bar->maximum());
    }
}

void TestReceiveView::markupIsShownLiterally_data()
{
    QTest::addColumn<bool>("colours");
    QTest::addColumn<int>("direction");
    QTest::addColumn<QColor>("expected");   // invalid: the view's own colour

    QTest::newRow("received, plain") << false << int(RX) << QColor();
    QTest::newRow("received, coloured") << true << int(RX) << QColor(0x12, 0x80, 0xef);
    QTest::newRow("sent, coloured") << true << int(TX) << QColor(0xc0, 0x10, 0x20);
}

void TestReceiveView::markupIsShownLiterally()
{
    QFETCH(bool, colours);
    QFETCH(int, direction);
    QFETCH(QColor, expected);

    FormatSetting format = session->formatSettings();
    format.FormatDisplayColor = colours;
    format.ReceiveTextColor = QColor(0x12, 0x80, 0xef);
    format.SendTextColor = QColor(0xc0, 0x10, 0x20);
    applyFormat(format);

    const QString device = QStringLiteral("<b>&amp;</b> <font color=red>x</font>");
    session->pushByteArray(device.toLatin1(), direction == RX, RXorTx(direction));
    session->displayPortBuffer();
    QCOMPARE(view()->toPlainText(), device);

    QTextCursor cursor(view()->document());
    for (int position = 1; position <= device.size(); ++position) {
        cursor.setPosition(position);
        const QTextCharFormat charFormat = cursor.charFormat();
        if (expected.isValid())
            QCOMPARE(charFormat.foreground().color(), expected);
        else
            QVERIFY2(!charFormat.hasProperty(QTextFormat::ForegroundBrush),
                     qPrintable(QStringLiteral("coloured at %1").arg(position)));
    }
}

void TestReceiveView::endlessLineIsCutIntoParagraphs_data()
{
    QTest::addColumn<int>("receiveFormat");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<bool>("breaksAfterBlank");

    QTest::newRow("hex without line feeds") << int(HEX) << QByteArray(20000, '\x5a') << true;
    QTest::newRow("words without line feeds") << int(ASCII) << QByteArray("reading ").repeated(7000) << true;
    QTest::newRow("no blank at all") << int(ASCII) << QByteArray(50000, 'x') << false;
}

// One endless line would make every refresh lay out all of it again; the
// view shows it in paragraphs of bounded length, nothing lost or added but
// the breaks.
void TestReceiveView::endlessLineIsCutIntoParagraphs()
{
    QFETCH(int, receiveFormat);
    QFETCH(QByteArray, data);
    QFETCH(bool, breaksAfterBlank);

    FormatSetting format = session->formatSettings();
    format.ReceiveMsgFormat = receiveFormat;
    applyFormat(format);
    for (int from = 0; from < data.size(); from += 4096) {
        for (int chunk = from; chunk < qMin(from + 4096, data.size()); chunk += 64)
            session->pushByteArray(data.mid(chunk, 64), true, RX);
        session->displayPortBuffer();
    }

    QTextDocument *document = view()->document();
    QVERIFY(document->blockCount() > 1);
    QString joined;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const QString text = block.text();
        QVERIFY2(text.size() <= 16384, qPrintable(QString::number(text.size())));
        if (breaksAfterBlank && block.next().isValid())
            QVERIFY(text.endsWith(QLatin1Char(' ')));
        joined += text;
    }
    QCOMPARE(joined, decodeByteArray(data, receiveFormat));
}

void TestReceiveView::oneTickIsOneInsertion_data()
{
    QTest::addColumn<bool>("colours");
    QTest::addColumn<bool>("mixedDirections");

    QTest::newRow("plain") << false << false;
    QTest::newRow("coloured, one direction") << true << false;
    QTest::newRow("coloured, both directions") << true << true;
}

// However many chunks a transport queued, the document changes once per
// refresh, and the colours still follow the directions.
void TestReceiveView::oneTickIsOneInsertion()
{
    QFETCH(bool, colours);
    QFETCH(bool, mixedDirections);

    FormatSetting format = session->formatSettings();
    format.FormatDisplayColor = colours;
    format.ReceiveTextColor = Qt::darkGreen;
    format.SendTextColor = Qt::blue;
    applyFormat(format);
    receive("before\n");

    QSignalSpy changes(view()->document(), &QTextDocument::contentsChange);
    QString shown;
    for (int i = 0; i < 50; ++i) {
        const bool sent = mixedDirections && i % 10 == 9;
        const QByteArray data = sent ? QByteArray("sent\n") : "chunk " + QByteArray::number(i) + '\n';
        session->pushByteArray(data, !sent, sent ? TX : RX);
        shown += QString::fromLatin1(data);
    }
    session->displayPortBuffer();

    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.first().at(2).toInt(), shown.size());   // characters added
    QCOMPARE(view()->toPlainText(), QStringLiteral("before\n") + shown);

    if (mixedDirections) {
        const int sentAt = view()->toPlainText().indexOf(QLatin1String("sent"));
        QTextCursor cursor(view()->document());
        cursor.setPosition(sentAt - 1);   // after the last received digit
        QCOMPARE(cursor.charFormat().foreground().color(), QColor(Qt::darkGreen));
        cursor.setPosition(sentAt + 1);
        QCOMPARE(cursor.charFormat().foreground().color(), QColor(Qt::blue));
    }
}

void TestReceiveView::clearEmptiesViewAndCounters()
{
    FormatSetting format = session->formatSettings();
    format.DisplayMsgTime = true;
    format.RxTimeFormat = QStringLiteral("[Rx]");
    format.DisplaySendMsg = true;
    applyFormat(format);

    session->encodeSendData(QStringLiteral("hello"));
    receive("first\nunfinished");
    QTRY_VERIFY(session->rxStatusText() != QLatin1String("Rx: 0 Bytes"));
    QVERIFY(session->sentBytes() > 0);
    QVERIFY(view()->toPlainText().endsWith(QLatin1String("[Rx]first\n[Rx]unfinished")));

    session->clear();
    QCOMPARE(view()->toPlainText(), QString());
    QCOMPARE(session->receivedBytes(), qint64(0));
    QCOMPARE(session->sentBytes(), qint64(0));
    QTRY_COMPARE(session->rxStatusText(), QStringLiteral("Rx: 0 Bytes"));
    QCOMPARE(session->txStatusText(), QStringLiteral("Tx: 0 Bytes"));

    // The line left unfinished before the clear is gone: the next chunk
    // opens a fresh, stamped line.
    receive("next\n");
    QCOMPARE(view()->toPlainText(), QStringLiteral("[Rx]next\n"));
}

QTEST_MAIN(TestReceiveView)
#include "tst_receiveview.moc"
