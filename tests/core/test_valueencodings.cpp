#include "configfiles/runerror.h"
#include "roster/valueencodings.h"

#include <QTest>

#include <functional>

namespace {

// The five sliders, so that one table can name the converters to use.
enum Slider { Skill, Accuracy, Alertness, Camping, Strafing };

QString textOf(int slider, qint16 &p, bool full)
{
    const std::function<QString()> texts[] = { [&] { return GetSkillText(p, full); },
        [&] { return GetAccuracyText(p, full); }, [&] { return GetAlertnessText(p, full); },
        [&] { return GetCampingText(p, full); }, [&] { return GetStrafingText(p, full); } };
    return texts[slider]();
}

qint16 positionOf(int slider, const QString &line)
{
    qint16 (*const readers[])(const QString &) = { GetSkillPosition, GetAccuracyPosition,
        GetAlertnessPosition, GetCampingPosition, GetStrafingPosition };
    return readers[slider](line);
}

} // namespace

class TestValueEncodings : public QObject
{
    Q_OBJECT

private slots:
    // The short text for the editor, the full one for the files; accuracy
    // and alertness positions off their step of 5 are snapped toward zero.
    void sliderTexts_data()
    {
        QTest::addColumn<int>("slider");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("shortText");
        QTest::addColumn<QString>("fullText");
        QTest::addColumn<int>("snapped");

        const auto row
            = [](const char *name, Slider f, int p, const char *s, const char *full, int snapped) {
                  QTest::newRow(name) << int(f) << p << s << full << snapped;
              };
        row("skill lowest", Skill, 0, "-3", "-3.000000", 0);
        row("skill highest", Skill, 6, "3", "3.000000", 6);
        row("accuracy 5", Accuracy, 5, "0.05", "0.050000", 5);
        row("accuracy -5", Accuracy, -5, "-0.05", "-0.050000", -5);
        row("accuracy 0", Accuracy, 0, "0.0", "0.000000", 0);
        row("accuracy 100", Accuracy, 100, "1.00", "1.000000", 100);
        row("accuracy -100", Accuracy, -100, "-1.00", "-1.000000", -100);
        row("accuracy 37", Accuracy, 37, "0.35", "0.350000", 35);
        row("accuracy -99", Accuracy, -99, "-0.95", "-0.950000", -95);
        row("accuracy 4", Accuracy, 4, "0.0", "0.000000", 0);
        row("alertness -37", Alertness, -37, "-0.35", "-0.350000", -35);
        row("camping 0", Camping, 0, "0.0", "0.000000", 0);
        row("camping 10", Camping, 10, "1.0", "1.000000", 10);
        row("strafing -10", Strafing, -10, "-1.0", "-1.000000", -10);
        row("strafing -5", Strafing, -5, "-0.5", "-0.500000", -5);
        row("strafing 0", Strafing, 0, "0.0", "0.000000", 0);
        row("strafing 5", Strafing, 5, "0.5", "0.500000", 5);
        row("strafing 10", Strafing, 10, "1.0", "1.000000", 10);
    }

    void sliderTexts()
    {
        QFETCH(int, slider);
        QFETCH(int, position);
        QFETCH(QString, shortText);
        QFETCH(QString, fullText);
        QFETCH(int, snapped);
        qint16 shortPosition = qint16(position), fullPosition = qint16(position);
        QCOMPARE(textOf(slider, shortPosition, false), shortText);
        QCOMPARE(textOf(slider, fullPosition, true), fullText);
        QCOMPARE(fullPosition, qint16(snapped));
    }

    // Lines of the files, read back into positions; the error number of
    // one that cannot be read.
    void linePositions_data()
    {
        QTest::addColumn<int>("slider");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("position");

        const auto row = [](const char *name, Slider f, const char *line, const char *p) {
            QTest::newRow(name) << int(f) << QString(line) << QString(p);
        };
        row("skill -3", Skill, "BotSkills[0]=-3.000000", "0");
        row("skill cut at the dot", Skill, "BotSkills[1]=2.999999", "5");
        row("skill without key", Skill, "1.000000", "4");
        row("accuracy", Accuracy, "BotAccuracy[3]=-0.350000", "-35");
        row("accuracy one", Accuracy, "BotAccuracy[3]=1.000000", "100");
        row("accuracy small", Accuracy, "BotAccuracy[3]=0.050000", "5");
        row("accuracy only four digits", Accuracy, "BotAccuracy[3]=0.359999", "35");
        row("alertness", Alertness, "Alertness[5]=-0.300000", "-30");
        row("camping", Camping, "Camping[2]=0.500000", "5");
        row("camping one", Camping, "Camping[2]=1.000000", "10");
        row("camping drops the sign", Camping, "Camping[2]=-0.500000", "5");
        row("strafing", Strafing, "StrafingAbility[1]=0.500000", "5");
        row("strafing negative", Strafing, "StrafingAbility[1]=-0.500000", "-5");
        row("strafing -1", Strafing, "StrafingAbility[1]=-1.000000", "-10");
        row("value after the first =", Strafing, "Key=0.5=x", "5");
        row("skill without a dot", Skill, "BotSkills[0]=3", "error 13");
        row("skill text", Skill, "BotSkills[0]=high.0", "error 13");
        row("accuracy text", Accuracy, "BotAccuracy[0]=abc", "error 13");
        row("accuracy empty", Accuracy, "BotAccuracy[0]=", "error 13");
        row("camping text", Camping, "Camping[0]=x.5", "error 13");
        row("accuracy too large", Accuracy, "BotAccuracy[0]=9999", "error 6");
        row("skill too large", Skill, "BotSkills[0]=32765.0", "error 6");
        row("skill at the 16-bit limit", Skill, "BotSkills[0]=32764.0", "32767");
        row("skill at the lower limit", Skill, "BotSkills[0]=-32771.0", "-32768");
        row("skill too small", Skill, "BotSkills[0]=-32772.0", "error 6");
    }

    void linePositions()
    {
        QFETCH(int, slider);
        QFETCH(QString, line);
        QFETCH(QString, position);
        try {
            QCOMPARE(QString::number(positionOf(slider, line)), position);
        } catch (const RunError &e) {
            QCOMPARE("error " + QString::number(e.number()), position);
        }
    }

    void fullTextsReadBack_data()
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

    void fullTextsReadBack()
    {
        QFETCH(int, slider);
        QFETCH(int, low);
        QFETCH(int, high);
        QFETCH(int, step);
        for (int position = low; position <= high; position += step) {
            qint16 written = qint16(position);
            QCOMPARE(positionOf(slider, "Key[0]=" + textOf(slider, written, true)), written);
            QCOMPARE(written, qint16(position));
        }
    }

    void lists()
    {
        QCOMPARE(TeamCaptions(), QStringList({ "None", "Red", "Blue", "Green", "Gold" }));
        QList<qint16> teams;
        QList<std::optional<int>> indexes;
        for (const QString &caption : TeamCaptions() + QStringList("red")) {
            teams.append(TeamNumber(caption));
            indexes.append(TeamIndex(teams.last()));
        }
        QCOMPARE(teams, QList<qint16>({ 255, 0, 1, 2, 3, 0 }));
        QCOMPARE(indexes, QList<std::optional<int>>({ 0, 1, 2, 3, 4, 1 }));
        QCOMPARE(TeamIndex(4), std::nullopt);

        QCOMPARE(WeaponCaptions().size(), 15);
        QCOMPARE(WeaponCaptions().at(4), QString("Flak Canon"));
        QCOMPARE(QStringList({ GetWeaponCode(4), GetWeaponCode(9), GetWeaponCode(0),
                     GetWeaponCode(15), GetWeaponCode(-1) }),
            QStringList({ "BotPack.UT_FlakCannon", "BotPack.WarHeadLauncher", "", "", "" }));
        for (int i = 0; i < 15; ++i)
            QCOMPARE(WeaponIndex(GetWeaponCode(i)), std::optional<int>(i));
        // The default roster spells weapons "Botpack.": no entry matches.
        QCOMPARE(WeaponIndex("Botpack.UT_FlakCannon"), std::nullopt);

        QCOMPARE(CombatStyleCaptions(),
            QStringList({ "Aggressive", "Avoidant", "Berzerk", "Cautious", "Normal" }));
        const QStringList styles { "0.500000", "-1.000000", "1.000000", "-0.500000", "0.000000" };
        for (int i = 0; i < styles.size(); ++i) {
            QCOMPARE(GetCombatStyleValue(CombatStyleCaptions().at(i)), styles.at(i));
            QCOMPARE(CombatStyleIndex(styles.at(i)), std::optional<int>(i));
        }
        QCOMPARE(GetCombatStyleValue("normal"), QString());
        QCOMPARE(CombatStyleIndex("0.5"), std::nullopt);

        QCOMPARE(DifficultyCaptions(),
            QStringList({ "Novice", "Average", "Experienced", "Skilled", "Adept", "Masterful",
                "In Human", "Godlike" }));

        // The first entry with the caption wins; one without a class, or
        // none, gives (NONE).
        const QList<VoiceEntry> voices { { "Male One", "BotPack.VoiceMaleOne", VoiceMale },
            { "Silent", "", VoiceMale }, { "Male One", "Other.VoiceMaleOne", VoiceMale } };
        QStringList codes;
        for (const char *caption : { "Male One", "male one", "Silent", "Nobody" })
            codes.append(GetVoiceCode(caption, voices));
        QCOMPARE(codes, QStringList({ "BotPack.VoiceMaleOne", "(NONE)", "(NONE)", "(NONE)" }));
    }
};

QTEST_GUILESS_MAIN(TestValueEncodings)
#include "test_valueencodings.moc"
