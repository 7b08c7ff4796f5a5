#pragma once

#include "configfiles/fileops.h"
#include "startup/options.h"

#include <QDir>
#include <QTemporaryDir>

// A game folder ("UT", with System) and a configuration folder ("Configs")
// in a temporary directory, made the program's own in AppOptions() for the
// fixture's lifetime. Paths are native and folders end with a separator.
class GameFolder
{
public:
    GameFolder()
    {
        AppOptions().UTPath = root() + "UT" + QDir::separator();
        AppOptions().ConfigPath = root() + "Configs" + QDir::separator();
        QDir().mkpath(AppOptions().UTPath + "System");
        QDir().mkpath(AppOptions().ConfigPath);
    }

    QString root() const { return AddBackslash(QDir::toNativeSeparators(m_dir.path())); }
    QString userIni(const QString &folder = "System") const
    {
        return AppOptions().UTPath + folder + QDir::separator() + "User.ini";
    }
    QString config(const QString &name = {}) const { return AppOptions().ConfigPath + name; }
    // The names of the files in the game's `folder`.
    QStringList filesIn(const QString &folder) const
    {
        return QDir(AppOptions().UTPath + folder).entryList(QDir::Files);
    }
    // The names of the backups in the configuration folder, sorted.
    QStringList backups() const
    {
        return QDir(AppOptions().ConfigPath, "curconfig_bkup_(*", QDir::Name, QDir::Files)
            .entryList();
    }

private:
    QTemporaryDir m_dir;
};
