#ifndef QUORVANE_RECEIVEFEED_H
#define QUORVANE_RECEIVEFEED_H

#include <QTime>

#include "common/types.h"
#include "view/ansiparser.h"
#include "view/hexdump.h"
#include "view/textstyle.h"

class ChunkRenderer;
class ReceiveView;
struct FormatSetting;

// Puts a session's queued chunks on its receive view: the chunk renderer's
// pieces as they are (with ANSI colour sequences drawn when chosen), or
// received bytes as hex+ASCII rows when that view is chosen with the Hex
// format. Sent chunks and text always start on a line of their own.
class ReceiveFeed
{
public:
    ReceiveFeed(ReceiveView *view, ChunkRenderer *renderer);

    void show(const rxData &chunk, const FormatSetting &format);
    // Empties the view; hex rows count from offset 0 again.
    void clear();

private:
    void showRows(const rxData &chunk, const FormatSetting &format);
    void closeRow();

    ReceiveView *view;
    ChunkRenderer *renderer;
    HexDump dump;
    TextStyle rowStyle;
    QTime burstStart;
    AnsiParser ansi;
};

#endif
