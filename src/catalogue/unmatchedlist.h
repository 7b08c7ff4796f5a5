#pragma once

#include "modelcatalogue.h"

#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QString>
#include <QStringList>

// The list of skin files that matched no model, saved for the user as a text
// file in the program's directory.

// "UnMatched_Files_<M>-<D>-<YYYY>_h<h>m<m>s<s>.txt", numbers without
// leading zeros.
QString UnmatchedListFileName(const QDateTime &when);

// The file's lines: a dated header, every slot of `skins` (free slots as
// empty lines), "End of List". Names and the time format follow `locale`.
QStringList UnmatchedListLines(const QList<UnmatchedSkin> &skins, const QDateTime &when,
    const QLocale &locale = QLocale::system());

// Writes the list of Catalogue().UnmatchedSkins into `directory` (ending
// with a separator), replacing a file of the same name, and returns its
// path. Throws RunError when it cannot.
QString SaveUnmatchedList(const QString &directory,
    const QDateTime &when = QDateTime::currentDateTime());

// The report's two save buttons: the list saved into the program's
// directory. A failure is said through the prompt and gives an empty path;
// SaveUnmatchedListAndSay also says "File Created" and the file's path when
// it worked.
QString SaveUnmatchedListFile();
void SaveUnmatchedListAndSay();

// The report's Continue: the checked files go to the pattern editor's list,
// and PatternsRequested says whether there are any.
void ContinueToPatternEditor(const QStringList &checkedPaths);
