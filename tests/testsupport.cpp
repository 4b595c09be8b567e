#include "testsupport.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>
#include <QThread>

IsolatedEnvironment::IsolatedEnvironment()
{
    QStandardPaths::setTestModeEnabled(true);
    qputenv("HOME", dir.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (dir.path() + QStringLiteral("/config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", (dir.path() + QStringLiteral("/data")).toLocal8Bit());
    for (auto format : {QSettings::NativeFormat, QSettings::IniFormat}) {
        QSettings::setPath(format, QSettings::UserScope, dir.path() + QStringLiteral("/settings"));
        QSettings::setPath(format, QSettings::SystemScope, dir.path() + QStringLiteral("/system"));
    }
    QCoreApplication::setOrganizationName(QStringLiteral("VERDANE"));
    QCoreApplication::setApplicationName(QStringLiteral("Quorvane"));
}

SocatPair::SocatPair() = default;

SocatPair::~SocatPair()
{
    kill();
}

bool SocatPair::available()
{
    return !QStandardPaths::findExecutable(QStringLiteral("socat")).isEmpty();
}

bool SocatPair::start()
{
    if (!available())
        return false;
    // No pipes to socat: the event loop under test polls only the ports.
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral("socat"),
                  {QStringLiteral("pty,raw,echo=0,link=%1").arg(portA()),
                   QStringLiteral("pty,raw,echo=0,link=%1").arg(portB())});
    if (!process.waitForStarted(3000))
        return false;
    QDeadlineTimer deadline(5000);
    while (!deadline.hasExpired()) {
        if (QFile::exists(portA()) && QFile::exists(portB()))
            return true;
        QThread::msleep(20);
    }
    return false;
}

void SocatPair::kill()
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.kill();
    process.waitForFinished(3000);
    // Killed, socat leaves its links behind, pointing at ptys that the next
    // pair may be given: the device nodes go, as an adapter's would.
    QFile::remove(portA());
    QFile::remove(portB());
}
