#include "view/receiveview.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>

#include "view/findbar.h"
#include "view/steadyscrollbar.h"
#include "view/viewactions.h"

namespace {

constexpr int margin = 4;
// A selected match longer than this is not offered as the next pattern.
constexpr qint64 maxSeedLength = 200;

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

// Flooded views take turns: all of a workspace's views drawn anew in one
// paint would hold the event loop for all of them at once.
class FloodTurns
{
public:
    // 0 if a frame may be drawn now (and it is counted), or else the
    // milliseconds until the next turn.
    int take()
    {
        if (!clock.isValid())
            clock.start();
        const qint64 now = clock.elapsed();
        if (now / TurnMs != turn) {
            turn = now / TurnMs;
            taken = 0;
        }
        if (taken < FramesPerTurn) {
            ++taken;
            return 0;
        }
        return int(TurnMs - now % TurnMs);
    }

private:
    static constexpr int TurnMs = 20;
    static constexpr int FramesPerTurn = 4;
    QElapsedTimer clock;
    qint64 turn = -1;
    int taken = 0;
};

FloodTurns &floodTurns()
{
    static FloodTurns turns;
    return turns;
}

} // namespace

ReceiveView::ReceiveView(QWidget *parent)
    : QAbstractScrollArea(parent)
    , layouts(store, highlighter)
    , rowMap(store, layouts)
    , finder(new FindBar(this))
    , actions(new ViewActions(this))
    , dragScroll(new QTimer(this))
    , scrollBar(new SteadyScrollBar(this))
    , floodFrame(new QTimer(this))
{
    setVerticalScrollBar(scrollBar);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setCursor(Qt::IBeamCursor);
    setAccessibleName(tr("Received data"));
    finder->hide();
    connect(finder, &FindBar::patternChanged, this, &ReceiveView::searchChanged);
    connect(finder, &FindBar::nextRequested, this, &ReceiveView::findNext);
    connect(finder, &FindBar::previousRequested, this, &ReceiveView::findPrevious);
    connect(finder, &FindBar::closeRequested, this, &ReceiveView::closeFindBar);
    connect(actions, &ViewActions::rulesEdited, this, [this](const HighlightRuleList &rules) {
        setHighlightRules(rules);
        emit highlightRulesEdited();
    });
    // While a drag selection is held above or below the text, it scrolls.
    dragScroll->setInterval(50);
    connect(dragScroll, &QTimer::timeout, this, [this] {
        scrollRows(dragPoint.y() < 0 ? -1 : 1);
        dragTo(dragPoint);
    });
    floodFrame->setSingleShot(true);
    floodFrame->setTimerType(Qt::PreciseTimer);
    connect(floodFrame, &QTimer::timeout, this, &ReceiveView::repaintFlooded);
    placeTop(true);
}

ReceiveView::~ReceiveView() = default;

// ---------------------------------------------------------------------------
// Content

void ReceiveView::append(QStringView text, const TextStyle &style)
{
    if (text.isEmpty())
        return;
    noteChange(tailStart >= 0 ? tailStart : store.end());
    if (tailStart >= 0) {
        store.truncate(tailStart);
        tailStart = -1;
    }
    store.append(text, style);
    changed = true;
}

void ReceiveView::noteChange(qint64 position)
{
    firstChange = firstChange < 0 ? position : qMin(firstChange, position);
}

void ReceiveView::setTail(const QString &text, const TextStyle &style)
{
    noteChange(tailStart >= 0 ? tailStart : store.end());
    if (tailStart >= 0)
        store.truncate(tailStart);
    tailStart = text.isEmpty() ? -1 : store.end();
    store.append(text, style);
    changed = true;
}

void ReceiveView::flush(qint64 bufferLimit)
{
    if (!changed)
        return;
    changed = false;
    const qint64 changedFrom = std::exchange(firstChange, -1);
    // A cut moves the text under a user who scrolled up; as with Qt's text
    // views, the next data then brings the view to the end, unless the user
    // is searching.
    const bool toEnd = (following || scrollToEndOnce) && !finder->isVisible();
    scrollToEndOnce = false;
    const bool cut = store.cutToLimit(bufferLimit) > 0;
    if (cut)
        scrollToEndOnce = true;
    keepInStore();
    if (finder->isVisible())
        updateFindCount();
    if (!isVisible()) {
        placeLater(toEnd);
        return;
    }
    if (finder->isVisible()) {
        placeTop(toEnd);
        viewport()->update();
        return;
    }
    // Text that floods in is placed when its frame is drawn, not at every
    // refresh: placing the end lays out a page of lines. The end lies a page
    // or more away once the last line is two pages below the top, which
    // takes no layout to know.
    if (cut || floodFrame->isActive() || (toEnd && store.lastLine() - top.line > 2 * pageRows())) {
        placeLater(toEnd);
        repaintFlooded();
        return;
    }
    const Place before = top;
    placeTop(toEnd);
    repaintChanges(before, changedFrom);
}

// Until then, a shown view keeps the place it was drawn at, brought back
// into the store if a cut took it away, for the mouse and keys to work on.
void ReceiveView::placeLater(bool atEnd)
{
    following = atEnd;
    placeStale = true;
    if (isVisible())
        top = rows().clamped(top);
}

// Text that moved by a page or more since the last refresh is drawn anew,
// but not more often than every FloodFrameMs: it moves too fast to be read,
// and a workspace of flooded views must not spend its event loop on frames
// nobody sees. The last state is always drawn.
void ReceiveView::repaintFlooded()
{
    qint64 wait = lastFloodFrame.isValid() ? FloodFrameMs - lastFloodFrame.elapsed() : 0;
    if (wait <= 0)
        wait = floodTurns().take();
    if (wait > 0) {
        if (!floodFrame->isActive())
            floodFrame->start(int(wait));
        return;
    }
    lastFloodFrame.start();
    viewport()->update();
}

// Only what changed is painted again: the rows that the view scrolled up by
// are moved on screen, and from the row before the first change (whose
// wrap may have moved) down, the rows are drawn anew. A user scrolled up
// away from the change sees nothing repainted.
void ReceiveView::repaintChanges(const Place &before, qint64 changedFrom)
{
    // Every line is a row at least, so more lines than a page between two
    // places means a page apart: nothing is laid out to find that out.
    const auto pagesApart = [this](const Place &from, const Place &to) { return to.line - from.line > pageRows(); };
    const QRect text = viewport()->rect().adjusted(0, margin, 0, 0);
    RowMap &map = rows();
    if (changedFrom < store.begin() || before.line < store.firstLine() || pagesApart(before, top)) {
        repaintFlooded();
        return;
    }
    const qreal shift = map.distance(before, top);
    if (shift >= text.height()) {
        repaintFlooded();
        return;
    }
    // Pixels can only be moved by whole pixels: with rows of a fractional
    // height everything is drawn anew.
    if (shift < 0 || shift != qRound(shift)) {
        viewport()->update();
        return;
    }
    if (shift > 0)
        viewport()->scroll(0, -qRound(shift), text);
    const Place changedRow = map.moved(map.placeOf(qMin(changedFrom, store.end())), -1);
    const qreal y = pagesApart(changedRow, top) ? 0 : margin + map.distance(top, changedRow);
    if (y < text.bottom())
        viewport()->update(QRect(0, qMax(0, qFloor(y)), text.width(), text.height()));
}

void ReceiveView::clear()
{
    store.clear();
    tailStart = -1;
    firstChange = -1;
    anchor = cursor = 0;
    top = Place();
    scrollToEndOnce = false;
    changed = false;
    tally.invalidate();
    placeTop(true);
    if (finder->isVisible())
        updateFindCount();
    viewport()->update();
}

// Positions that a cut or a replaced tail took away are brought back in.
void ReceiveView::keepInStore()
{
    anchor = std::clamp(anchor, store.begin(), store.end());
    cursor = std::clamp(cursor, store.begin(), store.end());
    if (tailStart >= 0)
        tailStart = std::max(tailStart, store.begin());
}

void ReceiveView::setHighlightRules(const HighlightRuleList &rules)
{
    if (rules == highlighter.rules())
        return;
    highlighter.setRules(rules);
    layouts.invalidate();
    viewport()->update();
}

// ---------------------------------------------------------------------------
// Places and scrolling

// Layouts are made for the view's font, width and palette as they are now.
void ReceiveView::prepareLayouts()
{
    layouts.setGeometry(font(), qMax(1, viewport()->width() - 2 * margin), viewport());
    layouts.setPalette(palette());
}

RowMap &ReceiveView::rows()
{
    prepareLayouts();
    return rowMap;
}

qreal ReceiveView::rowHeight() const
{
    return QFontMetricsF(font()).height();
}

int ReceiveView::pageRows() const
{
    return qMax(1, int((viewport()->height() - 2 * margin) / rowHeight()));
}

// Where the first row is when the last row is at the bottom.
ReceiveView::Place ReceiveView::endPlace()
{
    return rows().endPlace(viewport()->height() - 2 * margin);
}

qint64 ReceiveView::positionAt(const QPointF &point)
{
    return rows().positionAt(top, point - QPointF(margin, margin));
}

// The bar counts lines; its last step is the end place itself, which may lie
// within a line.
int ReceiveView::barMaximum(const Place &end) const
{
    return int(end.line - store.firstLine()) + (end.row > 0 ? 1 : 0);
}

void ReceiveView::placeTop(bool atEnd)
{
    placeStale = false;
    const Place end = endPlace();
    top = atEnd ? end : qMin(rows().clamped(top), end);
    following = top == end;
    syncScrollBar(end);
    layouts.trim();
}

void ReceiveView::setTop(Place place)
{
    const Place end = endPlace();
    top = qMin(place, end);
    following = top == end;
    syncScrollBar(end);
    viewport()->update();
}

void ReceiveView::syncScrollBar(const Place &end)
{
    const QScopedValueRollback<bool> quiet(syncing, true);
    const int maximum = barMaximum(end);
    scrollBar->setPosition(maximum, pageRows(), top == end ? maximum : int(top.line - store.firstLine()));
}

// The user moved the scroll bar.
void ReceiveView::scrollContentsBy(int, int)
{
    if (syncing)
        return;
    const Place end = endPlace();
    const int value = verticalScrollBar()->value();
    top = value >= barMaximum(end) ? end : Place{store.firstLine() + value, 0};
    following = top == end;
    viewport()->update();
}

void ReceiveView::scrollRows(int count)
{
    setTop(rows().moved(top, count));
}

void ReceiveView::reveal(qint64 position, bool centre)
{
    RowMap &map = rows();
    const Place place = map.placeOf(position);
    const bool below = map.moved(top, pageRows() - 1) < place;
    if (centre && (place < top || below))
        setTop(map.moved(place, -pageRows() / 3));
    else if (!centre && place < top)
        setTop(place);
    else if (!centre && below)
        setTop(map.moved(place, 1 - pageRows()));
}

void ReceiveView::wheelEvent(QWheelEvent *event)
{
    if (event->modifiers() & Qt::ControlModifier) {
        event->ignore();
        return;
    }
    wheelRemainder += event->angleDelta().y() * QApplication::wheelScrollLines();
    const int rows = wheelRemainder / 120;
    wheelRemainder -= rows * 120;
    if (rows != 0)
        scrollRows(-rows);
    event->accept();
}

// ---------------------------------------------------------------------------
// Painting

void ReceiveView::paintEvent(QPaintEvent *event)
{
    if (placeStale)
        placeTop(following);
    prepareLayouts();
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Text));
    const QRectF clip = event->rect();
    qreal y = margin - layouts.line(top.line).rowTop(top.row);
    for (qint64 n = top.line; n <= store.lastLine() && y < clip.bottom(); ++n) {
        const LineLayouts::Line &line = layouts.line(n);
        if (y + line.height >= clip.top())
            line.layout.draw(&painter, QPointF(margin, y), overlays(line), clip);
        y += line.height;
    }
    layouts.trim();
}

// Drawn over the text: highlight rule colours, find matches, the selection.
QVector<QTextLayout::FormatRange> ReceiveView::overlays(const LineLayouts::Line &line) const
{
    QVector<QTextLayout::FormatRange> ranges = line.highlights;
    auto add = [&](qint64 from, qint64 to, const QTextCharFormat &format) {
        from = qMax(from, line.start);
        to = qMin(to, line.end);
        if (from < to)
            ranges.append({int(from - line.start), int(to - from), format});
    };
    if (finder->isVisible() && matcher.isUsable()) {
        QTextCharFormat found;
        found.setBackground(QColor(255, 214, 0));
        found.setForeground(QColor(Qt::black));
        StoreSearch(store, matcher).forEach(line.start, line.end, [&](const TextMatch &match) {
            add(match.start, match.end(), found);
            return true;
        });
    }
    if (hasSelection()) {
        const QPalette::ColorGroup group = hasFocus() ? QPalette::Active : QPalette::Inactive;
        QTextCharFormat selected;
        selected.setBackground(palette().brush(group, QPalette::Highlight));
        selected.setForeground(palette().brush(group, QPalette::HighlightedText));
        add(selectionStart(), selectionEnd(), selected);
    }
    return ranges;
}

void ReceiveView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    placeFindBar();
    placeTop(following);
}

void ReceiveView::showEvent(QShowEvent *event)
{
    QAbstractScrollArea::showEvent(event);
    if (placeStale)
        placeTop(following);
}

void ReceiveView::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange
        || event->type() == QEvent::StyleChange) {
        placeTop(following);
        viewport()->update();
    }
}

// ---------------------------------------------------------------------------
// Selection

QString ReceiveView::selectedText() const
{
    return store.text(selectionStart(), selectionEnd());
}

void ReceiveView::select(qint64 from, qint64 to)
{
    anchor = std::clamp(from, store.begin(), store.end());
    cursor = std::clamp(to, store.begin(), store.end());
    viewport()->update();
}

void ReceiveView::selectAll()
{
    select(store.begin(), store.end());
}

void ReceiveView::copy() const
{
    if (hasSelection())
        QGuiApplication::clipboard()->setText(selectedText());
}

void ReceiveView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const qint64 position = positionAt(event->position());
    select((event->modifiers() & Qt::ShiftModifier) ? anchor : position, position);
    selecting = true;
}

void ReceiveView::mouseMoveEvent(QMouseEvent *event)
{
    if (!selecting)
        return;
    dragPoint = event->position();
    const bool outside = dragPoint.y() < 0 || dragPoint.y() > viewport()->height();
    if (!outside)
        dragScroll->stop();
    else if (!dragScroll->isActive())
        dragScroll->start();
    dragTo(dragPoint);
}

void ReceiveView::dragTo(const QPointF &point)
{
    select(anchor, positionAt(point));
}

void ReceiveView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    selecting = false;
    dragScroll->stop();
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (hasSelection() && clipboard->supportsSelection())
        clipboard->setText(selectedText(), QClipboard::Selection);
}

void ReceiveView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const qint64 position = positionAt(event->position());
    const qint64 line = store.lineAt(position);
    qint64 from = position;
    qint64 to = position;
    while (from > store.lineStart(line) && isWordCharacter(store.at(from - 1)))
        --from;
    while (to < store.lineEnd(line) && isWordCharacter(store.at(to)))
        ++to;
    select(from, to);
}

// ---------------------------------------------------------------------------
// Keys

bool ReceiveView::event(QEvent *event)
{
    // The view's own keys win over shortcuts of the window (Edit > Find).
    if (event->type() == QEvent::ShortcutOverride) {
        auto *key = static_cast<QKeyEvent *>(event);
        const bool own = key->matches(QKeySequence::Copy) || key->matches(QKeySequence::SelectAll)
            || key->matches(QKeySequence::Find) || key->key() == Qt::Key_F3;
        if (own) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void ReceiveView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (event->matches(QKeySequence::Find)) {
        openFindBar();
    } else if (event->key() == Qt::Key_F3) {
        // Only F3: Ctrl+G, Find Next elsewhere, goes to the device as BEL.
        if (event->modifiers() & Qt::ShiftModifier)
            findPrevious();
        else
            findNext();
    } else if (moveCursor(event)) {
        // Shift with a movement key: the selection grew or shrank.
    } else {
        const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
        const bool plain = modifiers == Qt::NoModifier;
        const bool control = modifiers == Qt::ControlModifier;
        switch (event->key()) {
        case Qt::Key_Space:
            if (modifiers & ~Qt::ShiftModifier)
                event->ignore();
            else
                scrollRows(modifiers ? 1 - pageRows() : pageRows() - 1);
            break;
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown: {
            const bool page = event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
            const bool up = event->key() == Qt::Key_Up || event->key() == Qt::Key_PageUp;
            if (plain)
                scrollRows((page ? pageRows() - 1 : 1) * (up ? -1 : 1));
            else
                event->ignore();
            break;
        }
        case Qt::Key_Home:
        case Qt::Key_End:
            if (plain || control)
                setTop(event->key() == Qt::Key_Home ? Place{store.firstLine(), 0} : endPlace());
            else
                event->ignore();
            break;
        default:
            // Typed text goes on to the session.
            event->ignore();
        }
    }
}

// Shift with an arrow, Home, End or a page key moves the selection's end.
bool ReceiveView::moveCursor(const QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (!(modifiers & Qt::ShiftModifier) || (modifiers & ~(Qt::ShiftModifier | Qt::ControlModifier)))
        return false;
    const bool control = modifiers & Qt::ControlModifier;
    RowMap &map = rows();
    // Without a selection, keys select from the top of the page when the
    // last click is off screen.
    if (!hasSelection() && (cursor < map.positionOf(top) || map.moved(top, pageRows()) < map.placeOf(cursor)))
        anchor = cursor = map.positionOf(top);
    qint64 to = cursor;
    switch (event->key()) {
    case Qt::Key_Left: to = qMax(store.begin(), cursor - 1); break;
    case Qt::Key_Right: to = qMin(store.end(), cursor + 1); break;
    case Qt::Key_Up: to = map.rowMove(cursor, -1); break;
    case Qt::Key_Down: to = map.rowMove(cursor, 1); break;
    case Qt::Key_PageUp: to = map.rowMove(cursor, 1 - pageRows()); break;
    case Qt::Key_PageDown: to = map.rowMove(cursor, pageRows() - 1); break;
    case Qt::Key_Home: to = control ? store.begin() : map.positionOf(map.placeOf(cursor)); break;
    case Qt::Key_End: to = control ? store.end() : map.rowEnd(cursor); break;
    default:
        return false;
    }
    select(anchor, to);
    reveal(to, false);
    return true;
}

// ---------------------------------------------------------------------------
// Context menu

void ReceiveView::addContextAction(QAction *action)
{
    actions->addAction(action);
}

QMenu *ReceiveView::createContextMenu()
{
    return actions->createMenu(this);
}

void ReceiveView::contextMenuEvent(QContextMenuEvent *event)
{
    QScopedPointer<QMenu> menu(createContextMenu());
    menu->exec(event->globalPos());
}

// ---------------------------------------------------------------------------
// Find

void ReceiveView::openFindBar()
{
    if (!finder->isVisible()) {
        finder->show();
        placeFindBar();
        placeTop(following);
    }
    const QString selected = selectionEnd() - selectionStart() <= maxSeedLength ? selectedText() : QString();
    finder->startWith(selected.contains(QLatin1Char('\n')) ? QString() : selected);
    updateFindCount();
    viewport()->update();
}

void ReceiveView::closeFindBar()
{
    finder->hide();
    placeFindBar();
    placeTop(following);
    setFocus();
    viewport()->update();
}

void ReceiveView::placeFindBar()
{
    const int height = finder->isVisible() ? finder->sizeHint().height() : 0;
    setViewportMargins(0, 0, 0, height);
    const QRect area = viewport()->geometry();
    finder->setGeometry(area.left(), area.bottom() + 1, area.width(), height);
}

// Typing looks from the match in hand (or the top of the view) on, so the
// match stays while it still fits.
void ReceiveView::searchChanged()
{
    matcher = TextMatcher(finder->pattern());
    tally.invalidate();
    if (!matcher.isValid()) {
        finder->showError(matcher.errorText());
        viewport()->update();
        return;
    }
    showMatch(hasSelection() ? selectionStart() : rows().positionOf(top), false);
}

void ReceiveView::findNext()
{
    if (finder->isVisible() && matcher.isUsable())
        showMatch(hasSelection() ? selectionEnd() : rows().positionOf(top), false);
    else
        openFindBar();
}

void ReceiveView::findPrevious()
{
    if (finder->isVisible() && matcher.isUsable())
        showMatch(hasSelection() ? selectionStart() : rows().positionOf(top), true);
    else
        openFindBar();
}

// The match from the place on (or before it), wrapping around the ends.
void ReceiveView::showMatch(qint64 from, bool backward)
{
    const StoreSearch search(store, matcher);
    TextMatch match = backward ? search.previous(from) : search.next(from);
    if (!match.isValid())
        match = backward ? search.previous(store.end()) : search.next(store.begin());
    if (match.isValid()) {
        select(match.start, match.end());
        reveal(match.start, true);
    }
    updateFindCount();
    viewport()->update();
}

void ReceiveView::updateFindCount()
{
    if (!matcher.isUsable()) {
        if (matcher.isValid())
            finder->showCount(0, 0);
        return;
    }
    tally.update(store, matcher);
    qint64 index = 0;
    if (hasSelection()) {
        const TextMatch match = StoreSearch(store, matcher).next(selectionStart());
        if (match.start == selectionStart() && match.end() == selectionEnd())
            index = tally.countBefore(store, matcher, match.start) + 1;
    }
    finder->showCount(index, tally.total());
}
