#include "configfiles/configfile.h"
#include "roster/rosterimport.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QRegularExpression>
#include <QTest>

namespace {

// The roster as a configuration holds it: "BotAccuracy[17]=0.200000".
QStringList fileLines(BotRoster roster)
{
    return ConfigurationLines("x.qvn", roster);
}

// The key lines of the default roster's section, changed: "Key=value"
// replaces the line of that key in any capitals (or is added), "+Key=value"
// is added, "-Key" removes the key's lines (of every slot without an index),
// "@reverse" turns the order round.
QStringList section(const QStringList &changes)
{
    BotRoster defaults;
    SetDefaults(defaults);
    QStringList lines = fileLines(defaults);
    lines = lines.mid(lines.indexOf("[Botpack.ChallengeBotInfo]") + 1);
    const auto keyOf = [](const QString &line) { return line.section('=', 0, 0); };
    for (const QString &change : changes) {
        if (change == "@reverse")
            std::reverse(lines.begin(), lines.end());
        else if (change.startsWith('+'))
            lines.append(change.mid(1));
        else if (change.startsWith('-'))
            lines.removeIf([&](const QString &line) {
                return keyOf(line) == change.mid(1) || line.startsWith(change.mid(1) + '[');
            });
        else if (const qsizetype at = lines.indexOf(
                     QRegularExpression('^' + QRegularExpression::escape(keyOf(change)) + "=.*",
                         QRegularExpression::CaseInsensitiveOption));
                 at >= 0)
            lines[at] = change;
        else
            lines.append(change);
    }
    return lines;
}

} // namespace

class TestRosterImport : public QObject
{
    Q_OBJECT

private slots:
    // The game's own list: its accuracies, combat styles and list-wide
    // values are not the defaults.
    void realUserIni()
    {
        const QString path = realWorldDir() + "vanilla-server/System/User.ini";
        const RosterImport import = ImportRoster(path, QDate(2024, 5, 1));
        QVERIFY(import.sectionFound);
        QCOMPARE(import.problems, QStringList());
        const QStringList lines = fileLines(import.roster);
        for (const char *expected :
            { "BotAccuracy[17]=0.200000", "BotAccuracy[18]=0.900000", "BotAccuracy[24]=1.000000",
                "CombatStyle[16]=0.500000", "CombatStyle[20]=-1.000000", "Alertness[18]=-0.300000",
                "Camping[28]=0.500000", "StrafingAbility[21]=1.000000", "BotJumpy[30]=1",
                "Difficulty=3", "bRandomOrder=True", "bAdjustSkill=False", "BotNames[31]=Kragoth",
                "BotFaces[0]=CommandoSkins.Blake", "FavoriteWeapon[16]=Botpack.UT_FlakCannon" })
            QVERIFY2(lines.contains(expected), expected);
        QCOMPARE(import.roster.Description,
            "Imported from " + QDir::toNativeSeparators(path) + " on 2024-05-01");
    }

    void readsByKey_data()
    {
        QTest::addColumn<QStringList>("changes");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QStringList>("problems");
        QTest::newRow("reordered, any capitals")
            << QStringList { "@reverse", "botaccuracy[3]=0.350000", "DIFFICULTY=7",
                   "BotNames[0]=Zed" }
            << QStringList { "BotAccuracy[3]=0.350000", "Difficulty=7", "BotNames[0]=Zed",
                   "BotNames[1]=Aryss" }
            << QStringList();
        QTest::newRow("partial: defaults kept")
            << QStringList { "-BotNames[4]", "-BotNames[9]", "-Difficulty", "-BotSkills",
                   "-BotTeams[7]" }
            << QStringList { "BotNames[4]=Cryss", "BotNames[9]=Kira", "Difficulty=0",
                   "BotSkills[5]=-3.000000" }
            << QStringList { "Difficulty: missing", "BotNames: missing for slots 4, 9",
                   "BotTeams: missing for slot 7", "BotSkills: missing" };
        QTest::newRow("garbled")
            << QStringList { "BotTeams[2]=7", "BotTeams[4]=65536", "BotAccuracy[5]=high",
                   "bRandomOrder=maybe", "Difficulty=8", "BotJumpy[3]=", "garbage", "=x",
                   "BotNames[40]=Nobody", "BotNames[1] =Spaced", "@reverse", "+BotNames[0]=Second" }
            << QStringList { "BotTeams[2]=255", "BotTeams[4]=255", "BotAccuracy[5]=0.000000",
                   "bRandomOrder=False", "Difficulty=0", "BotJumpy[3]=0", "BotNames[1]=Aryss",
                   "BotNames[0]=Archon" }
            << QStringList { "bRandomOrder=maybe: cannot be read", "Difficulty=8: cannot be read",
                   "BotTeams[2]=7: cannot be read", "BotTeams[4]=65536: cannot be read",
                   "BotAccuracy[5]=high: cannot be read", "BotJumpy[3]=: cannot be read" };
        QTest::newRow("snapped to the controls")
            << QStringList { "BotAccuracy[0]=0.230000", "BotAccuracy[1]=-0.42",
                   "Alertness[0]=1.700000", "BotSkills[0]=1.500000", "BotSkills[1]=-7",
                   "Camping[0]=0.55", "Camping[1]=-0.5", "StrafingAbility[0]=-0.04",
                   "CombatStyle[0]=0.3", "CombatStyle[1]=-0.2", "CombatStyle[2]=1" }
            << QStringList { "BotAccuracy[0]=0.250000", "BotAccuracy[1]=-0.400000",
                   "Alertness[0]=1.000000", "BotSkills[0]=2.000000", "BotSkills[1]=-3.000000",
                   "Camping[0]=0.600000", "Camping[1]=0.000000", "StrafingAbility[0]=0.000000",
                   "CombatStyle[0]=0.500000", "CombatStyle[1]=0.000000", "CombatStyle[2]=1.000000" }
            << QStringList();
        QTest::newRow("the game's other spellings")
            << QStringList { "BotJumpy[0]=True", "bAdjustSkill=1",
                   "VoiceType[0]=Class'BotPack.VoiceMaleOne'", "BotNames[0]=\"Two Words\"",
                   "BotNames[2]=\"\"" }
            << QStringList { "BotJumpy[0]=1", "bAdjustSkill=True",
                   "VoiceType[0]=BotPack.VoiceMaleOne", "BotNames[0]=Two Words", "BotNames[2]=" }
            << QStringList();
    }

    void readsByKey()
    {
        QFETCH(QStringList, changes);
        QFETCH(QStringList, expected);
        QFETCH(QStringList, problems);
        const RosterImport import = ReadBotSection(section(changes));
        QCOMPARE(import.problems, problems);
        const QStringList lines = fileLines(import.roster);
        for (const QString &line : expected)
            QVERIFY2(lines.contains(line), qPrintable(line));
    }

    // However much is missing, one message of a readable length.
    void reportsInOneMessage_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("ending");
        QTest::newRow("twenty") << 20 << "Problem 18\r\nProblem 19";
        QTest::newRow("twenty-one") << 21 << "Problem 19\r\n... and 1 more";
    }

    void reportsInOneMessage()
    {
        QFETCH(int, count);
        QFETCH(QString, ending);
        ScriptedPrompt prompt;
        RosterImport import;
        import.sectionFound = true;
        for (int i = 0; i < count; ++i)
            import.problems.append(QString("Problem %1").arg(i));
        ReportImportProblems(import, "/ut/System/User.ini");
        QCOMPARE(prompt.messages().size(), 1);
        QVERIFY2(prompt.messages().first().text.endsWith(ending),
            qPrintable(prompt.messages().first().text));
    }
};

QTEST_GUILESS_MAIN(TestRosterImport)
#include "test_rosterimport.moc"
