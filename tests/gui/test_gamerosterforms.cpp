#include "dialogscript.h"
#include "editorfixture.h"
#include "samplecatalogue.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include "catalogue/modelcatalogue.h"
#include "configfiles/forms/dlgRestore.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/gameinstallation.h"
#include "roster/forms/dlgImport.h"
#include "roster/forms/rosteroverview.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>
#include <QUndoStack>

#include <memory>

namespace {

const QByteArray Header = "[Botpack.ChallengeBotInfo]";

QByteArray realUserIni(const QByteArray &firstBot)
{
    return readTestFile(realWorldDir() + "vanilla-server/System/User.ini")
        .replace("BotNames[0]=Archon", "BotNames[0]=" + firstBot);
}

} // namespace

// File, Import from Game and File, Restore Backup, with their dialogs, on a
// game folder made from the real installation's User.ini.
class TestGameRosterForms : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void import_data();
    void import();
    void restore_data();
    void restore();

private:
    QString userIni(const QString &folder) const { return m_gameDir + folder + "/User.ini"; }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_gameDir;
    QStringList m_processes;
    ScriptedPrompt *m_prompt = nullptr;
    frmBots *form = nullptr;
};

// The editor as start-up leaves it, nothing opened yet.
void TestGameRosterForms::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    const QString root = QDir::toNativeSeparators(m_dir->path()) + QDir::separator();
    setProgramDir(root);
    AppOptions().ConfigPath = root + "configs" + QDir::separator();
    m_gameDir = root + "UT" + QDir::separator();
    AppOptions().UTPath = m_gameDir;
    QVERIFY(QDir().mkpath(AppOptions().ConfigPath));
    QVERIFY(QDir().mkpath(m_gameDir + "System"));
    Catalogue() = SampleCatalogue();
    m_processes.clear();
    setProcessLister([this] { return m_processes; });
    m_prompt = new ScriptedPrompt;
    Roster() = BotRoster();
    form = new frmBots;
    prepareLikeStartup(*form);
    form->show();
}

void TestGameRosterForms::cleanup()
{
    delete form;
    unloadForm<dlgImport>();
    unloadForm<dlgRestore>();
    delete m_prompt;
    setProcessLister({});
    m_dir.reset();
}

void TestGameRosterForms::import_data()
{
    QTest::addColumn<QByteArray>("system"); // System/User.ini; "" for none
    QTest::addColumn<QByteArray>("system64"); // System64/User.ini; "" for none
    QTest::addColumn<bool>("unsaved"); // a new list is being edited
    QTest::addColumn<QString>("choice"); // in the dialog: a row, "cancel"; "" not shown
    QTest::addColumn<QString>("messages"); // @file for System/User.ini's path
    QTest::addColumn<QString>("imported"); // first bot; "" nothing imported

    const QByteArray real = realUserIni("Gamer");
    const QByteArray other = realUserIni("Sixty");
    const QString saveQuestion = "Save Current Configuration?|Your current config is not "
                                 "saved.\r\n\r\n   Yes = Save current configuration and then "
                                 "import the game's list.\r\n\r\n    No = Loose current "
                                 "configuration and then import the game's list.\r\n\r\nCancel = "
                                 "Cancel this operation.";
    // clang-format off
    QTest::newRow("one user.ini") << real << QByteArray() << false << "" << "" << "Gamer";
    QTest::newRow("two, the second chosen") << real << other << false << "1" << "" << "Sixty";
    QTest::newRow("two, cancelled") << real << other << false << "cancel" << "" << "";
    QTest::newRow("a key missing") << QByteArray(real).replace("Difficulty=3\r\n", "") << QByteArray() << false << "" << "Import from Game|Some values of the bot list in @file were missing or could not be read; the imported list has the default list's values in their place:\r\n\r\nDifficulty: missing" << "Gamer";
    QTest::newRow("no bot list") << QByteArray("[Engine.Engine]\r\nx=1\r\n") << QByteArray() << false << "" << "Import from Game|Can't find the [Botpack.ChallengeBotInfo] section in @file.  Nothing was imported." << "";
    QTest::newRow("no user.ini") << QByteArray() << QByteArray() << false << "" << "Import from Game|Can't find user.ini in the game folder @game.  Nothing was imported." << "";
    QTest::newRow("unsaved list kept") << real << QByteArray() << true << "" << saveQuestion << "";
    // clang-format on
}

// The game's list becomes an unnamed list, ready for Save As; anything
// that keeps it from being read leaves the editor as it was.
void TestGameRosterForms::import()
{
    QFETCH(QByteArray, system);
    QFETCH(QByteArray, system64);
    QFETCH(bool, unsaved);
    QFETCH(QString, choice);
    QFETCH(QString, messages);
    QFETCH(QString, imported);

    if (!system.isEmpty())
        QVERIFY(writeTestFile(userIni("System"), system));
    if (!system64.isEmpty())
        QVERIFY(writeTestFile(userIni("System64"), system64));
    if (unsaved) {
        form->mnuFileNew->trigger();
        form->txtName->setText("Edited");
    }
    const QString document = form->lblSaved->text() + "|" + form->lblCurrentFile->text();

    QStringList offered;
    QString preview;
    DialogScript script;
    if (!choice.isEmpty())
        script.then<dlgImport>([&](dlgImport &d) {
            for (int i = 0; i < d.lstFiles->count(); ++i)
                offered << d.lstFiles->item(i)->text();
            d.lstFiles->setCurrentRow(choice == "cancel" ? 1 : choice.toInt());
            preview = d.txtPreview->toPlainText();
            (choice == "cancel" ? d.CancelButton : d.cmdImport)->click();
        });
    form->mnuFileImport->trigger();

    QVERIFY2(script.playedOut(), qPrintable(script.seen.join(',')));
    const QString systemIni = QDir::toNativeSeparators(userIni("System"));
    QCOMPARE(m_prompt->transcript().join('\n'),
        QString(messages).replace("@file", systemIni).replace("@game", m_gameDir));
    if (!choice.isEmpty()) {
        QCOMPARE(
            offered, QStringList({ systemIni, QDir::toNativeSeparators(userIni("System64")) }));
        QVERIFY2(preview.startsWith("Sixty, Aryss, "), qPrintable(preview));
    }
    if (imported.isEmpty()) {
        QCOMPARE(form->lblSaved->text() + "|" + form->lblCurrentFile->text(), document);
        QCOMPARE(form->txtName->text(), unsaved ? "Edited" : "Archon");
        return;
    }
    QCOMPARE(Roster().BotNames[0], imported);
    QCOMPARE(form->txtName->text(), imported);
    QCOMPARE(form->grdBots->item(0, 1)->text(), imported);
    QVERIFY(Roster().Description.startsWith("Imported from "));
    QCOMPARE(form->lblSaved->text() + "|" + form->lblCurrentFile->text(), "Modified|(Un-Named)");
    QVERIFY(form->cmbBot->isEnabled());
    QVERIFY(form->mnuFileSave->isEnabled() && form->mnuFileSaveAs->isEnabled());
    QCOMPARE(form->History->count(), 0);
}

void TestGameRosterForms::restore_data()
{
    QTest::addColumn<int>("row"); // the backup chosen, newest first
    QTest::addColumn<QString>("target"); // the user.ini chosen; "" as the dialog proposes
    QTest::addColumn<bool>("gameRuns");
    QTest::addColumn<QString>("restored"); // "folder=first bot"; "" nothing restored

    QTest::newRow("the newest, of System64") << 0 << "" << false << "System64=Sixty4";
    QTest::newRow("the oldest, of System") << 1 << "" << false << "System=Oldie";
    QTest::newRow("into another user.ini") << 1 << "System64" << false << "System64=Oldie";
    QTest::newRow("game running, declined") << 0 << "" << true << "";
}

// Backups are listed newest first with their bots; the one chosen goes back
// into the user.ini it was made of, the list it replaces backed up first.
void TestGameRosterForms::restore()
{
    QFETCH(int, row);
    QFETCH(QString, target);
    QFETCH(bool, gameRuns);
    QFETCH(QString, restored);

    const QByteArray original = realUserIni("Archon");
    for (const char *folder : { "System", "System64" })
        QVERIFY(writeTestFile(userIni(folder), original));
    const QString configs = AppOptions().ConfigPath;
    QVERIFY(writeTestFile(configs + "curconfig_bkup_(1-2-2003-4-5-6).qvn2",
        crlf({ Header, "BotNames[0]=Oldie", "BotNames[1]=Older" })));
    QVERIFY(writeTestFile(configs + "curconfig_bkup_(3-7-2005-9-5-3)_System64.qvn2",
        crlf({ Header, "BotNames[0]=Sixty4" })));
    if (gameRuns)
        m_processes << "UnrealTournament.exe";

    QStringList listed;
    QString proposed;
    bool stayedOpen = false;
    DialogScript script;
    script.then<dlgRestore>([&](dlgRestore &d) {
        for (int i = 0; i < d.lstBackups->topLevelItemCount(); ++i) {
            const QTreeWidgetItem *item = d.lstBackups->topLevelItem(i);
            listed << QStringList { item->text(0), item->text(1), item->text(2) }.join('|');
        }
        d.lstBackups->setCurrentItem(d.lstBackups->topLevelItem(row));
        proposed = d.cmbTargets->currentText();
        if (!target.isEmpty())
            d.cmbTargets->setCurrentText(QDir::toNativeSeparators(userIni(target)));
        d.cmdRestore->click();
        stayedOpen = d.isVisible();
        if (stayedOpen)
            d.CancelButton->click();
    });
    form->mnuFileRestore->trigger();

    QVERIFY2(script.playedOut(), qPrintable(script.seen.join(',')));
    QCOMPARE(listed,
        QStringList({ "2005-03-07 09:05:03|Sixty4|curconfig_bkup_(3-7-2005-9-5-3)_System64.qvn2",
            "2003-01-02 04:05:06|Oldie, Older|curconfig_bkup_(1-2-2003-4-5-6).qvn2" }));
    QCOMPARE(proposed, QDir::toNativeSeparators(userIni(row == 0 ? "System64" : "System")));
    QCOMPARE(stayedOpen, restored.isEmpty());
    QCOMPARE(m_prompt->transcript(),
        QStringList { restored.isEmpty()
                ? "Unreal Tournament Is Running|Unreal Tournament is running. It rewrites "
                  "user.ini when it quits, so the bot list restored now will be overwritten "
                  "then.\r\n\r\nRestore the backup anyway?"
                : "Restore Backup...|Completed" });
    for (const char *folder : { "System", "System64" }) {
        const QByteArray now = readTestFile(userIni(folder));
        if (restored.section('=', 0, 0) != folder) {
            QCOMPARE(now, original);
            continue;
        }
        QVERIFY(now.contains(
            "\r\n" + Header + "\r\nBotNames[0]=" + restored.section('=', 1).toLatin1() + "\r\n"));
        QVERIFY(!now.contains("BotNames[0]=Archon"));
    }
    // The list it replaced was kept.
    QCOMPARE(QDir(configs).entryList({ "curconfig_bkup_*" }).size(), restored.isEmpty() ? 2 : 3);
}

QTEST_MAIN(TestGameRosterForms)
#include "test_gamerosterforms.moc"
