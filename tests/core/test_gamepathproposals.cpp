#include "testfiles.h"

#include "startup/gamepathproposals.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestGamePathProposals : public QObject
{
    Q_OBJECT

private slots:
    void firstGamePath_data();
    void firstGamePath();
};

void TestGamePathProposals::firstGamePath_data()
{
    QTest::addColumn<QStringList>(
        "files"); // under the home folder; a name ending in "/" is a folder
    QTest::addColumn<QString>("expected"); // relative to the home folder, "" for none

    QTest::newRow("nothing installed") << QStringList { "Documents/" } << "";
    QTest::newRow("install folder only")
        << QStringList { "UnrealTournament/System/" } << "UnrealTournament/";
    QTest::newRow("user.ini wins over an earlier place") << QStringList { ".utpg/System/",
        "UnrealTournament/System/User.ini" } << "UnrealTournament/";
    QTest::newRow("port's user folder first") << QStringList { ".loki/ut/System/User.ini",
        "UnrealTournament/System/User.ini" } << ".loki/ut/";
    QTest::newRow("whole game wins over a port's user folder")
        << QStringList { ".utpg/System/User.ini", "ut/System/User.ini", "ut/System/Botpack.int" }
        << "ut/";
    QTest::newRow("names in any case") << QStringList { "ut/system/user.INI" } << "ut/";
    QTest::newRow("System is a file") << QStringList { "UnrealTournament/System" } << "";
}

void TestGamePathProposals::firstGamePath()
{
    QFETCH(QStringList, files);
    QFETCH(QString, expected);

    QTemporaryDir home;
    for (const QString &file : files) {
        if (file.endsWith('/'))
            QVERIFY(QDir(home.path()).mkpath(file));
        else
            QVERIFY(writeTestFile(home.path() + "/" + file, "[URL]\r\n"));
    }
    const QString found = FirstGamePath(GamePathCandidates(home.path()));
    QCOMPARE(found,
        expected.isEmpty() ? QString() : QDir::toNativeSeparators(home.path() + "/" + expected));
}

QTEST_MAIN(TestGamePathProposals)
#include "test_gamepathproposals.moc"
