#include "scan.h"

#include "bossmode.h"
#include "classparser.h"
#include "exclusionlist.h"
#include "intfile.h"
#include "modelcatalogue.h"
#include "skinparser.h"
#include "voiceparser.h"

#include "configfiles/errorreport.h"
#include "configfiles/fileops.h"
#include "configfiles/progress.h"
#include "configfiles/runerror.h"
#include "configfiles/textfile.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QDirIterator>

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

// What the start-up says about an error it did not expect; a file the scan
// cannot read is one, and costs only itself.
const QString UnexpectedError = QStringLiteral("Unknown Error has occured in Sub Main");

struct FileKinds
{
    bool classes = false;
    bool voices = false;
    bool skins = false;

    bool any() const { return classes || voices || skins; }
};

// Whether `text` spells `lowerWord` at `at`, without regard to ASCII case.
bool spells(std::string_view text, size_t at, std::string_view lowerWord)
{
    if (at > text.size() || text.size() - at < lowerWord.size())
        return false;
    for (size_t i = 0; i < lowerWord.size(); ++i) {
        const char c = text[at + i];
        const char w = lowerWord[i];
        if (c != w && !(w >= 'a' && w <= 'z' && c == w - ('a' - 'A')))
            return false;
    }
    return true;
}

enum class Mark { None, BotClass, Voice, Texture };

// The declaration mark whose "=" stands at `eq`: "metaclass=botpack.bot",
// "metaclass=botpack.voicemale", "...voicefemale", "...voiceboss" or
// "class=texture", in any case.
Mark markAt(std::string_view text, size_t eq)
{
    if (eq < 5 || !spells(text, eq - 5, "class"))
        return Mark::None;
    if (eq >= 9 && spells(text, eq - 9, "metaclass") && spells(text, eq + 1, "botpack.")) {
        const size_t name = eq + 1 + 8;
        if (spells(text, name, "bot"))
            return Mark::BotClass;
        if (spells(text, name, "voicemale") || spells(text, name, "voicefemale")
            || spells(text, name, "voiceboss"))
            return Mark::Voice;
    }
    return spells(text, eq + 1, "texture") ? Mark::Texture : Mark::None;
}

bool declares(Mark mark)
{
    return mark == Mark::BotClass || mark == Mark::Voice;
}

bool hasLineBreak(std::string_view text)
{
    return text.find_first_of("\r\n") != std::string_view::npos;
}

// Sorts a file by its declarations. The first line is the section line and
// is never examined. A line is tested for a bot class, then a voice, then a
// texture; the first texture line makes the file a skin file and ends the
// reading, so what follows it counts for nothing.
//
// The marks are ASCII, and in ANSI or UTF-8 text no other byte stands for
// an ASCII letter, so this works on the bytes, from one "=" to the next,
// and leaves decoding to the parsers, which need only the files they parse.
// Only a texture's line is looked at as a whole, once, so that a line of
// megabytes costs no more than as many bytes on short lines.
FileKinds sortIntBytes(std::string_view text)
{
    FileKinds kinds;
    ByteLines lines(QByteArrayView(text.data(), qsizetype(text.size())));
    lines.next(); // the section line
    size_t settledUpTo = size_t(lines.start());
    size_t lastDeclaration = std::string_view::npos;
    for (size_t eq = text.find('=', settledUpTo); eq != std::string_view::npos;
         eq = text.find('=', eq + 1)) {
        const Mark mark = markAt(text, eq);
        kinds.classes = kinds.classes || mark == Mark::BotClass;
        kinds.voices = kinds.voices || mark == Mark::Voice;
        if (declares(mark))
            lastDeclaration = eq;
        if (mark != Mark::Texture || eq < settledUpTo)
            continue;

        // A texture on a class or voice line does not end the reading.
        bool classOrVoiceLine = lastDeclaration != std::string_view::npos
            && lastDeclaration >= settledUpTo
            && !hasLineBreak(text.substr(lastDeclaration, eq - lastDeclaration));
        const size_t lineEnd = size_t(lines.nextFrom(qsizetype(eq)).end);
        for (size_t next = text.find('=', eq + 1); !classOrVoiceLine && next < lineEnd;
             next = text.find('=', next + 1))
            classOrVoiceLine = declares(markAt(text, next));
        if (!classOrVoiceLine) {
            kinds.skins = true;
            break;
        }
        settledUpTo = lineEnd;
    }
    return kinds;
}

FileKinds sortIntFile(const QByteArray &bytes)
{
    if (bytes.startsWith("\xFF\xFE")) {
        const QByteArray utf8 = decodeIntText(bytes).toUtf8();
        return sortIntBytes(std::string_view(utf8.constData(), size_t(utf8.size())));
    }
    return sortIntBytes(std::string_view(bytes.constData(), size_t(bytes.size())));
}

// The file lists grow ten slots at a time and keep their free slots at the
// end, as the rest of the program expects of them.
class FileList
{
public:
    explicit FileList(QStringList &list)
        : m_list(list)
    {
    }

    void add(const QString &path)
    {
        if (m_last == m_list.size() - 1)
            m_list.resize(m_list.size() + 10);
        m_list[++m_last] = path;
    }

private:
    QStringList &m_list;
    qsizetype m_last = -1;
};

QString systemFolder(const QString &gameDir)
{
    return AddBackslash(findPathNoCase(gameDir, QStringLiteral("System")));
}

// Reads every .int file of `names` not excluded, sorts it into the file
// lists and keeps the bytes of those the passes will parse.
void sortFiles(const QString &systemDir, const QStringList &names, const QString &exclusionFile,
    IntFileCache &cache)
{
    if (names.isEmpty())
        return;
    const ExclusionList excluded = ExclusionList::load(exclusionFile);

    ModelCatalogue &catalogue = Catalogue();
    FileList classFiles(catalogue.ClassFiles);
    FileList skinFiles(catalogue.SkinFiles);
    FileList voiceFiles(catalogue.VoiceFiles);
    for (const QString &name : names) {
        letEventLoopRun();
        if (excluded.excludes(name))
            continue;
        const QString path = systemDir + name;
        QByteArray bytes;
        try {
            bytes = readFileBytes(path);
        } catch (const RunError &error) {
            ProcessError(error, UnexpectedError);
            continue;
        }
        const FileKinds kinds = sortIntFile(bytes);
        if (!kinds.any())
            continue;
        if (kinds.classes)
            classFiles.add(path);
        if (kinds.voices)
            voiceFiles.add(path);
        if (kinds.skins)
            skinFiles.add(path);
        cache.keep(path, bytes);
        currentProgress().advance();
    }
}

// The folder's listing already says whether the boss package is there; an
// absent package means mode 2, and looking for it again would list the
// folder once more.
void readBossMode(const QString &gameDir, const QStringList &names)
{
    const bool present = std::any_of(names.begin(), names.end(), [](const QString &name) {
        return name.compare(QLatin1StringView("skeletalcharsfix313.int"), Qt::CaseInsensitive) == 0;
    });
    short mode = 2;
    try {
        if (present)
            mode = ReadBossMode(gameDir);
    } catch (const RunError &error) {
        ProcessError(error, UnexpectedError);
    }
    Catalogue().BossMode = mode;
}

void parseAll(const QStringList &files, const QString &message, void (*parse)(const QString &))
{
    currentProgress().step(message);
    for (const QString &path : files) {
        if (!path.isEmpty()) {
            parse(path);
            currentProgress().advance();
        }
        letEventLoopRun();
    }
}

QStringList unmatchedPaths()
{
    QStringList paths;
    for (const UnmatchedSkin &skin : std::as_const(Catalogue().UnmatchedSkins)) {
        if (!skin.FilePath.isEmpty())
            paths.append(skin.FilePath);
    }
    return paths;
}

// The unmatched report, then the pattern editor when the user asked for it,
// then the files given a model there are parsed again to find it.
void offerPatterns(const ScanForms &forms)
{
    ModelCatalogue &catalogue = Catalogue();
    catalogue.PatternsRequested = false;
    catalogue.ReparseRequested = false;
    catalogue.ReparseFiles.clear();
    if (forms.showUnmatchedReport)
        forms.showUnmatchedReport(unmatchedPaths());
    if (!catalogue.PatternsRequested || !forms.showPatternEditor)
        return;
    forms.showPatternEditor();
    if (!catalogue.ReparseRequested)
        return;
    const QStringList reparse = catalogue.ReparseFiles;
    for (const QString &path : reparse) {
        if (path.isEmpty())
            continue;
        ParseSkin(path);
        currentProgress().advance();
        letEventLoopRun();
    }
}

// NTFS lists a folder in the order of the names' upper-case forms; the game
// is at home there, so the catalogue comes out in the same order elsewhere.
bool listedBefore(const std::pair<QString, QString> &a, const std::pair<QString, QString> &b)
{
    if (a.first != b.first)
        return a.first < b.first;
    return a.second < b.second;
}

} // namespace

QStringList IntFileNames(const QString &systemDir)
{
    std::vector<std::pair<QString, QString>> found; // upper case, name
    // A name filter would match every name against a regular expression.
    // FIFOs and devices are listed, so that the reading reports them.
    QDirIterator it(systemDir, QDir::Files | QDir::Hidden | QDir::System);
    while (it.hasNext()) {
        it.next();
        const QString name = it.fileName();
        if (name.endsWith(QLatin1StringView(".int"), Qt::CaseInsensitive))
            found.emplace_back(name.toUpper(), name);
    }
    std::sort(found.begin(), found.end(), listedBefore);
    QStringList names;
    names.reserve(qsizetype(found.size()));
    for (const auto &entry : found)
        names.append(entry.second);
    return names;
}

void ScanIntFiles(const QString &gameDir, const QString &exclusionFile, const ScanForms &forms)
{
    CreateCatalogueTables();
    currentProgress().step(QStringLiteral("Locating Model && Skin files..."));
    letEventLoopRun();
    const QString systemDir = gameDir.isEmpty() ? QString() : systemFolder(gameDir);
    const QStringList names = systemDir.isEmpty() ? QStringList() : IntFileNames(systemDir);
    {
        // The passes read the files the sorting has just read, from memory.
        IntFileCache cache;
        sortFiles(systemDir, names, exclusionFile, cache);
        readBossMode(gameDir, names);
        const ModelCatalogue &catalogue = Catalogue();
        parseAll(catalogue.ClassFiles, QStringLiteral("Analyzing Class files..."), ParseClass);
        parseAll(catalogue.SkinFiles, QStringLiteral("Analyzing Skin files..."), ParseSkin);
        parseAll(catalogue.VoiceFiles, QStringLiteral("Analyzing Voice files..."), ParseVoice);
    }
    offerPatterns(forms);
}

void ScanIntFiles(const ScanForms &forms)
{
    ScanIntFiles(AppOptions().UTPath, ProgramDir() + QStringLiteral("int.ini"), forms);
}
