#include "dlgChangeConfigPath.h"

#include "configfiles/fileops.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/prompt.h"
#include "startup/gamepathproposals.h"
#include "startup/options.h"

#include <QDir>
#include <QFileInfo>

dlgChangeConfigPath::dlgChangeConfigPath(QWidget *parent)
    : PathDialog(
        "txtConfigPath", "Is the path below where you want your configurations saved?", parent)
    , txtConfigPath(pathField())
{
    setObjectName("dlgChangeConfigPath");
    RemoveCloseMenu(this);
    setWindowTitle("Is this your correct Configuration path?");
    const QString current = AppOptions().ConfigPath;
    showPath(current.isEmpty() ? ProposedConfigPath(AppOptions().UTPath) : current);
}

void dlgChangeConfigPath::cmdBrowse_Click()
{
    browse(QStringLiteral("Choose Configuration Directory..."), true);
}

// Only the last level is created: a directory whose parent is missing is
// more likely a typing mistake than a wish for a new tree of folders.
void dlgChangeConfigPath::OKButton_Click()
{
    // A pasted path often brings a blank with it.
    showPath(ChosenPath.trimmed());
    if (!QFileInfo(ChosenPath).isDir() && (ChosenPath.isEmpty() || !QDir().mkdir(ChosenPath))) {
        showMessage(QStringLiteral("Configuration Path"),
            ChosenPath
                + QStringLiteral(" could not be created.\r\n\r\nMake sure the folder above it "
                                 "exists and can be written to, or choose again."));
        return;
    }
    showPath(AddBackslash(ChosenPath));
    AppOptions().ConfigPath = ChosenPath;
    accept();
}
