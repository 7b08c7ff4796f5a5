#include "rosterimport.h"

#include "configfiles/botsection.h"
#include "configfiles/prompt.h"
#include "configfiles/textdocument.h"
#include "roster/valueencodings.h"

#include <QDir>
#include <QHash>
#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace {

// Reads one value into the roster; false when the value cannot be read.
using ValueReader = bool (*)(BotRoster &roster, int slot, const QString &value);

struct ImportedKey
{
    QLatin1StringView key;
    bool perSlot;
    ValueReader read;
};

std::optional<double> decimal(const QString &value)
{
    bool ok = false;
    const double number = QLocale::c().toDouble(value.trimmed(), &ok);
    if (!ok || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::optional<int> wholeNumber(const QString &value)
{
    bool ok = false;
    const int number = value.trimmed().toInt(&ok);
    return ok ? std::optional<int>(number) : std::nullopt;
}

// The words the game takes for a switch.
std::optional<bool> gameBool(const QString &value)
{
    const QString word = value.trimmed();
    const auto isOneOf = [&word](std::initializer_list<const char *> words) {
        return std::any_of(words.begin(), words.end(), [&word](const char *candidate) {
            return word.compare(QLatin1StringView(candidate), Qt::CaseInsensitive) == 0;
        });
    };
    if (isOneOf({ "True", "Yes", "On", "1" }))
        return true;
    if (isOneOf({ "False", "No", "Off", "0" }))
        return false;
    return std::nullopt;
}

// A game number in [low, high] at the nearest multiple of `step`, in the
// form configuration files hold ("0.250000"); "-0.000000" never, since the
// readers would take its sign.
std::optional<QString> snappedText(const QString &value, double low, double high, double step)
{
    const std::optional<double> number = decimal(value);
    if (!number)
        return std::nullopt;
    const double snapped = std::round(std::clamp(*number, low, high) / step) * step;
    return QString::number(snapped == 0 ? 0.0 : snapped, 'f', 6);
}

// The slider position for a game number: snapped to the slider's range and
// steps, then read the way a configuration file's value is.
bool readSlider(qint16 &position, const QString &value, double low, double high, double step,
    qint16 (*reader)(const QString &))
{
    const std::optional<QString> text = snappedText(value, low, high, step);
    if (text)
        position = reader(*text);
    return text.has_value();
}

// The game takes a string in double quotes without them.
QString gameText(const QString &value)
{
    if (value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"'))
        return value.mid(1, value.size() - 2);
    return value;
}

// A class may also be written as an object reference: Class'Package.Name'.
QString gameClassName(const QString &value)
{
    const QString text = gameText(value);
    const QLatin1StringView prefix("Class'");
    if (text.startsWith(prefix, Qt::CaseInsensitive) && text.endsWith(u'\'')
        && text.size() > prefix.size())
        return text.mid(prefix.size(), text.size() - prefix.size() - 1);
    return text;
}

template<SlotArray<QString> BotRoster::*Field, QString (*Convert)(const QString &)>
bool storeText(BotRoster &r, int i, const QString &value)
{
    (r.*Field)[i] = Convert(value);
    return true;
}

bool readTeam(BotRoster &r, int i, const QString &value)
{
    const std::optional<int> team = wholeNumber(value);
    if (!team || *team != qint16(*team) || !TeamIndex(qint16(*team)))
        return false;
    r.BotTeams[i] = qint16(*team);
    return true;
}

bool readJumpy(BotRoster &r, int i, const QString &value)
{
    const std::optional<bool> jumpy = gameBool(value);
    const std::optional<int> number = wholeNumber(value);
    if (!jumpy && !number)
        return false;
    r.BotJumpy[i] = (jumpy ? *jumpy : *number != 0) ? 1 : 0;
    return true;
}

bool readDifficulty(BotRoster &r, int, const QString &value)
{
    const std::optional<int> difficulty = wholeNumber(value);
    if (!difficulty || *difficulty < 0 || *difficulty >= DifficultyCaptions().size())
        return false;
    r.Difficulty = qint16(*difficulty);
    return true;
}

bool readSwitch(bool &target, const QString &value)
{
    const std::optional<bool> on = gameBool(value);
    if (on)
        target = *on;
    return on.has_value();
}

// The combat style list holds five values half a unit apart.
bool readCombatStyle(BotRoster &r, int i, const QString &value)
{
    const std::optional<QString> text = snappedText(value, -1, 1, 0.5);
    if (text)
        r.CombatStyle[i] = *text;
    return text.has_value();
}

// The keys in the order the game writes them.
const std::array<ImportedKey, 17> ImportedKeys { {
    { QLatin1StringView("BotFaces"), true, storeText<&BotRoster::BotFaces, gameText> },
    { QLatin1StringView("bAdjustSkill"), false,
        [](BotRoster &r, int, const QString &v) { return readSwitch(r.bAdjustSkill, v); } },
    { QLatin1StringView("bRandomOrder"), false,
        [](BotRoster &r, int, const QString &v) { return readSwitch(r.bRandomOrder, v); } },
    { QLatin1StringView("Difficulty"), false, readDifficulty },
    { QLatin1StringView("BotNames"), true, storeText<&BotRoster::BotNames, gameText> },
    { QLatin1StringView("BotTeams"), true, readTeam },
    { QLatin1StringView("BotClasses"), true, storeText<&BotRoster::BotClasses, gameClassName> },
    { QLatin1StringView("BotSkins"), true, storeText<&BotRoster::BotSkins, gameText> },
    { QLatin1StringView("VoiceType"), true, storeText<&BotRoster::VoiceType, gameClassName> },
    { QLatin1StringView("BotSkills"), true,
        [](BotRoster &r, int i, const QString &v) {
            return readSlider(r.BotSkills[i], v, -3, 3, 1, GetSkillPosition);
        } },
    { QLatin1StringView("BotAccuracy"), true,
        [](BotRoster &r, int i, const QString &v) {
            return readSlider(r.BotAccuracy[i], v, -1, 1, 0.05, GetAccuracyPosition);
        } },
    { QLatin1StringView("CombatStyle"), true, readCombatStyle },
    { QLatin1StringView("Alertness"), true,
        [](BotRoster &r, int i, const QString &v) {
            return readSlider(r.Alertness[i], v, -1, 1, 0.05, GetAlertnessPosition);
        } },
    { QLatin1StringView("Camping"), true,
        [](BotRoster &r, int i, const QString &v) {
            return readSlider(r.Camping[i], v, 0, 1, 0.1, GetCampingPosition);
        } },
    { QLatin1StringView("StrafingAbility"), true,
        [](BotRoster &r, int i, const QString &v) {
            return readSlider(r.StrafingAbility[i], v, -1, 1, 0.1, GetStrafingPosition);
        } },
    { QLatin1StringView("FavoriteWeapon"), true,
        storeText<&BotRoster::FavoriteWeapon, gameClassName> },
    { QLatin1StringView("BotJumpy"), true, readJumpy },
} };

QString keyName(const ImportedKey &key, int slot)
{
    const QString name(key.key);
    return key.perSlot ? name + u'[' + QString::number(slot) + u']' : name;
}

// The value of each key, by the key in lower case; the game reads the first
// line of a key and takes the key as it stands, blanks included.
QHash<QString, QString> sectionValues(const QStringList &lines)
{
    QHash<QString, QString> values;
    for (const QString &line : lines) {
        const qsizetype equals = line.indexOf(u'=');
        const QString key = line.left(equals).toLower();
        if (equals > 0 && !values.contains(key))
            values.insert(key, line.mid(equals + 1));
    }
    return values;
}

// "BotNames: missing", or the slots when only some are.
QString missingLine(const ImportedKey &key, const QList<int> &missing)
{
    const QString name(key.key);
    if (!key.perSlot || missing.size() == BotSlotCount)
        return name + QStringLiteral(": missing");
    QStringList numbers;
    for (int slot : missing)
        numbers.append(QString::number(slot));
    return name + QStringLiteral(": missing for ")
        + (missing.size() == 1 ? QStringLiteral("slot ") : QStringLiteral("slots "))
        + numbers.join(QStringLiteral(", "));
}

} // namespace

RosterImport ReadBotSection(const QStringList &lines)
{
    const QHash<QString, QString> values = sectionValues(lines);
    RosterImport import;
    SetDefaults(import.roster);
    import.sectionFound = true;
    for (const ImportedKey &key : ImportedKeys) {
        QList<int> missing;
        for (int slot = 0; slot < (key.perSlot ? BotSlotCount : 1); ++slot) {
            const QString name = keyName(key, slot);
            const auto found = values.constFind(name.toLower());
            if (found == values.cend())
                missing.append(slot);
            else if (!key.read(import.roster, slot, *found))
                import.problems.append(name + u'=' + *found + QStringLiteral(": cannot be read"));
        }
        if (!missing.isEmpty())
            import.problems.append(missingLine(key, missing));
    }
    return import;
}

QStringList BotNamesInSection(const QStringList &lines)
{
    const QHash<QString, QString> values = sectionValues(lines);
    QStringList names;
    for (int slot = 0; slot < BotSlotCount; ++slot) {
        const auto found = values.constFind(QStringLiteral("botnames[%1]").arg(slot));
        if (found != values.cend())
            names.append(gameText(*found));
    }
    return names;
}

RosterImport ImportRoster(const QString &userIni, const QDate &date)
{
    const TextDocument document = TextDocument::load(userIni);
    const BotSectionSpan span = FindBotSection(document);
    QStringList lines;
    for (qsizetype i = span.header + 1; i < span.end; ++i)
        lines.append(document.text(i));

    RosterImport import = ReadBotSection(lines);
    if (!span.found) {
        import.sectionFound = false;
        import.problems.clear();
    }
    import.roster.Description = QStringLiteral("Imported from ") + QDir::toNativeSeparators(userIni)
        + QStringLiteral(" on ") + date.toString(Qt::ISODate);
    return import;
}

void ReportImportProblems(const RosterImport &import, const QString &userIni)
{
    const QString title = QStringLiteral("Import from Game");
    const QString file = QDir::toNativeSeparators(userIni);
    if (!import.sectionFound) {
        showMessage(title,
            QStringLiteral("Can't find the ") + BotSectionHeader + QStringLiteral(" section in ")
                + file + QStringLiteral(".  Nothing was imported."),
            MessageButtons::Ok, MessageIcon::Exclamation);
        return;
    }
    if (import.problems.isEmpty())
        return;

    // A section cut short could list every key; the first ones say enough.
    constexpr qsizetype shown = 20;
    QStringList lines = import.problems.mid(0, shown);
    if (import.problems.size() > shown)
        lines.append(QStringLiteral("... and %1 more").arg(import.problems.size() - shown));
    showMessage(title,
        QStringLiteral("Some values of the bot list in ") + file
            + QStringLiteral(" were missing or could not be read; the imported list has the "
                             "default list's values in their place:\r\n\r\n")
            + lines.join(QStringLiteral("\r\n")),
        MessageButtons::Ok, MessageIcon::Information);
}
