#include "fileops.h"

#include "prompt.h"
#include "runerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

QString AddBackslash(const QString &path)
{
    if (path.endsWith(QDir::separator()))
        return path;
    return path + QDir::separator();
}

QString StripQuotes(const QString &text)
{
    QString result = text;
    if (result.startsWith(QLatin1Char('"')))
        result.remove(0, 1);
    if (result.endsWith(QLatin1Char('"')))
        result.chop(1);
    return result;
}

QString findPathNoCase(const QString &directory, const QString &relativePath)
{
    QString resolved = AddBackslash(QDir::toNativeSeparators(directory));
    const QStringList parts = QDir::fromNativeSeparators(relativePath).split(QLatin1Char('/'),
                                                                             Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString &part = parts.at(i);
        QString found = part;
        if (!QFileInfo::exists(resolved + part)) {
            const QStringList entries = QDir(resolved).entryList(
                QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
            for (const QString &entry : entries) {
                if (entry.compare(part, Qt::CaseInsensitive) == 0) {
                    found = entry;
                    break;
                }
            }
        }
        resolved += found;
        if (i + 1 < parts.size())
            resolved += QDir::separator();
    }
    return resolved;
}

namespace {

void reportFileOpFailure(const RunError &error, const QString &source)
{
    const QString crlf = QStringLiteral("\r\n");
    showMessage(QString::number(error.number()),
                QStringLiteral("Error in modCommon.FileOP.") + crlf + crlf
                    + QStringLiteral("Error Desc: ") + error.description() + crlf + crlf
                    + QStringLiteral("Skipping file: ") + source);
}

RunError systemError(const std::error_code &code, const QString &path)
{
    const QString detail = path + QStringLiteral(" (") + QString::fromStdString(code.message())
                           + QLatin1Char(')');
    if (code == std::errc::no_such_file_or_directory)
        return RunError(ErrNum::PathNotFound, detail);
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted)
        return RunError(ErrNum::PermissionDenied, detail);
    if (code == std::errc::no_space_on_device)
        return RunError(ErrNum::DiskFull, detail);
    return RunError(ErrNum::PathFileAccess, detail);
}

// QFile::copy refuses to replace an existing file, and removing it first
// would lose it when the copy then fails; the standard library replaces.
void copyReplacing(const QString &source, const QString &destination)
{
    std::error_code code;
    std::filesystem::copy_file(source.toStdU16String(), destination.toStdU16String(),
                               std::filesystem::copy_options::overwrite_existing, code);
    if (code)
        throw systemError(code, destination);
}

void deleteFile(const QString &source)
{
    QFile file(source);
    if (!file.remove())
        throw fileError(file, source);
}

} // namespace

void FileOP(const QString &source, const QString &destination, short operation)
{
    // Callers hand over every entry of a directory listing; the entries for
    // the directory itself and its parent are not files to act on. Other
    // names that begin with a dot are ordinary files.
    const QFileInfo info(source);
    if (info.fileName() == QLatin1String(".") || info.fileName() == QLatin1String(".."))
        return;
    try {
        // A subdirectory in the listing is passed over like a missing file,
        // so that emptying a directory skips what it cannot delete quietly.
        if (!info.exists() || info.isDir())
            throw RunError(ErrNum::FileNotFound, source);
        switch (static_cast<FileOperation>(operation)) {
        case FileOperation::Move:
            copyReplacing(source, destination);
            deleteFile(source);
            break;
        case FileOperation::Copy:
        case FileOperation::CopyToo:
            copyReplacing(source, destination);
            break;
        case FileOperation::Delete:
            deleteFile(source);
            break;
        }
    } catch (const RunError &error) {
        if (error.number() != ErrNum::FileNotFound)
            reportFileOpFailure(error, source);
    }
}
