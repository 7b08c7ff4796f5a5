#pragma once

#include <QStringList>
#include <QTemporaryDir>

// A game folder ("UT", with System) and a configuration folder ("Configs")
// in a temporary directory, made the program's own in AppOptions() for the
// fixture's lifetime. Paths are native and folders end with a separator.
class GameFolder
{
public:
    GameFolder();

    QString root() const;
    QString userIni(const QString &folder = QStringLiteral("System")) const;
    QString config(const QString &name = QString()) const;
    // The names of the files in the game's `folder`.
    QStringList filesIn(const QString &folder) const;
    // The names of the backups in the configuration folder, sorted.
    QStringList backups() const;

private:
    QTemporaryDir m_dir;
};
