#ifndef QUORVANE_VIEWACTIONS_H
#define QUORVANE_VIEWACTIONS_H

#include <QList>
#include <QObject>
#include <QPointer>

#include "view/highlightrules.h"

class QAction;
class QMenu;
class QWidget;
class ReceiveView;

// The receive view's context menu and what its own entries do: copy, select
// all, find, edit the highlight rules, save the view to a text file. The
// session adds entries of its own below them.
class ViewActions : public QObject
{
    Q_OBJECT

public:
    explicit ViewActions(ReceiveView *view);

    void addAction(QAction *action);
    QMenu *createMenu(QWidget *parent);

    // Writes the text as UTF-8; on failure returns false with the reason.
    static bool writeText(const QString &path, const QString &text, QString *error);

signals:
    void rulesEdited(const HighlightRuleList &rules);

private:
    void saveAs();
    void editRules();

    ReceiveView *view;
    QList<QPointer<QAction>> added;
};

#endif
