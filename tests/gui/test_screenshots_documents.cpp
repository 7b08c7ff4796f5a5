#include "editorsession.h"
#include "screenshots.h"

#include "configfiles/configfile.h"
#include "configfiles/forms/dlgApply.h"
#include "configfiles/forms/dlgLaunchUT.h"
#include "configfiles/forms/dlgOpen.h"
#include "configfiles/forms/dlgRestore.h"
#include "configfiles/forms/dlgSaveAs.h"
#include "configfiles/gameinstallation.h"
#include "roster/forms/dlgImport.h"
#include "roster/forms/frmAbout.h"
#include "roster/forms/rosteroverview.h"

#include <QDockWidget>

#include <memory>

// Renders the document dialogs to PNG files a reviewer can open, over a
// configuration folder with a few lists and a game with two user.ini files.
class TestScreenshotsDocuments : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_session = std::make_unique<EditorSession>();
        BotRoster roster;
        SetDefaults(roster);
        for (const QString name : { "Deathmatch Night", "Capture the Flag", "Novices" }) {
            roster.Description = name + ": the bots we play on Fridays, tuned to our skill.";
            QVERIFY(SaveConfigAs(m_session->config(), name + ".qvn", true, roster));
        }
        // Two backups of the lists an apply replaced, and a list in each of
        // the game's two user.ini files.
        const auto section = [&roster](const QString &first) {
            QStringList lines { "[Botpack.ChallengeBotInfo]" };
            for (int slot = 0; slot < BotSlotCount; ++slot)
                lines << QString("BotNames[%1]=%2")
                             .arg(slot)
                             .arg(slot ? roster.BotNames[slot] : first);
            return crlf(lines);
        };
        QVERIFY(writeTestFile(
            m_session->config("curconfig_bkup_(3-7-2001-9-5-3).qvn2"), section("Visitor")));
        QVERIFY(writeTestFile(m_session->config("curconfig_bkup_(3-9-2001-21-15-0)_System64.qvn2"),
            section("Grail")));
        QVERIFY(writeTestFile(m_session->userIni(), section("Archon")));
        QVERIFY(writeTestFile(m_session->userIni("System64"), section("Lauren")));
    }

    // clang-format off
    void forms_data()
    {
        addFormShotColumn();
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
        QVERIFY(!form.grdBots->item(18, RosterOverview::Number)->icon().isNull());
        QVERIFY(saveScreenshot(form.dockOverview->grab().toImage(), "grdBots"));
    }

    void cleanupTestCase() { m_session.reset(); }

private:
    std::unique_ptr<EditorSession> m_session;
};

QTEST_MAIN(TestScreenshotsDocuments)
#include "test_screenshots_documents.moc"
