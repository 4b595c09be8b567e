#ifndef QUORVANE_FILESENDER_H
#define QUORVANE_FILESENDER_H

#include <functional>

#include <QFile>
#include <QObject>
#include <QTimer>

// Feeds a file's bytes to a transport in small chunks, only while the
// transport's own queue stays short, so a slow serial line never builds up
// an unbounded write buffer and the event loop keeps running.
class FileSender : public QObject
{
    Q_OBJECT

public:
    // Bytes the transport still holds; negative when it cannot take data.
    using Backlog = std::function<qint64()>;

    static constexpr qint64 ChunkSize = 1024;
    static constexpr qint64 MaxBacklog = 4096;

    explicit FileSender(Backlog backlog, QObject *parent = nullptr);

    bool start(const QString &path);
    void cancel();
    bool isSending() const { return timer.isActive(); }
    QString fileName() const;
    QString errorString() const { return error; }
    qint64 sentBytes() const { return sent; }
    qint64 totalBytes() const { return total; }

signals:
    // `offset` is where the chunk starts within the file.
    void chunkReady(const QByteArray &chunk, qint64 offset);
    void progressed(qint64 sent, qint64 total);
    // complete: every byte went out; otherwise cancelled or failed (errorString).
    void finished(bool complete);

private:
    void pump();
    void finish(bool complete, const QString &errorText = QString());

    Backlog backlog;
    QFile file;
    QTimer timer;
    QString error;
    qint64 sent = 0;
    qint64 total = 0;
};

#endif
