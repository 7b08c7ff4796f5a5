// The main window's menu commands: the document commands, the apply, Quit
// and Launch, Exit and the help entries.

#include "frmAbout.h"
#include "frmBots.h"
#include "weblinks.h"

#include "catalogue/forms/dlgNewBoss.h"
#include "catalogue/forms/frmBadFiles.h"
#include "catalogue/forms/frmPattern.h"
#include "configfiles/applyconfig.h"
#include "configfiles/configfile.h"
#include "configfiles/forms/dlgApply.h"
#include "configfiles/forms/dlgChangePath.h"
#include "configfiles/forms/dlgDescr.h"
#include "configfiles/forms/dlgError.h"
#include "configfiles/forms/dlgLaunchUT.h"
#include "configfiles/forms/dlgOpen.h"
#include "configfiles/forms/dlgSaveAs.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/dlgFirstRun.h"
#include "startup/forms/dlgOptions.h"
#include "startup/forms/frmSplash.h"
#include "startup/options.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QScopedValueRollback>

namespace {

const QString UnNamed = QStringLiteral("(Un-Named)");
const QString ProgramTitle = QStringLiteral("Quorvane for Unreal Tournament");

// The dialogs are made once and shown over the window that asks for them.
template<typename Dialog> Dialog &dialogOver(QWidget *owner)
{
    Dialog &dialog = theForm<Dialog>();
    if (dialog.parentWidget() != owner)
        dialog.setParent(owner, dialog.windowFlags());
    return dialog;
}

} // namespace

void frmBots::connectMenus()
{
    mnuFileNew->setShortcut(QKeySequence::New);
    mnuFileOpen->setShortcut(QKeySequence::Open);
    mnuFileSave->setShortcut(QKeySequence::Save);
    mnuFileSaveAs->setShortcut(QKeySequence::SaveAs);
    mnuHelpHelp->setShortcut(QKeySequence::HelpContents);

    connect(mnuFileNew, &QAction::triggered, this, &frmBots::mnuFileNew_Click);
    connect(mnuFileOpen, &QAction::triggered, this, &frmBots::mnuFileOpen_Click);
    connect(mnuFileApply, &QAction::triggered, this, &frmBots::mnuFileApply_Click);
    connect(mnuFileOptions, &QAction::triggered, this, &frmBots::mnuFileOptions_Click);
    connect(mnuFileSave, &QAction::triggered, this, &frmBots::mnuFileSave_Click);
    connect(mnuFileSaveAs, &QAction::triggered, this, &frmBots::mnuFileSaveAs_Click);
    connect(mnuFileQuitLaunch, &QAction::triggered, this, &frmBots::mnuFileQuitLaunch_Click);
    connect(mnuFileExit, &QAction::triggered, this, &frmBots::mnuFileExit_Click);
    connect(
        mnuHelpWebsite, &QAction::triggered, this, [] { PerformShellAction(HomePageAddress()); });
    connect(mnuHelpSupportSite, &QAction::triggered, this,
        [] { PerformShellAction(SupportPageAddress()); });
    connect(mnuHelpHelp, &QAction::triggered, this, &frmBots::mnuHelpHelp_Click);
    connect(mnuHelpAbout, &QAction::triggered, this, &frmBots::mnuHelpAbout_Click);
    connect(this, &frmBots::partnerLogoActivated, this,
        [] { PerformShellAction(PartnerSiteAddress()); });
}

void frmBots::setCurrentFile(const QString &name)
{
    lblCurrentFile->setText(name);
    setWindowTitle(name.isEmpty() ? ProgramTitle : name + QStringLiteral("[*] - ") + ProgramTitle);
}

// New, Open and Exit would drop a roster that is not saved: the user may
// save it first, go on without it, or stay. Returns whether to go on.
bool frmBots::AskToSave(const QString &yesLine, const QString &noLine)
{
    if (IsSaved())
        return true;
    const QString text
        = QStringList({ QStringLiteral("Your current config is not saved."), yesLine, noLine,
                          QStringLiteral("Cancel = Cancel this operation.") })
              .join(QStringLiteral("\r\n\r\n"));
    const MessageAnswer answer = showMessage(
        QStringLiteral("Save Current Configuration?"), text, MessageButtons::YesNoCancel);
    if (answer == MessageAnswer::Cancel)
        return false;
    // A save the user abandons or that fails does not hold the command up.
    if (answer == MessageAnswer::Yes)
        mnuFileSave_Click();
    return true;
}

void frmBots::showFirstSlot()
{
    cmbBot->setCurrentIndex(0);
    const QScopedValueRollback refreshing(bRefreshing, true);
    PositionSlot();
    OtherData(CurrentSlot());
}

void frmBots::mnuFileNew_Click()
{
    if (!AskToSave(QStringLiteral("   Yes = Save current configuration and then start a new one."),
            QStringLiteral("    No = Loose current configuration and then start a new one.")))
        return;
    SetDefaults();
    showFirstSlot();
    SetBotConfigSettings();
    setCurrentFile(UnNamed);
    EnableAll(true);
    DoHsChange();
    SavedFunc(false);
    mnuFileSave->setEnabled(true);
    mnuFileSaveAs->setEnabled(true);
}

// The dialog reads the file into the roster; the window then shows it.
void frmBots::mnuFileOpen_Click()
{
    if (!AskToSave(
            QStringLiteral(
                "   Yes = Save current configuration and then open a different configuration."),
            QStringLiteral(
                "    No = Loose current configuration and then open a different configuration.")))
        return;
    dlgOpen &dialog = dialogOver<dlgOpen>(this);
    dialog.exec();
    if (!dialog.FileOpened)
        return;
    EnableAll(true);
    const QScopedValueRollback loading(bLoadingConfig, true);
    showFirstSlot();
    GetBotConfigSettings();
    setCurrentFile(dialog.OpenedFileName);
    LoadedFunc();
}

// A roster without a file name needs one first; a named one overwrites its
// file in the configuration directory.
void frmBots::mnuFileSave_Click()
{
    const QString fileName = lblCurrentFile->text();
    if (fileName == UnNamed) {
        mnuFileSaveAs_Click();
        return;
    }
    try {
        if (SaveConfigAs(AppOptions().ConfigPath, fileName, true))
            SavedFunc(true);
    } catch (const RunError &error) {
        showMessage(QStringLiteral("Configuration Not Saved"),
            QStringLiteral("The configuration could not be saved as ") + fileName
                + QStringLiteral(":\r\n") + error.message(),
            MessageButtons::Ok, MessageIcon::Exclamation);
    }
}

void frmBots::mnuFileSaveAs_Click()
{
    dlgSaveAs &dialog = dialogOver<dlgSaveAs>(this);
    // Cancel leaves the roster marked as not saved.
    if (dialog.exec() == QDialog::Rejected)
        SavedFunc(false);
    if (dialog.SavedFileName.isEmpty())
        return;
    setCurrentFile(dialog.SavedFileName);
    SavedFunc(true);
}

// The apply works on a saved file, not on the roster being edited.
void frmBots::mnuFileApply_Click()
{
    dialogOver<dlgApply>(this).exec();
}

// Not one of this window's dialogs: changing the game folder in it replaces
// this window while the dialog stays open.
void frmBots::mnuFileOptions_Click()
{
    theForm<dlgOptions>().showOver(this);
}

// Saves the current configuration, puts it into the game with a backup,
// then starts the game and ends; anything that fails on the way keeps the
// game from starting with the old bot list, and the program open.
void frmBots::mnuFileQuitLaunch_Click()
{
    const QString game = GameExecutable(AppOptions().UTPath);
    const auto reportMissingGame = [] {
        showMessage(QStringLiteral("Unreal Tournament Exe Missing..."),
            QStringLiteral("Unreal Tournament Executable not found!"), MessageButtons::Ok,
            MessageIcon::Exclamation);
    };
    if (game.isEmpty()) {
        reportMissingGame();
        return;
    }
    if (!LaunchWithoutAsking()) {
        dlgLaunchUT &dialog = dialogOver<dlgLaunchUT>(this);
        dialog.exec();
        if (dialog.Answer != dlgLaunchUT::AnswerYes)
            return;
    }
    if (!saveForLaunch())
        return;
    // Before the first New or Open there is no configuration to put in.
    const QString configuration = lblCurrentFile->text();
    if (!configuration.isEmpty() && !ApplyConfiguration(configuration, true))
        return;
    if (!StartGame(game)) {
        reportMissingGame();
        return;
    }
    closeAllForms();
}

bool frmBots::saveForLaunch()
{
    if (!IsSaved())
        mnuFileSave_Click();
    return IsSaved();
}

// The other windows close first; closing this one writes the options, and
// the program ends with its last window.
void frmBots::mnuFileExit_Click()
{
    if (AskToSave(QStringLiteral("   Yes = Save current configuration and quit."),
            QStringLiteral("    No = Loose current configuration and quit.")))
        closeAllForms();
}

void frmBots::closeAllForms()
{
    unloadForm<dlgApply>();
    unloadForm<dlgNewBoss>();
    unloadForm<dlgChangeConfigPath>();
    unloadForm<dlgChangePath>();
    unloadForm<dlgCorrectUTPath>();
    unloadForm<dlgDescr>();
    unloadForm<dlgError>();
    unloadForm<dlgFirstRun>();
    unloadForm<dlgLaunchUT>();
    unloadForm<dlgOpen>();
    unloadForm<dlgOptions>();
    unloadForm<dlgSaveAs>();
    unloadForm<frmAbout>();
    unloadForm<frmBadFiles>();
    unloadForm<frmPattern>();
    unloadForm<frmSplash>();
    close();
}

void frmBots::mnuHelpHelp_Click()
{
    OpenUserGuide();
}

void frmBots::mnuHelpAbout_Click()
{
    dialogOver<frmAbout>(this).exec();
}
