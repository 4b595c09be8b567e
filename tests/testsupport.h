#ifndef QUORVANE_TESTSUPPORT_H
#define QUORVANE_TESTSUPPORT_H

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// Points QSettings, QStandardPaths and HOME at a temporary folder so tests
// never touch the user's real settings or home. Create one per test program
// (in initTestCase) and keep it alive while the tests run.
class IsolatedEnvironment
{
public:
    IsolatedEnvironment();
    QString path() const { return dir.path(); }

private:
    QTemporaryDir dir;
};

// A socat pty pair: two linked serial devices in a temporary folder.
class SocatPair
{
public:
    SocatPair();
    ~SocatPair();

    static bool available();
    bool start();      // false if socat is missing or the links never appeared
    void kill();       // ends socat, as an unplugged adapter would
    QString portA() const { return dir.path() + QStringLiteral("/ttyA"); }
    QString portB() const { return dir.path() + QStringLiteral("/ttyB"); }

private:
    QTemporaryDir dir;
    QProcess process;
};

// Skips the current test when socat is missing, unless running under CI,
// where the missing tool is a failure.
#define QUORVANE_REQUIRE_SOCAT()                                                                \
    do {                                                                                        \
        if (!SocatPair::available()) {                                                          \
            if (qEnvironmentVariableIsSet("CI"))                                                \
                QFAIL("socat is not installed");                                                \
            QSKIP("socat is not installed: serial tests need a virtual port pair");             \
        }                                                                                       \
    } while (false)

#endif
