#include "catalogue/modelcatalogue.h"
#include "configfiles/configfile.h"
#include "configfiles/forms/formregistry.h"
#include "roster/forms/openatstart.h"
#include "startup/programdirectory.h"

#include "editorfixture.h"
#include "samplecatalogue.h"
#include "scriptedprompt.h"

#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

// A bot list handed over on the command line (a double-click in a file
// manager) opens in the main window as File, Open would, from any folder.
class TestOpenAtStart : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void opens_data();
    void opens();

private:
    QTemporaryDir m_dir;
};

void TestOpenAtStart::initTestCase()
{
    QVERIFY(m_dir.isValid());
    setProgramDir(m_dir.path());
    AppOptions().ConfigPath = m_dir.filePath("configs") + "/";
    Catalogue() = SampleCatalogue();
}

void TestOpenAtStart::cleanup()
{
    unloadForm<frmBots>();
}

// clang-format off
void TestOpenAtStart::opens_data()
{
    QTest::addColumn<QString>("file"); // in the test's folder; "" for none saved
    QTest::addColumn<QString>("given"); // the path handed over
    QTest::addColumn<QString>("name"); // shown in the slot, "" when nothing opened
    QTest::addColumn<QString>("messages");

    QTest::newRow("a list from the downloads") << "Downloads/Team.qvn" << "Downloads/Team.qvn"
                                               << "Opened" << "";
    QTest::newRow("a relative path") << "Team.qvn" << "./Team.qvn" << "Opened" << "";
    QTest::newRow("a missing file") << "" << "Downloads/Gone.qvn" << ""
                                    << "Configuration Not Opened";
}
// clang-format on

void TestOpenAtStart::opens()
{
    QFETCH(QString, file);
    QFETCH(QString, given);
    QFETCH(QString, name);
    QFETCH(QString, messages);

    ScriptedPrompt prompt;
    if (!file.isEmpty()) {
        BotRoster saved;
        SetDefaults(saved);
        saved.BotNames[0] = "Opened";
        const QFileInfo path(m_dir.filePath(file));
        QVERIFY(QDir().mkpath(path.absolutePath()));
        QVERIFY(SaveConfigAs(path.absolutePath() + "/", path.fileName(), true, saved));
    }
    frmBots &form = theForm<frmBots>();
    prepareLikeStartup(form);
    QDir::setCurrent(m_dir.path());

    OpenConfigurationAtStart(given);

    QStringList titles;
    for (const Message &message : prompt.messages())
        titles << message.title;
    QCOMPARE(titles.join('|'), messages);
    QCOMPARE(form.txtName->text(), name.isEmpty() ? QString("Archon") : name);
    QCOMPARE(Roster().BotNames[0], form.txtName->text());
    QCOMPARE(form.lblCurrentFile->text(), name.isEmpty() ? QString() : QFileInfo(file).fileName());
    QCOMPARE(form.lblSaved->text(), name.isEmpty() ? QString("Saved") : QString("Loaded"));
}

QTEST_MAIN(TestOpenAtStart)
#include "test_openatstart.moc"
