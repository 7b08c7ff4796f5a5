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
    // The short text for the editor, the full one for the files, which reads
    // back; accuracy and alertness positions off their step of 5 are snapped
    // toward zero.
    void sliderTexts_data()
    {
        QTest::addColumn<int>("slider");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("texts"); // short|full
        QTest::addColumn<int>("snapped");

        const auto row = [](Slider f, int p, const char *texts, int snapped) {
            QTest::addRow("%d at %d", f, p) << int(f) << p << QString(texts) << snapped;
        };
        row(Skill, 0, "-3|-3.000000", 0);
        row(Skill, 6, "3|3.000000", 6);
        row(Accuracy, 5, "0.05|0.050000", 5);
        row(Accuracy, 0, "0.0|0.000000", 0);
        row(Accuracy, 100, "1.00|1.000000", 100);
        row(Accuracy, -100, "-1.00|-1.000000", -100);
        row(Accuracy, 37, "0.35|0.350000", 35);
        row(Accuracy, 4, "0.0|0.000000", 0);
        row(Alertness, -99, "-0.95|-0.950000", -95);
        row(Camping, 0, "0.0|0.000000", 0);
        row(Camping, 5, "0.5|0.500000", 5);
        row(Camping, 10, "1.0|1.000000", 10);
        row(Strafing, -10, "-1.0|-1.000000", -10);
        row(Strafing, -5, "-0.5|-0.500000", -5);
        row(Strafing, 0, "0.0|0.000000", 0);
        row(Strafing, 5, "0.5|0.500000", 5);
        row(Strafing, 10, "1.0|1.000000", 10);
    }

    void sliderTexts()
    {
        QFETCH(int, slider);
        QFETCH(int, position);
        QFETCH(QString, texts);
        QFETCH(int, snapped);
        qint16 shortPosition = qint16(position), fullPosition = qint16(position);
        const QString shortText = textOf(slider, shortPosition, false);
        QCOMPARE(shortText + '|' + textOf(slider, fullPosition, true), texts);
        QCOMPARE(fullPosition, qint16(snapped));
        QCOMPARE(positionOf(slider, "Key[0]=" + texts.section('|', 1)), qint16(snapped));
    }

    // Lines of the files read back into positions; the error number of one
    // that cannot be read.
    void linePositions_data()
    {
        QTest::addColumn<int>("slider");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("position");

        const auto row = [](Slider f, const char *line, const char *p) {
            QTest::newRow(line) << int(f) << QString(line) << QString(p);
        };
        row(Skill, "BotSkills[1]=2.999999", "5");
        row(Skill, "1.000000", "4");
        row(Accuracy, "BotAccuracy[3]=-0.350000", "-35");
        row(Accuracy, "BotAccuracy[3]=0.359999", "35");
        row(Camping, "Camping[2]=-0.500000", "5");
        row(Strafing, "Key=0.5=x", "5");
        row(Skill, "BotSkills[0]=3", "error 13");
        row(Skill, "BotSkills[0]=high.0", "error 13");
        row(Accuracy, "BotAccuracy[0]=abc", "error 13");
        row(Accuracy, "BotAccuracy[0]=9999", "error 6");
        row(Skill, "BotSkills[0]=32765.0", "error 6");
        row(Skill, "BotSkills[0]=32764.0", "32767");
        row(Skill, "BotSkills[0]=-32771.0", "-32768");
        row(Skill, "BotSkills[0]=-32772.0", "error 6");
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

    // The codes behind the editor's lists, both ways; a caption or code
    // without an entry gives the list's fallback.
    void lists()
    {
        QStringList teams;
        for (const QString &caption : TeamCaptions() + QStringList("red"))
            teams << QString("%1>%2").arg(TeamNumber(caption)).arg(*TeamIndex(TeamNumber(caption)));
        QCOMPARE(teams, QStringList({ "255>0", "0>1", "1>2", "2>3", "3>4", "0>1" }));
        QCOMPARE(TeamIndex(4), std::nullopt);

        QCOMPARE(QStringList({ GetWeaponCode(4), GetWeaponCode(9), GetWeaponCode(0),
                     GetWeaponCode(15), GetWeaponCode(-1) }),
            QStringList({ "BotPack.UT_FlakCannon", "BotPack.WarHeadLauncher", "", "", "" }));
        for (int i = 0; i < 15; ++i)
            QCOMPARE(WeaponIndex(GetWeaponCode(i)), std::optional<int>(i));
        // The default roster spells weapons "Botpack.": no entry matches.
        QCOMPARE(WeaponIndex("Botpack.UT_FlakCannon"), std::nullopt);

        const QStringList styles { "0.500000", "-1.000000", "1.000000", "-0.500000", "0.000000" };
        for (int i = 0; i < styles.size(); ++i) {
            QCOMPARE(GetCombatStyleValue(CombatStyleCaptions().at(i)), styles.at(i));
            QCOMPARE(CombatStyleIndex(styles.at(i)), std::optional<int>(i));
        }
        QCOMPARE(GetCombatStyleValue("normal") + CombatStyleCaptions().at(4), QString("Normal"));
        QCOMPARE(CombatStyleIndex("0.5"), std::nullopt);

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
