#pragma once

#include <QString>

// The path with the native directory separator at its end; "" gives the
// separator alone.
QString AddBackslash(const QString &path);

// Drops one double quote at the start, then one at the end, of `text`.
QString StripQuotes(const QString &text);

// Finds `relativePath` (native or "/" separators) inside `directory`
// without regard to case, one component at a time, so that
// "System/user.ini" finds "system/User.ini" on a case-sensitive file system.
// Components that do not exist are kept as given, so the result also names
// a file still to be created.
QString findPathNoCase(const QString &directory, const QString &relativePath);

enum class FileOperation : short { Move = 1, Copy = 2, Delete = 3, CopyToo = 4 };

// Moves, copies or deletes one file. A missing source, or one that is a
// directory (".", ".." and subdirectories included), is ignored silently;
// any other failure is reported through the prompt ("Error in
// modCommon.FileOP. ...") and the caller goes on with its next file.
void FileOP(const QString &source, const QString &destination, short operation);
