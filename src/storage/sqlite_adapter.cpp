#include "storage/sqlite_adapter.h"

#include <QSqlQuery>
#include <QVariant>

#include "common/logging.h"

namespace {

const char *const driverName = "QSQLITE";

// Places reported with "Database open failed!", so that the log says which
// operation could not open the file.
constexpr int initialPlace = 21;
constexpr int createFilePlace = 35;
constexpr int openPlace = 50;

[[maybe_unused]] const int adapterTypeId = qRegisterMetaType<SQLiteAdapter *>("SQLiteAdapter*");

QSqlDatabase defaultConnection()
{
    if (QSqlDatabase::contains(QLatin1String(QSqlDatabase::defaultConnection)))
        return QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false);
    return QSqlDatabase::addDatabase(QLatin1String(driverName));
}

// Single quotes have never been accepted by this store; callers rely on
// such texts being refused rather than stored.
bool isAcceptedText(const QString &text)
{
    return !text.contains(QLatin1Char('\''));
}

} // namespace

SQLiteAdapter::SQLiteAdapter(QObject *parent)
    : QObject(parent)
    , db(defaultConnection())
{
    db.setDatabaseName(QStringLiteral("config.db"));
}

bool SQLiteAdapter::initial()
{
    if (!openDatabase(initialPlace))
        return false;
    return createTable();
}

bool SQLiteAdapter::createFile(const QString &name)
{
    if (!openNamed(name, createFilePlace))
        return false;
    createTable();
    return true;
}

bool SQLiteAdapter::open(const QString &name)
{
    return openNamed(name, openPlace);
}

void SQLiteAdapter::close()
{
    if (db.isOpen())
        db.close();
}

QString SQLiteAdapter::readAttribute(const QString &parameter)
{
    const Lookup lookup = lookUp(parameter);
    if (!lookup.succeeded)
        qCDebug(lcDefault) << "readAttribute" << false;
    return lookup.value;
}

bool SQLiteAdapter::writeAttribute(const QString &parameter, const QString &value)
{
    const Lookup lookup = lookUp(parameter);
    if (!lookup.succeeded) {
        qCDebug(lcDefault) << "writeAttribute" << false;
        return false;
    }
    if (!isAcceptedText(value))
        return false;

    QSqlQuery query(db);
    if (lookup.found) {
        query.prepare(QStringLiteral("update config set value = ? where parameter = ?"));
        query.addBindValue(value);
        query.addBindValue(parameter);
    } else {
        query.prepare(QStringLiteral("insert into config values(?, ?)"));
        query.addBindValue(parameter);
        query.addBindValue(value);
    }
    return query.exec();
}

bool SQLiteAdapter::openNamed(const QString &name, int place)
{
    db = defaultConnection();
    // A new name only takes effect on the next open.
    close();
    db.setDatabaseName(name);
    return openDatabase(place);
}

bool SQLiteAdapter::openDatabase(int place)
{
    if (db.open())
        return true;
    qCWarning(lcDefault) << "sqlite_adapter" << place << "Database open failed!";
    return false;
}

bool SQLiteAdapter::createTable()
{
    QSqlQuery query(db);
    const bool created = query.exec(QStringLiteral("create table config(parameter, value)"));
    qCDebug(lcDefault) << "create table" << created;
    return created;
}

// A refused parameter counts as a failed lookup.
SQLiteAdapter::Lookup SQLiteAdapter::lookUp(const QString &parameter)
{
    Lookup lookup;
    if (!isAcceptedText(parameter))
        return lookup;

    QSqlQuery query(db);
    query.prepare(QStringLiteral("select * from config where parameter = ?"));
    query.addBindValue(parameter);
    lookup.succeeded = query.exec();
    lookup.found = lookup.succeeded && query.next();
    if (lookup.found)
        lookup.value = query.value(1).toString();
    return lookup;
}
