#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// The windows the scan shows on its way, plugged in by the window program;
// without them the scan goes on as if the user had checked nothing.
struct ScanForms
{
    // The unmatched skin report, shown after the skin pass at every scan,
    // also when `unmatchedPaths` is empty. Sets PatternsRequested (and fills
    // the pattern editor's list) when the user asks to set patterns.
    std::function<void(const QStringList &unmatchedPaths)> showUnmatchedReport;
    // The pattern editor, shown when PatternsRequested is set. Sets
    // ReparseRequested and ReparseFiles for the files it assigned, which the
    // scan then parses again.
    std::function<void()> showPatternEditor;
};

// Rebuilds the catalogue from the .int files of the game directory of the
// options, skipping the files listed in the program directory's int.ini.
// Reports through currentProgress() and lets the event loop run as it goes;
// a file that cannot be read or parsed is reported through ProcessError and
// costs only itself. PatternList must have been loaded.
void ScanIntFiles(const ScanForms &forms = {});

// The same for `gameDir` (ending with a separator) and the skip list at
// `exclusionFile`.
void ScanIntFiles(
    const QString &gameDir, const QString &exclusionFile, const ScanForms &forms = {});

// The .int files of a System folder, found without regard to case, in the
// order the scan reads them.
QStringList IntFileNames(const QString &systemDir);
