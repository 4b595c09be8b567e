#ifndef QUORVANE_COMMANDLINE_H
#define QUORVANE_COMMANDLINE_H

#include <QCoreApplication>
#include <QString>
#include <QStringList>

// What the program was asked to do on its command line.
struct CommandLine {
    Q_DECLARE_TR_FUNCTIONS(CommandLine)

public:
    enum Action { Run, ShowHelp, ShowVersion, Fail };

    Action action = Run;
    QString documentFile; // an existing .qvn document to open
    bool startsPort = false;
    QString portName;     // otherwise the port the first session starts on
    QString output;       // the help or version text, or what was wrong

    // arguments[0] is the program. The first further argument is a session
    // document when it names an existing .qvn file, else a port name; the
    // rest are only logged.
    static CommandLine parse(const QStringList &arguments);
};

#endif
