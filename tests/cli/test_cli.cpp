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
    // line with a space after it; list names every configuration. The
    // directories may follow the command too.
    void saveOpenDescribeAndList()
    {
        QCOMPARE(cli({ "defaults" }).out, readTestFile(testDataDir() + "cli/defaults.json"));
        QJsonObject roster = changed("BotNames", u"Zoë=the=Brave"_s, 3);
        roster.insert("Difficulty", 5);
        roster.insert("Description", "Night matches, small maps");
        const CliRun save = cli(dirs() + QStringList { "save", "night.qvn", "--roster", "-" },
            QJsonDocument(roster).toJson());
        QCOMPARE(QString::number(save.exitCode) + save.err + save.out,
            "0" + QDir::toNativeSeparators(configDir() + "/night.qvn\n"));
        for (const QString name : { "zulu.qvn", "Alpha.qvn", "mike.QVN" })
            QCOMPARE(cli({ "save", name, "--config-dir", configDir() }).exitCode, 0);
        QVERIFY(writeTestFile(configDir() + "/notes.txt", "not a configuration"));

        roster.insert("Description", "Night matches, small maps ");
        QCOMPARE(cli(dirs() + QStringList { "open", "night.qvn" }).json().toObject(), roster);
        QCOMPARE(cli(dirs() + QStringList { "describe", "night.qvn" }).out,
            "\"Night matches, small maps \"\n");
        QStringList listed;
        for (const QJsonValue &entry : cli(dirs() + QStringList { "list" }).json().toArray())
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
        const QString system = gamePath("System/User.ini"),
                      system64 = gamePath("System64/User.ini");
        QVERIFY(writeTestFile(system, original) && writeTestFile(system64, original));
        QCOMPARE(cli(dirs() + QStringList { "save", "Default.qvn" }).exitCode, 0);
        const CliRun apply = cli(dirs()
            + QStringList { "apply", "Default.qvn", "--backup", "--target", system64, "--target",
                system, "--target", system64 });
        QCOMPARE(
            QString::number(apply.exitCode) + apply.out, "0" + system64 + '\n' + system + '\n');
        QVERIFY(readTestFile(system) != original);

        const QJsonArray backups = cli(dirs() + QStringList { "backups" }).json().toArray();
        QCOMPARE(backups.size(), 2);
        QCOMPARE(backups[0]["bots"][31], QJsonValue("Kragoth"));
        QStringList restored;
        for (const QJsonValue &backup : backups) {
            const CliRun restore
                = cli(dirs() + QStringList { "restore", backup["file"].toString() });
            restored << QString::number(restore.exitCode) + ' ' + restore.err + restore.out;
        }
        restored.sort();
        const QString completed = "0 Restore Backup...: Completed\n";
        QCOMPARE(restored, QStringList({ completed + system + '\n', completed + system64 + '\n' }));
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

        const auto row
            = [](const char *tag, const QStringList &arguments, qint64 fileSizeLimit = 0) {
                  QTest::newRow(tag) << arguments << QByteArray() << fileSizeLimit;
              };
        row("no command", {});
        row("unknown command", { "frobnicate" });
        row("missing name", { "save" });
        row("extra argument", { "open", "a.qvn", "b.qvn" });
        row("unknown option", { "defaults", "--bogus" });
        row("auto-close not a number", { "options", "--write", "--auto-close", "yes" });
        row("change without --write", { "options", "--ut-path", "/x" });
        for (const QStringList &command :
            QList<QStringList> { { "save", "../game/System/User.ini", "--force" },
                { "apply", "../file", "--backup" }, { "open", "../file" },
                { "describe", "../file" } })
            row(qPrintable(command[0] + " outside"), command);
        row("save over a file without --force", { "save", "kept.qvn" });
        row("apply a missing configuration", { "apply", "gone.qvn" });
        row("apply to a missing target",
            { "apply", "Default.qvn", "--target", "@/System/User.ini", "--target",
                "@/System64/User.ini" });
        row("import a file without a bot list", { "import", "--from", "@/System/Other.ini" });
#ifdef Q_OS_UNIX
        // Room for user.ini's working copy, not for a configuration.
        row("save over a file, disk full", { "save", "kept.qvn", "--force" }, 4096);
        row("save a new file, disk full", { "save", "new.qvn" }, 4096);
        row("apply, disk full", { "apply", "Default.qvn" }, 4096);
#endif

        QJsonArray shortNames = m_defaultRoster.value("BotNames").toArray();
        shortNames.removeLast();
        const auto roster = [](const char *tag, const QJsonValue &json) {
            QTest::newRow(tag) << QStringList { "save", "bad.qvn", "--roster", "-" }
                               << (json.isString() ? json.toString().toUtf8()
                                                   : QJsonDocument(json.toObject()).toJson())
                               << qint64(0);
        };
        roster("not JSON", "{\"BotNames\": [");
        roster("an array", "[]");
        roster("missing key", changed("BotSkins", QJsonValue::Undefined));
        roster("unknown key", changed("BotColour", 1));
        roster("31 names", changed("BotNames", shortNames));
        roster("teams not an array", changed("BotTeams", "0"));
        roster("number as text", changed("BotJumpy", "1", 5));
        roster("beyond 16 bits", changed("Camping", 32768, 0));
        roster("below 16 bits", changed("Difficulty", -32769));
        roster("boolean as number", changed("bAdjustSkill", 1));
        roster("no class", changed("BotClasses", QJsonValue::Null, 2));
    }

    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, input);
        QFETCH(qint64, fileSizeLimit);
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
        // The exit code and stderr up to an empty line: the usage goes on.
        m_said << expectedLine(QTest::currentDataTag(),
            QString::number(run.exitCode) + ' '
                + QString(run.err).replace(m_dir->path(), "@").section("\n\n", 0, 0));
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(files(), before);
    }

    void refusalMessages()
    {
        QCOMPARE(m_said, expectedLines("cli/refusals.txt", m_said));
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
        const QStringList dirs { "--game-dir", realWorldDir() + "vanilla-server", "--config-dir",
            configDir() };
        QCOMPARE(cli(dirs + QStringList { "save", "c.qvn", "--roster", "-" },
                     QJsonDocument(changed("BotSkins", "SoldierSkins.gone", 2)).toJson())
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
        QCOMPARE(runCli({ "--version" }).out, "quorvane-cli " QUORVANE_VERSION "\n");
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
    QStringList m_said; // the lines refusalMessages() compares
};

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"
