#pragma once

#include <QCommandLineOption>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>

class QCommandLineParser;

namespace ExitStatus {
enum : int {
    Success = 0,
    Usage = 1,  // the command line was wrong
    Failed = 2, // the operation was refused or failed
};
}

// The name the program goes by in its help and messages. The application's
// own name is the window program's (NameApplication()), so that both use the
// same per-user folder.
inline QString programName()
{
    return QStringLiteral("quorvane-cli");
}

// Ends the running command with `status`; whatever explains it has already
// been printed.
struct CommandExit
{
    int status;
};

// The options every command accepts, before or after its name.
struct GlobalOptions
{
    QString programDir; // options.ini, int.ini, pattern.ini and reports
    QString gameDir;    // overrides UTPath
    QString configDir;  // overrides ConfigPath
};

QList<QCommandLineOption> globalOptionList();
// Puts the global options that `parser` has seen over `globals`.
void takeGlobalOptions(const QCommandLineParser &parser, GlobalOptions &globals);

// What a command gets to work with: its own arguments and the global options.
class CommandContext
{
public:
    CommandContext(QString command, QStringList arguments, GlobalOptions globals);

    const QString &command() const { return m_command; }
    const GlobalOptions &globals() const { return m_globals; }

    // Parses the command's own arguments with `parser`, which the command
    // has filled with its options and positional arguments; adds --help and
    // the global options. Prints the help and ends with Success for --help;
    // prints the problem and ends with Usage for a bad command line or a
    // number of positional arguments other than `positionalCount`.
    void parse(QCommandLineParser &parser, qsizetype positionalCount);

    // Reads options.ini from the program directory into AppOptions() and
    // puts --game-dir and --config-dir over what it holds.
    void loadOptions() const;
    // The configuration directory (ends with the separator); ends with
    // Failed when neither --config-dir nor options.ini names one.
    QString configDir() const;
    // The same, and ends with Failed when the directory is not there.
    QString existingConfigDir() const;
    // The game directory (ends with the separator); ends with Failed when
    // neither --game-dir nor options.ini names one.
    QString gameDir() const;

private:
    QString m_command;
    QStringList m_arguments;
    GlobalOptions m_globals;
};

// The configuration file NAME of a command: the parser's first positional
// argument. A name that could lead out of the configuration directory, or
// that Windows could not store, is refused with the message the window
// program shows, and the command ends with Failed before anything is read
// or written.
QString configFileNameArgument(const QCommandLineParser &parser);

// Reads options.ini from the program directory into AppOptions(); a file cut
// short keeps what it gave, any other fault ends the command with Failed.
void loadOptionsFile();

struct Command
{
    QString name;
    QString summary; // one line for `quorvane-cli --help`
    int (*run)(CommandContext &context);
};

// Every command file registers its commands with a static
//     const CommandRegistration registration{{"name", "summary", run}};
struct CommandRegistration
{
    explicit CommandRegistration(const Command &command);
};

// The registered commands, sorted by name.
QList<Command> commands();
const Command *findCommand(const QString &name);

// The parser's help with `usage` ("quorvane-cli save") as the program name.
QString helpText(const QCommandLineParser &parser, const QString &usage);

// Output helpers: stdout carries results (UTF-8), stderr explanations.
void printJson(const QJsonValue &value);
void printLine(const QString &text);
void printError(const QString &text);
// Prints `text` to stderr and ends the command with Failed.
[[noreturn]] void fail(const QString &text);
[[noreturn]] void usageError(const QString &text);
