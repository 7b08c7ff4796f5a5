#pragma once

#include <QString>

// Opens the configuration file at `path` (a file manager hands over one from
// anywhere) in the main window that the start-up prepared, as File, Open
// does: the roster, the first slot shown, the file's name and the Loaded
// state. A later Save keeps it in the configuration directory under that
// name. A file that cannot be read is reported and changes nothing; without
// a main window nothing happens.
void OpenConfigurationAtStart(const QString &path);
