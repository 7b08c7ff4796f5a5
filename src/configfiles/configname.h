#pragma once

#include <QString>

// Names of configuration files are typed by the user and joined to the
// configuration folder, so they must never lead out of it or name something
// the file system would take for a device or a path.

// Empty when `name` is a bare file name that can stand in the configuration
// folder; otherwise the text of a message that names `name` and says what is
// wrong with it (an empty name, a directory part, "..", a character Windows
// forbids in file names: < > : " / \ | ? *, a control character, a name
// Windows keeps for a device).
QString ConfigNameProblem(const QString &name);

// The title of the message that reports a ConfigNameProblem.
inline QString InvalidConfigNameTitle()
{
    return QStringLiteral("Invalid File Name");
}
