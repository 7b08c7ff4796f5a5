// The commands over the bot list in the game's user.ini: importing it, and
// listing and restoring the backups the apply makes of it.

#include "command.h"
#include "rosterjson.h"

#include "configfiles/gameinstallation.h"
#include "configfiles/restorebackup.h"
#include "roster/rosterimport.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString absoluteFile(const QString &path)
{
    return QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
}

int runImport(CommandContext &context)
{
    QCommandLineParser parser;
    const QCommandLineOption fromOption(
        u"from"_s, u"The user.ini to read. Default: the first user.ini the game reads from the "
                   "game directory (System/User.ini where there is one)."_s,
        u"FILE"_s);
    parser.addOption(fromOption);
    context.parse(parser, 0);

    QString userIni;
    if (parser.isSet(fromOption)) {
        userIni = absoluteFile(parser.value(fromOption));
    } else {
        context.loadOptions();
        userIni = GameUserIniFiles(context.gameDir()).value(0);
        if (userIni.isEmpty())
            fail(u"Can't find user.ini in the game directory %1; give --from."_s.arg(
                context.gameDir()));
    }
    const RosterImport import = ImportRoster(userIni);
    ReportImportProblems(import, userIni);
    if (!import.sectionFound)
        return ExitStatus::Failed;
    printJson(rosterToJson(import.roster));
    return ExitStatus::Success;
}

int runBackups(CommandContext &context)
{
    QCommandLineParser parser;
    context.parse(parser, 0);
    context.loadOptions();
    const QString directory = context.existingConfigDir();

    QJsonArray list;
    for (const BackupFile &backup : ListBackups(directory))
        list.append(QJsonObject{{u"file"_s, backup.fileName},
                                {u"time"_s, backup.time.toString(Qt::ISODate)},
                                {u"folder"_s, backup.folder},
                                {u"bots"_s, QJsonArray::fromStringList(backup.botNames)}});
    printJson(list);
    return ExitStatus::Success;
}

int runRestore(CommandContext &context)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(u"FILE"_s, u"The backup to restore (see 'backups'), a bare file "
                                            "name in the configuration directory."_s);
    const QCommandLineOption targetOption(
        u"target"_s, u"The user.ini to restore it into. Default: the one of the game directory "
                     "the backup was made of."_s,
        u"FILE"_s);
    const QCommandLineOption forceOption(
        u"force"_s, u"Restore even while the game is running, which overwrites the list when it "
                    "quits."_s);
    parser.addOptions({targetOption, forceOption});
    context.parse(parser, 1);
    const QString name = configFileNameArgument(parser);
    context.loadOptions();
    const QString directory = context.configDir();

    QString target;
    if (parser.isSet(targetOption)) {
        target = absoluteFile(parser.value(targetOption));
    } else {
        const QList<BackupFile> backups = ListBackups(directory);
        const auto found = std::find_if(backups.begin(), backups.end(),
                                        [&](const BackupFile &b) { return b.fileName == name; });
        const BackupFile backup = found == backups.end() ? BackupFile{name, {}, {}, {}} : *found;
        target = BackupSource(backup, GameUserIniFiles(context.gameDir()));
        if (target.isEmpty())
            fail(u"Can't tell which user.ini of the game directory %1 was made of; choose one "
                 "with --target."_s.arg(name));
    }
    if (!RestoreBackup(name, target, !parser.isSet(forceOption)))
        return ExitStatus::Failed;
    printLine(target);
    return ExitStatus::Success;
}

const CommandRegistration registrations[] = {
    CommandRegistration{{u"import"_s, u"Prints the bot list of the game's user.ini as a roster."_s,
                         runImport}},
    CommandRegistration{{u"backups"_s,
                         u"Lists the backups of replaced bot lists, newest first."_s, runBackups}},
    CommandRegistration{{u"restore"_s, u"Puts a backup's bot list back into a user.ini."_s,
                         runRestore}},
};

} // namespace
