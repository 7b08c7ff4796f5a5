#include "testfiles.h"

#include "startup/gamepathproposals.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestGamePathProposals : public QObject
{
    Q_OBJECT

private slots:
    void proposedGamePath_data()
    {
        QTest::addColumn<QStringList>("files"); // under the home folder; ending in "/": a folder
        QTest::addColumn<bool>("startUp"); // FolderWithFiles, else FirstGamePath
        QTest::addColumn<QString>("expected"); // relative to the home folder, "" for none
        const QString ut = "UnrealTournament/";
#ifdef Q_OS_LINUX
        const QString patchedGame = ut;
#else
        const QString patchedGame = ".utpg/";
#endif
        QTest::newRow("nothing installed") << QStringList { "Documents/" } << false << "";
        QTest::newRow("install folder only") << QStringList { ut + "System/" } << false << ut;
        QTest::newRow("user.ini wins over an earlier place")
            << QStringList { ".utpg/System/", ut + "System/User.ini" } << false << ut;
        QTest::newRow("port's user folder first") << QStringList { ".loki/ut/System/User.ini",
            ut + "System/User.ini" } << false << ".loki/ut/";
        QTest::newRow("whole game wins over a port's user folder") << QStringList {
            ".utpg/System/User.ini", "ut/System/User.ini", "ut/System/Botpack.int"
        } << false << "ut/";
        QTest::newRow("names in any case")
            << QStringList { "ut/system/user.INI" } << false << "ut/";
        QTest::newRow("System is a file") << QStringList { ut + "System" } << false << "";
        QTest::newRow("64-bit game only")
            << QStringList { ".utpg/System/", "ut/System/Botpack.int", "ut/System64/User.ini" }
            << false << "ut/";
        QTest::newRow("user.ini in ~/.utpg")
            << QStringList { ".utpg/System/User.ini", ut + "System/Botpack.int" } << false
            << patchedGame;
        QTest::newRow("start-up: a file in the folder")
            << QStringList { ut + "readme.txt" } << true << ut;
        QTest::newRow("start-up: folders only")
            << QStringList { ut + "System/User.ini" } << true << "";
        QTest::newRow("start-up: no folder") << QStringList { "Documents/" } << true << "";
    }

    void proposedGamePath()
    {
        QFETCH(QStringList, files);
        QFETCH(bool, startUp);
        QFETCH(QString, expected);
        QTemporaryDir home;
        // The game reads ~/.utpg through the home folder.
        qputenv("HOME", QFile::encodeName(home.path()));
        for (const QString &file : files)
            QVERIFY(file.endsWith('/') ? QDir(home.path()).mkpath(file)
                                       : writeTestFile(home.filePath(file), "[URL]\r\n"));
        const QString found = startUp
            ? FolderWithFiles(QDir::toNativeSeparators(home.filePath("UnrealTournament/")))
            : FirstGamePath(GamePathCandidates(home.path()));
        QCOMPARE(
            found, expected.isEmpty() ? "" : QDir::toNativeSeparators(home.filePath(expected)));
    }
};

QTEST_MAIN(TestGamePathProposals)
#include "test_gamepathproposals.moc"
