#include "childprocess.h"
#include "configfiles/applyconfig.h"
#include "configfiles/configname.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/textfile.h"
#include "gamefolder.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QRegularExpression>
#include <QStringEncoder>
#include <QTest>

namespace {

const QString Header = "[Botpack.ChallengeBotInfo]";

// A configuration whose section has `lineCount` lines, its header first;
// one of them has a Windows-1252 letter.
QByteArray configuration(int lineCount = 452, int valueLength = 1, bool withEmptyLine = true)
{
    QStringList lines { QString(80, '*'), "* c.qvn", "* Description:", "* Test", QString(80, '*') };
    if (withEmptyLine)
        lines.append(QString());
    lines << Header << QString::fromLatin1("BotNames[0]=Zo\xEB");
    for (int i = 2; i < lineCount; ++i)
        lines.append(QString("Key[%1]=").arg(i) + QString(valueLength, 'v'));
    return crlf(lines);
}

// What follows the header in user.ini after an apply: the configuration's
// key lines, empty ones up to 451, and an empty line of the apply's own.
QStringList appliedLines(int sectionLines = 452)
{
    QStringList lines { QString::fromLatin1("BotNames[0]=Zo\xEB") };
    for (int i = 2; i < sectionLines; ++i)
        lines.append(QString("Key[%1]=v").arg(i));
    while (lines.size() < 452)
        lines.append(QString());
    return lines;
}

// `lines` with "@new" standing for the applied lines.
QByteArray applied(const QStringList &lines, int sectionLines = 452)
{
    QStringList expanded;
    for (const QString &line : lines)
        expanded += line == "@new" ? appliedLines(sectionLines) : QStringList(line);
    return crlf(expanded);
}

// `lines` in one of the forms user.ini comes in: 0-2 ANSI with CR LF, LF
// or CR, 3 UTF-8, 4 UTF-8 with a BOM and LF, 5 UTF-16LE with a BOM.
QByteArray encoded(const QStringList &lines, int form)
{
    const QString newline = form == 2 ? "\r" : form == 1 || form == 4 ? "\n" : "\r\n";
    const QString text = lines.join(newline) + newline;
    if (form == 5)
        return "\xFF\xFE" + QByteArray(QStringEncoder(QStringConverter::Utf16LE).encode(text));
    return form < 3 ? text.toLatin1() : (form == 4 ? "\xEF\xBB\xBF" : "") + text.toUtf8();
}

const QString Completed = "Apply Configuration...|Completed";
const QString RunningQuestion = "Unreal Tournament Is Running|Unreal Tournament is running. It "
                                "rewrites user.ini when it quits, so the bot list applied now "
                                "will be overwritten then.\r\n\r\nApply the configuration "
                                "anyway?";

QString notAFileName(const QString &name, const QString &reason)
{
    return '"' + name + "\" is not a file name in the configuration folder: " + reason
        + ". Type a bare name such as Bots.qvn.";
}

// Takes every name the backups of an apply starting now could get.
bool blockBackups(const GameFolder &game, const QString &folder = QString())
{
    const QDateTime now = QDateTime::currentDateTime();
    for (int s = -1; s < 30; ++s) {
        if (!QFile::link(
                game.root() + "gone/x", game.config(BackupFileName(now.addSecs(s), folder))))
            return false;
    }
    return true;
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

    void cleanup() { setProcessLister({}); }

    void backupFileName()
    {
        const QDateTime march(QDate(2001, 3, 7), QTime(9, 5, 3));
        QCOMPARE(QStringList({ BackupFileName(march), BackupFileName(march, "System64"),
                     BackupFileName(QDateTime(QDate(2012, 12, 31), QTime(23, 0, 58))) }),
            QStringList({ "curconfig_bkup_(3-7-2001-9-5-3).qvn2",
                "curconfig_bkup_(3-7-2001-9-5-3)_System64.qvn2",
                "curconfig_bkup_(12-31-2012-23-0-58).qvn2" }));
    }

    // The game's own file, in both folders of the patched game: everything
    // outside the old section stays byte for byte, the old section goes to
    // one backup per file. Two applies within a second would share the
    // backup name: an earlier backup is kept and the new one numbered. The
    // game runs, and the player goes on.
    void realUserIni()
    {
        GameFolder game;
        const QByteArray original = readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        QVERIFY(writeTestFile(game.userIni(), original));
        QVERIFY(writeTestFile(game.userIni("System64"), original));
        // The working copy of an apply that crashed: a second name of
        // user.ini, which must not make it look hard-linked by the player.
        QVERIFY(addHardLink(game.userIni(), game.root() + "UT/System/dummy.ini"));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration()));
        const QDateTime now = QDateTime::currentDateTime();
        for (int s = -1; s < 30; ++s)
            QVERIFY(writeTestFile(game.config(BackupFileName(now.addSecs(s))), "earlier"));
        setProcessLister([] { return QStringList { "bash", "ut-bin-amd64" }; });
        ScriptedPrompt prompt;
        prompt.answerNext(MessageAnswer::Yes);
        QStringList shown; // whether System holds a working copy as each message is shown
        prompt.whileAsking = [&] { shown << game.filesIn("System").filter("dummy").join(','); };
        QVERIFY(ApplyConfiguration("c.qvn", true));

        const qsizetype start = original.indexOf(Header.toLatin1() + "\r\n");
        const qsizetype oldEnd = original.indexOf("\r\n\r\n", start) + 2;
        const QByteArray expected
            = original.left(start) + applied({ Header, "@new" }) + original.mid(oldEnd);
        QCOMPARE(readTestFile(game.userIni()), expected);
        QCOMPARE(readTestFile(game.userIni("System64")), expected);
        QCOMPARE(prompt.transcript(), QStringList({ RunningQuestion, Completed }));
        QCOMPARE(prompt.messages().first().buttons, MessageButtons::YesNo);
        // The working copy is gone before the user is told.
        QCOMPARE(shown, QStringList({ "dummy.ini", "" }));
        QCOMPARE(game.filesIn("System") + game.filesIn("System64"),
            QStringList({ "User.ini", "User.ini" }));
        QStringList added;
        for (const QString &name : game.backups()) {
            if (readTestFile(game.config(name)) != "earlier")
                added.append(name);
        }
        QCOMPARE(added.size(), 2);
        QVERIFY2(added.at(0).endsWith(") (2).qvn2"), qPrintable(added.at(0)));
        QCOMPARE(added.at(1), QString(added.at(0)).replace(") (2).qvn2", ")_System64.qvn2"));
        for (const QString &name : added)
            QCOMPARE(readTestFile(game.config(name)), original.mid(start, oldEnd - start));
    }

    // Where the section is found, what stays around it, and the file's own
    // encoding and line ends. The game runs, but the caller has asked.
    void replacesTheSection_data()
    {
        QTest::addColumn<QByteArray>("userIni");
        QTest::addColumn<int>("sectionLines"); // of the configuration
        QTest::addColumn<QByteArray>("expected");
        QTest::addColumn<QByteArray>("backup"); // empty: none asked for

        // Over 256 bytes, with a letter beyond ASCII early and late.
        const QStringList before { "[Engine.Engine]", QString::fromUtf8("Name=Zoë"),
            "Pad=" + QString(300, 'x'), "" };
        const QStringList after { "", "[Botpack.EndStats]", QString::fromUtf8("Zoë=1") };
        const QStringList old { Header, QString::fromUtf8("BotNames[0]=Zoë"), "Difficulty=1" };
        const char *forms[] = { "ansi, CR LF", "ansi, LF only", "ansi, CR only",
            "utf-8 without bom", "utf-8 with bom, LF only", "utf-16le with bom" };
        for (int form = 0; form < 6; ++form)
            QTest::newRow(forms[form])
                << encoded(before + old + after, form) << 452
                << encoded(before + QStringList(Header) + appliedLines() + after, form)
                << crlf(old);
        for (const int form : { 4, 5 })
            QTest::newRow(QByteArray(forms[form]) + ", section first")
                << encoded({ Header, "x=1", "", "[B]" }, form) << 452
                << encoded(QStringList(Header) + appliedLines() + QStringList { "", "[B]" }, form)
                << crlf({ Header, "x=1" });

        const auto row = [](const char *name, const QByteArray &userIni,
                             const QStringList &expected, int sectionLines = 452) {
            QTest::newRow(name) << userIni << sectionLines << applied(expected, sectionLines)
                                << QByteArray();
        };
        row("capitals and trailing spaces kept",
            crlf({ "[A]", "", "[BotPack.CHALLENGEBotInfo]  ", "x=1", "", "[B]" }),
            { "[A]", "", "[BotPack.CHALLENGEBotInfo]  ", "@new", "", "[B]" });
        row("leading space is another section: appended", crlf({ " " + Header, "x=1" }),
            { " " + Header, "x=1", Header, "@new" });
        row("the header within a line is none: appended",
            crlf({ "x=" + Header, "[Botpack.ChallengeBotInfoX]" }),
            { "x=" + Header, "[Botpack.ChallengeBotInfoX]", Header, "@new" });
        row("header after a line ended by a CR alone",
            "[A]\r\n[B]\r[Botpack.ChallengeBotInfo]\r\nx=1", { "[A]", "[B]\r" + Header, "@new" });
        row("no section, no final line ending", "[A]\r\nb=1", { "[A]", "b=1", Header, "@new" });
        row("section at the end", crlf({ "[A]", "", Header, "x=1" }),
            { "[A]", "", Header, "@new" });
        row("section at the end, no final line ending", "[A]\r\n[Botpack.ChallengeBotInfo]\r\nx=1",
            { "[A]", Header, "@new" });
        row("header on the last line", "[A]\r\n[Botpack.ChallengeBotInfo]",
            { "[A]", Header, "@new" });
        row("only the first section replaced",
            crlf({ Header, "x=1", "", "[botpack.challengebotinfo]", "y=2" }),
            { Header, "@new", "", "[botpack.challengebotinfo]", "y=2" });
        row("short section filled with empty lines", crlf({ Header, "x=1" }), { Header, "@new" },
            3);
    }

    void replacesTheSection()
    {
        QFETCH(QByteArray, userIni);
        QFETCH(int, sectionLines);
        QFETCH(QByteArray, expected);
        QFETCH(QByteArray, backup);
        GameFolder game;
        QVERIFY(writeTestFile(game.userIni(), userIni));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(sectionLines)));
        setProcessLister([] { return QStringList { "ut-bin" }; });
        ScriptedPrompt prompt;
        QVERIFY(ApplyConfiguration("c.qvn", !backup.isEmpty(), { game.userIni() }, false));
        QCOMPARE(prompt.transcript(), QStringList(Completed));
        QCOMPARE(readTestFile(game.userIni()), expected);
        // The backup is ANSI whatever user.ini's own encoding.
        const QStringList backups = game.backups();
        QCOMPARE(backups.size(), backup.isEmpty() ? 0 : 1);
        QCOMPARE(readTestFile(game.config(backups.value(0))), backup);
    }

    // Nothing changes when an apply is refused or a fault is found before
    // anything is written; a fault while writing the second of two files
    // leaves the first changed and says so. Only the backup of a changed
    // user.ini stays.
    void refusals_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("config");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QStringList>("targets");
        QTest::addColumn<QString>("message"); // "title|...end" where only the end is known

        const QString missing = "Missing File|Can't find gone.qvn.  Operation Aborted.";
        const QString invalid = "Invalid Configuration|c.qvn is not a configuration that can be "
                                "applied: ";
        const QString failed = "Apply Configuration Failed|";
        const QString unchanged = "\r\n\r\nuser.ini was not changed.  Operation Aborted.";
        const QString none = "None of the user.ini files was changed.  Operation Aborted.";
        const QStringList both { "System", "System64" };
        const auto row
            = [](const char *tag, const QString &name, const QString &fault, const QString &message,
                  const QByteArray &config = {}, const QStringList &targets = { "System" }) {
                  QTest::newRow(tag) << name << config << fault << targets << message;
              };
        row("missing configuration", "gone.qvn", "", missing);
        row("nothing chosen", "", "", "Missing File|Can't find .  Operation Aborted.");
        row("directory part", "../c.qvn", "",
            "Invalid File Name|" + notAFileName("../c.qvn", "it has a directory part"));
        row("name checked before user.ini", "aux.qvn", "missing user.ini",
            "Invalid File Name|"
                + notAFileName("aux.qvn", "AUX is a name Windows keeps for a device"));
        row("missing user.ini", "c.qvn", "missing user.ini",
            "User.ini File Missing|Can't find user.ini.  Operation Aborted");
        row("no empty line", "c.qvn", "",
            invalid + "it has no empty line before its " + Header + " section.  Operation Aborted.",
            configuration(452, 1, false));
        row("453 section lines", "c.qvn", "",
            invalid + "its section has more than 452 lines.  Operation Aborted.",
            configuration(453));
        row("read-only user.ini", "c.qvn", "read-only",
            failed + "User.ini is read-only: @ini" + unchanged);
        row("user.ini being changed", "c.qvn", "locked",
            failed + "User.ini is being changed by another Quorvane window or command: @ini"
                + unchanged);
        row("backup cannot be written", "c.qvn", "no backup",
            "Backup Failed|Can't write the backup of the current configuration.\r\n\r\nFile not "
            "found: @backup (No such file or directory)"
                + unchanged);
        row("game running, No", "c.qvn", "game running", RunningQuestion);
        row("game running, configuration missing", "gone.qvn", "game running", missing);
#ifdef Q_OS_UNIX
        row("one user.ini, disk full", "c.qvn", "disk full",
            failed + "...user.ini was not changed.  Operation Aborted.", {}, { "System64" });
        row("second user.ini cannot be copied", "c.qvn", "no working copy", failed + "..." + none,
            {}, both);
        row("second backup cannot be written", "c.qvn", "no backup", "Backup Failed|..." + none, {},
            both);
        row("second write fails", "c.qvn", "disk full",
            "Apply Configuration Incomplete|...These user.ini files were changed:\r\n@ini\r\n\r\n"
            "These user.ini files were not changed:\r\n@big",
            {}, both);
        row("second write fails, the first had no section", "c.qvn", "disk full, no section",
            "Apply Configuration Incomplete|...These user.ini files were changed:\r\n@ini\r\n\r\n"
            "These user.ini files were not changed:\r\n@big",
            {}, both);
#endif
    }

    void refusals()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, config);
        QFETCH(QString, fault);
        QFETCH(QStringList, targets);
        QFETCH(QString, message);
        GameFolder game;
        const bool smallHasSection = fault != "disk full, no section";
        const QByteArray small
            = smallHasSection ? crlf({ Header, "x=1", "", "[B]" }) : crlf({ "[B]" });
        QVERIFY(fault == "missing user.ini" || writeTestFile(game.userIni(), small));
        // Larger than the small file will be, smaller than it will be itself.
        QByteArray big = readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        big += "\r\n[Padding]\r\n" + QByteArray(25000 - big.size(), 'p') + "\r\n";
        QVERIFY(writeTestFile(game.userIni("System64"), big));
        if (!name.isEmpty() && name != "gone.qvn")
            QVERIFY(writeTestFile(
                game.config(name), config.isEmpty() ? configuration(452, 40) : config));
        QVERIFY(fault != "read-only" || QFile::setPermissions(game.userIni(), QFile::ReadOwner));
        QLockFile lock(game.userIni() + ".lock");
        QVERIFY(fault != "locked" || lock.lock());
        QVERIFY(fault != "no backup" || blockBackups(game, targets.size() > 1 ? "System64" : ""));
        QVERIFY(fault != "no working copy" || QDir().mkpath(game.root() + "UT/System64/dummy.ini"));
        if (fault == "game running")
            setProcessLister([] { return QStringList { "bash", "ut-bin-amd64" }; });
        QStringList userInis;
        for (const QString &folder : targets)
            userInis.append(game.userIni(folder));

        // A full disk is a file size limit on a child process, which hands
        // the transcript back in a file.
        const QString transcriptFile = game.root() + "transcript.txt";
        const auto apply = [&] {
            ScriptedPrompt prompt;
            const bool applied = ApplyConfiguration(name, true, userInis);
            const QByteArray transcript = prompt.transcript().join('\n').toUtf8();
            return writeTestFile(transcriptFile, transcript) && !applied ? 0 : 1;
        };
        QCOMPARE(
            fault.startsWith("disk full") ? runWithFileSizeLimit(big.size(), apply) : apply(), 0);
        lock.unlock();

        const QRegularExpression backup(
            QRegularExpression::escape(game.config()) + R"(curconfig_bkup_\(.*\)\.qvn2)");
        const QString transcript = QString::fromUtf8(readTestFile(transcriptFile))
                                       .replace(backup, "@backup")
                                       .replace(game.userIni("System64"), "@big")
                                       .replace(game.userIni(), "@ini");
        const qsizetype cut = message.indexOf("...");
        if (cut < 0)
            QCOMPARE(transcript, message);
        else
            QVERIFY2(transcript.startsWith(message.left(cut)) && transcript.count('|') == 1
                    && transcript.endsWith(message.mid(cut + 3)),
                qPrintable(transcript));
        const bool smallChanged = message.contains("were changed");
        const bool hasSmall = fault != "missing user.ini";
        QCOMPARE(game.filesIn("System"), hasSmall ? QStringList("User.ini") : QStringList());
        QCOMPARE(readTestFile(game.userIni()) == small, hasSmall && !smallChanged);
        QCOMPARE(readTestFile(game.userIni("System64")), big);
        QCOMPARE(QDir(game.config()).entryList({ "*.qvn2" }, QDir::Files).size(),
            smallChanged && smallHasSection ? 1 : 0);
    }

    void configNameProblem_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("problem");

        for (const char *name : { "Bots.qvn", "My Bots.v2.qvn", ".qvn", "CONSOLE.qvn", "COM10.qvn",
                 "nul2.qvn", "Zoë.qvn" })
            QTest::newRow(name) << QString::fromUtf8(name) << "";
        QTest::newRow("empty") << ""
                               << "The file name is empty. Type a bare name such as Bots.qvn.";
        const QString folder = "it names a folder", directory = "it has a directory part";
        const QString space = "it ends with a space, which Windows drops";
        const QString dot = "it ends with a dot, which Windows drops";
        QList<QPair<QString, QString>> refused { { ".", folder }, { "..", folder },
            { "../x.qvn", directory }, { "sub\\x.qvn", directory }, { "x.qvn/", directory },
            { "Bots.qvn ", space }, { "Bots.", dot }, { "...", dot } };
        for (const QChar c : QString("<>:\"|?*"))
            refused.append({ "a" + QString(c) + "b.qvn",
                "it holds a character Windows does not allow in file names (< > : \" | ? *)" });
        for (const QString name : { "a\tb.qvn", "a\nb.qvn", "a\x7F.qvn" })
            refused.append({ name, "it holds a control character, such as a tab or a line break" });
        const QList<QPair<QString, QString>> devices { { "CON", "CON" }, { "con.qvn", "CON" },
            { "Nul .qvn", "NUL" }, { "prn.tar.gz", "PRN" }, { "aux", "AUX" },
            { "COM1.qvn", "COM1" }, { "lpt9", "LPT9" }, { "COM\u00B9.qvn", "COM\u00B9" } };
        for (const auto &[name, device] : devices)
            refused.append({ name, device + " is a name Windows keeps for a device" });
        for (const auto &[name, reason] : refused)
            QTest::newRow(qPrintable(name)) << name << notAFileName(name, reason);
    }

    void configNameProblem()
    {
        QFETCH(QString, name);
        QFETCH(QString, problem);
        QCOMPARE(ConfigNameProblem(name), problem);
    }

private:
    QTemporaryDir m_home;
};

QTEST_GUILESS_MAIN(TestApplyConfig)
#include "test_applyconfig.moc"
