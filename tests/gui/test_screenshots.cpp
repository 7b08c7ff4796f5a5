#include "bosspackage.h"
#include "editorfixture.h"
#include "editorsession.h"
#include "formtesting.h"
#include "screenshots.h"

#include "catalogue/forms/dlgNewBoss.h"
#include "catalogue/forms/frmBadFiles.h"
#include "catalogue/forms/frmPattern.h"
#include "catalogue/patternfile.h"
#include "catalogue/unmatchedlist.h"
#include "configfiles/forms/dlgApply.h"
#include "configfiles/forms/dlgChangePath.h"
#include "configfiles/forms/dlgDescr.h"
#include "configfiles/forms/dlgError.h"
#include "configfiles/forms/dlgLaunchUT.h"
#include "configfiles/forms/dlgOpen.h"
#include "configfiles/forms/dlgRestore.h"
#include "configfiles/forms/dlgSaveAs.h"
#include "configfiles/gameinstallation.h"
#include "roster/forms/dlgImport.h"
#include "roster/forms/frmAbout.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/dlgFirstRun.h"
#include "startup/forms/dlgOptions.h"
#include "startup/forms/frmSplash.h"

#include <QDockWidget>
#include <QTabWidget>

#include <memory>

namespace {

QWidget *splash()
{
    auto *form = new frmSplash;
    form->setAttribute(Qt::WA_DeleteOnClose, false);
    form->setMessage("Locate Unreal Tournament && Configuration Directory...");
    form->chkAutoClose->setChecked(true);
    for (int i = 0; i < 40; ++i)
        form->advance();
    return form;
}

// The main window as start-up shows it, before a list is started or opened;
// when editing, as a user edits a list, for the README.
QWidget *mainWindow(bool editing)
{
    auto *form = new frmBots;
    prepareLikeStartup(*form);
    if (editing) {
        form->EnableAll(true);
        form->setCurrentFile("Tournament.qvn");
    }
    return form;
}

// One picture per tab; the paths shown are the usual ones on Windows.
QWidget *options(int tab)
{
    auto *dialog = new dlgOptions;
    dialog->lblUTPath->setText("C:\\UnrealTournament\\");
    dialog->lblConfigPath->setText("C:\\UnrealTournament\\Configs\\");
    dialog->SSTab1->setCurrentIndex(tab);
    return dialog;
}

// Filled in by the error it reports, then shown again for the picture.
QWidget *errorDialog()
{
    auto *dialog = new dlgError;
    QTimer::singleShot(0, dialog, [dialog] { dialog->OKButton->click(); });
    dialog->ProcessError(RunError(53, "C:\\UnrealTournament\\System\\int.ini"),
        "Unknown Error has occured in Sub Main");
    return dialog;
}

const QStringList unmatched { "C:\\UnrealTournament\\System\\MyGuySkins.int",
    "C:\\UnrealTournament\\System\\TinManPack.int", "C:\\UnrealTournament\\System\\ZedWarriors.int",
    "C:\\UnrealTournament\\System\\OddBall.int" };

QWidget *report()
{
    auto *form = new frmBadFiles;
    form->setFiles(unmatched);
    form->lstFileList->topLevelItem(0)->setCheckState(0, Qt::Checked);
    form->lstFileList->topLevelItem(2)->setCheckState(0, Qt::Checked);
    return form;
}

QWidget *patternEditor()
{
    ContinueToPatternEditor(unmatched.mid(0, 3));
    PatternEditorFiles()[0].modelDescription = "Male Commando";
    auto *form = new frmPattern;
    form->lstFiles->setCurrentItem(form->lstFiles->topLevelItem(1));
    form->cmbModelAssoc->setCurrentText("Female Warrior");
    return form;
}

} // namespace

// Renders the program's windows to PNG files a reviewer can open, over a
// configuration folder with a few lists and a game with two user.ini files
// and the boss package, so that its choices are live.
class TestScreenshots : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_session = std::make_unique<EditorSession>();
        // Three lists, two backups of the lists an apply replaced, and a
        // list in each of the game's two user.ini files.
        QVERIFY(m_session->addFiles("documents/shots"));
        QVERIFY(writeTestFile(
            AppOptions().UTPath + "System/SkeletalCharsFix313.int", bossPackageText(0)));
        loadPatternCatalogue();
        QVERIFY(writeTestFile(PatternFilePath(), "commando,MyHero,Soldier2\r\nwarrior,Amazon\r\n"));
        LoadPatternList();
    }

    // clang-format off
    void forms_data()
    {
        addFormShotColumn();
        QTest::newRow("frmSplash") << FormShot { splash, "", "lblVersion=Version 0.1.0 Beta", true };
        QTest::newRow("dlgFirstRun") << FormShot { [] { return new dlgFirstRun; }, "", "lblTitle=Starting Quorvane First Run Setup..." };
        QTest::newRow("dlgCorrectUTPath") << FormShot { [] { return new dlgCorrectUTPath; }, "Is this your correct UT Path?", "lblMessage=Is this the correct Unreal Tournament path to use?" };
        QTest::newRow("dlgChangeConfigPath") << FormShot { [] { return new dlgChangeConfigPath; }, "Is this your correct Configuration path?", "lblMessage=Is the path below where you want your configurations saved?", true };
        QTest::newRow("dlgChangePath") << FormShot { [] {
            auto *form = new dlgChangePath;
            form->setWindowTitle("Choose Configuration Directory...");
            form->setPath(QDir::homePath());
            return form;
        }, "Choose Configuration Directory...", "lblFolder=Folder:" };
        QTest::newRow("dlgDescr") << FormShot { [] { return new dlgDescr; }, "Enter Description", "lblWarning=Changes are only applied.  Must save configuration to save description.", true };
        QTest::newRow("dlgError") << FormShot { errorDialog, "Error Number: 53", "lblErrDescr=File not found: C:\\UnrealTournament\\System\\int.ini", true };
        QTest::newRow("frmBots") << FormShot { [] { return mainWindow(false); }, "Quorvane for Unreal Tournament", "lblFavWep=Favorite Weapon:", true };
        QTest::newRow("frmBotsEditing") << FormShot { [] { return mainWindow(true); }, "Tournament.qvn[*] - Quorvane for Unreal Tournament", "lblFavWep=Favorite Weapon:" };
        QTest::newRow("dlgOptionsPaths") << FormShot { [] { return options(0); }, "Quorvane Options", "optPathChange=UT Path:" };
        QTest::newRow("dlgOptionsBoss") << FormShot { [] { return options(1); }, "Quorvane Options", "lblFilename=skeletalcharsfix313.int" };
        QTest::newRow("dlgOptionsOther") << FormShot { [] { return options(2); }, "Quorvane Options", "chkAutoClose=Auto Close Splash Screen" };
        QTest::newRow("frmBadFiles") << FormShot { report, "These Skin files could not be matched to any Models...", "lblListHeader=PATH", true };
        QTest::newRow("frmPattern") << FormShot { patternEditor, "Create/Add Pattern to the Pattern File", "lblStep1=2. Choose the Model to associate the Skin file too:", true };
        QTest::newRow("dlgNewBoss") << FormShot { [] { return new dlgNewBoss; }, "Which WarBoss and Xan II models to use?", "lblBossChoice=Currently both boss models are turned on.  You only need one turned on.  I recommend the first choice below.", true };
        QTest::newRow("dlgSaveAs") << FormShot { [] { return new dlgSaveAs; }, "Save Configuration As...", "lblExtention=.qvn" };
        QTest::newRow("dlgOpen") << FormShot { [] { return new dlgOpen; }, "Open Existing Configuration...", "lblFilelist=File List:" };
        QTest::newRow("dlgApply") << FormShot { [] { return new dlgApply; }, "Apply Configuration", "lblChooseConfig=Choose Configuration:" };
        QTest::newRow("dlgLaunchUT") << FormShot { [] { return new dlgLaunchUT; }, "Launch Unreal Tournament", "Label1=Save & Apply current configuration and then launch Unreal Tournament?" };
        QTest::newRow("dlgImport") << FormShot { [] { auto *d = new dlgImport; d->setFiles(GameUserIniFiles(AppOptions().UTPath)); return d; }, "Import from Game", "lblFiles=&Import the bot list of:" };
        QTest::newRow("dlgRestore") << FormShot { [] { return new dlgRestore; }, "Restore Backup", "lblBackups=&Backups, newest first:" };
        QTest::newRow("frmAbout") << FormShot { [] { return new frmAbout; }, "About Quorvane", "lblTitle=Quorvane" };
    }
    // clang-format on

    void forms() { shootFormRow(); }

    // The overview of all bots beside the editor, two of them with content
    // the game will not find.
    void overview()
    {
        frmBots &form = m_session->form();
        form.mnuFileNew->trigger();
        form.cmbBot->setCurrentIndex(18);
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QVERIFY(saveScreenshot(form.dockOverview->grab().toImage(), "grdBots"));
    }

    void cleanupTestCase() { m_session.reset(); }

private:
    std::unique_ptr<EditorSession> m_session;
};

QTEST_MAIN(TestScreenshots)
#include "test_screenshots.moc"
