#pragma once

#include <QString>

// Adds a MISCCLASSES record for every bot class declared in the class file
// at `path`, each in the first free slot, in line order. A line that cannot
// be taken apart is reported through ProcessError and skipped.
void ParseClass(const QString &path);

// The key skin files are matched on, for a class of the file `fileName`:
// the fixed word of a standard or boss class, else the object name's part
// before "bot" (RunError when there is none).
QString ClassSkinType(const QString &fileName, const QString &className);
