#include "view/receivefeed.h"

#include "session/chunkrenderer.h"
#include "session/portsettings.h"
#include "view/receiveview.h"

ReceiveFeed::ReceiveFeed(ReceiveView *view, ChunkRenderer *renderer)
    : view(view)
    , renderer(renderer)
{
}

void ReceiveFeed::show(const rxData &chunk, const FormatSetting &format)
{
    if (format.View.hexAscii && format.ReceiveMsgFormat == HEX && chunk.direction == RX) {
        showRows(chunk, format);
        return;
    }
    closeRow();
    const ChunkRenderer::Piece piece = renderer->renderForDisplay(chunk, format);
    if (!piece.show)
        return;
    const TextStyle style = TextStyle::inColour(piece.color);
    if (!format.View.ansiColours) {
        ansi.reset();
        view->append(piece.text, style);
        return;
    }
    for (const AnsiParser::Run &run : ansi.feed(piece.text, style))
        view->append(run.text, run.style);
}

// A pause longer than the feed interval starts a new row when automatic
// line feeds or time stamps are on, as it starts a new line of hex.
void ReceiveFeed::showRows(const rxData &chunk, const FormatSetting &format)
{
    const bool pauseSplits = format.AutoFeedLine || format.DisplayMsgTime;
    if (pauseSplits && (!burstStart.isValid() || chunk.time > burstStart.addMSecs(format.AutoFeedInterval))) {
        closeRow();
        burstStart = chunk.time;
    }
    if (!dump.hasOpenRow() && !renderer->displayEndsWithLineFeed())
        view->append(QStringLiteral("\n"));
    rowStyle = TextStyle::inColour(format.FormatDisplayColor ? format.ReceiveTextColor : QColor());
    const QString stamp = format.DisplayMsgTime ? chunk.time.toString(format.RxTimeFormat) : QString();
    const HexDump::Rows rows = dump.add(chunk.data, stamp);
    view->append(rows.complete, rowStyle);
    view->setTail(rows.open, rowStyle);
    // Whatever comes next starts on a line of its own: the rows end with a
    // line break, or the open row is closed with one first.
    renderer->restartDisplayLine();
}

void ReceiveFeed::closeRow()
{
    if (dump.hasOpenRow())
        view->append(dump.closeRow(), rowStyle);
}

void ReceiveFeed::clear()
{
    view->clear();
    dump.restart();
    ansi.reset();
    burstStart = QTime();
}
