#include "applyconfig.h"

#include "fileops.h"
#include "progress.h"
#include "prompt.h"
#include "runerror.h"
#include "startup/options.h"
#include "textdocument.h"
#include "textfile.h"

#include <QFile>
#include <QFileInfo>

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
    const QList<QByteArray> lines = splitLines(readFileBytes(path));
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
        QFile file(source);
        if (!file.copy(m_path))
            throw RunError(ErrNum::PathFileAccess,
                m_path + QStringLiteral(" (") + file.errorString() + QLatin1Char(')'));
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
    QList<Line> &lines = document.lines();
    qsizetype header = 0;
    while (header < lines.size() && !isSectionHeader(document.text(lines.at(header)))) {
        letEventLoopRun();
        ++header;
    }
    const bool found = header < lines.size();

    QList<Line> rewritten = lines.mid(0, header);
    if (!found && !rewritten.isEmpty() && rewritten.last().ending.isEmpty())
        rewritten.last().ending = document.newline();
    Line headerLine = found ? lines.at(header) : document.makeLine(SectionHeader);
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
    if (found) {
        qsizetype next = header;
        oldSection.append(lines.at(next++));
        while (next < lines.size() && !lines.at(next).content.isEmpty()) {
            letEventLoopRun();
            oldSection.append(lines.at(next++));
        }
        rewritten += lines.mid(next);
    }
    lines = std::move(rewritten);
    return oldSection;
}

void writeBackup(const TextDocument &document, const QList<Line> &oldSection)
{
    const QString path = AppOptions().ConfigPath + BackupFileName(QDateTime::currentDateTime());
    QByteArray bytes;
    for (const Line &line : oldSection) {
        bytes += document.encoding() == TextDocument::Encoding::Ansi
            ? line.content
            : encodeAnsi(document.text(line));
        bytes += "\r\n";
    }
    try {
        writeFileAtomically(path, bytes);
    } catch (const RunError &error) {
        throw Refusal { QStringLiteral("Backup Failed"),
            QStringLiteral("Can't write the backup of the current configuration.")
                + QStringLiteral("\r\n\r\n") + error.message()
                + QStringLiteral("\r\n\r\nuser.ini was not changed.") + AbortedText };
    }
}

void replaceUserIniSection(const QString &configPath, const QString &configFileName,
    const QString &userIni, const QString &dummyIni, bool makeBackup)
{
    const QList<QByteArray> section = readConfigurationSection(configPath, configFileName);
    const WorkingCopy copy(userIni, dummyIni);
    TextDocument document = TextDocument::load(copy.path());
    const QList<Line> oldSection = replaceSection(document, section);
    if (makeBackup && !oldSection.isEmpty())
        writeBackup(document, oldSection);
    writeFileAtomically(userIni, document.toBytes());
}

} // namespace

QString BackupFileName(const QDateTime &time)
{
    const QDate date = time.date();
    const QTime clock = time.time();
    const QList<int> numbers { date.month(), date.day(), date.year(), clock.hour(), clock.minute(),
        clock.second() };
    QStringList parts;
    for (int number : numbers)
        parts.append(QString::number(number));
    return QStringLiteral("curconfig_bkup_(") + parts.join(QLatin1Char('-'))
        + QStringLiteral(").qvn2");
}

bool ApplyConfiguration(const QString &configFileName, bool makeBackup)
{
    const QString configPath = AppOptions().ConfigPath + configFileName;
    if (!QFileInfo(configPath).isFile()) {
        showMessage(QStringLiteral("Missing File"),
            QStringLiteral("Can't find ") + configFileName
                + QStringLiteral(".  Operation Aborted."),
            MessageButtons::Ok, MessageIcon::Exclamation);
        return false;
    }

    const QString userIni = findPathNoCase(AppOptions().UTPath, QStringLiteral("System/user.ini"));
    const QString dummyIni
        = findPathNoCase(AppOptions().UTPath, QStringLiteral("System/dummy.ini"));
    // Left behind by an apply that was interrupted.
    QFile::remove(dummyIni);
    if (!QFileInfo(userIni).isFile()) {
        showMessage(QStringLiteral("User.ini File Missing"),
            QStringLiteral("Can't find user.ini.  Operation Aborted"), MessageButtons::Ok,
            MessageIcon::Exclamation);
        return false;
    }

    try {
        replaceUserIniSection(configPath, configFileName, userIni, dummyIni, makeBackup);
    } catch (const Refusal &refusal) {
        showMessage(refusal.title, refusal.text, MessageButtons::Ok, MessageIcon::Exclamation);
        return false;
    } catch (const RunError &error) {
        showMessage(QStringLiteral("Apply Configuration Failed"),
            error.message() + QStringLiteral("\r\n\r\nuser.ini was not changed.") + AbortedText,
            MessageButtons::Ok, MessageIcon::Critical);
        return false;
    }

    showMessage(QStringLiteral("Apply Configuration..."), QStringLiteral("Completed"),
        MessageButtons::Ok, MessageIcon::Information);
    return true;
}
