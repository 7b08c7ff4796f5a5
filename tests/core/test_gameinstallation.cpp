#include "configfiles/gameinstallation.h"
#include "testfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A game folder and a home folder built from paths: "~/" starts one in the
// home folder, a trailing "/" makes a folder instead of a file.
class Installation
{
public:
    explicit Installation(const QStringList &entries)
    {
        qputenv("HOME", QFile::encodeName(m_home.path()));
        for (const QString &entry : entries) {
            const QString path = absolute(entry);
            if (entry.endsWith(QLatin1Char('/')))
                QDir().mkpath(path);
            else
                writeTestFile(path, "x");
        }
    }

    QString gameDir() const { return m_game.path(); }
    QString absolute(const QString &entry) const
    {
        const bool inHome = entry.startsWith(QLatin1String("~/"));
        return QDir::toNativeSeparators((inHome ? m_home.path() : m_game.path()) + QLatin1Char('/')
            + entry.mid(inHome ? 2 : 0));
    }
    QStringList absolute(const QStringList &entries) const
    {
        QStringList paths;
        for (const QString &entry : entries)
            paths.append(absolute(entry));
        return paths;
    }

private:
    QTemporaryDir m_game;
    QTemporaryDir m_home;
};

} // namespace

class TestGameInstallation : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        setProcessLister({});
        setGameStarter({});
    }

    void userIniFiles_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<bool>("isGameFolder");

        QTest::newRow("System only")
            << QStringList { "System/User.ini" } << QStringList { "System/User.ini" } << true;
        QTest::newRow("System64 only") << QStringList { "System/", "System64/User.ini" }
                                       << QStringList { "System64/User.ini" } << true;
        QTest::newRow("both, System first")
            << QStringList { "System64/User.ini", "System/User.ini" }
            << QStringList { "System/User.ini", "System64/User.ini" } << true;
        QTest::newRow("other capitals")
            << QStringList { "system/user.ini", "SYSTEM64/USER.INI" }
            << QStringList { "system/user.ini", "SYSTEM64/USER.INI" } << true;
        QTest::newRow("a folder named User.ini")
            << QStringList { "System/User.ini/" } << QStringList {} << false;
        QTest::newRow("no System folder")
            << QStringList { "System64/User.ini" } << QStringList { "System64/User.ini" } << false;
#ifdef Q_OS_LINUX
        QTest::newRow("home folder when the game has none")
            << QStringList { "System/Core.int", "~/.utpg/system/User.ini" }
            << QStringList { "~/.utpg/system/User.ini" } << true;
        QTest::newRow("home folder ignored when the game has one")
            << QStringList { "System/", "System64/User.ini", "~/.utpg/System/User.ini" }
            << QStringList { "System64/User.ini" } << true;
        QTest::newRow("home folder alone is no game folder")
            << QStringList { "~/.utpg/System/User.ini" }
            << QStringList { "~/.utpg/System/User.ini" } << false;
#endif
    }

    void userIniFiles()
    {
        QFETCH(QStringList, entries);
        QFETCH(QStringList, expected);
        QFETCH(bool, isGameFolder);
        const Installation installation(entries);
        QCOMPARE(GameUserIniFiles(installation.gameDir()), installation.absolute(expected));
        QCOMPARE(IsGameFolder(installation.gameDir()), isGameFolder);
    }

    // options.ini keeps an unset game folder as a lone separator: that is
    // not the root of the disk, nor a reason to use the home folder's files.
    void unsetGameFolder()
    {
        const Installation installation({ "~/.utpg/System/User.ini" });
        for (const QString gameDir : { "", "/", "\\" }) {
            QCOMPARE(GameUserIniFiles(gameDir), QStringList());
            QVERIFY(!IsGameFolder(gameDir));
            QCOMPARE(GameExecutable(gameDir), QString());
        }
    }

    void gameExecutable_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("expected");
#ifdef Q_OS_WIN
        QTest::newRow("64-bit first")
            << QStringList { "System/UnrealTournament.exe", "System64/UnrealTournament.exe" }
            << "System64/UnrealTournament.exe";
        QTest::newRow("32-bit") << QStringList { "system/unrealtournament.exe" }
                                << "system/unrealtournament.exe";
#else
        QTest::newRow("amd64 first") << QStringList { "System/ut-bin", "System/ut-bin-x86",
            "SystemARM64/ut-bin-arm64", "System64/ut-bin-amd64" }
                                     << "System64/ut-bin-amd64";
        QTest::newRow("arm64 before x86") << QStringList { "System/ut-bin-x86",
            "SystemARM64/ut-bin-arm64" } << "SystemARM64/ut-bin-arm64";
        QTest::newRow("x86 before the plain name")
            << QStringList { "System/ut-bin", "System/ut-bin-x86" } << "System/ut-bin-x86";
        QTest::newRow("other capitals") << QStringList { "system/UT-BIN" } << "system/UT-BIN";
        QTest::newRow("a folder is no executable")
            << QStringList { "System64/ut-bin-amd64/", "System/ut-bin" } << "System/ut-bin";
        QTest::newRow("the Windows game only")
            << QStringList { "System/UnrealTournament.exe" } << "";
#endif
        QTest::newRow("none") << QStringList { "System/User.ini" } << "";
    }

    void gameExecutable()
    {
        QFETCH(QStringList, entries);
        QFETCH(QString, expected);
        const Installation installation(entries);
        QCOMPARE(GameExecutable(installation.gameDir()),
            expected.isEmpty() ? QString() : installation.absolute(expected));
    }

    void startGame()
    {
        const Installation installation({ "System64/ut-bin-amd64" });
        const QString program = installation.absolute("System64/ut-bin-amd64");
        QStringList started;
        bool startable = true;
        setGameStarter([&](const QString &program, const QString &workingDirectory) {
            started << program << workingDirectory;
            return startable;
        });
        QVERIFY(StartGame(program));
        QCOMPARE(started, (QStringList { program, installation.absolute("System64") }));
        startable = false;
        QVERIFY(!StartGame(program));
        started.clear();
        QVERIFY(!StartGame(QString()));
        QCOMPARE(started, QStringList());

        setGameStarter({});
        QVERIFY(!StartGame(installation.absolute("System/ut-bin")));
    }

    void gameRunning_data()
    {
        QTest::addColumn<QStringList>("processes");
        QTest::addColumn<bool>("running");
        QTest::newRow("no processes") << QStringList {} << false;
        QTest::newRow("other programs") << QStringList { "bash", "sleep", "ucc-bin" } << false;
        QTest::newRow("near names")
            << QStringList { "ut-bin-amd64.sh", "ut", "UnrealTournament", "xut-bin" } << false;
        for (const char *name :
            { "ut-bin", "ut-bin-x86", "ut-bin-amd64", "ut-bin-arm64", "UnrealTournament.exe" })
            QTest::newRow(name) << QStringList { "bash", name } << true;
        QTest::newRow("other capitals") << QStringList { "unrealtournament.EXE" } << true;
    }

    void gameRunning()
    {
        QFETCH(QStringList, processes);
        QFETCH(bool, running);
        setProcessLister([&] { return processes; });
        QCOMPARE(IsGameRunning(), running);
    }

    // The process list as /proc shows it: a Linux game by its comm, the
    // Windows game under Wine by argv[0] only, as comm is cut short.
    void processNamesInProc()
    {
        QTemporaryDir proc;
        const QList<QPair<QString, QByteArray>> files { { "1/comm", "systemd\n" },
            { "1/cmdline", QByteArray("/sbin/init\0splash\0", 18) }, { "2/comm", "kthreadd\n" },
            { "2/cmdline", "" }, { "40/comm", "ut-bin-amd64\n" },
            { "40/cmdline", QByteArray("./ut-bin-amd64\0-log\0", 21) },
            { "41/comm", "UnrealTournamen\n" },
            { "41/cmdline", QByteArray("C:\\UT\\System\\UnrealTournament.exe\0", 34) },
            { "self/comm", "ut-bin\n" } };
        for (const auto &[path, content] : files)
            QVERIFY(writeTestFile(proc.filePath(path), content));
        QVERIFY(QDir(proc.path()).mkpath("42")); // ended while the list was read

        QCOMPARE(ProcessNamesIn(proc.path()),
            QStringList({ "systemd", "init", "kthreadd", "ut-bin-amd64", "ut-bin-amd64",
                "UnrealTournamen", "UnrealTournament.exe" }));
#ifdef Q_OS_LINUX
        QVERIFY(ProcessNamesIn("/proc").contains("test_gameinstallation"));
#endif
    }
};

QTEST_GUILESS_MAIN(TestGameInstallation)
#include "test_gameinstallation.moc"
