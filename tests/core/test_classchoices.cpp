#include "samplecatalogue.h"

#include "roster/classchoices.h"

#include <QTest>

class TestClassChoices : public QObject
{
    Q_OBJECT

private slots:
    void gameFaceName_data()
    {
        QTest::addColumn<QString>("texture");
        QTest::addColumn<QString>("stored");
        // clang-format off
        QTest::newRow("add-on face") << "MyHeroSkins.hero5Ace" << "MyHeroSkins.Ace";
        QTest::newRow("standard face") << "CommandoSkins.cmdo2Blake" << "CommandoSkins.Blake";
        QTest::newRow("no room for a prefix") << "Pkg.abcde" << "Pkg.abcde";
        QTest::newRow("no package") << "cmdo2Blake" << "cmdo2Blake";
        QTest::newRow("free slot") << "" << "";
        // clang-format on
    }

    void gameFaceName()
    {
        QFETCH(QString, texture);
        QFETCH(QString, stored);
        QCOMPARE(GameFaceName(texture), stored);
    }

    void captions()
    {
        const QList<MISCLASS> classes = SampleCatalogue(2).MISCCLASSES;
        QCOMPARE(ClassCaptions(classes),
            (QStringList {
                "Male Commando", "Female Commando", "Boss", "Robot", "Female Warrior", "ROBOT" }));
        QCOMPARE(ClassCaptions({ newClassSlot() }), QStringList { "(NONE)" });
        QCOMPARE(SkinCaptions(classes, 0), (QStringList { "Commando", "Desert" }));
        QCOMPARE(SkinCaptions(classes, 3), QStringList { "(NONE)" });
        QCOMPARE(SkinCaptions(classes, classes.size()), QStringList { "(NONE)" });
        QCOMPARE(SkinCaptions(classes, -1), QStringList { "(NONE)" });
        QCOMPARE(FaceCaptions(classes, 0, 1), (QStringList { "Luthor", "Boris" }));
        QCOMPARE(FaceCaptions(classes, 0, 2), QStringList { "(NONE)" }); // a free skin slot
        QCOMPARE(FaceCaptions(classes, 0, 3), QStringList { "(NONE)" });
    }

    void findsStoredNames_data()
    {
        QTest::addColumn<QString>("stored"); // class|skin|face
        QTest::addColumn<QList<qsizetype>>("indexes");
        using I = QList<qsizetype>;
        QTest::newRow("default roster, short face")
            << "BotPack.TMale1Bot|CommandoSkins.cmdo|CommandoSkins.Gorn" << I { 0, 0, 1 };
        QTest::newRow("long face")
            << "BotPack.TMale1Bot|CommandoSkins.daco|CommandoSkins.daco2Boris" << I { 0, 1, 1 };
        QTest::newRow("any case") << "botpack.tfemale1bot|FCOMMANDOSKINS.GOTH|fcommandoskins.visse"
                                  << I { 1, 0, 1 };
        QTest::newRow("not installed")
            << "BotPack.TMale2Bot|SoldierSkins.blkt|SoldierSkins.Malcom" << I { 0, 0, 0 };
        QTest::newRow("face of another skin")
            << "BotPack.TMale1Bot|CommandoSkins.cmdo|CommandoSkins.Boris" << I { 0, 0, 0 };
        // Free slots have empty names; an empty stored name must not land on one.
        QTest::newRow("empty names") << "||" << I { 0, 0, 0 };
        QTest::newRow("add-on without skins") << "mymods.robot||" << I { 3, 0, 0 };
    }

    void findsStoredNames()
    {
        QFETCH(QString, stored);
        QFETCH(QList<qsizetype>, indexes);
        const QList<MISCLASS> classes = SampleCatalogue().MISCCLASSES;
        const QStringList names = stored.split('|');
        const qsizetype classIndex = FindClassIndex(classes, names.at(0));
        const qsizetype skinIndex = FindSkinIndex(classes, classIndex, names.at(1));
        QCOMPARE((QList<qsizetype> { classIndex, skinIndex,
                     FindFaceIndex(classes, classIndex, skinIndex, names.at(2)) }),
            indexes);
    }

    void voicesFollowTheModel_data()
    {
        QTest::addColumn<ModelCatalogue>("catalogue");
        QTest::addColumn<int>("classIndex");
        QTest::addColumn<QString>("voices");

        const ModelCatalogue sample = SampleCatalogue();
        // A class listed twice speaks as its first entry is described.
        ModelCatalogue twice = sample;
        twice.MISCCLASSES[3].ClassName = "BotPack.TBoss";
        ModelCatalogue silent = sample;
        silent.VoiceList = { VoiceEntry(), VoiceEntry() };
        QTest::newRow("male commando") << sample << 0 << "Male One,Male Two";
        QTest::newRow("female commando") << sample << 1 << "Female One,Female Two";
        QTest::newRow("boss") << sample << 2 << "Boss Voice";
        QTest::newRow("add-on, female in its name") << sample << 4 << "Female One,Female Two";
        // Two add-on classes share the description: each contributes its voices.
        QTest::newRow("add-on, male") << sample << 3 << "Male One,Male Two,Male One,Male Two";
        QTest::newRow("outside the table") << sample << 40 << "";
        QTest::newRow("first entry of the class") << twice << 3 << "Boss Voice";
        QTest::newRow("no voices installed") << silent << 0 << "";
    }

    void voicesFollowTheModel()
    {
        QFETCH(ModelCatalogue, catalogue);
        QFETCH(int, classIndex);
        QFETCH(QString, voices);
        QCOMPARE(VoiceCaptions(catalogue, classIndex).join(','),
            (voices.isEmpty() ? voices : voices + ',') + "(None Choosen)");
    }
};

QTEST_APPLESS_MAIN(TestClassChoices)
#include "test_classchoices.moc"
