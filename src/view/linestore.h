#ifndef QUORVANE_LINESTORE_H
#define QUORVANE_LINESTORE_H

#include <QByteArray>
#include <QString>
#include <QVector>

#include <deque>

#include "view/textstyle.h"

// The text a receive view holds: characters in fixed-size chunks, where each
// line starts, and the style runs. Positions and line numbers are absolute:
// they keep counting when text is cut from the front, so a place noted
// earlier still names the same character while it is held.
//
// A line here is the unit the view lays out: a received line, or a piece of
// at most MaxLineLength characters of a longer one (broken after a blank
// near the end where there is one). The pieces are joined again wherever
// text is taken out, so copied text has only the breaks that were received.
// A carriage return counts as a line break, as it does in Qt's text views;
// one followed by a line feed makes a single break with it.
//
// A chunk keeps its characters one byte each while they all fit Latin-1,
// which most serial traffic does, and two bytes each once one does not.
class LineStore
{
public:
    static constexpr qsizetype ChunkSize = 1 << 16;
    static constexpr qsizetype MaxLineLength = 4096;
    static constexpr qsizetype BlankSearchLength = 256;

    struct StyleRun {
        qint64 start;
        TextStyle style;
    };

    LineStore();

    void append(QStringView text, const TextStyle &style = {});
    // Drops everything from position on.
    void truncate(qint64 position);
    // While more than limit characters are held, drops the first half of the
    // limit; returns how many characters went.
    qint64 cutToLimit(qint64 limit);
    void clear();

    qint64 begin() const { return first; }
    qint64 end() const { return last; }
    qint64 size() const { return last - first; }
    // Counts clear() calls, so that whatever was derived from the text can
    // tell that absolute positions started again.
    quint64 generation() const { return clears; }

    QString text(qint64 from, qint64 to) const;
    QString toPlainText() const { return text(first, last); }
    QChar at(qint64 position) const;

    qint64 firstLine() const { return firstLineNumber; }
    qint64 lastLine() const { return firstLineNumber + qint64(starts.size()) - 1; }
    qint64 lineStart(qint64 line) const { return starts[size_t(line - firstLineNumber)]; }
    // Where the line's shown text ends: before its line break, if it has one.
    qint64 lineEnd(qint64 line) const;
    qint64 lineAt(qint64 position) const;

    // The runs that cover [from, to), the first one starting at from.
    QVector<StyleRun> styleRuns(qint64 from, qint64 to) const;

    // Chunks are numbered by position / ChunkSize; a search counts per chunk.
    qint64 firstChunk() const { return first / ChunkSize; }
    qint64 lastChunk() const { return last / ChunkSize; }

private:
    class Chunk
    {
    public:
        Chunk();
        qsizetype size() const { return wide ? utf16.size() : latin1.size(); }
        QChar at(qsizetype i) const { return wide ? utf16.at(i) : QChar(uchar(latin1.at(i))); }
        void append(QStringView text);
        void appendTo(QString &out, qsizetype from, qsizetype length) const;
        void truncate(qsizetype length);

    private:
        QByteArray latin1;
        QString utf16;
        bool wide = false;
    };

    Chunk &writableChunk();
    void breakLongLine();

    std::deque<Chunk> chunks;   // chunk k holds [chunkBase + k * ChunkSize, ...)
    qint64 chunkBase = 0;
    qint64 first = 0;
    qint64 last = 0;
    std::deque<qint64> starts;
    qint64 firstLineNumber = 0;
    std::deque<StyleRun> runs;    // before the first run: the plain style
    quint64 clears = 0;
    bool carriageReturnLast = false;   // a line feed that comes next is its pair
};

#endif
