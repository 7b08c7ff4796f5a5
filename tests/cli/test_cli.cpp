#include "buildconfig.h"
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

    // A roster saved from stdin opens as it was given, every description
    // line with a space after it; list names every configuration.
    void saveOpenDescribeAndList()
    {
        QCOMPARE(cli({ "defaults" }).out, readTestFile(testDataDir() + "cli/defaults.json"));
        QJsonObject roster = changed("BotNames", u"Zoë=the=Brave"_s, 3);
        roster.insert("Difficulty", 5);
        roster.insert("Description", "Night matches, small maps");
        const CliRun save
            = cli({ "--config-dir", configDir(), "save", "night.qvn", "--roster", "-" },
                QJsonDocument(roster).toJson());
        QCOMPARE(save.err + save.out, QDir::toNativeSeparators(configDir() + "/night.qvn\n"));
        QCOMPARE(save.exitCode, 0);
        for (const QString name : { "zulu.qvn", "Alpha.qvn", "mike.QVN" })
            QCOMPARE(cli({ "save", name, "--config-dir", configDir() }).exitCode, 0);
        QVERIFY(writeTestFile(configDir() + "/notes.txt", "not a configuration"));

        roster.insert("Description", "Night matches, small maps ");
        QCOMPARE(
            cli({ "open", "night.qvn", "--config-dir", configDir() }).json().toObject(), roster);
        QCOMPARE(cli({ "describe", "night.qvn", "--config-dir", configDir() }).out,
            "\"Night matches, small maps \"\n");
        QStringList listed;
        for (const QJsonValue &entry :
            cli({ "list", "--config-dir", configDir() }).json().toArray())
            listed << entry["file"].toString() + '|' + entry["description"].toString();
        QCOMPARE(listed,
            QStringList({ "Alpha.qvn| ", "mike.QVN| ", "night.qvn|Night matches, small maps ",
                "zulu.qvn| " }));
    }

    // The user.ini files chosen, each once, in the order given, are printed
    // and backed up; each backup restores its own file.
    void applyAndRestore()
    {
        const QByteArray original = readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        for (const char *userIni : { "System/User.ini", "System64/User.ini", "Other/User.ini" })
            QVERIFY(writeTestFile(gamePath(userIni), original));
        QCOMPARE(cli(dirs() + QStringList { "save", "Default.qvn" }).exitCode, 0);
        const QString system = gamePath("System/User.ini"),
                      system64 = gamePath("System64/User.ini");
        const CliRun apply = cli(dirs()
            + QStringList { "apply", "Default.qvn", "--backup", "--target", system64, "--target",
                system, "--target", system64 });
        QCOMPARE(QString::fromUtf8(apply.out), system64 + '\n' + system + '\n');
        QCOMPARE(apply.exitCode, 0);
        QCOMPARE(readTestFile(gamePath("Other/User.ini")), original);
        QVERIFY(readTestFile(system) != original);

        const QJsonArray backups = cli(dirs() + QStringList { "backups" }).json().toArray();
        QCOMPARE(backups.size(), 2);
        QCOMPARE(backups[0]["bots"][31], QJsonValue("Kragoth"));
        QStringList restored;
        for (const QJsonValue &backup : backups) {
            const CliRun restore
                = cli(dirs() + QStringList { "restore", backup["file"].toString() });
            QCOMPARE(restore.err, "Restore Backup...: Completed\n");
            QCOMPARE(restore.exitCode, 0);
            restored << QString::fromUtf8(restore.out);
        }
        restored.sort();
        QCOMPARE(restored, QStringList({ system + '\n', system64 + '\n' }));
        QCOMPARE(readTestFile(system) + readTestFile(system64), original + original);
        QCOMPARE(cli(dirs() + QStringList { "backups" }).json().toArray().size(), 4);
    }

    // Nothing outside the configuration directory is read or written, and
    // nothing at all when a command is refused or its write fails.
    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments"); // @ the game directory
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<qint64>("fileSizeLimit");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("err"); // "start...end" where only those are known

        const auto row = [](const char *tag, const QStringList &arguments, const QString &err,
                             int exitCode = 2, qint64 fileSizeLimit = 0) {
            QTest::newRow(tag) << arguments << QByteArray() << fileSizeLimit << exitCode << err;
        };
        row("no command", {}, "Usage: quorvane-cli...", 1);
        row("unknown command", { "frobnicate" },
            "quorvane-cli: unknown command 'frobnicate'; see '--help'\n", 1);
        row("missing name", { "save" }, "quorvane-cli: missing argument; see 'save --help'\n", 1);
        row("extra argument", { "open", "a.qvn", "b.qvn" },
            "quorvane-cli: unexpected argument 'b.qvn'\n", 1);
        row("unknown option", { "defaults", "--bogus" }, "quorvane-cli: Unknown option 'bogus'.\n",
            1);
        row("auto-close not a number", { "options", "--write", "--auto-close", "yes" },
            "quorvane-cli: --auto-close needs a whole number, not 'yes'\n", 1);
        row("change without --write", { "options", "--ut-path", "/x" },
            "quorvane-cli: --auto-close, --config-path and --ut-path need --write\n", 1);

        const QString outside = "Invalid File Name: \"%1\" is not a file name in the "
                                "configuration folder: it has a directory part. Type a bare name "
                                "such as Bots.qvn.\n";
        for (const QStringList &command :
            QList<QStringList> { { "save", "../game/System/User.ini", "--force" },
                { "apply", "../file", "--backup" }, { "open", "../file" },
                { "describe", "../file" } })
            row(qPrintable(command[0] + " outside"), command, outside.arg(command[1]));
        row("save over a file without --force", { "save", "kept.qvn" },
            "File Already Exists: This file exists, do you really want to over write it?\n");
        row("apply a missing configuration", { "apply", "gone.qvn" },
            "Missing File: Can't find gone.qvn.  Operation Aborted.\n");
        row("apply to a missing target",
            { "apply", "Default.qvn", "--target", "@/System/User.ini", "--target",
                "@/System64/User.ini" },
            "User.ini File Missing: Can't find user.ini.  Operation Aborted\n");
        row("import a file without a bot list", { "import", "--from", "@/System/Other.ini" },
            "Import from Game: Can't find...");
#ifdef Q_OS_UNIX
        // Room for user.ini's working copy, not for a configuration.
        row("save over a file, disk full", { "save", "kept.qvn", "--force" },
            "...configs/kept.qvn\nThe configuration was not saved; the existing file is "
            "unchanged.\n",
            2, 4096);
        row("save a new file, disk full", { "save", "new.qvn" },
            "...configs/new.qvn\nThe configuration was not saved.\n", 2, 4096);
        row("apply, disk full", { "apply", "Default.qvn" },
            "...game/System/User.ini\r\n\r\nuser.ini was not changed.  Operation Aborted.\n", 2,
            4096);
#endif

        QJsonArray shortNames = m_defaultRoster.value("BotNames").toArray();
        shortNames.removeLast();
        const auto roster = [](const char *tag, const QJsonValue &json, const QString &problem) {
            QTest::newRow(tag) << QStringList { "save", "bad.qvn", "--roster", "-" }
                               << (json.isString() ? json.toString().toUtf8()
                                                   : QJsonDocument(json.toObject()).toJson())
                               << qint64(0) << 2 << "stdin: " + problem + '\n';
        };
        roster("not JSON", "{\"BotNames\": [", "not valid JSON...");
        roster("an array", "[]", "the roster must be a JSON object");
        roster(
            "missing key", changed("BotSkins", QJsonValue::Undefined), "missing key \"BotSkins\"");
        roster("unknown key", changed("BotColour", 1), "unknown key \"BotColour\"");
        roster("31 names", changed("BotNames", shortNames),
            "\"BotNames\" has 31 values; it must have exactly 32");
        roster("teams not an array", changed("BotTeams", "0"),
            "\"BotTeams\" must be an array of 32 integers");
        roster("number as text", changed("BotJumpy", "1", 5), "\"BotJumpy[5]\" must be an integer");
        roster("beyond 16 bits", changed("Camping", 32768, 0),
            "\"Camping[0]\" is 32768, outside the range -32768 to 32767");
        roster("below 16 bits", changed("Difficulty", -32769),
            "\"Difficulty\" is -32769, outside the range -32768 to 32767");
        roster("boolean as number", changed("bAdjustSkill", 1),
            "\"bAdjustSkill\" must be true or false");
        roster("no class", changed("BotClasses", QJsonValue::Null, 2),
            "\"BotClasses[2]\" must be a string");
    }

    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, input);
        QFETCH(qint64, fileSizeLimit);
        QFETCH(int, exitCode);
        QFETCH(QString, err);
        QVERIFY(writeTestFile(gamePath("System/User.ini"),
            crlf({ "[Botpack.ChallengeBotInfo]", "BotNames[0]=Quill" })));
        QVERIFY(writeTestFile(gamePath("System/Other.ini"), crlf({ "[Engine.Engine]" })));
        QVERIFY(writeTestFile(configDir() + "/kept.qvn", "my own file\r\n"));
        QCOMPARE(cli(dirs() + QStringList { "save", "Default.qvn" }).exitCode, 0);
        QVERIFY(writeTestFile(m_dir->filePath("file"),
            crlf({ "x", "", "[Botpack.ChallengeBotInfo]", "BotNames[0]=Evil" })));
        const QMap<QString, QByteArray> before = files();

        arguments.replaceInStrings(QRegularExpression("^@"), gameDir());
        const CliRun run = cli(dirs() + arguments, input, fileSizeLimit);
        QCOMPARE(run.exitCode, exitCode);
        const qsizetype cut = err.indexOf("...");
        if (cut < 0)
            QCOMPARE(run.err, err);
        else
            QVERIFY2(run.err.startsWith(err.left(cut))
                    && run.err.endsWith(QDir::toNativeSeparators(err.mid(cut + 3))),
                qPrintable(run.err));
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
    }

    void checkListsWhatIsNotInstalled()
    {
        QVERIFY(QFile::copy(
            QUORVANE_SOURCE_DIR "/src/data/int.ini", m_dir->filePath("program/int.ini")));
        const QJsonObject roster = changed("BotSkins", "SoldierSkins.gone", 2);
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

    void version()
    {
        const CliRun run = runCli({ "--version" });
        QCOMPARE(run.out, "quorvane-cli " QUORVANE_VERSION "\n");
        QCOMPARE(run.exitCode, 0);
    }

    // quorvane-cli copied into the layouts it is shipped in keeps
    // options.ini beside itself when portable, else in the user's data
    // folder with a copy of the shipped pattern list.
    void installedProgramDirectory_data()
    {
        QTest::addColumn<QString>("binFolder");
        QTest::addColumn<QString>("shippedFolder"); // relative to binFolder
        QTest::addColumn<QString>("programDir"); // relative to the test's directory
        QTest::newRow("portable copy") << "portable"
                                       << "."
                                       << "portable";
        QTest::newRow("installed")
            << "usr/bin" << QUORVANE_DATA_FROM_EXECUTABLE << "home/.local/share/quorvane";
    }

    void installedProgramDirectory()
    {
        QFETCH(QString, binFolder);
        QFETCH(QString, shippedFolder);
        QFETCH(QString, programDir);
        QTemporaryDir root;
        const QDir bin(root.filePath(binFolder));
        QVERIFY(
            QDir().mkpath(bin.path()) && QFile::copy(QUORVANE_CLI, bin.filePath("quorvane-cli")));
        for (const QString name : { "int.ini", "pattern.ini" })
            QVERIFY(writeTestFile(
                bin.filePath(shippedFolder + '/' + name), name.toUtf8() + " as shipped\r\n"));
        CliCall call;
        call.program = bin.filePath("quorvane-cli");
        call.environment.insert("HOME", root.filePath("home"));
        call.environment.remove("XDG_DATA_HOME");
        QCOMPARE(runCli({ "options", "--write", "--auto-close", "1" }, call).exitCode, 0);
        const QDir chosen(root.filePath(programDir));
        QVERIFY(chosen.exists("options.ini"));
        QCOMPARE(QFileInfo::exists(root.filePath("home/.local/share/quorvane")),
            programDir.startsWith("home/"));
        QCOMPARE(readTestFile(chosen.filePath("pattern.ini")), "pattern.ini as shipped\r\n");
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
    // The default roster with `key` (its `slot`) set to `value`, or without it.
    QJsonObject changed(const QString &key, const QJsonValue &value, int slot = -1) const
    {
        QJsonObject copy = m_defaultRoster;
        QJsonArray array = copy.value(key).toArray();
        if (slot >= 0)
            array.replace(slot, value);
        if (value.isUndefined())
            copy.remove(key);
        else
            copy.insert(key, slot >= 0 ? QJsonValue(array) : value);
        return copy;
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
        for (QDirIterator it(
                 m_dir->path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
             it.hasNext();) {
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
