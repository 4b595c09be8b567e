#ifndef QUORVANE_FINDBAR_H
#define QUORVANE_FINDBAR_H

#include <QWidget>

#include "view/textsearch.h"

class QLabel;
class QLineEdit;
class QTimer;
class QToolButton;

// The find bar under the receive view: the pattern, whether it is a regular
// expression and whether case matters, previous and next, the match count.
// Enter and F3 go to the next match, Shift with them to the previous one,
// Escape closes the bar.
class FindBar : public QWidget
{
    Q_OBJECT

public:
    explicit FindBar(QWidget *parent = nullptr);

    SearchPattern pattern() const;
    // Puts the text in and selects it, for typing over.
    void startWith(const QString &text);
    // index: 1-based place of the selected match, 0 when none is selected.
    void showCount(qint64 index, qint64 total);
    void showError(const QString &error);

signals:
    // The pattern or its options changed (after a short pause in typing).
    void patternChanged();
    void nextRequested();
    void previousRequested();
    void closeRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *edit;
    QToolButton *regexBox;
    QToolButton *caseBox;
    QToolButton *previousButton;
    QToolButton *nextButton;
    QLabel *countLabel;
    QTimer *typingPause;
};

#endif
