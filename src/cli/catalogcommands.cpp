// The commands over the game's content: the scan, the boss switch, the skin
// patterns, the list of skin files that matched no model, and the check of a
// bot list against what is installed.

#include "command.h"
#include "jsonwriter.h"

#include "catalogue/bossmode.h"
#include "catalogue/modelcatalogue.h"
#include "catalogue/patternfile.h"
#include "catalogue/scan.h"
#include "catalogue/unmatchedlist.h"
#include "configfiles/configfile.h"
#include "configfiles/errorreport.h"
#include "roster/rostercheck.h"
#include "startup/programdirectory.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// Keeps the errors the scan reports, for the command's own output, instead
// of writing report files.
class CollectedErrors final : public ErrorSink
{
public:
    CollectedErrors() { installErrorSink(this); }
    ~CollectedErrors() override { installErrorSink(nullptr); }

    void processError(const RunError &error, const QString &message) override
    {
        errors.append({message, error.number(), error.message()});
    }

    struct Entry
    {
        QString message;
        int number;
        QString description;
    };
    QList<Entry> errors;
};

// Builds the catalogue from the game directory with the program directory's
// int.ini and pattern.ini; nothing is checked in the unmatched report.
void scanGame(CommandContext &context)
{
    context.loadOptions();
    const QString gameDir = context.gameDir();
    LoadPatternList();
    ScanIntFiles(gameDir, ProgramDir() + u"int.ini"_s);
}

QStringList listed(const QStringList &files)
{
    QStringList paths;
    for (const QString &path : files) {
        if (!path.isEmpty())
            paths.append(path);
    }
    return paths;
}

QList<UnmatchedSkin> unmatchedSkins()
{
    QList<UnmatchedSkin> skins;
    for (const UnmatchedSkin &skin : std::as_const(Catalogue().UnmatchedSkins)) {
        if (!skin.FilePath.isEmpty())
            skins.append(skin);
    }
    return skins;
}

QList<SkinPattern> patterns()
{
    QList<SkinPattern> occupied;
    for (const SkinPattern &pattern : std::as_const(Catalogue().PatternList)) {
        if (!pattern.Model.isEmpty())
            occupied.append({pattern.Model, listed(pattern.SkinTypes)});
    }
    return occupied;
}

void writeSkins(JsonWriter &json, const QList<SkinEntry> &skins)
{
    json.beginArray();
    for (const SkinEntry &skin : skins) {
        if (skin.Description.isEmpty())
            continue;
        json.beginObject();
        json.key(u"SkinName");
        json.value(skin.SkinName);
        json.key(u"Description");
        json.value(skin.Description);
        json.key(u"Faces");
        json.beginArray();
        for (const FaceEntry &face : skin.Faces) {
            if (face.FaceName.isEmpty())
                continue;
            json.beginObject();
            json.key(u"FaceName");
            json.value(face.FaceName);
            json.key(u"Description");
            json.value(face.Description);
            json.endObject();
        }
        json.endArray();
        json.endObject();
    }
    json.endArray();
}

void writeClasses(JsonWriter &json)
{
    json.beginArray();
    for (const MISCLASS &model : std::as_const(Catalogue().MISCCLASSES)) {
        if (model.ClassName.isEmpty())
            continue;
        json.beginObject();
        json.key(u"ClassName");
        json.value(model.ClassName);
        json.key(u"Description");
        json.value(model.Description);
        json.key(u"SkinType");
        json.value(model.SkinType);
        json.key(u"Skins");
        writeSkins(json, model.Skins);
        json.endObject();
    }
    json.endArray();
}

void writeVoices(JsonWriter &json)
{
    json.beginArray();
    for (const VoiceEntry &voice : std::as_const(Catalogue().VoiceList)) {
        if (voice.VoiceClass.isEmpty())
            continue;
        json.beginObject();
        json.key(u"Description");
        json.value(voice.Description);
        json.key(u"VoiceClass");
        json.value(voice.VoiceClass);
        json.key(u"VoiceKind");
        json.value(voice.VoiceKind);
        json.endObject();
    }
    json.endArray();
}

void writeUnmatched(JsonWriter &json)
{
    json.beginArray();
    for (const UnmatchedSkin &skin : unmatchedSkins()) {
        json.beginObject();
        json.key(u"FilePath");
        json.value(skin.FilePath);
        json.key(u"SkinType");
        json.value(skin.SkinType);
        json.endObject();
    }
    json.endArray();
}

void writePatterns(JsonWriter &json)
{
    json.beginArray();
    for (const SkinPattern &pattern : patterns()) {
        json.beginObject();
        json.key(u"Model");
        json.value(pattern.Model);
        json.key(u"SkinTypes");
        json.value(pattern.SkinTypes);
        json.endObject();
    }
    json.endArray();
}

void writeErrors(JsonWriter &json, const CollectedErrors &collected)
{
    json.beginArray();
    for (const CollectedErrors::Entry &error : collected.errors) {
        json.beginObject();
        json.key(u"Message");
        json.value(error.message);
        json.key(u"Number");
        json.value(error.number);
        json.key(u"Description");
        json.value(error.description);
        json.endObject();
    }
    json.endArray();
}

void printCatalogueJson(const CollectedErrors &collected)
{
    const ModelCatalogue &catalogue = Catalogue();
    JsonWriter json;
    json.beginObject();
    json.key(u"ClassFiles");
    json.value(listed(catalogue.ClassFiles));
    json.key(u"SkinFiles");
    json.value(listed(catalogue.SkinFiles));
    json.key(u"VoiceFiles");
    json.value(listed(catalogue.VoiceFiles));
    json.key(u"BossMode");
    json.value(catalogue.BossMode);
    json.key(u"Classes");
    writeClasses(json);
    json.key(u"Voices");
    writeVoices(json);
    json.key(u"Unmatched");
    writeUnmatched(json);
    json.key(u"Patterns");
    writePatterns(json);
    json.key(u"Errors");
    writeErrors(json, collected);
    json.endObject();
    std::fwrite(json.text().constData(), 1, size_t(json.text().size()), stdout);
    std::fputc('\n', stdout);
}

void printErrors(const CollectedErrors &collected)
{
    for (const CollectedErrors::Entry &error : collected.errors)
        printError(u"%1 (error %2: %3)"_s.arg(error.message).arg(error.number).arg(
            error.description));
}

void printSummary(const CollectedErrors &collected)
{
    const ModelCatalogue &catalogue = Catalogue();
    qsizetype classes = 0;
    qsizetype skins = 0;
    for (const MISCLASS &model : catalogue.MISCCLASSES) {
        if (model.ClassName.isEmpty())
            continue;
        ++classes;
        for (const SkinEntry &skin : model.Skins)
            skins += skin.Description.isEmpty() ? 0 : 1;
    }
    qsizetype voices = 0;
    for (const VoiceEntry &voice : catalogue.VoiceList)
        voices += voice.VoiceClass.isEmpty() ? 0 : 1;
    const QList<UnmatchedSkin> unmatched = unmatchedSkins();

    printLine(u"Class files: %1"_s.arg(listed(catalogue.ClassFiles).size()));
    printLine(u"Skin files: %1"_s.arg(listed(catalogue.SkinFiles).size()));
    printLine(u"Voice files: %1"_s.arg(listed(catalogue.VoiceFiles).size()));
    printLine(u"Classes: %1"_s.arg(classes));
    printLine(u"Skins: %1"_s.arg(skins));
    printLine(u"Voices: %1"_s.arg(voices));
    printLine(u"Boss mode: %1"_s.arg(catalogue.BossMode));
    printLine(u"Patterns: %1"_s.arg(patterns().size()));
    printLine(u"Unmatched skin files: %1"_s.arg(unmatched.size()));
    for (const UnmatchedSkin &skin : unmatched)
        printLine(u"  %1 (skin type %2)"_s.arg(skin.FilePath, skin.SkinType));
    printLine(u"Errors: %1"_s.arg(collected.errors.size()));
    for (const CollectedErrors::Entry &error : collected.errors)
        printLine(u"  %1 (error %2: %3)"_s.arg(error.message).arg(error.number).arg(
            error.description));
}

int runScan(CommandContext &context)
{
    QCommandLineParser parser;
    const QCommandLineOption jsonOption(u"json"_s, u"Print the whole catalogue as JSON."_s);
    parser.addOption(jsonOption);
    context.parse(parser, 0);

    CollectedErrors collected;
    scanGame(context);
    if (parser.isSet(jsonOption))
        printCatalogueJson(collected);
    else
        printSummary(collected);
    return ExitStatus::Success;
}

int runBoss(CommandContext &context)
{
    QCommandLineParser parser;
    const QCommandLineOption setOption(u"set"_s,
        u"Switch the boss variants: 0 both, 1 [Fixed] only, 2 [Fixed/Male Voices] only."_s,
        u"N"_s);
    parser.addOption(setOption);
    context.parse(parser, 0);

    short mode = -1;
    if (parser.isSet(setOption)) {
        bool ok = false;
        mode = parser.value(setOption).toShort(&ok);
        if (!ok || mode < 0 || mode > 2)
            usageError(u"--set needs 0, 1 or 2, not '%1'"_s.arg(parser.value(setOption)));
    }
    context.loadOptions();
    const QString gameDir = context.gameDir();
    if (mode >= 0) {
        if (!BossPackageExists(gameDir))
            fail(u"The game has no boss package file to switch: %1"_s.arg(
                BossPackagePath(gameDir)));
        SetBossMode(mode, gameDir);
    }
    printLine(QString::number(ReadBossMode(gameDir)));
    return ExitStatus::Success;
}

int runPatterns(CommandContext &context)
{
    QCommandLineParser parser;
    const QCommandLineOption jsonOption(u"json"_s, u"Print the patterns as JSON."_s);
    parser.addOption(jsonOption);
    context.parse(parser, 0);

    LoadPatternList();
    if (parser.isSet(jsonOption)) {
        JsonWriter json;
        writePatterns(json);
        printLine(QString::fromUtf8(json.text()));
    }
    else
        for (const QString &line : PatternLines(Catalogue().PatternList))
            printLine(line);
    return ExitStatus::Success;
}

// The unmatched skin file that `file` names, by its path or, without a
// folder, by its name alone; both without regard to case.
QString unmatchedFile(const QString &file)
{
    const bool nameOnly = !file.contains(u'/') && !file.contains(QDir::separator());
    const QString wanted = nameOnly ? file : QDir::toNativeSeparators(QFileInfo(file).absoluteFilePath());
    for (const UnmatchedSkin &skin : unmatchedSkins()) {
        const QString candidate = nameOnly ? QFileInfo(skin.FilePath).fileName() : skin.FilePath;
        if (candidate.compare(wanted, Qt::CaseInsensitive) == 0)
            return skin.FilePath;
    }
    return {};
}

const MISCLASS *modelDescribedAs(const QString &description)
{
    for (const MISCLASS &model : std::as_const(Catalogue().MISCCLASSES)) {
        if (!model.ClassName.isEmpty() && model.Description.toLower() == description.toLower())
            return &model;
    }
    return nullptr;
}

int runTeach(CommandContext &context)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(u"FILE"_s,
        u"A skin .int file that matched no model: its path, or its name in the game's System "
        "folder."_s);
    parser.addPositionalArgument(u"MODEL"_s, u"The description of the model, e.g. \"Male Soldier\"."_s);
    context.parse(parser, 2);
    const QString file = parser.positionalArguments().at(0);
    const QString description = parser.positionalArguments().at(1);

    CollectedErrors collected;
    scanGame(context);
    printErrors(collected);
    const QString path = unmatchedFile(file);
    if (path.isEmpty())
        fail(u"'%1' is not one of the skin files that matched no model."_s.arg(file));
    const MISCLASS *model = modelDescribedAs(description);
    if (!model)
        fail(u"No model is described as '%1'."_s.arg(description));
    const QString skinType = model->SkinType;

    FinishPatterns({{path, description}});
    for (const QString &line : PatternLines(Catalogue().PatternList)) {
        if (line.section(u',', 0, 0) == skinType)
            printLine(line);
    }
    return ExitStatus::Success;
}

int runForget(CommandContext &context)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(u"SKINTYPE"_s, u"The skin type to take out of the patterns."_s);
    context.parse(parser, 1);
    const QString skinType = parser.positionalArguments().at(0);

    LoadPatternList();
    if (!ForgetSkinType(skinType))
        fail(u"No pattern lists the skin type '%1'."_s.arg(skinType));
    for (const QString &line : PatternLines(Catalogue().PatternList))
        printLine(line);
    return ExitStatus::Success;
}

int runUnmatched(CommandContext &context)
{
    QCommandLineParser parser;
    const QCommandLineOption saveOption(u"save"_s,
        u"Write the list file into the program directory and print its path."_s);
    parser.addOption(saveOption);
    context.parse(parser, 0);

    CollectedErrors collected;
    scanGame(context);
    printErrors(collected);
    if (parser.isSet(saveOption)) {
        printLine(SaveUnmatchedList(ProgramDir()));
        return ExitStatus::Success;
    }
    for (const UnmatchedSkin &skin : unmatchedSkins())
        printLine(skin.FilePath);
    return ExitStatus::Success;
}

int runCheck(CommandContext &context)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(u"NAME"_s, u"The configuration file to check, a bare file name "
                                            "in the configuration directory."_s);
    context.parse(parser, 1);
    const QString name = configFileNameArgument(parser);
    context.loadOptions();
    BotRoster roster;
    OpenConfiguration(context.configDir(), name, roster);

    CollectedErrors collected;
    scanGame(context);
    printErrors(collected);
    QJsonArray problems;
    for (const SlotProblem &problem : CheckRoster(roster))
        problems.append(QJsonObject {{u"slot"_s, problem.slot},
            {u"bot"_s, roster.BotNames.at(problem.slot)}, {u"field"_s, SlotFieldName(problem.field)},
            {u"value"_s, problem.value}, {u"problem"_s, problem.text}});
    printJson(problems);
    return ExitStatus::Success;
}

const CommandRegistration checkRegistration {{u"check"_s,
    u"Lists the classes, skins, faces and voices of a configuration that are not installed."_s,
    runCheck}};
const CommandRegistration scanRegistration {
    {u"scan"_s, u"Scans the game's .int files and prints what it found."_s, runScan}};
const CommandRegistration bossRegistration {
    {u"boss"_s, u"Prints which boss variants are on, or switches them with --set."_s, runBoss}};
const CommandRegistration patternsRegistration {
    {u"patterns"_s, u"Prints the skin patterns of pattern.ini."_s, runPatterns}};
const CommandRegistration teachRegistration {
    {u"teach"_s, u"Assigns a skin file that matched no model to a model."_s, runTeach}};
const CommandRegistration forgetRegistration {
    {u"forget"_s, u"Takes a skin type out of the skin patterns."_s, runForget}};
const CommandRegistration unmatchedRegistration {{u"unmatched"_s,
    u"Prints the skin files that matched no model, or saves their list with --save."_s,
    runUnmatched}};

} // namespace
