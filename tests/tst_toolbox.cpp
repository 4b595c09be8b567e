#include <QtTest>
#include <QtWidgets>

#include "testsupport.h"
#include "tools/crc.h"
#include "tools/toolbox.h"

Q_DECLARE_METATYPE(CrcModel)

template <typename T>
T *child(ToolBox &box, const char *name)
{
    if (T *widget = box.findChild<T *>(QLatin1String(name)))
        return widget;
    qFatal("missing widget %s", name);
}

class TestToolBox : public QObject
{
    Q_OBJECT

private slots:
    void checkValues_data();
    void checkValues();
    void listedModel_data();
    void listedModel();
    void converter();

private:
    IsolatedEnvironment environment;
};

// The listed models' check values are proven through the box below; these
// are the fallback and published models outside the list, which reach the
// width extremes and mixed reflection of the one generic routine.
void TestToolBox::checkValues_data()
{
    QTest::addColumn<CrcModel>("model");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<quint64>("crc");
    const QByteArray check("123456789");
    QTest::newRow("fallback") << crcComputationModel("no such model") << check << quint64(0x0376E6E7);
    QTest::newRow("empty fallback") << crcComputationModel("") << QByteArray() << quint64(0xFFFFFFFF);
    // Bytes above 0x7F must not sign-extend into the reflected register.
    QTest::newRow("high bytes") << crcComputationModel("CRC-32") << QByteArray("\xff\x80") << quint64(0x3F456CAD);
    const quint64 poly64 = 0x42F0E1EBA9EA3693, ones = ~quint64(0);
    QTest::newRow("CRC-12/UMTS") << CrcModel{12, 0x80F, 0, 0, false, true} << check << quint64(0xDAF);
    QTest::newRow("CRC-64/XZ") << CrcModel{64, poly64, ones, ones, true, true} << check << quint64(0x995DC9BBDF1939FA);
    QTest::newRow("CRC-64/ECMA-182") << CrcModel{64, poly64, 0, 0, false, false} << check << quint64(0x6C40DF5F0B497347);
}

void TestToolBox::checkValues()
{
    QFETCH(CrcModel, model);
    QFETCH(QByteArray, input);
    QTEST(calcCRC(input, model), "crc");
}

// Every listed model, chosen by its place in the list after the input is
// typed: the disabled fields show its parameters (poly and init padded with
// spaces, xorout with zeros; R = reflected) and the result follows every
// change. CRC-16/USB shows its own xorout but computes like MODBUS.
void TestToolBox::listedModel_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("fields"); // width|poly|init|xorout|refin|refout
    QTest::addColumn<QString>("check");  // of "123456789"
    QTest::addColumn<QString>("empty");
    QTest::newRow("CRC-4/ITU") << 0 << "4|3|0|0|R|R" << "7" << "0";
    QTest::newRow("CRC-5/ITU") << 1 << "5|15|0|0|R|R" << "7" << "0";
    QTest::newRow("CRC-5/USB") << 2 << "5|5|1F|1F|R|R" << "19" << "0";
    QTest::newRow("CRC-6/ITU") << 3 << "6|3|0|0|R|R" << "6" << "0";
    QTest::newRow("CRC-8") << 4 << "8| 7| 0|00|-|-" << "F4" << "0";
    QTest::newRow("CRC-16/MODBUS") << 5 << "16|8005|FFFF|0000|R|R" << "4B37" << "FFFF";
    QTest::newRow("CRC-16/USB") << 6 << "16|8005|FFFF|FFFF|R|R" << "4B37" << "FFFF";
    QTest::newRow("CRC-32") << 7 << "32| 4C11DB7|FFFFFFFF|FFFFFFFF|R|R" << "CBF43926" << "0";
}

void TestToolBox::listedModel()
{
    QFETCH(int, index);
    ToolBox box;
    auto *names = child<QComboBox>(box, "cbName");
    auto *input = child<QPlainTextEdit>(box, "inputCrc");
    auto *result = child<QLineEdit>(box, "leResult");
    input->setPlainText("123456789");
    names->setCurrentIndex(index);
    QCOMPARE(names->currentText(), QString(QTest::currentDataTag()));
    QTEST(result->text(), "check");

    QStringList shown;
    for (const char *name : {"leWidth", "lePoly", "leInit", "leXorout", "cbRefin", "cbRefout"}) {
        QWidget *field = child<QWidget>(box, name);
        QVERIFY2(!field->isEnabled(), name);
        auto *edit = qobject_cast<QLineEdit *>(field);
        shown << (edit ? edit->text() : qobject_cast<QCheckBox *>(field)->isChecked() ? "R" : "-");
    }
    QTEST(shown.join('|'), "fields");

    // Hex input goes through the hex helper, which pairs across spaces and
    // drops a lone final digit; choosing hex recomputes at once.
    input->setPlainText("31 3233 34 35 36 37 38 39 F");
    child<QRadioButton>(box, "rbHex")->setChecked(true);
    QTEST(result->text(), "check");
    input->clear();
    QTEST(result->text(), "empty");
    result->clear();
    QTest::mouseClick(child<QPushButton>(box, "calculateCRC"), Qt::LeftButton);
    QTEST(result->text(), "empty");
}

void TestToolBox::converter()
{
    ToolBox box;
    child<QPlainTextEdit>(box, "inputText")->setPlainText("a\n\tZ");
    QTest::mouseClick(child<QPushButton>(box, "textToHex"), Qt::LeftButton);
    QCOMPARE(child<QPlainTextEdit>(box, "outputText")->toPlainText(), QString("61 0a 09 5a "));
    child<QPlainTextEdit>(box, "inputText")->setPlainText("48 69 5"); // lone final digit dropped
    QTest::mouseClick(child<QPushButton>(box, "hexToText"), Qt::LeftButton);
    QCOMPARE(child<QPlainTextEdit>(box, "outputText")->toPlainText(), QString("Hi"));
}

QTEST_MAIN(TestToolBox)
#include "tst_toolbox.moc"
