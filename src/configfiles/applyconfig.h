#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>

// The name of a backup of the replaced section, made at `time`:
// "curconfig_bkup_(M-D-YYYY-H-m-s).qvn2", numbers without leading zeros.
// A backup of a further user.ini of the same apply adds its folder:
// "curconfig_bkup_(M-D-YYYY-H-m-s)_System64.qvn2".
QString BackupFileName(const QDateTime &time, const QString &folder = QString());

// Replaces the [Botpack.ChallengeBotInfo] section of each of `userIniFiles`
// with the section of the configuration `configFileName` (a bare name in the
// configuration directory), keeping every other byte of each file and its
// encoding. With `makeBackup` each replaced section is first saved beside the
// configurations, one backup file per user.ini. Each user.ini is replaced in
// one step, so a failure leaves it as it was.
//
// When the game is running and `askIfGameRuns` is set, the user is warned
// that the game will overwrite the list when it quits and may cancel.
// Tells the user the outcome through the prompt and returns whether the
// apply was completed.
bool ApplyConfiguration(const QString &configFileName, bool makeBackup,
    const QStringList &userIniFiles, bool askIfGameRuns = true);

// The same for every user.ini the game reads from the game directory
// (GameUserIniFiles).
bool ApplyConfiguration(const QString &configFileName, bool makeBackup);

// What a replacement of the bot section is: an apply puts a configuration's
// key lines (all 451, empty ones where the file has fewer) and an empty line
// in place of the section; a restore puts the lines of a backup back as they
// were and takes away the empty line an apply added after them. Each tells
// the user in its own words ("Apply Configuration...", "Restore Backup...").
enum class SectionChange { Apply, Restore };

// The step the apply and the restore share, as ApplyConfiguration describes
// it from the user.ini files on: the running game, the locks, the working
// copies, the backups, the atomic replacements and the messages.
// `readSection` gives the new section, its header line first, as ANSI
// lines; it runs once the user.ini files are locked, and a RunError from it
// stops the change before anything is written.
bool ReplaceBotSections(SectionChange change, const std::function<QList<QByteArray>()> &readSection,
    bool makeBackup, const QStringList &userIniFiles, bool askIfGameRuns = true);
