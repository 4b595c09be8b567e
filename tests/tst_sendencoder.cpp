#include <QtTest>

#include "session/sendencoder.h"

class TestSendEncoder : public QObject
{
    Q_OBJECT

private slots:
    void encoding_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("hex");
        QTest::addColumn<bool>("autoFeed");
        QTest::addColumn<int>("lineEnding");
        QTest::addColumn<bool>("formatSend");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("box");   // null: the send box is left alone
        QTest::addColumn<QString>("history");

        QTest::newRow("LF") << "AT" << false << true << 1 << false << QByteArray("AT\n") << QString() << "AT";
        QTest::newRow("CR") << "AT" << false << true << 2 << false << QByteArray("AT\r") << QString() << "AT";
        QTest::newRow("CRLF") << "AT" << false << true << 3 << false << QByteArray("AT\r\n") << QString() << "AT";
        QTest::newRow("LFCR") << "AT" << false << true << 4 << false << QByteArray("AT\n\r") << QString() << "AT";
        QTest::newRow("no auto feed") << "AT" << false << false << 3 << false << QByteArray("AT") << QString() << "AT";
        QTest::newRow("ending already there")
            << "AT\n" << false << true << 3 << false << QByteArray("AT\r\n") << QString() << "AT\n";
        QTest::newRow("inner lines")
            << "a\nb" << false << true << 3 << false << QByteArray("a\r\nb\r\n") << QString() << "a\nb";

        QTest::newRow("hex comment formatted") << "1 2 3//note" << true << true << 3 << true
                                               << QByteArray::fromHex("1020") << "10 20 //note" << "10 20 //NOTE";
        QTest::newRow("hex kept as typed, no auto feed")
            << "aa bb" << true << true << 3 << false << QByteArray::fromHex("aabb") << "aa bb" << "AA BB";
        QTest::newRow("hex formatted without comment")
            << "aabb" << true << true << 3 << true << QByteArray::fromHex("aabb") << "AA BB " << "AA BB ";
        QTest::newRow("hex second comment dropped when formatting")
            << "01//a//b" << true << true << 3 << true << QByteArray::fromHex("01") << "01 //a" << "01 //A";
        QTest::newRow("hex only a comment")
            << "//just words" << true << true << 3 << true << QByteArray() << "//just words" << "//JUST WORDS";
        QTest::newRow("hex stray characters")
            << "zz\t,1" << true << true << 3 << false << QByteArray::fromHex("0000") << "zz\t,1" << "ZZ\t,1";
        const QString chinese = QString::fromUtf8("\u4e2d\u6587");
        QTest::newRow("hex non-Latin characters")
            << chinese << true << true << 3 << false << QByteArray::fromHex("00") << chinese << chinese;
    }

    void encoding()
    {
        QFETCH(QString, text);
        QFETCH(bool, hex);
        QFETCH(bool, autoFeed);
        QFETCH(int, lineEnding);
        QFETCH(bool, formatSend);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, box);
        QFETCH(QString, history);

        const EncodedSend encoded = encodeSendText(text, SendOptions{hex, autoFeed, lineEnding, formatSend});
        QCOMPARE(encoded.bytes, bytes);
        QCOMPARE(encoded.boxText, box);
        QCOMPARE(encoded.boxText.isNull(), box.isNull());
        QCOMPARE(encoded.historyEntry, history);
    }

    // Newest first, no duplicates, at most 257 entries; the box shows at most
    // 80 characters of one.
    void history()
    {
        QStringList list;
        for (const QString &entry : {"a", "b", "a"})
            list = addToSendHistory(list, entry);
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

        QCOMPARE(sendHistoryLabel(QString(79, 'x')), QString(79, 'x'));
        QCOMPARE(sendHistoryLabel(QString(120, 'y')), QString(80, 'y'));
    }
};

QTEST_APPLESS_MAIN(TestSendEncoder)
#include "tst_sendencoder.moc"
