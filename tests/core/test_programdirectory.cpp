#include "buildconfig.h"
#include "startup/gamepathproposals.h"
#include "startup/programdirectory.h"
#include "startup/recentfiles.h"
#include "testfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// The files the start-up looks for: its own folder, the list of recent
// configurations, the game's folder.
class TestProgramDirectory : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    // A copy that cannot write beside itself, portable or installed, keeps
    // its files in the user's data folder, seeded with the shipped ones but
    // never over the user's own. (Writable copies: the CLI test.)
    void choice_data()
    {
        QTest::addColumn<QString>("binFolder");
        QTest::addColumn<QByteArray>("usersPattern"); // pattern.ini already in the user folder
        QTest::newRow("portable, read-only") << "portable" << QByteArray();
        QTest::newRow("installed, read-only") << "usr/bin" << QByteArray("mine\r\n");
    }

    void choice()
    {
        QFETCH(QString, binFolder);
        QFETCH(QByteArray, usersPattern);
        QTemporaryDir root;
        const QString executableDir = root.filePath(binFolder);
        QVERIFY(QDir().mkpath(executableDir));
        const QString shippedDir = binFolder == "portable"
            ? executableDir
            : QDir(executableDir).filePath(QUORVANE_DATA_FROM_EXECUTABLE);
        QVERIFY(writeTestFile(shippedDir + "/int.ini", "Core.int\r\n"));
        QVERIFY(writeTestFile(shippedDir + "/pattern.ini", "shipped\r\n"));
        // Installed files belong to root: the copies must become the user's to change.
        QVERIFY(QFile::setPermissions(shippedDir + "/pattern.ini", QFile::ReadOwner));
        const QString userDir = root.filePath("home/.local/share/quorvane");
        QVERIFY(usersPattern.isEmpty() || writeTestFile(userDir + "/pattern.ini", usersPattern));

        const QString chosen = ChooseProgramDir({ executableDir, false, userDir });
        QCOMPARE(chosen, QDir::toNativeSeparators(userDir) + QDir::separator());
        QCOMPARE(readTestFile(chosen + "int.ini") + readTestFile(chosen + "pattern.ini"),
            "Core.int\r\n" + (usersPattern.isEmpty() ? QByteArray("shipped\r\n") : usersPattern));
        QVERIFY(QFile::permissions(chosen + "pattern.ini") & QFile::WriteOwner);
    }

    // Newest first, each once, five at most. (Taking one out: the document
    // commands' test.)
    void addingRecentFiles()
    {
        const QStringList five { "/1", "/2", "/3", "/4", "/5" };
        QCOMPARE(WithRecentFile(five, "/2"), (QStringList { "/2", "/1", "/3", "/4", "/5" }));
        QCOMPARE(WithRecentFile(five, "/6"), (QStringList { "/6", "/1", "/2", "/3", "/4" }));
    }

    // Whatever the file holds, it only ever gives a usable list. What is
    // written reads back, except a name a line break would split.
    void readingRecentFiles_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no file
        QTest::addColumn<QStringList>("written"); // instead of content
        QTest::addColumn<QStringList>("files");
        const QString home = QDir::homePath();
        const QByteArray h = home.toUtf8();
        QByteArray many;
        QStringList names;
        for (int i = 0; i < 8; ++i) {
            many += h + "/" + QByteArray::number(i) + ".qvn\n";
            names << home + "/" + QString::number(i) + ".qvn";
        }
        const QStringList odd { home + "/Ünïcode ✓.qvn", home + "/two\nlines.qvn" };
        // clang-format off
        QTest::newRow("no file") << QByteArray() << QStringList() << QStringList();
        QTest::newRow("written by us") << h + "/Bots.qvn\n" + h + "/Été.qvn\n" << QStringList() << QStringList { home + "/Bots.qvn", home + "/Été.qvn" };
        QTest::newRow("empty, relative, repeated") << "\r\nBots.qvn\r\n" + h + "/a.qvn\r\n" + h + "/a.qvn\r\n" << QStringList() << QStringList { home + "/a.qvn" };
        QTest::newRow("more than five") << many << QStringList() << names.mid(0, 5);
        QTest::newRow("too large to be ours") << QByteArray(100 * 1024, '/') << QStringList() << QStringList();
        QTest::newRow("round trip") << QByteArray() << odd + names << QStringList { odd.at(0) } + names.mid(0, 4);
        // clang-format on
    }

    void readingRecentFiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, written);
        const QString path = m_dir.filePath("recentfiles.txt");
        QFile::remove(path);
        QVERIFY(content.isNull() || writeTestFile(path, content));
        if (!written.isEmpty())
            WriteRecentFiles(written, path);
        QTEST(ReadRecentFiles(path), "files");
    }

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
        // clang-format off
        QTest::newRow("nothing installed") << QStringList { "Documents/" } << false << "";
        QTest::newRow("install folder only") << QStringList { ut + "System/" } << false << ut;
        QTest::newRow("user.ini wins over an earlier place") << QStringList { ".utpg/System/", ut + "System/User.ini" } << false << ut;
        QTest::newRow("port's user folder first") << QStringList { ".loki/ut/System/User.ini", ut + "System/User.ini" } << false << ".loki/ut/";
        QTest::newRow("whole game wins over a port's user folder") << QStringList { ".utpg/System/User.ini", "ut/System/User.ini", "ut/System/Botpack.int" } << false << "ut/";
        QTest::newRow("names in any case") << QStringList { "ut/system/user.INI" } << false << "ut/";
        QTest::newRow("System is a file") << QStringList { ut + "System" } << false << "";
        QTest::newRow("64-bit game only") << QStringList { ".utpg/System/", "ut/System/Botpack.int", "ut/System64/User.ini" } << false << "ut/";
        QTest::newRow("user.ini in ~/.utpg") << QStringList { ".utpg/System/User.ini", ut + "System/Botpack.int" } << false << patchedGame;
        QTest::newRow("start-up: a file in the folder") << QStringList { ut + "readme.txt" } << true << ut;
        QTest::newRow("start-up: folders only") << QStringList { ut + "System/User.ini" } << true << "";
        QTest::newRow("start-up: no folder") << QStringList { "Documents/" } << true << "";
        // clang-format on
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

QTEST_GUILESS_MAIN(TestProgramDirectory)
#include "test_programdirectory.moc"
