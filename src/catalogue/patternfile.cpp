#include "patternfile.h"

#include "intfile.h"

#include "configfiles/filelock.h"
#include "configfiles/progress.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "configfiles/textfile.h"
#include "startup/programdirectory.h"

#include <functional>

namespace {

const QString crlf = QStringLiteral("\r\n");

SkinPattern freePattern()
{
    return { QString(), QStringList(2) };
}

SkinPattern newPattern(const QString &model, const QString &skinType)
{
    return { model, { skinType, QString() } };
}

void appendSkinType(SkinPattern &pattern, const QString &skinType)
{
    // The same skin type twice in one pattern would only clutter the file.
    if (pattern.SkinTypes.contains(skinType))
        return;
    if (pattern.SkinTypes.isEmpty() || !pattern.SkinTypes.constLast().isEmpty())
        pattern.SkinTypes.append(QString());
    pattern.SkinTypes.last() = skinType;
}

bool hasSkinTypes(const SkinPattern &pattern)
{
    for (const QString &skinType : pattern.SkinTypes) {
        if (!skinType.isEmpty())
            return true;
    }
    return false;
}

QString unmatchedSkinType(const QString &path)
{
    const QString wanted = path.toLower();
    for (const UnmatchedSkin &skin : std::as_const(Catalogue().UnmatchedSkins)) {
        if (skin.FilePath.toLower() == wanted)
            return skin.SkinType;
    }
    return {};
}

const MISCLASS *modelDescribedAs(const QString &description)
{
    const QString wanted = description.toLower();
    for (const MISCLASS &model : std::as_const(Catalogue().MISCCLASSES)) {
        if (model.Description.toLower() == wanted)
            return &model;
    }
    return nullptr;
}

// Applies `change` to `patterns` in the file's form and keeps the result
// when its lines differ.
bool changePatterns(
    QList<SkinPattern> &patterns, const std::function<void(QList<SkinPattern> &)> &change)
{
    const QStringList before = PatternLines(patterns);
    QList<SkinPattern> changed = ParsePatternLines(before);
    change(changed);
    const QStringList after = PatternLines(changed);
    if (after == before)
        return false;
    patterns = ParsePatternLines(after);
    return true;
}

// Takes `skinType` out of every pattern but the one of `keptModel`.
void removeSkinType(
    QList<SkinPattern> &patterns, const QString &skinType, const QString &keptModel = {})
{
    for (SkinPattern &pattern : patterns) {
        if (pattern.Model.isEmpty() || pattern.Model == keptModel
            || pattern.SkinTypes.removeAll(skinType) == 0)
            continue;
        if (!hasSkinTypes(pattern))
            pattern.Model.clear();
    }
}

QList<SkinPattern> parsePatterns(const QStringList &lines, bool showProgress);

} // namespace

QString PatternFilePath()
{
    return ProgramDir() + QStringLiteral("pattern.ini");
}

QList<SkinPattern> ParsePatternLines(const QStringList &lines)
{
    return parsePatterns(lines, false);
}

namespace {

QList<SkinPattern> parsePatterns(const QStringList &lines, bool showProgress)
{
    QList<SkinPattern> patterns(2, freePattern());
    qsizetype next = 0;
    for (const QString &line : lines) {
        if (showProgress) {
            letEventLoopRun();
            currentProgress().advance();
        }
        const QStringList fields = trimTrailingSpaces(line).split(QLatin1Char(','));
        // A line without a model would lead its skin types to no model.
        if (fields.constFirst().isEmpty())
            continue;
        SkinPattern pattern = freePattern();
        pattern.Model = fields.constFirst();
        qsizetype entry = 0;
        for (qsizetype i = 1; i < fields.size(); ++i) {
            if (fields.at(i).isEmpty())
                continue;
            if (entry >= pattern.SkinTypes.size())
                pattern.SkinTypes.append(QString());
            pattern.SkinTypes[entry++] = fields.at(i);
        }
        if (next >= patterns.size())
            patterns.append(freePattern());
        patterns[next++] = pattern;
    }
    return patterns;
}

} // namespace

namespace {

// pattern.ini as it is now: a file that is not there holds no patterns.
QList<SkinPattern> currentPatterns(const QString &path)
{
    try {
        return ParsePatternLines(ReadIntFile(path));
    } catch (const RunError &error) {
        if (error.number() != int(ErrNum::FileNotFound))
            throw;
        return ParsePatternLines({});
    }
}

// The read, the change and the write under one lock, so that two editors
// of the file cannot lose one another's change. Answers whether the lines
// changed and were written.
bool updatePatternFile(const std::function<void(QList<SkinPattern> &)> &change)
{
    const QString path = PatternFilePath();
    const FileLock lock(path);
    const QList<SkinPattern> current = currentPatterns(path);
    QList<SkinPattern> changed = current;
    change(changed);
    const QStringList lines = PatternLines(changed);
    const bool written = lines != PatternLines(current);
    if (written)
        writeAnsiLines(path, lines);
    // Read again, so that the table is the file's, record for record.
    Catalogue().PatternList = ParsePatternLines(lines);
    return written;
}

} // namespace

QStringList PatternLines(const QList<SkinPattern> &patterns)
{
    QStringList lines;
    for (const SkinPattern &pattern : patterns) {
        if (pattern.Model.isEmpty())
            continue;
        QString line = pattern.Model;
        for (const QString &skinType : pattern.SkinTypes) {
            if (!skinType.isEmpty())
                line += QLatin1Char(',') + skinType;
        }
        lines.append(line);
    }
    return lines;
}

void LoadPatternList()
{
    const QString path = PatternFilePath();
    QStringList lines;
    try {
        lines = ReadIntFile(path);
    } catch (const RunError &error) {
        showMessage(QStringLiteral("pattern.ini"),
            QStringLiteral("The skin pattern file could not be read:") + crlf + path + crlf
                + error.description() + crlf + crlf
                + QStringLiteral("The scan goes on without skin patterns."),
            MessageButtons::Ok, MessageIcon::Exclamation);
    }
    Catalogue().PatternList = parsePatterns(lines, true);
}

void SavePatternList(const QList<SkinPattern> &patterns)
{
    const QString path = PatternFilePath();
    const FileLock lock(path);
    writeAnsiLines(path, PatternLines(patterns));
    Catalogue().PatternList = patterns;
}

QString PatternAssignment::text() const
{
    return modelDescription.isEmpty() ? path : path + QStringLiteral(" - ") + modelDescription;
}

QList<PatternAssignment> &PatternEditorFiles()
{
    static QList<PatternAssignment> files;
    return files;
}

QStringList PatternModelChoices()
{
    QStringList choices;
    for (const MISCLASS &model : std::as_const(Catalogue().MISCCLASSES))
        choices.append(model.Description);
    if (choices.isEmpty())
        choices.append(QStringLiteral("(NONE)"));
    return choices;
}

void AddToPattern(QList<SkinPattern> &patterns, const QString &model, const QString &skinType)
{
    for (SkinPattern &pattern : patterns) {
        if (pattern.Model == model) {
            appendSkinType(pattern, skinType);
            return;
        }
        if (pattern.Model.isEmpty()) {
            pattern = newPattern(model, skinType);
            return;
        }
    }
    patterns.append(newPattern(model, skinType));
}

void FinishPatterns(const QList<PatternAssignment> &files, const QList<PatternEdit> &edits)
{
    // Positions follow the list's items; unassigned items leave free entries.
    QStringList reparse(2);
    bool assigned = false;
    updatePatternFile([&](QList<SkinPattern> &patterns) {
        for (const PatternEdit &edit : edits)
            edit(patterns);
        for (qsizetype i = 0; i < files.size(); ++i) {
            const PatternAssignment &file = files.at(i);
            if (file.modelDescription.isEmpty())
                continue;
            assigned = true;
            if (reparse.size() < i + 2)
                reparse.resize(i + 2);
            reparse[i] = file.path;
            const QString skinType = unmatchedSkinType(file.path);
            const MISCLASS *model = modelDescribedAs(file.modelDescription);
            if (!skinType.isEmpty() && model && !model->SkinType.isEmpty())
                AddToPattern(patterns, model->SkinType, skinType);
        }
    });
    ModelCatalogue &catalogue = Catalogue();
    catalogue.ReparseFiles = reparse;
    if (assigned)
        catalogue.ReparseRequested = true;
}

bool ForgetSkinType(QList<SkinPattern> &patterns, const QString &skinType)
{
    if (skinType.isEmpty())
        return false;
    return changePatterns(
        patterns, [&](QList<SkinPattern> &changed) { removeSkinType(changed, skinType); });
}

bool ForgetPattern(QList<SkinPattern> &patterns, const QString &model)
{
    if (model.isEmpty())
        return false;
    return changePatterns(patterns, [&](QList<SkinPattern> &changed) {
        for (SkinPattern &pattern : changed) {
            if (pattern.Model == model)
                pattern.Model.clear();
        }
    });
}

bool MoveSkinType(QList<SkinPattern> &patterns, const QString &skinType, const QString &model)
{
    if (skinType.isEmpty() || model.isEmpty())
        return false;
    return changePatterns(patterns, [&](QList<SkinPattern> &changed) {
        removeSkinType(changed, skinType, model);
        // Emptied records go before the skin type finds its new record, so
        // that the file keeps its order.
        changed = ParsePatternLines(PatternLines(changed));
        AddToPattern(changed, model, skinType);
    });
}

bool ForgetSkinType(const QString &skinType)
{
    return updatePatternFile(
        [&](QList<SkinPattern> &patterns) { ForgetSkinType(patterns, skinType); });
}

bool RemovePatternAssignment(PatternAssignment &file)
{
    const Message question { QStringLiteral("Remove Pattern"), QStringLiteral("Are you sure?"),
        MessageButtons::YesNo, MessageIcon::Question, MessageDefault::No };
    if (showMessage(question) != MessageAnswer::Yes)
        return false;
    file.modelDescription.clear();
    return true;
}

void ShowSetPatternHelp()
{
    showMessage(QStringLiteral("This is how to set a pattern..."),
        QStringLiteral("1. Choose one Skin at a time in the list box.") + crlf
            + QStringLiteral("2. Choose the Model in the combo box.") + crlf
            + QStringLiteral("3. Click the SET PATTERN button.") + crlf
            + QStringLiteral("4. Repeat and then click FINISHED when done."));
}

void ShowRemovePatternHelp()
{
    showMessage(QStringLiteral("This is how to remove a pattern..."),
        QStringLiteral("1. Choose one Skin at a time in the list box.") + crlf
            + QStringLiteral("2. Click the REMOVE PATTERN button.") + crlf
            + QStringLiteral("3. Repeat on each pattern you want to remove."));
}
