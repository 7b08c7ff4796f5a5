#include "runerror.h"

#include <QDir>
#include <QFileDevice>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>

#include <cerrno>

RunError::RunError(int number, QString detail)
    : RunError(number, standardErrorDescription(number), std::move(detail))
{
}

RunError::RunError(int number, QString description, QString detail)
    : m_number(number)
    , m_description(std::move(description))
    , m_detail(std::move(detail))
    , m_what(message().toUtf8())
{
}

QString RunError::message() const
{
    return m_detail.isEmpty() ? m_description : m_description + QStringLiteral(": ") + m_detail;
}

QString standardErrorDescription(int number)
{
    switch (number) {
    case ErrNum::Overflow:
        return QStringLiteral("Overflow");
    case ErrNum::TypeMismatch:
        return QStringLiteral("Type mismatch");
    case ErrNum::BadFileName:
        return QStringLiteral("Bad file name or number");
    case ErrNum::FileNotFound:
        return QStringLiteral("File not found");
    case ErrNum::FileAlreadyOpen:
        return QStringLiteral("File already open");
    case ErrNum::DeviceIO:
        return QStringLiteral("Device I/O error");
    case ErrNum::DiskFull:
        return QStringLiteral("Disk full");
    case ErrNum::InputPastEnd:
        return QStringLiteral("Input past end of file");
    case ErrNum::PermissionDenied:
        return QStringLiteral("Permission denied");
    case ErrNum::PathFileAccess:
        return QStringLiteral("Path/File access error");
    case ErrNum::PathNotFound:
        return QStringLiteral("Path not found");
    case ErrNum::InvalidPropertyValue:
        return QStringLiteral("Invalid property value");
    }
    return QStringLiteral("Application-defined or object-defined error");
}

namespace {

bool isDiskFull(int systemError)
{
    return systemError == ENOSPC || systemError == EFBIG
#ifdef EDQUOT
        || systemError == EDQUOT
#endif
        ;
}

// Write permission as the file's own bits say, not as access() says: root
// may write anything, yet a player's read-only user.ini is meant to stay.
bool hasWriteBits(const QFileInfo &info)
{
    return info.permissions() & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther);
}

} // namespace

RunError fileError(const QFileDevice &file, const QString &path)
{
    // QFileDevice often names a symptom (a failed block, a file not found
    // in a read-only folder); the system's own code and the file name the
    // cause. Read first, before any other call can change it.
    const int systemError = errno;
    const QFileInfo info(path);
    const QString name = info.fileName();
    if (info.isDir() || systemError == EISDIR)
        return RunError(
            ErrNum::PathFileAccess, name + QStringLiteral(" is a folder, not a file"), path);
    if (file.error() == QFileDevice::ResourceError || isDiskFull(systemError))
        return RunError(ErrNum::DiskFull, QStringLiteral("The disk is full"), path);
    if (systemError == EROFS || QStorageInfo(info.absolutePath()).isReadOnly())
        return RunError(ErrNum::PermissionDenied,
            name + QStringLiteral(" is on a drive that can only be read"), path);
    const bool writing
        = qobject_cast<const QSaveFile *>(&file) || file.error() == QFileDevice::WriteError;
    if (writing && info.exists() && !hasWriteBits(info))
        return RunError(ErrNum::PermissionDenied, name + QStringLiteral(" is read-only"), path);

    // What is left after the retries of a replacement: on Windows another
    // program (the game, a virus scanner, a sync client) holding the file.
    if (file.error() == QFileDevice::RenameError)
        return RunError(
            ErrNum::PathFileAccess, name + QStringLiteral(" is in use by another program"), path);

    const QString detail = path + QStringLiteral(" (") + file.errorString() + QLatin1Char(')');
    if (info.exists() && !info.isWritable() && file.error() == QFileDevice::WriteError)
        return RunError(ErrNum::PermissionDenied, detail);
    switch (file.error()) {
    case QFileDevice::OpenError:
        if (!info.dir().exists())
            return RunError(ErrNum::PathNotFound, detail);
        if (!info.exists())
            return RunError(ErrNum::FileNotFound, detail);
        return RunError(ErrNum::PermissionDenied, detail);
    case QFileDevice::PermissionsError:
        return RunError(ErrNum::PermissionDenied, detail);
    case QFileDevice::ReadError:
    case QFileDevice::WriteError:
        return RunError(ErrNum::DeviceIO, detail);
    default:
        return RunError(ErrNum::PathFileAccess, detail);
    }
}
