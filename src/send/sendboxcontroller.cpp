#include "send/sendboxcontroller.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QVBoxLayout>

SendBoxController::SendBoxController(QPlainTextEdit *box, HistorySource history, QWidget *optionsParent)
    : QObject(box)
    , box(box)
    , history(std::move(history))
    , options(new QWidget(optionsParent))
    , enterSendsBox(new QCheckBox(tr("Enter sends"), options))
    , clearAfterSendBox(new QCheckBox(tr("Clear after send"), options))
{
    enterSendsBox->setObjectName(QStringLiteral("enterSendsBox"));
    enterSendsBox->setToolTip(tr("Enter sends the box and Shift+Enter breaks the line; Ctrl+Enter always sends"));
    clearAfterSendBox->setObjectName(QStringLiteral("clearAfterSendBox"));
    auto *layout = new QVBoxLayout(options);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(enterSendsBox);
    layout->addWidget(clearAfterSendBox);
    connect(enterSendsBox, &QCheckBox::toggled, this, &SendBoxController::optionsChanged);
    connect(clearAfterSendBox, &QCheckBox::toggled, this, &SendBoxController::optionsChanged);
    box->installEventFilter(this);
}

bool SendBoxController::enterSends() const
{
    return enterSendsBox->isChecked();
}

bool SendBoxController::clearAfterSend() const
{
    return clearAfterSendBox->isChecked();
}

void SendBoxController::setOptions(bool enterSends, bool clearAfterSend)
{
    const QSignalBlocker enterBlocker(enterSendsBox);
    const QSignalBlocker clearBlocker(clearAfterSendBox);
    enterSendsBox->setChecked(enterSends);
    clearAfterSendBox->setChecked(clearAfterSend);
}

void SendBoxController::sent()
{
    cursor.reset();
    if (clearAfterSend())
        box->clear();
}

bool SendBoxController::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == box && event->type() == QEvent::ShortcutOverride) {
        // Claim the keys before any window shortcut bound to them fires.
        if (handleKey(static_cast<QKeyEvent *>(event), true))
            event->accept();
        return false;
    }
    if (watched == box && event->type() == QEvent::KeyPress)
        return handleKey(static_cast<QKeyEvent *>(event), false);
    return QObject::eventFilter(watched, event);
}

bool SendBoxController::handleKey(QKeyEvent *event, bool justAsking)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool ctrl = modifiers == Qt::ControlModifier;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (ctrl || (modifiers == Qt::NoModifier && enterSends())) {
            if (!justAsking)
                emit sendRequested();
            return true;
        }
        if (modifiers == Qt::ShiftModifier && enterSends()) {
            // A plain line feed, not the paragraph separator Shift+Enter inserts.
            if (!justAsking)
                box->insertPlainText(QStringLiteral("\n"));
            return true;
        }
        return false;
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const bool oneLine = box->blockCount() <= 1;
        if (!ctrl && !(modifiers == Qt::NoModifier && oneLine))
            return false;
        if (justAsking)
            return true;
        const std::optional<QString> text = event->key() == Qt::Key_Up
            ? cursor.older(history(), box->toPlainText())
            : cursor.newer(history());
        if (text)
            show(*text);
        return true;
    }
    default:
        return false;
    }
}

void SendBoxController::show(const QString &text)
{
    box->setPlainText(text);
    box->moveCursor(QTextCursor::End);
}
