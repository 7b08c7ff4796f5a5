#include "gamefolder.h"

#include "configfiles/fileops.h"
#include "startup/options.h"

#include <QDir>

GameFolder::GameFolder()
{
    AppOptions().UTPath = root() + QStringLiteral("UT") + QDir::separator();
    AppOptions().ConfigPath = root() + QStringLiteral("Configs") + QDir::separator();
    QDir().mkpath(AppOptions().UTPath + QStringLiteral("System"));
    QDir().mkpath(AppOptions().ConfigPath);
}

QString GameFolder::root() const
{
    return AddBackslash(QDir::toNativeSeparators(m_dir.path()));
}

QString GameFolder::userIni(const QString &folder) const
{
    return AppOptions().UTPath + folder + QDir::separator() + QStringLiteral("User.ini");
}

QString GameFolder::config(const QString &name) const
{
    return AppOptions().ConfigPath + name;
}

QStringList GameFolder::filesIn(const QString &folder) const
{
    return QDir(AppOptions().UTPath + folder).entryList(QDir::Files);
}

QStringList GameFolder::backups() const
{
    QStringList names = QDir(AppOptions().ConfigPath)
                            .entryList({ QStringLiteral("curconfig_bkup_(*") }, QDir::Files);
    names.sort();
    return names;
}
