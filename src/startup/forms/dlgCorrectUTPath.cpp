#include "dlgCorrectUTPath.h"

#include "configfiles/fileops.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/prompt.h"
#include "startup/gamepathproposals.h"
#include "startup/options.h"

#include <QLabel>

namespace {

// What OK asks of a folder, so that a refusal is understood.
QString gameFolderRule()
{
    QStringList places = GameUserIniPlaces();
    const QString last = places.takeLast();
    return QStringLiteral("A game folder holds the System folder and the game's User.ini: ")
        + places.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last + QLatin1Char('.');
}

} // namespace

dlgCorrectUTPath::dlgCorrectUTPath(QWidget *parent)
    : PathDialog("txtUTPath", "Is this the correct Unreal Tournament path to use?", parent)
    , txtUTPath(pathField())
    , lblGameFolder(wrappedLabel(this, "lblGameFolder", gameFolderRule()))
{
    setObjectName("dlgCorrectUTPath");
    setWindowTitle("Is this your correct UT Path?");
    addFootnote(lblGameFolder);
    showPath(ProposedGamePath());
}

// Escape and the title bar's close come here. Without a game folder the
// program cannot go on, so rather than trap the user the dialog offers to
// end it.
void dlgCorrectUTPath::reject()
{
    if (IsGameFolder(AppOptions().UTPath)) {
        showPath(AppOptions().UTPath);
        QDialog::reject();
        return;
    }
    const Message question { QStringLiteral("Quit Quorvane?"),
        QStringLiteral("Quorvane cannot start without the game folder. Quit Quorvane?"),
        MessageButtons::YesNo, MessageIcon::Question };
    if (showMessage(question) != MessageAnswer::Yes)
        return;
    QuitChosen = true;
    QDialog::reject();
}

void dlgCorrectUTPath::cmdBrowse_Click()
{
    browse(QStringLiteral("Choose a New UT Path"), false);
}

void dlgCorrectUTPath::OKButton_Click()
{
    // A pasted path often brings a blank with it.
    showPath(ChosenPath.trimmed());
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
