#pragma once

#include <QDateTime>
#include <QString>

// The name of a backup of the replaced section, made at `time`:
// "curconfig_bkup_(M-D-YYYY-H-m-s).qvn2", numbers without leading zeros.
QString BackupFileName(const QDateTime &time);

// Replaces the [Botpack.ChallengeBotInfo] section of the game's
// System/user.ini with the section of the configuration `configFileName`
// (in the configuration directory), keeping every other byte of user.ini
// and its encoding. With `makeBackup` the replaced section is first saved
// beside the configurations. user.ini is replaced in one step, so a failure
// leaves it as it was. Tells the user the outcome through the prompt and
// returns whether the apply was completed.
bool ApplyConfiguration(const QString &configFileName, bool makeBackup);
