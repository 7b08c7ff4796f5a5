#include "clirun.h"
#include "testfiles.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString plainWar = "Object=(Name=SkeletalCharsFix313.WarBossFixed,Class=Class,"
                         "MetaClass=Botpack.Bot,Description=\"WarBoss [Fixed]\")";
const QString maleWar = "Object=(Name=SkeletalCharsFix313.WarBossFixedMale,Class=Class,"
                        "MetaClass=Botpack.Bot,Description=\"WarBoss [Fixed/Male Voices]\")";

QJsonObject classNamed(const QJsonObject &catalogue, const QString &className)
{
    for (const QJsonValue &model : catalogue["Classes"].toArray()) {
        if (model["ClassName"] == className)
            return model.toObject();
    }
    return {};
}

// "Name|Description" of each entry of `array`.
QStringList pairs(const QJsonArray &array, const QString &name)
{
    QStringList found;
    for (const QJsonValue &entry : array)
        found.append(entry[name].toString() + '|' + entry["Description"].toString());
    return found;
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

    // Model|skin type|a skin|one of its faces, for each standard model.
    void scansTheRealInstallation()
    {
        const QJsonObject real
            = cli({ "--game-dir", realWorldDir() + "vanilla-server", "scan", "--json" })
                  .json()
                  .toObject();
        QCOMPARE(real.keys(),
            QStringList({ "BossMode", "ClassFiles", "Classes", "Errors", "Patterns", "SkinFiles",
                "Unmatched", "VoiceFiles", "Voices" }));
        QCOMPARE(real["Errors"].toArray(), QJsonArray());
        QCOMPARE(real["BossMode"].toInt(), 2);
        QCOMPARE(real["Classes"].toArray().size(), 5);
        QCOMPARE(pairs(real["Voices"].toArray(), "VoiceClass"),
            QStringList({ "BotPack.VoiceMaleOne|Male One", "BotPack.VoiceFemaleOne|Female One",
                "BotPack.VoiceMaleTwo|Male Two", "BotPack.VoiceFemaleTwo|Female Two",
                "BotPack.VoiceBoss|Robot" }));
        QCOMPARE(real["Voices"][4]["VoiceKind"].toInt(), 2);

        const QStringList models { "BotPack.TMale1Bot|Male Commando|commando|CommandoSkins.cmdo|"
                                   "Commando|CommandoSkins.cmdo2Blake|Blake",
            "BotPack.TMale2Bot|Male Soldier|soldier|SoldierSkins.blkt|Marine|"
            "SoldierSkins.blkt4Malcom|Malcom",
            "BotPack.TFemale1Bot|Female Commando|fcommando|FCommandoSkins.cmdo|Commando|"
            "FCommandoSkins.cmdo4ivana|Ivana",
            "BotPack.TFemale2Bot|Female Soldier|sgirl|SGirlSkins.army|Soldier|"
            "SGirlSkins.army4Lauren|Lauren",
            "BotPack.TBossBot|Boss|boss|BossSkins.Boss|Boss|BossSkins.Boss4Xan|Xan" };
        for (const QString &expected : models) {
            const QJsonObject found = classNamed(real, expected.section('|', 0, 0));
            const QJsonArray skins = found["Skins"].toArray();
            const qsizetype at = pairs(skins, "SkinName").indexOf(expected.section('|', 3, 4));
            QVERIFY2(at >= 0, qPrintable(expected));
            const QString faces = pairs(skins[at]["Faces"].toArray(), "FaceName").join(',');
            QCOMPARE(found["Description"].toString() + '|' + found["SkinType"].toString(),
                expected.section('|', 1, 2));
            QVERIFY2(faces.contains(expected.section('|', 5)), qPrintable(faces));
        }
    }

    void summary()
    {
        const CliRun scan = cli({ "--game-dir", gameDir(), "scan" });
        QCOMPARE(scan.exitCode, 0);
        QCOMPARE(QString::fromUtf8(scan.out),
            QString("Class files: 2\nSkin files: 1\nVoice files: 0\nClasses: 3\nSkins: 0\nVoices: "
                    "0\nBoss mode: 0\nPatterns: 0\nUnmatched skin files: 1\n  %1 (skin type "
                    "Tin)\nErrors: 0\n")
                .arg(systemFile("Tin.int")));
    }

    void bossSwitch_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("plain") << 1 << QStringList { "[Public]", plainWar, ';' + maleWar };
        QTest::newRow("male") << 2 << QStringList { "[Public]", ';' + plainWar, maleWar };
        QTest::newRow("both") << 0 << QStringList { "[Public]", plainWar, maleWar };
    }

    void bossSwitch()
    {
        QFETCH(int, mode);
        QFETCH(QStringList, lines);
        QCOMPARE(cli({ "--game-dir", gameDir(), "boss" }).out, QByteArray("0\n"));
        const CliRun set = cli({ "boss", "--set", QString::number(mode), "--game-dir", gameDir() });
        QCOMPARE(set.err, QString());
        QCOMPARE(set.out, QByteArray::number(mode) + '\n');
        QCOMPARE(readTestFile(systemFile("skeletalcharsfix313.int")), crlf(lines));
    }

    void teachAndForgetRoundTrip()
    {
        const QString tin = systemFile("Tin.int");
        QCOMPARE(scan()["Unmatched"].toArray(),
            QJsonArray({ QJsonObject { { "FilePath", tin }, { "SkinType", "Tin" } } }));

        const CliRun teach = cli({ "--game-dir", gameDir(), "teach", "tin.INT", "tin man" });
        QCOMPARE(teach.err, QString());
        QCOMPARE(teach.out, QByteArray("TinMan,Tin\n"));
        QCOMPARE(readTestFile(programDir() + "pattern.ini"), QByteArray("TinMan,Tin\r\n"));
        QCOMPARE(cli({ "patterns", "--json" }).out,
            QByteArray("[{\"Model\":\"TinMan\",\"SkinTypes\":[\"Tin\"]}]\n"));

        const QJsonObject taught = scan();
        QCOMPARE(taught["Unmatched"].toArray(), QJsonArray());
        const QJsonArray skins = classNamed(taught, "MyMods.TinManBot")["Skins"].toArray();
        QCOMPARE(pairs(skins, "SkinName"), QStringList { "TinSkins.tinn|Tin" });
        QCOMPARE(pairs(skins[0]["Faces"].toArray(), "FaceName"),
            QStringList { u"TinSkins.tinn5Can|C\u00e4n \\ \u00bd"_s });

        QCOMPARE(cli({ "forget", "Tin" }).exitCode, 0);
        QCOMPARE(readTestFile(programDir() + "pattern.ini"), QByteArray());
        QCOMPARE(scan()["Unmatched"].toArray().size(), 1);
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
