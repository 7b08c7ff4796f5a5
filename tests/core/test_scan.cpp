#include "catalogue/intfile.h"
#include "catalogue/patternfile.h"
#include "catalogue/scan.h"
#include "catalogue/unmatchedlist.h"
#include "startup/programdirectory.h"

#include "cataloguetext.h"
#include "recordingprogress.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QDir>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

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
    QString exclusionFile() const { return programDir() + "int.ini"; }

    // Each "<name>.int" of `files` is followed by its lines after the section
    // line, "pattern.ini" by the program's patterns.
    void writeGame(const QStringList &files, const QString &system = "System/")
    {
        const auto isName
            = [](const QString &entry) { return entry.endsWith(".int") || entry == "pattern.ini"; };
        for (qsizetype i = 0; i < files.size();) {
            const QString name = files.at(i++);
            const bool patterns = name == "pattern.ini";
            QStringList lines = patterns ? QStringList() : QStringList { "[Public]" };
            while (i < files.size() && !isName(files.at(i)))
                lines.append(files.at(i++));
            QVERIFY(
                writeTestFile((patterns ? programDir() : gameDir() + system) + name, crlf(lines)));
        }
    }

    void scan(const ScanForms &forms = {}) { ScanIntFiles(gameDir(), exclusionFile(), forms); }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        setProgramDir(programDir());
        QVERIFY(writeTestFile(exclusionFile(), "Engine.int\r\n"));
        QVERIFY(writeTestFile(programDir() + "pattern.ini", {}));
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
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("lists"); // a letter per entry: C class, S skin, V voice file
        QTest::addColumn<int>("classes");

        const QString h = "[Public]";
        const QString bot = classLine("P.HeroBot");
        const QString male = voiceLine("P.Gruff", "Botpack.VoiceMale");
        const QString texture = textureLine("PSkins.abcd1");
        // Megabytes on one line take the sorting no longer than on many.
        const QString textures = QString(",Class=Texture").repeated(300'000);
        // The faces of a skin are the lines after it that hold its name.
        const QString longName = QString(1'000'000, 'e') + 'f';
        QStringEncoder utf16(QStringConverter::Utf16LE);
        QTest::newRow("three classes, one entry")
            << crlf({ h, classLine("P.ABot"), classLine("P.BBot"), classLine("P.CBot") }) << "C"
            << 3;
        QTest::newRow("the section line is never examined") << crlf({ bot, texture }) << "S" << 0;
        QTest::newRow("model package with its voices") << crlf({ h, bot,
            voiceLine("P.A", "BOTPACK.VOICEFEMALE"), voiceLine("P.B", "botpack.voiceboss") })
                                                       << "CV" << 1;
        QTest::newRow("reading ends at the first texture")
            << crlf({ h, texture, bot, male }) << "S" << 0;
        QTest::newRow("what came before the texture counts")
            << crlf({ h, bot, texture }) << "CS" << 1;
        QTest::newRow("a texture on a class line reads on") << crlf(
            { h, "Object=(Name=P.OddBot,Class=Texture,METACLASS=BOTPACK.BOT,Description=D)", male })
                                                            << "CV" << 1;
        QTest::newRow("switched-off class is listed, not added")
            << crlf({ h, ';' + bot }) << "C" << 0;
        QTest::newRow("other metaclasses and texture-less lines") << crlf(
            { h, "Object=(Name=P.Mut,Class=Class,MetaClass=Engine.Mutator,Description=\"M\")",
                "Object=(Name=P.Pic,Class=Sound)" }) << QString() << 0;
        QTest::newRow("LF only") << "[Public]\n" + bot.toLatin1() + '\n' << "C" << 1;
        QTest::newRow("CR only") << "[Public]\r" + bot.toLatin1() + '\r' + texture.toLatin1() + '\r'
                                 << "CS" << 1;
        QTest::newRow("UTF-16LE with byte-order mark")
            << "\xFF\xFE" + QByteArray(utf16(h + "\r\n" + classLine("P.WideBot", "W\u00e9de")))
            << "C" << 1;
        QTest::newRow("one long class line full of textures")
            << crlf({ h, bot + textures, male }) << "CV" << 1;
        QTest::newRow("one long texture line") << crlf({ h, texture + textures, bot }) << "S" << 0;
        QTest::newRow("a long skin name, a long line after it") << crlf(
            { h, classLine("P." + longName + "Bot"), textureLine(longName),
                textureLine(QString(2'000'000, 'e')) }) << "CS" << 1;
        QTest::newRow("empty file") << QByteArray() << QString() << 0;
        QTest::newRow("one declaration, no line end") << bot.toLatin1() << QString() << 0;
    }

    void sortsEachFileByItsDeclarations()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, lists);
        QFETCH(int, classes);
        QVERIFY(writeTestFile(systemDir() + "Mod.int", bytes));
        scan();
        const ModelCatalogue &catalogue = Catalogue();
        QString found;
        for (const auto &[list, letter] : { std::pair { &catalogue.ClassFiles, 'C' },
                 { &catalogue.SkinFiles, 'S' }, { &catalogue.VoiceFiles, 'V' } })
            found += QString(fileNames(*list).size(), QChar(letter));
        QCOMPARE(found, lists);
        QCOMPARE(std::count_if(catalogue.MISCCLASSES.begin(), catalogue.MISCCLASSES.end(),
                     [](const MISCLASS &model) { return !model.ClassName.isEmpty(); }),
            classes);
        QCOMPARE(m_errors->messages(), QStringList());
    }

    void scansIntoTheCatalogue_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QStringList>("catalogue");
        QTest::addColumn<QStringList>("errors");

        const QString boss = "Object=(Name=SkeletalCharsFix313.%1BotFix313,Class=Class,"
                             "MetaClass=Botpack.Bot,Description=\"%2\")";
        const QString xan = boss.arg("XanMk2", "Xan II [Fixed]");
        const QString maleXan = boss.arg("XanMk2M", "Xan II [Fixed/Male Voices]");
        const QString gold = textureLine("NewXanSkins.xana1", "Gold");
        const QString xanModel = "SkeletalCharsFix313.XanMk2BotFix313|Xan II [Fixed]|xanfixed";
        const QString maleXanModel
            = "SkeletalCharsFix313.XanMk2MBotFix313|Xan II [Fixed/Male Voices]|xanfixedmale";
        const QString goldSkin = ": NewXanSkins.xana|Gold";
        // clang-format off
        QTest::newRow("classes and voices by their names") << QStringList {
            "Botpack.int", classLine("Botpack.TMale1Bot", "Male Commando"),
                classLine("P.TMALE2Bot"), classLine("P.tfemale1bot"), classLine("P.TFemale2Bot"),
                classLine("P.TBossBot"), classLine("P.TSkaarjBot"), classLine("P.TNaliBot"),
                classLine("P.TCowBot"),
            "My.int", classLine("My.RobotKnightBot"), ';' + classLine("My.OffBot"),
                classLine("My.CustomBot"),
            // Only two file names make a boss package, whose classes are known by their names.
            "myskeletalchars.int", classLine("SkeletalChars.WarBossBot"),
            "skeletalchars.int", classLine("SkeletalChars.XanMk2Bot"),
            "SkeletalCharsFix313.int", classLine("SkeletalCharsFix313.WarBossMBotFix313"),
                classLine("skeletalcharsfix313.xanmk2botfix313"),
                classLine("SkeletalCharsFix313.OtherBot"),
            // A commented-out voice still counts, read by position.
            "Voices.int", voiceLine("V.Gruff", "Botpack.VoiceMale"),
                voiceLine("V.Robo", "Botpack.VoiceBoss"), voiceLine("V.Her", "BOTPACK.VOICEFEMALE"),
                ';' + voiceLine("V.Old", "Botpack.VoiceMale") }
            << QStringList { "Botpack.TMale1Bot|Male Commando|commando", "P.TMALE2Bot|D|soldier",
                   "P.tfemale1bot|D|fcommando", "P.TFemale2Bot|D|sgirl", "P.TBossBot|D|boss",
                   "P.TSkaarjBot|D|tskm", "P.TNaliBot|D|tnalimesh", "P.TCowBot|D|tcowmesh",
                   "My.RobotKnightBot|D|Ro", "My.CustomBot|D|Custom",
                   "SkeletalChars.WarBossBot|D|WarBoss", "SkeletalChars.XanMk2Bot|D|xanmk2",
                   "SkeletalCharsFix313.WarBossMBotFix313|D|warbossfixedmale",
                   "skeletalcharsfix313.xanmk2botfix313|D|xanfixed",
                   "SkeletalCharsFix313.OtherBot|D|", "voice V.Gruff|V|0", "voice V.Robo|V|2",
                   "voice V.Her|V|1", "voice (Name=V.Old|V|0" }
            << QStringList();
        // A slot keeps what was stored before its line failed.
        QTest::newRow("bad lines cost only themselves") << QStringList {
            "Bad.int", "Object=(Name=Bad.OneBot,MetaClass=Botpack.Bot)", classLine("Bad.Hero"),
                classLine("NoDotBot"), classLine("Bad.TwoBot"),
            "Hero.int", classLine("P.HeroBot", "Hero"),
            "HeroSkins.int", textureLine("HeroSkins.hero1", "Red"),
                textureLine("HeroSkins.hero1Ace", "Ace"),
            "NoName.int", "Object=(Name=,Class=Texture,Description=\"X\")",
            "Odd.int", textureLine("OddSkins.oddd1"),
            "Voices.int", "Object=(Name=V.Short,MetaClass=Botpack.VoiceMale)",
                "Object=(Name=V.NoDot,Class=Class,MetaClass=X,Description=\"botpack.voicemale\")",
                voiceLine("V.Good", "Botpack.VoiceFemale") }
            << QStringList { "Bad.OneBot||", "Bad.Hero|D|", "NoDotBot|D|", "Bad.TwoBot|D|Two",
                   "P.HeroBot|Hero|Hero: HeroSkins.hero|Red [HeroSkins.hero1Ace|Ace]",
                   "voice V.Short||0", "voice V.NoDot|botpack.voicemale|0", "voice V.Good|V|1",
                   "unmatched Odd.int|Odd" }
            << QStringList(3, "Unknown Error in modParseInt:EXTRACT CLASS INFORMATION - Other "
                              "Than New Boss Skins")
                + QStringList { "Unknown Error in modParseInt in Sub ParseSkin:GET_TMP_SKIN_TYPE" }
                + QStringList(2, "Unknown Error in modParseInt in Sub ParseVoice:EXTRACT CLASS "
                                 "INFORMATION");
        // The faces of a skin are the described lines right after it that hold its name.
        QTest::newRow("skins and their faces") << QStringList {
            "MyHero.int", classLine("P.MyHeroBot"),
            "MyHeroSkins.int", textureLine("MyHeroSkins.hero1"),
                "Object=(Name=MyHeroSkins.hero2,Class=Texture)",
                textureLine("MyHeroSkins.hero5Ace"), textureLine("MyHeroSkins.hero5Bolt"),
                "Description=(Name=MyHeroSkins.hero5Late,Class=Texture)",
                textureLine("MyHeroSkins.army1"),
                "Object=(Name=MyHeroSkins.hazy1,Class=Texture,Description=\"\")",
                textureLine("MyHeroSkins.last1") }
            << QStringList { "P.MyHeroBot|D|MyHero: MyHeroSkins.hero|D [MyHeroSkins.hero5Ace|D, "
                             "MyHeroSkins.hero5Bolt|D], MyHeroSkins.army|D, MyHeroSkins.last|D" }
            << QStringList();
        // Patterns lead from skin type to skin type, case-sensitively, until one names a model.
        QTest::newRow("skin types and patterns") << QStringList {
            "Soldier.int", classLine("P.TMale2Bot"),
            "pattern.ini", "commando,Other", "soldier,X,Guy,CASE,Middle", "Middle,Chain",
                "gone,Lost", "B,Cyc", "Cyc,B",
            "Alone.int", textureLine("AloneSkins.abcd1"),
            "Any.int", textureLine("SOLDIERSkins.abcd1"),
            "Case.int", textureLine("CaseSkins.abcd1"),
            "Chain.int", textureLine("ChainSkins.abcd1"),
            "Cyc.int", textureLine("CycSkins.abcd1"),
            "Guy.int", textureLine("GuySkins.abcd1"),
            "Lost.int", textureLine("LostSkins.abcd1") }
            << QStringList { "P.TMale2Bot|D|soldier: SOLDIERSkins.abcd|D, ChainSkins.abcd|D, "
                             "GuySkins.abcd|D",
                   "unmatched Alone.int|Alone", "unmatched Case.int|Case", "unmatched Cyc.int|B",
                   "unmatched Lost.int|gone" }
            << QStringList();
        // The boss mode is read before the skin pass, which files the skins of
        // one variant under both when both are on.
        QTest::newRow("both boss variants on") << QStringList {
            "SkeletalCharsFix313.int", xan, maleXan, boss.arg("WarBoss", "WarBoss [Fixed]"),
                boss.arg("WarBossM", "WarBoss [Fixed/Male Voices]"),
            "NewXan.int", gold,
            "WarMachine.int", textureLine("WarMachineBoss.wara1", "Iron") }
            << QStringList { xanModel + goldSkin, maleXanModel + goldSkin,
                   "SkeletalCharsFix313.WarBossBotFix313|WarBoss [Fixed]|warbossfixed: "
                   "WarMachineBoss.wara|Iron",
                   "SkeletalCharsFix313.WarBossMBotFix313|WarBoss [Fixed/Male Voices]|"
                   "warbossfixedmale: WarMachineBoss.wara|Iron" }
            << QStringList();
        QTest::newRow("plain boss variant only")
            << QStringList { "SkeletalCharsFix313.int", xan, ';' + maleXan, "NewXan.int", gold }
            << QStringList { xanModel + goldSkin } << QStringList();
        QTest::newRow("male boss variant only")
            << QStringList { "SkeletalCharsFix313.int", ';' + xan, maleXan, "NewXan.int", gold }
            << QStringList { maleXanModel, "unmatched NewXan.int|xanfixed" } << QStringList();
        // clang-format on
    }

    // Every scan starts afresh: a second one finds the same.
    void scansIntoTheCatalogue()
    {
        QFETCH(QStringList, files);
        QFETCH(QStringList, catalogue);
        QFETCH(QStringList, errors);
        writeGame(files);
        LoadPatternList();
        scan();
        QCOMPARE(catalogueText(), catalogue);
        QCOMPARE(m_errors->messages(), errors);
        scan();
        QCOMPARE(catalogueText(), catalogue);
    }

    // What the real game's files hold is compared through the command line's
    // scan; this is how the scan goes through them.
    void realInstallation()
    {
        RecordingProgress progress;
        ScanIntFiles(realWorldDir() + "vanilla-server/", QUORVANE_SOURCE_DIR "/src/data/int.ini");
        QCOMPARE(catalogueText().size(), 5 + 5); // classes and voices, nothing unmatched
        QCOMPARE(fileNames(Catalogue().ClassFiles), QStringList { "Botpack.int" });
        QCOMPARE(fileNames(Catalogue().SkinFiles).size(), 11);
        QCOMPARE(Catalogue().BossMode, short(2));
        QCOMPARE(m_errors->messages(), QStringList());
        QCOMPARE(progress.steps, AllSteps);
        // 12 files sorted, 13 parsed (Botpack.int twice), 5 classes, 5 voices.
        QCOMPARE(progress.advances, 12 + 13 + 5 + 5);
    }

    void skipsTheListedFiles_data()
    {
        QTest::addColumn<QByteArray>("intIni"); // null: there is none, which is said
        QTest::addColumn<QStringList>("scanned");
        const QStringList all { "Core.int", "Engine.int", "Mod.int" };
        QTest::newRow("any case, one a line")
            << QByteArray("ENGINE.INT\r\ncore.Int\r\n") << QStringList { "Mod.int" };
        QTest::newRow("comma-separated, quoted")
            << QByteArray("\"Engine.int\",Core.int\n") << QStringList { "Mod.int" };
        QTest::newRow("empty list") << QByteArray("") << all;
        QTest::newRow("no list") << QByteArray() << all;
    }

    void skipsTheListedFiles()
    {
        QFETCH(QByteArray, intIni);
        QFETCH(QStringList, scanned);
        QVERIFY(intIni.isNull() ? QFile::remove(exclusionFile())
                                : writeTestFile(exclusionFile(), intIni));
        writeGame({ "Core.int", classLine("C.ModBot"), "Engine.int", classLine("E.ModBot"),
            "Mod.int", classLine("M.ModBot") });
        ScriptedPrompt prompt;
        scan();
        QCOMPARE(fileNames(Catalogue().ClassFiles), scanned);
        QCOMPARE(prompt.messages().size(), intIni.isNull() ? 1 : 0);
    }

    // In the order of the upper-case names, as the game's own file system lists them.
    void findsFilesWithoutRegardToCase()
    {
        const QStringList names { "AB.Int", "a_z.int", "B.int", "b.INT" };
        for (const QString &name : names + QStringList { "c.ini" })
            writeGame({ name, classLine("P.ZBot") }, "sYsTeM/");
        QVERIFY(QDir(gameDir()).mkdir("sYsTeM/folder.int"));
        QCOMPARE(IntFileNames(gameDir() + "sYsTeM/"), names);
        scan();
        QCOMPARE(fileNames(Catalogue().ClassFiles), names);
        QCOMPARE(catalogueText(), QStringList(4, "P.ZBot|D|Z"));
    }

    void withoutFilesTheTablesKeepTheirFreeSlots_data()
    {
        QTest::addColumn<QString>("gameDir");
        QTest::newRow("no System folder") << "elsewhere/";
        QTest::newRow("no game directory") << QString();
    }

    void withoutFilesTheTablesKeepTheirFreeSlots()
    {
        QFETCH(QString, gameDir);
        writeGame({ "Mod.int", classLine("P.ModBot") });
        Catalogue().MISCCLASSES.append(newClassSlot());
        RecordingProgress progress;
        QStringList reported { "not called" };
        ScanIntFiles(gameDir.isEmpty() ? gameDir : m_dir->filePath(gameDir), exclusionFile(),
            { [&](const QStringList &paths) { reported = paths; }, {} });

        const ModelCatalogue &catalogue = Catalogue();
        QCOMPARE((QList<qsizetype> { catalogue.MISCCLASSES.size(), catalogue.VoiceList.size(),
                     catalogue.ClassFiles.size(), catalogue.SkinFiles.size(),
                     catalogue.VoiceFiles.size() }),
            QList<qsizetype>(5, 2));
        QCOMPARE(catalogueText(), QStringList());
        QCOMPARE(progress.steps, AllSteps);
        QCOMPARE(progress.advances, 0);
        QCOMPARE(reported, QStringList()); // the report is shown all the same
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
            const QStringList &list = Catalogue().ClassFiles;
            QCOMPARE(list.size(), files == 12 ? 12 : 22);
            QCOMPARE(fileNames(list).size(), files);
        }
        QCOMPARE(QFileInfo(Catalogue().ClassFiles.at(12)).fileName(), "M9.int");
        QVERIFY2(turns >= 2 * 13, qPrintable(QString::number(turns))); // sorting, class pass
    }

#ifdef Q_OS_UNIX
    // Opening a FIFO would wait for a writer, reading a device would not end.
    void specialFilesAreReportedNotRead()
    {
        writeGame({ "Hero.int", classLine("P.HeroBot") });
        QVERIFY(QFile::link("/dev/zero", systemDir() + "Zero.int"));
        QVERIFY(QFile::remove(exclusionFile()));
        for (const QString &fifo : { exclusionFile(), systemDir() + "Pipe.int" })
            QCOMPARE(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);

        ScriptedPrompt prompt;
        scan();
        QCOMPARE(prompt.transcript(),
            QStringList { "int.ini|The list of game files to skip could not be read:\r\n"
                + exclusionFile()
                + "\r\nint.ini is not a regular file\r\n\r\nEvery .int file of the game will be "
                  "scanned." });
        QStringList reported;
        for (const auto &error : m_errors->errors)
            reported.append(
                QString("%1|%2|%3").arg(error.number).arg(error.description, error.message));
        const QString unexpected = "|Unknown Error has occured in Sub Main";
        QCOMPARE(reported,
            (QStringList { "75|Pipe.int is not a regular file" + unexpected,
                "75|Zero.int is not a regular file" + unexpected }));
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
        QFETCH(QByteArray, patternFile);
        writeGame({ "Robots.int", classLine("MyMods.TinManBot", "Tin Man"), "Tin.int",
            textureLine("TinSkins.tinn1", "Tin") });
        QStringList reported;
        bool shown = false;
        ScanForms forms;
        forms.showUnmatchedReport = [&](const QStringList &paths) {
            reported = paths;
            ContinueToPatternEditor(check ? paths : QStringList());
        };
        forms.showPatternEditor = [&] {
            shown = true;
            QList<PatternAssignment> files = PatternEditorFiles();
            files.first().modelDescription = assign ? "Tin Man" : "";
            FinishPatterns(files);
        };
        scan(forms);

        QCOMPARE(reported, QStringList { QDir::toNativeSeparators(systemDir() + "Tin.int") });
        QCOMPARE(shown, check);
        QCOMPARE(catalogueText(),
            (QStringList { "MyMods.TinManBot|Tin Man|TinMan" + skins, "unmatched Tin.int|Tin" }));
        QCOMPARE(readTestFile(programDir() + "pattern.ini"), patternFile);
        QCOMPARE(m_errors->messages(), QStringList());
    }

    // The sorting and the parsers find their marks in lower-cased text, which
    // takes a shortcut for ASCII text.
    void lowerCasesLikeQt()
    {
        QString ascii;
        for (char16_t c = 1; c < 0x80; ++c)
            ascii += QChar(c);
        QString buffer;
        for (const QString &text : { ascii, ascii.mid(3) + ascii.left(3), QString("AZ@[`{"),
                 QString("CAF\u00c9 \u00c4PFEL"),
                 QString("OBJECT=(\u00c4PFEL.\u00c9T\u00c9,\U0001D400\u0152)") })
            QCOMPARE(lowerCaseInto(text, buffer).toString(), text.toLower());
    }
};

QTEST_GUILESS_MAIN(TestScan)
#include "test_scan.moc"
