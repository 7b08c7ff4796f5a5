#pragma once

#include <QString>
#include <QStringList>

// The configurations opened or saved last, newest first, kept between runs
// in a file of their own beside options.ini (whose seven lines stay as they
// are): one absolute path per line, UTF-8, since a path may hold characters
// the ANSI code page has not.

constexpr qsizetype MaxRecentFiles = 5;

// ProgramDir() + "recentfiles.txt".
QString RecentFilesPath();

// `files` with `file` in front, an earlier mention of it dropped, cut to
// MaxRecentFiles.
QStringList WithRecentFile(const QStringList &files, const QString &file);
// `files` without `file`.
QStringList WithoutRecentFile(const QStringList &files, const QString &file);

// The list in `path`. The file is a convenience: a missing, unreadable or
// oversized one gives an empty list, and lines that are empty, relative or
// too long to be a path are passed over; at most MaxRecentFiles are taken.
QStringList ReadRecentFiles(const QString &path = RecentFilesPath());
// Replaces `path` atomically with `files` (at most MaxRecentFiles of them).
// Throws RunError when it cannot.
void WriteRecentFiles(const QStringList &files, const QString &path = RecentFilesPath());
