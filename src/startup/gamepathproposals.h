#pragma once

#include <QString>
#include <QStringList>

// The directories the path dialogs propose before the user browses. Each
// ends with the native separator; an empty text proposes nothing.

// Where the game dialog proposes the game on its own: on Windows
// "C:\UnrealTournament\" when it is a game folder (IsGameFolder); elsewhere
// the first of the usual places under the home folder (see
// GamePathCandidates) that holds the game.
QString ProposedGamePath();

// Where the start-up proposes the game when it has to ask: on Windows
// "C:\UnrealTournament\" when that folder holds at least one file, so that
// a broken installation is still shown to the user; elsewhere as
// ProposedGamePath.
QString StartupGamePath();

// `folder` when it exists and holds at least one file, else "".
QString FolderWithFiles(const QString &folder);

// Where configurations go when none is set yet: on Windows
// "C:\UnrealTournament\Configs\"; elsewhere a Configs folder inside
// `gamePath`, or one in the home folder when no game directory is known.
QString ProposedConfigPath(const QString &gamePath);

// The usual places of a Linux installation of the game under `home`, the
// per-user folders of the game's ports first, as they hold user.ini.
QStringList GamePathCandidates(const QString &home);

// The first candidate that is a game folder (IsGameFolder) with .int files
// in its System folder, else the first game folder, else the first that has
// a System folder, else "". Names inside a candidate match without regard to
// case.
QString FirstGamePath(const QStringList &candidates);
