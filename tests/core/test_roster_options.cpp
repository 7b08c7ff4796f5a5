#include "configfiles/fileops.h"
#include "configfiles/runerror.h"
#include "roster/botroster.h"
#include "startup/options.h"
#include "startup/programdirectory.h"
#include "testfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// The default roster and options.ini: both are read by everything else, so
// a slip here shows up everywhere.
class TestRosterOptions : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void defaultsKeepListWideValues();
    void defaultRosterSamples_data();
    void defaultRosterSamples();

    void savedOptionsReadBack_data();
    void savedOptionsReadBack();
    void savedFileBytes();
    void readingOptions_data();
    void readingOptions();
    void missingFileMeansFirstRun();
    void unreadableLineTwo_data();
    void unreadableLineTwo();

private:
    QString optionsFile() const { return ProgramDir() + "options.ini"; }
    QTemporaryDir m_dir;
};

void TestRosterOptions::init()
{
    QVERIFY(m_dir.isValid());
    setProgramDir(m_dir.path());
    QFile::remove(optionsFile());
    AppOptions() = Options();
}

void TestRosterOptions::cleanup()
{
    setProgramDir(QString());
}

void TestRosterOptions::defaultsKeepListWideValues()
{
    BotRoster roster;
    roster.Difficulty = 5;
    roster.bAdjustSkill = true;
    roster.bRandomOrder = true;
    roster.Description = "Mine";
    roster.VoiceType.fill("Some.Voice");
    roster.BotSkills.fill(6);
    roster.BotAccuracy.fill(50);
    SetDefaults(roster);

    QCOMPARE(roster.Difficulty, qint16(5));
    QVERIFY(roster.bAdjustSkill && roster.bRandomOrder);
    QCOMPARE(roster.Description, QString("Mine"));
    for (int slot = 0; slot < BotSlotCount; ++slot) {
        QCOMPARE(roster.VoiceType[slot], QString());
        QCOMPARE(roster.BotSkills[slot], qint16(0));
        QCOMPARE(roster.BotAccuracy[slot], qint16(0));
        // Even slots have no team; odd ones cycle red, blue, green, gold.
        QCOMPARE(roster.BotTeams[slot], slot % 2 ? qint16((slot / 2) % 4) : qint16(255));
        QVERIFY(roster.BotClasses[slot].startsWith("BotPack.T"));
        const QString package = roster.BotSkins[slot].section('.', 0, 0);
        QCOMPARE(roster.BotFaces[slot].section('.', 0, 0), package);
        QVERIFY(roster.FavoriteWeapon[slot].isEmpty()
                || roster.FavoriteWeapon[slot].startsWith("Botpack."));
    }
}

void TestRosterOptions::defaultRosterSamples_data()
{
    QTest::addColumn<int>("slot");
    QTest::addColumn<QStringList>("texts"); // name, class, skin, face, style, weapon
    QTest::addColumn<QList<int>>("numbers"); // alertness, camping, strafing, jumpy

    QTest::newRow("0") << 0
                       << QStringList{ "Archon", "BotPack.TMale1Bot", "CommandoSkins.cmdo",
                                       "CommandoSkins.Blake", "0.000000", "" }
                       << QList<int>{ 0, 0, 0, 0 };
    QTest::newRow("16") << 16
                        << QStringList{ "Barak", "BotPack.TMale1Bot", "CommandoSkins.cmdo",
                                        "CommandoSkins.Gorn", "0.000000", "Botpack.UT_FlakCannon" }
                        << QList<int>{ 0, 0, 0, 0 };
    QTest::newRow("18") << 18
                        << QStringList{ "Tamerlane", "BotPack.TMale2Bot", "SoldierSkins.blkt",
                                        "SoldierSkins.Riker", "-0.500000", "Botpack.SniperRifle" }
                        << QList<int>{ -30, 10, 0, 0 };
    QTest::newRow("28") << 28
                        << QStringList{ "Malakai", "BotPack.TMale1Bot", "CommandoSkins.daco",
                                        "CommandoSkins.Graves", "0.000000", "Botpack.ShockRifle" }
                        << QList<int>{ 0, 5, 0, 0 };
    QTest::newRow("29") << 29
                        << QStringList{ "Visse", "BotPack.TFemale2Bot", "SGirlSkins.army",
                                        "SGirlSkins.Lauren", "0.000000", "" }
                        << QList<int>{ 40, 0, 10, 0 };
    QTest::newRow("31") << 31
                        << QStringList{ "Kragoth", "BotPack.TFemale1Bot", "FCommandoSkins.daco",
                                        "FCommandoSkins.Jayce", "0.000000", "" }
                        << QList<int>{ 0, 0, 0, 1 };
}

void TestRosterOptions::defaultRosterSamples()
{
    QFETCH(int, slot);
    QFETCH(QStringList, texts);
    QFETCH(QList<int>, numbers);
    BotRoster roster;
    SetDefaults(roster);
    QCOMPARE((QStringList{ roster.BotNames[slot], roster.BotClasses[slot], roster.BotSkins[slot],
                           roster.BotFaces[slot], roster.CombatStyle[slot],
                           roster.FavoriteWeapon[slot] }),
             texts);
    QCOMPARE((QList<int>{ roster.Alertness[slot], roster.Camping[slot],
                          roster.StrafingAbility[slot], roster.BotJumpy[slot] }),
             numbers);
}

void TestRosterOptions::savedOptionsReadBack_data()
{
    QTest::addColumn<int>("autoClose");
    QTest::addColumn<QString>("configPath");
    QTest::addColumn<QString>("gamePath");
    const QString sep = QDir::separator();
    QTest::newRow("both set") << 1 << sep + "games" + sep + "configs" + sep << sep + "games" + sep;
    QTest::newRow("spaces inside") << 0 << sep + "my games" + sep << sep + "ut 99" + sep;
    QTest::newRow("no game yet, box greyed") << 2 << sep << QString();
}

void TestRosterOptions::savedOptionsReadBack()
{
    QFETCH(int, autoClose);
    QFETCH(QString, configPath);
    QFETCH(QString, gamePath);
    AppOptions() = { qint16(autoClose), true, configPath, gamePath };
    SaveOptions();
    AppOptions() = Options();
    LoadOptions();
    QCOMPARE(AppOptions().AutoCloseSplash, qint16(autoClose));
    QCOMPARE(AppOptions().FirstRun, false); // a written file is never a first run
    QCOMPARE(AppOptions().ConfigPath, configPath);
    QCOMPARE(AppOptions().UTPath, gamePath);
}

void TestRosterOptions::savedFileBytes()
{
    AppOptions() = { 1, true, "C:\\UnrealTournament\\Configs\\", "C:\\UnrealTournament\\" };
    SaveOptions();
    QCOMPARE(readTestFile(optionsFile()),
             QByteArray("[SplashScreen]\r\n1\r\n\r\n[UTPath]\r\n0\r\n"
                        "C:\\UnrealTournament\\Configs\\\r\nC:\\UnrealTournament\\\r\n"));
}

void TestRosterOptions::readingOptions_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("firstRun");
    QTest::addColumn<QString>("configPath");
    QTest::addColumn<QString>("gamePath");
    QTest::addColumn<int>("error"); // 0: none

    const QString sep = QDir::separator();
    const QByteArray head = "[SplashScreen]\r\n0\r\n\r\n[UTPath]\r\n";
    QTest::newRow("first-run flag") << head + "1\r\n/c\r\n/g\r\n" << true << "old" << "old" << 0;
    QTest::newRow("flag with trailing spaces") << head + "1  \r\n/c\r\n/g\r\n" << true << "old" << "old" << 0;
    QTest::newRow("flag with leading blanks") << head + "  1\r\n/c\r\n/g\r\n" << true << "old" << "old" << 0;
    QTest::newRow("01 is no flag") << head + "01\r\nc\r\ng\r\n" << false << "c" + sep << "g" + sep << 0;
    QTest::newRow("true is no flag") << head + "true\r\nc\r\ng\r\n" << false << "c" + sep << "g" + sep << 0;
    QTest::newRow("empty paths") << head + "0\r\n\r\n\r\n" << false << sep << QString() << 0;
    QTest::newRow("trailing spaces dropped") << head + "0\r\nc  \r\ng \r\n" << false << "c" + sep << "g" + sep << 0;
    QTest::newRow("LF only") << QByteArray(head).replace("\r", "") + "0\nc\ng\n" << false << "c" + sep << "g" + sep << 0;
    QTest::newRow("comma cuts a path") << head + "0\r\nc,d\r\ng\r\n" << false << "c" + sep << "d" + sep << 0;
    QTest::newRow("quoted path keeps its comma") << head + "0\r\n\"c,d\"\r\ng\r\n" << false << "c,d" + sep << "g" + sep << 0;
    QTest::newRow("cut before the game path") << head + "0\r\nc\r\n" << false << "c" + sep << "old" << 62;
    QTest::newRow("cut before the flag") << head << false << "old" << "old" << 62;
}

void TestRosterOptions::readingOptions()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, firstRun);
    QFETCH(QString, configPath);
    QFETCH(QString, gamePath);
    QFETCH(int, error);
    QVERIFY(writeTestFile(optionsFile(), content));
    AppOptions() = { 0, false, "old", "old" };
    int raised = 0;
    try {
        LoadOptions();
    } catch (const RunError &e) {
        raised = e.number();
    }
    QCOMPARE(raised, error);
    QCOMPARE(AppOptions().FirstRun, firstRun);
    QCOMPARE(AppOptions().ConfigPath, configPath);
    QCOMPARE(AppOptions().UTPath, gamePath);
}

void TestRosterOptions::missingFileMeansFirstRun()
{
    AppOptions().UTPath = "kept";
    LoadOptions();
    QVERIFY(AppOptions().FirstRun);
    QCOMPARE(AppOptions().UTPath, QString("kept"));
}

void TestRosterOptions::unreadableLineTwo_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("error");
    QTest::newRow("empty") << QByteArray("") << 13;
    QTest::newRow("text") << QByteArray("yes") << 13;
    QTest::newRow("beyond 16 bits") << QByteArray("40000") << 6;
    QTest::newRow("no check box state") << QByteArray("7") << 380;
}

void TestRosterOptions::unreadableLineTwo()
{
    QFETCH(QByteArray, line);
    QFETCH(int, error);
    QVERIFY(writeTestFile(optionsFile(),
                          "[SplashScreen]\r\n" + line + "\r\n\r\n[UTPath]\r\n0\r\nc\r\ng\r\n"));
    AppOptions().AutoCloseSplash = 1;
    try {
        LoadOptions();
        QFAIL("read without an error");
    } catch (const RunError &e) {
        QCOMPARE(e.number(), error);
    }
    // The start-up goes on as without a file, so nothing refused is kept.
    QCOMPARE(AppOptions().AutoCloseSplash, qint16(1));
}

QTEST_GUILESS_MAIN(TestRosterOptions)
#include "test_roster_options.moc"
