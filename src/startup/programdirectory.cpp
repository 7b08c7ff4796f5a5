#include "programdirectory.h"

#include "buildconfig.h"
#include "configfiles/fileops.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace {

QString overridden;

QString directoryPath(const QString &directory)
{
    return AddBackslash(QDir::toNativeSeparators(QDir::cleanPath(directory)));
}

// The shipped files the program directory needs before the first scan.
const QString SeededFiles[] = { QStringLiteral("int.ini"), QStringLiteral("pattern.ini") };

void seed(const QString &userDir, const QString &shippedDir)
{
    QDir().mkpath(userDir);
    for (const QString &name : SeededFiles) {
        const QString target = userDir + name;
        if (QFileInfo::exists(target) || !QFileInfo(shippedDir + name).isFile())
            continue;
        // A copy that fails leaves the file missing, which the start-up
        // reports as it would beside the executable.
        if (QFile::copy(shippedDir + name, target))
            QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
    }
}

bool canWriteIn(const QString &directory)
{
#ifdef Q_OS_WIN
    // Windows reports folders like Program Files as writable to everyone;
    // only trying tells.
    QTemporaryFile probe(directory + QStringLiteral("/quorvane-XXXXXX.tmp"));
    return probe.open();
#else
    return QFileInfo(directory).isWritable();
#endif
}

ProgramLocations currentLocations()
{
    const QString executableDir = QCoreApplication::applicationDirPath();
    return { executableDir, canWriteIn(executableDir),
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) };
}

} // namespace

QString ProgramDir()
{
    if (!overridden.isEmpty())
        return overridden;
    static const QString decided = ChooseProgramDir(currentLocations());
    return decided;
}

void setProgramDir(const QString &directory)
{
    overridden = directory.isEmpty() ? QString() : directoryPath(directory);
}

QString ShippedFilesDir(const QString &executableDir)
{
    const QString installed = directoryPath(
        QDir(executableDir).filePath(QStringLiteral(QUORVANE_DATA_FROM_EXECUTABLE)));
    return QFileInfo(installed + SeededFiles[0]).isFile() ? installed
                                                          : directoryPath(executableDir);
}

QString ChooseProgramDir(const ProgramLocations &where)
{
    const QString executableDir = directoryPath(where.executableDir);
    const QString shippedDir = ShippedFilesDir(where.executableDir);
    const bool keepsFilesBeside = shippedDir == executableDir;
    if ((keepsFilesBeside && where.executableDirWritable) || where.userDataDir.isEmpty())
        return executableDir;
    const QString userDir = directoryPath(where.userDataDir);
    seed(userDir, shippedDir);
    return userDir;
}

QString UserGuideFile()
{
    const QString page = QStringLiteral("help/index.html");
    const QString own = ProgramDir() + page;
    if (QFileInfo::exists(own))
        return own;
    const QString shipped = ShippedFilesDir(QCoreApplication::applicationDirPath()) + page;
    return QFileInfo::exists(shipped) ? shipped : own;
}

void NameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("quorvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUORVANE_VERSION));
}
