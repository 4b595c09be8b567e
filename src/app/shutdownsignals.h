#ifndef QUORVANE_SHUTDOWNSIGNALS_H
#define QUORVANE_SHUTDOWNSIGNALS_H

#include <QObject>

// Turns the termination signals of the platform (SIGTERM, SIGHUP, SIGINT
// where there are such) into a Qt signal delivered by the event loop, so a
// logout, shutdown or kill ends the program as Quit does: logs written,
// preferences saved. One instance per process.
class ShutdownSignals : public QObject
{
    Q_OBJECT

public:
    explicit ShutdownSignals(QObject *parent = nullptr);
    ~ShutdownSignals() override;

signals:
    void shutdownRequested();
};

#endif
