#include "applyconfig.h"

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

const QString SectionHeader = QStringLiteral("[Botpack.ChallengeBotInfo]");
const QString AbortedText = QStringLiteral("  Operation Aborted.");

// A reason to stop that the user is told about as it stands.
struct Refusal
{
    QString title;
    QString text;
};

QString withoutTrailingSpaces(QString line)
{
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    return line;
}

// The game's own header in any capitals, with trailing spaces; a leading
// space makes it another section.
bool isSectionHeader(const QString &line)
{
    return withoutTrailingSpaces(line).compare(SectionHeader, Qt::CaseInsensitive) == 0;
}

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
            intro + QStringLiteral("it has no empty line before its ") + SectionHeader
                + QStringLiteral(" section.") + AbortedText };
    const QList<QByteArray> section = lines.mid(empty + 1);
    if (section.size() > SectionLineLimit)
        throw Refusal { invalid,
            intro + QStringLiteral("its section has more than ") + QString::number(SectionLineLimit)
                + QStringLiteral(" lines.") + AbortedText };
    return section;
}

// Deletes the working copy of user.ini however the apply ends.
class WorkingCopy
{
public:
    WorkingCopy(const QString &source, QString path)
        : m_path(std::move(path))
    {
        writeFileAtomically(m_path, readFileBytes(source));
    }
    ~WorkingCopy() { QFile::remove(m_path); }
    WorkingCopy(const WorkingCopy &) = delete;
    WorkingCopy &operator=(const WorkingCopy &) = delete;

    const QString &path() const { return m_path; }

private:
    QString m_path;
};

// Puts `section` (entries 2 on of the configuration's section) in place of
// the document's old section, or at its end when it has none, and returns
// the old section: its header and its lines up to the first empty line.
QList<Line> replaceSection(TextDocument &document, const QList<QByteArray> &section)
{
    qsizetype header = 0;
    while (header < document.lineCount() && !isSectionHeader(document.text(header))) {
        letEventLoopRun();
        ++header;
    }
    const bool found = header < document.lineCount();

    QList<Line> rewritten;
    Line headerLine = found ? document.line(header) : document.makeLine(SectionHeader);
    // A header on the file's last line has no ending of its own.
    if (headerLine.ending.isEmpty())
        headerLine.ending = document.newline();
    rewritten.append(headerLine);

    for (qsizetype entry = 1; entry < SectionLineLimit; ++entry) {
        letEventLoopRun();
        rewritten.append(entry < section.size() ? document.makeLineFromAnsi(section.at(entry))
                                                : document.makeLine(QString()));
    }
    rewritten.append(document.makeLine(QString()));

    QList<Line> oldSection;
    qsizetype next = header;
    if (found) {
        oldSection.append(document.line(next++));
        while (next < document.lineCount() && !document.line(next).content.isEmpty()) {
            letEventLoopRun();
            oldSection.append(document.line(next++));
        }
    }
    document.replaceLines(header, next - header, rewritten);
    return oldSection;
}

// One user.ini of the apply, read and rewritten in memory before any of
// them is written.
struct PreparedFile
{
    QString userIni;
    TextDocument document;
    QList<Line> oldSection;
};

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
        bytes += file.document.encoding() == TextDocument::Encoding::Ansi
            ? line.content
            : encodeAnsi(file.document.text(line));
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

// The first user.ini keeps the plain backup name, so that a one-file game
// gets the names it always had; the others say which folder they came from,
// numbered when two folders share a name.
QStringList backupNames(const QList<PreparedFile> &files, const QDateTime &time)
{
    QStringList names;
    for (const PreparedFile &file : files) {
        QString name = BackupFileName(time);
        const QString folder = QFileInfo(file.userIni).dir().dirName();
        for (int number = 1; names.contains(name, Qt::CaseInsensitive); ++number) {
            const QString suffix
                = number == 1 ? QString() : QLatin1Char('-') + QString::number(number);
            name = BackupFileName(time, folder + suffix);
        }
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
    std::list<WorkingCopy> &copies)
{
    QList<PreparedFile> files;
    QStringList dummies;
    for (const QString &userIni : userIniFiles) {
        // A user.ini that cannot be replaced stops the apply before any is.
        checkReplaceable(userIni);
        const QString dummyIni = dummyIniBeside(userIni);
        QString source = userIni;
        // A second user.ini in the same folder would need the same working
        // copy; nothing has been written yet, so it is read where it is.
        if (!dummies.contains(dummyIni)) {
            // Left behind by an apply that was interrupted.
            QFile::remove(dummyIni);
            source = copies.emplace_back(userIni, dummyIni).path();
            dummies.append(dummyIni);
        }
        PreparedFile file { userIni, TextDocument::load(source), {} };
        file.oldSection = replaceSection(file.document, section);
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

bool userWantsToApplyWhileGameRuns()
{
    return showMessage(QStringLiteral("Unreal Tournament Is Running"),
               QStringLiteral("Unreal Tournament is running. It rewrites user.ini when it "
                              "quits, so the bot list applied now will be overwritten then.")
                   + QStringLiteral("\r\n\r\nApply the configuration anyway?"),
               MessageButtons::YesNo, MessageIcon::Exclamation)
        == MessageAnswer::Yes;
}

void reportFailedWrite(
    const RunError &error, const QList<PreparedFile> &files, qsizetype firstUnchanged)
{
    if (firstUnchanged == 0) {
        showMessage(QStringLiteral("Apply Configuration Failed"),
            error.message() + QStringLiteral("\r\n\r\n") + nothingChanged(files.size()),
            MessageButtons::Ok, MessageIcon::Critical);
        return;
    }
    QStringList changed;
    QStringList unchanged;
    for (qsizetype i = 0; i < files.size(); ++i)
        (i < firstUnchanged ? changed : unchanged).append(files.at(i).userIni);
    const QString crlf = QStringLiteral("\r\n");
    showMessage(QStringLiteral("Apply Configuration Incomplete"),
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

    const bool allExist = std::all_of(userIniFiles.begin(), userIniFiles.end(),
        [](const QString &file) { return QFileInfo(file).isFile(); });
    if (userIniFiles.isEmpty() || !allExist) {
        showMessage(QStringLiteral("User.ini File Missing"),
            QStringLiteral("Can't find user.ini.  Operation Aborted"), MessageButtons::Ok,
            MessageIcon::Exclamation);
        return false;
    }
    if (askIfGameRuns && IsGameRunning() && !userWantsToApplyWhileGameRuns())
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
        const QList<QByteArray> section = readConfigurationSection(configPath, configFileName);
        files = prepareFiles(targets, section, copies);
        if (makeBackup)
            writeBackups(files, backups);
    } catch (const Refusal &refusal) {
        copies.clear();
        showMessage(refusal.title, refusal.text, MessageButtons::Ok, MessageIcon::Exclamation);
        return false;
    } catch (const RunError &error) {
        copies.clear();
        showMessage(QStringLiteral("Apply Configuration Failed"),
            error.message() + QStringLiteral("\r\n\r\n") + nothingChanged(targets.size()),
            MessageButtons::Ok, MessageIcon::Critical);
        return false;
    }

    for (qsizetype i = 0; i < files.size(); ++i) {
        try {
            writeFileAtomically(files.at(i).userIni, files.at(i).document.toBytes());
        } catch (const RunError &error) {
            copies.clear();
            backups.removeFrom(i);
            reportFailedWrite(error, files, i);
            return false;
        }
    }
    // The working copies go before the user is told, so that what the user
    // then sees in the game folder is the finished state.
    copies.clear();

    showMessage(QStringLiteral("Apply Configuration..."), QStringLiteral("Completed"),
        MessageButtons::Ok, MessageIcon::Information);
    return true;
}

bool ApplyConfiguration(const QString &configFileName, bool makeBackup)
{
    return ApplyConfiguration(configFileName, makeBackup, GameUserIniFiles(AppOptions().UTPath));
}
