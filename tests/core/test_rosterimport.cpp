#include "configfiles/configfile.h"
#include "configfiles/textfile.h"
#include "roster/rosterimport.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

namespace {

const QString Header = "[Botpack.ChallengeBotInfo]";

// The section as a configuration of the roster holds it.
QStringList sectionOf(BotRoster roster)
{
    const QStringList lines = ConfigurationLines("x.qvn", roster);
    return lines.mid(lines.indexOf(Header) + 1);
}

// The default roster's section, changed: "Key=value" replaces the line of
// that key in any capitals (or is added), "+Key=value" is added, "-Key"
// removes the key's lines (of every slot without an index), "@reverse"
// turns the order round.
QStringList section(const QStringList &changes)
{
    BotRoster defaults;
    SetDefaults(defaults);
    QStringList lines = sectionOf(defaults);
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
    // The game's own list, whose accuracies, combat styles and list-wide
    // values are not the defaults, reads back as the game wrote it.
    void realUserIni()
    {
        const QString path = realWorldDir() + "vanilla-server/System/User.ini";
        const RosterImport import = ImportRoster(path, QDate(2024, 5, 1));
        QVERIFY(import.sectionFound);
        QCOMPARE(import.problems, QStringList());
        const QStringList userIni = readAnsiLines(path);
        QCOMPARE(sectionOf(import.roster), userIni.mid(userIni.indexOf(Header) + 1, 451));
        QCOMPARE(import.roster.Description,
            "Imported from " + QDir::toNativeSeparators(path) + " on 2024-05-01");
    }

    // Keys in any order and capitals; what is missing or cannot be read
    // keeps the default list's value. "expected" changes the default section.
    void readsByKey_data()
    {
        QTest::addColumn<QStringList>("changes");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QStringList>("problems");
        QTest::newRow("reordered, any capitals")
            << QStringList { "@reverse", "botaccuracy[3]=0.350000", "DIFFICULTY=7",
                   "BotNames[0]=Zed" }
            << QStringList { "BotAccuracy[3]=0.350000", "Difficulty=7", "BotNames[0]=Zed" }
            << QStringList();
        QTest::newRow("partial") << QStringList { "-BotNames[4]", "-BotNames[9]", "-Difficulty",
            "-BotSkills", "-BotTeams[7]" }
                                 << QStringList()
                                 << QStringList { "Difficulty: missing",
                                        "BotNames: missing for slots 4, 9",
                                        "BotTeams: missing for slot 7", "BotSkills: missing" };
        QTest::newRow("garbled") << QStringList { "BotTeams[2]=7", "BotTeams[4]=65536",
            "BotAccuracy[5]=high", "bRandomOrder=maybe", "Difficulty=8", "BotJumpy[3]=", "garbage",
            "=x", "BotNames[40]=Nobody", "BotNames[1] =Spaced", "@reverse", "+BotNames[0]=Second" }
                                 << QStringList()
                                 << QStringList { "bRandomOrder=maybe: cannot be read",
                                        "Difficulty=8: cannot be read",
                                        "BotTeams[2]=7: cannot be read",
                                        "BotTeams[4]=65536: cannot be read",
                                        "BotAccuracy[5]=high: cannot be read",
                                        "BotJumpy[3]=: cannot be read" };
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
        QCOMPARE(sectionOf(import.roster), section(expected));
    }

    // However much is missing, one message of a readable length; nothing
    // when nothing is.
    void reportsInOneMessage()
    {
        ScriptedPrompt prompt;
        QStringList problems;
        for (int i = 0; i < 21; ++i)
            problems.append(QString("Problem %1").arg(i));
        RosterImport import;
        import.sectionFound = true;
        for (const qsizetype count : { 0, 20, 21 }) {
            import.problems = problems.first(count);
            ReportImportProblems(import, "/ut/User.ini");
        }
        import.sectionFound = false;
        ReportImportProblems(import, "/ut/User.ini");
        const QString file = QDir::toNativeSeparators("/ut/User.ini");
        const QString some = "Import from Game|Some values of the bot list in " + file
            + " were missing or could not be read; the imported list has the default list's "
              "values in their place:\r\n\r\n"
            + problems.first(20).join("\r\n");
        QCOMPARE(prompt.transcript(),
            QStringList({ some, some + "\r\n... and 1 more",
                "Import from Game|Can't find the " + Header + " section in " + file
                    + ".  Nothing was imported." }));
    }
};

QTEST_GUILESS_MAIN(TestRosterImport)
#include "test_rosterimport.moc"
