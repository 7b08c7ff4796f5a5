#include "catalogue/intfile.h"
#include "catalogue/modelcatalogue.h"
#include "catalogue/patternfile.h"
#include "catalogue/scan.h"
#include "catalogue/unmatchedlist.h"
#include "configfiles/progress.h"
#include "startup/programdirectory.h"

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

using namespace Qt::StringLiterals;

namespace {

QString classLine(const QString &name, const QString &description = u"D"_s)
{
    return u"Object=(Name=%1,Class=Class,MetaClass=Botpack.Bot,Description=\"%2\")"_s.arg(
        name, description);
}

QString voiceLine(const QString &name, const QString &metaClass)
{
    return u"Object=(Name=%1,Class=Class,MetaClass=%2,Description=\"V\")"_s.arg(name, metaClass);
}

QString textureLine(const QString &name, const QString &description = u"D"_s)
{
    return u"Object=(Name=%1,Class=Texture,Description=\"%2\")"_s.arg(name, description);
}

QByteArray utf16WithBom(const QStringList &lines)
{
    QStringEncoder encoder(QStringConverter::Utf16LE);
    return QByteArray("\xFF\xFE") + QByteArray(encoder(lines.join(u"\r\n"_s) + u"\r\n"_s));
}

// The file names of the occupied slots of a file list.
QStringList names(const QStringList &paths)
{
    QStringList found;
    for (const QString &path : paths) {
        if (!path.isEmpty())
            found.append(QFileInfo(path).fileName());
    }
    return found;
}

QStringList classes()
{
    QStringList found;
    for (const MISCLASS &model : std::as_const(Catalogue().MISCCLASSES)) {
        if (!model.ClassName.isEmpty())
            found.append(model.ClassName + u'|' + model.Description);
    }
    return found;
}

// "VoiceClass|Description|kind" of the occupied voice slots.
QStringList voices()
{
    QStringList found;
    for (const VoiceEntry &voice : std::as_const(Catalogue().VoiceList)) {
        if (!voice.VoiceClass.isEmpty())
            found.append(
                u"%1|%2|%3"_s.arg(voice.VoiceClass, voice.Description).arg(voice.VoiceKind));
    }
    return found;
}

const MISCLASS *modelNamed(const QString &className)
{
    for (const MISCLASS &model : std::as_const(Catalogue().MISCCLASSES)) {
        if (model.ClassName == className)
            return &model;
    }
    return nullptr;
}

// "SkinName|Description" of the model's skins, each face appended as " +FaceName|Description".
QStringList skinsOf(const QString &className)
{
    QStringList found;
    const MISCLASS *model = modelNamed(className);
    if (!model)
        return found;
    for (const SkinEntry &skin : model->Skins) {
        if (skin.Description.isEmpty())
            continue;
        found.append(skin.SkinName + u'|' + skin.Description);
        for (const FaceEntry &face : skin.Faces) {
            if (!face.FaceName.isEmpty())
                found.last() += u" +"_s + face.FaceName + u'|' + face.Description;
        }
    }
    return found;
}

QStringList unmatched()
{
    QStringList found;
    for (const UnmatchedSkin &skin : std::as_const(Catalogue().UnmatchedSkins)) {
        if (!skin.FilePath.isEmpty())
            found.append(QFileInfo(skin.FilePath).fileName() + u'|' + skin.SkinType);
    }
    return found;
}

const QStringList AllSteps { u"Locating Model && Skin files..."_s, u"Analyzing Class files..."_s,
    u"Analyzing Skin files..."_s, u"Analyzing Voice files..."_s };

} // namespace

class TestScan : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<RecordingErrorSink> m_errors;

    QString gameDir() const { return m_dir->filePath(u"game"_s) + QDir::separator(); }
    QString systemDir() const { return gameDir() + u"System"_s + QDir::separator(); }
    QString programDir() const { return m_dir->filePath(u"program"_s) + QDir::separator(); }
    QString exclusionFile() const { return programDir() + u"int.ini"_s; }

    void writeInt(const QString &name, const QStringList &lines)
    {
        QVERIFY(writeTestFile(systemDir() + name, crlf(lines)));
    }

    void scan(const ScanForms &forms = {}) { ScanIntFiles(gameDir(), exclusionFile(), forms); }

    QStringList errorMessages() const
    {
        QStringList found;
        for (const auto &error : m_errors->errors)
            found.append(error.message);
        return found;
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        setProgramDir(programDir());
        QVERIFY(writeTestFile(exclusionFile(), "Engine.int\r\n"));
        QVERIFY(writeTestFile(programDir() + u"pattern.ini"_s, {}));
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
        QTest::addColumn<QString>("lists"); // C class, S skin, V voice
        QTest::addColumn<int>("classCount");

        const QString header = u"[Public]"_s;
        const QString male = voiceLine(u"P.Gruff"_s, u"Botpack.VoiceMale"_s);
        QTest::newRow("three classes, one entry") << crlf({ header, classLine(u"P.AOneBot"_s),
            classLine(u"P.BTwoBot"_s), classLine(u"P.CThreeBot"_s) })
                                                  << u"C"_s << 3;
        QTest::newRow("a declaration on the first line is never examined")
            << crlf({ classLine(u"P.FirstBot"_s), textureLine(u"PSkins.abcd1"_s) }) << u"S"_s << 0;
        QTest::newRow("model package with its voice")
            << crlf({ header, classLine(u"P.HeroBot"_s), male }) << u"CV"_s << 1;
        QTest::newRow("each voice kind, in any case")
            << crlf({ header, voiceLine(u"P.A"_s, u"BOTPACK.VOICEFEMALE"_s),
                   voiceLine(u"P.B"_s, u"botpack.voiceboss"_s) })
            << u"V"_s << 0;
        QTest::newRow("reading ends at the first texture")
            << crlf({ header, textureLine(u"PSkins.abcd1"_s), classLine(u"P.LateBot"_s), male })
            << u"S"_s << 0;
        QTest::newRow("what came before the texture counts")
            << crlf({ header, classLine(u"P.HeroBot"_s), textureLine(u"PSkins.abcd1"_s) })
            << u"CS"_s << 1;
        QTest::newRow("a texture on a class line reads on") << crlf({ header,
            u"Object=(Name=P.OddBot,Class=Texture,METACLASS=BOTPACK.BOT,Description=D)"_s, male })
                                                            << u"CV"_s << 1;
        QTest::newRow("switched-off class is listed, not added")
            << crlf({ header, u';' + classLine(u"P.OffBot"_s) }) << u"C"_s << 0;
        QTest::newRow("other metaclasses and texture-less lines") << crlf({ header,
            u"Object=(Name=P.Mut,Class=Class,MetaClass=Engine.Mutator,Description=\"M\")"_s,
            u"Object=(Name=P.Pic,Class=Sound)"_s }) << QString() << 0;
        QTest::newRow("LF only") << QByteArray("[Public]\n" + classLine(u"P.LfBot"_s).toLatin1()
            + '\n') << u"C"_s << 1;
        QTest::newRow("UTF-16LE with byte-order mark")
            << utf16WithBom({ header, classLine(u"P.WideBot"_s, u"W\u00e9de"_s) }) << u"C"_s << 1;
        QTest::newRow("UTF-8 with byte-order mark")
            << QByteArray("\xEF\xBB\xBF[Public]\r\n" + classLine(u"P.EightBot"_s).toUtf8())
            << u"C"_s << 1;
        QTest::newRow("CR only") << QByteArray("[Public]\r" + classLine(u"P.CrBot"_s).toLatin1()
            + '\r' + textureLine(u"PSkins.abcd1"_s).toLatin1() + '\r')
                                 << u"CS"_s << 1;
        // Megabytes on one line take the sorting no longer than on many.
        const QString textures = u",Class=Texture"_s.repeated(300'000);
        QTest::newRow("one long class line full of textures")
            << crlf({ header, classLine(u"P.LongBot"_s) + textures, male }) << u"CV"_s << 1;
        QTest::newRow("one long texture line") << crlf(
            { header, textureLine(u"PSkins.abcd1"_s) + textures, classLine(u"P.LateBot"_s) })
                                               << u"S"_s << 0;
        // The faces of a skin are the lines after it that hold its name.
        const QString longName = QString(1'000'000, u'e') + u'f';
        QTest::newRow("a long skin name, a long line after it")
            << crlf({ header, classLine(u"P."_s + longName + u"Bot"_s), textureLine(longName),
                   textureLine(QString(2'000'000, u'e')) })
            << u"CS"_s << 1;
        QTest::newRow("empty file") << QByteArray() << QString() << 0;
        QTest::newRow("header line only, no line end") << QByteArray("[Public]") << QString() << 0;
        QTest::newRow("declaration without a header, no line end")
            << classLine(u"P.OnlyBot"_s).toLatin1() << QString() << 0;
    }

    void sortsEachFileByItsDeclarations()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, lists);
        QFETCH(int, classCount);
        QVERIFY(writeTestFile(systemDir() + u"Mod.int"_s, bytes));
        scan();
        const ModelCatalogue &catalogue = Catalogue();
        QString found;
        found += names(catalogue.ClassFiles).isEmpty() ? u""_s : u"C"_s;
        found += names(catalogue.SkinFiles).isEmpty() ? u""_s : u"S"_s;
        found += names(catalogue.VoiceFiles).isEmpty() ? u""_s : u"V"_s;
        QCOMPARE(found, lists);
        for (const QStringList *list :
            { &catalogue.ClassFiles, &catalogue.SkinFiles, &catalogue.VoiceFiles })
            QVERIFY(names(*list).size() <= 1);
        QCOMPARE(classes().size(), classCount);
        QCOMPARE(errorMessages(), QStringList());
    }

    void realInstallation_data()
    {
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QStringList>("someSkins");

        QTest::newRow("male commando")
            << u"BotPack.TMale1Bot"_s << u"Male Commando"_s
            << QStringList { u"CommandoSkins.cmdo|Commando +CommandoSkins.cmdo2Blake|Blake"_s,
                   u"CommandoSkins.goth|Necris"_s };
        QTest::newRow("male soldier") << u"BotPack.TMale2Bot"_s << u"Male Soldier"_s
                                      << QStringList { u"SoldierSkins.blkt|Marine"_s };
        QTest::newRow("female commando")
            << u"BotPack.TFemale1Bot"_s << u"Female Commando"_s
            << QStringList { u"FCommandoSkins.cmdo|Commando +FCommandoSkins.cmdo4ivana|Ivana"_s };
        QTest::newRow("female soldier") << u"BotPack.TFemale2Bot"_s << u"Female Soldier"_s
                                        << QStringList { u"SGirlSkins.army|Soldier"_s };
        QTest::newRow("boss") << u"BotPack.TBossBot"_s << u"Boss"_s
                              << QStringList { u"BossSkins.Boss|Boss"_s };
    }

    void realInstallation()
    {
        QFETCH(QString, className);
        QFETCH(QString, description);
        QFETCH(QStringList, someSkins);
        RecordingProgress progress;
        ScanIntFiles(realWorldDir() + u"vanilla-server"_s + QDir::separator(),
            QStringLiteral(QUORVANE_SOURCE_DIR "/src/data/int.ini"));

        QCOMPARE(errorMessages(), QStringList());
        QCOMPARE(classes(),
            (QStringList { u"BotPack.TMale1Bot|Male Commando"_s,
                u"BotPack.TMale2Bot|Male Soldier"_s, u"BotPack.TFemale1Bot|Female Commando"_s,
                u"BotPack.TFemale2Bot|Female Soldier"_s, u"BotPack.TBossBot|Boss"_s }));
        QCOMPARE(voices(),
            (QStringList { u"BotPack.VoiceMaleOne|Male One|0"_s,
                u"BotPack.VoiceFemaleOne|Female One|1"_s, u"BotPack.VoiceMaleTwo|Male Two|0"_s,
                u"BotPack.VoiceFemaleTwo|Female Two|1"_s, u"BotPack.VoiceBoss|Robot|2"_s }));
        QCOMPARE(names(Catalogue().ClassFiles), QStringList { u"Botpack.int"_s });
        QCOMPARE(names(Catalogue().SkinFiles).size(), 11);
        QCOMPARE(unmatched(), QStringList());
        QCOMPARE(Catalogue().BossMode, short(2));

        const MISCLASS *model = modelNamed(className);
        QVERIFY(model);
        QCOMPARE(model->Description, description);
        const QStringList skins = skinsOf(className);
        for (const QString &skin : someSkins) {
            const bool listed = std::any_of(skins.begin(), skins.end(),
                [&](const QString &entry) { return entry.startsWith(skin); });
            QVERIFY2(listed, qPrintable(skin + u" not in "_s + skins.join(u"; "_s)));
        }

        QCOMPARE(progress.steps, AllSteps);
        // 12 files sorted, 13 parsed (Botpack.int twice), 5 classes, 5 voices.
        QCOMPARE(progress.advances, 12 + 13 + 5 + 5);
    }

    void skipsTheListedFiles_data()
    {
        QTest::addColumn<QByteArray>("intIni");
        QTest::addColumn<QStringList>("scanned");
        QTest::addColumn<int>("messages");

        QTest::newRow("names in any case, one a line")
            << QByteArray("ENGINE.INT\r\ncore.Int\r\n") << QStringList { u"Mod.int"_s } << 0;
        QTest::newRow("comma-separated, quoted")
            << QByteArray("\"Engine.int\",Core.int\n") << QStringList { u"Mod.int"_s } << 0;
        QTest::newRow("empty list scans everything")
            << QByteArray() << QStringList { u"Core.int"_s, u"Engine.int"_s, u"Mod.int"_s } << 0;
        QTest::newRow("missing list is said once, scans everything")
            << QByteArray() << QStringList { u"Core.int"_s, u"Engine.int"_s, u"Mod.int"_s } << 1;
    }

    void skipsTheListedFiles()
    {
        QFETCH(QByteArray, intIni);
        QFETCH(QStringList, scanned);
        QFETCH(int, messages);
        if (messages)
            QVERIFY(QFile::remove(exclusionFile()));
        else
            QVERIFY(writeTestFile(exclusionFile(), intIni));
        for (const QString &name : { u"Core.int"_s, u"Engine.int"_s, u"Mod.int"_s })
            writeInt(name, { u"[Public]"_s, classLine(name.section(u'.', 0, 0) + u".ModBot"_s) });

        ScriptedPrompt prompt;
        scan();
        QCOMPARE(names(Catalogue().ClassFiles), scanned);
        QCOMPARE(prompt.messages().size(), messages);
        if (messages)
            QCOMPARE(prompt.messages().first().title, u"int.ini"_s);
    }

    void findsFilesWithoutRegardToCase()
    {
        QDir(m_dir->path()).mkpath(u"game/sYsTeM"_s);
        const QString system = gameDir() + u"sYsTeM/"_s;
        for (const QString &name :
            { u"b.INT"_s, u"B.int"_s, u"a_z.int"_s, u"AB.Int"_s, u"c.ini"_s })
            QVERIFY(writeTestFile(system + name, crlf({ u"[Public]"_s, classLine(u"P.ZBot"_s) })));
        QDir(system).mkdir(u"folder.int"_s);

        // In the order of the upper-case names, as the game's own file system lists them.
        QCOMPARE(IntFileNames(system),
            (QStringList { u"AB.Int"_s, u"a_z.int"_s, u"B.int"_s, u"b.INT"_s }));
        scan();
        QCOMPARE(Catalogue().ClassFiles.first(), QDir::toNativeSeparators(system + u"AB.Int"_s));
        QCOMPARE(names(Catalogue().ClassFiles).size(), 4);
        QCOMPARE(classes().size(), 4);
    }

    void withoutFilesTheTablesKeepTheirFreeSlots_data()
    {
        QTest::addColumn<QString>("gameDir");
        QTest::newRow("no System folder") << u"elsewhere"_s;
        QTest::newRow("no game directory") << QString();
    }

    void withoutFilesTheTablesKeepTheirFreeSlots()
    {
        QFETCH(QString, gameDir);
        writeInt(u"Mod.int"_s, { u"[Public]"_s, classLine(u"P.ModBot"_s) });
        Catalogue().MISCCLASSES.append(newClassSlot());
        RecordingProgress progress;
        QStringList reported { u"not called"_s };
        ScanIntFiles(gameDir.isEmpty() ? gameDir : m_dir->filePath(gameDir) + u'/', exclusionFile(),
            { [&](const QStringList &paths) { reported = paths; }, {} });

        const ModelCatalogue &catalogue = Catalogue();
        QCOMPARE(catalogue.MISCCLASSES.size(), 2);
        QCOMPARE(catalogue.VoiceList.size(), 2);
        QCOMPARE(catalogue.ClassFiles, QStringList(2));
        QCOMPARE(catalogue.SkinFiles, QStringList(2));
        QCOMPARE(catalogue.VoiceFiles, QStringList(2));
        QCOMPARE(progress.steps, AllSteps);
        QCOMPARE(progress.advances, 0);
        QCOMPARE(reported, QStringList()); // the report is shown all the same
        QCOMPARE(errorMessages(), QStringList());
    }

    void fileListsGrowTenSlotsAtATime()
    {
        for (int i = 0; i < 13; ++i)
            writeInt(u"M%1.int"_s.arg(i, 2, 10, QLatin1Char('0')),
                { u"[Public]"_s, classLine(u"P.M%1Bot"_s.arg(i)) });
        scan();
        const QStringList &files = Catalogue().ClassFiles;
        QCOMPARE(files.size(), 22);
        QCOMPARE(names(files).size(), 13);
        QCOMPARE(QFileInfo(files.at(12)).fileName(), u"M12.int"_s);
        QVERIFY(files.at(13).isEmpty());
    }

    void aBadFileCostsOnlyItself()
    {
        writeInt(u"Broken.int"_s,
            { u"[Public]"_s, classLine(u"P.GoodBot"_s, u"Good"_s),
                u"Object=(Name=P.BadBot,MetaClass=Botpack.Bot)"_s,
                classLine(u"P.AfterBot"_s, u"After"_s) });
        writeInt(u"Hero.int"_s, { u"[Public]"_s, classLine(u"P.HeroBot"_s, u"Hero"_s) });
        writeInt(u"HeroSkins.int"_s,
            { u"[Public]"_s, textureLine(u"HeroSkins.hero1"_s, u"Red"_s),
                textureLine(u"HeroSkins.hero1Ace"_s, u"Ace"_s) });
        writeInt(u"Voices.int"_s,
            { u"[Public]"_s, u"Object=(Name=P.Short,MetaClass=Botpack.VoiceMale)"_s,
                voiceLine(u"P.Gruff"_s, u"Botpack.VoiceMale"_s) });
        scan();
        QCOMPARE(errorMessages(),
            (QStringList {
                u"Unknown Error in modParseInt:EXTRACT CLASS INFORMATION - Other Than New Boss Skins"_s,
                u"Unknown Error in modParseInt in Sub ParseVoice:EXTRACT CLASS INFORMATION"_s }));
        QVERIFY(classes().contains(u"P.AfterBot|After"_s));
        QVERIFY(classes().contains(u"P.HeroBot|Hero"_s));
        QCOMPARE(skinsOf(u"P.HeroBot"_s),
            QStringList { u"HeroSkins.hero|Red +HeroSkins.hero1Ace|Ace"_s });
        // A slot keeps what was stored before its line failed.
        QCOMPARE(voices(), (QStringList { u"P.Short||0"_s, u"P.Gruff|V|0"_s }));
    }

#ifdef Q_OS_UNIX
    // Opening a FIFO would wait for a writer, reading a device would not end.
    void specialFilesAreReportedNotRead()
    {
        writeInt(u"Hero.int"_s, { u"[Public]"_s, classLine(u"P.HeroBot"_s) });
        QVERIFY(QFile::link(u"/dev/zero"_s, systemDir() + u"Zero.int"_s));
        QVERIFY(QFile::remove(exclusionFile()));
        for (const QString &fifo : { exclusionFile(), systemDir() + u"Pipe.int"_s })
            QCOMPARE(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);

        ScriptedPrompt prompt;
        scan();
        QCOMPARE(prompt.transcript(),
            QStringList { u"int.ini|The list of game files to skip could not be read:\r\n"_s
                + exclusionFile()
                + u"\r\nint.ini is not a regular file\r\n\r\nEvery .int file of the game will "
                  "be scanned."_s });
        QStringList reported;
        for (const auto &error : m_errors->errors)
            reported.append(QString::number(error.number) + u'|' + error.description);
        QCOMPARE(reported,
            (QStringList {
                u"75|Pipe.int is not a regular file"_s, u"75|Zero.int is not a regular file"_s }));
        QCOMPARE(classes(), QStringList { u"P.HeroBot|D"_s });
    }
#endif

    void bossModeIsKnownBeforeTheSkinPass()
    {
        const QString plain = u"Object=(Name=SkeletalCharsFix313.XanMk2BotFix313,Class=Class,"
                              "MetaClass=Botpack.Bot,Description=\"Xan II [Fixed]\")"_s;
        const QString male = u"Object=(Name=SkeletalCharsFix313.XanMk2MBotFix313,Class=Class,"
                             "MetaClass=Botpack.Bot,Description=\"Xan II [Fixed/Male Voices]\")"_s;
        writeInt(u"SkeletalCharsFix313.int"_s, { u"[Public]"_s, plain, male });
        writeInt(u"NewXanSkins.int"_s,
            { u"[Public]"_s, textureLine(u"NewXanSkins.xana1"_s, u"Gold"_s) });
        scan();
        QCOMPARE(Catalogue().BossMode, short(0));
        // Both variants on: the skins go to both.
        QCOMPARE(skinsOf(u"SkeletalCharsFix313.XanMk2BotFix313"_s),
            QStringList { u"NewXanSkins.xana|Gold"_s });
        QCOMPARE(skinsOf(u"SkeletalCharsFix313.XanMk2MBotFix313"_s),
            QStringList { u"NewXanSkins.xana|Gold"_s });
    }

    void unmatchedSkinsAndTheirPatterns_data()
    {
        QTest::addColumn<bool>("check");
        QTest::addColumn<bool>("assign");
        QTest::addColumn<bool>("editorShown");
        QTest::addColumn<QStringList>("tinSkins");
        QTest::addColumn<QByteArray>("patternFile");

        QTest::newRow("nothing checked")
            << false << false << false << QStringList() << QByteArray();
        QTest::newRow("checked, not assigned")
            << true << false << true << QStringList() << QByteArray();
        QTest::newRow("assigned, parsed again")
            << true << true << true << QStringList { u"TinSkins.tinn|Tin"_s }
            << QByteArray("TinMan,Tin\r\n");
    }

    void unmatchedSkinsAndTheirPatterns()
    {
        QFETCH(bool, check);
        QFETCH(bool, assign);
        QFETCH(bool, editorShown);
        QFETCH(QStringList, tinSkins);
        QFETCH(QByteArray, patternFile);
        writeInt(
            u"Robots.int"_s, { u"[Public]"_s, classLine(u"MyMods.TinManBot"_s, u"Tin Man"_s) });
        writeInt(u"Tin.int"_s, { u"[Public]"_s, textureLine(u"TinSkins.tinn1"_s, u"Tin"_s) });
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
            if (assign)
                files.first().modelDescription = u"Tin Man"_s;
            FinishPatterns(files);
        };
        scan(forms);

        QCOMPARE(reported, QStringList { QDir::toNativeSeparators(systemDir() + u"Tin.int"_s) });
        QCOMPARE(shown, editorShown);
        QCOMPARE(skinsOf(u"MyMods.TinManBot"_s), tinSkins);
        QCOMPARE(readTestFile(programDir() + u"pattern.ini"_s), patternFile);
        QCOMPARE(classes().size(), 1);
        QCOMPARE(errorMessages(), QStringList());
    }

    void aSecondScanStartsAfresh()
    {
        writeInt(u"Hero.int"_s,
            { u"[Public]"_s, classLine(u"P.HeroBot"_s),
                voiceLine(u"P.V"_s, u"Botpack.VoiceBoss"_s) });
        writeInt(u"HeroSkins.int"_s, { u"[Public]"_s, textureLine(u"HeroSkins.hero1"_s) });
        writeInt(u"Odd.int"_s, { u"[Public]"_s, textureLine(u"OddSkins.oddd1"_s) });
        scan();
        const QStringList first = classes() + voices() + skinsOf(u"P.HeroBot"_s) + unmatched();
        scan();
        QCOMPARE(classes() + voices() + skinsOf(u"P.HeroBot"_s) + unmatched(), first);
        QCOMPARE(first.size(), 4);
    }

    // The sorting and the parsers find their marks in lower-cased text, which
    // takes a shortcut for ASCII text.
    void lowerCasesLikeQt_data()
    {
        QTest::addColumn<QString>("text");
        QString ascii;
        for (char16_t c = 1; c < 0x80; ++c)
            ascii += QChar(c);
        QTest::newRow("every ASCII character") << ascii;
        QTest::newRow("every ASCII character, shifted") << ascii.mid(3) + ascii.left(3);
        QTest::newRow("short") << u"AZ@[`{"_s;
        QTest::newRow("Latin-1 and beyond")
            << u"OBJECT=(NAME=\u00c4PFEL.\u00c9T\u00c9,\U0001D400\u0152)"_s;
    }

    void lowerCasesLikeQt()
    {
        QFETCH(QString, text);
        QString buffer;
        QCOMPARE(lowerCaseInto(text, buffer).toString(), text.toLower());
    }

    void letsTheEventLoopRunWhileItWorks()
    {
        for (int i = 0; i < 20; ++i)
            writeInt(u"M%1.int"_s.arg(i), { u"[Public]"_s, classLine(u"P.M%1Bot"_s.arg(i)) });
        int turns = 0;
        setEventLoopHook([&] { ++turns; }, 0);
        scan();
        QVERIFY2(turns >= 40, qPrintable(QString::number(turns))); // sorting and the class pass
    }
};

QTEST_GUILESS_MAIN(TestScan)
#include "test_scan.moc"
