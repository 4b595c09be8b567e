#include <QtTest>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

#include "testsupport.h"
#include "tools/crc.h"
#include "tools/toolbox.h"

Q_DECLARE_METATYPE(CrcModel)

class TestToolBox : public QObject
{
    Q_OBJECT

private slots:
    void checkValues_data();
    void checkValues();
    void usbComputesLikeModbus_data();
    void usbComputesLikeModbus();
    void wideAndNarrowWidthsMatchReference_data();
    void wideAndNarrowWidthsMatchReference();

    void catalogueOrder();
    void parameterFields_data();
    void parameterFields();
    void resultFollowsInput_data();
    void resultFollowsInput();
    void switchingModelRecomputes();
    void switchingInputKindRecomputes();
    void textToHex_data();
    void textToHex();
    void hexToText_data();
    void hexToText();

private:
    template <typename T>
    T *child(ToolBox &box, const char *name)
    {
        T *widget = box.findChild<T *>(QLatin1String(name));
        if (!widget)
            qFatal("missing widget %s", name);
        return widget;
    }

    IsolatedEnvironment environment;
};

void TestToolBox::checkValues_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<quint64>("crc");

    const QByteArray check("123456789");
    QTest::newRow("CRC-4/ITU") << "CRC-4/ITU" << check << quint64(0x7);
    QTest::newRow("CRC-5/ITU") << "CRC-5/ITU" << check << quint64(0x07);
    QTest::newRow("CRC-5/USB") << "CRC-5/USB" << check << quint64(0x19);
    QTest::newRow("CRC-6/ITU") << "CRC-6/ITU" << check << quint64(0x06);
    QTest::newRow("CRC-8") << "CRC-8" << check << quint64(0xF4);
    QTest::newRow("CRC-16/MODBUS") << "CRC-16/MODBUS" << check << quint64(0x4B37);
    QTest::newRow("CRC-16/USB") << "CRC-16/USB" << check << quint64(0x4B37);
    QTest::newRow("CRC-32") << "CRC-32" << check << quint64(0xCBF43926);
    QTest::newRow("fallback") << "no such model" << check << quint64(0x0376E6E7);

    QTest::newRow("empty MODBUS") << "CRC-16/MODBUS" << QByteArray() << quint64(0xFFFF);
    QTest::newRow("empty CRC-32") << "CRC-32" << QByteArray() << quint64(0);
    QTest::newRow("empty fallback") << "" << QByteArray() << quint64(0xFFFFFFFF);
    QTest::newRow("empty CRC-5/USB") << "CRC-5/USB" << QByteArray() << quint64(0);
    QTest::newRow("high bytes CRC-8") << "CRC-8" << QByteArray::fromHex("ff80") << quint64(0x5E);
}

void TestToolBox::checkValues()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, input);
    QFETCH(quint64, crc);
    QCOMPARE(calcCRC(input, crcComputationModel(name)), crc);
}

void TestToolBox::usbComputesLikeModbus_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one byte") << QByteArray("\x01", 1);
    QTest::newRow("binary") << QByteArray::fromHex("00ff7f80a5");
}

void TestToolBox::usbComputesLikeModbus()
{
    QFETCH(QByteArray, input);
    QCOMPARE(crcModelByName("CRC-16/USB").xorout, quint64(0xFFFF));
    QCOMPARE(calcCRC(input, crcComputationModel("CRC-16/USB")),
             calcCRC(input, crcComputationModel("CRC-16/MODBUS")));
}

// Published catalogue entries outside the calculator's list exercise the
// width extremes and mixed reflection of the one generic routine.
void TestToolBox::wideAndNarrowWidthsMatchReference_data()
{
    QTest::addColumn<CrcModel>("model");
    QTest::addColumn<quint64>("crc");

    QTest::newRow("CRC-3/ROHC") << CrcModel{3, 0x3, 0x7, 0x0, true, true} << quint64(0x6);
    QTest::newRow("CRC-12/UMTS refin differs") << CrcModel{12, 0x80F, 0x0, 0x0, false, true}
                                               << quint64(0xDAF);
    QTest::newRow("CRC-64/XZ") << CrcModel{64, 0x42F0E1EBA9EA3693, ~quint64(0), ~quint64(0), true, true}
                               << quint64(0x995DC9BBDF1939FA);
    QTest::newRow("CRC-64/ECMA-182")
        << CrcModel{64, 0x42F0E1EBA9EA3693, 0, 0, false, false} << quint64(0x6C40DF5F0B497347);
}

void TestToolBox::wideAndNarrowWidthsMatchReference()
{
    QFETCH(CrcModel, model);
    QFETCH(quint64, crc);
    QCOMPARE(calcCRC("123456789", model), crc);
}

void TestToolBox::catalogueOrder()
{
    ToolBox box;
    auto *names = child<QComboBox>(box, "cbName");
    const QStringList expected = {"CRC-4/ITU",  "CRC-5/ITU",     "CRC-5/USB",  "CRC-6/ITU",
                                  "CRC-8",      "CRC-16/MODBUS", "CRC-16/USB", "CRC-32"};
    QCOMPARE(names->count(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QCOMPARE(names->itemText(i), expected.at(i));
}

void TestToolBox::parameterFields_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("poly");
    QTest::addColumn<QString>("init");
    QTest::addColumn<QString>("xorout");
    QTest::addColumn<bool>("refin");
    QTest::addColumn<bool>("refout");

    QTest::newRow("CRC-4/ITU") << "CRC-4/ITU" << "4" << "3" << "0" << "0" << true << true;
    QTest::newRow("CRC-5/USB") << "CRC-5/USB" << "5" << "5" << "1F" << "1F" << true << true;
    QTest::newRow("CRC-8 pads xorout with zeros")
        << "CRC-8" << "8" << " 7" << " 0" << "00" << false << false;
    QTest::newRow("CRC-16/MODBUS") << "CRC-16/MODBUS" << "16" << "8005" << "FFFF" << "0000" << true
                                   << true;
    QTest::newRow("CRC-16/USB shows its xorout")
        << "CRC-16/USB" << "16" << "8005" << "FFFF" << "FFFF" << true << true;
    QTest::newRow("CRC-32 pads poly with a space") << "CRC-32" << "32" << " 4C11DB7" << "FFFFFFFF" << "FFFFFFFF" << true
                            << true;
}

void TestToolBox::parameterFields()
{
    QFETCH(QString, name);
    ToolBox box;
    child<QComboBox>(box, "cbName")->setCurrentText(name);

    QTEST(child<QLineEdit>(box, "leWidth")->text(), "width");
    QTEST(child<QLineEdit>(box, "lePoly")->text(), "poly");
    QTEST(child<QLineEdit>(box, "leInit")->text(), "init");
    QTEST(child<QLineEdit>(box, "leXorout")->text(), "xorout");
    QTEST(child<QCheckBox>(box, "cbRefin")->isChecked(), "refin");
    QTEST(child<QCheckBox>(box, "cbRefout")->isChecked(), "refout");
    for (const char *field : {"leWidth", "lePoly", "leInit", "leXorout", "cbRefin", "cbRefout"})
        QVERIFY2(!child<QWidget>(box, field)->isEnabled(), field);
}

void TestToolBox::resultFollowsInput_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hexInput");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("result");

    QTest::newRow("ascii MODBUS") << "CRC-16/MODBUS" << false << "123456789" << "4B37";
    QTest::newRow("ascii CRC-32") << "CRC-32" << false << "123456789" << "CBF43926";
    QTest::newRow("empty CRC-32 shows 0") << "CRC-32" << false << "" << "0";
    QTest::newRow("empty MODBUS") << "CRC-16/MODBUS" << false << "" << "FFFF";
    QTest::newRow("no leading zero") << "CRC-5/ITU" << false << "123456789" << "7";
    QTest::newRow("hex input") << "CRC-16/MODBUS" << true << "31 32 33 34 35 36 37 38 39" << "4B37";
    QTest::newRow("hex input without spaces") << "CRC-8" << true << "313233343536373839" << "F4";
    QTest::newRow("hex lone digit dropped") << "CRC-16/MODBUS" << true << "F" << "FFFF";
}

void TestToolBox::resultFollowsInput()
{
    QFETCH(QString, name);
    QFETCH(bool, hexInput);
    QFETCH(QString, input);

    ToolBox box;
    child<QComboBox>(box, "cbName")->setCurrentText(name);
    child<QRadioButton>(box, hexInput ? "rbHex" : "rbAscii")->setChecked(true);
    child<QPlainTextEdit>(box, "inputCrc")->setPlainText(input);
    QTEST(child<QLineEdit>(box, "leResult")->text(), "result");

    // The button recomputes the same value.
    child<QLineEdit>(box, "leResult")->clear();
    QTest::mouseClick(child<QPushButton>(box, "calculateCRC"), Qt::LeftButton);
    QTEST(child<QLineEdit>(box, "leResult")->text(), "result");
}

void TestToolBox::switchingModelRecomputes()
{
    ToolBox box;
    auto *names = child<QComboBox>(box, "cbName");
    auto *result = child<QLineEdit>(box, "leResult");
    child<QPlainTextEdit>(box, "inputCrc")->setPlainText("123456789");

    names->setCurrentText("CRC-8");
    QCOMPARE(result->text(), QString("F4"));
    names->setCurrentText("CRC-32");
    QCOMPARE(result->text(), QString("CBF43926"));
    names->setCurrentText("CRC-16/USB");
    QCOMPARE(result->text(), QString("4B37"));
    QCOMPARE(box.calcCRC("123456789"), quint64(0x4B37));
}

void TestToolBox::switchingInputKindRecomputes()
{
    ToolBox box;
    auto *result = child<QLineEdit>(box, "leResult");
    child<QComboBox>(box, "cbName")->setCurrentText("CRC-8");
    child<QPlainTextEdit>(box, "inputCrc")->setPlainText("31");
    const QString asAscii = result->text();
    child<QRadioButton>(box, "rbHex")->setChecked(true);
    QCOMPARE(result->text(), QString::number(calcCRC("1", crcModelByName("CRC-8")), 16).toUpper());
    QVERIFY(result->text() != asAscii);
}

void TestToolBox::textToHex_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("output");
    QTest::newRow("empty") << "" << "";
    QTest::newRow("letters") << "AZ" << "41 5a ";
    QTest::newRow("control and low bytes") << "a\n\t" << "61 0a 09 ";
}

void TestToolBox::textToHex()
{
    QFETCH(QString, input);
    ToolBox box;
    child<QPlainTextEdit>(box, "inputText")->setPlainText(input);
    QTest::mouseClick(child<QPushButton>(box, "textToHex"), Qt::LeftButton);
    QTEST(child<QPlainTextEdit>(box, "outputText")->toPlainText(), "output");
}

void TestToolBox::hexToText_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("output");
    QTest::newRow("pairs") << "48 69" << "Hi";
    QTest::newRow("lower case, no spaces") << "4869" << "Hi";
    QTest::newRow("round trip of text to hex") << "41 5a " << "AZ";
    QTest::newRow("lone digit dropped") << "41 5" << "A";
    QTest::newRow("empty") << "" << "";
}

void TestToolBox::hexToText()
{
    QFETCH(QString, input);
    ToolBox box;
    child<QPlainTextEdit>(box, "inputText")->setPlainText(input);
    QTest::mouseClick(child<QPushButton>(box, "hexToText"), Qt::LeftButton);
    QTEST(child<QPlainTextEdit>(box, "outputText")->toPlainText(), "output");
}

QTEST_MAIN(TestToolBox)
#include "tst_toolbox.moc"
