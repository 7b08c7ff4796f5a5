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

#include <utility>

using namespace Qt::StringLiterals;

// The commands run one after another on the same folders; what each printed,
// its exit code and every file it changed go into one transcript, which is
// compared with an expected file.
class TestCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(writeTestFile(
            path("program/int.ini"), readTestFile(QUORVANE_SOURCE_DIR "/src/data/int.ini")));
        QVERIFY(writeTestFile(path("program/pattern.ini"), {}));
        // One add-on model, a skin package for it whose name does not say
        // so, and the boss package with both variants on.
        const QString game = testDataDir() + "cli/catalog-game/System/";
        for (const QString &name : QDir(game).entryList(QDir::Files))
            QVERIFY(writeTestFile(path("game/System/" + name), readTestFile(game + name)));
        const QByteArray userIni = readTestFile(realWorldDir() + "vanilla-server/System/User.ini");
        QVERIFY(writeTestFile(path("game/System/User.ini"), userIni)
            && writeTestFile(path("game/System64/User.ini"), userIni));
        QVERIFY(writeTestFile(path("game/System/Other.ini"), crlf({ "[Engine.Engine]" })));
        QVERIFY(writeTestFile(path("configs/kept.qvn"), "my own file\r\n")
            && writeTestFile(path("configs/notes.txt"), "not a configuration"));
        QVERIFY(writeTestFile(
            path("file"), crlf({ "x", "", "[Botpack.ChallengeBotInfo]", "BotNames[0]=Evil" })));
    }

    // Nothing outside the configuration directory is read or written, and
    // nothing at all when a command is refused.
    void commandsInTurn()
    {
        run({ "--version" });
        m_defaultRoster = QJsonDocument::fromJson(run({ "defaults" }).out).object();
        QJsonObject night = changed("BotNames", u"Zoë=the=Brave"_s, 3);
        night.insert("Difficulty", 5);
        night.insert("Description", "Night matches, small maps");
        QJsonArray shortNames = m_defaultRoster.value("BotNames").toArray();
        shortNames.removeLast();
        const QString system = path("game/System/User.ini"),
                      system64 = path("game/System64/User.ini"),
                      real = realWorldDir() + "vanilla-server";
        const auto json = [](const QJsonValue &roster) {
            return roster.isObject() ? QJsonDocument(roster.toObject()).toJson()
                                     : roster.toString().toUtf8();
        };
        run({ "save", "night.qvn", "--roster", "-" }, json(night));
        run({ "save", "c.qvn", "--roster", "-" },
            json(changed("BotSkins", "SoldierSkins.gone", 2)));
        for (const QJsonValue &roster :
            QJsonArray { "{\"BotNames\": [", "[]", changed("BotSkins", QJsonValue::Undefined),
                changed("BotColour", 1), changed("BotNames", shortNames), changed("BotTeams", "0"),
                changed("BotJumpy", "1", 5), changed("Camping", 32768, 0),
                changed("Difficulty", -32769), changed("bAdjustSkill", 1),
                changed("BotClasses", QJsonValue::Null, 2) })
            run({ "save", "bad.qvn", "--roster", "-" }, json(roster));
        for (const QStringList &arguments : QList<QStringList> { { "save", "Alpha.qvn" },
                 { "save", "mike.QVN" }, { "open", "night.qvn" }, { "describe", "night.qvn" },
                 { "save", "Default.qvn" }, { "list" }, { "--game-dir", real, "check", "c.qvn" },
                 { "import", "--game-dir", real }, { "options" },
                 { "options", "--write", "--auto-close", "1", "--config-path", "/games/configs",
                     "--ut-path", "/games/ut/" },
                 { "options", "--write", "--ut-path", "/other/ut" }, { "options" },
                 // Refused: nothing printed on stdout, no file changed.
                 {}, { "frobnicate" }, { "save" }, { "open", "a.qvn", "b.qvn" },
                 { "defaults", "--bogus" }, { "options", "--write", "--auto-close", "yes" },
                 { "options", "--ut-path", "/x" }, { "save", "../game/System/User.ini", "--force" },
                 { "apply", "../file", "--backup" }, { "open", "../file" },
                 { "describe", "../file" }, { "save", "kept.qvn" }, { "apply", "gone.qvn" },
                 { "apply", "Default.qvn", "--target", system, "--target",
                     path("game/System32/User.ini") },
                 { "import", "--from", path("game/System/Other.ini") },
                 // The skin catalogue: a taught pattern matches the skin file,
                 // forgetting it leaves the file unmatched.
                 { "scan" }, { "boss" }, { "boss", "--set", "3" }, { "boss", "--set", "2" },
                 { "boss" }, { "--game-dir", path("none"), "boss", "--set", "1" },
                 { "teach", "Robots.int", "Tin Man" }, { "teach", "Tin.int", "Warlord" },
                 { "forget", "Tin" }, { "teach", "tin.INT", "tin man" }, { "patterns", "--json" },
                 { "scan", "--json" }, { "forget", "Tin" }, { "scan" }, { "unmatched", "--save" },
                 { "apply", "Default.qvn", "--backup", "--target", system64, "--target", system,
                     "--target", system64 },
                 { "backups" } })
            run(arguments);
        // Each backup restores its own file; one made in the same second
        // as the backup it restores from is numbered, not put in its place.
        for (const QString &backup : QDir(path("configs")).entryList({ "*.qvn2" }))
            run({ "restore", backup });
        for (const QString command : { "scan", "boss", "patterns", "teach", "forget", "unmatched" })
            run({ command, "--help" });
        compareTranscript("cli/commands.txt");
    }

    // On the folders commandsInTurn() left, with room for user.ini's working
    // copy, not for a configuration.
    void diskFull()
    {
#ifndef Q_OS_UNIX
        QSKIP("The file size limit that fills the disk is Unix's");
#endif
        QVERIFY(writeTestFile(path("game/System/User.ini"),
            crlf({ "[Botpack.ChallengeBotInfo]", "BotNames[0]=Quill" })));
        for (const QStringList &arguments : QList<QStringList> { { "save", "kept.qvn", "--force" },
                 { "save", "new.qvn" }, { "apply", "Default.qvn" } })
            run(arguments, {}, 4096);
        compareTranscript("cli/disk-full.txt");
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
    CliRun run(const QStringList &arguments, const QByteArray &input = {}, qint64 fileSizeLimit = 0)
    {
        const QMap<QString, QByteArray> before = files();
        const CliRun run = runCli(QStringList { "--program-dir", path("program"), "--game-dir",
                                      path("game"), "--config-dir", path("configs") }
                + arguments,
            { input, fileSizeLimit });
        m_transcript += "$ " + arguments.join(' ') + '\n' + QString::fromUtf8(run.out) + run.err
            + "exit " + QString::number(run.exitCode) + '\n';
        const QMap<QString, QByteArray> after = files();
        QStringList paths = before.keys() + after.keys();
        paths.removeDuplicates();
        for (const QString &file : paths) {
            const QByteArray content = after.value(file);
            if (!after.contains(file))
                m_transcript += "removed " + file + '\n';
            else if (!before.contains(file) || before.value(file) != content)
                m_transcript += (before.contains(file) ? "changed " : "wrote ") + file
                    + (content.size() > 400
                            ? u" (%1 bytes)"_s.arg(content.size())
                            : " [" + QString(content).replace("\r\n", "\\r\\n") + ']')
                    + '\n';
        }
        return run;
    }
    // The transcript with "@" for the test's directory, "<real>" for the
    // real-world game and "<time>" for dates and times.
    void compareTranscript(const QString &expected)
    {
        for (const QString &dir : { m_dir.path(), realWorldDir().chopped(1) }) {
            const QString native = QDir::toNativeSeparators(dir);
            const QString mark = dir == m_dir.path() ? "@" : "<real>";
            m_transcript.replace(native, mark).replace(QString(native).replace('\\', "\\\\"), mark);
        }
        m_transcript
            .replace(QRegularExpression(
                         R"(\d+-\d+-\d+([-_T][-\dhms:]+)?|\w+day, \w+ \d+, \d+|\d+:\d+:\d+)"),
                "<time>")
            .remove(QRegularExpression(R"( \(2\)(?=\.qvn2))")); // a second backup in a second
        QCOMPARE(std::exchange(m_transcript, {}).split('\n', Qt::SkipEmptyParts),
            testDataLines(expected));
    }
    QString path(const QString &relative) const
    {
        return QDir::toNativeSeparators(m_dir.filePath(relative));
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
    // Every file below the test's directory with its content.
    QMap<QString, QByteArray> files() const
    {
        QMap<QString, QByteArray> contents;
        for (QDirIterator it(
                 m_dir.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
             it.hasNext();) {
            const QString file = it.next();
            contents.insert(QDir::toNativeSeparators(file), readTestFile(file));
        }
        return contents;
    }

    QTemporaryDir m_dir;
    QJsonObject m_defaultRoster;
    QString m_transcript;
};

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"
