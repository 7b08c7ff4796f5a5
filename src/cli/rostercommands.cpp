// The commands over configuration files: the default roster, saving,
// opening, describing and listing.

#include "command.h"
#include "rosterjson.h"

#include "configfiles/configfile.h"
#include "configfiles/runerror.h"
#include "roster/botroster.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

BotRoster defaultRoster()
{
    BotRoster roster;
    SetDefaults(roster);
    return roster;
}

// The roster a --roster argument names: a JSON file, or "-" for stdin.
BotRoster readRoster(const QString &source)
{
    const bool fromStdin = source == "-"_L1;
    QFile file(fromStdin ? QString() : source);
    const bool opened = fromStdin ? file.open(stdin, QIODevice::ReadOnly)
                                  : file.open(QIODevice::ReadOnly);
    const QString name = fromStdin ? u"stdin"_s : source;
    if (!opened)
        fail(u"%1: %2"_s.arg(name, file.errorString()));
    try {
        return rosterFromJson(file.readAll());
    } catch (const RosterJsonError &error) {
        fail(u"%1: %2"_s.arg(name, error.problem));
    }
}

int runDefaults(CommandContext &context)
{
    QCommandLineParser parser;
    context.parse(parser, 0);
    printJson(rosterToJson(defaultRoster()));
    return ExitStatus::Success;
}

int runSave(CommandContext &context)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(u"NAME"_s, u"A bare file name in the configuration directory, "
                                            "used as given (add \".qvn\")."_s);
    const QCommandLineOption rosterOption(u"roster"_s,
                                          u"The roster to save as JSON (see 'defaults'); \"-\" "
                                          "reads it from stdin. Default: the default roster."_s,
                                          u"FILE"_s);
    const QCommandLineOption forceOption(u"force"_s, u"Overwrite an existing file."_s);
    parser.addOptions({rosterOption, forceOption});
    context.parse(parser, 1);
    const QString name = configFileNameArgument(parser);

    BotRoster roster = parser.isSet(rosterOption) ? readRoster(parser.value(rosterOption))
                                                  : defaultRoster();
    context.loadOptions();
    const QString directory = context.configDir();
    const bool existed = QFileInfo::exists(directory + name);
    try {
        if (!SaveConfigAs(directory, name, parser.isSet(forceOption), roster))
            return ExitStatus::Failed;
    } catch (const RunError &error) {
        // The file is replaced in one step, so a failed write never leaves
        // half a file behind; say so, since losing one is what users fear.
        fail(u"quorvane-cli: "_s + error.message() + u"\nThe configuration was not saved"_s
             + (existed ? u"; the existing file is unchanged."_s : u"."_s));
    }
    printLine(directory + name);
    return ExitStatus::Success;
}

int runOpen(CommandContext &context)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(u"NAME"_s, u"The configuration file to read."_s);
    context.parse(parser, 1);
    const QString name = configFileNameArgument(parser);
    context.loadOptions();
    OpenConfiguration(context.configDir(), name, Roster());
    printJson(rosterToJson(Roster()));
    return ExitStatus::Success;
}

int runDescribe(CommandContext &context)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(u"NAME"_s, u"The configuration file to read."_s);
    context.parse(parser, 1);
    const QString name = configFileNameArgument(parser);
    context.loadOptions();
    printJson(ReadDescription(name, context.configDir()));
    return ExitStatus::Success;
}

int runList(CommandContext &context)
{
    QCommandLineParser parser;
    context.parse(parser, 0);
    context.loadOptions();
    const QString directory = context.existingConfigDir();

    QJsonArray list;
    const QStringList names = QDir(directory).entryList({u"*.qvn"_s}, QDir::Files,
                                                        QDir::Name | QDir::IgnoreCase);
    for (const QString &name : names)
        list.append(QJsonObject{{u"file"_s, name},
                                {u"description"_s, ReadDescription(name, directory)}});
    printJson(list);
    return ExitStatus::Success;
}

const CommandRegistration registrations[] = {
    CommandRegistration{{u"defaults"_s, u"Prints the default roster as JSON."_s, runDefaults}},
    CommandRegistration{{u"save"_s, u"Saves a roster as a configuration file."_s, runSave}},
    CommandRegistration{{u"open"_s, u"Prints a configuration file's roster as JSON."_s, runOpen}},
    CommandRegistration{{u"describe"_s, u"Prints a configuration file's description."_s,
                         runDescribe}},
    CommandRegistration{{u"list"_s, u"Lists the configuration files with their descriptions."_s,
                         runList}},
};

} // namespace
