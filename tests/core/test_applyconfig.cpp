#include "childprocess.h"
#include "configfiles/applyconfig.h"
#include "configfiles/fileops.h"
#include "scriptedprompt.h"
#include "startup/options.h"
#include "testfiles.h"

#include <QDir>
#include <QFile>
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

enum class Form { AnsiCrLf, AnsiLf, Utf8CrLf, Utf8BomLf, Utf16Bom };

QByteArray encoded(const QStringList &lines, Form form, bool finalEnding = true)
{
    const bool lf = form == Form::AnsiLf || form == Form::Utf8BomLf;
    QString text = lines.join(lf ? "\n" : "\r\n");
    if (finalEnding)
        text += lf ? "\n" : "\r\n";
    switch (form) {
    case Form::AnsiCrLf:
    case Form::AnsiLf:
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
    QString userIni() const { return system() + "User.ini"; }
    QString config(const QString &name) const { return AppOptions().ConfigPath + name; }
    QStringList systemFiles() const { return QDir(system()).entryList(QDir::Files); }
    QStringList configFiles() const { return QDir(AppOptions().ConfigPath).entryList(QDir::Files); }

private:
    QTemporaryDir m_dir;
};

} // namespace

class TestApplyConfig : public QObject
{
    Q_OBJECT

private slots:
    void backupFileName()
    {
        QCOMPARE(BackupFileName(QDateTime(QDate(2001, 3, 7), QTime(9, 5, 3))),
            QString("curconfig_bkup_(3-7-2001-9-5-3).qvn2"));
        QCOMPARE(BackupFileName(QDateTime(QDate(2012, 12, 31), QTime(23, 0, 58))),
            QString("curconfig_bkup_(12-31-2012-23-0-58).qvn2"));
    }

    // The game's own file: everything outside the old section stays byte for
    // byte, the old section goes to the backup.
    void realUserIni()
    {
        GameFixture game;
        const QByteArray original = readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        QVERIFY(writeTestFile(game.userIni(), original));
        QVERIFY(writeTestFile(game.system() + "dummy.ini", "left by a crash"));
        QVERIFY(writeTestFile(game.config("c.qvn"), configuration(configSection())));
        ScriptedPrompt prompt;

        const QDateTime before = QDateTime::currentDateTime();
        QVERIFY(ApplyConfiguration("c.qvn", true));
        const QDateTime after = QDateTime::currentDateTime();

        const qsizetype start = original.indexOf(Header + "\r\n");
        const qsizetype headerEnd = start + Header.size() + 2;
        const qsizetype oldEnd = original.indexOf("\r\n\r\n", headerEnd) + 2;
        QCOMPARE(readTestFile(game.userIni()),
            original.left(headerEnd) + encoded(appliedLines(), Form::AnsiCrLf)
                + original.mid(oldEnd));
        QCOMPARE(prompt.transcript(), QStringList("Apply Configuration...|Completed"));
        QCOMPARE(game.systemFiles(), QStringList("User.ini"));

        QStringList expectedFiles { "c.qvn" };
        for (QDateTime t = before.addMSecs(-before.time().msec()); t <= after; t = t.addSecs(1)) {
            if (QFile::exists(game.config(BackupFileName(t))))
                expectedFiles.append(BackupFileName(t));
        }
        QCOMPARE(game.configFiles(), expectedFiles);
        QCOMPARE(expectedFiles.size(), 2);
        QCOMPARE(
            readTestFile(game.config(expectedFiles.last())), original.mid(start, oldEnd - start));
    }

    void keepsTheFilesEncoding_data()
    {
        QTest::addColumn<int>("form");
        QTest::newRow("ansi, CR LF") << int(Form::AnsiCrLf);
        QTest::newRow("ansi, LF only") << int(Form::AnsiLf);
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
        QTest::addColumn<bool>("userIniExists");
        QTest::addColumn<QString>("message");

        const QByteArray good = configuration(configSection());
        QTest::newRow("missing configuration")
            << "gone.qvn" << QByteArray() << true
            << "Missing File|Can't find gone.qvn.  Operation Aborted.";
        QTest::newRow("nothing chosen")
            << "" << QByteArray() << true << "Missing File|Can't find .  Operation Aborted.";
        QTest::newRow("missing user.ini")
            << "c.qvn" << good << false
            << "User.ini File Missing|Can't find user.ini.  Operation Aborted";
        QTest::newRow("no empty line")
            << "c.qvn" << configuration(configSection(), false) << true
            << "Invalid Configuration|c.qvn is not a configuration that can be applied: it has no "
               "empty line before its [Botpack.ChallengeBotInfo] section.  Operation Aborted.";
        QTest::newRow("453 section lines")
            << "c.qvn" << configuration(configSection(453)) << true
            << "Invalid Configuration|c.qvn is not a configuration that can be applied: its "
               "section has more than 452 lines.  Operation Aborted.";
    }

    void refusals()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, config);
        QFETCH(bool, userIniExists);
        QFETCH(QString, message);

        GameFixture game;
        const QByteArray original = crlf({ "[Botpack.ChallengeBotInfo]", "x=1", "", "[B]" });
        if (userIniExists)
            QVERIFY(writeTestFile(game.userIni(), original));
        if (!config.isEmpty())
            QVERIFY(writeTestFile(game.config(name), config));
        ScriptedPrompt prompt;

        QVERIFY(!ApplyConfiguration(name, true));
        QCOMPARE(prompt.transcript(), QStringList(message));
        QCOMPARE(game.systemFiles(), userIniExists ? QStringList("User.ini") : QStringList());
        if (userIniExists)
            QCOMPARE(readTestFile(game.userIni()), original);
        QCOMPARE(game.configFiles().size(), config.isEmpty() ? 0 : 1);
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
            if (ApplyConfiguration("c.qvn", false))
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
};

QTEST_GUILESS_MAIN(TestApplyConfig)
#include "test_applyconfig.moc"
