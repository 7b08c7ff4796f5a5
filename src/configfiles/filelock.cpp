#include "filelock.h"

#include "runerror.h"

#include <QFileInfo>

namespace {

// A holder that crashed leaves its lock behind; QLockFile sees at once that
// its process has gone, and a lock this old is left over whatever it says.
constexpr int StaleLockMilliseconds = 10'000;
constexpr int WaitMilliseconds = 2'000;

} // namespace

FileLock::FileLock(const QString &path)
    : m_lock(path + QStringLiteral(".lock"))
{
    m_lock.setStaleLockTime(StaleLockMilliseconds);
    if (m_lock.tryLock(WaitMilliseconds))
        return;
    const QString name = QFileInfo(path).fileName();
    if (m_lock.error() == QLockFile::LockFailedError)
        throw RunError(ErrNum::FileAlreadyOpen,
            name + QStringLiteral(" is being changed by another Quorvane window or command"), path);
    throw RunError(ErrNum::PermissionDenied,
        QStringLiteral("Can't create the lock file ") + name + QStringLiteral(".lock"),
        path + QStringLiteral(".lock"));
}
