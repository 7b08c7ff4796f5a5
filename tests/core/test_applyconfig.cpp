#include "childprocess.h"
#include "configfiles/applyconfig.h"
#include "configfiles/configname.h"
#include "configfiles/fileops.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/textfile.h"
#include "scriptedprompt.h"
#include "startup/options.h"
#include "testfiles.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

namespace {

const QByteArray Header("[Botpack.ChallengeBotInfo]");

// The section of a configuration: its header and 451 key lines, one of
// them with a Windows-1252 letter.
QList<QByteArray> configSection(int lineCount = 452, int valueLength = 1)
{
    QList<QByteArray> lines { Header, "BotNames[0]=Zo\xEB" };
    while (lines.size() < lineCount)
        lines.append(
            "Key[" + QByteArray::number(lines.size()) + "]=" + QByteArray(valueLength, 'v'));
    return lines;
}

QByteArray configuration(const QList<QByteArray> &section, bool withEmptyLine = true)
{
    QList<QByteArray> lines { QByteArray(80, '*'), "* c.qvn", "* Description:", "* Test",
        QByteArray(80, '*') };
    if (withEmptyLine)
        lines.append(QByteArray());
    return lines.join("\r\n") + "\r\n" + section.join("\r\n") + "\r\n";
}

// What the applied section turns into inside user.ini, as text: the
// configuration's key lines and the empty line that follows them.
QStringList appliedLines()
{
    QStringList lines;
    for (const QByteArray &line : configSection().mid(1))
        lines.append(QString::fromLatin1(line));
    lines.append(QString());
    return lines;
}

// "@new" stands for the applied lines.
QStringList expand(const QStringList &lines)
{
    QStringList expanded;
    for (const QString &line : lines) {
        if (line == "@new")
            expanded += appliedLines();
        else
            expanded.append(line);
    }
    return expanded;
}

enum class Form { AnsiCrLf, AnsiLf, AnsiCr, Utf8CrLf, Utf8BomLf, Utf16Bom };

QByteArray encoded(const QStringList &lines, Form form, bool finalEnding = true)
{
    const bool lf = form == Form::AnsiLf || form == Form::Utf8BomLf;
    const QString newline = form == Form::AnsiCr ? "\r" : lf ? "\n" : "\r\n";
    QString text = lines.join(newline);
    if (finalEnding)
        text += newline;
    switch (form) {
    case Form::AnsiCrLf:
    case Form::AnsiLf:
    case Form::AnsiCr:
        return text.toLatin1();
    case Form::Utf8CrLf:
        return text.toUtf8();
    case Form::Utf8BomLf:
        return "\xEF\xBB\xBF" + text.toUtf8();
    case Form::Utf16Bom: {
        QStringEncoder encoder(QStringConverter::Utf16LE);
        return "\xFF\xFE" + QByteArray(encoder.encode(text));
    }
    }
    return {};
}

class GameFixture
{
public:
    GameFixture()
    {
        AppOptions().UTPath = root() + "UT" + QDir::separator();
        AppOptions().ConfigPath = root() + "Configs" + QDir::separator();
        QDir().mkpath(AppOptions().UTPath + "System");
        QDir().mkpath(AppOptions().ConfigPath);
    }

    QString root() const { return AddBackslash(QDir::toNativeSeparators(m_dir.path())); }
    QString system() const { return AppOptions().UTPath + "System" + QDir::separator(); }
    QString system64() const { return AppOptions().UTPath + "System64" + QDir::separator(); }
    QString userIni() const { return system() + "User.ini"; }
    QString userIni64() const { return system64() + "User.ini"; }
    QString config(const QString &name) const { return AppOptions().ConfigPath + name; }
    QStringList systemFiles() const { return QDir(system()).entryList(QDir::Files); }
    QStringList configFiles() const { return QDir(AppOptions().ConfigPath).entryList(QDir::Files); }
    QStringList backups() const
    {
        QStringList names = configFiles().filter("curconfig_bkup_(");
        names.sort();
        return names;
    }

private:
    QTemporaryDir m_dir;
};

// The time in the name of the backups made by an apply that ran from
// `before` to `after`; invalid when there is none.
QDateTime backupTime(const QDateTime &before, const QDateTime &after)
{
    for (QDateTime t = before.addMSecs(-before.time().msec()); t <= after; t = t.addSecs(1)) {
        if (QFile::exists(AppOptions().ConfigPath + BackupFileName(t)))
            return t;
    }
    return {};
}

const QString RunningQuestion = "Unreal Tournament Is Running|Unreal Tournament is running. It "
                                "rewrites user.ini when it quits, so the bot list applied now "
                                "will be overwritten then.\r\n\r\nApply the configuration "
                                "anyway?";
const QString Completed = "Apply Configuration...|Completed";

QString notAFileName(const QString &name, const QString &reason)
{
    return '"' + name + "\" is not a file name in the configuration folder: " + reason
        + ". Type a bare name such as Bots.qvn.";
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
        cleanup();
    }

    void cleanup()
    {
        setProcessLister([] { return QStringList(); });
    }

    void backupFileName_data()
    {
        QTest::addColumn<QDateTime>("time");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("expected");
        QTest::newRow("no leading zeros") << QDateTime(QDate(2001, 3, 7), QTime(9, 5, 3)) << ""
                                          << "curconfig_bkup_(3-7-2001-9-5-3).qvn2";
        QTest::newRow("two digits, 24 hours")
            << QDateTime(QDate(2012, 12, 31), QTime(23, 0, 58)) << ""
            << "curconfig_bkup_(12-31-2012-23-0-58).qvn2";
        QTest::newRow("a further user.ini's folder")
            << QDateTime(QDate(2001, 3, 7), QTime(9, 5, 3)) << "System64"
            << "curconfig_bkup_(3-7-2001-9-5-3)_System64.qvn2";
    }

    void backupFileName()
    {
        QFETCH(QDateTime, time);
        QFETCH(QString, folder);
        QFETCH(QString, expected);
        QCOMPARE(BackupFileName(time, folder), expected);
    }

    // The game's own file, in both folders of the patched game: everything
    // outside the old section stays byte for byte, the old section goes to
    // one backup per file
    // when asked.
    void realUserIni_data()
    {
        QTest::addColumn<bool>("backup");
        QTest::newRow("backup") << true;
        QTest::newRow("no backup") << false;
    }

    void realUserIni()
    {
        QFETCH(bool, backup);
        GameFixture game;
        const QByteArray original = readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        QVERIFY(writeTestFile(game.userIni(), original));
        QVERIFY(writeTestFile(game.userIni64(), original));
        // The working copy of an apply that crashed: a second name of
        // user.ini, which must not make it look hard-linked by the player.
        QVERIFY(addHardLink(game.userIni(), game.system() + "dummy.ini"));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(configSection())));
        ScriptedPrompt prompt;

        const QDateTime before = QDateTime::currentDateTime();
        QVERIFY(ApplyConfiguration("c.qvn", backup));
        const QDateTime after = QDateTime::currentDateTime();

        const qsizetype start = original.indexOf(Header + "\r\n");
        const qsizetype headerEnd = start + Header.size() + 2;
        const qsizetype oldEnd = original.indexOf("\r\n\r\n", headerEnd) + 2;
        const QByteArray applied = original.left(headerEnd)
            + encoded(appliedLines(), Form::AnsiCrLf) + original.mid(oldEnd);
        QCOMPARE(readTestFile(game.userIni()), applied);
        QCOMPARE(readTestFile(game.userIni64()), applied);
        QCOMPARE(prompt.transcript(), QStringList(Completed));
        QCOMPARE(game.systemFiles(), QStringList("User.ini"));
        QCOMPARE(QDir(game.system64()).entryList(QDir::Files), QStringList("User.ini"));

        const QDateTime time = backupTime(before, after);
        QCOMPARE(game.backups(),
            backup ? QStringList({ BackupFileName(time), BackupFileName(time, "System64") })
                   : QStringList());
        for (const QString &backup : game.backups())
            QCOMPARE(readTestFile(game.config(backup)), original.mid(start, oldEnd - start));
    }

    void keepsTheFilesEncoding_data()
    {
        QTest::addColumn<int>("form");
        QTest::newRow("ansi, CR LF") << int(Form::AnsiCrLf);
        QTest::newRow("ansi, LF only") << int(Form::AnsiLf);
        QTest::newRow("ansi, CR only") << int(Form::AnsiCr);
        QTest::newRow("utf-8 without bom") << int(Form::Utf8CrLf);
        QTest::newRow("utf-8 with bom, LF only") << int(Form::Utf8BomLf);
        QTest::newRow("utf-16le with bom") << int(Form::Utf16Bom);
    }

    void keepsTheFilesEncoding()
    {
        QFETCH(int, form);
        const QStringList before { "[Engine.Engine]", "GameEngine=Engine.GameEngine", "" };
        const QStringList after { "", "[Botpack.EndStats]", QString::fromUtf8("Zoë=1") };
        const QStringList old { "[Botpack.ChallengeBotInfo]", "BotNames[0]=Old", "Difficulty=1" };

        GameFixture game;
        QVERIFY(writeTestFile(game.userIni(), encoded(before + old + after, Form(form))));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(configSection())));
        ScriptedPrompt prompt;
        QVERIFY(ApplyConfiguration("c.qvn", false));
        QCOMPARE(readTestFile(game.userIni()),
            encoded(before + old.mid(0, 1) + appliedLines() + after, Form(form)));
    }

    void findsTheSection_data()
    {
        QTest::addColumn<QByteArray>("userIni");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("capitals and trailing spaces kept")
            << crlf({ "[A]", "", "[BotPack.CHALLENGEBotInfo]  ", "x=1", "", "[B]" })
            << QStringList { "[A]", "", "[BotPack.CHALLENGEBotInfo]  ", "@new", "", "[B]" };
        QTest::newRow("leading space is another section: appended")
            << crlf({ " [Botpack.ChallengeBotInfo]", "x=1" })
            << QStringList { " [Botpack.ChallengeBotInfo]", "x=1", "[Botpack.ChallengeBotInfo]",
                   "@new" };
        QTest::newRow("the header within a line is none: appended")
            << crlf({ "x=[Botpack.ChallengeBotInfo]", "[Botpack.ChallengeBotInfoX]" })
            << QStringList { "x=[Botpack.ChallengeBotInfo]", "[Botpack.ChallengeBotInfoX]",
                   "[Botpack.ChallengeBotInfo]", "@new" };
        QTest::newRow("header after a line ended by a CR alone")
            << QByteArray("[A]\r\n[B]\r[Botpack.ChallengeBotInfo]\r\nx=1")
            << QStringList { "[A]", "[B]\r[Botpack.ChallengeBotInfo]", "@new" };
        QTest::newRow("no section, no final line ending") << QByteArray(
            "[A]\r\nb=1") << QStringList { "[A]", "b=1", "[Botpack.ChallengeBotInfo]", "@new" };
        QTest::newRow("section at the end")
            << crlf({ "[A]", "", "[Botpack.ChallengeBotInfo]", "x=1" })
            << QStringList { "[A]", "", "[Botpack.ChallengeBotInfo]", "@new" };
        QTest::newRow("section at the end, no final line ending")
            << QByteArray("[A]\r\n[Botpack.ChallengeBotInfo]\r\nx=1")
            << QStringList { "[A]", "[Botpack.ChallengeBotInfo]", "@new" };
        QTest::newRow("header on the last line")
            << QByteArray("[A]\r\n[Botpack.ChallengeBotInfo]")
            << QStringList { "[A]", "[Botpack.ChallengeBotInfo]", "@new" };
        QTest::newRow("only the first section replaced")
            << crlf(
                   { "[Botpack.ChallengeBotInfo]", "x=1", "", "[botpack.challengebotinfo]", "y=2" })
            << QStringList { "[Botpack.ChallengeBotInfo]", "@new", "", "[botpack.challengebotinfo]",
                   "y=2" };
    }

    void findsTheSection()
    {
        QFETCH(QByteArray, userIni);
        QFETCH(QStringList, expected);
        GameFixture game;
        QVERIFY(writeTestFile(game.userIni(), userIni));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(configSection())));
        ScriptedPrompt prompt;
        QVERIFY(ApplyConfiguration("c.qvn", false));
        QCOMPARE(readTestFile(game.userIni()), crlf(expand(expected)));
        QCOMPARE(game.configFiles(), QStringList("c.qvn")); // no backup asked for
    }

    void shortSectionFilledWithEmptyLines()
    {
        GameFixture game;
        QVERIFY(writeTestFile(game.userIni(), crlf({ "[Botpack.ChallengeBotInfo]", "x=1" })));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(configSection(3))));
        ScriptedPrompt prompt;
        QVERIFY(ApplyConfiguration("c.qvn", false));
        QStringList expected { "[Botpack.ChallengeBotInfo]",
            QString::fromLatin1("BotNames[0]=Zo\xEB"), "Key[2]=v" };
        expected += QStringList(450, QString());
        QCOMPARE(readTestFile(game.userIni()), crlf(expected));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("config");
        QTest::addColumn<QString>("userIni"); // how it is found
        QTest::addColumn<QString>("message");

        const QByteArray good = configuration(configSection());
        QTest::newRow("missing configuration")
            << "gone.qvn" << QByteArray() << "file"
            << "Missing File|Can't find gone.qvn.  Operation Aborted.";
        QTest::newRow("nothing chosen") << "" << QByteArray() << "file"
                                        << "Missing File|Can't find .  Operation Aborted.";
        QTest::newRow("directory part")
            << "../c.qvn" << good << "file"
            << "Invalid File Name|" + notAFileName("../c.qvn", "it has a directory part");
        QTest::newRow("name checked before user.ini") << "aux.qvn" << good << "missing"
                                                      << "Invalid File Name|"
                + notAFileName("aux.qvn", "AUX is a name Windows keeps for a device");
        QTest::newRow("missing user.ini")
            << "c.qvn" << good << "missing"
            << "User.ini File Missing|Can't find user.ini.  Operation Aborted";
        QTest::newRow("no empty line")
            << "c.qvn" << configuration(configSection(), false) << "file"
            << "Invalid Configuration|c.qvn is not a configuration that can be applied: it has no "
               "empty line before its [Botpack.ChallengeBotInfo] section.  Operation Aborted.";
        QTest::newRow("453 section lines")
            << "c.qvn" << configuration(configSection(453)) << "file"
            << "Invalid Configuration|c.qvn is not a configuration that can be applied: its "
               "section has more than 452 lines.  Operation Aborted.";
        const QString unchanged = "\r\n\r\nuser.ini was not changed.  Operation Aborted.";
        QTest::newRow("read-only user.ini")
            << "c.qvn" << good << "read-only"
            << "Apply Configuration Failed|User.ini is read-only: @ini" + unchanged;
        QTest::newRow("user.ini being changed") << "c.qvn" << good << "locked"
                                                << "Apply Configuration Failed|User.ini is being "
                                                   "changed by another Quorvane window or "
                                                   "command: @ini"
                + unchanged;
    }

    void refusals()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, config);
        QFETCH(QString, userIni);
        QFETCH(QString, message);
        const bool userIniExists = userIni != "missing";

        GameFixture game;
        const QByteArray original = crlf({ "[Botpack.ChallengeBotInfo]", "x=1", "", "[B]" });
        if (userIniExists)
            QVERIFY(writeTestFile(game.userIni(), original));
        if (!config.isEmpty())
            QVERIFY(writeTestFile(game.config(name), config));
        if (userIni == "read-only")
            QVERIFY(QFile::setPermissions(game.userIni(), QFile::ReadOwner));
        QLockFile lock(game.userIni() + ".lock");
        QVERIFY(userIni != "locked" || lock.lock());
        ScriptedPrompt prompt;

        QVERIFY(!ApplyConfiguration(name, true));
        QCOMPARE(prompt.transcript(), QStringList(message.replace("@ini", game.userIni())));
        lock.unlock();
        QCOMPARE(game.systemFiles(), userIniExists ? QStringList("User.ini") : QStringList());
        if (userIniExists)
            QCOMPARE(readTestFile(game.userIni()), original);
        QCOMPARE(game.backups(), QStringList());
    }

    void failedWriteLeavesUserIni()
    {
        GameFixture game;
        const QByteArray original = readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        QVERIFY(writeTestFile(game.userIni(), original));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(configSection(452, 40))));

        // Room for the working copy, not for the longer new user.ini.
        const int code = runWithFileSizeLimit(original.size(), [&] {
            ScriptedPrompt prompt;
            if (ApplyConfiguration("c.qvn", true))
                return 1;
            const Message &message = prompt.messages().value(0);
            const bool told = prompt.messages().size() == 1
                && message.title == "Apply Configuration Failed"
                && message.text.contains(game.userIni())
                && message.text.endsWith("user.ini was not changed.  Operation Aborted.");
            return told ? 0 : 2;
        });
        if (code == -1)
            QSKIP("no file size limits here");
        QCOMPARE(code, 0);
        QCOMPARE(readTestFile(game.userIni()), original);
        QCOMPARE(game.systemFiles(), QStringList("User.ini"));
        QCOMPARE(game.backups(), QStringList()); // not left to look like a real one
    }

    // Two applies within a second would share the backup name.
    void earlierBackupKept()
    {
        GameFixture game;
        QVERIFY(writeTestFile(game.userIni(), crlf({ "[Botpack.ChallengeBotInfo]", "x=1" })));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(configSection())));
        const QDateTime now = QDateTime::currentDateTime();
        for (int s = -1; s < 30; ++s)
            QVERIFY(writeTestFile(game.config(BackupFileName(now.addSecs(s))), "earlier"));
        ScriptedPrompt prompt;

        QVERIFY(ApplyConfiguration("c.qvn", true));
        QStringList added;
        for (const QString &backup : game.backups()) {
            if (readTestFile(game.config(backup)) != "earlier")
                added.append(backup);
        }
        QCOMPARE(added.size(), 1);
        QVERIFY2(added.first().endsWith(") (2).qvn2"), qPrintable(added.first()));
        QCOMPARE(readTestFile(game.config(added.first())),
            crlf({ "[Botpack.ChallengeBotInfo]", "x=1" }));
    }

    void failedBackupLeavesUserIni()
    {
        if (geteuid() == 0)
            QSKIP("root writes into read-only folders");
        GameFixture game;
        const QByteArray original = crlf({ "[Botpack.ChallengeBotInfo]", "x=1" });
        QVERIFY(writeTestFile(game.userIni(), original));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(configSection())));
        QFile::setPermissions(AppOptions().ConfigPath, QFile::ReadOwner | QFile::ExeOwner);
        ScriptedPrompt prompt;
        const bool applied = ApplyConfiguration("c.qvn", true);
        QFile::setPermissions(
            AppOptions().ConfigPath, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

        QVERIFY(!applied);
        QCOMPARE(prompt.messages().size(), 1);
        QCOMPARE(prompt.messages().first().title, QString("Backup Failed"));
        QCOMPARE(readTestFile(game.userIni()), original);
        QCOMPARE(game.systemFiles(), QStringList("User.ini"));
    }

    void configNameProblem_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("problem");

        for (const char *name : { "Bots.qvn", "Bots", "My Bots.v2.qvn", ".qvn", "CONSOLE.qvn",
                 "COM10.qvn", "nul2.qvn", "Zoë.qvn" })
            QTest::newRow(name) << QString::fromUtf8(name) << "";
        QTest::newRow("empty") << ""
                               << "The file name is empty. Type a bare name such as Bots.qvn.";
        for (const char *name : { ".", ".." })
            QTest::newRow(name) << name << notAFileName(name, "it names a folder");
        for (const char *name : { "../x.qvn", "sub\\x.qvn", "/etc/passwd", "x.qvn/" })
            QTest::newRow(name) << name << notAFileName(name, "it has a directory part");
        for (const QChar c : QString("<>:\"|?*")) {
            const QString name = "a" + QString(c) + "b.qvn";
            QTest::newRow(qPrintable(name)) << name
                                            << notAFileName(name,
                                                   "it holds a character Windows does not allow "
                                                   "in file names (< > : \" | ? *)");
        }
        const QList<QPair<const char *, QString>> controls { { "tab", "a\tb.qvn" },
            { "line break", "a\nb.qvn" }, { "delete", "a\x7F.qvn" } };
        for (const auto &[row, name] : controls)
            QTest::newRow(row) << name
                               << notAFileName(name,
                                      "it holds a control character, such as a tab or a line "
                                      "break");
        QTest::newRow("ends with a space")
            << "Bots.qvn "
            << notAFileName("Bots.qvn ", "it ends with a space, which Windows drops");
        for (const char *name : { "Bots.", "..." })
            QTest::newRow(name) << name
                                << notAFileName(name, "it ends with a dot, which Windows drops");
        const QList<QPair<QString, QString>> devices { { "CON", "CON" }, { "con.qvn", "CON" },
            { "Nul .qvn", "NUL" }, { "prn.tar.gz", "PRN" }, { "aux", "AUX" },
            { "COM1.qvn", "COM1" }, { "lpt9", "LPT9" }, { "COM\u00B9.qvn", "COM\u00B9" } };
        for (const auto &[name, device] : devices)
            QTest::newRow(qPrintable(name))
                << name << notAFileName(name, device + " is a name Windows keeps for a device");
    }

    void configNameProblem()
    {
        QFETCH(QString, name);
        QFETCH(QString, problem);
        QCOMPARE(ConfigNameProblem(name), problem);
    }

    void gameRunning_data()
    {
        QTest::addColumn<bool>("ask");
        QTest::addColumn<int>("answer"); // -1: none scripted
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("transcript");

        const int yes = int(MessageAnswer::Yes);
        const int no = int(MessageAnswer::No);
        QTest::newRow("running, Yes")
            << true << yes << "c.qvn" << QStringList { RunningQuestion, Completed };
        QTest::newRow("running, No") << true << no << "c.qvn" << QStringList { RunningQuestion };
        QTest::newRow("running, not to be asked")
            << false << -1 << "c.qvn" << QStringList { Completed };
        QTest::newRow("running, configuration missing")
            << true << yes << "gone.qvn"
            << QStringList { "Missing File|Can't find gone.qvn.  Operation Aborted." };
    }

    void gameRunning()
    {
        QFETCH(bool, ask);
        QFETCH(int, answer);
        QFETCH(QString, name);
        QFETCH(QStringList, transcript);
        setProcessLister([] { return QStringList { "bash", "ut-bin-amd64" }; });
        GameFixture game;
        const QByteArray original = crlf({ "[Botpack.ChallengeBotInfo]", "x=1", "", "[B]" });
        QVERIFY(writeTestFile(game.userIni(), original));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(configSection())));
        ScriptedPrompt prompt;
        if (answer >= 0)
            prompt.answerNext(MessageAnswer(answer));

        const bool applied = ApplyConfiguration(name, true, { game.userIni() }, ask);

        QCOMPARE(prompt.transcript(), transcript);
        QCOMPARE(applied, transcript.last() == Completed);
        if (transcript.first() == RunningQuestion) {
            QCOMPARE(prompt.messages().first().buttons, MessageButtons::YesNo);
            QCOMPARE(prompt.messages().first().icon, MessageIcon::Exclamation);
        }
        QCOMPARE(readTestFile(game.userIni()) == original, !applied);
        QCOMPARE(game.backups().size(), applied ? 1 : 0);
        QCOMPARE(game.systemFiles(), QStringList("User.ini"));
    }

    // A fault with the second of two user.ini files: found before anything
    // is written leaves both as they were; found while writing, the message
    // says which file changed.
    void twoTargetFailures_data()
    {
        QTest::addColumn<int>("fault");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("textEnd");
        QTest::addColumn<bool>("smallFileChanged");

        const QString none = "None of the user.ini files was changed.  Operation Aborted.";
        QTest::newRow("second user.ini cannot be copied")
            << int(Fault::NoWorkingCopy) << "Apply Configuration Failed" << none << false;
        QTest::newRow("second backup cannot be written")
            << int(Fault::NoBackup) << "Backup Failed" << none << false;
        QTest::newRow("second write fails")
            << int(Fault::DiskFull) << "Apply Configuration Incomplete"
            << "These user.ini files were changed:\r\n@small\r\n\r\nThese user.ini files were not "
               "changed:\r\n@big"
            << true;
    }

    void twoTargetFailures()
    {
        QFETCH(int, fault);
        QFETCH(QString, title);
        QFETCH(QString, textEnd);
        QFETCH(bool, smallFileChanged);

        GameFixture game;
        const QByteArray small = crlf({ "[Botpack.ChallengeBotInfo]", "x=1" });
        QVERIFY(writeTestFile(game.userIni(), small));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(configSection(452, 40))));
        // Larger than the small file will be, smaller than it will be itself.
        QByteArray big = readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        big += "\r\n[Padding]\r\n" + QByteArray(25000 - big.size(), 'p') + "\r\n";
        QVERIFY(writeTestFile(game.userIni64(), big));
        if (fault == int(Fault::NoWorkingCopy))
            QVERIFY(QDir().mkpath(game.system64() + "dummy.ini"));
        const QDateTime now = QDateTime::currentDateTime();
        for (int s = -1; fault == int(Fault::NoBackup) && s < 30; ++s)
            QVERIFY(QFile::link(
                game.root() + "gone/x", game.config(BackupFileName(now.addSecs(s), "System64"))));
        textEnd.replace("@small", game.userIni()).replace("@big", game.userIni64());

        const QString transcriptFile = game.root() + "transcript.txt";
        const QStringList targets { game.userIni(), game.userIni64() };
        const qint64 limit = fault == int(Fault::DiskFull) ? big.size() : qint64(1) << 40;
        const int code = runWithFileSizeLimit(limit, [&] {
            ScriptedPrompt prompt;
            const bool applied = ApplyConfiguration("c.qvn", true, targets);
            QFile file(transcriptFile);
            if (!file.open(QIODevice::WriteOnly))
                return 2;
            file.write(prompt.transcript().join("\n").toUtf8());
            return applied ? 1 : 0;
        });
        if (code == -1)
            QSKIP("no file size limits here");
        QCOMPARE(code, 0);

        const QString transcript = QString::fromUtf8(readTestFile(transcriptFile));
        QVERIFY2(transcript.startsWith(title + "|"), qPrintable(transcript));
        QVERIFY2(transcript.endsWith(textEnd), qPrintable(transcript));
        QCOMPARE(transcript.count("|"), 1); // one message
        QCOMPARE(readTestFile(game.userIni()) == small, !smallFileChanged);
        QCOMPARE(readTestFile(game.userIni64()), big);
        QCOMPARE(game.systemFiles(), QStringList("User.ini"));
        // Only the backup of a user.ini that was changed stays.
        QCOMPARE(game.backups().filter("_System64").size(), 0);
        QCOMPARE(game.backups().size(), smallFileChanged ? 1 : 0);
    }

private:
    enum class Fault { NoWorkingCopy, NoBackup, DiskFull };
    QTemporaryDir m_home;
};

QTEST_GUILESS_MAIN(TestApplyConfig)
#include "test_applyconfig.moc"
