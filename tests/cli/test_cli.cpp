#include "clirun.h"
#include "testfiles.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        init();
        m_defaultRoster = cli({ "defaults" }).json().toObject();
    }

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_dir->path()).mkpath("program") && QDir(m_dir->path()).mkpath("configs"));
    }

    void defaultsSaveOpenAndList()
    {
        QStringList values;
        for (const QString key : { "BotNames[0]", "BotTeams[0]", "BotTeams[31]", "BotClasses[1]",
                 "VoiceType[5]", "Alertness[18]", "CombatStyle[20]", "FavoriteWeapon[16]",
                 "BotJumpy[30]", "Difficulty", "bAdjustSkill", "bRandomOrder", "Description" }) {
            const QJsonValue value = m_defaultRoster.value(key.section('[', 0, 0));
            const QJsonValue slot
                = key.contains('[') ? value[key.section('[', 1).chopped(1).toInt()] : value;
            values << key + '=' + slot.toVariant().toString();
        }
        QCOMPARE(values,
            QStringList({ "BotNames[0]=Archon", "BotTeams[0]=255", "BotTeams[31]=3",
                "BotClasses[1]=BotPack.TFemale2Bot", "VoiceType[5]=", "Alertness[18]=-30",
                "CombatStyle[20]=-1.000000", "FavoriteWeapon[16]=Botpack.UT_FlakCannon",
                "BotJumpy[30]=1", "Difficulty=0", "bAdjustSkill=false", "bRandomOrder=false",
                "Description=" }));
        QCOMPARE(m_defaultRoster.size(), 18);
        for (const QJsonValue &value : m_defaultRoster)
            QVERIFY(!value.isArray() || value.toArray().size() == 32);

        QJsonObject roster = m_defaultRoster;
        QJsonArray names = roster.value("BotNames").toArray();
        names.replace(3, u"Zoë=the=Brave"_s); // non-ASCII, and "=" inside a value
        roster.insert("BotNames", names);
        roster.insert("Difficulty", 5);
        roster.insert("bAdjustSkill", true);
        roster.insert("Description", "Night matches, small maps");
        const CliRun save
            = cli({ "--config-dir", configDir(), "save", "night.qvn", "--roster", "-" },
                QJsonDocument(roster).toJson());
        QCOMPARE(save.err, QString());
        QCOMPARE(save.exitCode, 0);
        for (const QString name : { "zulu.qvn", "Alpha.qvn", "mike.QVN" })
            QCOMPARE(cli({ "save", name, "--config-dir", configDir() }).exitCode, 0);
        QVERIFY(writeTestFile(configDir() + "/notes.txt", "not a configuration"));

        // Every description line reads back with a space after it.
        roster.insert("Description", "Night matches, small maps ");
        const CliRun open = cli({ "open", "night.qvn", "--config-dir", configDir() });
        QCOMPARE(open.exitCode, 0);
        QCOMPARE(open.json().toObject(), roster);
        const CliRun describe = cli({ "describe", "night.qvn", "--config-dir", configDir() });
        QCOMPARE(describe.out, QByteArray("\"Night matches, small maps \"\n"));
        QCOMPARE(describe.exitCode, 0);
        const CliRun list = cli({ "list", "--config-dir", configDir() });
        QCOMPARE(list.exitCode, 0);
        QStringList listed;
        for (const QJsonValue &entry : list.json().toArray())
            listed << entry["file"].toString() + '|' + entry["description"].toString();
        QCOMPARE(listed,
            QStringList({ "Alpha.qvn| ", "mike.QVN| ", "night.qvn|Night matches, small maps ",
                "zulu.qvn| " }));
    }

    void refusesMalformedRosters_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("problem");

        const auto changed = [this](const QString &key, const QJsonValue &value, int slot = -1) {
            QJsonObject copy = m_defaultRoster;
            QJsonArray array = copy.value(key).toArray();
            if (slot >= 0)
                array.replace(slot, value);
            if (value.isUndefined())
                copy.remove(key);
            else
                copy.insert(key, slot >= 0 ? QJsonValue(array) : value);
            return QJsonDocument(copy).toJson();
        };
        QJsonArray shortNames = m_defaultRoster.value("BotNames").toArray();
        shortNames.removeLast();
        const auto row = [](const char *tag, const QByteArray &json, const QString &problem) {
            QTest::newRow(tag) << json << problem;
        };
        row("not JSON", "{\"BotNames\": [", "not valid JSON");
        row("an array", "[]", "the roster must be a JSON object");
        row("missing key", changed("BotSkins", QJsonValue::Undefined), "missing key \"BotSkins\"");
        row("unknown key", changed("BotColour", 1), "unknown key \"BotColour\"");
        row("31 names", changed("BotNames", shortNames),
            "\"BotNames\" has 31 values; it must have exactly 32");
        row("teams not an array", changed("BotTeams", "0"),
            "\"BotTeams\" must be an array of 32 integers");
        row("number as text", changed("BotJumpy", "1", 5), "\"BotJumpy[5]\" must be an integer");
        row("fraction", changed("BotSkills", 1.5, 3), "\"BotSkills[3]\" must be an integer");
        row("beyond 16 bits", changed("Camping", 40000, 0),
            "\"Camping[0]\" is 40000, outside the range -32768 to 32767");
        row("below 16 bits", changed("Difficulty", -32769),
            "\"Difficulty\" is -32769, outside the range -32768 to 32767");
        row("number as class", changed("BotClasses", 7, 2), "\"BotClasses[2]\" must be a string");
        row("boolean as number", changed("bAdjustSkill", 1),
            "\"bAdjustSkill\" must be true or false");
        row("no description", changed("Description", QJsonValue::Null),
            "\"Description\" must be a string");
    }

    void refusesMalformedRosters()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, problem);
        const CliRun run
            = cli({ "--config-dir", configDir(), "save", "bad.qvn", "--roster", "-" }, json);
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.startsWith("stdin: " + problem), qPrintable(run.err));
        QVERIFY(!QFile::exists(configDir() + "/bad.qvn"));
    }

    // Every user.ini of the game, or those chosen, each once, in the order
    // given; each changed one is printed and backed up, and keeps everything
    // outside its section.
    void applyTargets_data()
    {
        QTest::addColumn<QStringList>("userInis");
        QTest::addColumn<QStringList>("targets"); // none: the game directory's
        QTest::addColumn<QStringList>("changed");

        const QString system = "System/User.ini", system64 = "System64/User.ini";
        const auto row = [](const char *tag, const QStringList &userInis,
                             const QStringList &targets, const QStringList &changed) {
            QTest::newRow(tag) << userInis << targets << changed;
        };
        row("System and System64, by default", { system, system64 }, {}, { system, system64 });
        row("two targets, in the order given", { system, system64 }, { system64, system },
            { system64, system });
        row("one target of two", { system, system64 }, { system64 }, { system64 });
        row("the same target twice", { system }, { system, system }, { system });
    }

    void applyTargets()
    {
        QFETCH(QStringList, userInis);
        QFETCH(QStringList, targets);
        QFETCH(QStringList, changed);
        const QByteArray demo
            = readTestFile(QUORVANE_SOURCE_DIR "/demo/UnrealTournament/System/User.ini");
        for (const QString &userIni : userInis)
            QVERIFY(writeTestFile(gamePath(userIni), demo));
        QCOMPARE(cli(dirs() + QStringList { "save", "Default.qvn" }).exitCode, 0);

        QStringList arguments = dirs() + QStringList { "apply", "Default.qvn", "--backup" };
        for (const QString &target : targets)
            arguments << "--target" << gamePath(target);
        const CliRun apply = cli(arguments);
        QString printed;
        for (const QString &userIni : changed)
            printed += gamePath(userIni) + '\n';
        QCOMPARE(QString::fromUtf8(apply.out), printed);
        QCOMPARE(apply.exitCode, 0);

        const qsizetype header = demo.indexOf("[Botpack.ChallengeBotInfo]");
        const QByteArray tail = demo.mid(demo.indexOf("\r\n\r\n[Botpack.EndStats]"));
        for (const QString &userIni : userInis) {
            const QByteArray after = readTestFile(gamePath(userIni));
            QCOMPARE(after.left(header), demo.left(header));
            QVERIFY(after.endsWith(tail));
            QCOMPARE(after.contains("\r\nBotNames[0]=Archon\r\n"), changed.contains(userIni));
        }
        const QStringList backups = QDir(configDir()).entryList({ "curconfig_bkup_(*" });
        QCOMPARE(backups.size(), changed.size());
        for (const QString &backup : backups)
            QVERIFY(readTestFile(configDir() + '/' + backup).contains("\r\nBotNames[0]=Quill\r\n"));
    }

    // Nothing outside the configuration directory is read or written, and
    // nothing at all when a command is refused or its write fails.
    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments"); // @ the game directory
        QTest::addColumn<qint64>("fileSizeLimit");
        QTest::addColumn<QString>("err"); // ... at its start: only its end is known

        const QString outside = "Invalid File Name: \"%1\" is not a file name in the "
                                "configuration folder: it has a directory part. Type a bare name "
                                "such as Bots.qvn.\n";
        const auto row = [](const char *tag, const QStringList &arguments, const QString &err,
                             qint64 fileSizeLimit = 0) {
            QTest::newRow(tag) << arguments << fileSizeLimit << err;
        };
        row("save over the game's user.ini", { "save", "../game/System/User.ini", "--force" },
            outside.arg("../game/System/User.ini"));
        row("apply any file's lines", { "apply", "../file", "--backup" }, outside.arg("../file"));
        row("open a file outside", { "open", "../file" }, outside.arg("../file"));
        row("describe a file outside", { "describe", "../game/System/User.ini" },
            outside.arg("../game/System/User.ini"));
        row("save over a file without --force", { "save", "kept.qvn" },
            "File Already Exists: This file exists, do you really want to over write it?\n");
        row("apply a missing configuration", { "apply", "gone.qvn" },
            "Missing File: Can't find gone.qvn.  Operation Aborted.\n");
        row("apply to a missing target",
            { "apply", "Default.qvn", "--target", "@/System/User.ini", "--target",
                "@/System64/User.ini" },
            "User.ini File Missing: Can't find user.ini.  Operation Aborted\n");
#ifdef Q_OS_UNIX
        // Room for user.ini's working copy, not for a configuration.
        row("save over a file, disk full", { "save", "kept.qvn", "--force" },
            "...configs/kept.qvn\nThe configuration was not saved; the existing file is "
            "unchanged.\n",
            4096);
        row("save a new file, disk full", { "save", "new.qvn" },
            "...configs/new.qvn\nThe configuration was not saved.\n", 4096);
        row("apply, disk full", { "apply", "Default.qvn" },
            "...game/System/User.ini\r\n\r\nuser.ini was not changed.  Operation Aborted.\n", 4096);
#endif
    }

    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(qint64, fileSizeLimit);
        QFETCH(QString, err);
        QVERIFY(writeTestFile(gamePath("System/User.ini"),
            crlf({ "[Botpack.ChallengeBotInfo]", "BotNames[0]=Quill" })));
        QVERIFY(writeTestFile(configDir() + "/kept.qvn", "my own file\r\n"));
        QCOMPARE(cli(dirs() + QStringList { "save", "Default.qvn" }).exitCode, 0);
        QVERIFY(writeTestFile(m_dir->filePath("file"),
            crlf({ "x", "", "[Botpack.ChallengeBotInfo]", "BotNames[0]=Evil" })));
        const QMap<QString, QByteArray> before = files();

        arguments.replaceInStrings(QRegularExpression("^@"), gameDir());
        const CliRun run = cli(dirs() + arguments, {}, fileSizeLimit);
        QCOMPARE(run.exitCode, 2);
        if (err.startsWith("..."))
            QVERIFY2(run.err.endsWith(QDir::toNativeSeparators(err.mid(3))), qPrintable(run.err));
        else
            QCOMPARE(run.err, err);
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(files(), before);
    }

    void optionsWriteChangesOnlyTheGivenFields()
    {
        QCOMPARE(cli({ "options" }).json()["FirstRun"], QJsonValue(true));
        QCOMPARE(cli({ "options", "--write", "--auto-close", "1", "--config-path", "/games/configs",
                         "--ut-path", "/games/ut/" })
                     .exitCode,
            0);
        QCOMPARE(cli({ "options", "--write", "--ut-path", "/other/ut" }).exitCode, 0);

        const QJsonObject expected { { "AutoCloseSplash", 1 }, { "FirstRun", false },
            { "ConfigPath", "/games/configs/" }, { "UTPath", "/other/ut/" } };
        QCOMPARE(cli({ "options" }).json().toObject(), expected);
        QCOMPARE(readTestFile(m_dir->filePath("program/options.ini")),
            crlf({ "[SplashScreen]", "1", "", "[UTPath]", "0", "/games/configs/", "/other/ut/" }));
    }

    void importReadsTheGamesList()
    {
        const CliRun run = cli({ "import", "--game-dir", realWorldDir() + "vanilla-server" });
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.json()["CombatStyle"][16], QJsonValue("0.500000"));
        QVERIFY(run.json()["Description"].toString().startsWith("Imported from "));

        QVERIFY(writeTestFile(gameDir() + "/User.ini", crlf({ "[Engine.Engine]" })));
        const CliRun none = cli({ "import", "--from", gameDir() + "/User.ini" });
        QCOMPARE(none.exitCode, 2);
        QVERIFY2(none.err.startsWith("Import from Game: Can't find"), qPrintable(none.err));
    }

    void restoreUndoesAnApply()
    {
        const QByteArray original = readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        const QString userIni = gamePath("System/User.ini");
        QVERIFY(writeTestFile(userIni, original));
        QCOMPARE(cli(dirs() + QStringList { "save", "Default.qvn" }).exitCode, 0);
        QCOMPARE(cli(dirs() + QStringList { "apply", "Default.qvn", "--backup" }).exitCode, 0);
        QVERIFY(readTestFile(userIni) != original);

        const QJsonArray backups = cli(dirs() + QStringList { "backups" }).json().toArray();
        QCOMPARE(backups.size(), 1);
        QCOMPARE(backups[0]["bots"][31], QJsonValue("Kragoth"));
        const CliRun restore
            = cli(dirs() + QStringList { "restore", backups[0]["file"].toString() });
        QCOMPARE(restore.err, "Restore Backup...: Completed\n");
        QCOMPARE(restore.exitCode, 0);
        QCOMPARE(QString::fromUtf8(restore.out), userIni + '\n');
        QCOMPARE(readTestFile(userIni), original);
        QCOMPARE(cli(dirs() + QStringList { "backups" }).json().toArray().size(), 2);
    }

    void checkListsWhatIsNotInstalled()
    {
        QVERIFY(QFile::copy(
            QUORVANE_SOURCE_DIR "/src/data/int.ini", m_dir->filePath("program/int.ini")));
        QJsonObject roster = m_defaultRoster;
        QJsonArray skins = roster["BotSkins"].toArray();
        skins.replace(2, "SoldierSkins.gone");
        roster.insert("BotSkins", skins);
        const QStringList dirs { "--game-dir", realWorldDir() + "vanilla-server", "--config-dir",
            configDir() };
        QCOMPARE(cli(dirs + QStringList { "save", "c.qvn", "--roster", "-" },
                     QJsonDocument(roster).toJson())
                     .exitCode,
            0);

        const CliRun check = cli(dirs + QStringList { "check", "c.qvn" });
        QCOMPARE(check.exitCode, 0);
        const QJsonObject gone { { "slot", 2 }, { "bot", "Alarik" }, { "field", "skin" },
            { "value", "SoldierSkins.gone" },
            { "problem", "Skin \"SoldierSkins.gone\" is not installed" } };
        QCOMPARE(check.json().toArray(), QJsonArray { gone });
    }

    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("no command") << QStringList {};
        QTest::newRow("unknown command") << QStringList { "frobnicate" };
        QTest::newRow("missing name") << QStringList { "save" };
        QTest::newRow("extra argument") << QStringList { "open", "a.qvn", "b.qvn" };
        QTest::newRow("unknown option") << QStringList { "defaults", "--bogus" };
        QTest::newRow("option without value") << QStringList { "list", "--config-dir" };
        QTest::newRow("auto-close not a number")
            << QStringList { "options", "--write", "--auto-close", "yes" };
        QTest::newRow("change without --write") << QStringList { "options", "--ut-path", "/x" };
    }

    void usageErrors()
    {
        QFETCH(QStringList, arguments);
        const CliRun run = cli(arguments);
        QCOMPARE(run.exitCode, 1);
        QVERIFY(!run.err.isEmpty());
        QVERIFY(run.out.isEmpty());
        QVERIFY(!QFile::exists(m_dir->filePath("program/options.ini")));
    }

private:
    // Never the executable's directory: the tests must not write beside it.
    CliRun cli(const QStringList &arguments, const QByteArray &input = {}, qint64 fileSizeLimit = 0)
    {
        return runCli(QStringList { "--program-dir", m_dir->filePath("program") } + arguments,
            { input, fileSizeLimit });
    }
    QString configDir() const
    {
        return m_dir->filePath("configs");
    }
    QString gameDir() const
    {
        return m_dir->filePath("game");
    }
    QString gamePath(const QString &relative) const
    {
        return QDir::toNativeSeparators(gameDir() + '/' + relative);
    }
    QStringList dirs() const
    {
        return { "--game-dir", gameDir(), "--config-dir", configDir() };
    }
    // Every file below the test's directory with its content.
    QMap<QString, QByteArray> files() const
    {
        QMap<QString, QByteArray> contents;
        QDirIterator it(m_dir->path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            contents.insert(path, readTestFile(path));
        }
        return contents;
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QJsonObject m_defaultRoster;
};

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"
