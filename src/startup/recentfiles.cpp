#include "recentfiles.h"

#include "programdirectory.h"

#include "configfiles/runerror.h"
#include "configfiles/textfile.h"

#include <QDir>

namespace {

// Five paths; anything larger was not written by this program.
constexpr qint64 MaxListBytes = 64 * 1024;
constexpr qsizetype MaxPathLength = 4096;

bool samePath(const QString &a, const QString &b)
{
#ifdef Q_OS_WIN
    constexpr Qt::CaseSensitivity sensitivity = Qt::CaseInsensitive;
#else
    constexpr Qt::CaseSensitivity sensitivity = Qt::CaseSensitive;
#endif
    return QDir::cleanPath(QDir::fromNativeSeparators(a))
               .compare(QDir::cleanPath(QDir::fromNativeSeparators(b)), sensitivity)
        == 0;
}

} // namespace

QString RecentFilesPath()
{
    return ProgramDir() + QStringLiteral("recentfiles.txt");
}

QStringList WithoutRecentFile(const QStringList &files, const QString &file)
{
    QStringList kept;
    for (const QString &listed : files) {
        if (!samePath(listed, file))
            kept.append(listed);
    }
    return kept;
}

QStringList WithRecentFile(const QStringList &files, const QString &file)
{
    QStringList list = WithoutRecentFile(files, file);
    list.prepend(file);
    return list.mid(0, MaxRecentFiles);
}

QStringList ReadRecentFiles(const QString &path)
{
    QByteArray bytes;
    try {
        bytes = readFileBytes(path, MaxListBytes);
    } catch (const RunError &) {
        return {};
    }
    QStringList files;
    for (const QByteArray &line : splitLines(bytes)) {
        const QString file = QString::fromUtf8(line);
        if (file.isEmpty() || file.size() > MaxPathLength || QDir::isRelativePath(file)
            || WithoutRecentFile(files, file).size() != files.size())
            continue;
        files.append(file);
        if (files.size() == MaxRecentFiles)
            break;
    }
    return files;
}

void WriteRecentFiles(const QStringList &files, const QString &path)
{
    QByteArray bytes;
    qsizetype written = 0;
    for (const QString &file : files) {
        // A name with a line break in it would read back as two.
        if (file.contains(u'\n') || file.contains(u'\r'))
            continue;
        bytes += file.toUtf8() + '\n';
        if (++written == MaxRecentFiles)
            break;
    }
    writeFileAtomically(path, bytes);
}
