#include "configfiles/applyconfig.h"
#include "configfiles/configfile.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/restorebackup.h"
#include "gamefolder.h"
#include "scriptedprompt.h"
#include "startup/options.h"
#include "testfiles.h"

#include <QTest>

namespace {

const QString Header = "[Botpack.ChallengeBotInfo]";

} // namespace

class TestRestoreBackup : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        setProcessLister([] { return QStringList(); });
    }

    // Each backup of an apply to both user.ini files finds its own file and
    // puts it back byte for byte; the applied lists are backed up first.
    void undoesAnApply_data()
    {
        QTest::addColumn<QByteArray>("original");
        QTest::newRow("the game's own user.ini")
            << readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        QTest::newRow("section at the end") << crlf({ "[A]", "", Header, "BotNames[0]=Old" });
    }

    void undoesAnApply()
    {
        QFETCH(QByteArray, original);
        GameFolder game;
        const QStringList files { game.userIni(), game.userIni("System64") };
        for (const QString &file : files)
            QVERIFY(writeTestFile(file, original));
        BotRoster applied;
        SetDefaults(applied);
        applied.BotNames[0] = "Applied";
        QVERIFY(SaveConfigAs(game.config(), "c.qvn", true, applied));
        ScriptedPrompt prompt;
        QVERIFY(ApplyConfiguration("c.qvn", true));

        for (const BackupFile &backup : ListBackups()) {
            const QString source = BackupSource(backup, GameUserIniFiles(AppOptions().UTPath));
            QCOMPARE(source, files.at(backup.folder.isEmpty() ? 0 : 1));
            QVERIFY(RestoreBackup(backup.fileName, source));
            QCOMPARE(readTestFile(source), original);
        }
        QCOMPARE(prompt.transcript().last(), QString("Restore Backup...|Completed"));
        QStringList newest;
        for (const BackupFile &backup : ListBackups().first(2))
            newest << backup.folder + ' ' + backup.botNames.value(0);
        newest.sort();
        QCOMPARE(newest, QStringList({ " Applied", "System64 Applied" }));
    }

    // The empty line that ends the section stays when the game has written
    // the file since the apply.
    void keepsTheSectionApart()
    {
        GameFolder game;
        QVERIFY(writeTestFile(game.userIni(), crlf({ Header, "n=1", "", "[B]" })));
        QVERIFY(writeTestFile(game.config("old.qvn2"), crlf({ Header, "o=1" })));
        ScriptedPrompt prompt;
        QVERIFY(RestoreBackup("old.qvn2", game.userIni()));
        QCOMPARE(readTestFile(game.userIni()), crlf({ Header, "o=1", "", "[B]" }));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("backup");
        QTest::addColumn<bool>("gameRuns");
        QTest::addColumn<QString>("message");

        QTest::newRow("missing") << "gone.qvn2" << QByteArray() << false
                                 << "Missing File|Can't find gone.qvn2.  Operation Aborted.";
        QTest::newRow("more than a section")
            << "b.qvn2" << crlf({ Header, "x=1", "", "[B]" }) << false
            << "Invalid Backup|b.qvn2 is not a backup of a bot list: it holds more, or other, "
               "than one [Botpack.ChallengeBotInfo] section.  Operation Aborted.";
        QTest::newRow("game running, No")
            << "b.qvn2" << crlf({ Header, "x=1" }) << true
            << "Unreal Tournament Is Running|Unreal Tournament is running. It rewrites user.ini "
               "when it quits, so the bot list restored now will be overwritten then.\r\n\r\n"
               "Restore the backup anyway?";
    }

    void refusals()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, backup);
        QFETCH(bool, gameRuns);
        QFETCH(QString, message);
        if (gameRuns)
            setProcessLister([] { return QStringList { "ut-bin-amd64" }; });
        GameFolder game;
        const QByteArray original = crlf({ Header, "n=1" });
        QVERIFY(writeTestFile(game.userIni(), original));
        QVERIFY(backup.isEmpty() || writeTestFile(game.config(name), backup));
        ScriptedPrompt prompt;
        QVERIFY(!RestoreBackup(name, game.userIni()));
        QCOMPARE(prompt.transcript(), QStringList(message));
        QCOMPARE(readTestFile(game.userIni()), original);
        QCOMPARE(ListBackups().size(), 0);
    }

    void listsNewestFirst()
    {
        GameFolder game;
        QVERIFY(writeTestFile(game.config("curconfig_bkup_(3-7-2001-9-5-3).qvn2"),
            crlf({ Header, "BotNames[1]=Second", "BotNames[0]=First" })));
        for (const char *name : { "curconfig_bkup_(3-7-2001-9-5-3) (2).qvn2",
                 "curconfig_bkup_(12-31-2012-23-0-58)_System64.qvn2",
                 "curconfig_bkup_(1-2-2010-1-2-3).qvn2", "c.qvn" })
            QVERIFY(writeTestFile(game.config(name), crlf({ Header })));

        QStringList listed;
        for (const BackupFile &backup : ListBackups())
            listed << backup.fileName.mid(15) + ' ' + backup.time.toString(Qt::ISODate) + ' '
                    + backup.botNames.join(',');
        QCOMPARE(listed,
            QStringList({ "(12-31-2012-23-0-58)_System64.qvn2 2012-12-31T23:00:58 ",
                "(1-2-2010-1-2-3).qvn2 2010-01-02T01:02:03 ",
                "(3-7-2001-9-5-3) (2).qvn2 2001-03-07T09:05:03 ",
                "(3-7-2001-9-5-3).qvn2 2001-03-07T09:05:03 First,Second" }));
    }
};

QTEST_GUILESS_MAIN(TestRestoreBackup)
#include "test_restorebackup.moc"
