#include "screenshots.h"
#include "testfiles.h"

#include "configfiles/configfile.h"
#include "configfiles/forms/dlgApply.h"
#include "configfiles/forms/dlgLaunchUT.h"
#include "configfiles/forms/dlgOpen.h"
#include "configfiles/forms/dlgRestore.h"
#include "configfiles/forms/dlgSaveAs.h"
#include "configfiles/gameinstallation.h"
#include "editorfixture.h"
#include "roster/botroster.h"
#include "roster/forms/dlgImport.h"
#include "roster/forms/frmAbout.h"
#include "roster/forms/rosteroverview.h"
#include "samplecatalogue.h"
#include "startup/options.h"

#include <QDockWidget>

#include <QTemporaryDir>

#include <functional>

using MakeForm = std::function<QWidget *()>;
Q_DECLARE_METATYPE(MakeForm)

// Renders the document dialogs to PNG files a reviewer can open, over a
// configuration folder with a few lists and a game with two user.ini files.
class TestScreenshotsDocuments : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void forms_data();
    void forms();
    void overview();

private:
    QTemporaryDir m_dir;
};

void TestScreenshotsDocuments::initTestCase()
{
    QVERIFY(m_dir.isValid());
    const QString root = QDir::toNativeSeparators(m_dir.path()) + QDir::separator();
    AppOptions().ConfigPath = root + "Configs" + QDir::separator();
    AppOptions().UTPath = root + "UnrealTournament" + QDir::separator();
    QVERIFY(QDir().mkpath(AppOptions().ConfigPath));
    BotRoster roster;
    SetDefaults(roster);
    const QStringList lists { "Deathmatch Night", "Capture the Flag", "Novices" };
    for (const QString &name : lists) {
        roster.Description = name + ": the bots we play on Fridays, tuned to our skill.";
        QVERIFY(SaveConfigAs(AppOptions().ConfigPath, name + ".qvn", true, roster));
    }
    // Two backups of the lists an apply replaced, and a game that keeps a
    // list for each of its two user.ini files.
    const auto section = [&roster](const QString &first) {
        QStringList lines { "[Botpack.ChallengeBotInfo]" };
        for (int slot = 0; slot < BotSlotCount; ++slot)
            lines << QString("BotNames[%1]=%2").arg(slot).arg(slot ? roster.BotNames[slot] : first);
        return crlf(lines);
    };
    QVERIFY(writeTestFile(
        AppOptions().ConfigPath + "curconfig_bkup_(3-7-2001-9-5-3).qvn2", section("Visitor")));
    QVERIFY(
        writeTestFile(AppOptions().ConfigPath + "curconfig_bkup_(3-9-2001-21-15-0)_System64.qvn2",
            section("Grail")));
    QVERIFY(writeTestFile(AppOptions().UTPath + "System/User.ini", section("Archon")));
    QVERIFY(writeTestFile(AppOptions().UTPath + "System64/User.ini", section("Lauren")));
}

// clang-format off
void TestScreenshotsDocuments::forms_data()
{
    QTest::addColumn<MakeForm>("make");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("heading"); // objectName=text of a label that must show

    QTest::newRow("dlgSaveAs") << MakeForm([] { return new dlgSaveAs; }) << "Save Configuration As..." << "lblExtention=.qvn";
    QTest::newRow("dlgOpen") << MakeForm([] { return new dlgOpen; }) << "Open Existing Configuration..." << "lblFilelist=File List:";
    QTest::newRow("dlgApply") << MakeForm([] { return new dlgApply; }) << "Apply Configuration" << "lblChooseConfig=Choose Configuration:";
    QTest::newRow("dlgLaunchUT") << MakeForm([] { return new dlgLaunchUT; }) << "Launch Unreal Tournament" << "Label1=Save & Apply current configuration and then launch Unreal Tournament?";
    QTest::newRow("dlgImport") << MakeForm([] { auto *d = new dlgImport; d->setFiles(GameUserIniFiles(AppOptions().UTPath)); return d; }) << "Import from Game" << "lblFiles=&Import the bot list of:";
    QTest::newRow("dlgRestore") << MakeForm([] { return new dlgRestore; }) << "Restore Backup" << "lblBackups=&Backups, newest first:";
    QTest::newRow("frmAbout") << MakeForm([] { return new frmAbout; }) << "About Quorvane" << "lblTitle=Quorvane";
}
// clang-format on

void TestScreenshotsDocuments::forms()
{
    QFETCH(MakeForm, make);
    QFETCH(QString, caption);
    QFETCH(QString, heading);

    checkAndShoot(make, caption, heading);
}

// The overview of all bots beside the editor, two of them with content the
// game will not find.
void TestScreenshotsDocuments::overview()
{
    Catalogue() = SampleCatalogue();
    Roster() = BotRoster();
    frmBots form;
    prepareLikeStartup(form);
    form.show();
    form.mnuFileNew->trigger();
    form.cmbBot->setCurrentIndex(18);
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QVERIFY(!form.grdBots->item(18, RosterOverview::Number)->icon().isNull());
    QVERIFY(saveScreenshot(form.dockOverview->grab().toImage(), "grdBots"));
}

QTEST_MAIN(TestScreenshotsDocuments)
#include "test_screenshots_documents.moc"
