#include "app/fileopenrequests.h"

#include <QFileOpenEvent>

FileOpenRequests::FileOpenRequests(QObject *application) : QObject(application)
{
    application->installEventFilter(this);
}

void FileOpenRequests::setHandler(Handler newHandler)
{
    handler = std::move(newHandler);
    if (!handler)
        return;
    const QStringList waiting = std::exchange(pending, {});
    for (const QString &fileName : waiting)
        handler(fileName);
}

bool FileOpenRequests::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::FileOpen)
        return QObject::eventFilter(watched, event);
    const QString fileName = static_cast<QFileOpenEvent *>(event)->file();
    if (fileName.isEmpty())
        return false;
    if (handler)
        handler(fileName);
    else
        pending << fileName;
    return true;
}
