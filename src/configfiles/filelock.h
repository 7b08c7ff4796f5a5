#pragma once

#include <QLockFile>
#include <QString>

// Keeps other writers of a file out for as long as it lives, so that two
// read-modify-replace cycles of the same file (two windows, a window and a
// command) cannot lose one another's change. The lock is a file beside the
// target, its name with ".lock" added. Another holder is waited for a short
// time; then RunError 55 says the file is being changed, and nothing has
// been touched.
class FileLock
{
public:
    explicit FileLock(const QString &path);
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

private:
    QLockFile m_lock;
};
