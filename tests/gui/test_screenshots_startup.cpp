#include "catalogue/modelcatalogue.h"
#include "configfiles/forms/dlgChangePath.h"
#include "configfiles/forms/dlgDescr.h"
#include "configfiles/forms/dlgError.h"
#include "roster/forms/frmBots.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/dlgFirstRun.h"
#include "startup/forms/dlgOptions.h"
#include "startup/forms/frmSplash.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include "editorfixture.h"
#include "samplecatalogue.h"
#include "screenshots.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>

using MakeForm = std::function<QWidget *()>;
Q_DECLARE_METATYPE(MakeForm)

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

QWidget *folderChooser()
{
    auto *form = new dlgChangePath;
    form->setWindowTitle("Choose Configuration Directory...");
    form->setPath(QDir::homePath());
    return form;
}

// The main window as start-up shows it, before a list is started or opened.
QWidget *preparedMainWindow()
{
    Catalogue() = SampleCatalogue();
    auto *form = new frmBots;
    prepareLikeStartup(*form);
    return form;
}

// The main window as a user edits a list, for the README.
QWidget *editingMainWindow()
{
    auto *form = static_cast<frmBots *>(preparedMainWindow());
    form->EnableAll(true);
    form->setCurrentFile("Tournament.qvn");
    return form;
}

} // namespace

// Renders the start-up windows to PNG files a reviewer can open, and checks
// that each shows its caption (or, without one, its heading label).
class TestScreenshotsStartup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void forms_data();
    void forms();
    void optionsDialog_data();
    void optionsDialog();
    void errorDialog();

private:
    QTemporaryDir m_programDir;
};

void TestScreenshotsStartup::initTestCase()
{
    QVERIFY(m_programDir.isValid());
    setProgramDir(m_programDir.path());
}

// clang-format off
void TestScreenshotsStartup::forms_data()
{
    QTest::addColumn<MakeForm>("make");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("heading"); // objectName=text of a label that must show

    QTest::newRow("frmSplash") << MakeForm(splash) << "" << "lblVersion=Version 0.1.0 Beta";
    QTest::newRow("dlgFirstRun") << MakeForm([] { return new dlgFirstRun; }) << "" << "lblTitle=Starting Quorvane First Run Setup...";
    QTest::newRow("dlgCorrectUTPath") << MakeForm([] { return new dlgCorrectUTPath; }) << "Is this your correct UT Path?" << "lblMessage=Is this the correct Unreal Tournament path to use?";
    QTest::newRow("dlgChangeConfigPath") << MakeForm([] { return new dlgChangeConfigPath; }) << "Is this your correct Configuration path?" << "lblMessage=Is the path below where you want your configurations saved?";
    QTest::newRow("dlgChangePath") << MakeForm(folderChooser) << "Choose Configuration Directory..." << "lblFolder=Folder:";
    QTest::newRow("dlgDescr") << MakeForm([] { return new dlgDescr; }) << "Enter Description" << "lblWarning=Changes are only applied.  Must save configuration to save description.";
    QTest::newRow("frmBots") << MakeForm(preparedMainWindow) << "Quorvane for Unreal Tournament" << "lblFavWep=Favorite Weapon:";
    QTest::newRow("frmBotsEditing") << MakeForm(editingMainWindow) << "Tournament.qvn[*] - Quorvane for Unreal Tournament" << "lblFavWep=Favorite Weapon:";
}
// clang-format on

void TestScreenshotsStartup::forms()
{
    QFETCH(MakeForm, make);
    QFETCH(QString, caption);
    QFETCH(QString, heading);

    checkAndShoot(make, caption, heading);
}

// clang-format off
void TestScreenshotsStartup::optionsDialog_data()
{
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("control"); // objectName=text of a control the tab shows

    QTest::newRow("dlgOptionsPaths") << 0 << "optPathChange=UT Path:";
    QTest::newRow("dlgOptionsBoss") << 1 << "lblFilename=skeletalcharsfix313.int";
    QTest::newRow("dlgOptionsOther") << 2 << "chkAutoClose=Auto Close Splash Screen";
}
// clang-format on

// One picture per tab; the Other tab has no label, so the check looks for
// any control with its text.
void TestScreenshotsStartup::optionsDialog()
{
    QFETCH(int, tab);
    QFETCH(QString, control);

    // A game with the boss package, so that the Boss tab's choices are live;
    // the paths shown are the usual ones on Windows.
    const QString game = m_programDir.filePath("UnrealTournament/");
    QVERIFY(QDir().mkpath(game + "System"));
    QFile package(game + "System/SkeletalCharsFix313.int");
    QVERIFY(package.open(QIODevice::WriteOnly));
    package.write("[Public]\r\nObject=(Name=SkeletalCharsFix313.WarBoss,Class=Class,"
                  "MetaClass=Botpack.Bot,Description=\"WarBoss [Fixed]\")\r\n");
    package.close();
    AppOptions().UTPath = game;
    dlgOptions dialog;
    dialog.lblUTPath->setText("C:\\UnrealTournament\\");
    dialog.lblConfigPath->setText("C:\\UnrealTournament\\Configs\\");
    dialog.SSTab1->setCurrentIndex(tab);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialog.windowTitle(), "Quorvane Options");
    const QWidget *shown = dialog.findChild<QWidget *>(control.section('=', 0, 0));
    QVERIFY(shown && shown->isVisible());
    QCOMPARE(shown->property("text").toString(), control.section('=', 1));
    QVERIFY(saveScreenshot(dialog.grab().toImage(), QTest::currentDataTag()));
}

void TestScreenshotsStartup::errorDialog()
{
    dlgError dialog;
    QImage shot;
    QString caption;
    QTimer::singleShot(0, &dialog, [&] {
        caption = dialog.windowTitle();
        shot = dialog.grab().toImage();
        dialog.OKButton->click();
    });
    dialog.ProcessError(RunError(53, "C:\\UnrealTournament\\System\\int.ini"),
        "Unknown Error has occured in Sub Main");
    QCOMPARE(caption, "Error Number: 53");
    QVERIFY(saveScreenshot(shot, "dlgError"));
}

QTEST_MAIN(TestScreenshotsStartup)
#include "test_screenshots_startup.moc"
