#include "catalogue/classparser.h"
#include "catalogue/modelcatalogue.h"
#include "catalogue/skinparser.h"
#include "catalogue/voiceparser.h"

#include "recordingprogress.h"
#include "testfiles.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

QString classLine(const QString &name, const QString &description = QStringLiteral("D"))
{
    return QStringLiteral("Object=(Name=%1,Class=Class,MetaClass=Botpack.Bot,Description=\"%2\")")
        .arg(name, description);
}

QString voiceLine(const QString &name, const QString &metaClass)
{
    return QStringLiteral("Object=(Name=%1,Class=Class,MetaClass=%2,Description=\"V\")")
        .arg(name, metaClass);
}

QString textureLine(const QString &name, const QString &description = QStringLiteral("D"))
{
    return QStringLiteral("Object=(Name=%1,Class=Texture,Description=\"%2\")")
        .arg(name, description);
}

// Occupied class slots as "ClassName|Description|SkinType".
QStringList classes()
{
    QStringList found;
    for (const MISCLASS &model : std::as_const(Catalogue().MISCCLASSES)) {
        if (!model.ClassName.isEmpty())
            found.append(model.ClassName + u'|' + model.Description + u'|' + model.SkinType);
    }
    return found;
}

// Occupied skins of the model as "SkinName|Description", each face appended as " +FaceName".
QStringList skinsOf(const QString &skinType)
{
    QStringList found;
    for (const MISCLASS &model : std::as_const(Catalogue().MISCCLASSES)) {
        for (const SkinEntry &skin : model.Skins) {
            if (model.SkinType != skinType || skin.Description.isEmpty())
                continue;
            found.append(skin.SkinName + u'|' + skin.Description);
            for (const FaceEntry &face : skin.Faces) {
                if (!face.FaceName.isEmpty())
                    found.last() += QStringLiteral(" +") + face.FaceName;
            }
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

QStringList messages(const RecordingErrorSink &sink)
{
    QStringList found;
    for (const auto &error : sink.errors)
        found.append(error.message);
    return found;
}

void addModel(const QString &skinType)
{
    MISCLASS model = newClassSlot();
    model.ClassName = model.Description = model.SkinType = skinType;
    Catalogue().MISCCLASSES.append(model);
}

} // namespace

class TestParsers : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<RecordingErrorSink> m_errors;

    QString write(const QString &name, const QStringList &lines)
    {
        const QString path = m_dir.filePath(name);
        writeTestFile(path, crlf(lines));
        return path;
    }

private slots:
    void init()
    {
        Catalogue() = ModelCatalogue();
        CreateCatalogueTables();
        Catalogue().BossMode = 2;
        m_errors = std::make_unique<RecordingErrorSink>();
    }

    void cleanup() { m_errors.reset(); }

    void readsTextureLines_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("skinType");

        QTest::newRow("base skin loses its digit")
            << textureLine("CommandoSkins.cmdo1", "Commando") << "CommandoSkins.cmdo" << "Commando" << "Commando";
        QTest::newRow("six characters") << textureLine("MyHeroSkins.hero10") << "MyHeroSkins.hero10" << "D" << "MyHero";
        QTest::newRow("digit 0 stays") << textureLine("P.abcd0") << "P.abcd0" << "D" << "P";
        QTest::newRow("unquoted, lower-case skins")
            << "Object=(Name=Soldierskins.sldr1,Class=Texture,Description=Soldier)" << "Soldierskins.sldr" << "Soldier"
            << "Soldier";
        QTest::newRow("cut at underscore")
            << textureLine("MyGuy_v2Skins.guyz1") << "MyGuy_v2Skins.guyz" << "D" << "MyGuy";
        QTest::newRow("nothing before skin") << textureLine("SkinPackX.abcd1") << "SkinPackX.abcd" << "D" << "";
        QTest::newRow("newxan") << textureLine("NewXanSkins.xan01") << "NewXanSkins.xan0" << "D" << "xanfixed";
        QTest::newRow("last field, whatever its key")
            << "Object=(Name=P.abcd1,Class=Texture,Description=\"A\",Group=G)" << "P.abcd" << "G" << "P";
    }

    void readsTextureLines()
    {
        QFETCH(QString, line);
        QFETCH(QString, name);
        QFETCH(QString, description);
        QFETCH(QString, skinType);
        QCOMPARE(GetSkinName(line), name);
        QCOMPARE(GetSkinDescription(line), description);
        QCOMPARE(GetSkinType(line), skinType);
    }

    void parsesClasses_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("classes");
        QTest::addColumn<int>("errors");

        QTest::newRow("standard class")
            << "Botpack.int" << QStringList{classLine("Botpack.TMale1Bot", "Male Commando") }
            << QStringList{"Botpack.TMale1Bot|Male Commando|commando" } << 0;
        QTest::newRow("standard stems in any case")
            << "P.int" << QStringList{classLine("P.TMALE2Bot"), classLine("P.tfemale1bot"),
                   classLine("P.TFemale2Bot"), classLine("P.TBossBot"), classLine("P.TSkaarjBot"),
                   classLine("P.TNaliBot"), classLine("P.TCowBot") }
            << QStringList{"P.TMALE2Bot|D|soldier", "P.tfemale1bot|D|fcommando",
                   "P.TFemale2Bot|D|sgirl", "P.TBossBot|D|boss", "P.TSkaarjBot|D|tskm",
                   "P.TNaliBot|D|tnalimesh", "P.TCowBot|D|tcowmesh" }
            << 0;
        QTest::newRow("stem before the first bot, case kept; comments and voices skipped")
            << "My.int" << QStringList{classLine("My.RobotKnightBot"), ";" + classLine("My.OffBot"),
                   voiceLine("My.Gruff", "Botpack.VoiceMale"), classLine("My.CustomBot") }
            << QStringList{"My.RobotKnightBot|D|Ro", "My.CustomBot|D|Custom" } << 0;
        QTest::newRow("boss package, by whole class name in any case")
            << "SkeletalCharsFix313.int" << QStringList{classLine("SkeletalCharsFix313.WarBossMBotFix313"),
                   classLine("skeletalcharsfix313.xanmk2botfix313"),
                   classLine("SkeletalCharsFix313.OtherBot") }
            << QStringList{"SkeletalCharsFix313.WarBossMBotFix313|D|warbossfixedmale",
                   "skeletalcharsfix313.xanmk2botfix313|D|xanfixed",
                   "SkeletalCharsFix313.OtherBot|D|" }
            << 0;
        QTest::newRow("older boss package")
            << "skeletalchars.int" << QStringList{classLine("SkeletalChars.XanMk2Bot") }
            << QStringList{"SkeletalChars.XanMk2Bot|D|xanmk2" } << 0;
        QTest::newRow("only the whole file name is the boss package")
            << "myskeletalchars.int" << QStringList{classLine("SkeletalChars.WarBossBot") }
            << QStringList{"SkeletalChars.WarBossBot|D|WarBoss" } << 0;
        QTest::newRow("bad lines keep what they stored, the next line still counts")
            << "Bad.int" << QStringList{"Object=(Name=Bad.OneBot,MetaClass=Botpack.Bot)",
                   classLine("Bad.Hero"), classLine("NoDotBot"), classLine("Bad.TwoBot") }
            << QStringList{"Bad.OneBot||", "Bad.Hero|D|", "NoDotBot|D|", "Bad.TwoBot|D|Two" } << 3;
    }

    void parsesClasses()
    {
        QFETCH(QString, fileName);
        QFETCH(QStringList, lines);
        QFETCH(QStringList, classes);
        QFETCH(int, errors);
        ParseClass(write(fileName, lines));
        QCOMPARE(::classes(), classes);
        const QString message(
            "Unknown Error in modParseInt:EXTRACT CLASS INFORMATION - Other Than New Boss Skins");
        QCOMPARE(messages(*m_errors), QStringList(errors, message));
    }

    void classesFillTheTableWithoutSpareSlots_data()
    {
        QTest::addColumn<QList<int>>("classesPerFile");
        QTest::addColumn<int>("slotCount");

        QTest::newRow("one class leaves a free slot") << QList<int>{1 } << 2;
        QTest::newRow("five in one file") << QList<int>{5 } << 5;
        QTest::newRow("one per file") << QList<int>{1, 1, 1 } << 3;
        QTest::newRow("a file without classes still makes room") << QList<int>{2, 0 } << 3;
    }

    void classesFillTheTableWithoutSpareSlots()
    {
        QFETCH(QList<int>, classesPerFile);
        QFETCH(int, slotCount);
        RecordingProgress progress;
        int total = 0;
        for (int file = 0; file < classesPerFile.size(); ++file) {
            QStringList lines{";" + classLine("Off.OffBot")};
            for (int i = 0; i < classesPerFile.at(file); ++i)
                lines.append(classLine(QStringLiteral("P.C%1Bot").arg(total++)));
            ParseClass(write(QStringLiteral("f%1.int").arg(file), lines));
        }
        QCOMPARE(Catalogue().MISCCLASSES.size(), slotCount);
        QCOMPARE(::classes().size(), total);
        QCOMPARE(progress.advances, total);
        QCOMPARE(Catalogue().MISCCLASSES.last().Skins.last().Faces.size(), 2);
    }

    void parsesVoices_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("voices");
        QTest::addColumn<int>("errors");

        QTest::newRow("kinds by metaclass in any case")
            << QStringList{"Object=(Name=MyVoices.VoiceGruff,Class=Class,MetaClass=Botpack."
                             "VoiceMale,Description=\"Gruff\")",
                   voiceLine("V.Robo", "Botpack.VoiceBoss"),
                   voiceLine("V.Her", "BOTPACK.VOICEFEMALE") }
            << QStringList{"MyVoices.VoiceGruff|Gruff|0", "V.Robo|V|2", "V.Her|V|1" } << 0;
        QTest::newRow("a commented-out voice still counts, read by position; classes do not")
            << QStringList{";" + voiceLine("V.Old", "Botpack.VoiceMale"), classLine("V.SomeBot") }
            << QStringList{"(Name=V.Old|V|0" } << 0;
        QTest::newRow("bad lines cost only themselves")
            << QStringList{"Object=(Name=V.Short,MetaClass=Botpack.VoiceMale)",
                   "Object=(Name=V.NoDot,Class=Class,MetaClass=X,Description=\"botpack."
                   "voicemale\")",
                   voiceLine("V.Good", "Botpack.VoiceFemale") }
            << QStringList{"V.Short||0", "V.NoDot|botpack.voicemale|0", "V.Good|V|1" } << 2;
    }

    void parsesVoices()
    {
        QFETCH(QStringList, lines);
        QFETCH(QStringList, voices);
        QFETCH(int, errors);
        RecordingProgress progress;
        ParseVoice(write("Voices.int", lines));
        QStringList found;
        for (const VoiceEntry &voice : std::as_const(Catalogue().VoiceList))
            found.append(voice.VoiceClass + u'|' + voice.Description + u'|'
                + QString::number(voice.VoiceKind));
        QCOMPARE(found, voices + QStringList{"||0" }); // always one free slot at the end
        QCOMPARE(messages(*m_errors),
            QStringList(errors,
                "Unknown Error in modParseInt in Sub ParseVoice:EXTRACT CLASS INFORMATION"));
        QCOMPARE(progress.advances, voices.size() - errors);
    }

    void filesSkinsAndTheirFaces()
    {
        addModel("MyHero");
        ParseSkin(write("MyHero.int",
            { "[Public]", textureLine("MyHeroSkins.hero1"),
                "Object=(Name=MyHeroSkins.hero2,Class=Texture)",
                textureLine("MyHeroSkins.hero5Ace"), textureLine("MyHeroSkins.hero5Bolt"),
                "Description=(Name=MyHeroSkins.hero5Late,Class=Texture)",
                textureLine("MyHeroSkins.army1"),
                "Object=(Name=MyHeroSkins.hazy1,Class=Texture,Description=\"\")",
                textureLine("MyHeroSkins.last1") }));
        QCOMPARE(skinsOf("MyHero"),
            QStringList({ "MyHeroSkins.hero|D +MyHeroSkins.hero5Ace +MyHeroSkins.hero5Bolt",
                "MyHeroSkins.army|D", "MyHeroSkins.last|D" }));
        // Always one free skin slot and one free face slot at the end; the skin
        // without a description left its slot free for the next.
        const MISCLASS &model = Catalogue().MISCCLASSES.last();
        QCOMPARE(model.Skins.size(), 4);
        QCOMPARE(model.Skins.first().Faces.size(), 3);
        QVERIFY(unmatched().isEmpty());
    }

    void findsTheModelBySkinTypeOrPattern_data()
    {
        QTest::addColumn<QStringList>("patterns"); // "Model,SkinType,..."
        QTest::addColumn<QString>("package");
        QTest::addColumn<int>("soldierSkins");
        QTest::addColumn<QStringList>("unmatched");

        QTest::newRow("skin type in any case")
            << QStringList() << "SOLDIERSkins" << 1 << QStringList();
        QTest::newRow("no model, no pattern")
            << QStringList() << "MyGuySkins" << 0 << QStringList{"MyGuy.int|MyGuy" };
        QTest::newRow("pattern") << QStringList{"commando,Other", "soldier,X,MyGuy" }
                                 << "MyGuySkins" << 1 << QStringList();
        QTest::newRow("patterns compare case") << QStringList{"soldier,MYGUY" } << "MyGuySkins"
                                               << 0 << QStringList{"MyGuy.int|MyGuy" };
        QTest::newRow("pattern chain") << QStringList{"Middle,MyGuy", "soldier,Middle" }
                                       << "MyGuySkins" << 1 << QStringList();
        QTest::newRow("pattern to no model") << QStringList{"gone,MyGuy" } << "MyGuySkins" << 0
                                             << QStringList{"MyGuy.int|gone" };
        QTest::newRow("pattern cycle") << QStringList{"B,MyGuy", "MyGuy,B" } << "MyGuySkins" << 0
                                       << QStringList{"MyGuy.int|B" };
    }

    void findsTheModelBySkinTypeOrPattern()
    {
        QFETCH(QStringList, patterns);
        QFETCH(QString, package);
        QFETCH(int, soldierSkins);
        QFETCH(QStringList, unmatched);
        addModel("soldier");
        for (const QString &line : patterns)
            Catalogue().PatternList.append(
                { line.section(u',', 0, 0), line.section(u',', 1).split(u',') });
        const QString line = package.isEmpty() ? "Object=(Name=MyGuySkins.abcd1,Class=Texture)"
                                               : textureLine(package + ".abcd1");
        ParseSkin(write("MyGuy.int", { line }));
        QCOMPARE(skinsOf("soldier").size(), soldierSkins);
        QCOMPARE(::unmatched(), unmatched);
    }

    void sharesSkinsOfTheBossVariants_data()
    {
        QTest::addColumn<int>("bossMode");
        QTest::addColumn<QString>("package");
        QTest::addColumn<QStringList>("models");
        QTest::addColumn<QList<int>>("skins");
        QTest::addColumn<int>("unmatched");

        const QStringList xan{"xanfixed", "xanfixedmale"};
        QTest::newRow("both on") << 0 << "NewXanSkins" << xan << QList<int>{1, 1 } << 0;
        QTest::newRow("both on, warboss")
            << 0 << "WarMachineBoss" << QStringList{"warbossfixed", "warbossfixedmale" } << QList<int>{1, 1 } << 0;
        QTest::newRow("plain only") << 1 << "NewXanSkins" << xan << QList<int>{1, 0 } << 0;
        QTest::newRow("male only, no plain model")
            << 2 << "NewXanSkins" << QStringList{"xanfixedmale" } << QList<int>{0 } << 1;
    }

    void sharesSkinsOfTheBossVariants()
    {
        QFETCH(int, bossMode);
        QFETCH(QString, package);
        QFETCH(QStringList, models);
        QFETCH(QList<int>, skins);
        QFETCH(int, unmatched);
        for (const QString &model : models)
            addModel(model);
        Catalogue().BossMode = short(bossMode);
        ParseSkin(write(
            "Boss.int", { textureLine(package + ".abcd1"), textureLine(package + ".abcd1Face") }));
        for (qsizetype i = 0; i < models.size(); ++i)
            QCOMPARE(skinsOf(models.at(i)).size(), skins.at(i));
        QCOMPARE(::unmatched().size(), unmatched);
    }

    void reportsTheStepOfAFailure()
    {
        ParseSkin(m_dir.filePath("Missing.int"));
        ParseSkin(write("Bad.int", { "Object=(Name=,Class=Texture,Description=\"X\")" }));
        QCOMPARE(GetBlankSkinPosition(99), 0);
        QCOMPARE(messages(*m_errors),
            QStringList(
                { "Unknown Error in modParseInt in Sub ParseSkin:READ THE FILE INTO FILEARRAY",
                    "Unknown Error in modParseInt in Sub ParseSkin:GET_TMP_SKIN_TYPE",
                    "ERROR IN GetBlankSkinPosition" }));
    }
};

QTEST_GUILESS_MAIN(TestParsers)
#include "test_parsers.moc"
