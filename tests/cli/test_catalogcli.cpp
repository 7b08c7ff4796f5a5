#include "testfiles.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Run
{
    int exitCode = -1;
    QByteArray out;
    QString err;
    QJsonObject json() const { return QJsonDocument::fromJson(out).object(); }
};

const QString plainWar = u"Object=(Name=SkeletalCharsFix313.WarBossFixed,Class=Class,"
                         "MetaClass=Botpack.Bot,Description=\"WarBoss [Fixed]\")"_s;
const QString maleWar = u"Object=(Name=SkeletalCharsFix313.WarBossFixedMale,Class=Class,"
                        "MetaClass=Botpack.Bot,Description=\"WarBoss [Fixed/Male Voices]\")"_s;

QJsonObject classNamed(const QJsonObject &catalogue, const QString &className)
{
    for (const QJsonValue &model : catalogue["Classes"_L1].toArray()) {
        if (model["ClassName"_L1] == className)
            return model.toObject();
    }
    return {};
}

// "Name|Description" of each entry of `array`.
QStringList pairs(const QJsonArray &array, const char *name)
{
    QStringList found;
    for (const QJsonValue &entry : array)
        found.append(entry[QLatin1String(name)].toString() + u'|' + entry["Description"_L1].toString());
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
        QVERIFY(m_dir->isValid());
        QVERIFY(writeTestFile(programDir() + u"int.ini"_s,
            readTestFile(QStringLiteral(QUORVANE_SOURCE_DIR "/src/data/int.ini"))));
        QVERIFY(writeTestFile(programDir() + u"pattern.ini"_s, {}));
        // One add-on model, a skin package for it whose name does not say
        // so, and the boss package with both variants on.
        QVERIFY(writeTestFile(systemFile(u"Robots.int"_s),
            crlf({u"[Public]"_s, u"Object=(Name=MyMods.TinManBot,Class=Class,MetaClass=Botpack.Bot,"
                                 "Description=\"Tin Man\")"_s})));
        QVERIFY(writeTestFile(systemFile(u"Tin.int"_s),
            crlf({u"[public]"_s, u"Object=(Name=TinSkins.tinn1,Class=Texture,Description=Tin)"_s,
                u"Object=(Name=TinSkins.tinn5Can,Class=Texture,Description=\"C\u00e4n \\ \u00bd\")"_s})));
        QVERIFY(writeTestFile(systemFile(u"skeletalcharsfix313.int"_s),
            crlf({u"[Public]"_s, plainWar, maleWar})));
    }

    void scansTheRealInstallation_data()
    {
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("model"); // Description|SkinType
        QTest::addColumn<QString>("skin");  // SkinName|Description
        QTest::addColumn<QString>("face");  // FaceName|Description
        QTest::newRow("male commando") << u"BotPack.TMale1Bot"_s << u"Male Commando|commando"_s
                                       << u"CommandoSkins.cmdo|Commando"_s
                                       << u"CommandoSkins.cmdo2Blake|Blake"_s;
        QTest::newRow("male soldier") << u"BotPack.TMale2Bot"_s << u"Male Soldier|soldier"_s
                                      << u"SoldierSkins.blkt|Marine"_s
                                      << u"SoldierSkins.blkt4Malcom|Malcom"_s;
        QTest::newRow("female commando")
            << u"BotPack.TFemale1Bot"_s << u"Female Commando|fcommando"_s
            << u"FCommandoSkins.cmdo|Commando"_s << u"FCommandoSkins.cmdo4ivana|Ivana"_s;
        QTest::newRow("female soldier") << u"BotPack.TFemale2Bot"_s << u"Female Soldier|sgirl"_s
                                        << u"SGirlSkins.army|Soldier"_s
                                        << u"SGirlSkins.army4Lauren|Lauren"_s;
        QTest::newRow("boss") << u"BotPack.TBossBot"_s << u"Boss|boss"_s << u"BossSkins.Boss|Boss"_s
                              << u"BossSkins.Boss4Xan|Xan"_s;
    }

    void scansTheRealInstallation()
    {
        QFETCH(QString, className);
        QFETCH(QString, model);
        QFETCH(QString, skin);
        QFETCH(QString, face);
        if (m_real.isEmpty())
            m_real = cli({u"--game-dir"_s, realWorldDir() + u"vanilla-server"_s, u"scan"_s,
                              u"--json"_s})
                         .json();
        QCOMPARE(m_real.keys(),
            (QStringList {u"BossMode"_s, u"ClassFiles"_s, u"Classes"_s, u"Errors"_s,
                u"Patterns"_s, u"SkinFiles"_s, u"Unmatched"_s, u"VoiceFiles"_s, u"Voices"_s}));
        QCOMPARE(m_real["Errors"_L1].toArray(), QJsonArray());
        QCOMPARE(m_real["BossMode"_L1].toInt(), 2);
        QCOMPARE(m_real["Classes"_L1].toArray().size(), 5);
        QCOMPARE(pairs(m_real["Voices"_L1].toArray(), "VoiceClass"),
            (QStringList {u"BotPack.VoiceMaleOne|Male One"_s, u"BotPack.VoiceFemaleOne|Female One"_s,
                u"BotPack.VoiceMaleTwo|Male Two"_s, u"BotPack.VoiceFemaleTwo|Female Two"_s,
                u"BotPack.VoiceBoss|Robot"_s}));
        QCOMPARE(m_real["Voices"_L1][4]["VoiceKind"_L1].toInt(), 2);

        const QJsonObject found = classNamed(m_real, className);
        QCOMPARE(found["Description"_L1].toString() + u'|' + found["SkinType"_L1].toString(), model);
        const QJsonArray skins = found["Skins"_L1].toArray();
        const qsizetype at = pairs(skins, "SkinName").indexOf(skin);
        QVERIFY2(at >= 0, qPrintable(pairs(skins, "SkinName").join(u", "_s)));
        QVERIFY(pairs(skins[at]["Faces"_L1].toArray(), "FaceName").contains(face));
    }

    void summary()
    {
        const Run scan = cli({u"--game-dir"_s, gameDir(), u"scan"_s});
        QCOMPARE(scan.exitCode, 0);
        QCOMPARE(QString::fromUtf8(scan.out),
            u"Class files: 2\nSkin files: 1\nVoice files: 0\nClasses: 3\nSkins: 0\nVoices: 0\n"
            "Boss mode: 0\nPatterns: 0\nUnmatched skin files: 1\n  %1 (skin type Tin)\n"
            "Errors: 0\n"_s.arg(systemFile(u"Tin.int"_s)));
    }

    void bossSwitch_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("plain") << 1 << QStringList {u"[Public]"_s, plainWar, u';' + maleWar};
        QTest::newRow("male") << 2 << QStringList {u"[Public]"_s, u';' + plainWar, maleWar};
        QTest::newRow("both") << 0 << QStringList {u"[Public]"_s, plainWar, maleWar};
    }

    void bossSwitch()
    {
        QFETCH(int, mode);
        QFETCH(QStringList, lines);
        QCOMPARE(cli({u"--game-dir"_s, gameDir(), u"boss"_s}).out, QByteArray("0\n"));
        const Run set = cli({u"boss"_s, u"--set"_s, QString::number(mode), u"--game-dir"_s, gameDir()});
        QCOMPARE(set.err, QString());
        QCOMPARE(set.out, QByteArray::number(mode) + '\n');
        QCOMPARE(readTestFile(systemFile(u"skeletalcharsfix313.int"_s)), crlf(lines));
    }

    void teachAndForgetRoundTrip()
    {
        const QString tin = systemFile(u"Tin.int"_s);
        QCOMPARE(scan()["Unmatched"_L1].toArray(),
            (QJsonArray {QJsonObject {{u"FilePath"_s, tin}, {u"SkinType"_s, u"Tin"_s}}}));

        const Run teach = cli({u"--game-dir"_s, gameDir(), u"teach"_s, u"tin.INT"_s, u"tin man"_s});
        QCOMPARE(teach.err, QString());
        QCOMPARE(teach.out, QByteArray("TinMan,Tin\n"));
        QCOMPARE(readTestFile(programDir() + u"pattern.ini"_s), QByteArray("TinMan,Tin\r\n"));
        QCOMPARE(cli({u"patterns"_s, u"--json"_s}).out,
            QByteArray("[{\"Model\":\"TinMan\",\"SkinTypes\":[\"Tin\"]}]\n"));

        const QJsonObject taught = scan();
        QCOMPARE(taught["Unmatched"_L1].toArray(), QJsonArray());
        const QJsonArray skins = classNamed(taught, u"MyMods.TinManBot"_s)["Skins"_L1].toArray();
        QCOMPARE(pairs(skins, "SkinName"), QStringList {u"TinSkins.tinn|Tin"_s});
        QCOMPARE(pairs(skins[0]["Faces"_L1].toArray(), "FaceName"),
            QStringList {u"TinSkins.tinn5Can|C\u00e4n \\ \u00bd"_s});

        QCOMPARE(cli({u"forget"_s, u"Tin"_s}).exitCode, 0);
        QCOMPARE(readTestFile(programDir() + u"pattern.ini"_s), QByteArray());
        QCOMPARE(scan()["Unmatched"_L1].toArray().size(), 1);
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        QTest::newRow("no boss package") << QStringList {u"boss"_s, u"--set"_s, u"1"_s} << 2
                                         << u"The game has no boss package file to switch: %1\n"_s;
        QTest::newRow("mode out of range") << QStringList {u"boss"_s, u"--set"_s, u"3"_s} << 1
                                           << u"quorvane-cli: --set needs 0, 1 or 2, not '3'\n"_s;
        QTest::newRow("teach a matched file")
            << QStringList {u"teach"_s, u"Robots.int"_s, u"Tin Man"_s} << 2
            << u"'Robots.int' is not one of the skin files that matched no model.\n"_s;
        QTest::newRow("teach an unknown model")
            << QStringList {u"teach"_s, u"Tin.int"_s, u"Warlord"_s} << 2
            << u"No model is described as 'Warlord'.\n"_s;
        QTest::newRow("forget what is not there") << QStringList {u"forget"_s, u"Tin"_s} << 2
                                                  << u"No pattern lists the skin type 'Tin'.\n"_s;
    }

    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        const QString boss = systemFile(u"skeletalcharsfix313.int"_s);
        if (message.contains(u"%1"_s))
            QVERIFY(QFile::remove(boss));
        const QByteArray bossBefore = readTestFile(boss);

        const Run run = cli(QStringList {u"--game-dir"_s, gameDir()} + arguments);
        QCOMPARE(run.err, message.contains(u"%1"_s) ? message.arg(boss) : message);
        QCOMPARE(run.exitCode, exitCode);
        QCOMPARE(readTestFile(programDir() + u"pattern.ini"_s), QByteArray());
        QCOMPARE(readTestFile(boss), bossBefore);
    }

    void savesTheUnmatchedListAndHelps()
    {
        const Run save = cli({u"--game-dir"_s, gameDir(), u"unmatched"_s, u"--save"_s});
        QCOMPARE(save.exitCode, 0);
        const QString path = QString::fromUtf8(save.out).trimmed();
        QVERIFY2(path.startsWith(programDir() + u"UnMatched_Files_"_s), qPrintable(path));
        QVERIFY(readTestFile(path).endsWith(
            "\r\n \r\n" + systemFile(u"Tin.int"_s).toUtf8() + "\r\n\r\n \r\nEnd of List\r\n"));

        for (const QString &command : {u"scan"_s, u"boss"_s, u"patterns"_s, u"teach"_s,
                 u"forget"_s, u"unmatched"_s}) {
            const Run help = cli({command, u"--help"_s});
            QCOMPARE(help.exitCode, 0);
            QVERIFY(help.out.startsWith("Usage: quorvane-cli " + command.toUtf8()));
        }
    }

private:
    Run cli(const QStringList &arguments)
    {
        QProcess process;
        process.start(QStringLiteral(QUORVANE_CLI),
            QStringList {u"--program-dir"_s, programDir()} + arguments);
        if (!process.waitForFinished(60000))
            qWarning() << "quorvane-cli did not finish:" << arguments;
        return {process.exitCode(), process.readAllStandardOutput(),
            QString::fromUtf8(process.readAllStandardError())};
    }
    QJsonObject scan() { return cli({u"--game-dir"_s, gameDir(), u"scan"_s, u"--json"_s}).json(); }
    QString programDir() const { return m_dir->filePath(u"program"_s) + QDir::separator(); }
    QString gameDir() const { return m_dir->filePath(u"game"_s) + QDir::separator(); }
    QString systemFile(const QString &name) const
    {
        return QDir::toNativeSeparators(gameDir() + u"System/"_s + name);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QJsonObject m_real;
};

QTEST_GUILESS_MAIN(TestCatalogCli)
#include "test_catalogcli.moc"
