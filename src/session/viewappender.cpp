#include "session/viewappender.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextDocument>

ViewAppender::ViewAppender(QPlainTextEdit *view)
    : view(view)
{
}

void ViewAppender::append(const QString &text, const QColor &color)
{
    if (!pending.isEmpty() && pending.last().color == color)
        pending.last().text += text;
    else
        pending.append({text, color});
}

void ViewAppender::flush(int bufferLimit)
{
    if (pending.isEmpty())
        return;

    QScrollBar *bar = view->verticalScrollBar();
    const bool followEnd = bar->value() == bar->maximum() || scrollToEndOnce;

    QTextCursor cursor(view->document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    for (const Run &run : std::as_const(pending)) {
        QTextCharFormat format;
        if (run.color.isValid())
            format.setForeground(run.color);
        cursor.insertText(run.text, format);
    }
    cursor.endEditBlock();
    pending.clear();
    scrollToEndOnce = false;

    // characterCount() includes the final paragraph separator.
    if (view->document()->characterCount() - 1 > bufferLimit)
        cutHalf(bufferLimit);

    if (followEnd)
        bar->setValue(bar->maximum());
}

void ViewAppender::cutHalf(int bufferLimit)
{
    QTextCursor cursor(view->document());
    cursor.setPosition(0);
    cursor.setPosition(bufferLimit / 2, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    scrollToEndOnce = true;
}

void ViewAppender::clear()
{
    pending.clear();
    view->clear();
}
