#ifndef QUORVANE_STARTUP_H
#define QUORVANE_STARTUP_H

#include <QString>

class QPoint;
class QSettings;
class QSize;
class QTranslator;
class QWidget;

// Settings-store keys read while the application starts.
namespace StartupKeys {
inline const QString language = QStringLiteral("ValueL");
inline const QString configFilePath = QStringLiteral("CONFIG_FILE_PATH");
inline const QString lastWindowSize = QStringLiteral("LAST_WINDOW_SIZE");
inline const QString lastWindowPosition = QStringLiteral("LAST_WINDOW_POSITION");
inline const QString lastWindowMaximized = QStringLiteral("LastWindowMaximized");
}

// Language preference: 1 is Chinese, 0 follows the system locale (only an
// exact "zh_CN" counts), anything else is English.
bool shouldLoadChinese(int languagePreference, const QString &localeName);

// A stored window position is only trusted when it lies strictly inside the
// available screen area; 0 and the far edges are left to the window system.
bool isRestorablePosition(const QPoint &position, const QSize &availableSize);

// Loads the Chinese catalogue when the preference asks for it and installs
// the translator into the application either way (an empty one keeps the
// English texts). Returns whether a catalogue was loaded.
bool installTranslation(QTranslator &translator, int languagePreference, const QString &localeName);

// Loads Qt's own Chinese texts (standard buttons, file dialogs) from the
// copy built into the program, else from Qt's folder, and installs them.
bool installQtTranslation(QTranslator &translator);

// True until a configuration folder has been chosen once, even an empty one.
bool needsConfigFolder(const QSettings &settings);

// Applies the size, cut to the available screen area, and, when it is on
// screen, the position stored at the last exit.
void restoreWindowGeometry(QWidget &window, const QSettings &settings, const QSize &availableSize);
void storeWindowGeometry(const QWidget &window, QSettings &settings);

#endif
