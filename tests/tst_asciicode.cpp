#include <QtTest>
#include <QtWidgets>

#include "testsupport.h"
#include "tools/asciicode.h"

class TestAsciiCode : public QObject
{
    Q_OBJECT

private slots:
    void rows_data();
    void rows();
    void okClosesTheDialog();

private:
    IsolatedEnvironment environment;
};

// "-" marks a missing description item: of the printable characters only
// rows 33 to 37 have one, and it is empty.
void TestAsciiCode::rows_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("cells");
    QTest::newRow("NUL") << 0 << QStringList{"       0", "0", " 0", "NUL", "\\0 Null character"};
    QTest::newRow("space") << 32 << QStringList{"  100000", "32", "20", " ", "Space"};
    QTest::newRow("%") << 37 << QStringList{"  100101", "37", "25", "%", ""};
    QTest::newRow("A") << 65 << QStringList{" 1000001", "65", "41", "A", "-"};
    QTest::newRow("DEL") << 127 << QStringList{" 1111111", "127", "7F", "DEL", ""};
}

void TestAsciiCode::rows()
{
    QFETCH(int, row);
    AsciiCode chart;
    auto *table = chart.findChild<QTableWidget *>("tableWidget");
    QCOMPARE(table->horizontalHeaderItem(4)->text(), QString("Discription"));
    QCOMPARE(table->rowHeight(row), 21);
    QStringList cells;
    for (int column = 0; column < 5; ++column)
        cells << (table->item(row, column) ? table->item(row, column)->text() : "-");
    QTEST(cells, "cells");
}

void TestAsciiCode::okClosesTheDialog()
{
    AsciiCode chart;
    chart.show();
    chart.findChild<QDialogButtonBox *>("buttonBox")->button(QDialogButtonBox::Ok)->click();
    QVERIFY(!chart.isVisible() && chart.result() == QDialog::Accepted);
}

QTEST_MAIN(TestAsciiCode)
#include "tst_asciicode.moc"
