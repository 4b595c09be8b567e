#include <QtTest>

#include "common/texthelpers.h"

class TestTextHelpers : public QObject
{
    Q_OBJECT

private slots:
    void getHexValue_data();
    void getHexValue();
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

    QTest::newRow("pairs across a space") << "0102 0a" << QByteArray::fromHex("01020a");
    QTest::newRow("only a space") << " " << QByteArray();
    QTest::newRow("lone final digit dropped") << "AB C" << QByteArray::fromHex("ab");
    QTest::newRow("invalid high digit") << "G1" << QByteArray::fromHex("01");
    QTest::newRow("invalid low digit") << "1G" << QByteArray::fromHex("10");
    QTest::newRow("line break is a digit") << "12\n34" << QByteArray::fromHex("1203");
    QTest::newRow("pairing across spaces") << "1 2 3" << QByteArray::fromHex("1020");
    QTest::newRow("lower case") << "ff ee" << QByteArray::fromHex("ffee");
    // U+0141 would read as 'A' if cut to its low byte.
    QTest::newRow("above 255 is zero") << QString::fromUtf8("\u01411") << QByteArray::fromHex("01");
    QTest::newRow("CJK is zero") << QString::fromUtf8("\u4e2d1") << QByteArray::fromHex("01");
}

void TestTextHelpers::getHexValue()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(GetHexValue(text), bytes);
    const QVector<quint8> array = GetHexValueArray(text);
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(array.constData()), array.size()), bytes);
}

void TestTextHelpers::embracedString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");

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

    QTest::newRow("largest") << "65535" << 65535;
    QTest::newRow("too large") << "70000" << 0;
    QTest::newRow("negative") << "-1" << 0;
    QTest::newRow("letters") << "abc" << 0;
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
