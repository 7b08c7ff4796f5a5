#include "runerror.h"

#include <QDir>
#include <QFileDevice>
#include <QFileInfo>

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
    case ErrNum::Overflow: return QStringLiteral("Overflow");
    case ErrNum::TypeMismatch: return QStringLiteral("Type mismatch");
    case ErrNum::BadFileName: return QStringLiteral("Bad file name or number");
    case ErrNum::FileNotFound: return QStringLiteral("File not found");
    case ErrNum::FileAlreadyOpen: return QStringLiteral("File already open");
    case ErrNum::DeviceIO: return QStringLiteral("Device I/O error");
    case ErrNum::DiskFull: return QStringLiteral("Disk full");
    case ErrNum::InputPastEnd: return QStringLiteral("Input past end of file");
    case ErrNum::PermissionDenied: return QStringLiteral("Permission denied");
    case ErrNum::PathFileAccess: return QStringLiteral("Path/File access error");
    case ErrNum::PathNotFound: return QStringLiteral("Path not found");
    case ErrNum::InvalidPropertyValue: return QStringLiteral("Invalid property value");
    }
    return QStringLiteral("Application-defined or object-defined error");
}

RunError fileError(const QFileDevice &file, const QString &path)
{
    const QString detail = path + QStringLiteral(" (") + file.errorString() + QLatin1Char(')');
    const QFileInfo info(path);
    switch (file.error()) {
    case QFileDevice::OpenError:
        if (!info.dir().exists())
            return RunError(ErrNum::PathNotFound, detail);
        if (!info.exists())
            return RunError(ErrNum::FileNotFound, detail);
        return RunError(ErrNum::PermissionDenied, detail);
    case QFileDevice::PermissionsError:
        return RunError(ErrNum::PermissionDenied, detail);
    case QFileDevice::ResourceError:
        return RunError(ErrNum::DiskFull, detail);
    case QFileDevice::ReadError:
    case QFileDevice::WriteError:
        return RunError(ErrNum::DeviceIO, detail);
    default:
        return RunError(ErrNum::PathFileAccess, detail);
    }
}
