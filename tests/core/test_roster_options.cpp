#include "configfiles/runerror.h"
#include "roster/botroster.h"
#include "startup/options.h"
#include "startup/programdirectory.h"
#include "testfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

const auto native = QDir::toNativeSeparators;

// The default roster and options.ini: both are read by everything else, so
// a slip here shows up everywhere. (The default bots themselves are compared
// with the game's own list where a configuration of them is saved.)
class TestRosterOptions : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(m_dir.isValid());
        setProgramDir(m_dir.path());
        QFile::remove(optionsFile());
    }

    void cleanup() { setProgramDir(QString()); }

    // The defaults replace every bot and keep the list-wide values.
    void defaultsKeepListWideValues()
    {
        BotRoster roster, expected;
        roster.VoiceType.fill("Some.Voice");
        roster.BotSkills.fill(6);
        roster.BotAccuracy.fill(50);
        for (BotRoster *r : { &roster, &expected }) {
            r->Difficulty = 5;
            r->bAdjustSkill = r->bRandomOrder = true;
            r->Description = "Mine";
            SetDefaults(*r);
        }
        QCOMPARE(roster, expected);
    }

    void savedOptionsReadBack()
    {
        AppOptions() = { 2, true, native("/my games/"), QString() };
        SaveOptions();
        QCOMPARE(readTestFile(optionsFile()),
            crlf({ "[SplashScreen]", "2", "", "[UTPath]", "0", native("/my games/"), "" }));
        AppOptions() = { 1, true, "old", "old" };
        // A written file is never a first run.
        QCOMPARE(loaded(), native("2|0|/my games/||0"));
    }

    // A refused line 2 is not kept, so that the start-up goes on as without
    // a file; a file cut short keeps what was read before the cut.
    void readingOptions_data()
    {
        QTest::addColumn<QByteArray>("content"); // "missing": no file
        QTest::addColumn<QString>("read"); // auto-close|first run|configs|game|error number

        const QByteArray head = "[SplashScreen]\r\n0\r\n\r\n[UTPath]\r\n";
        const auto line2 = [](const QByteArray &line) {
            return "[SplashScreen]\r\n" + line + "\r\n\r\n[UTPath]\r\n0\r\nc\r\ng\r\n";
        };
        const auto row = [](const char *tag, const QByteArray &content, const QString &read) {
            QTest::newRow(tag) << content << native(read);
        };
        row("missing file means a first run", "missing", "1|1|old|old|0");
        row("first-run flag", head + "1\r\n/c\r\n/g\r\n", "0|1|old|old|0");
        row("flag with trailing spaces", head + "1  \r\n/c\r\n/g\r\n", "0|1|old|old|0");
        row("01 is no flag, trailing spaces dropped", head + "01\r\nc  \r\ng \r\n", "0|0|c/|g/|0");
        row("empty paths", head + "0\r\n\r\n\r\n", "0|0|/||0");
        row("comma cuts a path", head + "0\r\nc,d\r\ng\r\n", "0|0|c/|d/|0");
        row("cut before the game path", head + "0\r\nc\r\n", "0|0|c/|old|62");
        row("line 2 text", line2("yes"), "1|0|old|old|13");
        row("line 2 beyond 16 bits", line2("40000"), "1|0|old|old|6");
        row("line 2 no check box state", line2("7"), "1|0|old|old|380");
        row("line 2 rounded", line2(" 1.6"), "2|0|c/|g/|0");
    }

    void readingOptions()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, read);
        QVERIFY(content == "missing" || writeTestFile(optionsFile(), content));
        AppOptions() = { 1, false, "old", "old" };
        QCOMPARE(loaded(), read);
    }

private:
    // auto-close|first run|configs|game|error number, as loaded
    QString loaded()
    {
        int error = 0;
        try {
            LoadOptions();
        } catch (const RunError &e) {
            error = e.number();
        }
        const Options &o = AppOptions();
        return QString("%1|%2|%3|%4|%5")
            .arg(o.AutoCloseSplash)
            .arg(int(o.FirstRun))
            .arg(o.ConfigPath, o.UTPath)
            .arg(error);
    }
    QString optionsFile() const { return ProgramDir() + "options.ini"; }
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestRosterOptions)
#include "test_roster_options.moc"
