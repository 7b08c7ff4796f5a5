#pragma once

#include <QString>

// The program's own directory: options.ini, int.ini, pattern.ini and the
// report files live here. It ends with the native separator.
QString ProgramDir();
// Overrides the directory (the command line's --program-dir, tests).
void setProgramDir(const QString &directory);
