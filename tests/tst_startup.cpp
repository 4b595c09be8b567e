#include <QtTest>
#include <QtWidgets>

#include "app/preferences.h"
#include "app/setconfigfilepathdialog.h"
#include "app/startup.h"
#include "testsupport.h"

class TestStartup : public QObject
{
    Q_OBJECT
    IsolatedEnvironment environment;

private slots:
    void init() { QSettings().clear(); }

    // Which catalogue start-up loads, and whether the Language menu checks
    // the Chinese entry, for the locales zh_CN, zh_TW and en_US in turn.
    void language_data()
    {
        QTest::addColumn<int>("valueL");
        QTest::addColumn<QList<bool>>("loaded");
        QTest::addColumn<QList<bool>>("checked");
        QTest::newRow("0, system") << 0 << QList<bool>{true, false, false} << QList<bool>{true, false, false};
        QTest::newRow("1, Chinese") << 1 << QList<bool>{true, true, true} << QList<bool>{true, true, true};
        QTest::newRow("2, English") << 2 << QList<bool>{false, false, false} << QList<bool>{false, false, false};
        QTest::newRow("7, unknown") << 7 << QList<bool>{false, false, false} << QList<bool>{true, false, false};
    }

    void language()
    {
        QFETCH(int, valueL);
        QList<bool> loaded, checked;
        for (const QString locale : {"zh_CN", "zh_TW", "en_US"}) {
            loaded << shouldLoadChinese(valueL, locale);
            checked << Preferences::chineseChecked(valueL, locale);
        }
        QTEST(loaded, "loaded");
        QTEST(checked, "checked");
    }

    // The available area is 1440 x 900; the stored size is always restored,
    // the position only when it lies strictly inside.
    void restoreWindowGeometry_data()
    {
        QTest::addColumn<QPoint>("stored");
        QTest::addColumn<bool>("placed"); // or left to the window system
        QTest::newRow("x at 0") << QPoint(0, 300) << false;
        QTest::newRow("y at 0") << QPoint(300, 0) << false;
        QTest::newRow("top-left corner") << QPoint(1, 1) << true;
        QTest::newRow("last pixel") << QPoint(1439, 899) << true;
        QTest::newRow("far right edge") << QPoint(1440, 300) << false;
        QTest::newRow("beyond the screen") << QPoint(2500, 1600) << false;
    }

    void restoreWindowGeometry()
    {
        QFETCH(QPoint, stored);
        QFETCH(bool, placed);
        QSettings settings;
        settings.setValue(StartupKeys::lastWindowSize, QSize(640, 480));
        settings.setValue(StartupKeys::lastWindowPosition, stored);
        QWidget window;
        ::restoreWindowGeometry(window, settings, QSize(1440, 900));
        QCOMPARE(window.size(), QSize(640, 480));
        QCOMPARE(window.testAttribute(Qt::WA_Moved), placed);
        QCOMPARE(window.pos(), placed ? stored : QPoint());
    }

    // The first-run folder dialog proposes the application's data folder; OK
    // creates the folder shown, missing parents too, and remembers it.
    void configFolderDialog_data()
    {
        QTest::addColumn<QString>("typed"); // inside a temporary folder; empty keeps the proposal
        QTest::addColumn<QDialogButtonBox::StandardButton>("button");
        QTest::newRow("OK on the proposal") << QString() << QDialogButtonBox::Ok;
        QTest::newRow("OK, missing parents") << "not/yet/there/Config" << QDialogButtonBox::Ok;
        QTest::newRow("Cancel") << "Config" << QDialogButtonBox::Cancel;
    }

    void configFolderDialog()
    {
        QFETCH(QString, typed);
        QFETCH(QDialogButtonBox::StandardButton, button);
        const QString proposed = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/Config";
        QTemporaryDir base;
        const QString folder = typed.isEmpty() ? proposed : base.filePath(typed);
        const bool accepted = button == QDialogButtonBox::Ok;

        SetConfigFilePathDialog dialog;
        auto *field = dialog.findChild<QLineEdit *>(QStringLiteral("config_file_path_le"));
        QCOMPARE(field->text(), proposed);
        field->setText(folder);
        dialog.findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(button)->click();
        QCOMPARE(dialog.result(), int(accepted ? QDialog::Accepted : QDialog::Rejected));
        QCOMPARE(dialog.getConfigFilePath(), accepted ? folder : proposed);
        QCOMPARE(QFileInfo(folder).isDir(), accepted);
        QCOMPARE(QSettings().value(StartupKeys::configFilePath).toString(), accepted ? folder : QString());
        QCOMPARE(needsConfigFolder(QSettings()), !accepted);
    }
};

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
