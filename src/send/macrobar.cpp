#include "send/macrobar.h"

#include <QAction>
#include <QShortcut>
#include <QTimer>

#include "send/macroeditordialog.h"

MacroBar::MacroBar(QWidget *shortcutScope, QWidget *parent)
    : QToolBar(parent)
{
    setObjectName(QStringLiteral("macroBar"));
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    QAction *edit = addAction(tr("Macros..."), this, &MacroBar::openEditor);
    edit->setObjectName(QStringLiteral("editMacrosAction"));
    edit->setToolTip(tr("Add, edit, reorder and remove the macro buttons"));
    addSeparator();
    for (int i = 0; i < 9; ++i) {
        auto *shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + i)), shortcutScope);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, i] { trigger(i); });
    }
}

void MacroBar::setMacros(const SendMacroList &macros)
{
    stopRepeats();
    qDeleteAll(buttons);
    qDeleteAll(repeatTimers);
    buttons.clear();
    repeatTimers.clear();
    list = macros.mid(0, MaxSendMacros);
    for (int i = 0; i < list.size(); ++i) {
        const SendMacro &macro = list.at(i);
        QAction *button = addAction(macro.name.isEmpty() ? macro.payload.left(16) : macro.name);
        button->setCheckable(macro.repeatMs > 0);
        QString tip = macro.payload.left(200);
        if (i < 9)
            tip += QStringLiteral("  (Ctrl+%1)").arg(i + 1);
        button->setToolTip(tip);
        connect(button, &QAction::triggered, this, [this, i] { trigger(i); });
        buttons.append(button);

        auto *timer = new QTimer(this);
        timer->setInterval(qMax(1, macro.repeatMs));
        connect(timer, &QTimer::timeout, this, [this, i] { emit sendRequested(encodeMacro(list.at(i))); });
        repeatTimers.append(timer);
    }
}

void MacroBar::trigger(int index)
{
    if (index < 0 || index >= list.size())
        return;
    QTimer *timer = repeatTimers.at(index);
    if (timer->isActive()) {
        timer->stop();
    } else {
        emit sendRequested(encodeMacro(list.at(index)));
        if (list.at(index).repeatMs > 0)
            timer->start();
    }
    buttons.at(index)->setChecked(timer->isActive());
}

void MacroBar::stopRepeats()
{
    for (int i = 0; i < repeatTimers.size(); ++i) {
        repeatTimers.at(i)->stop();
        buttons.at(i)->setChecked(false);
    }
}

bool MacroBar::isRepeating(int index) const
{
    return index >= 0 && index < repeatTimers.size() && repeatTimers.at(index)->isActive();
}

void MacroBar::openEditor()
{
    auto *dialog = new MacroEditorDialog(list, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        setMacros(dialog->macros());
        emit macrosEdited();
    });
    dialog->open();
}
