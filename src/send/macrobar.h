#ifndef QUORVANE_MACROBAR_H
#define QUORVANE_MACROBAR_H

#include <QByteArray>
#include <QList>
#include <QToolBar>

#include "send/sendmacro.h"

class QAction;
class QTimer;

// A session's row of macro buttons. A click sends the macro once; a macro
// with a repeat period keeps sending until clicked again, its button held
// down meanwhile. Ctrl+1..Ctrl+9 within `shortcutScope` click the first nine.
class MacroBar : public QToolBar
{
    Q_OBJECT

public:
    MacroBar(QWidget *shortcutScope, QWidget *parent = nullptr);

    const SendMacroList &macros() const { return list; }
    void setMacros(const SendMacroList &macros);
    void trigger(int index);
    void stopRepeats();
    bool isRepeating(int index) const;

signals:
    void sendRequested(const QByteArray &bytes);
    void macrosEdited();

private:
    void openEditor();

    SendMacroList list;
    QList<QAction *> buttons;
    QList<QTimer *> repeatTimers;
};

#endif
