#include "send/filesender.h"

#include <QFileInfo>

FileSender::FileSender(Backlog backlog, QObject *parent)
    : QObject(parent)
    , backlog(std::move(backlog))
{
    timer.setInterval(2);
    connect(&timer, &QTimer::timeout, this, &FileSender::pump);
}

bool FileSender::start(const QString &path)
{
    if (isSending())
        return false;
    file.setFileName(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString();
        return false;
    }
    error.clear();
    sent = 0;
    total = file.size();
    timer.start();
    emit progressed(sent, total);
    return true;
}

void FileSender::cancel()
{
    if (isSending())
        finish(false);
}

QString FileSender::fileName() const
{
    return QFileInfo(file.fileName()).fileName();
}

void FileSender::pump()
{
    // A few chunks per tick: a transport without a queue (UDP) is not flooded.
    for (int chunks = 0; chunks < 8 && isSending(); ++chunks) {
        const qint64 queued = backlog();
        if (queued < 0) {
            finish(false, tr("The connection cannot send"));
            return;
        }
        if (queued >= MaxBacklog)
            return;
        if (file.atEnd()) {
            finish(true);
            return;
        }
        const QByteArray chunk = file.read(ChunkSize);
        if (chunk.isEmpty()) {
            finish(false, file.errorString());
            return;
        }
        emit chunkReady(chunk, sent);
        sent += chunk.size();
        emit progressed(sent, total);
    }
}

void FileSender::finish(bool complete, const QString &errorText)
{
    timer.stop();
    file.close();
    error = errorText;
    emit finished(complete);
}
