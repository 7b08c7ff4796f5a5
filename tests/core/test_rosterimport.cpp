#include "configfiles/configfile.h"
#include "configfiles/runerror.h"
#include "configfiles/textfile.h"
#include "roster/rosterimport.h"
#include "roster/valueencodings.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

#include <functional>

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

// The five sliders, so that one table can name the converters to use.
enum Slider { Skill, Accuracy, Alertness, Camping, Strafing };

QString textOf(int slider, qint16 &p, bool full)
{
    const std::function<QString()> texts[] = { [&] { return GetSkillText(p, full); },
        [&] { return GetAccuracyText(p, full); }, [&] { return GetAlertnessText(p, full); },
        [&] { return GetCampingText(p, full); }, [&] { return GetStrafingText(p, full); } };
    return texts[slider]();
}

qint16 positionOf(int slider, const QString &line)
{
    qint16 (*const readers[])(const QString &) = { GetSkillPosition, GetAccuracyPosition,
        GetAlertnessPosition, GetCampingPosition, GetStrafingPosition };
    return readers[slider](line);
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
        const auto row = [](const char *tag, const QStringList &changes,
                             const QStringList &expected, const QStringList &problems = {}) {
            QTest::newRow(tag) << changes << expected << problems;
        };
        row("reordered, any capitals",
            { "@reverse", "botaccuracy[3]=0.350000", "DIFFICULTY=7", "BotNames[0]=Zed" },
            { "BotAccuracy[3]=0.350000", "Difficulty=7", "BotNames[0]=Zed" });
        row("partial",
            { "-BotNames[4]", "-BotNames[9]", "-Difficulty", "-BotSkills", "-BotTeams[7]" }, {},
            { "Difficulty: missing", "BotNames: missing for slots 4, 9",
                "BotTeams: missing for slot 7", "BotSkills: missing" });
        const QString unread = ": cannot be read";
        row("garbled",
            { "BotTeams[2]=7", "BotTeams[4]=65536", "BotAccuracy[5]=high", "bRandomOrder=maybe",
                "Difficulty=8", "BotJumpy[3]=", "garbage", "=x", "BotNames[40]=Nobody",
                "BotNames[1] =Spaced", "@reverse", "+BotNames[0]=Second" },
            {},
            { "bRandomOrder=maybe" + unread, "Difficulty=8" + unread, "BotTeams[2]=7" + unread,
                "BotTeams[4]=65536" + unread, "BotAccuracy[5]=high" + unread,
                "BotJumpy[3]=" + unread });
        row("snapped to the controls",
            { "BotAccuracy[0]=0.230000", "BotAccuracy[1]=-0.42", "Alertness[0]=1.700000",
                "BotSkills[0]=1.500000", "BotSkills[1]=-7", "Camping[0]=0.55", "Camping[1]=-0.5",
                "StrafingAbility[0]=-0.04", "CombatStyle[0]=0.3", "CombatStyle[1]=-0.2",
                "CombatStyle[2]=1" },
            { "BotAccuracy[0]=0.250000", "BotAccuracy[1]=-0.400000", "Alertness[0]=1.000000",
                "BotSkills[0]=2.000000", "BotSkills[1]=-3.000000", "Camping[0]=0.600000",
                "Camping[1]=0.000000", "StrafingAbility[0]=0.000000", "CombatStyle[0]=0.500000",
                "CombatStyle[1]=0.000000", "CombatStyle[2]=1.000000" });
        row("the game's other spellings",
            { "BotJumpy[0]=True", "bAdjustSkill=1", "VoiceType[0]=Class'BotPack.VoiceMaleOne'",
                "VoiceType[1]=Class'", "BotNames[0]=\"Two Words\"", "BotNames[2]=\"\"" },
            { "BotJumpy[0]=1", "bAdjustSkill=True", "VoiceType[0]=BotPack.VoiceMaleOne",
                "VoiceType[1]=Class'", "BotNames[0]=Two Words", "BotNames[2]=" });
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

    // The short text for the editor, the full one for the files, which reads
    // back; accuracy and alertness positions off their step of 5 are snapped
    // toward zero.
    void sliderTexts_data()
    {
        QTest::addColumn<int>("slider");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("texts"); // short|full
        QTest::addColumn<int>("snapped");

        const auto row = [](Slider f, int p, const char *texts, int snapped) {
            QTest::addRow("%d at %d", f, p) << int(f) << p << QString(texts) << snapped;
        };
        row(Skill, 0, "-3|-3.000000", 0);
        row(Skill, 6, "3|3.000000", 6);
        row(Accuracy, 5, "0.05|0.050000", 5);
        row(Accuracy, 0, "0.0|0.000000", 0);
        row(Accuracy, 100, "1.00|1.000000", 100);
        row(Accuracy, -100, "-1.00|-1.000000", -100);
        row(Accuracy, 37, "0.35|0.350000", 35);
        row(Accuracy, 4, "0.0|0.000000", 0);
        row(Alertness, -99, "-0.95|-0.950000", -95);
        row(Camping, 5, "0.5|0.500000", 5);
        row(Camping, 10, "1.0|1.000000", 10);
        row(Strafing, -10, "-1.0|-1.000000", -10);
        row(Strafing, 10, "1.0|1.000000", 10);
    }

    void sliderTexts()
    {
        QFETCH(int, slider);
        QFETCH(int, position);
        QFETCH(QString, texts);
        QFETCH(int, snapped);
        qint16 shortPosition = qint16(position), fullPosition = qint16(position);
        const QString shortText = textOf(slider, shortPosition, false);
        QCOMPARE(shortText + '|' + textOf(slider, fullPosition, true), texts);
        QCOMPARE(fullPosition, qint16(snapped));
        QCOMPARE(positionOf(slider, "Key[0]=" + texts.section('|', 1)), qint16(snapped));
    }

    // Lines of the files read back into positions; the error number of one
    // that cannot be read.
    void linePositions_data()
    {
        QTest::addColumn<int>("slider");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("position");

        const auto row = [](Slider f, const char *line, const char *p) {
            QTest::newRow(line) << int(f) << QString(line) << QString(p);
        };
        row(Skill, "BotSkills[1]=2.999999", "5");
        row(Skill, "1.000000", "4");
        row(Accuracy, "BotAccuracy[3]=-0.350000", "-35");
        row(Accuracy, "BotAccuracy[3]=0.359999", "35");
        row(Camping, "Camping[2]=-0.500000", "5");
        row(Strafing, "Key=0.5=x", "5");
        row(Skill, "BotSkills[0]=3", "error 13");
        row(Skill, "BotSkills[0]=high.0", "error 13");
        row(Accuracy, "BotAccuracy[0]=abc", "error 13");
        row(Accuracy, "BotAccuracy[0]=9999", "error 6");
        row(Skill, "BotSkills[0]=32765.0", "error 6");
        row(Skill, "BotSkills[0]=32764.0", "32767");
        row(Skill, "BotSkills[0]=-32771.0", "-32768");
        row(Skill, "BotSkills[0]=-32772.0", "error 6");
    }

    void linePositions()
    {
        QFETCH(int, slider);
        QFETCH(QString, line);
        QFETCH(QString, position);
        try {
            QCOMPARE(QString::number(positionOf(slider, line)), position);
        } catch (const RunError &e) {
            QCOMPARE("error " + QString::number(e.number()), position);
        }
    }

    // The codes behind the editor's lists, both ways; a caption or code
    // without an entry gives the list's fallback.
    void lists()
    {
        QStringList teams;
        for (const QString &caption : TeamCaptions() + QStringList("red"))
            teams << QString("%1>%2").arg(TeamNumber(caption)).arg(*TeamIndex(TeamNumber(caption)));
        QCOMPARE(teams, QStringList({ "255>0", "0>1", "1>2", "2>3", "3>4", "0>1" }));
        QCOMPARE(TeamIndex(4), std::nullopt);

        QCOMPARE(QStringList({ GetWeaponCode(4), GetWeaponCode(9), GetWeaponCode(0),
                     GetWeaponCode(15), GetWeaponCode(-1) }),
            QStringList({ "BotPack.UT_FlakCannon", "BotPack.WarHeadLauncher", "", "", "" }));
        for (int i = 0; i < 15; ++i)
            QCOMPARE(WeaponIndex(GetWeaponCode(i)), std::optional<int>(i));
        // The default roster spells weapons "Botpack.": no entry matches.
        QCOMPARE(WeaponIndex("Botpack.UT_FlakCannon"), std::nullopt);

        const QStringList styles { "0.500000", "-1.000000", "1.000000", "-0.500000", "0.000000" };
        for (int i = 0; i < styles.size(); ++i) {
            QCOMPARE(GetCombatStyleValue(CombatStyleCaptions().at(i)), styles.at(i));
            QCOMPARE(CombatStyleIndex(styles.at(i)), std::optional<int>(i));
        }
        QCOMPARE(GetCombatStyleValue("normal") + CombatStyleCaptions().at(4), QString("Normal"));
        QCOMPARE(CombatStyleIndex("0.5"), std::nullopt);

        // The first entry with the caption wins; one without a class, or
        // none, gives (NONE).
        const QList<VoiceEntry> voices { { "Male One", "BotPack.VoiceMaleOne", VoiceMale },
            { "Silent", "", VoiceMale }, { "Male One", "Other.VoiceMaleOne", VoiceMale } };
        QStringList codes;
        for (const char *caption : { "Male One", "male one", "Silent", "Nobody" })
            codes.append(GetVoiceCode(caption, voices));
        QCOMPARE(codes, QStringList({ "BotPack.VoiceMaleOne", "(NONE)", "(NONE)", "(NONE)" }));
    }
};

QTEST_GUILESS_MAIN(TestRosterImport)
#include "test_rosterimport.moc"
