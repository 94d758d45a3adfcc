#include "App/CommandLine.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace velto {

CommandLine CommandLine::parse(const QStringList &arguments)
{
    return {
        .expanded = arguments.contains("--expanded"_L1),
        .demoPeek = arguments.contains("--demo-peek"_L1),
        .welcome = arguments.contains("--welcome"_L1),
        .help = arguments.contains("--help"_L1) || arguments.contains("-h"_L1),
        .version = arguments.contains("--version"_L1) || arguments.contains("-v"_L1),
    };
}

QString helpText()
{
    return QCoreApplication::translate("CommandLine",
                                       "Usage: velto [options]\n"
                                       "A strip at the top of the screen that says what needs you.\n"
                                       "\n"
                                       "  --expanded   open the panel at the start\n"
                                       "  --demo-peek  show an example of a line that slides out\n"
                                       "  --welcome    show the welcome again\n"
                                       "  --version    print the version and end\n"
                                       "  --help       print this and end\n"
                                       "\n"
                                       "Rest the pointer on the strip, or press Control-Alt-N, to open the panel.\n");
}

} // namespace velto
