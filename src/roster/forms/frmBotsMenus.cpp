// The main window's menu commands: the document commands and the recent
// configurations, the apply, the import of the game's list, the restore of
// a backup, Quit and Launch, Exit and the help entries.

#include "dlgImport.h"
#include "frmAbout.h"
#include "frmBots.h"
#include "openatstart.h"
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
#include "configfiles/forms/dlgRestore.h"
#include "configfiles/forms/dlgSaveAs.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "roster/rosterimport.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/dlgFirstRun.h"
#include "startup/forms/dlgOptions.h"
#include "startup/forms/frmSplash.h"
#include "startup/options.h"
#include "startup/recentfiles.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
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
    connect(mnuFileImport, &QAction::triggered, this, &frmBots::mnuFileImport_Click);
    connect(mnuFileRestore, &QAction::triggered, this, &frmBots::mnuFileRestore_Click);
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
    fillRecentMenu(ReadRecentFiles());
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

bool frmBots::AskToSaveBeforeOpening()
{
    return AskToSave(
        QStringLiteral(
            "   Yes = Save current configuration and then open a different configuration."),
        QStringLiteral(
            "    No = Loose current configuration and then open a different configuration."));
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
    ResetHistory();
}

// The dialog reads the file into the roster; the window then shows it.
void frmBots::mnuFileOpen_Click()
{
    if (!AskToSaveBeforeOpening())
        return;
    dlgOpen &dialog = dialogOver<dlgOpen>(this);
    dialog.exec();
    if (!dialog.FileOpened)
        return;
    EnableAll(true);
    {
        const QScopedValueRollback loading(bLoadingConfig, true);
        showFirstSlot();
        GetBotConfigSettings();
        setCurrentFile(dialog.OpenedFileName);
        LoadedFunc();
    }
    ResetHistory();
    RememberRecentFile(AppOptions().ConfigPath + dialog.OpenedFileName);
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
        if (SaveConfigAs(AppOptions().ConfigPath, fileName, true)) {
            SavedFunc(true);
            RememberRecentFile(AppOptions().ConfigPath + fileName);
        }
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
    RememberRecentFile(AppOptions().ConfigPath + dialog.SavedFileName);
}

// The apply works on a saved file, not on the roster being edited.
void frmBots::mnuFileApply_Click()
{
    dialogOver<dlgApply>(this).exec();
}

// The game's own list becomes a new, unnamed list, as if it had been typed
// in: Save As keeps it.
void frmBots::mnuFileImport_Click()
{
    const QString title = QStringLiteral("Import from Game");
    const QStringList userIniFiles = GameUserIniFiles(AppOptions().UTPath);
    if (userIniFiles.isEmpty()) {
        showMessage(title,
            QStringLiteral("Can't find user.ini in the game folder ") + AppOptions().UTPath
                + QStringLiteral(".  Nothing was imported."),
            MessageButtons::Ok, MessageIcon::Exclamation);
        return;
    }
    if (!AskToSave(
            QStringLiteral("   Yes = Save current configuration and then import the game's list."),
            QStringLiteral(
                "    No = Loose current configuration and then import the game's list.")))
        return;
    QString userIni = userIniFiles.constFirst();
    if (userIniFiles.size() > 1) {
        dlgImport &dialog = dialogOver<dlgImport>(this);
        dialog.setFiles(userIniFiles);
        if (dialog.exec() != QDialog::Accepted)
            return;
        userIni = dialog.ChosenFile;
    }

    RosterImport imported;
    try {
        const BusyPointer busy;
        imported = ImportRoster(userIni);
    } catch (const RunError &error) {
        showMessage(title,
            QDir::toNativeSeparators(userIni)
                + QStringLiteral(" could not be read; nothing was imported.\r\n") + error.message(),
            MessageButtons::Ok, MessageIcon::Exclamation);
        return;
    }
    if (imported.sectionFound) {
        Roster() = imported.roster;
        EnableAll(true);
        showFirstSlot();
        GetBotConfigSettings();
        setCurrentFile(UnNamed);
        SavedFunc(false);
        mnuFileSave->setEnabled(true);
        mnuFileSaveAs->setEnabled(true);
        ResetHistory();
    }
    ReportImportProblems(imported, userIni);
}

void frmBots::mnuFileRestore_Click()
{
    dialogOver<dlgRestore>(this).exec();
}

void frmBots::RememberRecentFile(const QString &file)
{
    const QStringList files = WithRecentFile(
        ReadRecentFiles(), QDir::toNativeSeparators(QFileInfo(file).absoluteFilePath()));
    try {
        WriteRecentFiles(files);
    } catch (const RunError &) {
        // A convenience: a list that cannot be kept is not worth a message
        // at every save.
    }
    fillRecentMenu(files);
}

void frmBots::fillRecentMenu(const QStringList &files)
{
    // An entry may be the one whose click got here: it goes once that is over.
    for (QAction *entry : std::as_const(mnuFileRecent)) {
        mnuFile->removeAction(entry);
        entry->deleteLater();
    }
    mnuFileRecent.clear();
    for (const QString &file : files) {
        const int number = int(mnuFileRecent.size()) + 1;
        auto *entry = new QAction(QStringLiteral("&%1 ").arg(number)
                + QFileInfo(file).fileName().replace(QLatin1Char('&'), QLatin1String("&&")),
            mnuFile);
        entry->setObjectName(QStringLiteral("mnuFileRecent%1").arg(number));
        entry->setToolTip(file);
        entry->setStatusTip(file);
        connect(entry, &QAction::triggered, this, [this, file] { openRecentFile(file); });
        mnuFile->insertAction(m_recentSeparator, entry);
        mnuFileRecent.append(entry);
    }
    m_recentSeparator->setVisible(!files.isEmpty());
}

// A configuration that is gone leaves the list once it was reported.
void frmBots::openRecentFile(const QString &file)
{
    if (OpenConfigurationFile(file) || QFileInfo(file).isFile())
        return;
    const QStringList files = WithoutRecentFile(ReadRecentFiles(), file);
    try {
        WriteRecentFiles(files);
    } catch (const RunError &) {
        // Offered again next time; opening it says what is wrong.
    }
    fillRecentMenu(files);
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
    unloadForm<dlgImport>();
    unloadForm<dlgLaunchUT>();
    unloadForm<dlgOpen>();
    unloadForm<dlgOptions>();
    unloadForm<dlgRestore>();
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
