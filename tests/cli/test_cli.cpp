#include "testfiles.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace Qt::StringLiterals;

namespace {

struct Run
{
    int exitCode = -1;
    QByteArray out;
    QString err;

    QJsonValue json() const
    {
        // Wrapping lets a lone JSON string parse as a document too.
        const QJsonDocument document = QJsonDocument::fromJson('[' + out + ']');
        return document.array().at(0);
    }
};

} // namespace

class TestCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void defaultsHoldTheDefaultRoster_data();
    void defaultsHoldTheDefaultRoster();
    void savedRosterReadsBack();
    void listShowsConfigurationsByName();
    void saveKeepsAnExistingFileWithoutForce();
    void refusesMalformedRosters_data();
    void refusesMalformedRosters();
    void applyReplacesOnlyTheSection();
    void applyRefusesAMissingConfiguration();
    void applyTargets_data();
    void applyTargets();
    void refusesNamesOutsideTheConfigurationDirectory_data();
    void refusesNamesOutsideTheConfigurationDirectory();
    void failedWritesSaySo_data();
    void failedWritesSaySo();
    void optionsWriteChangesOnlyTheGivenFields();
    void importReadsTheGamesList();
    void restoreUndoesAnApply();
    void checkListsWhatIsNotInstalled();
    void usageErrors_data();
    void usageErrors();

private:
    // `fileSizeLimit` (bytes, 0 for none) stands in for a full disk.
    Run cli(const QStringList &arguments, const QByteArray &input = {}, qint64 fileSizeLimit = 0);
    const QJsonObject &defaultRoster() const { return m_defaultRoster; }
    QString configDir() const { return m_dir->filePath(u"configs"_s); }
    QString gameDir() const { return m_dir->filePath(u"game"_s); }
    // Every file below the test's directory with its content.
    QMap<QString, QByteArray> files() const;

    std::unique_ptr<QTemporaryDir> m_dir;
    QJsonObject m_defaultRoster;
};

Run TestCli::cli(const QStringList &arguments, const QByteArray &input, qint64 fileSizeLimit)
{
    QProcess process;
#ifdef Q_OS_UNIX
    if (fileSizeLimit > 0) {
        // Ignored, so that a write past the limit comes back short instead
        // of killing the program.
        process.setChildProcessModifier([fileSizeLimit] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{rlim_t(fileSizeLimit), rlim_t(fileSizeLimit)};
            setrlimit(RLIMIT_FSIZE, &limit);
        });
    }
#else
    Q_UNUSED(fileSizeLimit);
#endif
    // Never the executable's directory: the tests must not write beside it.
    process.start(QStringLiteral(QUORVANE_CLI),
                  QStringList{u"--program-dir"_s, m_dir->filePath(u"program"_s)} + arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(30000))
        qWarning() << "quorvane-cli did not finish:" << arguments;
    return Run{process.exitCode(), process.readAllStandardOutput(),
               QString::fromUtf8(process.readAllStandardError())};
}

QMap<QString, QByteArray> TestCli::files() const
{
    QMap<QString, QByteArray> contents;
    QDirIterator it(m_dir->path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        contents.insert(path, readTestFile(path));
    }
    return contents;
}

void TestCli::initTestCase()
{
    init();
    m_defaultRoster = cli({u"defaults"_s}).json().toObject();
    QVERIFY(!m_defaultRoster.isEmpty());
}

void TestCli::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    QVERIFY(QDir(m_dir->path()).mkpath(u"program"_s));
    QVERIFY(QDir(m_dir->path()).mkpath(u"configs"_s));
}

void TestCli::defaultsHoldTheDefaultRoster_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("slot"); // -1 for a list-wide value
    QTest::addColumn<QJsonValue>("expected");

    QTest::newRow("first name") << u"BotNames"_s << 0 << QJsonValue(u"Archon"_s);
    QTest::newRow("no team") << u"BotTeams"_s << 0 << QJsonValue(255);
    QTest::newRow("gold team") << u"BotTeams"_s << 31 << QJsonValue(3);
    QTest::newRow("class") << u"BotClasses"_s << 1 << QJsonValue(u"BotPack.TFemale2Bot"_s);
    QTest::newRow("no voice") << u"VoiceType"_s << 5 << QJsonValue(u""_s);
    QTest::newRow("alertness") << u"Alertness"_s << 18 << QJsonValue(-30);
    QTest::newRow("combat style") << u"CombatStyle"_s << 20 << QJsonValue(u"-1.000000"_s);
    QTest::newRow("weapon") << u"FavoriteWeapon"_s << 16 << QJsonValue(u"Botpack.UT_FlakCannon"_s);
    QTest::newRow("jumpy") << u"BotJumpy"_s << 30 << QJsonValue(1);
    QTest::newRow("difficulty") << u"Difficulty"_s << -1 << QJsonValue(0);
    QTest::newRow("adjust skill") << u"bAdjustSkill"_s << -1 << QJsonValue(false);
    QTest::newRow("random order") << u"bRandomOrder"_s << -1 << QJsonValue(false);
    QTest::newRow("description") << u"Description"_s << -1 << QJsonValue(u""_s);
}

void TestCli::defaultsHoldTheDefaultRoster()
{
    QFETCH(QString, key);
    QFETCH(int, slot);
    QFETCH(QJsonValue, expected);

    const QJsonObject roster = defaultRoster();
    QCOMPARE(roster.size(), 18);
    const QJsonValue value = roster.value(key);
    if (slot < 0) {
        QCOMPARE(value, expected);
    } else {
        QCOMPARE(value.toArray().size(), 32);
        QCOMPARE(value.toArray().at(slot), expected);
    }
}

void TestCli::savedRosterReadsBack()
{
    QJsonObject roster = defaultRoster();
    QJsonArray names = roster.value("BotNames"_L1).toArray();
    names.replace(3, u"Zoë=the=Brave"_s); // non-ASCII, and "=" inside a value
    roster.insert("BotNames"_L1, names);
    roster.insert("Difficulty"_L1, 5);
    roster.insert("bAdjustSkill"_L1, true);
    roster.insert("Description"_L1, u"Night matches, small maps"_s);
    const QByteArray json = QJsonDocument(roster).toJson();

    const Run save = cli({u"--config-dir"_s, configDir(), u"save"_s, u"night.qvn"_s, u"--roster"_s,
                          u"-"_s},
                         json);
    QCOMPARE(save.err, QString());
    QCOMPARE(save.exitCode, 0);

    // Every description line reads back with a space after it.
    roster.insert("Description"_L1, u"Night matches, small maps "_s);
    const Run open = cli({u"open"_s, u"night.qvn"_s, u"--config-dir"_s, configDir()});
    QCOMPARE(open.exitCode, 0);
    QCOMPARE(open.json().toObject(), roster);

    const Run describe = cli({u"describe"_s, u"night.qvn"_s, u"--config-dir"_s, configDir()});
    QCOMPARE(describe.exitCode, 0);
    QCOMPARE(describe.out, QByteArray("\"Night matches, small maps \"\n"));
}

void TestCli::listShowsConfigurationsByName()
{
    for (const QString &name : {u"zulu.qvn"_s, u"Alpha.qvn"_s, u"mike.QVN"_s})
        QCOMPARE(cli({u"save"_s, name, u"--config-dir"_s, configDir()}).exitCode, 0);
    QVERIFY(writeTestFile(configDir() + u"/notes.txt"_s, "not a configuration"));

    const Run list = cli({u"list"_s, u"--config-dir"_s, configDir()});
    QCOMPARE(list.exitCode, 0);
    QStringList files;
    for (const QJsonValue &entry : list.json().toArray()) {
        files.append(entry["file"_L1].toString());
        QCOMPARE(entry["description"_L1], QJsonValue(u" "_s)); // an empty description
    }
    QCOMPARE(files, (QStringList{u"Alpha.qvn"_s, u"mike.QVN"_s, u"zulu.qvn"_s}));
}

void TestCli::saveKeepsAnExistingFileWithoutForce()
{
    const QString path = configDir() + u"/kept.qvn"_s;
    QVERIFY(writeTestFile(path, "my own file\r\n"));

    const Run refused = cli({u"--config-dir"_s, configDir(), u"save"_s, u"kept.qvn"_s});
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(refused.err, u"File Already Exists: This file exists, do you really want to over "
                          "write it?\n"_s);
    QCOMPARE(readTestFile(path), QByteArray("my own file\r\n"));

    const Run forced = cli({u"--config-dir"_s, configDir(), u"save"_s, u"kept.qvn"_s,
                            u"--force"_s});
    QCOMPARE(forced.exitCode, 0);
    QVERIFY(readTestFile(path).startsWith("*"));
}

void TestCli::refusesMalformedRosters_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("problem");

    const QJsonObject roster = defaultRoster();
    const auto changed = [&](const QString &key, const QJsonValue &value) {
        QJsonObject copy = roster;
        if (value.isUndefined())
            copy.remove(key);
        else
            copy.insert(key, value);
        return QJsonDocument(copy).toJson();
    };
    const auto withSlot = [&](const QString &key, int slot, const QJsonValue &value) {
        QJsonArray array = roster.value(key).toArray();
        array.replace(slot, value);
        return changed(key, array);
    };
    QJsonArray shortNames = roster.value("BotNames"_L1).toArray();
    shortNames.removeLast();

    QTest::newRow("not JSON") << QByteArray("{\"BotNames\": [") << u"not valid JSON"_s;
    QTest::newRow("an array") << QByteArray("[]") << u"the roster must be a JSON object"_s;
    QTest::newRow("missing key") << changed(u"BotSkins"_s, QJsonValue::Undefined)
                                 << u"missing key \"BotSkins\""_s;
    QTest::newRow("unknown key") << changed(u"BotColour"_s, 1) << u"unknown key \"BotColour\""_s;
    QTest::newRow("31 names") << changed(u"BotNames"_s, shortNames)
                              << u"\"BotNames\" has 31 values; it must have exactly 32"_s;
    QTest::newRow("teams not an array") << changed(u"BotTeams"_s, u"0"_s)
                                        << u"\"BotTeams\" must be an array of 32 integers"_s;
    QTest::newRow("number as text") << withSlot(u"BotJumpy"_s, 5, u"1"_s)
                                    << u"\"BotJumpy[5]\" must be an integer"_s;
    QTest::newRow("fraction") << withSlot(u"BotSkills"_s, 3, 1.5)
                              << u"\"BotSkills[3]\" must be an integer"_s;
    QTest::newRow("beyond 16 bits")
        << withSlot(u"Camping"_s, 0, 40000)
        << u"\"Camping[0]\" is 40000, outside the range -32768 to 32767"_s;
    QTest::newRow("below 16 bits")
        << changed(u"Difficulty"_s, -32769)
        << u"\"Difficulty\" is -32769, outside the range -32768 to 32767"_s;
    QTest::newRow("number as class") << withSlot(u"BotClasses"_s, 2, 7)
                                     << u"\"BotClasses[2]\" must be a string"_s;
    QTest::newRow("boolean as number") << changed(u"bAdjustSkill"_s, 1)
                                       << u"\"bAdjustSkill\" must be true or false"_s;
    QTest::newRow("no description") << changed(u"Description"_s, QJsonValue::Null)
                                    << u"\"Description\" must be a string"_s;
}

void TestCli::refusesMalformedRosters()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, problem);

    const Run run = cli({u"--config-dir"_s, configDir(), u"save"_s, u"bad.qvn"_s, u"--roster"_s,
                         u"-"_s},
                        json);
    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.err.startsWith(u"stdin: "_s + problem), qPrintable(run.err));
    QVERIFY(!QFile::exists(configDir() + u"/bad.qvn"_s));
}

void TestCli::applyReplacesOnlyTheSection()
{
    const QString game = m_dir->filePath(u"game"_s);
    const QString demoSystem = QStringLiteral(QUORVANE_SOURCE_DIR) + u"/demo/UnrealTournament/System/"_s;
    const QByteArray before = readTestFile(demoSystem + u"User.ini"_s);
    QVERIFY(writeTestFile(game + u"/System/User.ini"_s, before));

    const QStringList dirs{u"--game-dir"_s, game, u"--config-dir"_s, configDir()};
    QCOMPARE(cli(dirs + QStringList{u"save"_s, u"Default.qvn"_s}).exitCode, 0);
    const Run apply = cli(dirs + QStringList{u"apply"_s, u"Default.qvn"_s, u"--backup"_s});
    QCOMPARE(apply.exitCode, 0);
    QCOMPARE(apply.out, QDir::toNativeSeparators(game + u"/System/User.ini\n"_s).toUtf8());

    const QByteArray after = readTestFile(game + u"/System/User.ini"_s);
    const qsizetype header = before.indexOf("[Botpack.ChallengeBotInfo]");
    const QByteArray tail = before.mid(before.indexOf("\r\n\r\n[Botpack.EndStats]"));
    QCOMPARE(after.left(header), before.left(header));
    QVERIFY(after.endsWith(tail));
    QVERIFY(after.contains("\r\nBotNames[0]=Archon\r\n"));
    QVERIFY(!after.contains("Quill"));

    const QStringList backups = QDir(configDir()).entryList({u"curconfig_bkup_(*"_s});
    QCOMPARE(backups.size(), 1);
    QVERIFY(readTestFile(configDir() + u'/' + backups.first()).contains("BotNames[0]=Quill"));
}

void TestCli::applyRefusesAMissingConfiguration()
{
    const QString game = m_dir->filePath(u"game"_s);
    QVERIFY(writeTestFile(game + u"/System/User.ini"_s, "[Engine.Input]\r\n"));

    const Run apply = cli({u"--game-dir"_s, game, u"--config-dir"_s, configDir(), u"apply"_s,
                           u"gone.qvn"_s});
    QCOMPARE(apply.exitCode, 2);
    QVERIFY2(apply.err.startsWith(u"Missing File: Can't find "_s), qPrintable(apply.err));
    QCOMPARE(readTestFile(game + u"/System/User.ini"_s), QByteArray("[Engine.Input]\r\n"));
}

void TestCli::applyTargets_data()
{
    QTest::addColumn<QStringList>("userInis");
    QTest::addColumn<QStringList>("targets"); // none: the game directory's
    QTest::addColumn<QStringList>("changed"); // none: refused

    const QString system = u"System/User.ini"_s;
    const QString system64 = u"System64/User.ini"_s;
    QTest::newRow("System, by default") << QStringList{system} << QStringList{}
                                        << QStringList{system};
    QTest::newRow("System and System64, by default")
        << QStringList{system, system64} << QStringList{} << QStringList{system, system64};
    QTest::newRow("two targets, in the order given")
        << QStringList{system, system64} << QStringList{system64, system}
        << QStringList{system64, system};
    QTest::newRow("one target of two") << QStringList{system, system64} << QStringList{system64}
                                       << QStringList{system64};
    QTest::newRow("the same target twice") << QStringList{system} << QStringList{system, system}
                                           << QStringList{system};
    QTest::newRow("a missing target") << QStringList{system} << QStringList{system, system64}
                                      << QStringList{};
}

void TestCli::applyTargets()
{
    QFETCH(QStringList, userInis);
    QFETCH(QStringList, targets);
    QFETCH(QStringList, changed);

    const QByteArray demo = readTestFile(QStringLiteral(QUORVANE_SOURCE_DIR)
                                         + u"/demo/UnrealTournament/System/User.ini"_s);
    const auto path = [&](const QString &relative) {
        return QDir::toNativeSeparators(gameDir() + u'/' + relative);
    };
    for (const QString &userIni : userInis)
        QVERIFY(writeTestFile(path(userIni), demo));
    const QStringList dirs{u"--game-dir"_s, gameDir(), u"--config-dir"_s, configDir()};
    QCOMPARE(cli(dirs + QStringList{u"save"_s, u"Default.qvn"_s}).exitCode, 0);

    QStringList arguments = dirs + QStringList{u"apply"_s, u"Default.qvn"_s};
    for (const QString &target : targets)
        arguments << u"--target"_s << path(target);
    const Run apply = cli(arguments);

    QString printed;
    for (const QString &userIni : changed)
        printed += path(userIni) + u'\n';
    QCOMPARE(QString::fromUtf8(apply.out), printed);
    QCOMPARE(apply.exitCode, changed.isEmpty() ? 2 : 0);
    if (changed.isEmpty())
        QCOMPARE(apply.err, u"User.ini File Missing: Can't find user.ini.  Operation Aborted\n"_s);
    for (const QString &userIni : userInis)
        QCOMPARE(readTestFile(path(userIni)).contains("BotNames[0]=Archon\r\n"),
                 changed.contains(userIni));
}

void TestCli::refusesNamesOutsideTheConfigurationDirectory_data()
{
    QTest::addColumn<QString>("configs"); // below the test's directory
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");

    const QString directoryPart = u"it has a directory part"_s;
    QTest::newRow("save over the game's user.ini")
        << u"configs"_s << QStringList{u"save"_s, u"../game/System/User.ini"_s, u"--force"_s}
        << directoryPart;
    QTest::newRow("save over options.ini")
        << u"configs"_s << QStringList{u"save"_s, u"../program/options.ini"_s, u"--force"_s}
        << directoryPart;
    QTest::newRow("apply any file's lines")
        << u"configs/inner"_s << QStringList{u"apply"_s, u"../../file"_s, u"--backup"_s}
        << directoryPart;
    QTest::newRow("open a file outside") << u"configs"_s
                                         << QStringList{u"open"_s, u"../program/options.ini"_s}
                                         << directoryPart;
    QTest::newRow("describe a file outside")
        << u"configs"_s << QStringList{u"describe"_s, u"../game/System/User.ini"_s}
        << directoryPart;
    QTest::newRow("save a device name") << u"configs"_s << QStringList{u"save"_s, u"nul.qvn"_s}
                                        << u"NUL is a name Windows keeps for a device"_s;
}

void TestCli::refusesNamesOutsideTheConfigurationDirectory()
{
    QFETCH(QString, configs);
    QFETCH(QStringList, arguments);
    QFETCH(QString, reason);

    QCOMPARE(cli({u"options"_s, u"--write"_s, u"--auto-close"_s, u"1"_s}).exitCode, 0);
    QVERIFY(writeTestFile(gameDir() + u"/System/User.ini"_s,
                          crlf({u"[Botpack.ChallengeBotInfo]"_s, u"BotNames[0]=Quill"_s})));
    QVERIFY(writeTestFile(m_dir->filePath(u"file"_s),
                          crlf({u"x"_s, u""_s, u"[Botpack.ChallengeBotInfo]"_s,
                                u"BotNames[0]=Evil"_s})));
    QVERIFY(QDir(m_dir->path()).mkpath(configs));
    const QMap<QString, QByteArray> before = files();

    const Run run = cli(QStringList{u"--game-dir"_s, gameDir(), u"--config-dir"_s,
                                    m_dir->filePath(configs)}
                        + arguments);
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.err, u"Invalid File Name: \""_s + arguments.at(1)
                          + u"\" is not a file name in the configuration folder: "_s + reason
                          + u". Type a bare name such as Bots.qvn.\n"_s);
    QCOMPARE(run.out, QByteArray());
    QCOMPARE(files(), before);
}

void TestCli::failedWritesSaySo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("errEnd");

    QTest::newRow("save over a file")
        << QStringList{u"save"_s, u"kept.qvn"_s, u"--force"_s}
        << u"/configs/kept.qvn\nThe configuration was not saved; the existing file is "
           "unchanged.\n"_s;
    QTest::newRow("save a new file") << QStringList{u"save"_s, u"new.qvn"_s}
                                     << u"/configs/new.qvn\nThe configuration was not saved.\n"_s;
    QTest::newRow("apply") << QStringList{u"apply"_s, u"Default.qvn"_s}
                           << u"/game/System/User.ini\r\n\r\nuser.ini was not changed.  "
                              "Operation Aborted.\n"_s;
}

void TestCli::failedWritesSaySo()
{
#ifndef Q_OS_UNIX
    QSKIP("no file size limits here");
#endif
    QFETCH(QStringList, arguments);
    QFETCH(QString, errEnd);

    QVERIFY(writeTestFile(gameDir() + u"/System/User.ini"_s,
                          crlf({u"[Botpack.ChallengeBotInfo]"_s, u"x=1"_s})));
    QVERIFY(writeTestFile(configDir() + u"/kept.qvn"_s, "my own file\r\n"));
    const QStringList dirs{u"--game-dir"_s, gameDir(), u"--config-dir"_s, configDir()};
    QCOMPARE(cli(dirs + QStringList{u"save"_s, u"Default.qvn"_s}).exitCode, 0);
    const QMap<QString, QByteArray> before = files();

    // Room for user.ini's working copy, not for a configuration.
    const Run run = cli(dirs + arguments, {}, 4096);
    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.err.endsWith(QDir::toNativeSeparators(errEnd)), qPrintable(run.err));
    QCOMPARE(run.out, QByteArray());
    QCOMPARE(files(), before);
}

void TestCli::optionsWriteChangesOnlyTheGivenFields()
{
    const Run firstRun = cli({u"options"_s});
    QCOMPARE(firstRun.exitCode, 0);
    QCOMPARE(firstRun.json()["FirstRun"_L1], QJsonValue(true));

    QCOMPARE(cli({u"options"_s, u"--write"_s, u"--auto-close"_s, u"1"_s, u"--config-path"_s,
                  u"/games/configs"_s, u"--ut-path"_s, u"/games/ut/"_s})
                 .exitCode,
             0);
    QCOMPARE(cli({u"options"_s, u"--write"_s, u"--ut-path"_s, u"/other/ut"_s}).exitCode, 0);

    const QJsonObject expected{{u"AutoCloseSplash"_s, 1},
                               {u"FirstRun"_s, false},
                               {u"ConfigPath"_s, u"/games/configs/"_s},
                               {u"UTPath"_s, u"/other/ut/"_s}};
    QCOMPARE(cli({u"options"_s}).json().toObject(), expected);
    QCOMPARE(readTestFile(m_dir->filePath(u"program/options.ini"_s)),
             crlf({u"[SplashScreen]"_s, u"1"_s, u""_s, u"[UTPath]"_s, u"0"_s,
                   u"/games/configs/"_s, u"/other/ut/"_s}));
}

void TestCli::importReadsTheGamesList()
{
    const Run run = cli({u"import"_s, u"--game-dir"_s, realWorldDir() + u"vanilla-server"_s});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.json()["CombatStyle"_L1][16], QJsonValue(u"0.500000"_s));
    QVERIFY(run.json()["Description"_L1].toString().startsWith(u"Imported from "_s));

    QVERIFY(writeTestFile(gameDir() + u"/User.ini"_s, crlf({u"[Engine.Engine]"_s})));
    const Run none = cli({u"import"_s, u"--from"_s, gameDir() + u"/User.ini"_s});
    QCOMPARE(none.exitCode, 2);
    QVERIFY2(none.err.startsWith(u"Import from Game: Can't find"_s), qPrintable(none.err));
}

void TestCli::restoreUndoesAnApply()
{
    const QByteArray original = readTestFile(realWorldDir()
                                             + u"vanilla-server/System/User.ini"_s);
    const QString userIni = QDir::toNativeSeparators(gameDir() + u"/System/User.ini"_s);
    QVERIFY(writeTestFile(userIni, original));
    const QStringList dirs{u"--game-dir"_s, gameDir(), u"--config-dir"_s, configDir()};
    QCOMPARE(cli(dirs + QStringList{u"save"_s, u"Default.qvn"_s}).exitCode, 0);
    QCOMPARE(cli(dirs + QStringList{u"apply"_s, u"Default.qvn"_s, u"--backup"_s}).exitCode, 0);
    QVERIFY(readTestFile(userIni) != original);

    const QJsonArray backups = cli(dirs + QStringList{u"backups"_s}).json().toArray();
    QCOMPARE(backups.size(), 1);
    QCOMPARE(backups[0]["bots"_L1][31], QJsonValue(u"Kragoth"_s));
    const Run restore = cli(dirs + QStringList{u"restore"_s, backups[0]["file"_L1].toString()});
    QCOMPARE(restore.err, u"Restore Backup...: Completed\n"_s);
    QCOMPARE(restore.exitCode, 0);
    QCOMPARE(QString::fromUtf8(restore.out), userIni + u'\n');
    QCOMPARE(readTestFile(userIni), original);
    QCOMPARE(cli(dirs + QStringList{u"backups"_s}).json().toArray().size(), 2);
}

void TestCli::checkListsWhatIsNotInstalled()
{
    QVERIFY(writeTestFile(m_dir->filePath(u"program/int.ini"_s),
                          readTestFile(QStringLiteral(QUORVANE_SOURCE_DIR "/src/data/int.ini"))));
    QJsonObject roster = defaultRoster();
    QJsonArray skins = roster["BotSkins"_L1].toArray();
    skins.replace(2, u"SoldierSkins.gone"_s);
    roster.insert("BotSkins"_L1, skins);
    const QStringList dirs{u"--game-dir"_s, realWorldDir() + u"vanilla-server"_s,
                           u"--config-dir"_s, configDir()};
    QCOMPARE(cli(dirs + QStringList{u"save"_s, u"c.qvn"_s, u"--roster"_s, u"-"_s},
                 QJsonDocument(roster).toJson())
                 .exitCode,
             0);

    const Run check = cli(dirs + QStringList{u"check"_s, u"c.qvn"_s});
    QCOMPARE(check.exitCode, 0);
    const QJsonObject gone{{u"slot"_s, 2},
                           {u"bot"_s, u"Alarik"_s},
                           {u"field"_s, u"skin"_s},
                           {u"value"_s, u"SoldierSkins.gone"_s},
                           {u"problem"_s, u"Skin \"SoldierSkins.gone\" is not installed"_s}};
    QCOMPARE(check.json().toArray(), QJsonArray{gone});
}

void TestCli::usageErrors_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("no command") << QStringList{};
    QTest::newRow("unknown command") << QStringList{u"frobnicate"_s};
    QTest::newRow("missing name") << QStringList{u"save"_s};
    QTest::newRow("extra argument") << QStringList{u"open"_s, u"a.qvn"_s, u"b.qvn"_s};
    QTest::newRow("unknown option") << QStringList{u"defaults"_s, u"--bogus"_s};
    QTest::newRow("option without value") << QStringList{u"list"_s, u"--config-dir"_s};
    QTest::newRow("auto-close not a number")
        << QStringList{u"options"_s, u"--write"_s, u"--auto-close"_s, u"yes"_s};
    QTest::newRow("change without --write") << QStringList{u"options"_s, u"--ut-path"_s, u"/x"_s};
}

void TestCli::usageErrors()
{
    QFETCH(QStringList, arguments);

    const Run run = cli(arguments);
    QCOMPARE(run.exitCode, 1);
    QVERIFY(!run.err.isEmpty());
    QVERIFY(run.out.isEmpty());
    QVERIFY(!QFile::exists(m_dir->filePath(u"program/options.ini"_s)));
}

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"
