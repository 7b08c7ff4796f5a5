#include "configfiles/runerror.h"
#include "roster/valueencodings.h"

#include <QTest>

class TestValueEncodings : public QObject
{
    Q_OBJECT

private slots:
    void sliderTexts_data();
    void sliderTexts();
    void offStepPositionsSnapTowardZero_data();
    void offStepPositionsSnapTowardZero();
    void linePositions_data();
    void linePositions();
    void fullTextsReadBack_data();
    void fullTextsReadBack();
    void unreadableLines_data();
    void unreadableLines();
    void lists();
    void voiceCode_data();
    void voiceCode();
};

// The five sliders, so that one table can name the converters to use.
enum Slider { Skill, Accuracy, Alertness, Camping, Strafing };

QString textOf(int slider, qint16 position, bool full)
{
    switch (slider) {
    case Skill: return GetSkillText(position, full);
    case Accuracy: return GetAccuracyText(position, full);
    case Alertness: return GetAlertnessText(position, full);
    case Camping: return GetCampingText(position, full);
    default: return GetStrafingText(position, full);
    }
}

qint16 positionOf(int slider, const QString &line)
{
    switch (slider) {
    case Skill: return GetSkillPosition(line);
    case Accuracy: return GetAccuracyPosition(line);
    case Alertness: return GetAlertnessPosition(line);
    case Camping: return GetCampingPosition(line);
    default: return GetStrafingPosition(line);
    }
}

void TestValueEncodings::sliderTexts_data()
{
    QTest::addColumn<int>("slider");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("shortText");
    QTest::addColumn<QString>("fullText");

    const auto row = [](const char *name, Slider f, int p, const char *s, const char *full) {
        QTest::newRow(name) << int(f) << p << QString(s) << QString(full);
    };
    row("skill lowest", Skill, 0, "-3", "-3.000000");
    row("skill middle", Skill, 3, "0", "0.000000");
    row("skill highest", Skill, 6, "3", "3.000000");
    row("accuracy 5", Accuracy, 5, "0.05", "0.050000");
    row("accuracy -5", Accuracy, -5, "-0.05", "-0.050000");
    row("accuracy 0", Accuracy, 0, "0.0", "0.000000");
    row("accuracy 35", Accuracy, 35, "0.35", "0.350000");
    row("accuracy 100", Accuracy, 100, "1.00", "1.000000");
    row("accuracy -100", Accuracy, -100, "-1.00", "-1.000000");
    row("alertness -30", Alertness, -30, "-0.30", "-0.300000");
    row("camping 0", Camping, 0, "0.0", "0.000000");
    row("camping 5", Camping, 5, "0.5", "0.500000");
    row("camping 10", Camping, 10, "1.0", "1.000000");
    row("strafing -10", Strafing, -10, "-1.0", "-1.000000");
    row("strafing -5", Strafing, -5, "-0.5", "-0.500000");
    row("strafing 0", Strafing, 0, "0.0", "0.000000");
    row("strafing 5", Strafing, 5, "0.5", "0.500000");
    row("strafing 10", Strafing, 10, "1.0", "1.000000");
}

void TestValueEncodings::sliderTexts()
{
    QFETCH(int, slider);
    QFETCH(int, position);
    QFETCH(QString, shortText);
    QFETCH(QString, fullText);
    QCOMPARE(textOf(slider, qint16(position), false), shortText);
    QCOMPARE(textOf(slider, qint16(position), true), fullText);
}

void TestValueEncodings::offStepPositionsSnapTowardZero_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("snapped");
    QTest::addColumn<QString>("fullText");
    QTest::newRow("37") << 37 << 35 << "0.350000";
    QTest::newRow("-37") << -37 << -35 << "-0.350000";
    QTest::newRow("4") << 4 << 0 << "0.000000";
    QTest::newRow("-99") << -99 << -95 << "-0.950000";
    QTest::newRow("on step") << 40 << 40 << "0.400000";
}

void TestValueEncodings::offStepPositionsSnapTowardZero()
{
    QFETCH(int, position);
    QFETCH(int, snapped);
    QFETCH(QString, fullText);
    qint16 accuracyPosition = qint16(position);
    QCOMPARE(GetAccuracyText(accuracyPosition, true), fullText);
    QCOMPARE(accuracyPosition, qint16(snapped));
    qint16 alertnessPosition = qint16(position);
    QCOMPARE(GetAlertnessText(alertnessPosition, true), fullText);
    QCOMPARE(alertnessPosition, qint16(snapped));
}

void TestValueEncodings::linePositions_data()
{
    QTest::addColumn<int>("slider");
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("position");

    const auto row = [](const char *name, Slider f, const char *line, int p) {
        QTest::newRow(name) << int(f) << QString(line) << p;
    };
    row("skill -3", Skill, "BotSkills[0]=-3.000000", 0);
    row("skill cut at the dot", Skill, "BotSkills[1]=2.999999", 5);
    row("skill without key", Skill, "1.000000", 4);
    row("accuracy", Accuracy, "BotAccuracy[3]=-0.350000", -35);
    row("accuracy one", Accuracy, "BotAccuracy[3]=1.000000", 100);
    row("accuracy small", Accuracy, "BotAccuracy[3]=0.050000", 5);
    row("accuracy only four digits", Accuracy, "BotAccuracy[3]=0.359999", 35);
    row("alertness", Alertness, "Alertness[5]=-0.300000", -30);
    row("camping", Camping, "Camping[2]=0.500000", 5);
    row("camping one", Camping, "Camping[2]=1.000000", 10);
    row("camping drops the sign", Camping, "Camping[2]=-0.500000", 5);
    row("strafing", Strafing, "StrafingAbility[1]=0.500000", 5);
    row("strafing negative", Strafing, "StrafingAbility[1]=-0.500000", -5);
    row("strafing -1", Strafing, "StrafingAbility[1]=-1.000000", -10);
    row("value after the first =", Strafing, "Key=0.5=x", 5);
}

void TestValueEncodings::linePositions()
{
    QFETCH(int, slider);
    QFETCH(QString, line);
    QFETCH(int, position);
    QCOMPARE(positionOf(slider, line), qint16(position));
}

void TestValueEncodings::fullTextsReadBack_data()
{
    QTest::addColumn<int>("slider");
    QTest::addColumn<int>("low");
    QTest::addColumn<int>("high");
    QTest::addColumn<int>("step");

    QTest::newRow("skill") << int(Skill) << 0 << 6 << 1;
    QTest::newRow("accuracy") << int(Accuracy) << -100 << 100 << 5;
    QTest::newRow("alertness") << int(Alertness) << -100 << 100 << 5;
    QTest::newRow("camping") << int(Camping) << 0 << 10 << 1;
    QTest::newRow("strafing") << int(Strafing) << -10 << 10 << 1;
}

void TestValueEncodings::fullTextsReadBack()
{
    QFETCH(int, slider);
    QFETCH(int, low);
    QFETCH(int, high);
    QFETCH(int, step);
    for (int position = low; position <= high; position += step) {
        const QString line = "Key[0]=" + textOf(slider, qint16(position), true);
        QCOMPARE(positionOf(slider, line), qint16(position));
    }
}

void TestValueEncodings::unreadableLines_data()
{
    QTest::addColumn<int>("slider");
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("error");

    const auto row = [](const char *name, Slider f, const char *line, int error) {
        QTest::newRow(name) << int(f) << QString(line) << error;
    };
    row("skill without a dot", Skill, "BotSkills[0]=3", 13);
    row("skill text", Skill, "BotSkills[0]=high.0", 13);
    row("accuracy text", Accuracy, "BotAccuracy[0]=abc", 13);
    row("accuracy empty", Accuracy, "BotAccuracy[0]=", 13);
    row("camping text", Camping, "Camping[0]=x.5", 13);
    row("accuracy too large", Accuracy, "BotAccuracy[0]=9999", 6);
}

void TestValueEncodings::unreadableLines()
{
    QFETCH(int, slider);
    QFETCH(QString, line);
    QFETCH(int, error);
    try {
        positionOf(slider, line);
        QFAIL("read without an error");
    } catch (const RunError &e) {
        QCOMPARE(e.number(), error);
    }
}

void TestValueEncodings::lists()
{
    QCOMPARE(TeamCaptions(), QStringList({ "None", "Red", "Blue", "Green", "Gold" }));
    const QList<qint16> teamNumbers { 255, 0, 1, 2, 3 };
    for (int i = 0; i < teamNumbers.size(); ++i) {
        QCOMPARE(TeamNumber(TeamCaptions().at(i)), teamNumbers.at(i));
        QCOMPARE(TeamIndex(teamNumbers.at(i)), std::optional<int>(i));
    }
    QCOMPARE(TeamNumber("red"), qint16(0));
    QCOMPARE(TeamIndex(4), std::nullopt);

    QCOMPARE(WeaponCaptions().size(), 15);
    QCOMPARE(WeaponCaptions().at(4), QString("Flak Canon"));
    QCOMPARE(GetWeaponCode(4), QString("BotPack.UT_FlakCannon"));
    QCOMPARE(GetWeaponCode(9), QString("BotPack.WarHeadLauncher"));
    QCOMPARE(GetWeaponCode(0), QString());
    QCOMPARE(GetWeaponCode(15), QString());
    QCOMPARE(GetWeaponCode(-1), QString());
    for (int i = 0; i < 15; ++i)
        QCOMPARE(WeaponIndex(GetWeaponCode(i)), std::optional<int>(i));
    // The default roster spells weapons "Botpack.": no entry matches.
    QCOMPARE(WeaponIndex("Botpack.UT_FlakCannon"), std::nullopt);

    QCOMPARE(CombatStyleCaptions(),
             QStringList({ "Aggressive", "Avoidant", "Berzerk", "Cautious", "Normal" }));
    const QStringList styleValues { "0.500000", "-1.000000", "1.000000", "-0.500000", "0.000000" };
    for (int i = 0; i < styleValues.size(); ++i) {
        QCOMPARE(GetCombatStyleValue(CombatStyleCaptions().at(i)), styleValues.at(i));
        QCOMPARE(CombatStyleIndex(styleValues.at(i)), std::optional<int>(i));
    }
    QCOMPARE(GetCombatStyleValue("normal"), QString());
    QCOMPARE(CombatStyleIndex("0.5"), std::nullopt);

    QCOMPARE(DifficultyCaptions(),
             QStringList({ "Novice", "Average", "Experienced", "Skilled", "Adept", "Masterful",
                           "In Human", "Godlike" }));
}

void TestValueEncodings::voiceCode_data()
{
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("code");
    QTest::newRow("first match wins") << "Male One" << "BotPack.VoiceMaleOne";
    QTest::newRow("case matters") << "male one" << "(NONE)";
    QTest::newRow("entry without class") << "Silent" << "(NONE)";
    QTest::newRow("unknown") << "Nobody" << "(NONE)";
}

void TestValueEncodings::voiceCode()
{
    QFETCH(QString, caption);
    QFETCH(QString, code);
    const QList<VoiceEntry> voices {
        { "Male One", "BotPack.VoiceMaleOne", VoiceMale },
        { "Silent", "", VoiceMale },
        { "Male One", "Other.VoiceMaleOne", VoiceMale },
    };
    QCOMPARE(GetVoiceCode(caption, voices), code);
}

QTEST_GUILESS_MAIN(TestValueEncodings)
#include "test_valueencodings.moc"
