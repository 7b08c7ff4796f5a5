#include "rosterjson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <cmath>
#include <limits>

namespace {

struct TextField
{
    QLatin1StringView key;
    SlotArray<QString> BotRoster::*values;
};

struct NumberField
{
    QLatin1StringView key;
    SlotArray<qint16> BotRoster::*values;
};

using namespace Qt::StringLiterals;

const TextField textFields[] = {
    {"BotNames"_L1, &BotRoster::BotNames},         {"BotClasses"_L1, &BotRoster::BotClasses},
    {"BotSkins"_L1, &BotRoster::BotSkins},         {"BotFaces"_L1, &BotRoster::BotFaces},
    {"VoiceType"_L1, &BotRoster::VoiceType},       {"CombatStyle"_L1, &BotRoster::CombatStyle},
    {"FavoriteWeapon"_L1, &BotRoster::FavoriteWeapon},
};

const NumberField numberFields[] = {
    {"BotTeams"_L1, &BotRoster::BotTeams},     {"BotSkills"_L1, &BotRoster::BotSkills},
    {"BotAccuracy"_L1, &BotRoster::BotAccuracy}, {"Alertness"_L1, &BotRoster::Alertness},
    {"Camping"_L1, &BotRoster::Camping},       {"StrafingAbility"_L1, &BotRoster::StrafingAbility},
    {"BotJumpy"_L1, &BotRoster::BotJumpy},
};

const QLatin1StringView difficultyKey = "Difficulty"_L1;
const QLatin1StringView adjustSkillKey = "bAdjustSkill"_L1;
const QLatin1StringView randomOrderKey = "bRandomOrder"_L1;
const QLatin1StringView descriptionKey = "Description"_L1;

[[noreturn]] void refuse(const QString &problem)
{
    throw RosterJsonError{problem};
}

QSet<QString> knownKeys()
{
    QSet<QString> keys{difficultyKey, adjustSkillKey, randomOrderKey, descriptionKey};
    for (const TextField &field : textFields)
        keys.insert(field.key);
    for (const NumberField &field : numberFields)
        keys.insert(field.key);
    return keys;
}

// `where` names the value in messages: "Difficulty", "BotTeams[4]".
qint16 toInt16(const QJsonValue &value, const QString &where)
{
    const double number = value.toDouble();
    if (!value.isDouble() || std::trunc(number) != number)
        refuse(u"\"%1\" must be an integer"_s.arg(where));
    if (number < std::numeric_limits<qint16>::min() || number > std::numeric_limits<qint16>::max())
        refuse(u"\"%1\" is %2, outside the range -32768 to 32767"_s.arg(where).arg(number, 0, 'f', 0));
    return qint16(number);
}

QJsonArray slotArray(const QJsonObject &object, QLatin1StringView key, const char *kind)
{
    const QJsonValue value = object.value(key);
    if (!value.isArray())
        refuse(u"\"%1\" must be an array of %2 %3"_s.arg(key).arg(BotSlotCount).arg(kind));
    const QJsonArray array = value.toArray();
    if (array.size() != BotSlotCount)
        refuse(u"\"%1\" has %2 values; it must have exactly %3"_s.arg(key)
                   .arg(array.size())
                   .arg(BotSlotCount));
    return array;
}

bool toBool(const QJsonValue &value, QLatin1StringView key)
{
    if (!value.isBool())
        refuse(u"\"%1\" must be true or false"_s.arg(key));
    return value.toBool();
}

void checkKeys(const QJsonObject &object)
{
    const QSet<QString> known = knownKeys();
    for (const QString &key : object.keys()) {
        if (!known.contains(key))
            refuse(u"unknown key \"%1\""_s.arg(key));
    }
    QStringList missing;
    for (const QString &key : known) {
        if (!object.contains(key))
            missing.append(key);
    }
    missing.sort();
    if (!missing.isEmpty())
        refuse(u"missing key \"%1\""_s.arg(missing.join(u"\", \""_s)));
}

} // namespace

QJsonObject rosterToJson(const BotRoster &roster)
{
    QJsonObject object;
    for (const TextField &field : textFields) {
        QJsonArray array;
        for (const QString &text : roster.*field.values)
            array.append(text);
        object.insert(field.key, array);
    }
    for (const NumberField &field : numberFields) {
        QJsonArray array;
        for (qint16 number : roster.*field.values)
            array.append(number);
        object.insert(field.key, array);
    }
    object.insert(difficultyKey, roster.Difficulty);
    object.insert(adjustSkillKey, roster.bAdjustSkill);
    object.insert(randomOrderKey, roster.bRandomOrder);
    object.insert(descriptionKey, roster.Description);
    return object;
}

BotRoster rosterFromJson(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        refuse(u"not valid JSON: %1 at offset %2"_s.arg(error.errorString()).arg(error.offset));
    if (!document.isObject())
        refuse(u"the roster must be a JSON object"_s);
    const QJsonObject object = document.object();
    checkKeys(object);

    BotRoster roster;
    for (const TextField &field : textFields) {
        const QJsonArray array = slotArray(object, field.key, "strings");
        for (int slot = 0; slot < BotSlotCount; ++slot) {
            if (!array.at(slot).isString())
                refuse(u"\"%1[%2]\" must be a string"_s.arg(field.key).arg(slot));
            (roster.*field.values)[slot] = array.at(slot).toString();
        }
    }
    for (const NumberField &field : numberFields) {
        const QJsonArray array = slotArray(object, field.key, "integers");
        for (int slot = 0; slot < BotSlotCount; ++slot)
            (roster.*field.values)[slot] =
                toInt16(array.at(slot), u"%1[%2]"_s.arg(field.key).arg(slot));
    }
    roster.Difficulty = toInt16(object.value(difficultyKey), difficultyKey);
    roster.bAdjustSkill = toBool(object.value(adjustSkillKey), adjustSkillKey);
    roster.bRandomOrder = toBool(object.value(randomOrderKey), randomOrderKey);
    const QJsonValue description = object.value(descriptionKey);
    if (!description.isString())
        refuse(u"\"%1\" must be a string"_s.arg(descriptionKey));
    roster.Description = description.toString();
    return roster;
}
