#include "view/findbar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>

#include "common/statuscolors.h"

FindBar::FindBar(QWidget *parent)
    : QWidget(parent)
    , edit(new QLineEdit(this))
    , regexBox(new QToolButton(this))
    , caseBox(new QToolButton(this))
    , previousButton(new QToolButton(this))
    , nextButton(new QToolButton(this))
    , countLabel(new QLabel(this))
    , typingPause(new QTimer(this))
{
    setObjectName(QStringLiteral("findBar"));
    setAutoFillBackground(true);
    edit->setObjectName(QStringLiteral("findEdit"));
    edit->setPlaceholderText(tr("Find"));
    edit->setClearButtonEnabled(true);
    edit->installEventFilter(this);
    // Short toggles, so that the bar fits a narrow session.
    regexBox->setObjectName(QStringLiteral("findRegex"));
    regexBox->setText(QStringLiteral(".*"));
    regexBox->setToolTip(tr("Regular expression"));
    caseBox->setObjectName(QStringLiteral("findCase"));
    caseBox->setText(QStringLiteral("Aa"));
    caseBox->setToolTip(tr("Match case"));
    for (QToolButton *toggle : {regexBox, caseBox}) {
        toggle->setCheckable(true);
        toggle->setAccessibleName(toggle->toolTip());
    }
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 12);
    countLabel->setObjectName(QStringLiteral("findCount"));
    previousButton->setArrowType(Qt::UpArrow);
    previousButton->setToolTip(tr("Previous match (Shift+F3)"));
    nextButton->setArrowType(Qt::DownArrow);
    nextButton->setToolTip(tr("Next match (F3)"));
    auto *closeButton = new QToolButton(this);
    closeButton->setText(QStringLiteral("\u2715"));
    closeButton->setAutoRaise(true);
    closeButton->setToolTip(tr("Close the find bar (Escape)"));

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(edit, 2);
    for (QWidget *widget : std::initializer_list<QWidget *>{previousButton, nextButton, regexBox, caseBox})
        layout->addWidget(widget);
    layout->addWidget(countLabel, 1);
    layout->addWidget(closeButton);
    previousButton->setAccessibleName(previousButton->toolTip());
    nextButton->setAccessibleName(nextButton->toolTip());
    closeButton->setAccessibleName(closeButton->toolTip());

    // Searching a full buffer takes a moment, so typing is waited out.
    typingPause->setSingleShot(true);
    typingPause->setInterval(150);
    connect(typingPause, &QTimer::timeout, this, &FindBar::patternChanged);
    connect(edit, &QLineEdit::textEdited, typingPause, qOverload<>(&QTimer::start));
    for (QToolButton *toggle : {regexBox, caseBox})
        connect(toggle, &QToolButton::toggled, this, &FindBar::patternChanged);
    connect(previousButton, &QToolButton::clicked, this, &FindBar::previousRequested);
    connect(nextButton, &QToolButton::clicked, this, &FindBar::nextRequested);
    connect(closeButton, &QToolButton::clicked, this, &FindBar::closeRequested);
    setFocusProxy(edit);
}

SearchPattern FindBar::pattern() const
{
    return {edit->text(), regexBox->isChecked(), caseBox->isChecked()};
}

void FindBar::startWith(const QString &text)
{
    if (!text.isEmpty() && text != edit->text()) {
        edit->setText(text);
        emit patternChanged();
    }
    edit->selectAll();
    edit->setFocus();
}

void FindBar::showCount(qint64 index, qint64 total)
{
    countLabel->setPalette(QPalette());
    countLabel->setToolTip(QString());
    if (edit->text().isEmpty())
        countLabel->clear();
    else if (total == 0)
        countLabel->setText(tr("No matches"));
    else if (index > 0)
        countLabel->setText(tr("%1 of %2").arg(index).arg(total));
    else
        countLabel->setText(tr("%n match(es)", nullptr, int(qMin<qint64>(total, INT_MAX))));
}

void FindBar::showError(const QString &error)
{
    countLabel->setText(tr("Invalid expression"));
    countLabel->setToolTip(error);
    QPalette red = countLabel->palette();
    red.setColor(QPalette::WindowText, StatusColors::bad(palette()));
    countLabel->setPalette(red);
}

bool FindBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == edit && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool back = key->modifiers() & Qt::ShiftModifier;
        switch (key->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_F3:
            // Typed but not searched yet: the first press searches.
            if (typingPause->isActive()) {
                typingPause->stop();
                emit patternChanged();
                return true;
            }
            if (back)
                emit previousRequested();
            else
                emit nextRequested();
            return true;
        case Qt::Key_Escape:
            emit closeRequested();
            return true;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}
