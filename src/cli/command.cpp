#include "command.h"

#include "configfiles/configname.h"
#include "configfiles/fileops.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>

namespace {

QList<Command> &registry()
{
    static QList<Command> registered;
    return registered;
}

QString directoryArgument(const QString &path)
{
    return path.isEmpty() ? QString() : AddBackslash(QDir::toNativeSeparators(path));
}

// An empty path in options.ini reads back as a lone separator: no directory.
bool isUnset(const QString &directory)
{
    return directory.isEmpty() || directory == QString(QDir::separator());
}

void writeTo(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fputc('\n', stream);
}

} // namespace

QList<QCommandLineOption> globalOptionList()
{
    return {
        {QStringLiteral("program-dir"),
         QStringLiteral("Where options.ini, int.ini, pattern.ini and reports live (default: the "
                        "executable's directory, or the per-user data folder when the program "
                        "is installed or its directory is read-only)."),
         QStringLiteral("DIR")},
        {QStringLiteral("game-dir"),
         QStringLiteral("The game directory, instead of the one in options.ini."),
         QStringLiteral("DIR")},
        {QStringLiteral("config-dir"),
         QStringLiteral("The configuration directory, instead of the one in options.ini."),
         QStringLiteral("DIR")},
    };
}

void takeGlobalOptions(const QCommandLineParser &parser, GlobalOptions &globals)
{
    const auto take = [&](const QString &name, QString &field) {
        if (parser.isSet(name))
            field = parser.value(name);
    };
    take(QStringLiteral("program-dir"), globals.programDir);
    take(QStringLiteral("game-dir"), globals.gameDir);
    take(QStringLiteral("config-dir"), globals.configDir);
}

QString helpText(const QCommandLineParser &parser, const QString &usage)
{
    // The parser names the program by the path it was started with.
    QString text = parser.helpText().trimmed();
    const QString started = QCoreApplication::arguments().constFirst();
    const qsizetype at = text.indexOf(started);
    if (at >= 0)
        text.replace(at, started.size(), usage);
    return text;
}

CommandContext::CommandContext(QString command, QStringList arguments, GlobalOptions globals)
    : m_command(std::move(command))
    , m_arguments(std::move(arguments))
    , m_globals(std::move(globals))
{
}

void CommandContext::parse(QCommandLineParser &parser, qsizetype positionalCount)
{
    parser.setApplicationDescription(findCommand(m_command) ? findCommand(m_command)->summary
                                                            : QString());
    const QCommandLineOption help = parser.addHelpOption();
    parser.addOptions(globalOptionList());

    QStringList arguments = m_arguments;
    arguments.prepend(programName() + u' ' + m_command);
    if (!parser.parse(arguments))
        usageError(parser.errorText());
    if (parser.isSet(help)) {
        writeTo(stdout, helpText(parser, programName() + u' ' + m_command));
        throw CommandExit{ExitStatus::Success};
    }
    if (parser.positionalArguments().size() != positionalCount)
        usageError(parser.positionalArguments().size() < positionalCount
                       ? QStringLiteral("missing argument; see '%1 --help'").arg(m_command)
                       : QStringLiteral("unexpected argument '%1'")
                             .arg(parser.positionalArguments().at(positionalCount)));

    takeGlobalOptions(parser, m_globals);
    setProgramDir(m_globals.programDir);
}

QString configFileNameArgument(const QCommandLineParser &parser)
{
    const QString name = parser.positionalArguments().value(0);
    const QString problem = ConfigNameProblem(name);
    if (!problem.isEmpty()) {
        showMessage(InvalidConfigNameTitle(), problem, MessageButtons::Ok,
                    MessageIcon::Exclamation);
        throw CommandExit{ExitStatus::Failed};
    }
    return name;
}

void loadOptionsFile()
{
    try {
        LoadOptions();
    } catch (const RunError &error) {
        // The window program carries on with what a short file gave; so do we.
        if (error.number() != ErrNum::InputPastEnd)
            fail(ProgramDir() + QStringLiteral("options.ini: ") + error.message());
    }
}

void CommandContext::loadOptions() const
{
    loadOptionsFile();
    if (!m_globals.gameDir.isEmpty())
        AppOptions().UTPath = directoryArgument(m_globals.gameDir);
    if (!m_globals.configDir.isEmpty())
        AppOptions().ConfigPath = directoryArgument(m_globals.configDir);
}

QString CommandContext::configDir() const
{
    if (isUnset(AppOptions().ConfigPath))
        fail(QStringLiteral("No configuration directory: give --config-dir, or set one with "
                            "'options --write --config-path'."));
    return AppOptions().ConfigPath;
}

QString CommandContext::existingConfigDir() const
{
    const QString directory = configDir();
    if (!QDir(directory).exists())
        fail(directory + QStringLiteral(": no such directory"));
    return directory;
}

QString CommandContext::gameDir() const
{
    if (isUnset(AppOptions().UTPath))
        fail(QStringLiteral("No game directory: give --game-dir, or set one with "
                            "'options --write --ut-path'."));
    return AppOptions().UTPath;
}

CommandRegistration::CommandRegistration(const Command &command)
{
    registry().append(command);
}

QList<Command> commands()
{
    QList<Command> sorted = registry();
    std::sort(sorted.begin(), sorted.end(),
              [](const Command &a, const Command &b) { return a.name < b.name; });
    return sorted;
}

const Command *findCommand(const QString &name)
{
    const QList<Command> &all = registry();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const Command &command) { return command.name == name; });
    return found == all.end() ? nullptr : &*found;
}

void printJson(const QJsonValue &value)
{
    QByteArray json;
    if (value.isObject())
        json = QJsonDocument(value.toObject()).toJson(QJsonDocument::Indented);
    else if (value.isArray())
        json = QJsonDocument(value.toArray()).toJson(QJsonDocument::Indented);
    else {
        // A lone value: serialise it inside an array and take the brackets off.
        json = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
        json = json.mid(1, json.size() - 2) + '\n';
    }
    std::fwrite(json.constData(), 1, size_t(json.size()), stdout);
}

void printLine(const QString &text)
{
    writeTo(stdout, text);
}

void printError(const QString &text)
{
    writeTo(stderr, text);
}

void fail(const QString &text)
{
    printError(text);
    throw CommandExit{ExitStatus::Failed};
}

void usageError(const QString &text)
{
    printError(programName() + QStringLiteral(": ") + text);
    throw CommandExit{ExitStatus::Usage};
}
