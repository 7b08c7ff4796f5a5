#include "testfiles.h"

#include "startup/gamepathproposals.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestGamePathProposals : public QObject
{
    Q_OBJECT

private slots:
    void proposedGamePath_data();
    void proposedGamePath();
};

// clang-format off
void TestGamePathProposals::proposedGamePath_data()
{
    QTest::addColumn<QStringList>("files"); // under the home folder; a name ending in "/" is a folder
    QTest::addColumn<QString>("rule");      // "first": FirstGamePath; "files": FolderWithFiles(UnrealTournament/)
    QTest::addColumn<QString>("expected");  // relative to the home folder, "" for none

#ifdef Q_OS_LINUX
    const QString patchedGame = "UnrealTournament/";
#else
    const QString patchedGame = ".utpg/";
#endif
    QTest::newRow("nothing installed") << QStringList { "Documents/" } << "first" << "";
    QTest::newRow("install folder only") << QStringList { "UnrealTournament/System/" } << "first" << "UnrealTournament/";
    QTest::newRow("user.ini wins over an earlier place") << QStringList { ".utpg/System/", "UnrealTournament/System/User.ini" } << "first" << "UnrealTournament/";
    QTest::newRow("port's user folder first") << QStringList { ".loki/ut/System/User.ini", "UnrealTournament/System/User.ini" } << "first" << ".loki/ut/";
    QTest::newRow("whole game wins over a port's user folder") << QStringList { ".utpg/System/User.ini", "ut/System/User.ini", "ut/System/Botpack.int" } << "first" << "ut/";
    QTest::newRow("names in any case") << QStringList { "ut/system/user.INI" } << "first" << "ut/";
    QTest::newRow("System is a file") << QStringList { "UnrealTournament/System" } << "first" << "";
    QTest::newRow("64-bit game only") << QStringList { ".utpg/System/", "ut/System/Botpack.int", "ut/System64/User.ini" } << "first" << "ut/";
    QTest::newRow("user.ini in ~/.utpg") << QStringList { ".utpg/System/User.ini", "UnrealTournament/System/Botpack.int" } << "first" << patchedGame;
    QTest::newRow("start-up: a file in the folder") << QStringList { "UnrealTournament/readme.txt" } << "files" << "UnrealTournament/";
    QTest::newRow("start-up: folders only") << QStringList { "UnrealTournament/System/User.ini" } << "files" << "";
    QTest::newRow("start-up: no folder") << QStringList { "Documents/" } << "files" << "";
}
// clang-format on

void TestGamePathProposals::proposedGamePath()
{
    QFETCH(QStringList, files);
    QFETCH(QString, rule);
    QFETCH(QString, expected);

    QTemporaryDir home;
    // The game reads ~/.utpg through the home folder.
    qputenv("HOME", QFile::encodeName(home.path()));
    for (const QString &file : files) {
        if (file.endsWith('/'))
            QVERIFY(QDir(home.path()).mkpath(file));
        else
            QVERIFY(writeTestFile(home.path() + "/" + file, "[URL]\r\n"));
    }
    const QString found = rule == "first"
        ? FirstGamePath(GamePathCandidates(home.path()))
        : FolderWithFiles(QDir::toNativeSeparators(home.path() + "/UnrealTournament/"));
    QCOMPARE(found,
        expected.isEmpty() ? QString() : QDir::toNativeSeparators(home.path() + "/" + expected));
}

QTEST_MAIN(TestGamePathProposals)
#include "test_gamepathproposals.moc"
