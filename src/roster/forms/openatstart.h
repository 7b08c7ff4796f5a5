#pragma once

#include <QString>

// Opens the configuration file at `path` in the main window that the
// start-up prepared, as File, Open does: the roster, the first slot shown,
// the file's name and the Loaded state, with a fresh undo history. A file
// manager, a drop on the window or File's list of recent configurations
// hands it over, from any folder.
//
// The program keeps its configurations in the configuration folder: a file
// from elsewhere is offered to be copied there under its own name (a file of
// that name there is replaced only when the user agrees), and the copy is
// opened. A roster that is not saved is offered to be saved first. A file
// that cannot be read is reported and changes nothing; without a main
// window nothing happens. Returns whether the file was opened.
bool OpenConfigurationFile(const QString &path);

// The same for the file named on the command line.
inline void OpenConfigurationAtStart(const QString &path)
{
    OpenConfigurationFile(path);
}
