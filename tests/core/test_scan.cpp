#include "catalogue/bossmode.h"
#include "catalogue/classparser.h"
#include "catalogue/intfile.h"
#include "catalogue/patternfile.h"
#include "catalogue/scan.h"
#include "catalogue/skinparser.h"
#include "catalogue/unmatchedlist.h"
#include "catalogue/voiceparser.h"
#include "startup/programdirectory.h"

#include "cataloguetext.h"
#include "childprocess.h"
#include "recordingprogress.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include "configfiles/runerror.h"

#include <QDir>
#include <QLockFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

QString declaration(const QString &name, const QString &description)
{
    return QString("Object=(Name=SkeletalCharsFix313.%1,Class=Class,MetaClass=Botpack.Bot,"
                   "Description=\"%2\")")
        .arg(name, description);
}

const QString war = declaration("WarBossFixed", "WarBoss [Fixed]");
const QString xan = declaration("XanFixed", "Xan II [Fixed]");
const QString maleWar = declaration("WarBossFixedMale", "WarBoss [Fixed/Male Voices]");
const QString maleXan = declaration("XanFixedMale", "Xan II [Fixed/Male Voices]");
const QString other = declaration("Helper", "Helper");
constexpr int NoRewrite = 99;

QString on(bool isOn, const QString &line)
{
    return isOn ? line : ';' + line;
}

} // namespace

const QStringList AllSteps { "Locating Model && Skin files...", "Analyzing Class files...",
    "Analyzing Skin files...", "Analyzing Voice files..." };

class TestScan : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<RecordingErrorSink> m_errors;

    QString gameDir() const { return m_dir->filePath("game/"); }
    QString systemDir() const { return gameDir() + "System/"; }
    QString programDir() const { return m_dir->filePath("program/"); }
    QString bossPackage() const { return systemDir() + "skeletalcharsfix313.int"; }

    // Each "<name>.int" of `files` is followed by its lines after the section
    // line; "pattern.ini" and "int.ini" by the program's patterns and skip list.
    void writeGame(const QStringList &files)
    {
        const auto isProgram = [](const QString &entry) { return entry.endsWith(".ini"); };
        for (qsizetype i = 0; i < files.size();) {
            const QString name = files.at(i++);
            QStringList lines = isProgram(name) ? QStringList() : QStringList { "[Public]" };
            while (i < files.size() && !files.at(i).endsWith(".int") && !isProgram(files.at(i)))
                lines.append(files.at(i++));
            QVERIFY(
                writeTestFile((isProgram(name) ? programDir() : systemDir()) + name, crlf(lines)));
        }
    }

    QString parsed(const QString &name, const QStringList &lines)
    {
        writeGame(QStringList { name } + lines);
        return systemDir() + name;
    }

    void scan(const ScanForms &forms = {})
    {
        ScanIntFiles(gameDir(), programDir() + "int.ini", forms);
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        setProgramDir(programDir());
        writeGame({ "int.ini", "ENGINE.INT", "pattern.ini" });
        Catalogue() = ModelCatalogue();
        CreateCatalogueTables();
        m_errors = std::make_unique<RecordingErrorSink>();
    }

    void cleanup()
    {
        m_errors.reset();
        setEventLoopHook({});
    }

    void sortsEachFileByItsDeclarations_data()
    {
        // A letter per list the file went to (Class, Skin, Voice), then the classes added.
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("sorted");

        const QString h = "[Public]";
        const QString bot = classLine("P.HeroBot");
        const QString male = voiceLine("P.Gruff", "Botpack.VoiceMale");
        const QString texture = textureLine("PSkins.abcd1");
        // Megabytes on one line take the sorting no longer than on many.
        const QString textures = QString(",Class=Texture").repeated(300'000);
        // The faces of a skin are the lines after it that hold its name.
        const QString longName = QString(1'000'000, 'e') + 'f';
        QStringEncoder utf16(QStringConverter::Utf16LE);
        // clang-format off
        QTest::newRow("the section line is never examined") << crlf({ bot, texture }) << "S0";
        QTest::newRow("reading ends at the first texture") << crlf({ h, texture, bot, male }) << "S0";
        QTest::newRow("a texture on a class line reads on")
            << crlf({ h, "Object=(Name=P.OddBot,Class=Texture,METACLASS=BOTPACK.BOT,Description=D)", male }) << "CV1";
        QTest::newRow("switched-off class is listed, not added") << crlf({ h, ';' + bot }) << "C0";
        QTest::newRow("other metaclasses and texture-less lines") << crlf({ h,
            "Object=(Name=P.Mut,Class=Class,MetaClass=Engine.Mutator,Description=\"M\")", "Object=(Name=P.Pic,Class=Sound)" }) << "0";
        QTest::newRow("LF only") << "[Public]\n" + bot.toLatin1() + '\n' << "C1";
        QTest::newRow("CR only") << "[Public]\r" + bot.toLatin1() + '\r' + texture.toLatin1() + '\r' << "CS1";
        QTest::newRow("UTF-16LE with byte-order mark")
            << "\xFF\xFE" + QByteArray(utf16(h + "\r\n" + classLine("P.WideBot", "W\u00e9de"))) << "C1";
        QTest::newRow("one long class line full of textures") << crlf({ h, bot + textures, male }) << "CV1";
        QTest::newRow("one long texture line") << crlf({ h, texture + textures, bot }) << "S0";
        QTest::newRow("a long skin name, a long line after it") << crlf({ h, classLine("P." + longName + "Bot"),
            textureLine(longName), textureLine(QString(2'000'000, 'e')) }) << "CS1";
        QTest::newRow("empty file") << QByteArray() << "0";
        QTest::newRow("one declaration, no line end") << bot.toLatin1() << "0";
        // clang-format on
    }

    void sortsEachFileByItsDeclarations()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(writeTestFile(systemDir() + "Mod.int", bytes));
        scan();
        const ModelCatalogue &catalogue = Catalogue();
        QString sorted;
        for (const auto &[list, letter] : { std::pair { &catalogue.ClassFiles, 'C' },
                 { &catalogue.SkinFiles, 'S' }, { &catalogue.VoiceFiles, 'V' } })
            sorted += QString(fileNames(*list).size(), QChar(letter));
        sorted += QString::number(std::count_if(catalogue.MISCCLASSES.begin(),
            catalogue.MISCCLASSES.end(), [](const MISCLASS &m) { return !m.ClassName.isEmpty(); }));
        QTEST(sorted, "sorted");
        QCOMPARE(m_errors->messages(), QStringList());
    }

    void scansIntoTheCatalogue_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QStringList>("catalogue"); // then the errors reported

        const QString xanMk2 = declaration("XanMk2BotFix313", "Xan II [Fixed]");
        const QString maleXanMk2 = declaration("XanMk2MBotFix313", "Xan II [Fixed/Male Voices]");
        const QString gold = textureLine("NewXanSkins.xana1", "Gold");
        const QString xanModel = "SkeletalCharsFix313.XanMk2BotFix313|Xan II [Fixed]|xanfixed";
        const QString maleXanModel
            = "SkeletalCharsFix313.XanMk2MBotFix313|Xan II [Fixed/Male Voices]|xanfixedmale";
        const QString goldSkin = ": NewXanSkins.xana|Gold";
        // clang-format off
        QTest::newRow("classes and voices by their names") << QStringList {
            "Botpack.int", classLine("Botpack.TMale1Bot", "Male Commando"), classLine("P.TMALE2Bot"), classLine("P.tfemale1bot"),
                classLine("P.TFemale2Bot"), classLine("P.TBossBot"), classLine("P.TSkaarjBot"), classLine("P.TNaliBot"), classLine("P.TCowBot"),
            "My.int", classLine("My.RobotKnightBot"), ';' + classLine("My.OffBot"), classLine("My.CustomBot"),
            // Only two file names make a boss package, whose classes are known by their names.
            "myskeletalchars.int", classLine("SkeletalChars.WarBossBot"), "skeletalchars.int", classLine("SkeletalChars.XanMk2Bot"),
            "SkeletalCharsFix313.int", classLine("SkeletalCharsFix313.WarBossMBotFix313"),
                classLine("skeletalcharsfix313.xanmk2botfix313"), classLine("SkeletalCharsFix313.OtherBot"),
            // A commented-out voice still counts, read by position.
            "Voices.int", voiceLine("V.Gruff", "Botpack.VoiceMale"), voiceLine("V.Robo", "Botpack.VoiceBoss"),
                voiceLine("V.Her", "BOTPACK.VOICEFEMALE"), ';' + voiceLine("V.Old", "Botpack.VoiceMale") }
            << QStringList { "Botpack.TMale1Bot|Male Commando|commando", "P.TMALE2Bot|D|soldier", "P.tfemale1bot|D|fcommando",
                   "P.TFemale2Bot|D|sgirl", "P.TBossBot|D|boss", "P.TSkaarjBot|D|tskm", "P.TNaliBot|D|tnalimesh", "P.TCowBot|D|tcowmesh",
                   "My.RobotKnightBot|D|Ro", "My.CustomBot|D|Custom", "SkeletalChars.WarBossBot|D|WarBoss",
                   "SkeletalChars.XanMk2Bot|D|xanmk2", "SkeletalCharsFix313.WarBossMBotFix313|D|warbossfixedmale",
                   "skeletalcharsfix313.xanmk2botfix313|D|xanfixed", "SkeletalCharsFix313.OtherBot|D|",
                   "voice V.Gruff|V|0", "voice V.Robo|V|2", "voice V.Her|V|1", "voice (Name=V.Old|V|0" };
        // A slot keeps what was stored before its line failed.
        QTest::newRow("bad lines cost only themselves") << QStringList {
            "Bad.int", "Object=(Name=Bad.OneBot,MetaClass=Botpack.Bot)", classLine("Bad.Hero"), classLine("NoDotBot"), classLine("Bad.TwoBot"),
            "Hero.int", classLine("P.HeroBot", "Hero"),
            "HeroSkins.int", textureLine("HeroSkins.hero1", "Red"), textureLine("HeroSkins.hero1Ace", "Ace"),
            "NoName.int", "Object=(Name=,Class=Texture,Description=\"X\")", "Odd.int", textureLine("OddSkins.oddd1"),
            "Voices.int", "Object=(Name=V.Short,MetaClass=Botpack.VoiceMale)",
                "Object=(Name=V.NoDot,Class=Class,MetaClass=X,Description=\"botpack.voicemale\")", voiceLine("V.Good", "Botpack.VoiceFemale") }
            << QStringList { "Bad.OneBot||", "Bad.Hero|D|", "NoDotBot|D|", "Bad.TwoBot|D|Two",
                   "P.HeroBot|Hero|Hero: HeroSkins.hero|Red [HeroSkins.hero1Ace|Ace]", "voice V.Short||0",
                   "voice V.NoDot|botpack.voicemale|0", "voice V.Good|V|1", "unmatched Odd.int|Odd" }
                + QStringList(3, "Unknown Error in modParseInt:EXTRACT CLASS INFORMATION - Other Than New Boss Skins")
                + QStringList { "Unknown Error in modParseInt in Sub ParseSkin:GET_TMP_SKIN_TYPE" }
                + QStringList(2, "Unknown Error in modParseInt in Sub ParseVoice:EXTRACT CLASS INFORMATION");
        // The faces of a skin are the described lines right after it that hold its name.
        QTest::newRow("skins and their faces") << QStringList { "MyHero.int", classLine("P.MyHeroBot"),
            "MyHeroSkins.int", textureLine("MyHeroSkins.hero1"), "Object=(Name=MyHeroSkins.hero2,Class=Texture)",
                textureLine("MyHeroSkins.hero5Ace"), textureLine("MyHeroSkins.hero5Bolt"),
                "Description=(Name=MyHeroSkins.hero5Late,Class=Texture)", textureLine("MyHeroSkins.army1"),
                "Object=(Name=MyHeroSkins.hazy1,Class=Texture,Description=\"\")", textureLine("MyHeroSkins.last1") }
            << QStringList { "P.MyHeroBot|D|MyHero: MyHeroSkins.hero|D [MyHeroSkins.hero5Ace|D, "
                             "MyHeroSkins.hero5Bolt|D], MyHeroSkins.army|D, MyHeroSkins.last|D" };
        // Patterns lead from skin type to skin type, case-sensitively, until one names a model.
        QTest::newRow("skin types and patterns") << QStringList { "Soldier.int", classLine("P.TMale2Bot"),
            "pattern.ini", "commando,Other", "soldier,X,Guy,CASE,Middle", "Middle,Chain", "gone,Lost", "B,Cyc", "Cyc,B",
            "Alone.int", textureLine("AloneSkins.abcd1"), "Any.int", textureLine("SOLDIERSkins.abcd1"),
            "Case.int", textureLine("CaseSkins.abcd1"), "Chain.int", textureLine("ChainSkins.abcd1"),
            "Cyc.int", textureLine("CycSkins.abcd1"), "Guy.int", textureLine("GuySkins.abcd1"), "Lost.int", textureLine("LostSkins.abcd1") }
            << QStringList { "P.TMale2Bot|D|soldier: SOLDIERSkins.abcd|D, ChainSkins.abcd|D, GuySkins.abcd|D", "unmatched Alone.int|Alone",
                   "unmatched Case.int|Case", "unmatched Cyc.int|B", "unmatched Lost.int|gone" };
        // The boss mode is read before the skin pass, which files the skins of
        // one variant under both when both are on.
        QTest::newRow("both boss variants on") << QStringList { "SkeletalCharsFix313.int", xanMk2, maleXanMk2,
                declaration("WarBossBotFix313", "WarBoss [Fixed]"), declaration("WarBossMBotFix313", "WarBoss [Fixed/Male Voices]"),
            "NewXan.int", gold, "WarMachine.int", textureLine("WarMachineBoss.wara1", "Iron") }
            << QStringList { xanModel + goldSkin, maleXanModel + goldSkin,
                   "SkeletalCharsFix313.WarBossBotFix313|WarBoss [Fixed]|warbossfixed: WarMachineBoss.wara|Iron",
                   "SkeletalCharsFix313.WarBossMBotFix313|WarBoss [Fixed/Male Voices]|warbossfixedmale: WarMachineBoss.wara|Iron" };
        QTest::newRow("plain boss variant only") << QStringList { "SkeletalCharsFix313.int", xanMk2, ';' + maleXanMk2, "NewXan.int", gold }
            << QStringList { xanModel + goldSkin };
        QTest::newRow("male boss variant only") << QStringList { "SkeletalCharsFix313.int", ';' + xanMk2, maleXanMk2, "NewXan.int", gold }
            << QStringList { maleXanModel, "unmatched NewXan.int|xanfixed" };
        QTest::newRow("skip list in any case, quoted, comma-separated") << QStringList { "int.ini", "engine.int ",
                "Other.int,\"core.Int\"", "Core.int", classLine("C.ModBot"), "Engine.int", classLine("E.ModBot"), "Mod.int", classLine("M.ModBot") }
            << QStringList { "M.ModBot|D|Mod" };
        // clang-format on
    }

    // Every scan starts afresh: a second one finds the same.
    void scansIntoTheCatalogue()
    {
        QFETCH(QStringList, files);
        writeGame(files);
        LoadPatternList();
        scan();
        QTEST(catalogueText() + m_errors->messages(), "catalogue");
        m_errors->errors.clear();
        scan();
        QTEST(catalogueText() + m_errors->messages(), "catalogue");
    }

    // What the real game's files hold is compared through the command line's
    // scan; this is how the scan goes through them, and what it leaves when
    // there are no files: the tables' free slots. The report is shown all the same.
    void progressAndTables_data()
    {
        QTest::addColumn<QString>("gameDir");
        // Advances, boss mode, slots of classes, voices, class, skin and voice files,
        // catalogue entries, class files, skin files.
        QTest::addColumn<QList<qsizetype>>("counts");
        using L = QList<qsizetype>;
        // 12 files sorted, 13 parsed (Botpack.int twice), 5 classes, 5 voices.
        QTest::newRow("real installation")
            << realWorldDir() + "vanilla-server/" << L { 35, 2, 5, 6, 2, 12, 2, 10, 1, 11 };
        QTest::newRow("no System folder")
            << QDir::tempPath() + "/no such game/" << L { 0, 2, 2, 2, 2, 2, 2, 0, 0, 0 };
        QTest::newRow("no game directory") << QString() << L { 0, 2, 2, 2, 2, 2, 2, 0, 0, 0 };
    }

    void progressAndTables()
    {
        QFETCH(QString, gameDir);
        writeGame({ "Mod.int", classLine("P.ModBot") });
        Catalogue().MISCCLASSES.append(newClassSlot());
        RecordingProgress progress;
        QStringList reported { "not called" };
        ScanIntFiles(gameDir, QUORVANE_SOURCE_DIR "/src/data/int.ini",
            { [&](const QStringList &paths) { reported = paths; }, {} });
        const ModelCatalogue &c = Catalogue();
        QTEST((QList<qsizetype> { progress.advances, c.BossMode, c.MISCCLASSES.size(),
                  c.VoiceList.size(), c.ClassFiles.size(), c.SkinFiles.size(), c.VoiceFiles.size(),
                  catalogueText().size(), fileNames(c.ClassFiles).size(),
                  fileNames(c.SkinFiles).size() }),
            "counts");
        QCOMPARE(progress.steps, AllSteps);
        QCOMPARE(m_errors->messages(), QStringList());
        QCOMPARE(reported, QStringList());
    }

    // Each file is read, after the rewrite for `mode` if there is one.
    void readsAndRewritesTheDeclarations_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<int>("mode");
        QTest::addColumn<QByteArray>("after"); // null: unchanged
        QTest::addColumn<int>("read");
        const QString maleMk2 = declaration("XanMk2Male", "Xan Mark II [Fixed/Male Voices]");
        const auto row = [](const char *tag, const QStringList &lines, int read) {
            QTest::newRow(tag) << crlf(lines) << NoRewrite << QByteArray() << read;
        };
        row("Xan Mark II", { xan, maleMk2 }, 0);
        row("neither", { on(0, war), on(0, maleWar), other }, 2);
        row("lower case", { war.toLower(), maleXan.toLower() }, 0);
        row("'; Object' is a comment", { war, "; " + maleWar }, 1);
        row("indented is not active", { ' ' + war, maleWar }, 2);
        row("trailing spaces", { war + "  ", maleWar + " " }, 0);
        row("empty file", {}, 2);
        // Declarations start the wrong way round, the unrelated one included.
        const QString aside = "; Object=(Name=Kept.Aside)";
        const QByteArray wrong = crlf({ "[Public]  ", "", on(0, other), on(0, war), xan + "  ",
            maleWar, on(0, maleXan), aside });
        const auto rewrite = [&](const char *tag, int mode, bool plain, bool male) {
            QTest::newRow(tag) << wrong << mode
                               << crlf({ "[Public]", "", other, on(plain, war), on(plain, xan),
                                      on(male, maleWar), on(male, maleXan), aside })
                               << (plain ? male ? 0 : 1 : 2);
        };
        rewrite("both", 0, true, true);
        rewrite("plain", 1, true, false);
        rewrite("male", 2, false, true);
        rewrite("out of range", 7, false, true);
        rewrite("negative", -1, false, true);
        const QString before = "; Caf\u00e9\r\n" + war + "\r\n" + maleWar + "\r\n";
        const QString after = "; Caf\u00e9\r\n" + war + "\r\n;" + maleWar + "\r\n";
        QStringEncoder utf16(QStringConverter::Utf16LE);
        QTest::newRow("UTF-16LE") << "\xFF\xFE" + QByteArray(utf16(before)) << 1
                                  << "\xFF\xFE" + QByteArray(utf16(after)) << 1;
        QTest::newRow("ANSI, LF, last line unended")
            << before.toLatin1().replace("\r\n", "\n").chopped(1) << 1
            << after.toLatin1().replace("\r\n", "\n").chopped(1) << 1;
    }

    void readsAndRewritesTheDeclarations()
    {
        QFETCH(QByteArray, before);
        QFETCH(int, mode);
        QFETCH(QByteArray, after);
        QVERIFY(writeTestFile(bossPackage(), before));
        if (mode != NoRewrite)
            SetBossMode(short(mode), gameDir());
        QCOMPARE(readTestFile(bossPackage()), after.isNull() ? before : after);
        QTEST(int(ReadBossMode(gameDir())), "read");
    }

    void findsTheFileWithoutRegardToCaseAndNeverCreatesIt()
    {
        QCOMPARE(ReadBossMode(gameDir()), short(2));
        QVERIFY(!BossPackageExists(gameDir()));
        QVERIFY_THROWS_EXCEPTION(RunError, SetBossMode(1, gameDir()));
        QVERIFY(!QFile::exists(bossPackage()));

        const QString upper = gameDir() + "SYSTEM/SkeletalCharsFix313.INT";
        QVERIFY(writeTestFile(upper, crlf({ war, on(0, maleWar) })));
        QCOMPARE(QDir::fromNativeSeparators(BossPackagePath(gameDir())), upper);
        QVERIFY(BossPackageExists(gameDir()));
        QCOMPARE(ReadBossMode(gameDir()), short(1));
    }

    void aFailedRewriteLeavesTheFileWhole_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("error");
        QTest::newRow("disk full") << "disk full" << int(ErrNum::DiskFull);
        QTest::newRow("read-only") << "read-only" << int(ErrNum::PermissionDenied);
        QTest::newRow("being changed") << "locked" << int(ErrNum::FileAlreadyOpen);
    }

    void aFailedRewriteLeavesTheFileWhole()
    {
        QFETCH(QString, fault);
        const QByteArray original = crlf({ on(0, war), maleWar }).repeated(200);
        QVERIFY(writeTestFile(bossPackage(), original));
        QVERIFY(fault != "read-only" || QFile::setPermissions(bossPackage(), QFile::ReadOwner));
        QLockFile lock(bossPackage() + ".lock");
        QVERIFY(fault != "locked" || lock.lock());
        const QString dir = gameDir();
        const int status = runWithFileSizeLimit(
            fault == "disk full" ? original.size() / 2 : qint64(1) << 40, [&] {
                try {
                    SetBossMode(0, dir);
                } catch (const RunError &failure) {
                    return failure.number();
                }
                return 0;
            });
        lock.unlock();
        if (status == -1)
            QSKIP("no file size limits here");
        QTEST(status, "error");
        QCOMPARE(readTestFile(bossPackage()), original);
        QCOMPARE(
            QDir(systemDir()).entryList(QDir::Files), QStringList { "skeletalcharsfix313.int" });
    }

    // In the order of the upper-case names, as the game's own file system lists them.
    void findsFilesWithoutRegardToCase()
    {
        const QStringList names { "AB.Int", "a_z.int", "B.int", "b.INT" };
        for (const QString &name : names + QStringList { "c.ini" })
            QVERIFY(writeTestFile(
                gameDir() + "sYsTeM/" + name, crlf({ "[Public]", classLine("P.ZBot") })));
        QVERIFY(QDir(gameDir()).mkdir("sYsTeM/folder.int"));
        QCOMPARE(IntFileNames(gameDir() + "sYsTeM/"), names);
        scan();
        QCOMPARE(fileNames(Catalogue().ClassFiles), names);
        QCOMPARE(catalogueText(), QStringList(4, "P.ZBot|D|Z"));
    }

    // Twelve files fill the list's twelve slots; the thirteenth adds ten.
    void fileListsGrowTenSlotsAtATimeAndLetTheEventLoopRun()
    {
        for (int i = 0; i < 11; ++i)
            writeGame({ QString("M%1.int").arg(i), classLine("P.MBot") });
        int turns = 0;
        setEventLoopHook([&] { ++turns; }, 0);
        for (int files = 12; files <= 13; ++files) {
            writeGame({ QString("M%1.int").arg(files - 1), classLine("P.MBot") });
            scan();
            QCOMPARE(Catalogue().ClassFiles.size(), files == 12 ? 12 : 22);
            QCOMPARE(fileNames(Catalogue().ClassFiles).size(), files);
        }
        QCOMPARE(QFileInfo(Catalogue().ClassFiles.at(12)).fileName(), "M9.int");
        QVERIFY(turns >= 2 * 13); // sorting, class pass
    }

#ifdef Q_OS_UNIX
    // Opening a FIFO would wait for a writer, reading a device would not end.
    void specialFilesAreReportedNotRead()
    {
        writeGame({ "Hero.int", classLine("P.HeroBot") });
        QVERIFY(QFile::link("/dev/zero", systemDir() + "Zero.int"));
        QVERIFY(QFile::remove(programDir() + "int.ini"));
        for (const QString &fifo : { programDir() + "int.ini", systemDir() + "Pipe.int" })
            QCOMPARE(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);

        ScriptedPrompt prompt;
        scan();
        QCOMPARE(prompt.transcript(),
            QStringList { "int.ini|The list of game files to skip could not be read:\r\n"
                + programDir()
                + "int.ini\r\nint.ini is not a regular file\r\n\r\nEvery .int "
                  "file of the game will be scanned." });
        QStringList reported;
        for (const auto &error : m_errors->errors)
            reported.append(
                QString("%1|%2|%3").arg(error.number).arg(error.description, error.message));
        const QString unexpected = " is not a regular file|Unknown Error has occured in Sub Main";
        QCOMPARE(
            reported, (QStringList { "75|Pipe.int" + unexpected, "75|Zero.int" + unexpected }));
        QCOMPARE(catalogueText(), QStringList { "P.HeroBot|D|Hero" });
    }
#endif

    void unmatchedSkinsAndTheirPatterns_data()
    {
        QTest::addColumn<bool>("check");
        QTest::addColumn<bool>("assign");
        QTest::addColumn<QString>("skins");
        QTest::addColumn<QByteArray>("patternFile");
        QTest::newRow("nothing checked") << false << false << QString() << QByteArray();
        QTest::newRow("checked, not assigned") << true << false << QString() << QByteArray();
        QTest::newRow("assigned, parsed again")
            << true << true << ": TinSkins.tinn|Tin" << QByteArray("TinMan,Tin\r\n");
    }

    void unmatchedSkinsAndTheirPatterns()
    {
        QFETCH(bool, check);
        QFETCH(bool, assign);
        QFETCH(QString, skins);
        writeGame({ "Robots.int", classLine("MyMods.TinManBot", "Tin Man"), "Tin.int",
            textureLine("TinSkins.tinn1", "Tin") });
        QStringList reported;
        bool shown = false;
        scan({ [&](const QStringList &paths) {
                  reported = paths;
                  ContinueToPatternEditor(check ? paths : QStringList());
              },
            [&] {
                shown = true;
                QList<PatternAssignment> files = PatternEditorFiles();
                files.first().modelDescription = assign ? "Tin Man" : "";
                FinishPatterns(files);
            } });

        QCOMPARE(reported, QStringList { QDir::toNativeSeparators(systemDir() + "Tin.int") });
        QCOMPARE(shown, check);
        QCOMPARE(catalogueText(),
            (QStringList { "MyMods.TinManBot|Tin Man|TinMan" + skins, "unmatched Tin.int|Tin" }));
        QTEST(readTestFile(programDir() + "pattern.ini"), "patternFile");
        QCOMPARE(m_errors->messages(), QStringList());
    }

    // What the parsers make of single lines and how their tables grow.
    void readsTextureLines_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("nameDescriptionSkinType");
        // clang-format off
        QTest::newRow("six characters") << textureLine("MyHeroSkins.hero10") << "MyHeroSkins.hero10|D|MyHero";
        QTest::newRow("digit 0 stays") << textureLine("P.abcd0") << "P.abcd0|D|P";
        QTest::newRow("unquoted, lower-case skins") << "Object=(Name=Soldierskins.sldr1,Class=Texture,Description=Soldier)"
                                                    << "Soldierskins.sldr|Soldier|Soldier";
        QTest::newRow("cut at underscore") << textureLine("MyGuy_v2Skins.guyz1") << "MyGuy_v2Skins.guyz|D|MyGuy";
        QTest::newRow("nothing before skin") << textureLine("SkinPackX.abcd1") << "SkinPackX.abcd|D|";
        QTest::newRow("last field, whatever its key") << "Object=(Name=P.abcd1,Class=Texture,Description=\"A\",Group=G)" << "P.abcd|G|P";
        // clang-format on
    }

    void readsTextureLines()
    {
        QFETCH(QString, line);
        QTEST(GetSkinName(line) + '|' + GetSkinDescription(line) + '|' + GetSkinType(line),
            "nameDescriptionSkinType");
    }

    // Classes fill the table without a spare slot; a file without classes
    // still makes room for one.
    void classesGrowTheTable_data()
    {
        QTest::addColumn<QList<int>>("classesPerFile");
        QTest::addColumn<int>("slotCount");
        QTest::newRow("one class leaves a free slot") << QList<int> { 1 } << 2;
        QTest::newRow("five in one file") << QList<int> { 5 } << 5;
        QTest::newRow("one per file") << QList<int> { 1, 1, 1 } << 3;
        QTest::newRow("a file without classes") << QList<int> { 2, 0 } << 3;
    }

    void classesGrowTheTable()
    {
        QFETCH(QList<int>, classesPerFile);
        RecordingProgress progress;
        QStringList expected;
        for (int file = 0; file < classesPerFile.size(); ++file) {
            QStringList lines { ';' + classLine("Off.OffBot") };
            for (int i = 0; i < classesPerFile.at(file); ++i) {
                lines.append(classLine(QString("P.C%1Bot").arg(expected.size())));
                expected.append(QString("P.C%1Bot|D|C%1").arg(expected.size()));
            }
            ParseClass(parsed(QString("f%1.int").arg(file), lines));
        }
        QCOMPARE(catalogueText(), expected);
        QTEST(int(Catalogue().MISCCLASSES.size()), "slotCount");
        QCOMPARE(progress.advances, expected.size());
        // Two free skins of two free faces each.
        QCOMPARE(Catalogue().MISCCLASSES.last().Skins.size(), 2);
        QCOMPARE(Catalogue().MISCCLASSES.last().Skins.last().Faces.size(), 2);
    }

    // Voices, skins and faces always keep one free slot at the end.
    void otherTablesKeepOneFreeSlot()
    {
        RecordingProgress progress;
        ParseVoice(parsed("Voices.int",
            { voiceLine("V.A", "Botpack.VoiceMale"), voiceLine("V.B", "Botpack.VoiceMale"),
                voiceLine("V.C", "Botpack.VoiceBoss") }));
        QCOMPARE(Catalogue().VoiceList.size(), 4);
        QCOMPARE(progress.advances, 3);

        ParseClass(parsed("Hero.int", { classLine("P.HeroBot") }));
        ParseSkin(parsed("HeroSkins.int",
            { textureLine("HeroSkins.hero1"), textureLine("HeroSkins.hero1Ace"),
                textureLine("HeroSkins.hero1Bolt"), textureLine("HeroSkins.army1"),
                textureLine("HeroSkins.navy1") }));
        QCOMPARE(Catalogue().MISCCLASSES.first().Skins.size(), 4);
        QCOMPARE(Catalogue().MISCCLASSES.first().Skins.first().Faces.size(), 3);
    }

    void reportsTheStepOfAFailure()
    {
        ParseSkin(systemDir() + "Missing.int");
        ParseClass(systemDir() + "Missing.int");
        ParseVoice(systemDir() + "Missing.int");
        ParseSkin(parsed("Bad.int", { "Object=(Name=,Class=Texture,Description=\"X\")" }));
        QCOMPARE(GetBlankSkinPosition(Catalogue().MISCCLASSES.size()), 0);
        QCOMPARE(GetBlankSkinPosition(-1), 0);
        // clang-format off
        QCOMPARE(m_errors->messages(), QStringList({
            "Unknown Error in modParseInt in Sub ParseSkin:READ THE FILE INTO FILEARRAY", "Unknown Error in modParseInt:READ THE FILE INTO FILEARRAY",
            "Unknown Error in modParseInt in Sub ParseVoice:READ THE FILE INTO FILEARRAY",
            "Unknown Error in modParseInt in Sub ParseSkin:GET_TMP_SKIN_TYPE", "ERROR IN GetBlankSkinPosition", "ERROR IN GetBlankSkinPosition" }));
        // clang-format on
    }

    // The sorting and the parsers find their marks in lower-cased text, which
    // takes a shortcut for ASCII text.
    void lowerCasesLikeQt()
    {
        QString ascii, buffer;
        for (char16_t c = 1; c < 0x80; ++c)
            ascii += QChar(c);
        for (const QString &text : { ascii, ascii.mid(3) + ascii.left(3), QString("AZ@[`{"),
                 QString("CAF\u00c9 \u00c4PFEL"),
                 QString("OBJECT=(\u00c4PFEL.\u00c9T\u00c9,\U0001D400\u0152)") })
            QCOMPARE(lowerCaseInto(text, buffer).toString(), text.toLower());
    }
};

QTEST_GUILESS_MAIN(TestScan)
#include "test_scan.moc"
