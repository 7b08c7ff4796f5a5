#include "command.h"

#include "configfiles/fileops.h"
#include "startup/options.h"

#include <QCommandLineParser>
#include <QDir>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

QString directoryValue(const QString &path)
{
    return path.isEmpty() ? QString() : AddBackslash(QDir::toNativeSeparators(path));
}

// Shows and changes options.ini itself: --game-dir and --config-dir do not
// apply here, so that they are never written into the file by accident.
int runOptions(CommandContext &context)
{
    QCommandLineParser parser;
    const QCommandLineOption writeOption(u"write"_s,
                                         u"Change the given fields and write options.ini."_s);
    const QCommandLineOption autoCloseOption(u"auto-close"_s,
                                             u"1: the splash screen closes by itself."_s, u"N"_s);
    const QCommandLineOption configPathOption(u"config-path"_s,
                                              u"The configuration directory."_s, u"P"_s);
    const QCommandLineOption utPathOption(u"ut-path"_s, u"The game directory."_s, u"P"_s);
    parser.addOptions({writeOption, autoCloseOption, configPathOption, utPathOption});
    context.parse(parser, 0);

    const bool changes = parser.isSet(autoCloseOption) || parser.isSet(configPathOption)
                         || parser.isSet(utPathOption);
    if (changes && !parser.isSet(writeOption))
        usageError(u"--auto-close, --config-path and --ut-path need --write"_s);
    qint16 autoClose = 0;
    if (parser.isSet(autoCloseOption)) {
        bool ok = false;
        autoClose = parser.value(autoCloseOption).toShort(&ok);
        if (!ok)
            usageError(u"--auto-close needs a whole number, not '%1'"_s
                           .arg(parser.value(autoCloseOption)));
    }

    loadOptionsFile();

    Options &options = AppOptions();
    if (parser.isSet(writeOption)) {
        if (parser.isSet(autoCloseOption))
            options.AutoCloseSplash = autoClose;
        if (parser.isSet(configPathOption))
            options.ConfigPath = directoryValue(parser.value(configPathOption));
        if (parser.isSet(utPathOption))
            options.UTPath = directoryValue(parser.value(utPathOption));
        SaveOptions();
    }
    printJson(QJsonObject{{u"AutoCloseSplash"_s, options.AutoCloseSplash},
                          {u"FirstRun"_s, options.FirstRun},
                          {u"ConfigPath"_s, options.ConfigPath},
                          {u"UTPath"_s, options.UTPath}});
    return ExitStatus::Success;
}

const CommandRegistration registration{
    {u"options"_s, u"Prints options.ini, or changes it with --write."_s, runOptions}};

} // namespace
