#pragma once

#include "startup/options.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

// The backups the apply makes of the bot sections it replaces
// ("curconfig_bkup_(M-D-YYYY-H-m-s).qvn2" in the configuration folder, see
// BackupFileName), and putting one back.

struct BackupFile
{
    QString fileName; // its name in the configuration folder
    // When it was made, from its name; the file's own time when the name
    // does not say.
    QDateTime time;
    // The folder of the user.ini it was made of when that was not the first
    // the game reads ("System64"); empty for the first.
    QString folder;
    // The names of its bots in slot order: a preview. Empty when the file
    // cannot be read.
    QStringList botNames;
};

// The backups in `directory` (which ends with the separator), newest first.
QList<BackupFile> ListBackups(const QString &directory = AppOptions().ConfigPath);

// Which of `userIniFiles` (as GameUserIniFiles lists them) `backup` was made
// of; empty when none of them is.
QString BackupSource(const BackupFile &backup, const QStringList &userIniFiles);

// Puts the section of the backup `backupFileName` (a bare name in the
// configuration folder) back into `userIni` in place of its bot section, as
// the apply puts a configuration: the file locked, replaced in one step, its
// encoding and every byte outside the section kept, the user warned while
// the game runs (when `askIfGameRuns` is set). The section it replaces is
// backed up first. Tells the user the outcome through the prompt and returns
// whether the backup was restored.
bool RestoreBackup(
    const QString &backupFileName, const QString &userIni, bool askIfGameRuns = true);
