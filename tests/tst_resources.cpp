#include <QtTest>

#include <QPixmap>

#include "testsupport.h"

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void iconExists_data();
    void iconExists();

private:
    IsolatedEnvironment environment;
};

// Every icon path that the sources and forms name (the row says where), and
// the icons the program is known by even where no code names them yet.
void TestResources::iconExists_data()
{
    QTest::addColumn<QString>("path");
    const QString prefix = ":/images/resource/";
    const QRegularExpression iconPath(QRegularExpression::escape(prefix) + "[A-Za-z0-9_.\\-]*[A-Za-z0-9_]");
    QMap<QString, QStringList> uses;
    for (const char *name : {"logo.png", "new.PNG", "save.PNG", "log.png", "exit.PNG", "start.PNG", "pause.PNG",
                             "stop.PNG", "add_port.png", "remove_port.png", "cleanport.png", "view-left-open.png",
                             "settings.png"})
        uses[prefix + name];

    QDirIterator files(QUORVANE_SOURCE_DIR, {"*.cpp", "*.h", "*.ui"}, QDir::Files, QDirIterator::Subdirectories);
    int found = 0;
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
        for (const auto &match : iconPath.globalMatch(QString::fromUtf8(file.readAll()))) {
            uses[match.captured()] << QDir(QUORVANE_SOURCE_DIR).relativeFilePath(file.fileName());
            ++found;
        }
    }
    QVERIFY2(found > 0, "no icon paths found under " QUORVANE_SOURCE_DIR);
    for (auto it = uses.cbegin(); it != uses.cend(); ++it)
        QTest::newRow(qPrintable(it.key() + ' ' + it.value().join(' '))) << it.key();
}

void TestResources::iconExists()
{
    QFETCH(QString, path);
    QVERIFY2(QFile::exists(path), qPrintable(path + " is not in the resources"));
    QVERIFY2(!QPixmap(path).isNull(), qPrintable(path + " is not a readable image"));
}

QTEST_MAIN(TestResources)
#include "tst_resources.moc"
