#include "bosspackage.h"
#include "samplecatalogue.h"
#include "screenshots.h"
#include "testfiles.h"

#include "catalogue/forms/dlgNewBoss.h"
#include "catalogue/forms/frmBadFiles.h"
#include "catalogue/forms/frmPattern.h"
#include "catalogue/patternfile.h"
#include "catalogue/unmatchedlist.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QComboBox>
#include <QTemporaryDir>
#include <QTreeWidget>

namespace {

const QStringList unmatched {
    "C:\\UnrealTournament\\System\\MyGuySkins.int",
    "C:\\UnrealTournament\\System\\TinManPack.int",
    "C:\\UnrealTournament\\System\\ZedWarriors.int",
    "C:\\UnrealTournament\\System\\OddBall.int",
};

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

// Renders the catalogue's windows to PNG files a reviewer can open, and
// checks that each shows its caption and a label it must show.
class TestScreenshotsCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        setProgramDir(m_dir.path());
        Catalogue() = SampleCatalogue();
        const QStringList skinTypes { "commando", "fcommando", "boss", "Robot", "warrior",
            "robot2" };
        for (qsizetype i = 0; i < skinTypes.size(); ++i)
            Catalogue().MISCCLASSES[i].SkinType = skinTypes.at(i);
        QVERIFY(writeTestFile(PatternFilePath(), "commando,MyHero,Soldier2\r\nwarrior,Amazon\r\n"));
        LoadPatternList();

        AppOptions().UTPath = m_dir.path() + "/";
        QVERIFY(writeTestFile(
            m_dir.filePath("System/skeletalcharsfix313.int"), bossPackageText(true, true)));
    }

    // clang-format off
    void forms_data()
    {
        addFormShotColumn();
        QTest::newRow("frmBadFiles") << FormShot { report, "These Skin files could not be matched to any Models...", "lblListHeader=PATH" };
        QTest::newRow("frmPattern") << FormShot { patternEditor, "Create/Add Pattern to the Pattern File", "lblStep1=2. Choose the Model to associate the Skin file too:" };
        QTest::newRow("dlgNewBoss") << FormShot { [] { return new dlgNewBoss; }, "Which WarBoss and Xan II models to use?", "lblBossChoice=Currently both boss models are turned on.  You only need one turned on.  I recommend the first choice below." };
    }
    // clang-format on

    void forms() { shootFormRow(); }

private:
    QTemporaryDir m_dir;
};

QTEST_MAIN(TestScreenshotsCatalogue)
#include "test_screenshots_catalogue.moc"
