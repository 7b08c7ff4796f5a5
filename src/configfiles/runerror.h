#pragma once

#include <QString>

#include <exception>

class QFileDevice;

// Error numbers of the run-time errors the program raises and handles.
// Handlers and error reports decide by number, so keep these stable.
namespace ErrNum {
enum : int {
    Overflow = 6,
    TypeMismatch = 13,
    BadFileName = 52,
    FileNotFound = 53,
    FileAlreadyOpen = 55,
    DeviceIO = 57,
    DiskFull = 61,
    InputPastEnd = 62,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    InvalidPropertyValue = 380,
};
}

// A run-time error: a number, the standard description for it, and a detail
// that says where it happened (the file, the line).
class RunError : public std::exception
{
public:
    explicit RunError(int number, QString detail = {});
    RunError(int number, QString description, QString detail);

    int number() const { return m_number; }
    QString description() const { return m_description; }
    QString detail() const { return m_detail; }
    // The description followed by the detail, for messages and logs.
    QString message() const;
    const char *what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QString m_detail;
    QByteArray m_what;
};

QString standardErrorDescription(int number);

// The error for a failed open, read or write of `file`, named by `path`.
// Call it right after the failure: it reads the system's error code.
RunError fileError(const QFileDevice &file, const QString &path);
