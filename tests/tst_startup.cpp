#include <QtTest>

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTranslator>
#include <QWidget>

#include "app/setconfigfilepathdialog.h"
#include "app/startup.h"
#include "testsupport.h"

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void shouldLoadChinese_data();
    void shouldLoadChinese();
    void missingCatalogueIsWarnedAbout();

    void isRestorablePosition_data();
    void isRestorablePosition();
    void restoreWindowGeometry_data();
    void restoreWindowGeometry();

    void dialogProposesAppDataConfigFolder();
    void dialogShowsStoredFolder();
    void acceptingCreatesFolderWithParentsAndStoresIt();
    void cancellingStoresNothing();

private:
    static QLineEdit *pathField(SetConfigFilePathDialog &dialog);
    static void clickButton(SetConfigFilePathDialog &dialog, QDialogButtonBox::StandardButton which);

    IsolatedEnvironment environment;
};

void TestStartup::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

void TestStartup::init()
{
    QSettings().clear();
}

void TestStartup::shouldLoadChinese_data()
{
    QTest::addColumn<int>("languagePreference");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<bool>("chinese");

    QTest::newRow("system, zh_CN") << 0 << "zh_CN" << true;
    QTest::newRow("system, zh_TW") << 0 << "zh_TW" << false;
    QTest::newRow("system, en_US") << 0 << "en_US" << false;
    QTest::newRow("system, zh_cn is not zh_CN") << 0 << "zh_cn" << false;
    QTest::newRow("system, bare zh") << 0 << "zh" << false;
    QTest::newRow("Chinese, zh_CN") << 1 << "zh_CN" << true;
    QTest::newRow("Chinese, zh_TW") << 1 << "zh_TW" << true;
    QTest::newRow("Chinese, en_US") << 1 << "en_US" << true;
    QTest::newRow("English, zh_CN") << 2 << "zh_CN" << false;
    QTest::newRow("English, zh_TW") << 2 << "zh_TW" << false;
    QTest::newRow("English, en_US") << 2 << "en_US" << false;
    QTest::newRow("unknown 7, zh_CN") << 7 << "zh_CN" << false;
    QTest::newRow("unknown 7, zh_TW") << 7 << "zh_TW" << false;
    QTest::newRow("unknown 7, en_US") << 7 << "en_US" << false;
    QTest::newRow("negative, zh_CN") << -1 << "zh_CN" << false;
}

void TestStartup::shouldLoadChinese()
{
    QFETCH(int, languagePreference);
    QFETCH(QString, locale);
    QFETCH(bool, chinese);
    QCOMPARE(::shouldLoadChinese(languagePreference, locale), chinese);
}

void TestStartup::missingCatalogueIsWarnedAbout()
{
    if (QFile::exists(QStringLiteral(":/language/language/zh_CN.qm")))
        QSKIP("the Chinese catalogue is part of the resources");

    QTranslator translator;
    QTest::ignoreMessage(QtWarningMsg, "load language zh_CN failed!");
    QVERIFY(!installTranslation(translator, 1, QStringLiteral("en_US")));
    QCoreApplication::removeTranslator(&translator);

    // English never tries to load anything, so nothing is warned about.
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    QVERIFY(!installTranslation(translator, 2, QStringLiteral("zh_CN")));
    QCoreApplication::removeTranslator(&translator);
}

void TestStartup::isRestorablePosition_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<bool>("restorable");

    // Available area 1440 x 900.
    QTest::newRow("x at 0") << QPoint(0, 300) << false;
    QTest::newRow("y at 0") << QPoint(300, 0) << false;
    QTest::newRow("top-left corner") << QPoint(1, 1) << true;
    QTest::newRow("inside") << QPoint(200, 200) << true;
    QTest::newRow("last pixel") << QPoint(1439, 899) << true;
    QTest::newRow("far right edge") << QPoint(1440, 300) << false;
    QTest::newRow("far bottom edge") << QPoint(300, 900) << false;
    QTest::newRow("beyond the screen") << QPoint(2500, 1600) << false;
    QTest::newRow("left of the screen") << QPoint(-100, 300) << false;
}

void TestStartup::isRestorablePosition()
{
    QFETCH(QPoint, position);
    QFETCH(bool, restorable);
    QCOMPARE(::isRestorablePosition(position, QSize(1440, 900)), restorable);
}

void TestStartup::restoreWindowGeometry_data()
{
    QTest::addColumn<QVariant>("storedSize");
    QTest::addColumn<QVariant>("storedPosition");
    QTest::addColumn<QSize>("expectedSize");
    QTest::addColumn<bool>("placed");
    QTest::addColumn<QPoint>("expectedPosition");

    QTest::newRow("nothing stored") << QVariant() << QVariant() << QSize(1000, 800) << true << QPoint(200, 200);
    QTest::newRow("stored on screen")
        << QVariant(QSize(640, 480)) << QVariant(QPoint(50, 60)) << QSize(640, 480) << true << QPoint(50, 60);
    QTest::newRow("x at 0 keeps the size only")
        << QVariant(QSize(640, 480)) << QVariant(QPoint(0, 300)) << QSize(640, 480) << false << QPoint();
    QTest::newRow("off screen keeps the size only")
        << QVariant(QSize(700, 500)) << QVariant(QPoint(5000, 300)) << QSize(700, 500) << false << QPoint();
}

void TestStartup::restoreWindowGeometry()
{
    QFETCH(QVariant, storedSize);
    QFETCH(QVariant, storedPosition);
    QFETCH(QSize, expectedSize);
    QFETCH(bool, placed);
    QFETCH(QPoint, expectedPosition);

    QSettings settings;
    if (storedSize.isValid())
        settings.setValue(StartupKeys::lastWindowSize, storedSize);
    if (storedPosition.isValid())
        settings.setValue(StartupKeys::lastWindowPosition, storedPosition);

    QWidget window;
    ::restoreWindowGeometry(window, settings, QSize(1440, 900));
    QCOMPARE(window.size(), expectedSize);
    // An unplaced window is left for the window system to position.
    QCOMPARE(window.testAttribute(Qt::WA_Moved), placed);
    if (placed)
        QCOMPARE(window.pos(), expectedPosition);
}

QLineEdit *TestStartup::pathField(SetConfigFilePathDialog &dialog)
{
    return dialog.findChild<QLineEdit *>(QStringLiteral("config_file_path_le"));
}

void TestStartup::clickButton(SetConfigFilePathDialog &dialog, QDialogButtonBox::StandardButton which)
{
    auto *buttons = dialog.findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
    QVERIFY(buttons);
    buttons->button(which)->click();
}

void TestStartup::dialogProposesAppDataConfigFolder()
{
    QVERIFY(needsConfigFolder(QSettings()));
    SetConfigFilePathDialog dialog;
    const QString expected =
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/Config");
    QVERIFY(pathField(dialog));
    QCOMPARE(pathField(dialog)->text(), expected);
    QCOMPARE(dialog.getConfigFilePath(), expected);
    QCOMPARE(dialog.size(), QSize(800, 200));
}

void TestStartup::dialogShowsStoredFolder()
{
    QSettings().setValue(StartupKeys::configFilePath, QStringLiteral("/some/where"));
    SetConfigFilePathDialog dialog;
    QCOMPARE(pathField(dialog)->text(), QStringLiteral("/some/where"));
}

void TestStartup::acceptingCreatesFolderWithParentsAndStoresIt()
{
    QTemporaryDir base;
    QVERIFY(base.isValid());
    const QString folder = base.filePath(QStringLiteral("not/yet/there/Config"));

    SetConfigFilePathDialog dialog;
    pathField(dialog)->setText(folder);
    clickButton(dialog, QDialogButtonBox::Ok);

    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(QFileInfo(folder).isDir());
    QCOMPARE(dialog.getConfigFilePath(), folder);
    QSettings settings;
    QCOMPARE(settings.value(StartupKeys::configFilePath).toString(), folder);
    QVERIFY(!needsConfigFolder(settings));
}

void TestStartup::cancellingStoresNothing()
{
    QTemporaryDir base;
    QVERIFY(base.isValid());
    const QString folder = base.filePath(QStringLiteral("Config"));

    SetConfigFilePathDialog dialog;
    pathField(dialog)->setText(folder);
    clickButton(dialog, QDialogButtonBox::Cancel);

    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(!QFileInfo::exists(folder));
    QVERIFY(needsConfigFolder(QSettings()));
}

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
