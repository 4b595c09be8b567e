#include <QtTest>

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTableWidget>

#include "testsupport.h"
#include "tools/asciicode.h"

class TestAsciiCode : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void rows_data();
    void rows();
    void descriptionColumnQuirk();
    void buttonsCloseTheDialog_data();
    void buttonsCloseTheDialog();

private:
    IsolatedEnvironment environment;
    AsciiCode *chart = nullptr;
    QTableWidget *table = nullptr;
};

void TestAsciiCode::init()
{
    chart = new AsciiCode;
    table = chart->findChild<QTableWidget *>("tableWidget");
    QVERIFY(table);
}

void TestAsciiCode::cleanup()
{
    delete chart;
    chart = nullptr;
}

void TestAsciiCode::rows_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("cells");

    QTest::newRow("NUL") << 0 << QStringList{"       0", "0", " 0", "NUL", "\\0 Null character"};
    QTest::newRow("LF") << 10 << QStringList{"    1010", "10", " A", "LF", "\\n Line feed"};
    QTest::newRow("space") << 32 << QStringList{"  100000", "32", "20", " ", "Space"};
    QTest::newRow("A") << 65 << QStringList{" 1000001", "65", "41", "A"};
    QTest::newRow("DEL") << 127 << QStringList{" 1111111", "127", "7F", "DEL", ""};
}

void TestAsciiCode::rows()
{
    QFETCH(int, row);
    QFETCH(QStringList, cells);

    for (int column = 0; column < cells.size(); ++column) {
        QTableWidgetItem *item = table->item(row, column);
        QVERIFY2(item, qPrintable(QString("column %1").arg(column)));
        QCOMPARE(item->text(), cells.at(column));
    }
    QCOMPARE(table->rowHeight(row), 21);
}

void TestAsciiCode::descriptionColumnQuirk()
{
    QCOMPARE(table->rowCount(), 128);
    QCOMPARE(table->horizontalHeaderItem(4)->text(), QString("Discription"));
    for (int row = 33; row <= 37; ++row) {
        QVERIFY(table->item(row, 4));
        QVERIFY(table->item(row, 4)->text().isEmpty());
    }
    for (int row = 38; row <= 126; ++row)
        QVERIFY2(!table->item(row, 4), qPrintable(QString::number(row)));
}

void TestAsciiCode::buttonsCloseTheDialog_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("result");
    QTest::newRow("OK") << int(QDialogButtonBox::Ok) << int(QDialog::Accepted);
    QTest::newRow("Cancel") << int(QDialogButtonBox::Cancel) << int(QDialog::Rejected);
}

void TestAsciiCode::buttonsCloseTheDialog()
{
    QFETCH(int, button);
    auto *buttons = chart->findChild<QDialogButtonBox *>("buttonBox");
    QVERIFY(buttons);
    chart->show();
    buttons->button(QDialogButtonBox::StandardButton(button))->click();
    QVERIFY(!chart->isVisible());
    QTEST(chart->result(), "result");
}

QTEST_MAIN(TestAsciiCode)
#include "tst_asciicode.moc"
