#include "configfiles/configfile.h"
#include "configfiles/runerror.h"
#include "configfiles/textfile.h"
#include "gamefolder.h"
#include "roster/botroster.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QTest>

namespace {

const QString Rule(80, QLatin1Char('*'));

BotRoster defaultRoster()
{
    BotRoster roster;
    SetDefaults(roster);
    return roster;
}

} // namespace

class TestConfigFile : public QObject
{
    Q_OBJECT

private slots:
    // The expected file's section is the game's own from its user.ini but
    // for three columns: the default roster keeps the skill slider at its
    // lowest position, every bot's accuracy at the centre, and Barak's
    // combat style normal.
    void defaultRosterMatchesTheGamesOwnFile()
    {
        BotRoster roster = defaultRoster();
        roster.bRandomOrder = true;
        roster.Difficulty = 3;
        roster.Description
            = "The bots the game ships with, kept as a starting point for new lists: "
              "thirty-two slots with the game's own names, teams, classes, skins "
              "and faces.";
        GameFolder dir;
        ScriptedPrompt prompt;
        QVERIFY(SaveConfigAs(dir.config(), "default.qvn", false, roster));
        QCOMPARE(readTestFile(dir.config("default.qvn")),
            readTestFile(testDataDir() + "config/default.qvn"));
        QCOMPARE(prompt.transcript(), QStringList());
    }

    // A file with a different voice, skill and accuracy in every slot opens
    // and saves to the same bytes, also with line breaks put into values,
    // which must not shift the lines after them, and with accuracy and
    // alertness moved off their step of 5, which the save snaps toward zero
    // in the roster itself.
    void everyFieldRoundTrips()
    {
        BotRoster roster;
        OpenConfiguration(testDataDir() + "config/", "varied.qvn", roster);
        const BotRoster opened = roster;
        roster.Description.chop(1); // read back with a space after its line
        roster.BotNames[2] = "two\r\nlines";
        roster.BotNames[3] = "a\n\nb";
        roster.BotNames[4] = roster.FavoriteWeapon[31] = "a\rb";
        roster.BotAccuracy[3] -= 3;
        roster.Alertness[4] -= 3;
        GameFolder dir;
        QVERIFY(SaveConfigAs(dir.config(), "varied.qvn", true, roster));
        QCOMPARE(byteDifference(readTestFile(dir.config("varied.qvn")),
                     readTestFile(testDataDir() + "config/varied.qvn")),
            QString());
        QCOMPARE(roster.BotAccuracy[3], opened.BotAccuracy[3]);
        QCOMPARE(roster.Alertness[4], opened.Alertness[4]);
    }

    // The description is wrapped into lines of "* " and at most 78
    // characters; opened, each line reads back with a space after it, and
    // listed, without the spaces a line ended with. A file without a
    // description line, a backup, lists none; one without its closing rule
    // line, every line to its end.
    void descriptions_data()
    {
        QTest::addColumn<QString>("description");
        QTest::addColumn<QStringList>("block");
        QTest::addColumn<QString>("opened");
        QTest::addColumn<QString>("listed"); // empty: as opened

        const auto row = [](const char *tag, const QString &description, const QStringList &block,
                             const QString &opened, const QString &listed = QString()) {
            QTest::newRow(tag) << description << block << opened << listed;
        };
        const QString nine = "abcdefghi ", a78(78, 'a'), x77(77, 'x');
        row("empty", QString(), { "* " }, " ");
        row("78 fit one line", nine.repeated(7) + "abcdefgh",
            { "* " + nine.repeated(7) + "abcdefgh" }, nine.repeated(7) + "abcdefgh ");
        row("79 wrap after the last space", nine.repeated(7) + "abcdefghi",
            { "* " + nine.repeated(7), "* abcdefghi" }, nine.repeated(7) + " abcdefghi ",
            nine.repeated(7) + "abcdefghi ");
        row("chunk ending in a space", x77 + " yz", { "* " + x77 + " ", "* yz" }, x77 + "  yz ",
            x77 + " yz ");
        row("run without spaces", QString(200, 'a'),
            { "* " + a78, "* " + a78, "* " + QString(44, 'a') },
            a78 + ' ' + a78 + ' ' + QString(44, 'a') + ' ');
        row("line breaks become spaces", "one\r\ntwo\nthree\rfour", { "* one two three four" },
            "one two three four ");
    }

    void descriptions()
    {
        QFETCH(QString, description);
        QFETCH(QString, opened);
        QFETCH(QString, listed);
        BotRoster roster = defaultRoster();
        roster.Description = description;
        GameFolder dir;
        QVERIFY(SaveConfigAs(dir.config(), "d.qvn", true, roster));
        const QStringList lines = readAnsiLines(dir.config("d.qvn"));
        QTEST(lines.mid(7, lines.indexOf(Rule, 1) - 7), "block");
        OpenConfiguration(dir.config(), "d.qvn", roster);
        QCOMPARE(roster.Description, opened);
        QCOMPARE(ReadDescription("d.qvn", dir.config()), listed.isEmpty() ? opened : listed);
        QVERIFY(writeTestFile(dir.config("b.qvn2"), crlf({ "[Botpack.ChallengeBotInfo]", "a=b" })));
        QCOMPARE(ReadDescription("b.qvn2", dir.config()), QString());
        QVERIFY(writeTestFile(dir.config("c.qvn"), crlf({ "* Description:", "* open " })));
        QCOMPARE(ReadDescription("c.qvn", dir.config()), "open ");
        QVERIFY_THROWS_EXCEPTION(RunError, ReadDescription("gone.qvn", dir.config()));
    }

    // Lines of a saved file changed by hand: the reader goes by position,
    // only a line ending in "False" turns a switch off, and a file it cannot
    // read to its end leaves the roster as it was, with an error that names
    // the file and the line. Line 8 is the one-line description, 11 the
    // section line, 12 the first face.
    void handEdited_data()
    {
        QTest::addColumn<QString>("from"); // empty: no file at all
        QTest::addColumn<QString>("to");
        // BotNames[0]|BotNames[1]|bAdjustSkill|Difficulty, or the error
        QTest::addColumn<QString>("read");

        const auto row = [](const char *tag, const QString &from, const QString &to,
                             const QString &read) { QTest::newRow(tag) << from << to << read; };
        const QString archon = "BotNames[0]=Archon", adjust = "bAdjustSkill=True";
        const QString end = "error 62, after line 461";
        row("key renamed", archon, "Whatever[7]=X", "X|Aryss|1|0");
        row("name with =", archon, "BotNames[0]=A=B", "A=B|Aryss|1|0");
        row("no = at all", archon, "Loose", "Loose|Aryss|1|0");
        row("False", adjust, "bAdjustSkill=False", "Archon|Aryss|0|0");
        row("false is not False", adjust, "bAdjustSkill=false", "Archon|Aryss|1|0");
        row("missing file", "", "", "error 53, ");
        row("description line with a trailing space", "* Description:\r\n", "* Description: \r\n",
            "error 62, after line 462");
        row("no closing rule line", "* Keep\r\n" + Rule + "\r\n", "* Keep\r\n", end);
        row("ends early", "BotJumpy[31]=1\r\n", "", end);
        row("difficulty not a number", "Difficulty=0", "Difficulty=hard", "error 13, line 46");
        row("difficulty at the 16-bit limit", "Difficulty=0", "Difficulty=32767",
            "Archon|Aryss|1|32767");
        row("difficulty at the lower limit", "Difficulty=0", "Difficulty=-32768",
            "Archon|Aryss|1|-32768");
        row("team out of range", "BotTeams[0]=255", "BotTeams[0]=32768", "error 6, line 79");
        row("skill not a number", "BotSkills[0]=-3.000000", "BotSkills[0]=abc",
            "error 13, line 207");
    }

    void handEdited()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, read);
        BotRoster roster = defaultRoster();
        roster.bAdjustSkill = true;
        roster.Description = "Keep";
        GameFolder dir;
        QVERIFY(SaveConfigAs(dir.config(), "good.qvn", true, roster));
        QByteArray bytes = readTestFile(dir.config("good.qvn"));
        const QString edited = dir.config("edited.qvn");
        QVERIFY(from.isEmpty()
            || (bytes.contains(from.toLatin1())
                && writeTestFile(edited, bytes.replace(from.toLatin1(), to.toLatin1()))));
        const BotRoster before = roster;

        try {
            OpenConfiguration(dir.config(), "edited.qvn", roster);
            QCOMPARE(QString("%1|%2|%3|%4")
                         .arg(roster.BotNames[0], roster.BotNames[1])
                         .arg(int(roster.bAdjustSkill))
                         .arg(roster.Difficulty),
                read);
        } catch (const RunError &error) {
            QCOMPARE("error " + QString::number(error.number()) + ", "
                    + error.detail().section(", ", 1).section(':', 0, 0),
                read);
            QVERIFY(error.detail().startsWith(edited));
            QCOMPARE(roster, before);
        }
    }
};

QTEST_GUILESS_MAIN(TestConfigFile)
#include "test_configfile.moc"
