#include <QApplication>
#include <QLocale>
#include <QLoggingCategory>
#include <QScreen>
#include <QSettings>
#include <QTranslator>

#include "app/mainwindow.h"
#include "app/setconfigfilepathdialog.h"
#include "app/startup.h"
#include "common/logging.h"

namespace {

void logArguments(int argc, char *argv[])
{
    qCDebug(lcDefault) << "argc:" << argc;
    for (int i = 0; i < argc; ++i)
        qCDebug(lcDefault) << QStringLiteral("argv[%1]:").arg(i) << QString::fromUtf8(argv[i]);
}

// Returns false when the user declined to choose a folder.
bool ensureConfigFolder(const QSettings &settings)
{
    if (!needsConfigFolder(settings))
        return true;
    SetConfigFilePathDialog dialog;
    dialog.setWindowTitle(QStringLiteral("Quorvane"));
    return dialog.exec() == QDialog::Accepted;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    // Diagnostics print per received chunk; they stay off unless asked for
    // with QT_LOGGING_RULES="default.debug=true", which overrides this.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QCoreApplication::setOrganizationName(QStringLiteral("VERDANE"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("verdane.example"));
    QCoreApplication::setApplicationName(QStringLiteral("Quorvane"));
    logArguments(argc, argv);

    QSettings settings;
    // The translator must outlive every window, so it lives here.
    QTranslator translator;
    installTranslation(translator, settings.value(StartupKeys::language, 0).toInt(),
                       QLocale::system().name());

    if (!ensureConfigFolder(settings))
        return 0;

    // Without a screen nothing counts as on screen, so placement is left
    // to the window system.
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QSize availableSize = screen ? screen->availableGeometry().size() : QSize();
    MainWindow window;
    restoreWindowGeometry(window, settings, availableSize);
    window.show();
    if (argc >= 2)
        window.start(QString::fromUtf8(argv[1]));

    return app.exec();
}
