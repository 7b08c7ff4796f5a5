#pragma once

#include <QString>
#include <QStringList>

// The configurations (".qvn" files) of `directory`, by name.
QStringList ConfigurationFileNames(const QString &directory);

// After the configuration folder changed from `oldDir` to `newDir` (both
// ending with the separator): offers to move the configurations of the old
// folder into the new one, then removes the old folder when nothing is left
// in it, or, after asking, with what is left (backups of applied lists, other
// files). A configuration that could not be moved keeps the old folder and
// everything in it.
//
// Returns false, doing and asking nothing, when the old folder holds no
// configuration or is the new folder under another name.
bool OfferToMoveConfigurations(const QString &oldDir, const QString &newDir);
