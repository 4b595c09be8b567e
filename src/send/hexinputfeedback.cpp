#include "send/hexinputfeedback.h"

#include <QLabel>
#include <QPlainTextEdit>

#include "session/chunkrenderer.h"
#include "session/sendencoder.h"

namespace {

bool isHexDigit(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || (c >= QLatin1Char('a') && c <= QLatin1Char('f'))
        || (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
}

} // namespace

HexInputCheck checkHexInput(const QString &text)
{
    HexInputCheck check;
    SendOptions options;
    options.hexMode = true;
    check.bytes = encodeSendText(text, options).bytes;

    // Walk the data part as the parser does: spaces between pairs are
    // skipped, every other character is one digit of a pair.
    const int commentAt = text.indexOf(QStringLiteral("//"));
    const int end = commentAt < 0 ? text.size() : commentAt;
    int pos = 0;
    while (pos < end) {
        while (pos < end && text.at(pos) == QLatin1Char(' '))
            ++pos;
        for (int digit = pos; digit < qMin(pos + 2, end); ++digit) {
            if (isHexDigit(text.at(digit)))
                continue;
            if (!check.invalid.isEmpty() && check.invalid.last().start + check.invalid.last().length == digit)
                ++check.invalid.last().length;
            else
                check.invalid.append({digit, 1});
        }
        pos += 2;
    }
    return check;
}

QString hexSendHint(const QByteArray &bytes, int shownBytes)
{
    QString shown = toHexString(bytes.left(shownBytes)).trimmed();
    if (bytes.size() > shownBytes)
        shown += QStringLiteral(" …");
    const QString hint = bytes.size() == 1 ? HexInputMarker::tr("1 byte: %1").arg(shown)
                                           : HexInputMarker::tr("%1 bytes: %2").arg(bytes.size()).arg(shown);
    return hint.trimmed();
}

HexInputMarker::HexInputMarker(QPlainTextEdit *box, QLabel *hint, QObject *parent)
    : QObject(parent)
    , box(box)
    , hint(hint)
{
    hint->setVisible(false);
    connect(box, &QPlainTextEdit::textChanged, this, &HexInputMarker::refresh);
}

void HexInputMarker::setHexMode(bool on)
{
    hexMode = on;
    refresh();
}

void HexInputMarker::refresh()
{
    QList<QTextEdit::ExtraSelection> marks;
    const QString text = hexMode ? box->toPlainText() : QString();
    hint->setVisible(hexMode && !text.isEmpty());
    if (hint->isVisibleTo(hint->parentWidget())) {
        const HexInputCheck check = checkHexInput(text);
        hint->setText(hexSendHint(check.bytes));
        // A pasted wall of text must not turn every keystroke into thousands of marks.
        const int maxMarks = 1000;
        for (const HexInputCheck::Run &run : check.invalid.mid(0, maxMarks)) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(box->document());
            mark.cursor.setPosition(run.start);
            mark.cursor.setPosition(run.start + run.length, QTextCursor::KeepAnchor);
            mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
            mark.format.setUnderlineColor(Qt::red);
            marks.append(mark);
        }
    }
    box->setExtraSelections(marks);
}
