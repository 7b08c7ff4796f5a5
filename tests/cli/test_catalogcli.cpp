#include "clirun.h"
#include "testfiles.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString plainWar = "Object=(Name=SkeletalCharsFix313.WarBossFixed,Class=Class,"
                         "MetaClass=Botpack.Bot,Description=\"WarBoss [Fixed]\")";
const QString maleWar = "Object=(Name=SkeletalCharsFix313.WarBossFixedMale,Class=Class,"
                        "MetaClass=Botpack.Bot,Description=\"WarBoss [Fixed/Male Voices]\")";

// The JSON of a scan of the folder `root`, indented, with "@/" for `root`,
// compared with the expected file of that name.
void compareScan(const QJsonObject &scan, const QString &root, const QString &expected)
{
    const QByteArray escaped = QJsonDocument(QJsonArray { root }).toJson(QJsonDocument::Compact);
    QCOMPARE(QJsonDocument(scan).toJson().replace(escaped.mid(2).chopped(2), "@/"),
        readTestFile(testDataDir() + "cli/" + expected));
}

} // namespace

class TestCatalogCli : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(writeTestFile(
            programDir() + "int.ini", readTestFile(QUORVANE_SOURCE_DIR "/src/data/int.ini")));
        QVERIFY(writeTestFile(programDir() + "pattern.ini", {}));
        // One add-on model, a skin package for it whose name does not say
        // so, and the boss package with both variants on.
        QVERIFY(writeTestFile(systemFile("Robots.int"),
            crlf({ "[Public]",
                "Object=(Name=MyMods.TinManBot,Class=Class,MetaClass=Botpack.Bot,"
                "Description=\"Tin Man\")" })));
        QVERIFY(writeTestFile(systemFile("Tin.int"),
            crlf({ "[public]", "Object=(Name=TinSkins.tinn1,Class=Texture,Description=Tin)",
                u"Object=(Name=TinSkins.tinn5Can,Class=Texture,Description=\"C\u00e4n \\ \u00bd\")"_s })));
        QVERIFY(writeTestFile(
            systemFile("skeletalcharsfix313.int"), crlf({ "[Public]", plainWar, maleWar })));
    }

    // Each standard model with its skins and faces, and the voices.
    void scansTheRealInstallation()
    {
        const QString root = realWorldDir() + "vanilla-server";
        compareScan(cli({ "--game-dir", root, "scan", "--json" }).json().toObject(),
            root + QDir::separator(), "vanilla-scan.json");
    }

    // The scan's summary; a taught pattern matches the skin file, and
    // forgetting it leaves the file unmatched again.
    void teachAndForgetRoundTrip()
    {
        const QString tin = systemFile("Tin.int");
        QCOMPARE(QString::fromUtf8(cli({ "--game-dir", gameDir(), "scan" }).out),
            QString("Class files: 2\nSkin files: 1\nVoice files: 0\nClasses: 3\nSkins: 0\nVoices: "
                    "0\nBoss mode: 0\nPatterns: 0\nUnmatched skin files: 1\n  %1 (skin type "
                    "Tin)\nErrors: 0\n")
                .arg(tin));
        QCOMPARE(scan()["Unmatched"].toArray(),
            QJsonArray({ QJsonObject { { "FilePath", tin }, { "SkinType", "Tin" } } }));

        const CliRun teach = cli({ "--game-dir", gameDir(), "teach", "tin.INT", "tin man" });
        QCOMPARE(teach.err, QString());
        QCOMPARE(teach.out, QByteArray("TinMan,Tin\n"));
        QCOMPARE(readTestFile(programDir() + "pattern.ini"), QByteArray("TinMan,Tin\r\n"));
        QCOMPARE(cli({ "patterns", "--json" }).out,
            QByteArray("[{\"Model\":\"TinMan\",\"SkinTypes\":[\"Tin\"]}]\n"));
        const QJsonObject taught = scan();
        compareScan(taught, QDir::toNativeSeparators(gameDir()), "taught-scan.json");

        QCOMPARE(cli({ "forget", "Tin" }).exitCode, 0);
        QCOMPARE(readTestFile(programDir() + "pattern.ini"), QByteArray());
        QCOMPARE(scan()["Unmatched"].toArray().size(), 1);
    }

    void bossSwitch()
    {
        QCOMPARE(cli({ "--game-dir", gameDir(), "boss" }).out, QByteArray("0\n"));
        const CliRun set = cli({ "boss", "--set", "2", "--game-dir", gameDir() });
        QCOMPARE(set.err, QString());
        QCOMPARE(set.out, QByteArray("2\n"));
        QCOMPARE(readTestFile(systemFile("skeletalcharsfix313.int")),
            crlf({ "[Public]", ';' + plainWar, maleWar }));
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        QTest::newRow("no boss package") << QStringList { "boss", "--set", "1" } << 2
                                         << "The game has no boss package file to switch: %1\n";
        QTest::newRow("mode out of range") << QStringList { "boss", "--set", "3" } << 1
                                           << "quorvane-cli: --set needs 0, 1 or 2, not '3'\n";
        QTest::newRow("teach a matched file")
            << QStringList { "teach", "Robots.int", "Tin Man" } << 2
            << "'Robots.int' is not one of the skin files that matched no model.\n";
        QTest::newRow("teach an unknown model") << QStringList { "teach", "Tin.int", "Warlord" }
                                                << 2 << "No model is described as 'Warlord'.\n";
        QTest::newRow("forget what is not there")
            << QStringList { "forget", "Tin" } << 2 << "No pattern lists the skin type 'Tin'.\n";
    }

    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        const QString boss = systemFile("skeletalcharsfix313.int");
        QVERIFY(!message.contains("%1") || QFile::remove(boss));
        const QByteArray bossBefore = readTestFile(boss);

        const CliRun run = cli(QStringList { "--game-dir", gameDir() } + arguments);
        QCOMPARE(run.err, message.contains("%1") ? message.arg(boss) : message);
        QCOMPARE(run.exitCode, exitCode);
        QCOMPARE(readTestFile(programDir() + "pattern.ini"), QByteArray());
        QCOMPARE(readTestFile(boss), bossBefore);
    }

    void savesTheUnmatchedListAndHelps()
    {
        const CliRun save = cli({ "--game-dir", gameDir(), "unmatched", "--save" });
        QCOMPARE(save.exitCode, 0);
        const QString path = QString::fromUtf8(save.out).trimmed();
        QVERIFY2(path.startsWith(programDir() + "UnMatched_Files_"), qPrintable(path));
        QVERIFY(readTestFile(path).endsWith(
            "\r\n \r\n" + systemFile("Tin.int").toUtf8() + "\r\n\r\n \r\nEnd of List\r\n"));

        for (const QString command :
            { "scan", "boss", "patterns", "teach", "forget", "unmatched" }) {
            const CliRun help = cli({ command, "--help" });
            QCOMPARE(help.exitCode, 0);
            QVERIFY(help.out.startsWith("Usage: quorvane-cli " + command.toUtf8()));
        }
    }

private:
    CliRun cli(const QStringList &arguments)
    {
        return runCli(QStringList { "--program-dir", programDir() } + arguments);
    }
    QJsonObject scan()
    {
        return cli({ "--game-dir", gameDir(), "scan", "--json" }).json().toObject();
    }
    QString programDir() const { return m_dir->filePath("program") + QDir::separator(); }
    QString gameDir() const { return m_dir->filePath("game") + QDir::separator(); }
    QString systemFile(const QString &name) const
    {
        return QDir::toNativeSeparators(gameDir() + "System/" + name);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

QTEST_GUILESS_MAIN(TestCatalogCli)
#include "test_catalogcli.moc"
