#include "session/viewappender.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace {

// A paragraph is laid out whole whenever it grows, so one endless line (hex
// without automatic line feeds, or a device that never sends a line break)
// would cost more with every refresh and hold a huge layout in memory. Such
// lines are cut into paragraphs of at most this many characters, after a
// blank near the end where there is one, so hex bytes and words stay whole.
constexpr qsizetype maxParagraphLength = 16384;
constexpr qsizetype blankSearchLength = 256;

// lineLength: characters already in the line that text continues; updated
// to the length of the line that the result leaves open.
QString breakLongLines(const QString &text, qsizetype &lineLength)
{
    QString result;
    qsizetype copied = 0;
    qsizetype lineStart = -lineLength;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('\n')) {
            lineStart = i + 1;
            continue;
        }
        if (i - lineStart < maxParagraphLength)
            continue;
        qsizetype breakAt = i;
        const qsizetype searchFloor = std::max({lineStart, copied, i - blankSearchLength});
        for (qsizetype j = i; j > searchFloor; --j) {
            if (text.at(j - 1) == QLatin1Char(' ')) {
                breakAt = j;
                break;
            }
        }
        result += QStringView(text).mid(copied, breakAt - copied);
        result += QLatin1Char('\n');
        copied = breakAt;
        lineStart = breakAt;
    }
    lineLength = text.size() - lineStart;
    if (result.isEmpty())
        return text;
    result += QStringView(text).mid(copied);
    return result;
}

} // namespace

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
    qsizetype lineLength = cursor.positionInBlock();
    cursor.beginEditBlock();
    for (const Run &run : std::as_const(pending)) {
        QTextCharFormat format;
        if (run.color.isValid())
            format.setForeground(run.color);
        cursor.insertText(breakLongLines(run.text, lineLength), format);
    }
    cursor.endEditBlock();
    pending.clear();
    scrollToEndOnce = false;

    // characterCount() includes the final paragraph separator.
    const int shown = view->document()->characterCount() - 1;
    if (shown > bufferLimit)
        cutHalves(shown, bufferLimit);

    if (followEnd)
        bar->setValue(bar->maximum());
}

// As many halves of the limit are cut as it takes to get under the limit, in
// one step, however far a burst went past it.
void ViewAppender::cutHalves(int shown, int bufferLimit)
{
    const int half = qMax(1, bufferLimit / 2);
    const int halves = (shown - bufferLimit + half - 1) / half;
    QTextCursor cursor(view->document());
    cursor.setPosition(0);
    cursor.setPosition(qMin(shown, halves * half), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    scrollToEndOnce = true;
}

void ViewAppender::clear()
{
    pending.clear();
    view->clear();
}
