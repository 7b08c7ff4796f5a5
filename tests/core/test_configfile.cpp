#include "configfiles/configfile.h"
#include "configfiles/fileops.h"
#include "configfiles/runerror.h"
#include "configfiles/textfile.h"
#include "roster/botroster.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString Rule(80, QLatin1Char('*'));

// A roster with a different value in every field of every slot.
BotRoster variedRoster()
{
    const QList<qint16> teams { 0, 1, 2, 3, 255 };
    const QStringList styles { "0.500000", "-1.000000", "1.000000", "-0.500000", "0.000000" };
    BotRoster roster;
    for (int i = 0; i < BotSlotCount; ++i) {
        const QString n = QString::number(i);
        roster.BotNames[i] = i == 0 ? "A=B" : i == 1 ? QString::fromUtf8("Zoë") : "Bot " + n;
        roster.BotTeams[i] = teams.at(i % teams.size());
        roster.BotClasses[i] = "Mod" + n + ".Class";
        roster.BotSkins[i] = "Skins" + n + ".skin";
        roster.BotFaces[i] = "Skins" + n + ".Face";
        roster.VoiceType[i] = i % 3 == 0 ? QString() : i % 3 == 1 ? "(NONE)" : "Voices.V" + n;
        roster.BotSkills[i] = qint16(i % 7);
        roster.BotAccuracy[i] = qint16(i * 5 % 201 - 100);
        roster.CombatStyle[i] = styles.at(i % styles.size());
        roster.Alertness[i] = qint16(100 - i * 5);
        roster.Camping[i] = qint16(i % 11);
        roster.StrafingAbility[i] = qint16(i % 21 - 10);
        roster.FavoriteWeapon[i] = i % 2 ? "Botpack.Minigun2" : QString();
        roster.BotJumpy[i] = qint16(i % 2);
    }
    roster.Difficulty = 7;
    roster.bAdjustSkill = true;
    roster.bRandomOrder = false;
    roster.Description = "Varied";
    return roster;
}

// The description block of the lines written for `description`.
QStringList descriptionBlock(const QString &description)
{
    BotRoster roster;
    roster.Description = description;
    const QStringList lines = ConfigurationLines("x.qvn", roster);
    return lines.mid(7, lines.indexOf(Rule, 1) - 7);
}

class TempConfigDir
{
public:
    QString path() const { return AddBackslash(QDir::toNativeSeparators(m_dir.path())); }
    QString file(const QString &name) const { return path() + name; }

private:
    QTemporaryDir m_dir;
};

} // namespace

class TestConfigFile : public QObject
{
    Q_OBJECT

private slots:
    // The section of the game's own user.ini, as the game wrote it, is what a
    // configuration of the default bots holds, apart from three columns: the
    // default roster keeps the skill slider at its lowest position, every
    // bot's accuracy at the centre, and Barak's combat style normal.
    void defaultRosterMatchesTheGamesOwnFile()
    {
        QStringList section;
        const QStringList userIni
            = readAnsiLines(realWorldDir() + "vanilla-server/System/User.ini");
        for (qsizetype i = userIni.indexOf("[Botpack.ChallengeBotInfo]");
             i < userIni.size() && !userIni.at(i).isEmpty(); ++i) {
            QString line = userIni.at(i);
            if (line.startsWith("BotSkills["))
                line.replace("=0.000000", "=-3.000000");
            if (line.startsWith("BotAccuracy["))
                line = line.section('=', 0, 0) + "=0.000000";
            if (line == "CombatStyle[16]=0.500000")
                line = "CombatStyle[16]=0.000000";
            section.append(line);
        }
        QCOMPARE(section.size(), 452);

        BotRoster roster;
        SetDefaults(roster);
        roster.bRandomOrder = true;
        roster.Difficulty = 3;
        roster.Description
            = "The bots the game ships with, kept as a starting point for new lists: "
              "thirty-two slots with the game's own names, teams, classes, skins "
              "and faces.";
        TempConfigDir dir;
        ScriptedPrompt prompt;
        QVERIFY(SaveConfigAs(dir.path(), "default.qvn", false, roster));

        const QStringList header { Rule, "* default.qvn",
            "* This is a configuration created with Quorvane.",
            "* This file containes replacement code for the [Botpack.ChallengeBotInfo]",
            "* section of the user.ini file for Unreal Tournament.", "*", "* Description:",
            "* The bots the game ships with, kept as a starting point for new lists: ",
            "* thirty-two slots with the game's own names, teams, classes, skins and faces.", Rule,
            "" };
        QCOMPARE(readAnsiLines(dir.file("default.qvn")), header + section);
        QCOMPARE(readTestFile(dir.file("default.qvn")), crlf(header + section));
        QCOMPARE(prompt.transcript(), QStringList());
    }

    void descriptionWraps_data()
    {
        QTest::addColumn<QString>("description");
        QTest::addColumn<QStringList>("block");

        const QString nine = "abcdefghi ";
        QTest::newRow("empty") << QString() << QStringList { "* " };
        QTest::newRow("78 fit one line") << nine.repeated(7) + "abcdefgh"
                                         << QStringList { "* " + nine.repeated(7) + "abcdefgh" };
        QTest::newRow("79 wrap after the last space") << nine.repeated(7)
                + "abcdefghi" << QStringList { "* " + nine.repeated(7), "* abcdefghi" };
        QTest::newRow("chunk ending in a space")
            << QString(77, 'x') + " yz" << QStringList { "* " + QString(77, 'x') + " ", "* yz" };
        QTest::newRow("run without spaces")
            << QString(200, 'a')
            << QStringList { "* " + QString(78, 'a'), "* " + QString(78, 'a'),
                   "* " + QString(44, 'a') };
        QTest::newRow("run, then words")
            << QString(80, 'a') + " b" << QStringList { "* " + QString(78, 'a'), "* aa b" };
        QTest::newRow("line breaks become spaces")
            << "one\r\ntwo\nthree\rfour" << QStringList { "* one two three four" };
    }

    void descriptionWraps()
    {
        QFETCH(QString, description);
        QFETCH(QStringList, block);
        QCOMPARE(descriptionBlock(description), block);
    }

    void everyFieldRoundTrips()
    {
        BotRoster written = variedRoster();
        written.BotAccuracy[3] = 37;
        written.Alertness[4] = -42;
        const BotRoster before = written;
        TempConfigDir dir;
        QVERIFY(SaveConfigAs(dir.path(), "varied.qvn", true, written));

        // Off-step positions are snapped toward zero in the roster itself.
        QCOMPARE(written.BotAccuracy[3], qint16(35));
        QCOMPARE(written.Alertness[4], qint16(-40));
        QCOMPARE(written.BotSkills, before.BotSkills);
        QVERIFY(readTestFile(dir.file("varied.qvn")).contains("\r\nBotNames[1]=Zo\xEB\r\n"));

        BotRoster read;
        OpenConfiguration(dir.path(), "varied.qvn", read);
        written.Description += ' ';
        QCOMPARE(read, written);
    }

    // Names come from the command line's rosters too, where nothing keeps
    // a line break out; one must not shift the lines after it.
    void valuesStayOnTheirLine_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("readBack");

        QTest::newRow("CR LF") << "two\r\nlines"
                               << "two lines";
        QTest::newRow("empty line") << "a\n\nb"
                                    << "a  b";
        QTest::newRow("lone CR") << "a\rb"
                                 << "a b";
    }

    void valuesStayOnTheirLine()
    {
        QFETCH(QString, name);
        QFETCH(QString, readBack);

        BotRoster roster;
        SetDefaults(roster);
        roster.BotNames[3] = name;
        roster.FavoriteWeapon[31] = name;
        TempConfigDir dir;
        QVERIFY(SaveConfigAs(dir.path(), "n.qvn", true, roster));
        const QStringList lines = readAnsiLines(dir.file("n.qvn"));
        QCOMPARE(lines.size() - lines.indexOf("[Botpack.ChallengeBotInfo]"), 452);
        QCOMPARE(lines.count(QString()), 1);

        BotRoster read;
        OpenConfiguration(dir.path(), "n.qvn", read);
        QCOMPARE(read.BotNames[3], readBack);
        QCOMPARE(read.FavoriteWeapon[31], readBack);
        QCOMPARE(read.BotJumpy, roster.BotJumpy);
    }

    void descriptionReadsBack_data()
    {
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("opened");
        QTest::addColumn<QString>("listed");

        const QString nine = "abcdefghi ";
        QTest::newRow("empty") << QString() << " "
                               << " ";
        QTest::newRow("one line") << "My bots"
                                  << "My bots "
                                  << "My bots ";
        QTest::newRow("wrapped at a space")
            << nine.repeated(7) + "abcdefghi" << nine.repeated(7) + " abcdefghi "
            << nine.repeated(7) + "abcdefghi ";
        QTest::newRow("broken run")
            << QString(80, 'a') << QString(78, 'a') + " aa " << QString(78, 'a') + " aa ";
    }

    void descriptionReadsBack()
    {
        QFETCH(QString, description);
        QFETCH(QString, opened);
        QFETCH(QString, listed);

        BotRoster roster;
        SetDefaults(roster);
        roster.Description = description;
        TempConfigDir dir;
        QVERIFY(SaveConfigAs(dir.path(), "d.qvn", true, roster));
        OpenConfiguration(dir.path(), "d.qvn", roster);
        QCOMPARE(roster.Description, opened);
        QCOMPARE(ReadDescription("d.qvn", dir.path()), listed);
    }

    void readDescriptionOfOtherFiles()
    {
        TempConfigDir dir;
        QVERIFY(
            writeTestFile(dir.file("backup.qvn2"), crlf({ "[Botpack.ChallengeBotInfo]", "a=b" })));
        QCOMPARE(ReadDescription("backup.qvn2", dir.path()), QString());
        QVERIFY_THROWS_EXCEPTION(RunError, ReadDescription("gone.qvn", dir.path()));
    }

    // Lines of a saved file changed by hand; the reader goes by position.
    void readsByPosition_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");

        QTest::newRow("key renamed") << "BotNames[0]=Archon"
                                     << "Whatever[7]=X"
                                     << "name0"
                                     << "X";
        QTest::newRow("name with =") << "BotNames[0]=Archon"
                                     << "BotNames[0]=A=B"
                                     << "name0"
                                     << "A=B";
        QTest::newRow("no = at all") << "BotNames[0]=Archon"
                                     << "Loose"
                                     << "name0"
                                     << "Loose";
        QTest::newRow("lines swapped") << "BotNames[0]=Archon\r\nBotNames[1]=Aryss"
                                       << "BotNames[1]=Aryss\r\nBotNames[0]=Archon"
                                       << "name0"
                                       << "Aryss";
        QTest::newRow("False") << "bAdjustSkill=True"
                               << "bAdjustSkill=False"
                               << "adjust"
                               << "false";
        QTest::newRow("false is not False") << "bAdjustSkill=True"
                                            << "bAdjustSkill=false"
                                            << "adjust"
                                            << "true";
        QTest::newRow("empty is not False") << "bAdjustSkill=True"
                                            << "bAdjustSkill="
                                            << "adjust"
                                            << "true";
        QTest::newRow("any line ending in False") << "bAdjustSkill=True"
                                                  << "NotFalse"
                                                  << "adjust"
                                                  << "false";
    }

    void readsByPosition()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, field);
        QFETCH(QString, value);

        BotRoster roster;
        SetDefaults(roster);
        roster.bAdjustSkill = true;
        TempConfigDir dir;
        QVERIFY(SaveConfigAs(dir.path(), "p.qvn", true, roster));
        QByteArray bytes = readTestFile(dir.file("p.qvn"));
        QVERIFY(bytes.contains("\r\n" + from.toLatin1() + "\r\n"));
        bytes.replace("\r\n" + from.toLatin1() + "\r\n", "\r\n" + to.toLatin1() + "\r\n");
        QVERIFY(writeTestFile(dir.file("p.qvn"), bytes));

        OpenConfiguration(dir.path(), "p.qvn", roster);
        if (field == "name0")
            QCOMPARE(roster.BotNames[0], value);
        else
            QCOMPARE(roster.bAdjustSkill, value == "true");
        QCOMPARE(roster.BotNames[2], QString("Alarik"));
    }

    void overwriteQuestion_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::addColumn<bool>("withoutAsking");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<bool>("written");

        const int yes = int(MessageAnswer::Yes);
        const int no = int(MessageAnswer::No);
        QTest::newRow("new file") << false << false << no << false << true;
        QTest::newRow("save over") << true << true << no << false << true;
        QTest::newRow("exists, Yes") << true << false << yes << true << true;
        QTest::newRow("exists, No") << true << false << no << true << false;
        QTest::newRow("exists, Cancel")
            << true << false << int(MessageAnswer::Cancel) << true << false;
    }

    void overwriteQuestion()
    {
        QFETCH(bool, exists);
        QFETCH(bool, withoutAsking);
        QFETCH(int, answer);
        QFETCH(bool, asked);
        QFETCH(bool, written);

        TempConfigDir dir;
        if (exists)
            QVERIFY(writeTestFile(dir.file("b.qvn"), "old"));
        ScriptedPrompt prompt;
        prompt.answerNext(MessageAnswer(answer));
        BotRoster roster;
        SetDefaults(roster);

        QCOMPARE(SaveConfigAs(dir.path(), "b.qvn", withoutAsking, roster), written);
        QCOMPARE(prompt.transcript(),
            asked ? QStringList("File Already Exists|This file exists, do you really want "
                                "to over write it?")
                  : QStringList());
        if (asked)
            QVERIFY(prompt.messages().first().buttons == MessageButtons::YesNo);
        QCOMPARE(readTestFile(dir.file("b.qvn")).startsWith(Rule.toLatin1()), written);
    }

    void brokenFileLeavesRosterUnchanged_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("where");

        // Line 8 is the one-line description, 11 the section line, 12 the first face.
        QTest::newRow("missing file") << QString() << QString() << 53 << "";
        QTest::newRow("no description line") << "* Description:\r\n"
                                             << "" << 62 << "after line 461";
        QTest::newRow("description line with a trailing space") << "* Description:\r\n"
                                                                << "* Description: \r\n"
                                                                << 62 << "after line 462";
        QTest::newRow("no closing rule line") << "* Keep\r\n" + Rule + "\r\n"
                                              << "* Keep\r\n"
                                              << 62 << "after line 461";
        QTest::newRow("ends early") << "BotJumpy[31]=1\r\n"
                                    << "" << 62 << "after line 461";
        QTest::newRow("difficulty not a number") << "Difficulty=0"
                                                 << "Difficulty=hard" << 13 << "line 46";
        QTest::newRow("team empty") << "BotTeams[0]=255"
                                    << "BotTeams[0]=" << 13 << "line 79";
        QTest::newRow("team out of range") << "BotTeams[0]=255"
                                           << "BotTeams[0]=65791" << 6 << "line 79";
        QTest::newRow("skill not a number") << "BotSkills[0]=-3.000000"
                                            << "BotSkills[0]=abc" << 13 << "line 207";
    }

    void brokenFileLeavesRosterUnchanged()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(int, number);
        QFETCH(QString, where);

        BotRoster roster;
        SetDefaults(roster);
        roster.Description = "Keep";
        TempConfigDir dir;
        QVERIFY(SaveConfigAs(dir.path(), "good.qvn", true, roster));
        if (!from.isEmpty()) {
            QByteArray bytes = readTestFile(dir.file("good.qvn"));
            QVERIFY(bytes.contains(from.toLatin1()));
            bytes.replace(from.toLatin1(), to.toLatin1());
            QVERIFY(writeTestFile(dir.file("broken.qvn"), bytes));
        }
        const BotRoster before = roster;

        try {
            OpenConfiguration(dir.path(), "broken.qvn", roster);
            QFAIL("a broken file was read");
        } catch (const RunError &error) {
            QCOMPARE(error.number(), number);
            QVERIFY2(error.detail().contains(dir.file("broken.qvn")), qPrintable(error.detail()));
            QVERIFY2(error.detail().contains(where), qPrintable(error.detail()));
        }
        QCOMPARE(roster, before);
    }
};

QTEST_GUILESS_MAIN(TestConfigFile)
#include "test_configfile.moc"
