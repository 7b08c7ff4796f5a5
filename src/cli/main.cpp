#include "command.h"

#include "configfiles/runerror.h"
#include "startup/programdirectory.h"

#include <QCommandLineParser>
#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

QString commandList()
{
    QString text = QStringLiteral("Commands:\n");
    for (const Command &command : commands())
        text += QStringLiteral("  %1  %2\n").arg(command.name, -10).arg(command.summary);
    return text;
}

} // namespace

// quorvane-cli [global options] <command> [command options]: the global
// options end at the command's name; everything after it belongs to the
// command, which also accepts the global options.
int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    NameApplication();

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Keeps bot lists for Unreal Tournament and applies them to the game."));
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOptions(globalOptionList());
    parser.addPositionalArgument(QStringLiteral("command"),
                                 QStringLiteral("The command to run; '<command> --help' "
                                                "describes it."));

    try {
        if (!parser.parse(QCoreApplication::arguments()))
            usageError(parser.errorText());
        if (parser.isSet(version)) {
            printLine(programName() + u' ' + QCoreApplication::applicationVersion());
            return ExitStatus::Success;
        }
        QStringList arguments = parser.positionalArguments();
        if (parser.isSet(help) || arguments.isEmpty()) {
            const QString usage = helpText(parser, programName()) + u"\n\n"_s + commandList();
            if (!parser.isSet(help)) {
                printError(usage.trimmed());
                return ExitStatus::Usage;
            }
            printLine(usage.trimmed());
            return ExitStatus::Success;
        }

        const QString name = arguments.takeFirst();
        const Command *command = findCommand(name);
        if (!command)
            usageError(QStringLiteral("unknown command '%1'; see '--help'").arg(name));
        GlobalOptions globals;
        takeGlobalOptions(parser, globals);
        CommandContext context(name, arguments, globals);
        return command->run(context);
    } catch (const CommandExit &exit) {
        return exit.status;
    } catch (const RunError &error) {
        printError(programName() + QStringLiteral(": ") + error.message());
        return ExitStatus::Failed;
    }
}
