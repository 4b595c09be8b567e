#include <QtTest>

#include <QSqlQuery>

#include "storage/sqlite_adapter.h"
#include "testsupport.h"

using Rows = QList<QPair<QString, QString>>;

class TestSQLiteAdapter : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void initialThenOneRowPerParameter();
    void singleQuotesAreRefused_data();
    void singleQuotesAreRefused();

private:
    static Rows tableRows()
    {
        Rows rows;
        QSqlQuery query("select parameter, value from config order by rowid");
        while (query.next())
            rows.append({query.value(0).toString(), query.value(1).toString()});
        return rows;
    }

    IsolatedEnvironment environment;
    QScopedPointer<QTemporaryDir> workDir;
    const QString previousDir = QDir::currentPath();
};

// Every test starts in an empty working directory, where "config.db" lands.
void TestSQLiteAdapter::init()
{
    workDir.reset(new QTemporaryDir);
    QVERIFY(workDir->isValid() && QDir::setCurrent(workDir->path()));
}

void TestSQLiteAdapter::cleanup()
{
    QSqlDatabase::database(QSqlDatabase::defaultConnection, false).close();
    QDir::setCurrent(previousDir);
}

// The second initial() fails because the table exists, yet the database is
// usable. Texts that would change a pasted statement (wildcards, comments,
// stacked statements) are stored as they are; lookups match exactly, so a
// LIKE in place of "=" reads "%" wrongly.
void TestSQLiteAdapter::initialThenOneRowPerParameter()
{
    SQLiteAdapter first;
    QVERIFY(first.initial());
    first.close();
    QVERIFY(QFile::exists(workDir->filePath("config.db")));
    SQLiteAdapter adapter;
    QVERIFY(!adapter.initial());

    const Rows expected = {{"baud", "115200"}, {"%", "_"}, {"p;--", "v; drop table config; --"}, {"端口", "\"é\"\n"}};
    QVERIFY(adapter.writeAttribute("baud", "9600"));
    for (const auto &[parameter, value] : expected)
        QVERIFY(adapter.writeAttribute(parameter, value));
    QCOMPARE(tableRows(), expected);
    for (const auto &[parameter, value] : expected)
        QCOMPARE(adapter.readAttribute(parameter), value);
    QVERIFY(adapter.readAttribute("unknown").isEmpty());
}

void TestSQLiteAdapter::singleQuotesAreRefused_data()
{
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<QString>("value");
    QTest::newRow("quote in a new parameter's value") << "fresh" << "it's";
    QTest::newRow("update every row via value") << "a" << "v' where 1=1 --";
    QTest::newRow("always-true parameter") << "x' or '1'='1" << "hijacked";
}

void TestSQLiteAdapter::singleQuotesAreRefused()
{
    QFETCH(QString, parameter);
    QFETCH(QString, value);
    SQLiteAdapter adapter;
    QVERIFY(adapter.initial());
    QVERIFY(adapter.writeAttribute("a", "1") && adapter.writeAttribute("b", "2"));

    QVERIFY(!adapter.writeAttribute(parameter, value));
    QCOMPARE(tableRows(), (Rows{{"a", "1"}, {"b", "2"}}));
    // A quoted parameter is refused on reading too, so it never reaches "a" or "b".
    QCOMPARE(adapter.readAttribute(parameter), QString(parameter == "a" ? "1" : ""));
}

QTEST_MAIN(TestSQLiteAdapter)
#include "tst_sqliteadapter.moc"
