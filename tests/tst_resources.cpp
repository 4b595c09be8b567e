#include <QtTest>

#include <QDirIterator>
#include <QPixmap>
#include <QRegularExpression>
#include <QSet>

#include "testsupport.h"

namespace {

const QString iconPrefix = QStringLiteral(":/images/resource/");

QStringList requiredIcons()
{
    const QStringList names = {
        QStringLiteral("logo.png"),     QStringLiteral("new.PNG"),
        QStringLiteral("save.PNG"),     QStringLiteral("log.png"),
        QStringLiteral("exit.PNG"),     QStringLiteral("start.PNG"),
        QStringLiteral("pause.PNG"),    QStringLiteral("stop.PNG"),
        QStringLiteral("add_port.png"), QStringLiteral("remove_port.png"),
        QStringLiteral("cleanport.png"), QStringLiteral("view-left-open.png"),
        QStringLiteral("settings.png"),
    };
    QStringList paths;
    for (const QString &name : names)
        paths << iconPrefix + name;
    return paths;
}

// Every icon path the sources and forms refer to, with the files naming it.
QMap<QString, QStringList> iconPathsUsedIn(const QString &sourceDir)
{
    static const QRegularExpression iconPath(
        QRegularExpression::escape(iconPrefix) + QStringLiteral("[A-Za-z0-9_.\\-]*[A-Za-z0-9_]"));
    QMap<QString, QStringList> uses;
    QDirIterator files(sourceDir, {QStringLiteral("*.cpp"), QStringLiteral("*.h"), QStringLiteral("*.ui")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        for (const auto &match : iconPath.globalMatch(text))
            uses[match.captured()] << QDir(sourceDir).relativeFilePath(file.fileName());
    }
    return uses;
}

} // namespace

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void iconExists_data();
    void iconExists();
    void logoLoads();

private:
    IsolatedEnvironment environment;
};

void TestResources::iconExists_data()
{
    QTest::addColumn<QString>("path");

    QVERIFY2(QDir(QStringLiteral(QUORVANE_SOURCE_DIR)).exists(), QUORVANE_SOURCE_DIR);
    const QMap<QString, QStringList> used = iconPathsUsedIn(QStringLiteral(QUORVANE_SOURCE_DIR));
    for (auto it = used.cbegin(); it != used.cend(); ++it) {
        const QString where = it.value().join(QStringLiteral(", "));
        QTest::newRow(qPrintable(it.key() + QStringLiteral(" in ") + where)) << it.key();
    }
    for (const QString &path : requiredIcons())
        QTest::newRow(qPrintable(path)) << path;
}

void TestResources::iconExists()
{
    QFETCH(QString, path);
    QVERIFY2(QFile::exists(path), qPrintable(path + QStringLiteral(" is not in the resources")));
    QVERIFY2(!QPixmap(path).isNull(), qPrintable(path + QStringLiteral(" is not a readable image")));
}

void TestResources::logoLoads()
{
    const QPixmap logo(iconPrefix + QStringLiteral("logo.png"));
    QVERIFY(!logo.isNull());
    QCOMPARE(logo.size(), QSize(256, 256));
}

QTEST_MAIN(TestResources)
#include "tst_resources.moc"
