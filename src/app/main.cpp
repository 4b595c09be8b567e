#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <QLoggingCategory>
#include <QScreen>
#include <QSettings>
#include <QTranslator>

#include "app/commandline.h"
#include "app/fileopenrequests.h"
#include "app/mainwindow.h"
#include "app/setconfigfilepathdialog.h"
#include "app/shutdownsignals.h"
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

// Help, version and mistakes are answered on the terminal, without a window.
bool answeredOnTerminal(const CommandLine &commandLine, int &exitCode)
{
    switch (commandLine.action) {
    case CommandLine::ShowHelp:
    case CommandLine::ShowVersion:
        fputs(qPrintable(commandLine.output), stdout);
        exitCode = 0;
        return true;
    case CommandLine::Fail:
        fputs(qPrintable(commandLine.output + QLatin1Char('\n')), stderr);
        exitCode = 1;
        return true;
    case CommandLine::Run:
        break;
    }
    return false;
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
    QCoreApplication::setApplicationVersion(QStringLiteral(QUORVANE_VERSION "." QUORVANE_BUILD));
    QGuiApplication::setDesktopFileName(QStringLiteral("example.verdane.quorvane"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/images/resource/logo.png")));
    logArguments(argc, argv);
    // Finder's requests may come while the first-run dialog is up.
    auto *fileOpenRequests = new FileOpenRequests(&app);

    QSettings settings;
    // The translators must outlive every window, so they live here.
    QTranslator translator;
    QTranslator qtTranslator;
    const int language = settings.value(StartupKeys::language, 0).toInt();
    const QString localeName = QLocale::system().name();
    installTranslation(translator, language, localeName);
    if (shouldLoadChinese(language, localeName))
        installQtTranslation(qtTranslator);

    const CommandLine commandLine = CommandLine::parse(QCoreApplication::arguments());
    int exitCode = 0;
    if (answeredOnTerminal(commandLine, exitCode))
        return exitCode;

    if (!ensureConfigFolder(settings))
        return 0;

    // Without a screen nothing counts as on screen, so placement is left
    // to the window system.
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QSize availableSize = screen ? screen->availableGeometry().size() : QSize();
    MainWindow window(nullptr, commandLine.documentFile);
    restoreWindowGeometry(window, settings, availableSize);
    window.show();
    if (commandLine.startsPort)
        window.start(commandLine.portName);
    fileOpenRequests->setHandler([&window](const QString &fileName) { window.openDocument(fileName); });
    ShutdownSignals shutdownSignals;
    QObject::connect(&shutdownSignals, &ShutdownSignals::shutdownRequested, &window, &MainWindow::shutDown);

    return app.exec();
}
