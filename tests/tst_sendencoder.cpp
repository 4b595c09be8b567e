#include <QtTest>

#include "session/sendencoder.h"

class TestSendEncoder : public QObject
{
    Q_OBJECT

private slots:
    void textLineEndings_data();
    void textLineEndings();
    void hexEncoding_data();
    void hexEncoding();
    void history();
    void historyLabelIsCutAt80();
};

void TestSendEncoder::textLineEndings_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("autoFeed");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("LF") << "AT" << true << 1 << QByteArray("AT\n");
    QTest::newRow("CR") << "AT" << true << 2 << QByteArray("AT\r");
    QTest::newRow("CRLF") << "AT" << true << 3 << QByteArray("AT\r\n");
    QTest::newRow("LFCR") << "AT" << true << 4 << QByteArray("AT\n\r");
    QTest::newRow("no auto feed") << "AT" << false << 3 << QByteArray("AT");
    QTest::newRow("ending already there") << "AT\n" << true << 3 << QByteArray("AT\r\n");
    QTest::newRow("inner lines") << "a\nb" << true << 3 << QByteArray("a\r\nb\r\n");
}

void TestSendEncoder::textLineEndings()
{
    QFETCH(QString, text);
    QFETCH(bool, autoFeed);
    QFETCH(int, mode);
    QFETCH(QByteArray, bytes);

    SendOptions options;
    options.autoAddFeedLine = autoFeed;
    options.lineEndingMode = mode;
    const EncodedSend encoded = encodeSendText(text, options);
    QCOMPARE(encoded.bytes, bytes);
    QCOMPARE(encoded.historyEntry, text);
    QVERIFY(encoded.boxText.isNull());
}

void TestSendEncoder::hexEncoding_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("formatSend");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("history");

    QTest::newRow("comment formatted") << "1 2 3//note" << true << QByteArray::fromHex("1020")
                                       << "10 20 //note" << "10 20 //NOTE";
    QTest::newRow("kept as typed") << "aa bb" << false << QByteArray::fromHex("aabb") << "aa bb" << "AA BB";
    QTest::newRow("formatted without comment") << "aabb" << true << QByteArray::fromHex("aabb")
                                               << "AA BB " << "AA BB ";
    QTest::newRow("second comment dropped when formatting") << "01//a//b" << true << QByteArray::fromHex("01")
                                                            << "01 //a" << "01 //A";
    QTest::newRow("only a comment") << "//just words" << true << QByteArray() << "//just words" << "//JUST WORDS";
    QTest::newRow("stray characters") << "zz\t,1" << false << QByteArray::fromHex("0000") << "zz\t,1" << "ZZ\t,1";
    QTest::newRow("non-Latin characters") << QString::fromUtf8("\u4e2d\u6587") << false
                                          << QByteArray::fromHex("00") << QString::fromUtf8("\u4e2d\u6587")
                                          << QString::fromUtf8("\u4e2d\u6587");
    QTest::newRow("no auto feed in hex") << "0d" << false << QByteArray::fromHex("0d") << "0d" << "0D";
}

void TestSendEncoder::hexEncoding()
{
    QFETCH(QString, text);
    QFETCH(bool, formatSend);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, box);
    QFETCH(QString, history);

    SendOptions options;
    options.hexMode = true;
    options.formatSend = formatSend;
    options.autoAddFeedLine = true;
    const EncodedSend encoded = encodeSendText(text, options);
    QCOMPARE(encoded.bytes, bytes);
    QCOMPARE(encoded.boxText, box);
    QCOMPARE(encoded.historyEntry, history);
}

void TestSendEncoder::history()
{
    QStringList list;
    list = addToSendHistory(list, "a");
    list = addToSendHistory(list, "b");
    list = addToSendHistory(list, "a");
    QCOMPARE(list, QStringList({"a", "b"}));

    for (int i = 0; i < 300; ++i)
        list = addToSendHistory(list, QString::number(i));
    QCOMPARE(list.size(), 257);
    QCOMPARE(list.first(), QString("299"));
    QCOMPARE(list.last(), QString("43"));

    // A repeat at the bound still drops the oldest entry first.
    list = addToSendHistory(list, "100");
    QCOMPARE(list.size(), 256);
    QCOMPARE(list.first(), QString("100"));
    QCOMPARE(list.count("100"), 1);
}

void TestSendEncoder::historyLabelIsCutAt80()
{
    QCOMPARE(sendHistoryLabel(QString(79, 'x')), QString(79, 'x'));
    QCOMPARE(sendHistoryLabel(QString(120, 'y')), QString(80, 'y'));
}

QTEST_APPLESS_MAIN(TestSendEncoder)
#include "tst_sendencoder.moc"
