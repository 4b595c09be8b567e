#ifndef QUORVANE_VIEWAPPENDER_H
#define QUORVANE_VIEWAPPENDER_H

#include <QColor>
#include <QString>
#include <QVector>

class QPlainTextEdit;

// Puts rendered traffic into the receive view cheaply: pieces of one refresh
// tick are collected, neighbours of the same colour merged, and the batch is
// inserted in one edit block. Text is inserted as plain characters with a
// character format, never parsed as markup, so "<" and "&" show as sent.
// Lines longer than 16384 characters are shown as several paragraphs.
class ViewAppender
{
public:
    explicit ViewAppender(QPlainTextEdit *view);

    void append(const QString &text, const QColor &color);
    // Inserts what was collected; then, while the document holds more than
    // bufferLimit characters, cuts the first half of the limit.
    void flush(int bufferLimit);
    void clear();

private:
    struct Run {
        QString text;
        QColor color;
    };

    void cutHalves(int shown, int bufferLimit);

    QPlainTextEdit *view;
    QVector<Run> pending;
    bool scrollToEndOnce = false;
};

#endif
