#include "view/viewactions.h"

#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QSaveFile>

#include "view/highlightrulesdialog.h"
#include "view/receiveview.h"

ViewActions::ViewActions(ReceiveView *view)
    : QObject(view)
    , view(view)
{
}

void ViewActions::addAction(QAction *action)
{
    added.append(action);
}

QMenu *ViewActions::createMenu(QWidget *parent)
{
    auto *menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("receiveViewMenu"));
    QAction *copy = menu->addAction(tr("Copy"), view, &ReceiveView::copy);
    copy->setShortcut(QKeySequence::Copy);
    copy->setEnabled(view->hasSelection());
    menu->addAction(tr("Select All"), view, &ReceiveView::selectAll)->setShortcut(QKeySequence::SelectAll);
    menu->addSeparator();
    menu->addAction(tr("Find..."), view, &ReceiveView::openFindBar)->setShortcut(QKeySequence::Find);
    menu->addAction(tr("Highlight Rules..."), this, &ViewActions::editRules);
    menu->addAction(tr("Save view as..."), this, &ViewActions::saveAs);
    bool separated = false;
    for (QAction *action : std::as_const(added)) {
        if (!action)
            continue;
        if (!separated)
            menu->addSeparator();
        separated = true;
        menu->addAction(action);
    }
    return menu;
}

bool ViewActions::writeText(const QString &path, const QString &text, QString *error)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0 && file.commit())
        return true;
    *error = file.errorString();
    return false;
}

void ViewActions::saveAs()
{
    const QString path = QFileDialog::getSaveFileName(view, tr("Save View As"), QString(),
                                                      tr("Text files (*.txt);;All files (*)"));
    if (path.isEmpty())
        return;
    QString error;
    if (!writeText(path, view->toPlainText(), &error))
        QMessageBox::warning(view, tr("Save View As"),
                             tr("Could not save %1:\n%2").arg(QDir::toNativeSeparators(path), error));
}

void ViewActions::editRules()
{
    HighlightRulesDialog dialog(view->highlightRules(), view);
    if (dialog.exec() == QDialog::Accepted && dialog.rules() != view->highlightRules())
        emit rulesEdited(dialog.rules());
}
