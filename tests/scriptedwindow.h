#ifndef QUORVANE_SCRIPTEDWINDOW_H
#define QUORVANE_SCRIPTEDWINDOW_H

#include <QSet>
#include <QStringList>

#include "app/mainwindow.h"
#include "session/serialportwidget.h"

// A main window whose dialogs answer from a script and whose sessions start
// without touching real ports.
class ScriptedWindow : public MainWindow
{
public:
    using MainWindow::MainWindow;

    QString fileAnswer;
    int sessionsPerRowAnswer = 1;
    QMessageBox::StandardButton boxAnswer = QMessageBox::Ok;
    bool dialogAnswer = true;
    QSet<int> failingSessions;
    bool startRealPorts = false;
    QStringList boxesShown;
    int dialogsRun = 0;

protected:
    QString chooseOpenFile(const QString &, const QString &, const QString &) override { return fileAnswer; }
    QString chooseSaveFile(const QString &, const QString &, const QString &) override { return fileAnswer; }
    QMessageBox::StandardButton ask(QMessageBox::Icon, const QString &, const QString &text,
                                    QMessageBox::StandardButtons) override
    {
        boxesShown << text;
        return boxAnswer;
    }
    int askSessionsPerRow(int) override { return sessionsPerRowAnswer; }
    bool runDialog(QDialog &) override
    {
        ++dialogsRun;
        return dialogAnswer;
    }
    bool startSession(SerialPortWidget &started, const QString &name) override
    {
        if (startRealPorts)
            return MainWindow::startSession(started, name);
        for (int i = 0; i < sessionCount(); ++i) {
            if (session(i) == &started)
                return !failingSessions.contains(i);
        }
        return false;
    }
};

#endif
