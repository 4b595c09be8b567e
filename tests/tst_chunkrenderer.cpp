#include <QtTest>

#include "session/chunkrenderer.h"

// A chunk that arrived the given milliseconds after 10:00.
static rxData chunkAt(int msecs, const QByteArray &data, RXorTx direction = RX)
{
    return {QTime(10, 0).addMSecs(msecs), direction, data};
}

// Received chunks shown in the given format, with stamps "[Rx]"/"[Tx]" when
// asked for, and a 100 ms interval for automatic line feeds.
static FormatSetting textFormat(int receiveFormat = ASCII, bool stamps = false, bool autoFeed = false)
{
    FormatSetting format;
    format.ReceiveMsgFormat = receiveFormat;
    format.DisplayMsgTime = stamps;
    format.AutoFeedLine = autoFeed;
    format.AutoFeedInterval = 100;
    format.RxTimeFormat = "[Rx]";
    format.TxTimeFormat = "[Tx]";
    return format;
}

class TestChunkRenderer : public QObject
{
    Q_OBJECT

private slots:
    void helpers()
    {
        QCOMPARE(toHexString(QByteArray::fromHex("0aff")), QString("0A FF "));
        QCOMPARE(decodeByteArray("a\r\nb\n\rc", ASCII), QString("a\nb\nc"));
        // As two replacements in turn: "\r\n" first, then "\n\r".
        QCOMPARE(decodeByteArray("\r\r\n\r|\n\r\n|\n\r\r", ASCII), QString("\r\n|\n\n|\n\r"));
        QCOMPARE(decodeByteArray("A", HEX), QString("41 "));
        QCOMPARE(decodeByteArray("A", 7), QString("41 "));
    }

    void insertTimeStamp_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("stamped");

        QTest::newRow("single line") << "abc" << "abc";
        QTest::newRow("final break keeps no stamp") << "a\nb\n" << "a\nSb\n";
        QTest::newRow("lfcr folded") << "a\n\rb" << "a\nSb";
        QTest::newRow("only a break") << "\n" << "\n";
    }

    void insertTimeStamp()
    {
        QFETCH(QString, text);
        QFETCH(QString, stamped);
        QCOMPARE(::insertTimeStamp(text, "S"), stamped);
    }

    void hexAutoFeedBreaksOnlyAfterTheInterval()
    {
        const FormatSetting format = textFormat(HEX, false, true);
        ChunkRenderer renderer;
        QStringList lines;
        for (int at : {0, 50, 90, 120, 210})
            lines << renderer.renderForDisplay(chunkAt(at, "\x01"), format).text;
        QCOMPARE(lines, QStringList({"01 ", "01 ", "01 ", "\n01 ", "01 "}));
    }

    void stampedTextWithLineBreaks()
    {
        const FormatSetting format = textFormat(ASCII, true);
        ChunkRenderer renderer;
        QCOMPARE(renderer.renderForDisplay(chunkAt(0, "a\r\nb\r\n"), format).text, QString("[Rx]a\n[Rx]b\n"));
        QVERIFY(renderer.displayEndsWithLineFeed());

        // A chunk continuing a line gets no stamp in front.
        renderer.renderForDisplay(chunkAt(10, "c"), format);
        QCOMPARE(renderer.renderForDisplay(chunkAt(20, "d\ne"), format).text, QString("d\n[Rx]e"));
    }

    void lineFeedOnlyChunkShowsNothing()
    {
        FormatSetting format = textFormat();
        ChunkRenderer renderer;
        QVERIFY(!renderer.renderForDisplay(chunkAt(0, "\n"), format).show);
        QVERIFY(renderer.displayEndsWithLineFeed());

        // After an open line the break must reach the screen, or lines merge.
        renderer.renderForDisplay(chunkAt(10, "abc"), format);
        const auto lineEnd = renderer.renderForDisplay(chunkAt(20, "\n"), format);
        QVERIFY(lineEnd.show);
        QCOMPARE(lineEnd.text, QString("\n"));
    }

    void sentChunksStartOnTheirOwnLine()
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
    }

    void stampedHexSplitsByIntervalWithoutAutoFeed()
    {
        const FormatSetting format = textFormat(HEX, true, false);
        ChunkRenderer renderer;
        QStringList lines;
        for (int at : {0, 50, 150})
            lines << renderer.renderForDisplay(chunkAt(at, "\xAA"), format).text;
        QCOMPARE(lines, QStringList({"[Rx]AA ", "AA ", "\n[Rx]AA "}));
    }

    void unknownFormatShowsNothing()
    {
        FormatSetting format = textFormat(0);
        ChunkRenderer renderer;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Unknown ReceiveMsgForamt:"));
        QVERIFY(!renderer.renderForDisplay(chunkAt(0, "x"), format).show);

        format.SendMsgFormat = 9;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Unknown SendMsgFormat:"));
        QVERIFY(!renderer.renderForDisplay(chunkAt(0, "x", TX), format).show);
        QVERIFY(renderer.displayEndsWithLineFeed());
    }

    void colourFollowsDirection()
    {
        FormatSetting format = textFormat();
        format.ReceiveTextColor = Qt::blue;
        format.SendTextColor = Qt::red;
        ChunkRenderer renderer;
        QVERIFY(!renderer.renderForDisplay(chunkAt(0, "x"), format).color.isValid());

        format.FormatDisplayColor = true;
        QCOMPARE(renderer.renderForDisplay(chunkAt(0, "x"), format).color, QColor(Qt::blue));
        QCOMPARE(renderer.renderForDisplay(chunkAt(0, "x", TX), format).color, QColor(Qt::red));
    }

    void logHasItsOwnLineStateAndStamp()
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

    // A character cut between two reads is shown and logged whole, on both
    // directions, each keeping its own cut.
    void characterSplitAcrossChunks()
    {
        const FormatSetting format = textFormat();
        ChunkRenderer renderer;
        QString shown;
        QString logged;
        for (const rxData &chunk : {chunkAt(0, "caf\xC3"), chunkAt(1, "\xE2\x82", TX), chunkAt(2, "\xA9!"),
                                    chunkAt(3, "\xAC", TX)}) {
            shown += renderer.renderForDisplay(chunk, format).text;
            logged += renderer.renderForLog(chunk, format);
        }
        QCOMPARE(shown, QString::fromUtf8("caf\né!\n€"));
        QCOMPARE(logged, shown);
    }
};

QTEST_APPLESS_MAIN(TestChunkRenderer)
#include "tst_chunkrenderer.moc"
