#include "command.h"

#include "configfiles/applyconfig.h"
#include "configfiles/gameinstallation.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

int runApply(CommandContext &context)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(u"NAME"_s, u"The configuration file to apply, a bare file name "
                                            "in the configuration directory."_s);
    const QCommandLineOption backupOption(
        u"backup"_s, u"Keep each section it replaces in a backup file in the configuration "
                     "directory."_s);
    const QCommandLineOption targetOption(
        u"target"_s, u"A user.ini to change; repeat for several. Default: every user.ini the "
                     "game reads from the game directory."_s,
        u"FILE"_s);
    const QCommandLineOption forceOption(
        u"force"_s, u"Apply even while the game is running, which overwrites the list when it "
                    "quits."_s);
    parser.addOptions({backupOption, targetOption, forceOption});
    context.parse(parser, 1);
    context.loadOptions();

    // Every directory the apply needs must be known before anything is touched.
    QStringList targets;
    for (const QString &target : parser.values(targetOption))
        targets.append(QDir::toNativeSeparators(QFileInfo(target).absoluteFilePath()));
    targets.removeDuplicates();
    if (targets.isEmpty())
        targets = GameUserIniFiles(context.gameDir());
    context.configDir();

    if (!ApplyConfiguration(parser.positionalArguments().constFirst(), parser.isSet(backupOption),
                            targets, !parser.isSet(forceOption)))
        return ExitStatus::Failed;
    for (const QString &target : targets)
        printLine(target);
    return ExitStatus::Success;
}

const CommandRegistration registration{
    {u"apply"_s, u"Puts a configuration's bot list into the game's user.ini files."_s, runApply}};

} // namespace
