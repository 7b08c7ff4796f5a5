#include "configfoldermove.h"

#include "configfiles/fileops.h"
#include "configfiles/progress.h"
#include "configfiles/prompt.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace {

const QDir::Filters EveryEntry
    = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

bool sameDirectory(const QString &oldDir, const QString &newDir)
{
    const QString oldPath = QFileInfo(oldDir).canonicalFilePath();
    return !oldPath.isEmpty() && oldPath == QFileInfo(newDir).canonicalFilePath();
}

bool userWantsToMove()
{
    return showMessage(QStringLiteral("Configuration Files Exist!"),
               QStringLiteral("Move files to new directory?\r\n\r\n"
                              "Yes will move files and remove the old directory.\r\n\r\n"
                              "No will not move or remove the old directory."),
               MessageButtons::YesNo)
        == MessageAnswer::Yes;
}

bool userWantsToRemoveTheRest()
{
    return showMessage(Message { QStringLiteral("Files Exist in Old Directory!"),
               QStringLiteral("Yes = Remove directory and existing files.\r\n\r\n"
                              " No = Do not remove files or directory."),
               MessageButtons::YesNo, MessageIcon::None, MessageDefault::No })
        == MessageAnswer::Yes;
}

// The names in `directory`, letting the event loop run before each one.
QStringList entriesOf(const QString &directory)
{
    QStringList names;
    QDirIterator entries(directory, EveryEntry);
    while (true) {
        letEventLoopRun();
        if (!entries.hasNext())
            break;
        names << entries.nextFileInfo().fileName();
    }
    return names;
}

} // namespace

QStringList ConfigurationFileNames(const QString &directory)
{
    if (directory.isEmpty())
        return {};
    return QDir(directory).entryList({ QStringLiteral("*.qvn") },
        QDir::Files | QDir::Hidden | QDir::System, QDir::Name | QDir::IgnoreCase);
}

bool OfferToMoveConfigurations(const QString &oldDir, const QString &newDir)
{
    const QStringList configurations = ConfigurationFileNames(oldDir);
    if (configurations.isEmpty() || sameDirectory(oldDir, newDir))
        return false;
    if (!userWantsToMove())
        return true;

    for (const QString &name : configurations)
        FileOP(oldDir + name, newDir + name, short(FileOperation::Move));
    // FileOP has said which ones failed; deleting them now would lose them.
    if (!ConfigurationFileNames(oldDir).isEmpty())
        return true;

    if (!entriesOf(oldDir).isEmpty()) {
        if (!userWantsToRemoveTheRest())
            return true;
        for (const QString &name : entriesOf(oldDir))
            FileOP(oldDir + name, QString(), short(FileOperation::Delete));
    }
    // Subfolders are not deleted, so a folder that still holds one stays.
    QDir().rmdir(oldDir);
    return true;
}
