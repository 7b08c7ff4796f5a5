#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

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
