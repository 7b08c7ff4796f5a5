#include "roster/botroster.h"
#include "roster/rostercheck.h"
#include "samplecatalogue.h"

#include <QTest>

// What a slot uses that is not installed, and the moves of whole bots
// between slots.
class TestRosterCheck : public QObject
{
    Q_OBJECT

private slots:
    void checkSlot_data()
    {
        QTest::addColumn<QString>("bot"); // class|skin|face|voice
        QTest::addColumn<QStringList>("problems");
        QTest::newRow("installed, any capitals, short face name")
            << "botpack.tmale1bot|commandoskins.CMDO|CommandoSkins.Blake|BotPack.VoiceMaleOne"
            << QStringList();
        QTest::newRow("class gone, its skin installed")
            << "MyMods.Gone|CommandoSkins.cmdo|CommandoSkins.cmdo2Gorn|(NONE)"
            << QStringList { "class: Class \"MyMods.Gone\" is not installed" };
        QTest::newRow("no class") << "|||" << QStringList { "class: No class is set" };
        QTest::newRow("skin, face and voice gone")
            << "BotPack.TMale1Bot|SoldierSkins.blkt|SoldierSkins.Malcom|BotPack.VoiceGone"
            << QStringList { "skin: Skin \"SoldierSkins.blkt\" is not installed",
                   "face: Face \"SoldierSkins.Malcom\" is not installed",
                   "voice: Voice \"BotPack.VoiceGone\" is not installed" };
        QTest::newRow("skin of another model")
            << "BotPack.TMale1Bot|FCommandoSkins.goth|FCommandoSkins.Cryss|"
            << QStringList { "skin: Skin \"FCommandoSkins.goth\" is not a skin of the class "
                             "\"Male Commando\"" };
        QTest::newRow("face of another skin")
            << "BotPack.TMale1Bot|CommandoSkins.cmdo|CommandoSkins.Luthor|"
            << QStringList { "face: Face \"CommandoSkins.Luthor\" is not a face of the skin "
                             "\"Commando\"" };
    }

    void checkSlot()
    {
        QFETCH(QString, bot);
        QFETCH(QStringList, problems);
        const QStringList names = bot.split('|');
        BotRoster roster;
        roster.BotClasses[5] = names.at(0);
        roster.BotSkins[5] = names.at(1);
        roster.BotFaces[5] = names.at(2);
        roster.VoiceType[5] = names.at(3);
        QStringList found;
        for (const SlotProblem &problem : CheckSlot(roster, 5, SampleCatalogue())) {
            QCOMPARE(problem.slot, 5);
            QCOMPARE(problem.value, names.at(int(problem.field)));
            found.append(SlotFieldName(problem.field) + ": " + problem.text);
        }
        QCOMPARE(found, problems);
    }

    // Every one of the 14 fields goes into the slot and comes back out.
    void copyAndPasteCarryEveryField()
    {
        const BotSlot bot { "Zed", 2, "A.Class", "A.Skin", "A.Face", "A.Voice", 5, 35, "0.500000",
            -20, 7, -3, "BotPack.Ripper", 1 };
        BotRoster roster;
        SetDefaults(roster);
        const BotRoster before = roster;
        bot.toRoster(roster, 3);
        QCOMPARE(BotSlot::fromRoster(roster, 3), bot);
        BotSlot::fromRoster(before, 3).toRoster(roster, 3);
        QCOMPARE(roster, before);
    }

    void moveSlot()
    {
        BotRoster roster;
        SetDefaults(roster);
        const BotRoster before = roster;
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
