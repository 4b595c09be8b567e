#include <QtTest>

#include "session/chunkrenderer.h"

namespace {

rxData chunkAt(int msecs, const QByteArray &data, RXorTx direction = RX)
{
    return {QTime(10, 0).addMSecs(msecs), direction, data};
}

FormatSetting textFormat()
{
    FormatSetting format;
    format.ReceiveMsgFormat = ASCII;
    format.SendMsgFormat = ASCII;
    format.RxTimeFormat = "[Rx]";
    format.TxTimeFormat = "[Tx]";
    return format;
}

} // namespace

class TestChunkRenderer : public QObject
{
    Q_OBJECT

private slots:
    void helpers();
    void insertTimeStamp_data();
    void insertTimeStamp();
    void hexAutoFeedBreaksOnlyAfterTheInterval();
    void stampedTextWithLineBreaks();
    void lineFeedOnlyChunkShowsNothing();
    void sentChunksStartOnTheirOwnLine();
    void stampedHexSplitsByIntervalWithoutAutoFeed();
    void unknownFormatShowsNothing();
    void colourFollowsDirection();
    void logHasItsOwnLineStateAndStamp();
    void logSeesNoGapAfterDisplayFeed();
};

void TestChunkRenderer::helpers()
{
    QCOMPARE(toHexString(QByteArray::fromHex("0aff")), QString("0A FF "));
    QCOMPARE(toHexString(QByteArray()), QString());
    QCOMPARE(decodeByteArray("a\r\nb\n\rc", ASCII), QString("a\nb\nc"));
    QCOMPARE(decodeByteArray("A", HEX), QString("41 "));
    QCOMPARE(decodeByteArray("A", 7), QString("41 "));
}

void TestChunkRenderer::insertTimeStamp_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("stamped");

    QTest::newRow("single line") << "abc" << "abc";
    QTest::newRow("final break keeps no stamp") << "a\nb\n" << "a\nSb\n";
    QTest::newRow("inner breaks") << "a\nb" << "a\nSb";
    QTest::newRow("crlf folded") << "a\r\nb\r\n" << "a\nSb\n";
    QTest::newRow("lfcr folded") << "a\n\rb" << "a\nSb";
    QTest::newRow("only a break") << "\n" << "\n";
}

void TestChunkRenderer::insertTimeStamp()
{
    QFETCH(QString, text);
    QFETCH(QString, stamped);
    QCOMPARE(::insertTimeStamp(text, "S"), stamped);
}

void TestChunkRenderer::hexAutoFeedBreaksOnlyAfterTheInterval()
{
    FormatSetting format = textFormat();
    format.ReceiveMsgFormat = HEX;
    format.AutoFeedLine = true;
    format.AutoFeedInterval = 100;

    ChunkRenderer renderer;
    QStringList lines;
    for (int at : {0, 50, 90, 120, 210})
        lines << renderer.renderForDisplay(chunkAt(at, "\x01"), format).text;
    QCOMPARE(lines, QStringList({"01 ", "01 ", "01 ", "\n01 ", "01 "}));
}

void TestChunkRenderer::stampedTextWithLineBreaks()
{
    FormatSetting format = textFormat();
    format.DisplayMsgTime = true;

    ChunkRenderer renderer;
    const auto piece = renderer.renderForDisplay(chunkAt(0, "a\r\nb\r\n"), format);
    QCOMPARE(piece.text, QString("[Rx]a\n[Rx]b\n"));
    QVERIFY(renderer.displayEndsWithLineFeed());

    // A chunk continuing a line gets no stamp in front.
    renderer.renderForDisplay(chunkAt(10, "c"), format);
    QCOMPARE(renderer.renderForDisplay(chunkAt(20, "d\ne"), format).text, QString("d\n[Rx]e"));
}

void TestChunkRenderer::lineFeedOnlyChunkShowsNothing()
{
    FormatSetting format = textFormat();
    ChunkRenderer renderer;
    const auto piece = renderer.renderForDisplay(chunkAt(0, "\n"), format);
    QVERIFY(!piece.show);
    QVERIFY(renderer.displayEndsWithLineFeed());

    // After an open line the break must reach the screen, or lines merge.
    renderer.renderForDisplay(chunkAt(10, "abc"), format);
    const auto lineEnd = renderer.renderForDisplay(chunkAt(20, "\n"), format);
    QVERIFY(lineEnd.show);
    QCOMPARE(lineEnd.text, QString("\n"));
}

void TestChunkRenderer::sentChunksStartOnTheirOwnLine()
{
    FormatSetting format = textFormat();
    ChunkRenderer renderer;
    renderer.renderForDisplay(chunkAt(0, "partial"), format);
    QCOMPARE(renderer.renderForDisplay(chunkAt(5, "AT", TX), format).text, QString("\nAT"));

    format.SendMsgFormat = HEX;
    QCOMPARE(renderer.renderForDisplay(chunkAt(10, "AT", TX), format).text, QString("\n41 54 \n"));
    QCOMPARE(renderer.renderForDisplay(chunkAt(20, "AT", TX), format).text, QString("41 54 \n"));

    format.DisplayMsgTime = true;
    QCOMPARE(renderer.renderForDisplay(chunkAt(30, "\x01", TX), format).text, QString("[Tx]01 \n"));
    format.SendMsgFormat = ASCII;
    QCOMPARE(renderer.renderForDisplay(chunkAt(40, "a\nb", TX), format).text, QString("[Tx]a\n[Tx]b"));
}

void TestChunkRenderer::stampedHexSplitsByIntervalWithoutAutoFeed()
{
    FormatSetting format = textFormat();
    format.ReceiveMsgFormat = HEX;
    format.DisplayMsgTime = true;
    format.AutoFeedLine = false;
    format.AutoFeedInterval = 100;

    ChunkRenderer renderer;
    QStringList lines;
    for (int at : {0, 50, 150})
        lines << renderer.renderForDisplay(chunkAt(at, "\xAA"), format).text;
    QCOMPARE(lines, QStringList({"[Rx]AA ", "AA ", "\n[Rx]AA "}));
}

void TestChunkRenderer::unknownFormatShowsNothing()
{
    FormatSetting format = textFormat();
    format.ReceiveMsgFormat = 0;
    ChunkRenderer renderer;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Unknown ReceiveMsgForamt:"));
    QVERIFY(!renderer.renderForDisplay(chunkAt(0, "x"), format).show);

    format.SendMsgFormat = 9;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Unknown SendMsgFormat:"));
    QVERIFY(!renderer.renderForDisplay(chunkAt(0, "x", TX), format).show);
    QVERIFY(renderer.displayEndsWithLineFeed());
}

void TestChunkRenderer::colourFollowsDirection()
{
    FormatSetting format = textFormat();
    format.ReceiveTextColor = Qt::blue;
    format.SendTextColor = Qt::red;
    ChunkRenderer renderer;
    QVERIFY(!renderer.renderForDisplay(chunkAt(0, "<b>"), format).color.isValid());

    format.FormatDisplayColor = true;
    const auto received = renderer.renderForDisplay(chunkAt(0, "<b>&amp;"), format);
    QCOMPARE(received.text, QString("<b>&amp;"));
    QCOMPARE(received.color, QColor(Qt::blue));
    QCOMPARE(renderer.renderForDisplay(chunkAt(0, "x", TX), format).color, QColor(Qt::red));
}

void TestChunkRenderer::logHasItsOwnLineStateAndStamp()
{
    FormatSetting format = textFormat();
    format.LogTimestampEnabled = true;
    format.LogFileTime = "[%h:%m:%s.%z] ";

    ChunkRenderer renderer;
    renderer.renderForDisplay(chunkAt(0, "one\ntwo"), format);
    QCOMPARE(renderer.renderForLog(chunkAt(1234, "one\ntwo\n"), format),
             QString("[10:00:01.234] one\n[10:00:01.234] two\n"));
    QCOMPARE(renderer.renderForLog(chunkAt(2000, "three"), format), QString("[10:00:02.000] three"));
    QVERIFY(!renderer.displayEndsWithLineFeed());
}

void TestChunkRenderer::logSeesNoGapAfterDisplayFeed()
{
    FormatSetting format = textFormat();
    format.ReceiveMsgFormat = HEX;
    format.AutoFeedLine = true;
    format.AutoFeedInterval = 100;

    ChunkRenderer renderer;
    for (int at : {0, 500}) {
        const rxData chunk = chunkAt(at, "\x01");
        renderer.renderForDisplay(chunk, format);
        // The display moved the shared feed time first, so the log never breaks.
        QCOMPARE(renderer.renderForLog(chunk, format), QString("01 "));
    }
}

QTEST_APPLESS_MAIN(TestChunkRenderer)
#include "tst_chunkrenderer.moc"
