#include "dlgCorrectUTPath.h"

#include "configfiles/fileops.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/prompt.h"
#include "startup/gamepathproposals.h"
#include "startup/options.h"

#include <QFileInfo>
#include <QLabel>

dlgCorrectUTPath::dlgCorrectUTPath(QWidget *parent)
    : PathDialog("lblUTPath", "Is this the correct Unreal Tournament path to use?", parent)
    , lblUTPath(pathLabel())
{
    setObjectName("dlgCorrectUTPath");
    setWindowTitle("Is this your correct UT Path?");
    showPath(ProposedGamePath());
}

void dlgCorrectUTPath::cmdBrowse_Click()
{
    browse(QStringLiteral("Choose a New UT Path"), false);
}

void dlgCorrectUTPath::OKButton_Click()
{
    if (ChosenPath.isEmpty() || !IsGameFolder(ChosenPath)) {
        showMessage(QStringLiteral("Invalid UT Path"),
            ChosenPath + QStringLiteral(" is not a valid UT path.\r\n\r\nPlease choose again."));
        return;
    }
    // Every path built inside the game directory appends to it directly.
    showPath(AddBackslash(ChosenPath));
    AppOptions().UTPath = ChosenPath;
    accept();
}
