#pragma once

#include <QString>
#include <QStringList>

// The directories the path dialogs propose before the user browses. Each
// ends with the native separator; an empty text proposes nothing.

// Where the game is most likely installed: on Windows "C:\UnrealTournament\"
// when it holds System\user.ini; elsewhere the first of the usual places
// under the home folder (see GamePathCandidates) that holds the game.
QString ProposedGamePath();

// Where configurations go when none is set yet: on Windows
// "C:\UnrealTournament\Configs\"; elsewhere a Configs folder inside
// `gamePath`, or one in the home folder when no game directory is known.
QString ProposedConfigPath(const QString &gamePath);

// The usual places of a Linux installation of the game under `home`, the
// per-user folders of the game's ports first, as they hold user.ini.
QStringList GamePathCandidates(const QString &home);

// The first candidate whose System folder holds user.ini and .int files,
// else the first that holds System/user.ini, else the first that has a
// System folder, else "". Names inside a candidate match without regard to case.
QString FirstGamePath(const QStringList &candidates);
