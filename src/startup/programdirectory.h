#pragma once

#include <QString>

// The program's own directory: options.ini, int.ini, pattern.ini and the
// report files live here. It ends with the native separator.
//
// A copy that keeps its files beside it (the build folder, a portable copy,
// the Windows zip) uses the executable's folder while it can write there.
// An installed copy (its shipped files in the installation's data folder,
// /usr/share/quorvane) or one in a folder it cannot write uses the per-user
// data folder instead, which its first use seeds with the shipped int.ini
// and pattern.ini. Decided once per process, by ChooseProgramDir().
QString ProgramDir();
// Overrides the directory (the command line's --program-dir, tests); an
// empty one goes back to the decided directory.
void setProgramDir(const QString &directory);

// What the program directory is decided from.
struct ProgramLocations
{
    QString executableDir;
    bool executableDirWritable = false;
    // The per-user data folder, QStandardPaths::AppDataLocation.
    QString userDataDir;
};

// The program directory for `where`, with the native separator at its end.
// A per-user one is created and given the shipped int.ini and pattern.ini
// it lacks; files already there are the user's and stay as they are.
QString ChooseProgramDir(const ProgramLocations &where);

// The folder of the shipped int.ini, pattern.ini and help/ of the program
// whose executable is in `executableDir`: the installation's data folder
// when it holds them, else the executable's own folder. Ends with the
// native separator.
QString ShippedFilesDir(const QString &executableDir);

// The user guide's start page: help/index.html in the program directory,
// or the shipped guide when the program directory has none.
QString UserGuideFile();

// Names the running program for the platform, "quorvane" with the project's
// version, whichever front end it is: the name picks the per-user data
// folder, which both share (~/.local/share/quorvane on Linux).
void NameApplication();
