#include "startupsequence.h"

#include "dlgChangeConfigPath.h"
#include "dlgCorrectUTPath.h"
#include "dlgFirstRun.h"
#include "frmSplash.h"

#include "catalogue/bossmode.h"
#include "catalogue/forms/dlgNewBoss.h"
#include "catalogue/forms/scanforms.h"
#include "catalogue/patternfile.h"
#include "configfiles/errorreport.h"
#include "configfiles/fileops.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/progress.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "roster/botroster.h"
#include "roster/forms/frmBots.h"
#include "startup/gamepathproposals.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEventLoopLocker>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

namespace {

const QString LocateMessage
    = QStringLiteral("Locate Unreal Tournament && Configuration Directory...");

std::function<StartupForms()> &replacedForms()
{
    static std::function<StartupForms()> forms;
    return forms;
}

// The catalogue's report, pattern editor and boss choice.
StartupForms catalogueForms()
{
    StartupForms forms;
    forms.scan = CatalogueScanForms();
    forms.showNewBoss = [](QWidget *owner) {
        dlgNewBoss &dialog = theForm<dlgNewBoss>();
        dialog.adjustSize();
        if (owner)
            dialog.move(owner->frameGeometry().center() - dialog.rect().center());
        dialog.exec();
    };
    return forms;
}

StartupForms startupForms()
{
    return replacedForms() ? replacedForms()() : catalogueForms();
}

void centreOnScreen(QWidget &window)
{
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        window.move(screen->availableGeometry().center() - window.rect().center());
}

// The main window takes the middle of the screen, where the splash was,
// and the keyboard with it.
void showPreparedMainWindow()
{
    if (!isFormLoaded<frmBots>())
        return;
    frmBots &bots = theForm<frmBots>();
    if (!bots.isVisible()) {
        bots.adjustSize();
        centreOnScreen(bots);
    }
    bots.show();
    bots.activateWindow();
}

// The steps in the order they run; each leads to the next unless it says
// otherwise, which lets the error handler resume after the step that failed.
enum class Step {
    Splash,
    Options,
    OptionsRead,
    PathCheck,
    FirstRunDialog,
    Locate,
    GameDir,
    Remember,
    ConfigDir,
    PathsDone,
    Patterns,
    Scan,
    MainForm,
    Initialized,
    HandOver,
    Done,
};

Step following(Step step)
{
    return Step(int(step) + 1);
}

class StartupSequence
{
public:
    void run();

private:
    Step perform(Step step);
    Step recover(Step failed, const RunError &error);

    void say(const QString &message);
    void advance();
    void tickAutoClose();
    void placeOverSplash(QWidget &dialog, int lift);

    void showSplash();
    void loadOptions();
    bool askGameDir();
    Step quit();
    void remind();
    void askConfigDir();
    void prepareMainWindow();
    void handOver();

    StartupForms m_forms = startupForms();
    QPointer<frmSplash> m_splash;
    bool m_pathsAskedAgain = false;
    bool m_mainWindowPrepared = false;
};

void StartupSequence::run()
{
    // When one window has gone and the next has not come yet, no window is
    // open; during start-up that must not end the program.
    const QEventLoopLocker keepRunning;

    // A re-run starts from a fresh editor and game-path dialog.
    if (RestartRequested()) {
        unloadForm<dlgCorrectUTPath>();
        unloadForm<frmBots>();
    }

    Step step = Step::Splash;
    while (step != Step::Done) {
        try {
            step = perform(step);
        } catch (const RunError &error) {
            step = recover(step, error);
        }
    }
}

Step StartupSequence::perform(Step step)
{
    const Options &options = AppOptions();
    switch (step) {
    case Step::Splash:
        showSplash();
        break;
    case Step::Options:
        loadOptions();
        break;
    case Step::OptionsRead:
        RestartRequested() = false;
        letEventLoopRun();
        advance();
        break;
    case Step::PathCheck:
        if (IsGameFolder(options.UTPath) && !options.FirstRun)
            return Step::Patterns;
        break;
    case Step::FirstRunDialog:
        if (options.FirstRun) {
            dlgFirstRun &dialog = theForm<dlgFirstRun>();
            placeOverSplash(dialog, 0);
            dialog.exec();
            unloadForm<dlgFirstRun>();
        }
        break;
    case Step::Locate:
        say(LocateMessage);
        break;
    case Step::GameDir:
        if (!askGameDir())
            return quit();
        break;
    case Step::Remember:
        remind();
        break;
    case Step::ConfigDir:
        askConfigDir();
        break;
    case Step::PathsDone:
        say(LocateMessage + QStringLiteral("DONE!"));
        break;
    case Step::Patterns:
        say(QStringLiteral("Loading Pattern List..."));
        LoadPatternList();
        advance();
        break;
    case Step::Scan:
        ScanIntFiles(m_forms.scan);
        break;
    case Step::MainForm:
        prepareMainWindow();
        break;
    case Step::Initialized:
        say(QStringLiteral("Initializing Information...Done!"));
        break;
    case Step::HandOver:
        handOver();
        break;
    case Step::Done:
        break;
    }
    return following(step);
}

Step StartupSequence::recover(Step failed, const RunError &error)
{
    // An options file that cannot be read is reported once, then the start-up
    // goes on as for a missing one; the main window's closing writes a sound
    // file, so the next start is a normal one.
    if (failed == Step::Options && error.number() != ErrNum::InputPastEnd) {
        ProcessError(error, QStringLiteral("Unknown Error has occured in Sub Main"));
        AppOptions().FirstRun = true;
        return Step::OptionsRead;
    }
    switch (error.number()) {
    case ErrNum::BadFileName:
        // A path the system cannot use: ask for the directories again, but
        // only once; a second time the paths are not what is wrong.
        if (!m_pathsAskedAgain) {
            m_pathsAskedAgain = true;
            return Step::Locate;
        }
        break;
    case ErrNum::FileAlreadyOpen:
        return following(failed);
    case ErrNum::InputPastEnd:
        // A short options file keeps what it had.
        if (failed == Step::Options) {
            tickAutoClose();
            return Step::OptionsRead;
        }
        // Nothing that needs saying, but the user must still be able to
        // leave the splash.
        if (m_splash) {
            if (m_mainWindowPrepared)
                m_splash->showMainWindow = showPreparedMainWindow;
            m_splash->cmdClose->setEnabled(true);
        }
        return Step::Done;
    default:
        break;
    }
    // Nothing to resume: without the splash and the editor the start-up
    // cannot be finished, and going round it again would only repeat the
    // error. The caller sees that no window is left.
    ProcessError(error, QStringLiteral("Unknown Error has occured in Sub Main"));
    unloadForm<frmBots>();
    unloadForm<frmSplash>();
    return Step::Done;
}

void StartupSequence::say(const QString &message)
{
    if (m_splash)
        m_splash->setMessage(message);
}

void StartupSequence::advance()
{
    if (m_splash)
        m_splash->advance();
}

// The file keeps the box's state as 0 unticked, 1 ticked, 2 greyed.
void StartupSequence::tickAutoClose()
{
    if (!m_splash)
        return;
    switch (AppOptions().AutoCloseSplash) {
    case 1:
        m_splash->chkAutoClose->setCheckState(Qt::Checked);
        break;
    case 2:
        m_splash->chkAutoClose->setCheckState(Qt::PartiallyChecked);
        break;
    default:
        m_splash->chkAutoClose->setCheckState(Qt::Unchecked);
        break;
    }
}

// Dialogs of the start-up open over the splash, the path dialogs a little
// above its centre so that the splash's message line stays in view.
void StartupSequence::placeOverSplash(QWidget &dialog, int lift)
{
    dialog.adjustSize();
    if (!m_splash) {
        centreOnScreen(dialog);
        return;
    }
    const QRect splash = m_splash->frameGeometry();
    dialog.move(splash.left() + (splash.width() - dialog.width()) / 2,
        splash.top() + (splash.height() - dialog.height()) / 2 - lift);
}

void StartupSequence::showSplash()
{
    m_splash = &theForm<frmSplash>();
    m_splash->showMainWindow = nullptr;
    m_splash->cmdClose->setEnabled(false);
    installProgress(m_splash);
    m_splash->adjustSize();
    centreOnScreen(*m_splash);
    m_splash->show();
    letEventLoopRun();
}

void StartupSequence::loadOptions()
{
    say(QStringLiteral("Loading Options..."));
    const bool present = QFileInfo::exists(ProgramDir() + QStringLiteral("options.ini"));
    LoadOptions();
    if (!present)
        return;
    tickAutoClose();
    // One notch per line read, as the file has seven.
    for (int line = 0; line < 7; ++line) {
        advance();
        letEventLoopRun();
    }
}

// The path dialogs are made afresh for each use and unloaded after it, so
// that a later use shows their own caption and question, not the start-up's.
// Returns false when the user chose to quit instead.
bool StartupSequence::askGameDir()
{
    unloadForm<dlgCorrectUTPath>();
    dlgCorrectUTPath &dialog = theForm<dlgCorrectUTPath>();
    dialog.showPath(StartupGamePath());
    dialog.setWindowTitle(QStringLiteral("Locate Unreal Tournament Directory..."));
    dialog.lblMessage->clear();
    placeOverSplash(dialog, m_splash ? PathDialogLift(*m_splash) : 0);
    dialog.exec();
    const bool quitChosen = dialog.QuitChosen;
    if (!quitChosen)
        AppOptions().UTPath = dialog.ChosenPath;
    unloadForm<dlgCorrectUTPath>();
    return !quitChosen;
}

// Every window goes, so the program ends whether or not its event loop
// runs yet.
Step StartupSequence::quit()
{
    QuitChosenAtStartup() = true;
    unloadForm<frmBots>();
    unloadForm<frmSplash>();
    QApplication::closeAllWindows();
    return Step::Done;
}

void StartupSequence::remind()
{
    if (!AppOptions().FirstRun)
        return;
    showMessage(QStringLiteral("Remember!"),
        QStringLiteral("To change the path later simply go to\r\n"
                       "the 'File' menu and choose Options.\n"
                       "Then choose the Paths tab and\r\n"
                       "the UT Path radio button.\r\n"
                       "Finally click the 'Change' button."));
    if (BossPackageExists(AppOptions().UTPath) && m_forms.showNewBoss)
        m_forms.showNewBoss(m_splash);
}

void StartupSequence::askConfigDir()
{
    const Options &options = AppOptions();
    unloadForm<dlgChangeConfigPath>();
    dlgChangeConfigPath &dialog = theForm<dlgChangeConfigPath>();
    dialog.showPath(
        options.ConfigPath.isEmpty() ? ProposedConfigPath(options.UTPath) : options.ConfigPath);
    dialog.setWindowTitle(QStringLiteral("Locate Configuration Directory..."));
    dialog.lblMessage->clear();
    placeOverSplash(dialog, m_splash ? PathDialogLift(*m_splash) : 0);
    dialog.exec();
    AppOptions().ConfigPath = dialog.ChosenPath;
    unloadForm<dlgChangeConfigPath>();
}

// The editor is filled while hidden, so none of its handlers writes into
// the roster or marks the document: it shows the default list, disabled,
// until the user starts a new list or opens one.
void StartupSequence::prepareMainWindow()
{
    say(QStringLiteral("Initializing Information..."));
    frmBots &bots = theForm<frmBots>();

    bots.cmbBot->clear();
    for (int slot = 0; slot < BotSlotCount; ++slot)
        bots.cmbBot->addItem(QStringLiteral("Bot ") + QString::number(slot));
    bots.cmbBot->setCurrentIndex(0);
    bots.cmbDifficulty->setCurrentIndex(0);
    SetDefaults();
    bots.FillClassList();
    bots.cmbClass->setCurrentIndex(0);
    bots.RefreshSkins(0);
    bots.cmbSkin->setCurrentIndex(0);
    bots.RefreshFaces(0, 0);
    bots.cmbFace->setCurrentIndex(0);
    bots.RefreshVoice(0);
    bots.SetVoice();
    bots.OtherData(0);
    bots.SetBotConfigSettings();
    bots.chkJumpy->setText(QString());
    bots.mnuFileSave->setEnabled(false);
    bots.mnuFileSaveAs->setEnabled(false);
    m_mainWindowPrepared = true;
}

void StartupSequence::handOver()
{
    if (!m_splash) {
        showPreparedMainWindow();
        return;
    }
    m_splash->showMainWindow = showPreparedMainWindow;
    if (m_splash->chkAutoClose->checkState() == Qt::Checked) {
        AppOptions().AutoCloseSplash = 1;
        m_splash->cmdClose_Click();
        return;
    }
    AppOptions().AutoCloseSplash = 0;
    say(QStringLiteral("Finished...Click the Close button."));
    m_splash->cmdClose->setEnabled(true);
    // Enter closes it too, once the dialogs of the start-up have gone.
    m_splash->activateWindow();
    m_splash->cmdClose->setFocus();
}

} // namespace

void setStartupForms(std::function<StartupForms()> forms)
{
    replacedForms() = std::move(forms);
}

bool &QuitChosenAtStartup()
{
    static bool chosen = false;
    return chosen;
}

bool &RestartRequested()
{
    static bool requested = false;
    return requested;
}

void Main()
{
    StartupSequence().run();
}

int PathDialogLift(const QWidget &window)
{
    return qRound(650.0 * window.logicalDpiY() / 1440.0);
}
