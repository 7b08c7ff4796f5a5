#include "restorebackup.h"

#include "applyconfig.h"
#include "botsection.h"
#include "configname.h"
#include "prompt.h"
#include "roster/rosterimport.h"
#include "runerror.h"
#include "textdocument.h"
#include "textfile.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

// What BackupFileName writes, with the folder of a further user.ini and the
// number that keeps a second backup of the same second from replacing the
// first.
const QRegularExpression BackupName(
    QStringLiteral(R"(^curconfig_bkup_\((\d+)-(\d+)-(\d+)-(\d+)-(\d+)-(\d+)\)(?:_(.*?))?)"
                   R"((?: \((\d+)\))?\.qvn2$)"),
    QRegularExpression::CaseInsensitiveOption);

struct ListedBackup
{
    BackupFile file;
    int number; // 1 for the first backup of its second
};

ListedBackup describe(const QString &directory, const QString &name)
{
    ListedBackup listed { { name, {}, {}, {} }, 1 };
    const QRegularExpressionMatch match = BackupName.match(name);
    if (match.hasMatch()) {
        const auto part = [&match](int n) { return match.captured(n).toInt(); };
        listed.file.time
            = QDateTime(QDate(part(3), part(1), part(2)), QTime(part(4), part(5), part(6)));
        listed.file.folder = match.captured(7);
        if (match.hasCaptured(8))
            listed.number = part(8);
    }
    if (!listed.file.time.isValid())
        listed.file.time = QFileInfo(directory + name).lastModified();
    try {
        QStringList lines = readAnsiLines(directory + name);
        listed.file.botNames = BotNamesInSection(lines.mid(1));
    } catch (const RunError &) {
        // Listed all the same; restoring it says what is wrong.
    }
    return listed;
}

// The lines of a backup, its header first, as the file holds them (ANSI);
// empty when the file does not begin with a bot section or holds more than
// empty lines after it.
QList<QByteArray> backupSection(const QString &path)
{
    const QByteArray bytes = readFileBytes(path, MaxProgramFileBytes);
    const BotSectionSpan span = FindBotSection(TextDocument::fromBytes(bytes));
    const QList<QByteArray> lines = splitLines(bytes);
    if (!span.found || span.header != 0
        || !std::all_of(lines.begin() + span.end, lines.end(),
            [](const QByteArray &line) { return line.isEmpty(); }))
        return {};
    return lines.first(span.end);
}

} // namespace

QList<BackupFile> ListBackups(const QString &directory)
{
    QList<ListedBackup> listed;
    const QStringList names = QDir(directory).entryList(
        { QStringLiteral("curconfig_bkup_(*.qvn2") }, QDir::Files | QDir::Hidden);
    for (const QString &name : names)
        listed.append(describe(directory, name));
    std::sort(listed.begin(), listed.end(), [](const ListedBackup &a, const ListedBackup &b) {
        if (a.file.time != b.file.time)
            return a.file.time > b.file.time;
        if (a.number != b.number)
            return a.number > b.number;
        return a.file.fileName < b.file.fileName;
    });
    QList<BackupFile> backups;
    for (const ListedBackup &backup : std::as_const(listed))
        backups.append(backup.file);
    return backups;
}

QString BackupSource(const BackupFile &backup, const QStringList &userIniFiles)
{
    if (backup.folder.isEmpty())
        return userIniFiles.value(0);
    // Two further folders of the same name are told apart by "-2", "-3", ...
    static const QRegularExpression numbered(QStringLiteral("-\\d+$"));
    const QString unnumbered = QString(backup.folder).remove(numbered);
    for (const QString &candidate : { backup.folder, unnumbered }) {
        for (const QString &userIni : userIniFiles.mid(1)) {
            if (QFileInfo(userIni).dir().dirName().compare(candidate, Qt::CaseInsensitive) == 0)
                return userIni;
        }
    }
    return {};
}

bool RestoreBackup(const QString &backupFileName, const QString &userIni, bool askIfGameRuns)
{
    const QString aborted = QStringLiteral(".  Operation Aborted.");
    const QString nameProblem = ConfigNameProblem(backupFileName);
    if (!nameProblem.isEmpty()) {
        showMessage(
            InvalidConfigNameTitle(), nameProblem, MessageButtons::Ok, MessageIcon::Exclamation);
        return false;
    }
    const QString path = AppOptions().ConfigPath + backupFileName;
    if (!QFileInfo(path).isFile()) {
        showMessage(QStringLiteral("Missing File"),
            QStringLiteral("Can't find ") + backupFileName + aborted, MessageButtons::Ok,
            MessageIcon::Exclamation);
        return false;
    }

    QList<QByteArray> section;
    try {
        section = backupSection(path);
    } catch (const RunError &error) {
        showMessage(QStringLiteral("Restore Backup Failed"),
            error.message() + QStringLiteral("\r\n\r\nuser.ini was not changed") + aborted,
            MessageButtons::Ok, MessageIcon::Critical);
        return false;
    }
    if (section.isEmpty()) {
        showMessage(QStringLiteral("Invalid Backup"),
            backupFileName
                + QStringLiteral(" is not a backup of a bot list: it holds more, or "
                                 "other, than one ")
                + BotSectionHeader + QStringLiteral(" section") + aborted,
            MessageButtons::Ok, MessageIcon::Exclamation);
        return false;
    }
    return ReplaceBotSections(
        SectionChange::Restore, [&section] { return section; }, true, { userIni }, askIfGameRuns);
}
