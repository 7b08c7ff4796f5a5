#include "screenshots.h"
#include "testfiles.h"

#include "configfiles/configfile.h"
#include "configfiles/forms/dlgApply.h"
#include "configfiles/forms/dlgLaunchUT.h"
#include "configfiles/forms/dlgOpen.h"
#include "configfiles/forms/dlgSaveAs.h"
#include "roster/botroster.h"
#include "roster/forms/frmAbout.h"
#include "startup/options.h"

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
    QVERIFY(
        writeTestFile(AppOptions().ConfigPath + "curconfig_bkup_(3-7-2001-9-5-3).qvn2", "[x]\r\n"));
    for (const char *userIni : { "System/User.ini", "System64/User.ini" })
        QVERIFY(writeTestFile(AppOptions().UTPath + userIni, "[Botpack.ChallengeBotInfo]\r\n"));
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

QTEST_MAIN(TestScreenshotsDocuments)
#include "test_screenshots_documents.moc"
