#ifndef QUORVANE_SQLITE_ADAPTER_H
#define QUORVANE_SQLITE_ADAPTER_H

#include <QObject>
#include <QSqlDatabase>
#include <QString>

// Key/value store in an SQLite file: table config(parameter, value), at most
// one row per parameter. Uses the default database connection. Parameters
// and values containing a single quote are refused (false / empty result).
class SQLiteAdapter : public QObject
{
    Q_OBJECT

public:
    // Works on "config.db" in the working directory; nothing is opened yet.
    Q_INVOKABLE explicit SQLiteAdapter(QObject *parent = nullptr);

    // Opens the database and creates the table; false if either fails
    // (so false once the table exists, though the database is then usable).
    bool initial();
    // Opens the named file and creates the table; true whenever it opened.
    bool createFile(const QString &name);
    bool open(const QString &name);
    void close();

    QString readAttribute(const QString &parameter);
    bool writeAttribute(const QString &parameter, const QString &value);

private:
    bool openNamed(const QString &name, int place);
    bool openDatabase(int place);
    bool createTable();
    struct Lookup
    {
        bool succeeded = false;
        bool found = false;
        QString value;
    };
    Lookup lookUp(const QString &parameter);

    QSqlDatabase db;
};

#endif
