#ifndef QUORVANE_SENDBOXCONTROLLER_H
#define QUORVANE_SENDBOXCONTROLLER_H

#include <functional>

#include <QObject>
#include <QStringList>

#include "send/sendhistorycursor.h"

class QCheckBox;
class QKeyEvent;
class QPlainTextEdit;
class QWidget;

// Console keys of a send box: Ctrl+Enter always sends, Enter sends when the
// "Enter sends" option is on (Shift+Enter then breaks the line), and
// Ctrl+Up/Ctrl+Down (plain Up/Down while the box holds one line) walk the
// send history. Owns the two option check boxes it shows.
class SendBoxController : public QObject
{
    Q_OBJECT

public:
    using HistorySource = std::function<QStringList()>;

    SendBoxController(QPlainTextEdit *box, HistorySource history, QWidget *optionsParent);

    QWidget *optionsWidget() const { return options; }
    bool enterSends() const;
    bool clearAfterSend() const;
    void setOptions(bool enterSends, bool clearAfterSend);

    // After a send from the box: clears it when asked and starts the next
    // history walk from the newest entry.
    void sent();

signals:
    void sendRequested();
    void optionsChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool handleKey(QKeyEvent *event, bool justAsking);
    void show(const QString &text);

    QPlainTextEdit *box;
    HistorySource history;
    SendHistoryCursor cursor;
    QWidget *options;
    QCheckBox *enterSendsBox;
    QCheckBox *clearAfterSendBox;
};

#endif
