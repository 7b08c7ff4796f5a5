#include "configfiles/configfile.h"
#include "configfiles/runerror.h"
#include "configfiles/textfile.h"
#include "roster/rosterimport.h"
#include "roster/valueencodings.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QDir>
#include <QTest>

namespace {

const QString Header = "[Botpack.ChallengeBotInfo]";

// The section as a configuration of the roster holds it.
QStringList sectionOf(BotRoster roster)
{
    const QStringList lines = ConfigurationLines("x.qvn", roster);
    return lines.mid(lines.indexOf(Header) + 1);
}

// The default roster's section, changed: "Key=value" takes the place of the
// lines of that key in any capitals, "+Key=value" is added beside them,
// "-Key" removes them (of every slot without an index), "@reverse" turns the
// order round.
QStringList section(const QStringList &changes)
{
    BotRoster defaults;
    SetDefaults(defaults);
    QStringList lines = sectionOf(defaults);
    for (const QString &change : changes) {
        if (change == "@reverse") {
            std::reverse(lines.begin(), lines.end());
            continue;
        }
        const bool add = change.startsWith('+'), remove = change.startsWith('-');
        const QString key = change.section('=', 0, 0).mid(remove ? 1 : 0);
        if (!add)
            lines.removeIf([&](const QString &line) {
                return line.section('=', 0, 0).compare(key, Qt::CaseInsensitive) == 0
                    || line.startsWith(key + '[');
            });
        if (!remove)
            lines.append(change.mid(add ? 1 : 0));
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
        QCOMPARE(import.problems, QStringList());
        const QStringList userIni = readAnsiLines(path);
        QCOMPARE(sectionOf(import.roster), userIni.mid(userIni.indexOf(Header) + 1, 451));
        QCOMPARE(import.roster.Description,
            "Imported from " + QDir::toNativeSeparators(path) + " on 2024-05-01");
    }

    // Keys in any order and capitals; what is missing or cannot be read
    // keeps the default list's value and is said. Each case's problems, then
    // the lines of the list read that are not the default list's.
    void readsByKey()
    {
        const QStringList defaults = section({});
        QStringList found;
        for (const QStringList &changes :
            QList<QStringList> {
                { "@reverse", "botaccuracy[3]=0.350000", "DIFFICULTY=7", "BotNames[0]=Zed" },
                { "-BotNames[4]", "-BotNames[9]", "-Difficulty", "-BotSkills", "-BotTeams[7]" },
                { "BotTeams[2]=7", "BotTeams[4]=65536", "BotAccuracy[5]=high", "bRandomOrder=maybe",
                    "Difficulty=8", "BotJumpy[3]=", "garbage", "=x", "BotNames[40]=Nobody",
                    "BotNames[1] =Spaced", "@reverse", "+BotNames[0]=Second" },
                // snapped to the controls
                { "BotAccuracy[0]=0.230000", "BotAccuracy[1]=-0.42", "Alertness[0]=1.700000",
                    "BotSkills[0]=1.500000", "BotSkills[1]=-7", "Camping[0]=0.55",
                    "Camping[1]=-0.5", "StrafingAbility[0]=-0.04", "CombatStyle[0]=0.3",
                    "CombatStyle[1]=-0.2", "CombatStyle[2]=1" },
                // the game's other spellings
                { "BotJumpy[0]=True", "bAdjustSkill=1", "VoiceType[0]=Class'BotPack.VoiceMaleOne'",
                    "VoiceType[1]=Class'", "BotNames[0]=\"Two Words\"", "BotNames[2]=\"\"" } }) {
            const RosterImport import = ReadBotSection(section(changes));
            found << changes.join(' ');
            for (const QString &problem : import.problems)
                found << "  problem " + problem;
            const QStringList read = sectionOf(import.roster);
            for (qsizetype i = 0; i < read.size(); ++i) {
                if (read.at(i) != defaults.value(i))
                    found << "  read " + read.at(i);
            }
        }
        QCOMPARE(found, testDataLines("roster/reads-by-key.txt"));
    }

    // However much is missing, one message of a readable length; nothing
    // when nothing is, and another when there is no section at all.
    void reportsInOneMessage()
    {
        ScriptedPrompt prompt;
        QStringList problems;
        for (int i = 0; i < 21; ++i)
            problems.append(QString("Problem %1").arg(i));
        for (const qsizetype count : { 0, 20, 21, -1 })
            ReportImportProblems(
                { {}, problems.first(qMax(count, 0)), count >= 0 }, "/ut/User.ini");
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

    // Each slider's short text for the editor and full one for the files,
    // which reads back; accuracy and alertness positions off their step of 5
    // are snapped toward zero. Then lines of the files read back into
    // positions, or the error number of one that cannot be read.
    void sliders()
    {
        const struct
        {
            const char *name;
            QString (*text)(qint16 &, bool);
            qint16 (*read)(const QString &);
            QList<qint16> positions;
            QStringList lines;
        } sliders[] = {
            { "skill", [](qint16 &p, bool full) { return GetSkillText(p, full); }, GetSkillPosition,
                { 0, 6 },
                { "BotSkills[1]=2.999999", "1.000000", "BotSkills[0]=3", "BotSkills[0]=high.0",
                    "BotSkills[0]=32765.0", "BotSkills[0]=32764.0", "BotSkills[0]=-32771.0",
                    "BotSkills[0]=-32772.0" } },
            { "accuracy", GetAccuracyText, GetAccuracyPosition, { 5, 0, 100, -100, 37, 4 },
                { "BotAccuracy[3]=-0.350000", "BotAccuracy[3]=0.359999", "BotAccuracy[0]=abc",
                    "BotAccuracy[0]=9999" } },
            { "alertness", GetAlertnessText, GetAlertnessPosition, { -99 }, {} },
            { "camping", [](qint16 &p, bool full) { return GetCampingText(p, full); },
                GetCampingPosition, { 5, 10 }, { "Camping[2]=-0.500000" } },
            { "strafing", [](qint16 &p, bool full) { return GetStrafingText(p, full); },
                GetStrafingPosition, { -10, 10 }, { "Key=0.5=x" } },
        };
        QStringList found;
        for (const auto &slider : sliders) {
            for (const qint16 position : slider.positions) {
                qint16 shown = position, snapped = position;
                const QString text = slider.text(shown, false) + ' ' + slider.text(snapped, true);
                found << QString("%1 at %2: %3, snapped to %4, reads back as %5")
                             .arg(slider.name)
                             .arg(position)
                             .arg(text)
                             .arg(snapped)
                             .arg(slider.read("Key[0]=" + text.section(' ', 1)));
            }
            for (const QString &line : slider.lines) {
                QString read;
                try {
                    read = QString::number(slider.read(line));
                } catch (const RunError &e) {
                    read = "error " + QString::number(e.number());
                }
                found << QString("%1 line %2: %3").arg(slider.name, line, read);
            }
        }
        QCOMPARE(found, testDataLines("roster/sliders.txt"));
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
