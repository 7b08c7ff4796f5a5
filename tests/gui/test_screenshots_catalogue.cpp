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
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <functional>

using MakeForm = std::function<QWidget *()>;
Q_DECLARE_METATYPE(MakeForm)

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
    void initTestCase();
    void forms_data();
    void forms();

private:
    QTemporaryDir m_dir;
};

void TestScreenshotsCatalogue::initTestCase()
{
    QVERIFY(m_dir.isValid());
    setProgramDir(m_dir.path());
    Catalogue() = SampleCatalogue();
    const QStringList skinTypes { "commando", "fcommando", "boss", "Robot", "warrior", "robot2" };
    for (qsizetype i = 0; i < skinTypes.size(); ++i)
        Catalogue().MISCCLASSES[i].SkinType = skinTypes.at(i);
    QVERIFY(writeTestFile(PatternFilePath(), "commando,MyHero,Soldier2\r\nwarrior,Amazon\r\n"));
    LoadPatternList();

    AppOptions().UTPath = m_dir.path() + "/";
    QVERIFY(writeTestFile(m_dir.filePath("System/skeletalcharsfix313.int"),
        "[Public]\r\n"
        "Object=(Name=SkeletalCharsFix313.WarBossFixed,Class=Class,MetaClass=Botpack.Bot,"
        "Description=\"WarBoss [Fixed]\")\r\n"
        "Object=(Name=SkeletalCharsFix313.WarBossMale,Class=Class,MetaClass=Botpack.Bot,"
        "Description=\"WarBoss [Fixed/Male Voices]\")\r\n"));
}

// clang-format off
void TestScreenshotsCatalogue::forms_data()
{
    QTest::addColumn<MakeForm>("make");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("heading"); // objectName=text of a label that must show

    QTest::newRow("frmBadFiles") << MakeForm(report) << "These Skin files could not be matched to any Models..." << "lblListHeader=PATH";
    QTest::newRow("frmPattern") << MakeForm(patternEditor) << "Create/Add Pattern to the Pattern File" << "lblStep1=2. Choose the Model to associate the Skin file too:";
    QTest::newRow("dlgNewBoss") << MakeForm([] { return new dlgNewBoss; }) << "Which WarBoss and Xan II models to use?" << "lblBossChoice=Currently both boss models are turned on.  You only need one turned on.  I recommend the first choice below.";
}
// clang-format on

void TestScreenshotsCatalogue::forms()
{
    QFETCH(MakeForm, make);
    QFETCH(QString, caption);
    QFETCH(QString, heading);

    checkAndShoot(make, caption, heading);
}

QTEST_MAIN(TestScreenshotsCatalogue)
#include "test_screenshots_catalogue.moc"
