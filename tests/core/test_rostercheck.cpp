#include "roster/botroster.h"
#include "roster/classchoices.h"
#include "roster/rostercheck.h"
#include "samplecatalogue.h"
#include "testfiles.h"

#include <QTest>

// What the installed content offers a slot, what a slot uses that is not
// installed, and the moves of whole bots between slots.
class TestRosterCheck : public QObject
{
    Q_OBJECT

private slots:
    // A face is stored in the game's short form; "(NONE)" stands in for an
    // empty list and for a class or skin outside the table.
    void namesAndCaptions()
    {
        QStringList stored;
        for (const QString texture :
            { "MyHeroSkins.hero5Ace", "CommandoSkins.cmdo2Blake", "Pkg.abcde", "cmdo2Blake", "" })
            stored << GameFaceName(texture);
        QCOMPARE(stored,
            (QStringList {
                "MyHeroSkins.Ace", "CommandoSkins.Blake", "Pkg.abcde", "cmdo2Blake", "" }));
        const QList<MISCLASS> classes = SampleCatalogue(2).MISCCLASSES;
        const QStringList none { "(NONE)" };
        QCOMPARE((QList<QStringList> { ClassCaptions(classes), ClassCaptions({ newClassSlot() }),
                     SkinCaptions(classes, 0), SkinCaptions(classes, 3),
                     SkinCaptions(classes, classes.size()), SkinCaptions(classes, -1),
                     FaceCaptions(classes, 0, 1), FaceCaptions(classes, 0, 2),
                     FaceCaptions(classes, 0, 3),
                     { FaceNameAt(classes, 0, 0, 0), FaceNameAt(classes, 0, 99, 0) } }),
            (QList<QStringList> {
                { "Male Commando", "Female Commando", "Boss", "Robot", "Female Warrior", "ROBOT" },
                none, { "Commando", "Desert" }, none, none, none, { "Luthor", "Boris" }, none, none,
                { "CommandoSkins.cmdo2Blake", "" } }));
    }

    // Stored names (class|skin|face|voice) are found in the installed content
    // in any capitals, a face in its short or long form; then what a slot
    // holding them uses that is not installed. Free slots have empty names:
    // an empty stored name must not land on one.
    void storedNames()
    {
        const ModelCatalogue sample = SampleCatalogue();
        QStringList found;
        for (const QString bot :
            { "BotPack.TMale1Bot|CommandoSkins.cmdo|CommandoSkins.Gorn|BotPack.VoiceMaleOne",
                "BotPack.TMale1Bot|CommandoSkins.daco|CommandoSkins.daco2Boris|",
                "botpack.tfemale1bot|FCOMMANDOSKINS.GOTH|fcommandoskins.visse|(NONE)",
                "botpack.tmale1bot|commandoskins.CMDO|CommandoSkins.Blake|BotPack.VoiceMaleOne",
                "BotPack.TMale1Bot|SoldierSkins.blkt|SoldierSkins.Malcom|BotPack.VoiceGone",
                "BotPack.TMale1Bot|CommandoSkins.cmdo|CommandoSkins.Boris|",
                "BotPack.TMale1Bot|FCommandoSkins.goth|FCommandoSkins.Cryss|",
                "MyMods.Gone|CommandoSkins.cmdo|CommandoSkins.cmdo2Gorn|(NONE)", "|||",
                "mymods.robot|||" }) {
            const QStringList names = bot.split('|');
            const qsizetype classIndex = FindClassIndex(sample.MISCCLASSES, names.at(0));
            const qsizetype skinIndex = FindSkinIndex(sample.MISCCLASSES, classIndex, names.at(1));
            found << QString("%1: %2 %3 %4")
                         .arg(bot)
                         .arg(classIndex)
                         .arg(skinIndex)
                         .arg(
                             FindFaceIndex(sample.MISCCLASSES, classIndex, skinIndex, names.at(2)));
            BotRoster roster;
            roster.BotClasses[5] = names.at(0);
            roster.BotSkins[5] = names.at(1);
            roster.BotFaces[5] = names.at(2);
            roster.VoiceType[5] = names.at(3);
            for (const SlotProblem &problem : CheckSlot(roster, 5, sample)) {
                QVERIFY(problem.slot == 5 && problem.value == names.at(int(problem.field)));
                found << "  " + SlotFieldName(problem.field) + ": " + problem.text;
            }
        }
        QCOMPARE(found, testDataLines("roster/stored-names.txt"));
    }

    // The commandos, the boss, an add-on with "female" in its name, an add-on
    // whose description two classes share (each contributes its voices), a
    // class outside the table, a class listed twice (it speaks as its first
    // entry is described), no voices installed.
    void voicesFollowTheModel()
    {
        const ModelCatalogue sample = SampleCatalogue();
        ModelCatalogue twice = sample, silent = sample;
        twice.MISCCLASSES[3].ClassName = "BotPack.TBoss";
        silent.VoiceList = { VoiceEntry(), VoiceEntry() };
        QStringList voices;
        for (const auto &[catalogue, classIndex] :
            { std::pair { &sample, 0 }, { &sample, 1 }, { &sample, 2 }, { &sample, 4 },
                { &sample, 3 }, { &sample, 40 }, { &twice, 3 }, { &silent, 0 } })
            voices << VoiceCaptions(*catalogue, classIndex).join(',').chopped(14);
        QCOMPARE(voices,
            (QStringList { "Male One,Male Two,", "Female One,Female Two,", "Boss Voice,",
                "Female One,Female Two,", "Male One,Male Two,Male One,Male Two,", "", "Boss Voice,",
                "" }));
        QCOMPARE(VoiceCaptions(sample, 0).last(), "(None Choosen)");
    }

    // Every one of the 14 fields goes into the slot and comes back out; a
    // move swaps whole slots, never past either end.
    void slotsCopyAndMoveWhole()
    {
        BotRoster roster;
        SetDefaults(roster);
        const BotRoster before = roster;
        const BotSlot bot { "Zed", 2, "A.Class", "A.Skin", "A.Face", "A.Voice", 5, 35, "0.500000",
            -20, 7, -3, "BotPack.Ripper", 1 };
        bot.toRoster(roster, 3);
        QCOMPARE(BotSlot::fromRoster(roster, 3), bot);
        BotSlot::fromRoster(before, 3).toRoster(roster, 3);
        QCOMPARE(roster, before);
        for (const auto &[slot, offset] : { std::pair { 0, -1 }, { 31, 1 }, { 32, -1 }, { -1, 1 } })
            QVERIFY(!MoveSlot(roster, slot, offset));
        QCOMPARE(roster, before);
        QVERIFY(MoveSlot(roster, 0, 1));
        QCOMPARE(BotSlot::fromRoster(roster, 1), BotSlot::fromRoster(before, 0));
        QCOMPARE(BotSlot::fromRoster(roster, 0), BotSlot::fromRoster(before, 1));
        QVERIFY(MoveSlot(roster, 1, -1));
        QVERIFY(MoveSlot(roster, 31, -1));
        QVERIFY(MoveSlot(roster, 30, 1));
        QCOMPARE(roster, before);
    }
};

QTEST_GUILESS_MAIN(TestRosterCheck)
#include "test_rostercheck.moc"
