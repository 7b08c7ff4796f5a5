#include "applyconfig.h"

#include "botsection.h"
#include "configname.h"
#include "filelock.h"
#include "fileops.h"
#include "gameinstallation.h"
#include "progress.h"
#include "prompt.h"
#include "runerror.h"
#include "startup/options.h"
#include "textdocument.h"
#include "textfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <list>

namespace {

using Line = TextDocument::Line;

// A configuration holds its own header line and 451 key lines after its
// first empty line; the header is not copied, the key lines are.
constexpr qsizetype SectionLineLimit = 452;

const QString AbortedText = QStringLiteral("  Operation Aborted.");

// A reason to stop that the user is told about as it stands.
struct Refusal
{
    QString title;
    QString text;
};

// The lines after the configuration's first empty line, as the file holds
// them (Windows-1252), its own section header first.
QList<QByteArray> readConfigurationSection(const QString &path, const QString &fileName)
{
    const QList<QByteArray> lines = splitLines(readFileBytes(path, MaxProgramFileBytes));
    const qsizetype empty = lines.indexOf(QByteArray());
    const QString invalid = QStringLiteral("Invalid Configuration");
    const QString intro
        = fileName + QStringLiteral(" is not a configuration that can be applied: ");
    if (empty < 0)
        throw Refusal { invalid,
            intro + QStringLiteral("it has no empty line before its ") + BotSectionHeader
                + QStringLiteral(" section.") + AbortedText };
    const QList<QByteArray> section = lines.mid(empty + 1);
    if (section.size() > SectionLineLimit)
        throw Refusal { invalid,
            intro + QStringLiteral("its section has more than ") + QString::number(SectionLineLimit)
                + QStringLiteral(" lines.") + AbortedText };
    return section;
}

// The copy of user.ini that the apply works from, deleted however the apply
// ends. User.ini is replaced, never rewritten, so a second name for it keeps
// its old content as well as a copy and costs nothing; where there can be
// none, it is copied, plainly: it is never the only copy of anything.
class WorkingCopy
{
public:
    WorkingCopy(const QString &userIni, QString path, QByteArrayView bytes)
        : m_path(std::move(path))
        , m_isLink(addHardLink(userIni, m_path))
    {
        if (!m_isLink)
            writeScratchFile(m_path, bytes);
    }
    ~WorkingCopy() { QFile::remove(m_path); }
    WorkingCopy(const WorkingCopy &) = delete;
    WorkingCopy &operator=(const WorkingCopy &) = delete;

    // The names of user.ini's own that the apply made.
    int namesOfOurs() const { return m_isLink ? 1 : 0; }

private:
    QString m_path;
    bool m_isLink;
};

// Whether the empty line at `index` is the one an apply added after its
// section: the old section's own empty line follows it, or nothing does.
bool appliedEmptyLineAt(const TextDocument &document, qsizetype index)
{
    const auto isEmpty = [&document](qsizetype i) { return document.line(i).content.isEmpty(); };
    return index < document.lineCount() && isEmpty(index)
        && (index + 1 == document.lineCount() || isEmpty(index + 1));
}

// Puts `section` (entries 2 on of the new section) in place of the
// document's old section, or at its end when it has none, and returns the
// old section: its header and its lines up to the first empty line.
//
// An apply fills every line of a configuration's section and ends it with
// an empty line of its own, so each apply leaves one more empty line after
// the section. A restore puts a backup's lines back as they were and takes
// that empty line away again, so that restoring the backup an apply made
// gives back the file as it was before the apply; it keeps the line when
// something other than an empty line follows it (the game has rewritten the
// file since), since the section must not run into the next one.
QList<Line> replaceSection(
    TextDocument &document, const QList<QByteArray> &section, SectionChange change)
{
    const BotSectionSpan span = FindBotSection(document);

    QList<Line> rewritten;
    Line headerLine = span.found ? document.line(span.header) : document.makeLine(BotSectionHeader);
    // A header on the file's last line has no ending of its own.
    if (headerLine.ending.isEmpty())
        headerLine.ending = document.newline();
    rewritten.append(headerLine);

    const bool apply = change == SectionChange::Apply;
    for (qsizetype entry = 1; entry < (apply ? SectionLineLimit : section.size()); ++entry) {
        letEventLoopRun();
        rewritten.append(entry < section.size() ? document.makeLineFromAnsi(section.at(entry))
                                                : document.makeLine(QString()));
    }
    qsizetype replaced = span.end - span.header;
    if (apply)
        rewritten.append(document.makeLine(QString()));
    else if (span.found && appliedEmptyLineAt(document, span.end))
        ++replaced;

    QList<Line> oldSection;
    for (qsizetype i = span.header; i < span.end; ++i) {
        letEventLoopRun();
        oldSection.append(document.line(i));
    }
    document.replaceLines(span.header, replaced, rewritten);
    return oldSection;
}

// What the user is told, in the words of the change.
struct ChangeWords
{
    QString failed;
    QString incomplete;
    QString completed;
    QString changedNow; // "the bot list applied now"
    QString anyway;
};

ChangeWords wordsFor(SectionChange change)
{
    if (change == SectionChange::Restore)
        return { QStringLiteral("Restore Backup Failed"),
            QStringLiteral("Restore Backup Incomplete"), QStringLiteral("Restore Backup..."),
            QStringLiteral("the bot list restored now"),
            QStringLiteral("Restore the backup anyway?") };
    return { QStringLiteral("Apply Configuration Failed"),
        QStringLiteral("Apply Configuration Incomplete"), QStringLiteral("Apply Configuration..."),
        QStringLiteral("the bot list applied now"),
        QStringLiteral("Apply the configuration anyway?") };
}

// One user.ini of the apply, read and rewritten in memory before any of
// them is written. Only its bot section is taken apart into lines; the
// bytes around it are written back as they were read, so that a user.ini
// of millions of lines is applied to about as fast as it is copied.
struct PreparedFile
{
    QString userIni;
    QByteArray bytes;
    // The part of the file that holds the bot section: from its header to
    // two lines after its end.
    qsizetype partStart = 0;
    qsizetype partEnd = 0;
    // That part, then what takes its place.
    TextDocument section;
    QList<Line> oldSection;
    // A last line without an ending before a section appended after it.
    QByteArray lineEndBefore;
    // The bytes of `section` once changed.
    QByteArray rewritten;
    // A working copy that is a second name of the file.
    int namesOfOurs = 0;

    QList<QByteArrayView> newContent() const
    {
        return { QByteArrayView(bytes).first(partStart), rewritten,
            QByteArrayView(bytes).sliced(partEnd) };
    }
};

// Cuts the bot section out of a user.ini's bytes; without one, the new
// section goes at the end.
PreparedFile cutAtSection(const QString &userIni, QByteArray bytes)
{
    const TextDocument::Format format = TextDocument::formatOf(bytes);
    PreparedFile file;
    file.userIni = userIni;
    file.bytes = std::move(bytes);
    const qsizetype header = TextDocument::findLineStart(file.bytes, format, BotSectionHeader);
    if (header < 0) {
        file.partStart = file.partEnd = file.bytes.size();
        if (TextDocument::endsWithOpenLine(file.bytes, format))
            file.lineEndBefore = format.newline;
    } else {
        file.partStart = header;
        file.partEnd = TextDocument::nextEmptyLine(file.bytes, format, header);
        // A restore looks at the two lines after the section.
        for (int line = 0; line < 2 && file.partEnd < file.bytes.size(); ++line)
            file.partEnd = TextDocument::lineEnd(file.bytes, format, file.partEnd);
    }
    file.section = TextDocument::fromPart(
        file.bytes.sliced(file.partStart, file.partEnd - file.partStart), format);
    return file;
}

QString nothingChanged(qsizetype fileCount)
{
    return (fileCount == 1 ? QStringLiteral("user.ini was not changed.")
                           : QStringLiteral("None of the user.ini files was changed."))
        + AbortedText;
}

QByteArray backupBytes(const PreparedFile &file)
{
    QByteArray bytes;
    for (const Line &line : file.oldSection) {
        bytes += file.section.encoding() == TextDocument::Encoding::Ansi
            ? line.content
            : encodeAnsi(file.section.text(line));
        bytes += "\r\n";
    }
    return bytes;
}

// Two applies within a second would share a name, and the second backup
// would take the place of the first, which held the section before both:
// an existing backup is never replaced, the new one is numbered instead.
QString unusedBackupName(const QString &name, const QStringList &taken)
{
    const QString extension = QStringLiteral(".qvn2");
    const QString stem = name.chopped(extension.size());
    QString candidate = name;
    for (int number = 2; QFileInfo::exists(AppOptions().ConfigPath + candidate)
         || taken.contains(candidate, Qt::CaseInsensitive);
         ++number)
        candidate
            = stem + QStringLiteral(" (") + QString::number(number) + QLatin1Char(')') + extension;
    return candidate;
}

// The first user.ini the game reads keeps the plain backup name, so that a
// one-file game gets the names it always had; any other says which folder it
// came from, numbered when two folders share a name. So a backup says which
// file it belongs back in, also when it was made of that file alone (an
// apply to a chosen file, a restore).
QStringList backupNames(const QList<PreparedFile> &files, const QDateTime &time)
{
    const QString first
        = QFileInfo(GameUserIniFiles(AppOptions().UTPath).value(0, files.value(0).userIni))
              .canonicalFilePath();
    QStringList names;
    for (const PreparedFile &file : files) {
        const QFileInfo userIni(file.userIni);
        const QString folder = userIni.dir().dirName();
        QString name = userIni.canonicalFilePath() == first ? BackupFileName(time)
                                                            : BackupFileName(time, folder);
        for (int number = 2; names.contains(name, Qt::CaseInsensitive); ++number)
            name = BackupFileName(time, folder + QLatin1Char('-') + QString::number(number));
        names.append(unusedBackupName(name, names));
    }
    return names;
}

// The backups of an apply, one path per user.ini (empty where it had no
// section to back up). A backup of a user.ini the apply did not change
// would pass for the state before an apply that never happened, so it is
// removed.
class Backups
{
public:
    void add(const QString &path) { m_paths.append(path); }
    void removeFrom(qsizetype firstUnchanged)
    {
        for (qsizetype i = firstUnchanged; i < m_paths.size(); ++i) {
            if (!m_paths.at(i).isEmpty())
                QFile::remove(m_paths.at(i));
        }
        m_paths.resize(std::min(firstUnchanged, m_paths.size()));
    }

private:
    QStringList m_paths;
};

// Every backup is written before any user.ini, so that a backup that cannot
// be written stops the apply while nothing has changed.
void writeBackups(const QList<PreparedFile> &files, Backups &backups)
{
    const QStringList names = backupNames(files, QDateTime::currentDateTime());
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (files.at(i).oldSection.isEmpty()) {
            backups.add(QString());
            continue;
        }
        try {
            const QString path = AppOptions().ConfigPath + names.at(i);
            writeFileAtomically(path, backupBytes(files.at(i)));
            backups.add(path);
        } catch (const RunError &error) {
            backups.removeFrom(0);
            throw Refusal { QStringLiteral("Backup Failed"),
                QStringLiteral("Can't write the backup of the current configuration.")
                    + QStringLiteral("\r\n\r\n") + error.message() + QStringLiteral("\r\n\r\n")
                    + nothingChanged(files.size()) };
        }
    }
}

QString dummyIniBeside(const QString &userIni)
{
    return findPathNoCase(QFileInfo(userIni).absolutePath(), QStringLiteral("dummy.ini"));
}

// Reads each user.ini through a working copy beside it and puts the new
// section into it in memory, so that a file that cannot be read stops the
// apply before any user.ini is written. The working copies stay until every
// user.ini is written.
QList<PreparedFile> prepareFiles(const QStringList &userIniFiles, const QList<QByteArray> &section,
    SectionChange change, std::list<WorkingCopy> &copies)
{
    QList<PreparedFile> files;
    QStringList dummies;
    for (const QString &userIni : userIniFiles) {
        const QString dummyIni = dummyIniBeside(userIni);
        // A second user.ini in the same folder would need the same working
        // copy; nothing has been written yet, so it goes without one.
        const bool needsCopy = !dummies.contains(dummyIni);
        // Left behind by an apply that was interrupted, perhaps as a second
        // name of user.ini.
        if (needsCopy)
            QFile::remove(dummyIni);
        // A user.ini that cannot be replaced stops the apply before any is.
        checkReplaceable(userIni);
        QByteArray bytes = readFileBytes(userIni);
        int namesOfOurs = 0;
        if (needsCopy) {
            namesOfOurs = copies.emplace_back(userIni, dummyIni, bytes).namesOfOurs();
            dummies.append(dummyIni);
        }
        PreparedFile file = cutAtSection(userIni, std::move(bytes));
        file.namesOfOurs = namesOfOurs;
        file.oldSection = replaceSection(file.section, section, change);
        file.rewritten = file.lineEndBefore + file.section.toBytes();
        files.append(std::move(file));
    }
    return files;
}

void missingConfiguration(const QString &configFileName)
{
    showMessage(QStringLiteral("Missing File"),
        QStringLiteral("Can't find ") + configFileName + QStringLiteral(".  Operation Aborted."),
        MessageButtons::Ok, MessageIcon::Exclamation);
}

// The same file named twice, or through another path, is applied once.
QStringList distinctFiles(const QStringList &files)
{
    QStringList distinct;
    QStringList seen;
    for (const QString &file : files) {
        const QString canonical = QFileInfo(file).canonicalFilePath();
        if (seen.contains(canonical))
            continue;
        seen.append(canonical);
        distinct.append(file);
    }
    return distinct;
}

bool userWantsToChangeWhileGameRuns(const ChangeWords &words)
{
    return showMessage(QStringLiteral("Unreal Tournament Is Running"),
               QStringLiteral("Unreal Tournament is running. It rewrites user.ini when it "
                              "quits, so ")
                   + words.changedNow + QStringLiteral(" will be overwritten then.\r\n\r\n")
                   + words.anyway,
               MessageButtons::YesNo, MessageIcon::Exclamation)
        == MessageAnswer::Yes;
}

void reportFailedWrite(const RunError &error, const QList<PreparedFile> &files,
    qsizetype firstUnchanged, const ChangeWords &words)
{
    if (firstUnchanged == 0) {
        showMessage(words.failed,
            error.message() + QStringLiteral("\r\n\r\n") + nothingChanged(files.size()),
            MessageButtons::Ok, MessageIcon::Critical);
        return;
    }
    QStringList changed;
    QStringList unchanged;
    for (qsizetype i = 0; i < files.size(); ++i)
        (i < firstUnchanged ? changed : unchanged).append(files.at(i).userIni);
    const QString crlf = QStringLiteral("\r\n");
    showMessage(words.incomplete,
        error.message() + crlf + crlf + QStringLiteral("These user.ini files were changed:") + crlf
            + changed.join(crlf) + crlf + crlf
            + QStringLiteral("These user.ini files were not changed:") + crlf
            + unchanged.join(crlf),
        MessageButtons::Ok, MessageIcon::Critical);
}

} // namespace

QString BackupFileName(const QDateTime &time, const QString &folder)
{
    const QDate date = time.date();
    const QTime clock = time.time();
    const QList<int> numbers { date.month(), date.day(), date.year(), clock.hour(), clock.minute(),
        clock.second() };
    QStringList parts;
    for (int number : numbers)
        parts.append(QString::number(number));
    QString name
        = QStringLiteral("curconfig_bkup_(") + parts.join(QLatin1Char('-')) + QLatin1Char(')');
    if (!folder.isEmpty())
        name += QLatin1Char('_') + folder;
    return name + QStringLiteral(".qvn2");
}

bool ApplyConfiguration(const QString &configFileName, bool makeBackup,
    const QStringList &userIniFiles, bool askIfGameRuns)
{
    // Nothing chosen reads as a missing file, as it always has.
    if (configFileName.isEmpty()) {
        missingConfiguration(configFileName);
        return false;
    }
    const QString nameProblem = ConfigNameProblem(configFileName);
    if (!nameProblem.isEmpty()) {
        showMessage(
            InvalidConfigNameTitle(), nameProblem, MessageButtons::Ok, MessageIcon::Exclamation);
        return false;
    }
    const QString configPath = AppOptions().ConfigPath + configFileName;
    if (!QFileInfo(configPath).isFile()) {
        missingConfiguration(configFileName);
        return false;
    }

    return ReplaceBotSections(
        SectionChange::Apply, [&] { return readConfigurationSection(configPath, configFileName); },
        makeBackup, userIniFiles, askIfGameRuns);
}

bool ReplaceBotSections(SectionChange change, const std::function<QList<QByteArray>()> &readSection,
    bool makeBackup, const QStringList &userIniFiles, bool askIfGameRuns)
{
    const ChangeWords words = wordsFor(change);
    const bool allExist = std::all_of(userIniFiles.begin(), userIniFiles.end(),
        [](const QString &file) { return QFileInfo(file).isFile(); });
    if (userIniFiles.isEmpty() || !allExist) {
        showMessage(QStringLiteral("User.ini File Missing"),
            QStringLiteral("Can't find user.ini.  Operation Aborted"), MessageButtons::Ok,
            MessageIcon::Exclamation);
        return false;
    }
    if (askIfGameRuns && IsGameRunning() && !userWantsToChangeWhileGameRuns(words))
        return false;

    const QStringList targets = distinctFiles(userIniFiles);
    // Held from the reading of each user.ini to its replacement.
    std::list<FileLock> locks;
    std::list<WorkingCopy> copies;
    QList<PreparedFile> files;
    Backups backups;
    try {
        for (const QString &target : targets)
            locks.emplace_back(target);
        files = prepareFiles(targets, readSection(), change, copies);
        if (makeBackup)
            writeBackups(files, backups);
    } catch (const Refusal &refusal) {
        copies.clear();
        showMessage(refusal.title, refusal.text, MessageButtons::Ok, MessageIcon::Exclamation);
        return false;
    } catch (const RunError &error) {
        copies.clear();
        showMessage(words.failed,
            error.message() + QStringLiteral("\r\n\r\n") + nothingChanged(targets.size()),
            MessageButtons::Ok, MessageIcon::Critical);
        return false;
    }

    for (qsizetype i = 0; i < files.size(); ++i) {
        try {
            writeFileAtomically(
                files.at(i).userIni, files.at(i).newContent(), files.at(i).namesOfOurs);
        } catch (const RunError &error) {
            copies.clear();
            backups.removeFrom(i);
            reportFailedWrite(error, files, i, words);
            return false;
        }
    }
    // The working copies go before the user is told, so that what the user
    // then sees in the game folder is the finished state.
    copies.clear();

    showMessage(
        words.completed, QStringLiteral("Completed"), MessageButtons::Ok, MessageIcon::Information);
    return true;
}

bool ApplyConfiguration(const QString &configFileName, bool makeBackup)
{
    return ApplyConfiguration(configFileName, makeBackup, GameUserIniFiles(AppOptions().UTPath));
}
