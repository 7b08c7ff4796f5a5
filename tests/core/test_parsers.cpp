#include "catalogue/classparser.h"
#include "catalogue/modelcatalogue.h"
#include "catalogue/skinparser.h"
#include "catalogue/voiceparser.h"

#include "cataloguetext.h"
#include "recordingprogress.h"
#include "testfiles.h"

#include <QTemporaryDir>
#include <QTest>

// What the parsers make of single lines and how their tables grow; what they
// make of whole files is tested through the scan.
class TestParsers : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

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
    }

    void readsTextureLines_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("nameDescriptionSkinType");
        QTest::newRow("base skin loses its digit") << textureLine("CommandoSkins.cmdo1", "Commando")
                                                   << "CommandoSkins.cmdo|Commando|Commando";
        QTest::newRow("six characters")
            << textureLine("MyHeroSkins.hero10") << "MyHeroSkins.hero10|D|MyHero";
        QTest::newRow("digit 0 stays") << textureLine("P.abcd0") << "P.abcd0|D|P";
        QTest::newRow("unquoted, lower-case skins")
            << "Object=(Name=Soldierskins.sldr1,Class=Texture,Description=Soldier)"
            << "Soldierskins.sldr|Soldier|Soldier";
        QTest::newRow("cut at underscore")
            << textureLine("MyGuy_v2Skins.guyz1") << "MyGuy_v2Skins.guyz|D|MyGuy";
        QTest::newRow("nothing before skin")
            << textureLine("SkinPackX.abcd1") << "SkinPackX.abcd|D|";
        QTest::newRow("new Xan") << textureLine("NewXanSkins.xan01")
                                 << "NewXanSkins.xan0|D|xanfixed";
        QTest::newRow("last field, whatever its key")
            << "Object=(Name=P.abcd1,Class=Texture,Description=\"A\",Group=G)"
            << "P.abcd|G|P";
    }

    void readsTextureLines()
    {
        QFETCH(QString, line);
        QFETCH(QString, nameDescriptionSkinType);
        QCOMPARE(GetSkinName(line) + '|' + GetSkinDescription(line) + '|' + GetSkinType(line),
            nameDescriptionSkinType);
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
        QFETCH(int, slotCount);
        RecordingProgress progress;
        QStringList expected;
        for (int file = 0; file < classesPerFile.size(); ++file) {
            QStringList lines { ';' + classLine("Off.OffBot") };
            for (int i = 0; i < classesPerFile.at(file); ++i) {
                lines.append(classLine(QString("P.C%1Bot").arg(expected.size())));
                expected.append(QString("P.C%1Bot|D|C%1").arg(expected.size()));
            }
            ParseClass(write(QString("f%1.int").arg(file), lines));
        }
        QCOMPARE(catalogueText(), expected);
        QCOMPARE(Catalogue().MISCCLASSES.size(), slotCount);
        QCOMPARE(progress.advances, expected.size());
        // Two free skins of two free faces each.
        QCOMPARE(Catalogue().MISCCLASSES.last().Skins.size(), 2);
        QCOMPARE(Catalogue().MISCCLASSES.last().Skins.last().Faces.size(), 2);
    }

    // Voices, skins and faces always keep one free slot at the end.
    void otherTablesKeepOneFreeSlot()
    {
        RecordingProgress progress;
        ParseVoice(write("Voices.int",
            { voiceLine("V.A", "Botpack.VoiceMale"), voiceLine("V.B", "Botpack.VoiceMale"),
                voiceLine("V.C", "Botpack.VoiceBoss") }));
        QCOMPARE(Catalogue().VoiceList.size(), 4);
        QCOMPARE(progress.advances, 3);

        ParseClass(write("Hero.int", { classLine("P.HeroBot") }));
        ParseSkin(write("HeroSkins.int",
            { textureLine("HeroSkins.hero1"), textureLine("HeroSkins.hero1Ace"),
                textureLine("HeroSkins.hero1Bolt"), textureLine("HeroSkins.army1"),
                textureLine("HeroSkins.navy1") }));
        const MISCLASS &hero = Catalogue().MISCCLASSES.first();
        QCOMPARE(hero.Skins.size(), 4);
        QCOMPARE(hero.Skins.first().Faces.size(), 3);
    }

    void reportsTheStepOfAFailure()
    {
        RecordingErrorSink errors;
        ParseSkin(m_dir.filePath("Missing.int"));
        ParseClass(m_dir.filePath("Missing.int"));
        ParseVoice(m_dir.filePath("Missing.int"));
        ParseSkin(write("Bad.int", { "Object=(Name=,Class=Texture,Description=\"X\")" }));
        QCOMPARE(GetBlankSkinPosition(Catalogue().MISCCLASSES.size()), 0);
        QCOMPARE(GetBlankSkinPosition(-1), 0);
        QCOMPARE(errors.messages(),
            QStringList(
                { "Unknown Error in modParseInt in Sub ParseSkin:READ THE FILE INTO FILEARRAY",
                    "Unknown Error in modParseInt:READ THE FILE INTO FILEARRAY",
                    "Unknown Error in modParseInt in Sub ParseVoice:READ THE FILE INTO FILEARRAY",
                    "Unknown Error in modParseInt in Sub ParseSkin:GET_TMP_SKIN_TYPE",
                    "ERROR IN GetBlankSkinPosition", "ERROR IN GetBlankSkinPosition" }));
    }
};

QTEST_GUILESS_MAIN(TestParsers)
#include "test_parsers.moc"
