#include "childprocess.h"
#include "configfiles/applyconfig.h"
#include "configfiles/configname.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/restorebackup.h"
#include "configfiles/textfile.h"
#include "gamefolder.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QRegularExpression>
#include <QTest>

namespace {

const QString Header = "[Botpack.ChallengeBotInfo]";

// A configuration whose section has `lineCount` lines, its header first;
// one of them has a Windows-1252 letter.
QByteArray configuration(int lineCount = 3, int valueLength = 1, bool withEmptyLine = true)
{
    QStringList lines { QString(80, '*'), "* c.qvn", "* Description:", "* Test", QString(80, '*') };
    if (withEmptyLine)
        lines.append(QString());
    lines << Header << QString::fromLatin1("BotNames[0]=Zo\xEB");
    for (int i = 2; i < lineCount; ++i)
        lines.append(QString("Key[%1]=").arg(i) + QString(valueLength, 'v'));
    return crlf(lines);
}

const QString RunningApply = "Unreal Tournament Is Running|Unreal Tournament is running. It "
                             "rewrites user.ini when it quits, so the bot list applied now will be "
                             "overwritten then.\r\n\r\nApply the configuration anyway?";

void setGameRunning(bool runs)
{
    setProcessLister([runs] {
        return runs ? QStringList { "bash", "ut-bin-amd64" } : QStringList();
    });
}

} // namespace

class TestApplyConfig : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Neither the tester's own game nor its home folder takes part.
        QVERIFY(m_home.isValid());
        qputenv("HOME", QFile::encodeName(m_home.path()));
    }

    void init() { setGameRunning(false); }

    // The game's own file, and one whose section ends it, in both folders of
    // the patched game: everything outside the old section stays byte for
    // byte, the old section goes to one backup per file, and each backup
    // restores its own file. Two applies within a second would share the
    // backup name: an earlier backup is kept and the new one numbered. The
    // game runs, and the player goes on.
    void appliesAndRestores_data()
    {
        QTest::addColumn<QByteArray>("original");
        QTest::newRow("the game's own user.ini")
            << readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        QTest::newRow("section at the end") << crlf({ "[A]", "", Header, "BotNames[0]=Old" });
    }

    void appliesAndRestores()
    {
        QFETCH(QByteArray, original);
        GameFolder game;
        QVERIFY(writeTestFile(game.userIni(), original));
        QVERIFY(writeTestFile(game.userIni("System64"), original));
        // The working copy of an apply that crashed: a second name of
        // user.ini, which must not make it look hard-linked by the player.
        QVERIFY(addHardLink(game.userIni(), game.root() + "UT/System/dummy.ini"));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(452)));
        const QDateTime now = QDateTime::currentDateTime();
        for (int s = -1; s < 30; ++s)
            QVERIFY(writeTestFile(game.config(BackupFileName(now.addSecs(s))), "earlier"));
        setGameRunning(true);
        ScriptedPrompt prompt;
        prompt.answerNext(MessageAnswer::Yes);
        QStringList shown; // whether System holds a working copy as each message is shown
        prompt.whileAsking = [&] { shown << game.filesIn("System").filter("dummy").join(','); };
        QVERIFY(ApplyConfiguration("c.qvn", true));

        const qsizetype start = original.indexOf(Header.toLatin1() + "\r\n");
        const qsizetype end = original.indexOf("\r\n\r\n", start);
        const qsizetype oldEnd = end < 0 ? original.size() : end + 2;
        // The configuration's section, and an empty line of the apply's own.
        const QByteArray config = configuration(452);
        const QByteArray expected = original.left(start)
            + config.mid(config.indexOf(Header.toLatin1())) + "\r\n" + original.mid(oldEnd);
        QCOMPARE(readTestFile(game.userIni()), expected);
        QCOMPARE(readTestFile(game.userIni("System64")), expected);
        QList<BackupFile> added = ListBackups(); // the earlier ones hold no bots
        added.removeIf([](const BackupFile &backup) { return backup.botNames.isEmpty(); });
        QCOMPARE(added.size(), 2);
        QVERIFY(added.at(0).fileName.endsWith(") (2).qvn2"));
        QCOMPARE(added.at(1).fileName,
            QString(added.at(0).fileName).replace(") (2).qvn2", ")_System64.qvn2"));
        setGameRunning(false);
        for (const BackupFile &backup : added) {
            QCOMPARE(
                readTestFile(game.config(backup.fileName)), original.mid(start, oldEnd - start));
            const QString source = BackupSource(backup, GameUserIniFiles(AppOptions().UTPath));
            QCOMPARE(source, game.userIni(backup.folder.isEmpty() ? "System" : "System64"));
            QVERIFY(RestoreBackup(backup.fileName, source));
            QCOMPARE(readTestFile(source), original);
        }
        const QString restored = "Restore Backup...|Completed";
        QCOMPARE(prompt.transcript(),
            QStringList({ RunningApply, "Apply Configuration...|Completed", restored, restored }));
        QCOMPARE(prompt.messages().first().buttons, MessageButtons::YesNo);
        // The working copy is gone before the user is told.
        QCOMPARE(shown, QStringList({ "dummy.ini", "", "", "" }));
        QCOMPARE(game.filesIn("System") + game.filesIn("System64"),
            QStringList({ "User.ini", "User.ini" }));
    }

    // Where the section is found, what stays around it, and the file's own
    // encoding and line ends: sections/<case>.ini with c.qvn applied is
    // <case>.expected.ini; where <case>.restore.qvn2 exists, that backup is
    // restored instead (the empty line that ends the section stays when the
    // game has rewritten the file since the apply). A backup is asked for
    // where <case>.backup.qvn2 holds what it must be: ANSI whatever
    // user.ini's own encoding. The file is named twice and changed once.
    void replacesTheSection_data()
    {
        QTest::addColumn<QString>("path"); // without ".ini"
        const QDir dir(testDataDir() + "config/sections", "*.expected.ini");
        QVERIFY(dir.count() > 0);
        for (const QString &name : dir.entryList())
            QTest::newRow(qPrintable(name.chopped(13))) << dir.filePath(name.chopped(13));
    }

    void replacesTheSection()
    {
        QFETCH(QString, path);
        const QByteArray backup = readTestFile(path + ".backup.qvn2");
        const QByteArray restored = readTestFile(path + ".restore.qvn2");
        GameFolder game;
        QVERIFY(writeTestFile(game.userIni(), readTestFile(path + ".ini")));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration()));
        QVERIFY(writeTestFile(game.config("r.qvn2"), restored));
        setGameRunning(true);
        ScriptedPrompt prompt;
        const bool apply = restored.isEmpty();
        QVERIFY(apply ? ApplyConfiguration(
                    "c.qvn", !backup.isEmpty(), { game.userIni(), game.userIni() }, false)
                      : RestoreBackup("r.qvn2", game.userIni(), false));
        QCOMPARE(prompt.transcript(),
            QStringList(
                apply ? "Apply Configuration...|Completed" : "Restore Backup...|Completed"));
        QCOMPARE(byteDifference(readTestFile(game.userIni()), readTestFile(path + ".expected.ini")),
            QString());
        QCOMPARE(game.backups().size(), backup.isEmpty() ? 0 : 1);
        QCOMPARE(readTestFile(game.config(game.backups().value(0))), backup);
    }

    // Nothing changes when an apply or restore is refused or a fault is found
    // before anything is written; a fault while writing the second of two
    // files leaves the first changed and says so. Only the backup of a
    // changed user.ini stays. A name ending in .qvn2 is restored.
    void refusals_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("config");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QStringList>("targets");

        const QStringList both { "System", "System64" };
        const auto row
            = [](const char *tag, const QString &name, const QString &fault,
                  const QByteArray &config = {}, const QStringList &targets = { "System" }) {
                  QTest::newRow(tag) << name << config << fault << targets;
              };
        row("missing configuration", "gone.qvn", "");
        row("nothing chosen", "", "");
        row("name checked before user.ini", "../c.qvn", "missing user.ini");
        row("missing user.ini", "c.qvn", "missing user.ini");
        row("no empty line", "c.qvn", "", configuration(452, 1, false));
        row("453 section lines", "c.qvn", "", configuration(453));
        row("read-only user.ini", "c.qvn", "read-only");
        row("user.ini being changed", "c.qvn", "locked");
        row("backup cannot be written", "c.qvn", "no backup");
        row("game running, No", "c.qvn", "game running");
        row("game running, configuration missing", "gone.qvn", "game running");
        row("restore a missing backup", "gone.qvn2", "");
        row("restore more than a section", "b.qvn2", "", crlf({ Header, "x=1", "", "[B]" }));
        row("restore while the game runs, No", "b.qvn2", "game running", crlf({ Header, "x=1" }));
#ifdef Q_OS_UNIX
        row("one user.ini, disk full", "c.qvn", "disk full", {}, { "System64" });
        row("second user.ini cannot be copied", "c.qvn", "no working copy", {}, both);
        row("second backup cannot be written", "c.qvn", "no backup", {}, both);
        row("second write fails", "c.qvn", "disk full", {}, both);
        row("second write fails, the first had no section", "c.qvn", "disk full, no section", {},
            both);
#endif
    }

    void refusals()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, config);
        QFETCH(QString, fault);
        QFETCH(QStringList, targets);
        GameFolder game;
        const bool smallHasSection = fault != "disk full, no section";
        const QByteArray small
            = smallHasSection ? crlf({ Header, "x=1", "", "[B]" }) : crlf({ "[B]" });
        QVERIFY(fault == "missing user.ini" || writeTestFile(game.userIni(), small));
        // Larger than the small file will be, smaller than it will be itself.
        QByteArray big = readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        big += "\r\n[Padding]\r\n" + QByteArray(25000 - big.size(), 'p') + "\r\n";
        QVERIFY(writeTestFile(game.userIni("System64"), big));
        if (!name.isEmpty() && !name.startsWith("gone"))
            QVERIFY(writeTestFile(
                game.config(name), config.isEmpty() ? configuration(452, 40) : config));
        QVERIFY(fault != "read-only" || QFile::setPermissions(game.userIni(), QFile::ReadOwner));
        QLockFile lock(game.userIni() + ".lock");
        QVERIFY(fault != "locked" || lock.lock());
        // Every name the backups of an apply starting now could get is taken.
        const QDateTime now = QDateTime::currentDateTime();
        for (int s = -1; fault == "no backup" && s < 30; ++s)
            QVERIFY(QFile::link(game.root() + "gone/x",
                game.config(BackupFileName(now.addSecs(s), targets.size() > 1 ? "System64" : ""))));
        QVERIFY(fault != "no working copy" || QDir().mkpath(game.root() + "UT/System64/dummy.ini"));
        setGameRunning(fault == "game running");
        QStringList userInis;
        for (const QString &folder : targets)
            userInis.append(game.userIni(folder));

        // A full disk is a file size limit on a child process, which hands
        // the transcript back in a file.
        const QString transcriptFile = game.root() + "transcript.txt";
        const auto apply = [&] {
            ScriptedPrompt prompt;
            const bool changed = name.endsWith(".qvn2") ? RestoreBackup(name, userInis.at(0))
                                                        : ApplyConfiguration(name, true, userInis);
            const QByteArray transcript = prompt.transcript().join('\n').toUtf8();
            return writeTestFile(transcriptFile, transcript) && !changed ? 0 : 1;
        };
        QCOMPARE(
            fault.startsWith("disk full") ? runWithFileSizeLimit(big.size(), apply) : apply(), 0);
        lock.unlock();

        const QRegularExpression backup(
            QRegularExpression::escape(game.config()) + R"(curconfig_bkup_\([^)]*\)\w*\.qvn2)");
        const QString transcript = QString::fromUtf8(readTestFile(transcriptFile))
                                       .replace(backup, "@backup")
                                       .replace(game.userIni("System64"), "@big")
                                       .replace(game.userIni(), "@ini")
                                       .replace(game.root(), "@");
        m_said << expectedLine(QTest::currentDataTag(), transcript);
        const bool smallChanged = transcript.contains("were changed");
        const bool hasSmall = fault != "missing user.ini";
        QCOMPARE(game.filesIn("System"), hasSmall ? QStringList("User.ini") : QStringList());
        QCOMPARE(readTestFile(game.userIni()) == small, hasSmall && !smallChanged);
        QCOMPARE(readTestFile(game.userIni("System64")), big);
        QCOMPARE(game.backups().size(), smallChanged && smallHasSection ? 1 : 0);
    }
    // The messages of the refusals above, and the problems found in names
    // typed for a configuration, word for word.
    void messages()
    {
        for (const QString name :
            { "My Bots.v2.qvn", ".qvn", "CONSOLE.qvn", "COM10.qvn", "nul2.qvn", ".", "..",
                "sub\\x.qvn", "x.qvn/", "a|b.qvn", "a\tb.qvn", "Bots.qvn ", "...", "con.qvn",
                "Nul .qvn", "prn.tar.gz", "aux", "COM1.qvn", "lpt9", "COM¹.qvn", "" })
            m_said << expectedLine(name, ConfigNameProblem(name));
        QCOMPARE(m_said, expectedLines("config/messages.txt", m_said));
    }

private:
    QTemporaryDir m_home;
    QStringList m_said; // the lines messages() compares
};

QTEST_GUILESS_MAIN(TestApplyConfig)
#include "test_applyconfig.moc"
