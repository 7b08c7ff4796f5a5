#pragma once

#include "roster/botroster.h"

#include <QDate>
#include <QString>
#include <QStringList>

// The bot list the game itself keeps, read from the [Botpack.ChallengeBotInfo]
// section of a user.ini. The game writes that section in its own key order
// (the faces first, then the list-wide values, then the other arrays), may
// leave keys out, and writes its numbers as it formats them ("0.200000"), so
// it is read by key, in any order, and every number is turned into the
// position of the editor's control for it, at the nearest step inside the
// control's range. Which user.ini files the game reads: GameUserIniFiles.

struct RosterImport
{
    // The default roster where the section left a value out or held one
    // that cannot be read.
    BotRoster roster;
    // What was missing or could not be read, one line each, for the user.
    QStringList problems;
    // Without a section nothing was read and `roster` is the default list.
    bool sectionFound = false;
};

// Reads the key lines of a bot section, its header left out. The first line
// of a key counts, as in the game; keys match in any capitals; lines that are
// no key of the list are passed over.
RosterImport ReadBotSection(const QStringList &lines);

// The bot names a section's key lines hold, in slot order, leaving out the
// slots that have none: a preview of a backup.
QStringList BotNamesInSection(const QStringList &lines);

// Reads the bot section of `userIni` (in whichever encoding and line ends
// the file has); the description says "Imported from <file> on <date>".
// Throws RunError when the file cannot be read.
RosterImport ImportRoster(const QString &userIni, const QDate &date = QDate::currentDate());

// Tells the user in one message what an import of `userIni` could not take
// (or that the file has no bot list); says nothing when all was read.
void ReportImportProblems(const RosterImport &import, const QString &userIni);
