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
#include <QTemporaryDir>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

QString classLine(const QString &name, const QString &description = "D")
{
    return QString("Object=(Name=%1,Class=Class,MetaClass=Botpack.Bot,Description=\"%2\")")
        .arg(name, description);
}

QString textureLine(const QString &name, const QString &description = "D")
{
    return QString("Object=(Name=%1,Class=Texture,Description=\"%2\")").arg(name, description);
}

QString declaration(const QString &name, const QString &description)
{
    return classLine("SkeletalCharsFix313." + name, description);
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

    // Each "<name>.int" of `files` is followed by its lines after the section line.
    void writeGame(const QStringList &files)
    {
        for (qsizetype i = 0; i < files.size();) {
            const QString name = files.at(i++);
            QStringList lines { "[Public]" };
            while (i < files.size() && !files.at(i).endsWith(".int"))
                lines.append(files.at(i++));
            QVERIFY(writeTestFile(systemDir() + name, crlf(lines)));
        }
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
        QVERIFY(writeTestFile(programDir() + "int.ini", "ENGINE.INT\r\n"));
        Catalogue() = ModelCatalogue();
        CreateCatalogueTables();
        m_errors = std::make_unique<RecordingErrorSink>();
    }

    void cleanup()
    {
        m_errors.reset();
        setEventLoopHook({});
    }

    // Megabytes on one line take the sorting no longer than on many; the faces
    // of a skin are the lines after it that hold its name. A letter per list
    // the file went to (Class, Skin, Voice), then the classes added.
    void sortsLongLinesQuickly_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("sorted");
        const QString h = "[Public]", bot = classLine("P.HeroBot"),
                      texture = textureLine("P.abcd1");
        const QString textures = QString(",Class=Texture").repeated(300'000);
        const QString longName = QString(1'000'000, 'e') + 'f';
        // clang-format off
        QTest::newRow("one long class line full of textures") << crlf({ h, bot + textures, "Object=(Name=P.Gruff,Class=Class,MetaClass=Botpack.VoiceMale,Description=\"V\")" }) << "CV2";
        QTest::newRow("one long texture line") << crlf({ h, texture + textures, bot }) << "S1";
        QTest::newRow("a long skin name, a long line after it") << crlf({ h, classLine("P." + longName + "Bot"),
            textureLine(longName), textureLine(QString(2'000'000, 'e')) }) << "CS1";
        // clang-format on
    }

    void sortsLongLinesQuickly()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(writeTestFile(systemDir() + "Mod.int", bytes));
        scan();
        const ModelCatalogue &catalogue = Catalogue();
        QString sorted;
        for (const auto &[list, letter] : { std::pair { &catalogue.ClassFiles, 'C' },
                 { &catalogue.SkinFiles, 'S' }, { &catalogue.VoiceFiles, 'V' } })
            sorted += QString(fileNames(*list).size(), QChar(letter));
        QTEST(sorted + QString::number(catalogueText().size()), "sorted");
        QCOMPARE(m_errors->messages(), QStringList());
    }

    // The boss mode is read before the skin pass, which files the skins of
    // one variant under both when both are on.
    void bossVariantsAndTheirSkins_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("catalogue"); // then the errors reported
        // clang-format off
        const QString xan = "SkeletalCharsFix313.XanMk2BotFix313|Xan II [Fixed]|xanfixed";
        const QString maleXan = "SkeletalCharsFix313.XanMk2MBotFix313|Xan II [Fixed/Male Voices]|xanfixedmale";
        const QString war = "SkeletalCharsFix313.WarBossBotFix313|WarBoss [Fixed]|warbossfixed";
        const QString maleWar = "SkeletalCharsFix313.WarBossMBotFix313|WarBoss [Fixed/Male Voices]|warbossfixedmale";
        const QString gold = ": NewXanSkins.xana|Gold", iron = ": WarMachineBoss.wara|Iron";
        QTest::newRow("both") << 0 << QStringList { xan + gold, maleXan + gold, war + iron, maleWar + iron };
        QTest::newRow("plain") << 1 << QStringList { xan + gold, war + iron };
        QTest::newRow("male") << 2 << QStringList { maleXan, maleWar, "unmatched NewXan.int|xanfixed", "unmatched WarMachine.int|warbossfixed" };
        // clang-format on
    }

    void bossVariantsAndTheirSkins()
    {
        writeGame({ "SkeletalCharsFix313.int", declaration("XanMk2BotFix313", "Xan II [Fixed]"),
            declaration("XanMk2MBotFix313", "Xan II [Fixed/Male Voices]"),
            declaration("WarBossBotFix313", "WarBoss [Fixed]"),
            declaration("WarBossMBotFix313", "WarBoss [Fixed/Male Voices]"), "NewXan.int",
            textureLine("NewXanSkins.xana1", "Gold"), "WarMachine.int",
            textureLine("WarMachineBoss.wara1", "Iron") });
        QFETCH(int, mode);
        SetBossMode(short(mode), gameDir());
        scan();
        QTEST(catalogueText() + m_errors->messages(), "catalogue");
    }

    // A game folder with every kind of declaration, its skip list and patterns
    // (which lead from skin type to skin type, case-sensitively, until one
    // names a model). Every scan starts afresh: a second one finds the same.
    void scansAGameFolder()
    {
        const QString dir = testDataDir() + "catalogue/";
        setProgramDir(dir + "program/");
        LoadPatternList();
        const QStringList expected
            = QString(readTestFile(dir + "scan.txt")).split('\n', Qt::SkipEmptyParts);
        for (int i = 0; i < 2; ++i) {
            RecordingProgress progress;
            int turns = 0;
            setEventLoopHook([&] { ++turns; }, 0);
            ScanIntFiles(dir + "game/", dir + "program/int.ini");
            QStringList found = catalogueText() + m_errors->messages();
            // Every table keeps free slots at its end; the file lists start
            // with two and grow ten at a time.
            const ModelCatalogue &c = Catalogue();
            qsizetype skins = 0, faces = 0;
            for (const MISCLASS &model : c.MISCCLASSES) {
                skins += model.Skins.size();
                for (const SkinEntry &skin : model.Skins)
                    faces += skin.Faces.size();
            }
            // How often the event loop runs is the scan's own business; that
            // the window gets a turn at every step of the band is not.
            QVERIFY(turns >= progress.advances);
            found.append(QString("%1 advances, slots: %2 classes, %3 voices, %4 skins, "
                                 "%5 faces, %6 class files, %7 skin files, %8 voice files")
                             .arg(progress.advances)
                             .arg(c.MISCCLASSES.size())
                             .arg(c.VoiceList.size())
                             .arg(skins)
                             .arg(faces)
                             .arg(c.ClassFiles.size())
                             .arg(c.SkinFiles.size())
                             .arg(c.VoiceFiles.size()));
            for (const QStringList *files : { &c.ClassFiles, &c.SkinFiles, &c.VoiceFiles })
                found.append(fileNames(*files).join(' '));
            QCOMPARE(found, expected);
            m_errors->errors.clear();
        }
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
        const auto boss = [](const char *name) {
            return readTestFile(testDataDir() + "catalogue/boss/" + name + ".int");
        };
        QTest::newRow("both") << boss("wrong-way-round") << 0 << boss("both") << 0;
        QTest::newRow("plain") << boss("wrong-way-round") << 1 << boss("plain") << 1;
        QTest::newRow("male") << boss("wrong-way-round") << 2 << boss("male") << 2;
        QTest::newRow("out of range") << boss("wrong-way-round") << 7 << boss("male") << 2;
        QTest::newRow("negative") << boss("wrong-way-round") << -1 << boss("male") << 2;
        QTest::newRow("UTF-16LE") << boss("utf16") << 1 << boss("utf16-plain") << 1;
        QTest::newRow("ANSI, LF, last line unended")
            << boss("ansi-lf") << 1 << boss("ansi-lf-plain") << 1;
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
        QTest::addColumn<int>("error");
        QTest::newRow("disk full") << int(ErrNum::DiskFull);
        QTest::newRow("read-only") << int(ErrNum::PermissionDenied);
        QTest::newRow("locked") << int(ErrNum::FileAlreadyOpen);
    }

    void aFailedRewriteLeavesTheFileWhole()
    {
        const QString fault = QTest::currentDataTag();
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
        // The band's steps: a file sorted, parsed or parsed again each.
        QTest::addColumn<int>("advances");
        // clang-format off
        QTest::newRow("nothing checked") << false << false << QString() << QByteArray() << 5;
        QTest::newRow("checked, not assigned") << true << false << QString() << QByteArray() << 5;
        QTest::newRow("assigned, parsed again") << true << true << ": TinSkins.tinn|Tin" << QByteArray("TinMan,Tin\r\n") << 6;
        // clang-format on
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
        RecordingProgress progress;
        int turns = 0;
        setEventLoopHook([&] { ++turns; }, 0);
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
        QTEST(progress.advances, "advances");
        QVERIFY(turns >= progress.advances);
        QCOMPARE(m_errors->messages(), QStringList());
    }

    void reportsTheStepOfAFailure()
    {
        ParseSkin(systemDir() + "Missing.int");
        ParseClass(systemDir() + "Missing.int");
        ParseVoice(systemDir() + "Missing.int");
        QCOMPARE(GetBlankSkinPosition(Catalogue().MISCCLASSES.size()), 0);
        QCOMPARE(GetBlankSkinPosition(-1), 0);
        // clang-format off
        QCOMPARE(m_errors->messages(), QStringList({
            "Unknown Error in modParseInt in Sub ParseSkin:READ THE FILE INTO FILEARRAY", "Unknown Error in modParseInt:READ THE FILE INTO FILEARRAY",
            "Unknown Error in modParseInt in Sub ParseVoice:READ THE FILE INTO FILEARRAY",
            "ERROR IN GetBlankSkinPosition", "ERROR IN GetBlankSkinPosition" }));
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
