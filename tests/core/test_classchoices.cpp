#include "samplecatalogue.h"

#include "roster/classchoices.h"

#include <QTest>

class TestClassChoices : public QObject
{
    Q_OBJECT

private slots:
    void gameFaceName_data();
    void gameFaceName();
    void emptyTablesShowNone();
    void findsStoredNames_data();
    void findsStoredNames();
    void voicesFollowTheModel_data();
    void voicesFollowTheModel();
};

void TestClassChoices::gameFaceName_data()
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

void TestClassChoices::gameFaceName()
{
    QFETCH(QString, texture);
    QFETCH(QString, stored);
    QCOMPARE(GameFaceName(texture), stored);
}

void TestClassChoices::emptyTablesShowNone()
{
    const QList<MISCLASS> classes = SampleCatalogue().MISCCLASSES;
    QCOMPARE(ClassCaptions({ newClassSlot() }), QStringList { "(NONE)" });
    QCOMPARE(SkinCaptions(classes, 3), QStringList { "(NONE)" });
    QCOMPARE(FaceCaptions(classes, 0, 2), QStringList { "(NONE)" }); // a free skin slot
    QCOMPARE(SkinCaptions(classes, 40), QStringList { "(NONE)" });
}

void TestClassChoices::findsStoredNames_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("skinName");
    QTest::addColumn<QString>("faceName");
    QTest::addColumn<QList<int>>("indexes"); // class, skin, face
    // clang-format off
    QTest::newRow("default roster, short face") << "BotPack.TMale1Bot" << "CommandoSkins.cmdo" << "CommandoSkins.Gorn" << QList { 0, 0, 1 };
    QTest::newRow("long face") << "BotPack.TMale1Bot" << "CommandoSkins.daco" << "CommandoSkins.daco2Boris" << QList { 0, 1, 1 };
    QTest::newRow("any case") << "botpack.tfemale1bot" << "FCOMMANDOSKINS.GOTH" << "fcommandoskins.visse" << QList { 1, 0, 1 };
    QTest::newRow("not installed") << "BotPack.TMale2Bot" << "SoldierSkins.blkt" << "SoldierSkins.Malcom" << QList { 0, 0, 0 };
    QTest::newRow("face of another skin") << "BotPack.TMale1Bot" << "CommandoSkins.cmdo" << "CommandoSkins.Boris" << QList { 0, 0, 0 };
    // Free slots have empty names; an empty stored name must not land on one.
    QTest::newRow("empty names") << "" << "" << "" << QList { 0, 0, 0 };
    QTest::newRow("add-on without skins") << "mymods.robot" << "" << "" << QList { 3, 0, 0 };
    // clang-format on
}

void TestClassChoices::findsStoredNames()
{
    QFETCH(QString, className);
    QFETCH(QString, skinName);
    QFETCH(QString, faceName);
    QFETCH(QList<int>, indexes);

    const QList<MISCLASS> classes = SampleCatalogue().MISCCLASSES;
    const qsizetype classIndex = FindClassIndex(classes, className);
    const qsizetype skinIndex = FindSkinIndex(classes, classIndex, skinName);
    const qsizetype faceIndex = FindFaceIndex(classes, classIndex, skinIndex, faceName);
    QCOMPARE(QList<qsizetype>({ classIndex, skinIndex, faceIndex }),
        QList<qsizetype>(indexes.begin(), indexes.end()));
}

void TestClassChoices::voicesFollowTheModel_data()
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
    // clang-format off
    QTest::newRow("male commando") << sample << 0 << "Male One,Male Two,(None Choosen)";
    QTest::newRow("female commando") << sample << 1 << "Female One,Female Two,(None Choosen)";
    QTest::newRow("boss") << sample << 2 << "Boss Voice,(None Choosen)";
    QTest::newRow("add-on, female in its description") << sample << 4 << "Female One,Female Two,(None Choosen)";
    // Two add-on classes share the description: each contributes its voices.
    QTest::newRow("add-on, male") << sample << 3 << "Male One,Male Two,Male One,Male Two,(None Choosen)";
    QTest::newRow("outside the table") << sample << 40 << "(None Choosen)";
    QTest::newRow("first entry of the class") << twice << 3 << "Boss Voice,(None Choosen)";
    QTest::newRow("no voices installed") << silent << 0 << "(None Choosen)";
    // clang-format on
}

void TestClassChoices::voicesFollowTheModel()
{
    QFETCH(ModelCatalogue, catalogue);
    QFETCH(int, classIndex);
    QFETCH(QString, voices);
    QCOMPARE(VoiceCaptions(catalogue, classIndex).join(u','), voices);
}

QTEST_APPLESS_MAIN(TestClassChoices)
#include "test_classchoices.moc"
