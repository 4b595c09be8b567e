#include "app/startup.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QPoint>
#include <QRect>
#include <QSettings>
#include <QSize>
#include <QTranslator>
#include <QWidget>

#include "common/logging.h"

namespace {
const QString chineseCatalogue = QStringLiteral(":/language/language/zh_CN");
const QString qtChineseCatalogue = QStringLiteral("qtbase_zh_CN");
const QSize defaultWindowSize(1000, 800);
const QPoint defaultWindowPosition(200, 200);
}

bool shouldLoadChinese(int languagePreference, const QString &localeName)
{
    return languagePreference == 1
        || (languagePreference == 0 && localeName == QLatin1String("zh_CN"));
}

bool isRestorablePosition(const QPoint &position, const QSize &availableSize)
{
    return position.x() >= 1 && position.x() < availableSize.width()
        && position.y() >= 1 && position.y() < availableSize.height();
}

bool installTranslation(QTranslator &translator, int languagePreference, const QString &localeName)
{
    bool loaded = false;
    if (shouldLoadChinese(languagePreference, localeName)) {
        loaded = translator.load(chineseCatalogue);
        if (!loaded)
            qCWarning(lcDefault) << "load language zh_CN failed!";
    }
    QCoreApplication::installTranslator(&translator);
    return loaded;
}

bool installQtTranslation(QTranslator &translator)
{
    const bool loaded = translator.load(qtChineseCatalogue, QStringLiteral(":/language"))
                        || translator.load(qtChineseCatalogue, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    if (loaded)
        QCoreApplication::installTranslator(&translator);
    else
        qCWarning(lcDefault) << "load Qt's language zh_CN failed!";
    return loaded;
}

bool needsConfigFolder(const QSettings &settings)
{
    return !settings.contains(StartupKeys::configFilePath);
}

void restoreWindowGeometry(QWidget &window, const QSettings &settings, const QSize &availableSize)
{
    QSize size = settings.value(StartupKeys::lastWindowSize, defaultWindowSize).toSize();
    if (availableSize.isValid())
        size = size.boundedTo(availableSize);
    const QPoint position = settings.value(StartupKeys::lastWindowPosition, defaultWindowPosition).toPoint();
    qCDebug(lcDefault) << "### last window position:" << position;

    // The position is stored as the frame's, so it is restored as the frame's:
    // a client-area position would creep by the title bar at every start.
    window.resize(size);
    if (isRestorablePosition(position, availableSize))
        window.move(position);
    if (settings.value(StartupKeys::lastWindowMaximized).toBool())
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void storeWindowGeometry(const QWidget &window, QSettings &settings)
{
    // A maximized window keeps the size and place it had before.
    settings.setValue(StartupKeys::lastWindowMaximized, window.isMaximized());
    if (window.isMaximized())
        return;
    settings.setValue(StartupKeys::lastWindowSize, window.size());
    settings.setValue(StartupKeys::lastWindowPosition, window.pos());
}
