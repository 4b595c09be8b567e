#ifndef QUORVANE_FILEOPENREQUESTS_H
#define QUORVANE_FILEOPENREQUESTS_H

#include <functional>

#include <QObject>
#include <QStringList>

// Documents the desktop asks the running program to open: Finder on macOS
// sends them as events, not as arguments. Requests that arrive before a
// handler is set wait for it.
class FileOpenRequests : public QObject
{
public:
    using Handler = std::function<void(const QString &fileName)>;

    // Watches the application object it is given.
    explicit FileOpenRequests(QObject *application);

    void setHandler(Handler handler);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Handler handler;
    QStringList pending;
};

#endif
