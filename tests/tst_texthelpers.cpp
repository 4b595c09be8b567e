#include <QtTest>

#include "common/texthelpers.h"

class TestTextHelpers : public QObject
{
    Q_OBJECT

private slots:
    void getHexValue_data();
    void getHexValue();
    void getHexValueArrayMatchesGetHexValue();
    void convertHexChar();
    void embracedString_data();
    void embracedString();
    void getBraceLengt();
    void trimFriendName();
    void strippedName();
    void portFilter_data();
    void portFilter();
    void portFromText_data();
    void portFromText();
};

void TestTextHelpers::getHexValue_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("pairs with spaces") << "01 02 0A" << QByteArray::fromHex("01020a");
    QTest::newRow("pairs across a space") << "0102 0a" << QByteArray::fromHex("01020a");
    QTest::newRow("empty") << "" << QByteArray();
    QTest::newRow("only a space") << " " << QByteArray();
    QTest::newRow("lone digit") << "0" << QByteArray();
    QTest::newRow("lone final digit dropped") << "AB C" << QByteArray::fromHex("ab");
    QTest::newRow("invalid digits are zero") << "zz" << QByteArray::fromHex("00");
    QTest::newRow("invalid high digit") << "G1" << QByteArray::fromHex("01");
    QTest::newRow("invalid low digit") << "1G" << QByteArray::fromHex("10");
    QTest::newRow("line break is a digit") << "12\n34" << QByteArray::fromHex("1203");
    QTest::newRow("space as low digit") << "1 2" << QByteArray::fromHex("10");
    QTest::newRow("pairing across spaces") << "1 2 3" << QByteArray::fromHex("1020");
    QTest::newRow("tab is a digit") << "1\t2" << QByteArray::fromHex("10");
    QTest::newRow("comma is a digit") << "AA,BB" << QByteArray::fromHex("aa0b");
    QTest::newRow("lower case") << "ff ee" << QByteArray::fromHex("ffee");
    QTest::newRow("above Latin-1 is zero") << QString::fromUtf8("\u4e2d1") << QByteArray::fromHex("01");
    QTest::newRow("Latin-1 letter is zero") << QString::fromUtf8("\u00e91") << QByteArray::fromHex("01");
    QTest::newRow("leading spaces") << "   7f" << QByteArray::fromHex("7f");
}

void TestTextHelpers::getHexValue()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(GetHexValue(text), bytes);
}

void TestTextHelpers::getHexValueArrayMatchesGetHexValue()
{
    const QStringList samples = {"", "01 02 0A", "AB C", "12\n34", "1 2 3", "zz", "ffffffff 00"};
    for (const QString &text : samples) {
        const QByteArray bytes = GetHexValue(text);
        const QVector<quint8> vector = GetHexValueArray(text);
        QCOMPARE(vector.size(), bytes.size());
        for (int i = 0; i < bytes.size(); ++i)
            QCOMPARE(vector.at(i), quint8(bytes.at(i)));
    }
}

void TestTextHelpers::convertHexChar()
{
    QCOMPARE(ConvertHexChar('0'), quint8(0));
    QCOMPARE(ConvertHexChar('9'), quint8(9));
    QCOMPARE(ConvertHexChar('A'), quint8(10));
    QCOMPARE(ConvertHexChar('f'), quint8(15));
    QCOMPARE(ConvertHexChar('g'), quint8(0));
    QCOMPARE(ConvertHexChar(' '), quint8(0));
    QCOMPARE(ConvertHexChar('\xff'), quint8(0));
}

void TestTextHelpers::embracedString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");

    QTest::newRow("short text untouched") << "COM1" << "COM1";
    QTest::newRow("five characters untouched") << " COM " << " COM ";
    QTest::newRow("trimmed") << "  COM12 " << "COM12";
    QTest::newRow("port entry") << "cu.usbserial-1410 (USB Serial)" << "cu.usbserial-1410";
    QTest::newRow("no blank before parenthesis") << "ttyUSB0(FT232R USB UART)" << "ttyUSB0";
    QTest::newRow("empty first part") << "(abc)def" << "";
    QTest::newRow("network entry") << "TCP/UDP" << "TCP/UDP";
}

void TestTextHelpers::embracedString()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    QCOMPARE(::embracedString(text), name);
}

void TestTextHelpers::getBraceLengt()
{
    QCOMPARE(::getBraceLengt("abc(de)"), 4);
    QCOMPARE(::getBraceLengt("a(b)(cd)"), 4);
    QCOMPARE(::getBraceLengt("abc"), 4);
}

void TestTextHelpers::trimFriendName()
{
    const QString shortName = QString(100, 'x');
    QCOMPARE(::trimFriendName(shortName), shortName);

    const QString tail = "(ttyUSB0)X";
    const QString name = QString(91, 'a') + tail;
    QCOMPARE(name.size(), 101);
    const QString trimmed = ::trimFriendName(name);
    QCOMPARE(trimmed.size(), 103);
    QCOMPARE(trimmed, QString(90, 'a') + "..." + tail);

    // Without "(" the whole name stands on both sides of the dots.
    const QString plain = QString(120, 'b');
    QCOMPARE(::trimFriendName(plain), plain + "..." + plain);
}

void TestTextHelpers::strippedName()
{
    QCOMPARE(::strippedName("/tmp/Session_lab.qvn"), QString("lab.qvn"));
    QCOMPARE(::strippedName("/tmp/session_lab.qvn"), QString("session_lab.qvn"));
    QCOMPARE(::strippedName("plain.qvn"), QString("plain.qvn"));
}

void TestTextHelpers::portFilter_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<bool>("macOS");
    QTest::addColumn<bool>("listed");

    QTest::newRow("macOS dial-in node hidden") << "tty.usbserial-1410" << true << false;
    QTest::newRow("macOS call-out node listed") << "cu.usbserial-1410" << true << true;
    QTest::newRow("macOS rule is case-sensitive") << "TTY.x" << true << true;
    QTest::newRow("Linux USB adapter listed") << "ttyUSB0" << false << true;
    QTest::newRow("Linux ACM device listed") << "ttyACM0" << false << true;
    QTest::newRow("Linux on-board port listed") << "ttyS0" << false << true;
}

void TestTextHelpers::portFilter()
{
    QFETCH(QString, port);
    QFETCH(bool, macOS);
    QFETCH(bool, listed);
    QCOMPARE(isListedSerialPort(port, macOS), listed);
}

void TestTextHelpers::portFromText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("port");

    QTest::newRow("number") << "6000" << 6000;
    QTest::newRow("largest") << "65535" << 65535;
    QTest::newRow("too large") << "70000" << 0;
    QTest::newRow("negative") << "-1" << 0;
    QTest::newRow("letters") << "abc" << 0;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("hex is not decimal") << "0x10" << 0;
}

void TestTextHelpers::portFromText()
{
    QFETCH(QString, text);
    QFETCH(int, port);
    QCOMPARE(int(::portFromText(text)), port);
}

QTEST_APPLESS_MAIN(TestTextHelpers)
#include "tst_texthelpers.moc"
