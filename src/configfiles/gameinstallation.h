#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// Everything the program knows of how the game lies on disk and runs: which
// user.ini files it reads, which executable starts it, whether it is running.
// The apply, the launch and the path checks ask here, so that a new layout
// of the game touches this file only. Names inside the game folder are found
// without regard to case.

// The user.ini files the game reads from `gameDir`, those that exist, in this
// order: System/User.ini; System64/User.ini (the community patch's 64-bit
// game keeps its own); on Linux, ~/.utpg/System/User.ini when the game
// folder holds neither of the others, since the game then uses that one.
QStringList GameUserIniFiles(const QString &gameDir);

// The same places as the user writes them, for messages: "System/User.ini"
// (native separators), ..., "~/.utpg/System/User.ini".
QStringList GameUserIniPlaces();

// A folder the program can work with: it has a System folder and the game
// reads at least one user.ini for it.
bool IsGameFolder(const QString &gameDir);

// The executable that starts the game, the first of the platform's that
// exists (Windows: System64 then System UnrealTournament.exe; Linux:
// System64/ut-bin-amd64, SystemARM64/ut-bin-arm64, System/ut-bin-x86,
// System/ut-bin); empty when there is none.
QString GameExecutable(const QString &gameDir);

// Starts `program` detached, with no arguments and its own folder as the
// working directory. Returns whether it started.
bool StartGame(const QString &program);

// Whether the game runs now (Windows: the process list; Linux: /proc).
bool IsGameRunning();

// The names the processes of a /proc-style folder run under: for each
// numbered folder, its comm and the base name of its argv[0] (split at "/"
// and "\\", since a Windows game under Wine has a Windows path there).
// IsGameRunning reads /proc through it where there is one.
QStringList ProcessNamesIn(const QString &procDir);

// Test seams: what starts a program, and what lists the names of the
// running processes. An empty function restores the real one.
using GameStarter = std::function<bool(const QString &program, const QString &workingDirectory)>;
void setGameStarter(GameStarter starter);
using ProcessLister = std::function<QStringList()>;
void setProcessLister(ProcessLister lister);
