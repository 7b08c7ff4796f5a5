#include "configfiles/gameinstallation.h"
#include "testfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestGameInstallation : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_game, m_home;

    // "~/" starts a path in the home folder, else it is in the game folder.
    QString absolute(const QString &entry) const
    {
        const bool inHome = entry.startsWith("~/");
        return QDir::toNativeSeparators(
            (inHome ? m_home : m_game)->path() + '/' + entry.mid(inHome ? 2 : 0));
    }

    // A trailing "/" makes a folder instead of a file.
    void install(const QStringList &entries)
    {
        for (const QString &entry : entries)
            QVERIFY(entry.endsWith('/') ? QDir().mkpath(absolute(entry))
                                        : writeTestFile(absolute(entry), "x"));
    }

private slots:
    void init()
    {
        m_game = std::make_unique<QTemporaryDir>();
        m_home = std::make_unique<QTemporaryDir>();
        qputenv("HOME", QFile::encodeName(m_home->path()));
    }

    void cleanup()
    {
        setProcessLister({});
        setGameStarter({});
    }

    void installation_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QStringList>("userInis");
        QTest::addColumn<bool>("isGameFolder");
        QTest::addColumn<QString>("executable");
        const auto row
            = [](const char *tag, const QStringList &entries, const QStringList &userInis,
                  bool isGameFolder, const QString &executable = QString()) {
                  QTest::newRow(tag) << entries << userInis << isGameFolder << executable;
              };
        const QString system = "System/User.ini", system64 = "System64/User.ini";
        const QString home = "~/.utpg/System/User.ini";
        // clang-format off
        row("System only", { system }, { system }, true);
        row("System64 only", { "System/", system64 }, { system64 }, true);
        row("both, System first", { system64, system }, { system, system64 }, true);
        row("other capitals", { "system/user.ini", "SYSTEM64/USER.INI" }, { "system/user.ini", "SYSTEM64/USER.INI" }, true);
        row("a folder named User.ini", { "System/User.ini/" }, {}, false);
        row("no System folder", { system64 }, { system64 }, false);
#ifdef Q_OS_LINUX
        row("home folder when the game has none", { "System/Core.int", "~/.utpg/system/User.ini" }, { "~/.utpg/system/User.ini" }, true);
        row("home folder ignored when the game has one", { "System/", system64, home }, { system64 }, true);
        row("home folder alone is no game folder", { home }, { home }, false);
#endif
#ifdef Q_OS_WIN
        row("64-bit first", { system, "System/UnrealTournament.exe", "System64/UnrealTournament.exe" }, { system }, true, "System64/UnrealTournament.exe");
        row("32-bit", { system, "system/unrealtournament.exe" }, { system }, true, "system/unrealtournament.exe");
#else
        row("amd64 first", { "System/ut-bin", "System/ut-bin-x86", "SystemARM64/ut-bin-arm64", "System64/ut-bin-amd64" }, {}, false, "System64/ut-bin-amd64");
        row("arm64 before x86", { "System/ut-bin-x86", "SystemARM64/ut-bin-arm64" }, {}, false, "SystemARM64/ut-bin-arm64");
        row("x86 before the plain name", { "System/ut-bin", "System/ut-bin-x86" }, {}, false, "System/ut-bin-x86");
        row("executable in other capitals", { "system/UT-BIN" }, {}, false, "system/UT-BIN");
        row("a folder is no executable", { "System64/ut-bin-amd64/", "System/ut-bin" }, {}, false, "System/ut-bin");
        row("the Windows game only", { system, "System/UnrealTournament.exe" }, { system }, true);
#endif
        // clang-format on
    }

    void installation()
    {
        QFETCH(QStringList, entries);
        QFETCH(QStringList, userInis);
        QFETCH(QString, executable);
        install(entries);
        QStringList expected;
        for (const QString &userIni : userInis)
            expected.append(absolute(userIni));
        QCOMPARE(GameUserIniFiles(m_game->path()), expected);
        QTEST(IsGameFolder(m_game->path()), "isGameFolder");
        QCOMPARE(GameExecutable(m_game->path()), executable.isEmpty() ? "" : absolute(executable));
    }

    // options.ini keeps an unset game folder as a lone separator: that is
    // not the root of the disk, nor a reason to use the home folder's files.
    void unsetGameFolder()
    {
        install({ "~/.utpg/System/User.ini" });
        for (const QString gameDir : { "", "/", "\\" })
            QCOMPARE(GameUserIniFiles(gameDir)
                    << GameExecutable(gameDir) << (IsGameFolder(gameDir) ? "game folder" : ""),
                QStringList(2));
    }

    // The game starts in its executable's folder; nothing is started without
    // a program, and without a starter only a real file is.
    void startGame()
    {
        const QString program = absolute("System64/ut-bin-amd64");
        install({ "System64/ut-bin-amd64" });
        QStringList started;
        setGameStarter([&](const QString &program, const QString &workingDirectory) {
            started << program << workingDirectory;
            return started.size() == 2;
        });
        QCOMPARE(QList<bool>({ StartGame(program), StartGame(program), StartGame(QString()) }),
            QList<bool>({ true, false, false })); // the second: the starter's own answer
        QCOMPARE(
            started, QStringList({ program, absolute("System64"), program, absolute("System64") }));
        setGameStarter({});
        QVERIFY(!StartGame(absolute("System/ut-bin")));
    }

    // Only the game's own executables count, the Windows one in any case.
    void gameRunning()
    {
        QStringList processes { "bash", "ucc-bin", "ut-bin-amd64.sh", "ut", "UnrealTournament",
            "xut-bin" };
        setProcessLister([&] { return processes; });
        QVERIFY(!IsGameRunning());
        for (const char *name :
            { "ut-bin", "ut-bin-x86", "ut-bin-amd64", "ut-bin-arm64", "unrealtournament.EXE" }) {
            processes = { "bash", name };
            QVERIFY2(IsGameRunning(), name);
        }
    }

    // The process list as /proc shows it: a Linux game by its comm, the
    // Windows game under Wine by argv[0] only, as comm is cut short; 42 ended
    // while the list was read.
    void processNamesInProc()
    {
        QCOMPARE(ProcessNamesIn(testDataDir() + "gameinstallation/proc"),
            QStringList({ "systemd", "init", "kthreadd", "ut-bin-amd64", "ut-bin-amd64",
                "UnrealTournamen", "UnrealTournament.exe" }));
#ifdef Q_OS_LINUX
        QVERIFY(ProcessNamesIn("/proc").contains("test_gameinstallation"));
#endif
    }
};

QTEST_GUILESS_MAIN(TestGameInstallation)
#include "test_gameinstallation.moc"
