#pragma once

#include "roster/botroster.h"
#include "startup/options.h"

#include <QString>
#include <QStringList>

// A configuration file (".qvn"): a comment header with the file's name and
// the roster's description, then, line for line, a replacement for the
// game's [Botpack.ChallengeBotInfo] section. Windows-1252, CR LF.

// The whole file for `roster` as it is written, without line endings.
// Accuracy and alertness positions off their step of 5 are snapped in
// `roster` itself, so that the roster shows what the file holds.
QStringList ConfigurationLines(const QString &fileName, BotRoster &roster);

// Writes `roster` to `directory` + `fileName` (the directory ends with the
// separator), replacing the file atomically. An existing file is replaced
// only when `overwriteWithoutAsking` is set or the user answers Yes.
// Returns whether the file was written; throws RunError when it could not be.
bool SaveConfigAs(const QString &directory, const QString &fileName, bool overwriteWithoutAsking,
    BotRoster &roster = Roster());

// Reads a configuration file into `roster`, all fields and the description.
// The key lines are read by position, not by name. A file that cannot be
// read to its last key line throws RunError naming the file and the line,
// and leaves `roster` as it was.
void OpenConfiguration(
    const QString &directory, const QString &fileName, BotRoster &roster = Roster());

// The description of a configuration, its lines joined by single spaces,
// for the list of configurations to apply. A file that is not a
// configuration gives what could be found (often nothing). Throws RunError
// when the file cannot be read.
QString ReadDescription(
    const QString &fileName, const QString &directory = AppOptions().ConfigPath);
