#include "app/commandline.h"

#include <QCommandLineParser>
#include <QFileInfo>

CommandLine CommandLine::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(tr("Terminal for serial ports and simple network links."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addPositionalArgument(tr("document|port"),
                                 tr("A session document (.qvn) to open, or the serial port to start on."),
                                 tr("[document|port]"));

    CommandLine result;
    if (!parser.parse(arguments)) {
        result.action = Fail;
        result.output = parser.errorText() + QLatin1Char('\n')
                        + tr("Try '%1 --help' for more information.").arg(QFileInfo(arguments.value(0)).fileName());
        return result;
    }
    if (parser.isSet(help) || parser.isSet(QStringLiteral("help-all"))) {
        result.action = ShowHelp;
        result.output = parser.helpText();
        return result;
    }
    if (parser.isSet(version)) {
        result.action = ShowVersion;
        result.output = QStringLiteral("%1 %2\n").arg(QCoreApplication::applicationName(),
                                                      QCoreApplication::applicationVersion());
        return result;
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.isEmpty())
        return result;
    const QFileInfo file(positional.first());
    if (file.isFile() && file.suffix().compare(QLatin1String("qvn"), Qt::CaseInsensitive) == 0) {
        result.documentFile = file.absoluteFilePath();
    } else {
        result.startsPort = true;
        result.portName = positional.first();
    }
    return result;
}
