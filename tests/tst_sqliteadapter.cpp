#include <QtTest>

#include <QSqlDatabase>
#include <QSqlQuery>

#include "storage/sqlite_adapter.h"
#include "testsupport.h"

using Rows = QList<QPair<QString, QString>>;

class TestSQLiteAdapter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void initialCreatesTableOnce();
    void secondWriteUpdatesTheRow();
    void unknownParameterIsEmpty();
    void closedDatabaseRefusesEverything();
    void unusualTextsRoundTrip_data();
    void unusualTextsRoundTrip();
    void singleQuotesAreRefused_data();
    void singleQuotesAreRefused();
    void createFileAndOpen();
    void openFailsForUnreachableFile();
    void creatableByType();

private:
    static Rows tableRows();

    QScopedPointer<IsolatedEnvironment> environment;
    QScopedPointer<QTemporaryDir> workDir;
    QString previousDir;
};

void TestSQLiteAdapter::initTestCase()
{
    environment.reset(new IsolatedEnvironment);
    previousDir = QDir::currentPath();
}

// Every test starts in an empty working directory, where "config.db" lands.
void TestSQLiteAdapter::init()
{
    workDir.reset(new QTemporaryDir);
    QVERIFY(workDir->isValid());
    QVERIFY(QDir::setCurrent(workDir->path()));
}

void TestSQLiteAdapter::cleanup()
{
    QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false).close();
    QDir::setCurrent(previousDir);
    workDir.reset();
}

Rows TestSQLiteAdapter::tableRows()
{
    Rows rows;
    QSqlQuery query(QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false));
    if (!query.exec("select parameter, value from config order by rowid"))
        qFatal("config table unreadable");
    while (query.next())
        rows.append({query.value(0).toString(), query.value(1).toString()});
    return rows;
}

void TestSQLiteAdapter::initialCreatesTableOnce()
{
    {
        SQLiteAdapter first;
        QVERIFY(first.initial());
        first.close();
    }
    QVERIFY(QFile::exists(workDir->filePath("config.db")));

    SQLiteAdapter second;
    QVERIFY(!second.initial());
    // The table exists, so the database is still usable.
    QVERIFY(second.writeAttribute("port", "cu.usbserial"));
    QCOMPARE(second.readAttribute("port"), QString("cu.usbserial"));
}

void TestSQLiteAdapter::secondWriteUpdatesTheRow()
{
    SQLiteAdapter adapter;
    QVERIFY(adapter.initial());
    QVERIFY(adapter.writeAttribute("baud", "9600"));
    QVERIFY(adapter.writeAttribute("other", "x"));
    QVERIFY(adapter.writeAttribute("baud", "115200"));
    QCOMPARE(adapter.readAttribute("baud"), QString("115200"));
    QCOMPARE(tableRows(), (Rows{{"baud", "115200"}, {"other", "x"}}));
}

void TestSQLiteAdapter::unknownParameterIsEmpty()
{
    SQLiteAdapter adapter;
    QVERIFY(adapter.initial());
    QVERIFY(adapter.writeAttribute("known", "1"));
    QVERIFY(adapter.readAttribute("unknown").isEmpty());
    QVERIFY(adapter.readAttribute("").isEmpty());
    QVERIFY(adapter.readAttribute("KNOWN").isEmpty());
}

void TestSQLiteAdapter::closedDatabaseRefusesEverything()
{
    SQLiteAdapter adapter;
    QVERIFY(adapter.initial());
    QVERIFY(adapter.writeAttribute("a", "1"));
    adapter.close();
    QVERIFY(adapter.readAttribute("a").isEmpty());
    QVERIFY(!adapter.writeAttribute("a", "2"));
}

void TestSQLiteAdapter::unusualTextsRoundTrip_data()
{
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<QString>("value");
    QTest::newRow("empty value") << "p" << "";
    QTest::newRow("double quotes") << "say" << "\"hello\"";
    QTest::newRow("comment and semicolon") << "p;--" << "v; drop table config; --";
    QTest::newRow("wildcards") << "%" << "_";
    QTest::newRow("non-Latin") << QString::fromUtf8("\u7aef\u53e3") << QString::fromUtf8("\u00e9\u4e2d");
    QTest::newRow("line break") << "multi" << "a\nb";
}

void TestSQLiteAdapter::unusualTextsRoundTrip()
{
    QFETCH(QString, parameter);
    QFETCH(QString, value);
    SQLiteAdapter adapter;
    QVERIFY(adapter.initial());
    QVERIFY(adapter.writeAttribute("neighbour", "n"));
    QVERIFY(adapter.writeAttribute(parameter, value));
    QCOMPARE(adapter.readAttribute(parameter), value);
    QCOMPARE(adapter.readAttribute("neighbour"), QString("n"));
    QCOMPARE(tableRows().size(), 2);
}

void TestSQLiteAdapter::singleQuotesAreRefused_data()
{
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<QString>("value");
    QTest::newRow("quote in new value") << "fresh" << "it's";
    QTest::newRow("quote in existing parameter's value") << "a" << "x'y";
    QTest::newRow("quote in parameter") << "a'" << "x";
    QTest::newRow("always-true parameter") << "x' or '1'='1" << "hijacked";
    QTest::newRow("update everything via value") << "a" << "v' where 1=1 --";
    QTest::newRow("stacked statement") << "b'; delete from config; --" << "v";
}

void TestSQLiteAdapter::singleQuotesAreRefused()
{
    QFETCH(QString, parameter);
    QFETCH(QString, value);
    SQLiteAdapter adapter;
    QVERIFY(adapter.initial());
    QVERIFY(adapter.writeAttribute("a", "1"));
    QVERIFY(adapter.writeAttribute("b", "2"));
    const Rows before = tableRows();

    QVERIFY(!adapter.writeAttribute(parameter, value));
    QCOMPARE(tableRows(), before);
    if (parameter.contains('\''))
        QVERIFY(adapter.readAttribute(parameter).isEmpty());
}

void TestSQLiteAdapter::createFileAndOpen()
{
    const QString path = workDir->filePath("other.db");
    {
        SQLiteAdapter adapter;
        QVERIFY(adapter.createFile(path));
        QVERIFY(adapter.writeAttribute("lang", "zh_CN"));
        // Creating over an existing file still opens it.
        QVERIFY(adapter.createFile(path));
        QCOMPARE(adapter.readAttribute("lang"), QString("zh_CN"));
        adapter.close();
    }
    QVERIFY(!QFile::exists(workDir->filePath("config.db")));

    SQLiteAdapter reader;
    QVERIFY(reader.open(path));
    QCOMPARE(reader.readAttribute("lang"), QString("zh_CN"));
}

void TestSQLiteAdapter::openFailsForUnreachableFile()
{
    SQLiteAdapter adapter;
    const QString path = workDir->filePath("missing/folder/x.db");
    QTest::ignoreMessage(QtWarningMsg, "sqlite_adapter 50 Database open failed!");
    QVERIFY(!adapter.open(path));
    QTest::ignoreMessage(QtWarningMsg, "sqlite_adapter 35 Database open failed!");
    QVERIFY(!adapter.createFile(path));
    QVERIFY(!adapter.writeAttribute("a", "1"));
}

void TestSQLiteAdapter::creatableByType()
{
    QVERIFY(QMetaType::fromName("SQLiteAdapter*").isValid());
    QScopedPointer<QObject> created(SQLiteAdapter::staticMetaObject.newInstance());
    QVERIFY(qobject_cast<SQLiteAdapter *>(created.data()));
}

QTEST_MAIN(TestSQLiteAdapter)
#include "tst_sqliteadapter.moc"
