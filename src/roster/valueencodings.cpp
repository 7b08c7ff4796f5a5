#include "valueencodings.h"

#include "configfiles/runerror.h"

#include <QLocale>

#include <cmath>
#include <cstdlib>

namespace {

struct CodedCaption
{
    const char *caption;
    const char *code;
};

constexpr CodedCaption weapons[] = {
    { "(No Favorite)", "" },
    { "Chainsaw", "BotPack.Chainsaw" },
    { "Double Enforcer", "BotPack.DoubleEnforcer" },
    { "Enforcer", "BotPack.Enforcer" },
    { "Flak Canon", "BotPack.UT_FlakCannon" },
    { "GES BioRifle", "BotPack.UT_BioRifle" },
    { "Impact Hammer", "BotPack.ImpactHammer" },
    { "Minigun", "BotPack.Minigun2" },
    { "Pulse Gun", "BotPack.PulseGun" },
    { "Redeemer", "BotPack.WarHeadLauncher" },
    { "Ripper", "BotPack.Ripper" },
    { "Rocket Launcher", "BotPack.UT_Eightball" },
    { "Shock Rifle", "BotPack.ShockRifle" },
    { "Sniper Rifle", "BotPack.SniperRifle" },
    { "Translocator", "BotPack.Translocator" },
};

constexpr CodedCaption combatStyles[] = {
    { "Aggressive", "0.500000" },
    { "Avoidant", "-1.000000" },
    { "Berzerk", "1.000000" },
    { "Cautious", "-0.500000" },
    { "Normal", "0.000000" },
};

struct TeamCaption
{
    const char *caption;
    qint16 team;
};

constexpr TeamCaption teams[] = {
    { "None", 255 }, { "Red", 0 }, { "Blue", 1 }, { "Green", 2 }, { "Gold", 3 },
};

template<std::size_t N>
QStringList captionsOf(const CodedCaption (&table)[N])
{
    QStringList captions;
    for (const CodedCaption &row : table)
        captions.append(QString::fromLatin1(row.caption));
    return captions;
}

template<std::size_t N>
std::optional<int> indexOfCode(const CodedCaption (&table)[N], const QString &code)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (code == QLatin1String(table[i].code))
            return int(i);
    }
    return std::nullopt;
}

qint16 checkedPosition(double position, const QString &line)
{
    if (position < -32768 || position > 32767)
        throw RunError(ErrNum::Overflow, line);
    return qint16(position);
}

// The value of a file line: what follows its first "=", or the whole line.
QString valueOf(const QString &line)
{
    const qsizetype equals = line.indexOf(QLatin1Char('='));
    return equals < 0 ? line : line.mid(equals + 1);
}

// Files always write "." as the decimal separator, whatever the locale.
double decimalNumber(const QString &text, const QString &line)
{
    bool ok = false;
    const double number = QLocale::c().toDouble(text.trimmed(), &ok);
    if (!ok || !std::isfinite(number))
        throw RunError(ErrNum::TypeMismatch, line);
    return number;
}

// The leading `digits` characters of a value, scaled to a slider position.
// A leading "-" is not counted among them; it makes the result negative
// when `signed_` is set and is dropped otherwise.
qint16 scaledPosition(const QString &line, int digits, int scale, bool signed_)
{
    QString value = valueOf(line);
    const bool negative = value.startsWith(QLatin1Char('-'));
    if (negative)
        value.remove(0, 1);
    const double magnitude = std::round(decimalNumber(value.left(digits), line) * scale);
    return checkedPosition(negative && signed_ ? -magnitude : magnitude, line);
}

// The file form of a short text: zeros up to 8 characters, 9 with a sign.
QString padWithZeros(QString text)
{
    const qsizetype width = text.startsWith(QLatin1Char('-')) ? 9 : 8;
    while (text.size() < width)
        text += QLatin1Char('0');
    return text;
}

// Two decimals, "0.0" for zero: the hundredths scale of accuracy and
// alertness. Off-step positions are snapped toward zero first.
QString hundredthsText(qint16 &position, bool bFull)
{
    position = qint16(position - position % 5);
    QString text;
    if (position == 100)
        text = QStringLiteral("1.00");
    else if (position == -100)
        text = QStringLiteral("-1.00");
    else if (position == 0)
        text = QStringLiteral("0.0");
    else
        text = QStringLiteral("%1%2")
                   .arg(position < 0 ? QStringLiteral("-0.") : QStringLiteral("0."))
                   .arg(std::abs(position), 2, 10, QLatin1Char('0'));
    return bFull ? padWithZeros(text) : text;
}

} // namespace

QString GetSkillText(qint16 position, bool bFull)
{
    const QString text = QString::number(position - 3);
    return bFull ? text + QStringLiteral(".000000") : text;
}

qint16 GetSkillPosition(const QString &line)
{
    const QString value = valueOf(line);
    const qsizetype dot = value.indexOf(QLatin1Char('.'));
    bool ok = false;
    const int whole = dot < 0 ? 0 : value.left(dot).trimmed().toInt(&ok);
    if (!ok)
        throw RunError(ErrNum::TypeMismatch, line);
    return checkedPosition(double(whole) + 3, line);
}

QString GetAccuracyText(qint16 &position, bool bFull)
{
    return hundredthsText(position, bFull);
}

QString GetAlertnessText(qint16 &position, bool bFull)
{
    return hundredthsText(position, bFull);
}

qint16 GetAccuracyPosition(const QString &line)
{
    return scaledPosition(line, 4, 100, true);
}

qint16 GetAlertnessPosition(const QString &line)
{
    return scaledPosition(line, 4, 100, true);
}

QString GetCampingText(qint16 position, bool bFull)
{
    const QString text = position == 10 ? QStringLiteral("1.0")
                                        : QStringLiteral("0.") + QString::number(position);
    return bFull ? padWithZeros(text) : text;
}

qint16 GetCampingPosition(const QString &line)
{
    return scaledPosition(line, 3, 10, false);
}

QString GetStrafingText(qint16 position, bool bFull)
{
    QString text;
    if (position == -10)
        text = QStringLiteral("-1.0");
    else if (position == 10)
        text = QStringLiteral("1.0");
    else if (position == 0)
        text = QStringLiteral("0.0");
    else if (position > 0)
        text = QStringLiteral("0.") + QString::number(position);
    else
        text = QStringLiteral("-0.") + QString::number(-position);
    return bFull ? text + QStringLiteral("00000") : text;
}

qint16 GetStrafingPosition(const QString &line)
{
    return scaledPosition(line, 3, 10, true);
}

const QStringList &TeamCaptions()
{
    static const QStringList captions = [] {
        QStringList list;
        for (const TeamCaption &row : teams)
            list.append(QString::fromLatin1(row.caption));
        return list;
    }();
    return captions;
}

const QStringList &WeaponCaptions()
{
    static const QStringList captions = captionsOf(weapons);
    return captions;
}

const QStringList &CombatStyleCaptions()
{
    static const QStringList captions = captionsOf(combatStyles);
    return captions;
}

const QStringList &DifficultyCaptions()
{
    static const QStringList captions = {
        QStringLiteral("Novice"),    QStringLiteral("Average"),   QStringLiteral("Experienced"),
        QStringLiteral("Skilled"),   QStringLiteral("Adept"),     QStringLiteral("Masterful"),
        QStringLiteral("In Human"),  QStringLiteral("Godlike"),
    };
    return captions;
}

QString GetCombatStyleValue(const QString &name)
{
    for (const CodedCaption &row : combatStyles) {
        if (name == QLatin1String(row.caption))
            return QString::fromLatin1(row.code);
    }
    return QString();
}

std::optional<int> CombatStyleIndex(const QString &value)
{
    return indexOfCode(combatStyles, value);
}

qint16 TeamNumber(const QString &caption)
{
    for (const TeamCaption &row : teams) {
        if (caption == QLatin1String(row.caption))
            return row.team;
    }
    return 0;
}

std::optional<int> TeamIndex(qint16 team)
{
    for (std::size_t i = 0; i < std::size(teams); ++i) {
        if (teams[i].team == team)
            return int(i);
    }
    return std::nullopt;
}

QString GetWeaponCode(int listNum)
{
    if (listNum < 0 || listNum >= int(std::size(weapons)))
        return QString();
    return QString::fromLatin1(weapons[listNum].code);
}

std::optional<int> WeaponIndex(const QString &weaponCode)
{
    return indexOfCode(weapons, weaponCode);
}

QString GetVoiceCode(const QString &caption, const QList<VoiceEntry> &voices)
{
    for (const VoiceEntry &voice : voices) {
        if (voice.Description == caption)
            return voice.VoiceClass.isEmpty() ? QStringLiteral("(NONE)") : voice.VoiceClass;
    }
    return QStringLiteral("(NONE)");
}
