#ifndef QUORVANE_RECEIVEVIEW_H
#define QUORVANE_RECEIVEVIEW_H

#include <QAbstractScrollArea>
#include <QElapsedTimer>

#include "view/highlightrules.h"
#include "view/linelayouts.h"
#include "view/linestore.h"
#include "view/rowmap.h"
#include "view/textsearch.h"

class FindBar;
class QMenu;
class QTimer;
class SteadyScrollBar;
class ViewActions;

// The read-only view of a session's traffic. Text lives in a bounded line
// store; only the lines on screen are laid out (wrapped to the width) and
// painted, and the view repaints once per flush() that brought a change.
//
// It follows the end while the user is at the end; a user who scrolled up
// keeps the place as data arrives, and so does one who is searching. Keys
// that type text are left to the parent (the session sends them); Space
// pages down on its press, as in Qt's read-only text views.
class ReceiveView : public QAbstractScrollArea
{
    Q_OBJECT
    Q_PROPERTY(QString plainText READ toPlainText)

public:
    explicit ReceiveView(QWidget *parent = nullptr);
    ~ReceiveView() override;

    // Text is shown as it stands, never read as markup.
    void append(QStringView text, const TextStyle &style = {});
    // Text shown after everything appended, replaced by the next setTail()
    // and dropped by the next append().
    void setTail(const QString &text, const TextStyle &style = {});
    // Ends a refresh: past bufferLimit characters the first half of the
    // limit is cut (as often as needed), the end is followed, and the view
    // repaints if anything changed.
    void flush(qint64 bufferLimit);
    void clear();

    QString toPlainText() const { return store.toPlainText(); }
    qint64 characterCount() const { return store.size(); }

    bool hasSelection() const { return anchor != cursor; }
    QString selectedText() const;
    void selectAll();
    void copy() const;

    HighlightRuleList highlightRules() const { return highlighter.rules(); }
    void setHighlightRules(const HighlightRuleList &rules);

    FindBar *findBar() const { return finder; }
    void openFindBar();
    void closeFindBar();
    void findNext();
    void findPrevious();

    // Entries the session adds to the context menu.
    void addContextAction(QAction *action);
    QMenu *createContextMenu();

signals:
    // The user changed the highlight rules.
    void highlightRulesEdited();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    using Place = RowMap::Place;

    void prepareLayouts();
    RowMap &rows();
    qreal rowHeight() const;
    int pageRows() const;
    Place endPlace();
    qint64 positionAt(const QPointF &point);
    int barMaximum(const Place &end) const;
    void placeTop(bool atEnd);
    void placeLater(bool atEnd);
    void setTop(Place place);
    void syncScrollBar(const Place &end);
    void repaintChanges(const Place &before, qint64 changedFrom);
    void repaintFlooded();
    void scrollRows(int count);
    // Scrolls as little as needed, or puts the row a third down the page.
    void reveal(qint64 position, bool centre);

    qint64 selectionStart() const { return qMin(anchor, cursor); }
    qint64 selectionEnd() const { return qMax(anchor, cursor); }
    void select(qint64 from, qint64 to);
    bool moveCursor(const QKeyEvent *event);
    void dragTo(const QPointF &point);
    void keepInStore();
    void noteChange(qint64 position);
    QVector<QTextLayout::FormatRange> overlays(const LineLayouts::Line &line) const;

    void searchChanged();
    void showMatch(qint64 from, bool backward);
    void updateFindCount();
    void placeFindBar();

    LineStore store;
    Highlighter highlighter;
    LineLayouts layouts;
    RowMap rowMap;
    FindBar *finder;
    ViewActions *actions;
    TextMatcher matcher;
    MatchTally tally;

    Place top;   // the first row on screen
    bool following = true;
    bool scrollToEndOnce = false;
    bool changed = false;
    bool placeStale = false;
    bool syncing = false;
    qint64 tailStart = -1;
    qint64 firstChange = -1;   // where the text changed since the last flush
    qint64 anchor = 0;
    qint64 cursor = 0;
    bool selecting = false;
    QPointF dragPoint;
    QTimer *dragScroll;
    SteadyScrollBar *scrollBar;
    static constexpr int FloodFrameMs = 40;
    QTimer *floodFrame;
    QElapsedTimer lastFloodFrame;
    int wheelRemainder = 0;
};

#endif
