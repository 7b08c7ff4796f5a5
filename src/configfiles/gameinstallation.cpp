#include "gameinstallation.h"

#include "fileops.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>

#ifdef Q_OS_WIN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
// After windows.h, which it needs for its types.
#include <tlhelp32.h>
#endif

namespace {

// The names the game's executables run under: the patch's Linux builds,
// and the Windows game, also when it runs under Wine.
const QStringList GameProcessNames { QStringLiteral("ut-bin"), QStringLiteral("ut-bin-x86"),
    QStringLiteral("ut-bin-amd64"), QStringLiteral("ut-bin-arm64"),
    QStringLiteral("UnrealTournament.exe") };

// The user.ini files inside the game folder, and the one the patch's Linux
// game keeps in the home folder instead.
const QStringList InstallUserIniFiles { QStringLiteral("System/User.ini"),
    QStringLiteral("System64/User.ini") };
const QString HomeUserIniFile = QStringLiteral(".utpg/System/User.ini");

GameStarter &gameStarter()
{
    static GameStarter starter;
    return starter;
}

ProcessLister &processLister()
{
    static ProcessLister lister;
    return lister;
}

// An unset game directory reads back from options.ini as a lone separator;
// joining names to it would look for the game at the root of the disk.
bool isUnset(const QString &gameDir)
{
    const QString trimmed = gameDir.trimmed();
    return trimmed.isEmpty() || trimmed == QLatin1String("/") || trimmed == QLatin1String("\\");
}

QString existingFile(const QString &directory, const QString &relativePath)
{
    const QString path = findPathNoCase(directory, relativePath);
    return QFileInfo(path).isFile() ? path : QString();
}

#if defined(Q_OS_WIN)

QStringList runningProcessNames()
{
    QStringList names;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE)
        return names;
    PROCESSENTRY32W entry {};
    entry.dwSize = sizeof(entry);
    for (BOOL more = Process32FirstW(snapshot, &entry); more;
         more = Process32NextW(snapshot, &entry))
        names.append(QString::fromWCharArray(entry.szExeFile));
    CloseHandle(snapshot);
    return names;
}

#else

// Where there is no /proc (macOS, most BSDs) nothing is listed, so the game
// is taken as not running rather than guessed at.
QStringList runningProcessNames()
{
    return ProcessNamesIn(QStringLiteral("/proc"));
}

#endif

} // namespace

QStringList GameUserIniFiles(const QString &gameDir)
{
    QStringList files;
    if (isUnset(gameDir))
        return files;
    for (const QString &relative : InstallUserIniFiles) {
        const QString path = existingFile(gameDir, relative);
        if (!path.isEmpty())
            files.append(path);
    }
#ifdef Q_OS_LINUX
    // The patch's Linux game keeps its settings in the home folder unless
    // the game folder holds them.
    if (files.isEmpty()) {
        const QString path = existingFile(QDir::homePath(), HomeUserIniFile);
        if (!path.isEmpty())
            files.append(path);
    }
#endif
    return files;
}

QStringList GameUserIniPlaces()
{
    QStringList places;
    for (const QString &file : InstallUserIniFiles)
        places.append(QDir::toNativeSeparators(file));
#ifdef Q_OS_LINUX
    places.append(QStringLiteral("~/") + HomeUserIniFile);
#endif
    return places;
}

bool IsGameFolder(const QString &gameDir)
{
    return !isUnset(gameDir) && QFileInfo(findPathNoCase(gameDir, QStringLiteral("System"))).isDir()
        && !GameUserIniFiles(gameDir).isEmpty();
}

QString GameExecutable(const QString &gameDir)
{
    if (isUnset(gameDir))
        return {};
#ifdef Q_OS_WIN
    const QStringList candidates { QStringLiteral("System64/UnrealTournament.exe"),
        QStringLiteral("System/UnrealTournament.exe") };
#else
    const QStringList candidates { QStringLiteral("System64/ut-bin-amd64"),
        QStringLiteral("SystemARM64/ut-bin-arm64"), QStringLiteral("System/ut-bin-x86"),
        QStringLiteral("System/ut-bin") };
#endif
    for (const QString &candidate : candidates) {
        const QString path = existingFile(gameDir, candidate);
        if (!path.isEmpty())
            return path;
    }
    return {};
}

bool StartGame(const QString &program)
{
    if (program.isEmpty())
        return false;
    // The game finds its packages relative to the folder it starts in.
    const QString workingDirectory = QDir::toNativeSeparators(QFileInfo(program).absolutePath());
    if (gameStarter())
        return gameStarter()(program, workingDirectory);
    return QProcess::startDetached(program, {}, workingDirectory);
}

QStringList ProcessNamesIn(const QString &procDir)
{
    const auto read = [](const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QStringList names;
    const QStringList entries = QDir(procDir).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        bool isPid = false;
        entry.toLongLong(&isPid);
        if (!isPid)
            continue;
        const QString base = procDir + QLatin1Char('/') + entry + QLatin1Char('/');
        // The kernel cuts comm to 15 characters, so "UnrealTournament.exe"
        // under Wine shows whole only in argv[0].
        const QString comm = QString::fromLocal8Bit(read(base + QStringLiteral("comm"))).trimmed();
        const QByteArray commandLine = read(base + QStringLiteral("cmdline"));
        QString program = QString::fromLocal8Bit(commandLine.left(commandLine.indexOf('\0')));
        program = program.mid(
            std::max(program.lastIndexOf(QLatin1Char('/')), program.lastIndexOf(QLatin1Char('\\')))
            + 1);
        // A process that ended while the list was read leaves nothing.
        for (const QString &name : { comm, program }) {
            if (!name.isEmpty())
                names.append(name);
        }
    }
    return names;
}

bool IsGameRunning()
{
    const QStringList names = processLister() ? processLister()() : runningProcessNames();
    for (const QString &name : names) {
        if (GameProcessNames.contains(name, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

void setGameStarter(GameStarter starter)
{
    gameStarter() = std::move(starter);
}

void setProcessLister(ProcessLister lister)
{
    processLister() = std::move(lister);
}
