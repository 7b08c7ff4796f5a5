#include "gamepathproposals.h"

#include "configfiles/fileops.h"
#include "configfiles/gameinstallation.h"

#include <QDir>
#include <QFileInfo>

namespace {

bool holdsSystemFolder(const QString &candidate)
{
    return QFileInfo(findPathNoCase(candidate, QStringLiteral("System"))).isDir();
}

// A per-user folder of a port holds user.ini but none of the game's .int
// files, which the content scan needs from the same System folder.
bool holdsWholeGame(const QString &candidate)
{
    if (!IsGameFolder(candidate))
        return false;
    const QDir system(findPathNoCase(candidate, QStringLiteral("System")));
    return !system.entryList({ QStringLiteral("*.int") }, QDir::Files).isEmpty();
}

} // namespace

QStringList GamePathCandidates(const QString &home)
{
    const QString base = AddBackslash(QDir::toNativeSeparators(home));
    QStringList candidates;
    for (const char *place :
        { ".utpg", ".loki/ut", "UnrealTournament", ".local/share/UnrealTournament", "ut",
            "games/UnrealTournament", ".steam/steam/steamapps/common/Unreal Tournament" })
        candidates.append(
            AddBackslash(base + QDir::toNativeSeparators(QString::fromLatin1(place))));
    return candidates;
}

QString FirstGamePath(const QStringList &candidates)
{
    for (const QString &candidate : candidates) {
        if (holdsWholeGame(candidate))
            return candidate;
    }
    for (const QString &candidate : candidates) {
        if (IsGameFolder(candidate))
            return candidate;
    }
    for (const QString &candidate : candidates) {
        if (holdsSystemFolder(candidate))
            return candidate;
    }
    return {};
}

QString ProposedGamePath()
{
#ifdef Q_OS_WIN
    const QString usual = QStringLiteral("C:\\UnrealTournament\\");
    return IsGameFolder(usual) ? usual : QString();
#else
    return FirstGamePath(GamePathCandidates(QDir::homePath()));
#endif
}

QString StartupGamePath()
{
#ifdef Q_OS_WIN
    return FolderWithFiles(QStringLiteral("C:\\UnrealTournament\\"));
#else
    return ProposedGamePath();
#endif
}

QString FolderWithFiles(const QString &folder)
{
    const QDir directory(folder);
    if (folder.isEmpty() || !directory.exists() || directory.isEmpty(QDir::Files))
        return {};
    return folder;
}

QString ProposedConfigPath(const QString &gamePath)
{
#ifdef Q_OS_WIN
    Q_UNUSED(gamePath);
    return QStringLiteral("C:\\UnrealTournament\\Configs\\");
#else
    if (!gamePath.isEmpty())
        return AddBackslash(gamePath) + QStringLiteral("Configs") + QDir::separator();
    return AddBackslash(QDir::toNativeSeparators(QDir::homePath()))
        + QStringLiteral("QuorvaneConfigs") + QDir::separator();
#endif
}
