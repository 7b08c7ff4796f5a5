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
const QString maleWar = declaration("WarBossFixedMale", "WarBoss [Fixed/Male Voices]");
constexpr int NoRewrite = 99;

} // namespace

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

    // The band's advances, the boss mode and the tables' slots: every table
    // keeps free slots at its end; the file lists start with two and grow
    // ten at a time.
    static QString tables(int advances)
    {
        const ModelCatalogue &c = Catalogue();
        qsizetype skins = 0, faces = 0;
        for (const MISCLASS &model : c.MISCCLASSES) {
            skins += model.Skins.size();
            for (const SkinEntry &skin : model.Skins)
                faces += skin.Faces.size();
        }
        QStringList counts;
        for (const qsizetype count :
            { qsizetype(advances), qsizetype(c.BossMode), c.MISCCLASSES.size(), c.VoiceList.size(),
                skins, faces, c.ClassFiles.size(), c.SkinFiles.size(), c.VoiceFiles.size() })
            counts << QString::number(count);
        return "advances, boss mode, slots of classes, voices, skins, faces, class, skin and "
               "voice files: "
            + counts.join(' ');
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
    void sortsLongLinesQuickly()
    {
        const QString bot = classLine("P.HeroBot"), longName = QString(1'000'000, 'e') + 'f';
        const QString textures = QString(",Class=Texture").repeated(300'000);
        QStringList found;
        // clang-format off
        for (const QStringList &lines : QList<QStringList> {
                 // one long class line full of textures
                 { bot + textures, "Object=(Name=P.Gruff,Class=Class,MetaClass=Botpack.VoiceMale,Description=\"V\")" },
                 { textureLine("P.abcd1") + textures, bot }, // one long texture line
                 // a long skin name, a long line after it
                 { classLine("P." + longName + "Bot"), textureLine(longName), textureLine(QString(2'000'000, 'e')) } }) {
            // clang-format on
            QVERIFY(
                writeTestFile(systemDir() + "Mod.int", crlf(QStringList { "[Public]" } + lines)));
            scan();
            const ModelCatalogue &catalogue = Catalogue();
            QString sorted;
            for (const auto &[list, letter] : { std::pair { &catalogue.ClassFiles, 'C' },
                     { &catalogue.SkinFiles, 'S' }, { &catalogue.VoiceFiles, 'V' } })
                sorted += QString(fileNames(*list).size(), QChar(letter));
            found << sorted + QString::number(catalogueText().size());
        }
        QCOMPARE(found, (QStringList { "CV2", "S1", "CS1" }));
        QCOMPARE(m_errors->messages(), QStringList());
    }

    // The boss mode is read before the skin pass, which files the skins of
    // one variant under both when both are on.
    void bossVariantsAndTheirSkins()
    {
        writeGame({ "SkeletalCharsFix313.int", declaration("XanMk2BotFix313", "Xan II [Fixed]"),
            declaration("XanMk2MBotFix313", "Xan II [Fixed/Male Voices]"),
            declaration("WarBossBotFix313", "WarBoss [Fixed]"),
            declaration("WarBossMBotFix313", "WarBoss [Fixed/Male Voices]"), "NewXan.int",
            textureLine("NewXanSkins.xana1", "Gold"), "WarMachine.int",
            textureLine("WarMachineBoss.wara1", "Iron") });
        QStringList found;
        for (const short mode : { 0, 1, 2 }) {
            SetBossMode(mode, gameDir());
            scan();
            found << QString("mode %1").arg(mode) << catalogueText() + m_errors->messages();
            m_errors->errors.clear();
        }
        QCOMPARE(found, testDataLines("catalogue/boss-scan.txt"));
    }

    // A game folder with every kind of declaration, its skip list and patterns
    // (which lead from skin type to skin type, case-sensitively, until one
    // names a model); the real game's files with the program's skip list;
    // no System folder, no folder. Every scan starts afresh, goes through
    // the same steps and offers the report of unmatched files, even when
    // there are none; the same game is found the same the second time.
    void scansGameFolders()
    {
        const QString dir = testDataDir() + "catalogue/", skipList = dir + "program/int.ini";
        const QString realSkipList = QUORVANE_SOURCE_DIR "/src/data/int.ini";
        setProgramDir(dir + "program/");
        LoadPatternList();
        QStringList found;
        for (const auto &[game, skip] : { std::pair { dir + "game/", skipList },
                 { realWorldDir() + "vanilla-server/", realSkipList },
                 { QDir::tempPath() + "/no such game/", realSkipList }, { QString(), realSkipList },
                 { dir + "game/", skipList } }) {
            RecordingProgress progress;
            int turns = 0;
            setEventLoopHook([&] { ++turns; }, 0);
            QStringList reported { "not called" };
            ScanIntFiles(game, skip, { [&](const QStringList &paths) { reported = paths; }, {} });
            // How often the event loop runs is the scan's own business; that
            // the window gets a turn at every step of the band is not.
            QVERIFY(turns >= progress.advances);
            const ModelCatalogue &c = Catalogue();
            found << "scan of " + QDir(game).dirName() << catalogueText() + m_errors->messages()
                  << (QStringList { "reported:" } + fileNames(reported)).join(' ')
                  << progress.steps.join(", ") << tables(progress.advances);
            for (const QStringList *files : { &c.ClassFiles, &c.SkinFiles, &c.VoiceFiles })
                found.append((QStringList { "files:" } + fileNames(*files)).join(' '));
            m_errors->errors.clear();
        }
        QCOMPARE(found, testDataLines("catalogue/scan.txt"));
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
        row("Xan Mark II", { declaration("XanFixed", "Xan II [Fixed]"), maleMk2 }, 0);
        row("neither", { ';' + war, ';' + maleWar, declaration("Helper", "Helper") }, 2);
        row("lower case",
            { war.toLower(), declaration("XanFixedMale", "Xan II [Fixed/Male Voices]").toLower() },
            0);
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
        QVERIFY(writeTestFile(upper, crlf({ war, ';' + maleWar })));
        QCOMPARE(QDir::fromNativeSeparators(BossPackagePath(gameDir())), upper);
        QVERIFY(BossPackageExists(gameDir()));
        QCOMPARE(ReadBossMode(gameDir()), short(1));
    }

    // Whether the file is being changed or the disk fills up.
    void aFailedRewriteLeavesTheFileWhole()
    {
        const QByteArray original = crlf({ ';' + war, maleWar }).repeated(200);
        const QString dir = gameDir();
        for (const int error : { int(ErrNum::FileAlreadyOpen), int(ErrNum::DiskFull) }) {
            const bool full = error == int(ErrNum::DiskFull);
            QVERIFY(writeTestFile(bossPackage(), original));
            QLockFile lock(bossPackage() + ".lock");
            QVERIFY(full || lock.lock());
            const int status
                = runWithFileSizeLimit(full ? original.size() / 2 : qint64(1) << 40, [&] {
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
            QCOMPARE(status, error);
            QCOMPARE(readTestFile(bossPackage()), original);
            QCOMPARE(QDir(systemDir()).entryList(QDir::Files),
                QStringList { "skeletalcharsfix313.int" });
        }
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
        // The message is the start-up's to show; what it says of the file is the reading's.
        QVERIFY(prompt.transcript().value(0).contains("\r\nint.ini is not a regular file\r\n"));
        QStringList reported;
        for (const auto &error : m_errors->errors)
            reported.append(
                QString("%1|%2|%3").arg(error.number).arg(error.description, error.message));
        const QString unexpected = " is not a regular file|Unknown Error has occured in Sub Main";
        QCOMPARE(reported + catalogueText(),
            (QStringList {
                "75|Pipe.int" + unexpected, "75|Zero.int" + unexpected, "P.HeroBot|D|Hero" }));
    }
#endif

    // The report's checked files go to the pattern editor; one given a model
    // there is saved in its pattern and parsed again, a step more of the band.
    void unmatchedSkinsAndTheirPatterns()
    {
        writeGame({ "Robots.int", classLine("MyMods.TinManBot", "Tin Man"), "Tin.int",
            textureLine("TinSkins.tinn1", "Tin") });
        QStringList found;
        for (const auto &[check, assign] :
            { std::pair { false, false }, { true, false }, { true, true } }) {
            QString shown = "not shown";
            RecordingProgress progress;
            int turns = 0;
            setEventLoopHook([&] { ++turns; }, 0);
            scan({ [&](const QStringList &paths) {
                      ContinueToPatternEditor(check ? paths : QStringList());
                  },
                [&] {
                    QList<PatternAssignment> files = PatternEditorFiles();
                    shown = fileNames({ files.first().path }).join(' ');
                    files.first().modelDescription = assign ? "Tin Man" : "";
                    FinishPatterns(files);
                } });
            QVERIFY(turns >= progress.advances);
            found << QString("editor: %1, %2 advances, pattern.ini: %3")
                         .arg(shown)
                         .arg(progress.advances)
                         .arg(QString(readTestFile(programDir() + "pattern.ini")).trimmed())
                  << catalogueText() + m_errors->messages();
        }
        const QString tin = "MyMods.TinManBot|Tin Man|TinMan", unmatched = "unmatched Tin.int|Tin";
        QCOMPARE(found,
            (QStringList { "editor: not shown, 5 advances, pattern.ini: ", tin, unmatched,
                "editor: Tin.int, 5 advances, pattern.ini: ", tin, unmatched,
                "editor: Tin.int, 6 advances, pattern.ini: TinMan,Tin", tin + ": TinSkins.tinn|Tin",
                unmatched }));
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
