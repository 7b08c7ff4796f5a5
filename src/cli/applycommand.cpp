#include "command.h"

#include "configfiles/applyconfig.h"

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace {

int runApply(CommandContext &context)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(u"NAME"_s, u"The configuration file to apply."_s);
    const QCommandLineOption backupOption(
        u"backup"_s, u"Keep the section it replaces in a backup file in the configuration "
                     "directory."_s);
    parser.addOption(backupOption);
    context.parse(parser, 1);
    context.loadOptions();
    // Both directories must be known before anything is touched.
    context.gameDir();
    context.configDir();

    if (!ApplyConfiguration(parser.positionalArguments().constFirst(), parser.isSet(backupOption)))
        return ExitStatus::Failed;
    printLine(u"Completed"_s);
    return ExitStatus::Success;
}

const CommandRegistration registration{
    {u"apply"_s, u"Puts a configuration's bot list into the game's user.ini."_s, runApply}};

} // namespace
