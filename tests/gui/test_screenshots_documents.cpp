#include "editorsession.h"
#include "screenshots.h"

#include "configfiles/forms/dlgApply.h"
#include "configfiles/forms/dlgLaunchUT.h"
#include "configfiles/forms/dlgOpen.h"
#include "configfiles/forms/dlgRestore.h"
#include "configfiles/forms/dlgSaveAs.h"
#include "configfiles/gameinstallation.h"
#include "roster/forms/dlgImport.h"
#include "roster/forms/frmAbout.h"

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
        // Three lists, two backups of the lists an apply replaced, and a
        // list in each of the game's two user.ini files.
        QVERIFY(m_session->addFiles("documents/shots"));
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
        QVERIFY(saveScreenshot(form.dockOverview->grab().toImage(), "grdBots"));
    }

    void cleanupTestCase() { m_session.reset(); }

private:
    std::unique_ptr<EditorSession> m_session;
};

QTEST_MAIN(TestScreenshotsDocuments)
#include "test_screenshots_documents.moc"
