#include "botroster.h"

namespace {

struct DefaultBot
{
    const char *name;
    qint16 team;
    const char *botClass;
    const char *skin;
    const char *face;
    const char *combatStyle;
    qint16 alertness;
    qint16 camping;
    qint16 strafing;
    const char *favoriteWeapon;
    qint16 jumpy;
};

// The game's own practice list. Class names are spelled "BotPack." and
// weapon names "Botpack.", as the game ships them.
constexpr DefaultBot defaultBots[BotSlotCount] = {
    { "Archon", 255, "BotPack.TMale1Bot", "CommandoSkins.cmdo", "CommandoSkins.Blake", "0.000000", 0, 0, 0, "", 0 },
    { "Aryss", 0, "BotPack.TFemale2Bot", "SGirlSkins.fbth", "SGirlSkins.Aryss", "0.000000", 0, 0, 0, "", 0 },
    { "Alarik", 255, "BotPack.TMale2Bot", "SoldierSkins.blkt", "SoldierSkins.Malcom", "0.000000", 0, 0, 0, "", 0 },
    { "Dessloch", 1, "BotPack.TMale1Bot", "CommandoSkins.daco", "CommandoSkins.Luthor", "0.000000", 0, 0, 0, "", 0 },
    { "Cryss", 255, "BotPack.TFemale1Bot", "FCommandoSkins.goth", "FCommandoSkins.Cryss", "0.000000", 0, 0, 0, "", 0 },
    { "Nikita", 2, "BotPack.TFemale1Bot", "FCommandoSkins.goth", "FCommandoSkins.Visse", "0.000000", 0, 0, 0, "", 0 },
    { "Drimacus", 255, "BotPack.TMale2Bot", "SoldierSkins.RawS", "SoldierSkins.Kregore", "0.000000", 0, 0, 0, "", 0 },
    { "Rhea", 3, "BotPack.TFemale2Bot", "SGirlSkins.Venm", "SGirlSkins.Cilia", "0.000000", 0, 0, 0, "", 0 },
    { "Raynor", 255, "BotPack.TMale1Bot", "CommandoSkins.goth", "CommandoSkins.Kragoth", "0.000000", 0, 0, 0, "", 0 },
    { "Kira", 0, "BotPack.TFemale1Bot", "FCommandoSkins.daco", "FCommandoSkins.Tanya", "0.000000", 0, 0, 0, "", 0 },
    { "Karag", 255, "BotPack.TMale2Bot", "SoldierSkins.sldr", "SoldierSkins.Johnson", "0.000000", 0, 0, 0, "", 0 },
    { "Zenith", 1, "BotPack.TMale1Bot", "CommandoSkins.daco", "CommandoSkins.Boris", "0.000000", 0, 0, 0, "", 0 },
    { "Cali", 255, "BotPack.TFemale2Bot", "SGirlSkins.Garf", "SGirlSkins.Vixen", "0.000000", 0, 0, 0, "", 0 },
    { "Alys", 2, "BotPack.TFemale2Bot", "SGirlSkins.army", "SGirlSkins.Sara", "0.000000", 0, 0, 0, "", 0 },
    { "Kosak", 255, "BotPack.TMale2Bot", "SoldierSkins.blkt", "SoldierSkins.Othello", "0.000000", 0, 0, 0, "", 0 },
    { "Illana", 3, "BotPack.TFemale1Bot", "FCommandoSkins.daco", "FCommandoSkins.Kyla", "0.000000", 0, 0, 0, "", 0 },
    { "Barak", 255, "BotPack.TMale1Bot", "CommandoSkins.cmdo", "CommandoSkins.Gorn", "0.000000", 0, 0, 0, "Botpack.UT_FlakCannon", 0 },
    { "Kara", 0, "BotPack.TFemale2Bot", "SGirlSkins.fbth", "SGirlSkins.Annaka", "0.000000", 0, 0, 5, "Botpack.UT_Eightball", 0 },
    { "Tamerlane", 255, "BotPack.TMale2Bot", "SoldierSkins.blkt", "SoldierSkins.Riker", "-0.500000", -30, 10, 0, "Botpack.SniperRifle", 0 },
    { "Arachne", 1, "BotPack.TFemale1Bot", "FCommandoSkins.goth", "FCommandoSkins.Malise", "-0.500000", 0, 0, 0, "Botpack.SniperRifle", 0 },
    { "Liche", 255, "BotPack.TMale1Bot", "CommandoSkins.daco", "CommandoSkins.Ramirez", "-1.000000", 30, 0, 5, "", 0 },
    { "Jared", 2, "BotPack.TFemale1Bot", "FCommandoSkins.goth", "FCommandoSkins.Freylis", "-0.500000", 0, 0, 10, "", 0 },
    { "Ichthys", 255, "BotPack.TMale2Bot", "SoldierSkins.RawS", "SoldierSkins.Arkon", "0.500000", 30, 0, 5, "Botpack.PulseGun", 0 },
    { "Tamara", 3, "BotPack.TFemale2Bot", "SGirlSkins.Venm", "SGirlSkins.Sarena", "1.000000", 0, 0, 5, "", 0 },
    { "Loque", 255, "BotPack.TMale1Bot", "CommandoSkins.goth", "CommandoSkins.Grail", "0.000000", 30, 0, 5, "", 0 },
    { "Athena", 0, "BotPack.TFemale1Bot", "FCommandoSkins.daco", "FCommandoSkins.Mariana", "0.000000", 0, 0, 5, "Botpack.Minigun2", 0 },
    { "Cilia", 255, "BotPack.TMale2Bot", "SoldierSkins.sldr", "SoldierSkins.Rankin", "0.500000", 0, 0, 5, "", 0 },
    { "Sarena", 1, "BotPack.TFemale2Bot", "SGirlSkins.Garf", "SGirlSkins.Isis", "0.000000", 0, 0, 0, "Botpack.ShockRifle", 0 },
    { "Malakai", 255, "BotPack.TMale1Bot", "CommandoSkins.daco", "CommandoSkins.Graves", "0.000000", 0, 5, 0, "Botpack.ShockRifle", 0 },
    { "Visse", 2, "BotPack.TFemale2Bot", "SGirlSkins.army", "SGirlSkins.Lauren", "0.000000", 40, 0, 10, "", 0 },
    { "Necroth", 255, "BotPack.TMale2Bot", "SoldierSkins.blkt", "SoldierSkins.Malcom", "0.500000", 0, 0, 0, "", 1 },
    { "Kragoth", 3, "BotPack.TFemale1Bot", "FCommandoSkins.daco", "FCommandoSkins.Jayce", "0.000000", 0, 0, 0, "", 1 },
};

// Calls `apply` with each per-slot array of the roster and the matching
// field of one bot.
template<typename Roster, typename Slot, typename Apply>
void forEachField(Roster &roster, Slot &bot, Apply apply)
{
    apply(roster.BotNames, bot.BotName);
    apply(roster.BotTeams, bot.BotTeam);
    apply(roster.BotClasses, bot.BotClass);
    apply(roster.BotSkins, bot.BotSkin);
    apply(roster.BotFaces, bot.BotFace);
    apply(roster.VoiceType, bot.VoiceType);
    apply(roster.BotSkills, bot.BotSkill);
    apply(roster.BotAccuracy, bot.BotAccuracy);
    apply(roster.CombatStyle, bot.CombatStyle);
    apply(roster.Alertness, bot.Alertness);
    apply(roster.Camping, bot.Camping);
    apply(roster.StrafingAbility, bot.StrafingAbility);
    apply(roster.FavoriteWeapon, bot.FavoriteWeapon);
    apply(roster.BotJumpy, bot.BotJumpy);
}

} // namespace

BotRoster &Roster()
{
    static BotRoster roster;
    return roster;
}

void SetDefaults(BotRoster &roster)
{
    for (int slot = 0; slot < BotSlotCount; ++slot) {
        const DefaultBot &bot = defaultBots[slot];
        roster.BotNames[slot] = QString::fromLatin1(bot.name);
        roster.BotTeams[slot] = bot.team;
        roster.BotClasses[slot] = QString::fromLatin1(bot.botClass);
        roster.BotSkins[slot] = QString::fromLatin1(bot.skin);
        roster.BotFaces[slot] = QString::fromLatin1(bot.face);
        roster.VoiceType[slot] = QString();
        roster.BotSkills[slot] = 0;
        roster.BotAccuracy[slot] = 0;
        roster.CombatStyle[slot] = QString::fromLatin1(bot.combatStyle);
        roster.Alertness[slot] = bot.alertness;
        roster.Camping[slot] = bot.camping;
        roster.StrafingAbility[slot] = bot.strafing;
        roster.FavoriteWeapon[slot] = QString::fromLatin1(bot.favoriteWeapon);
        roster.BotJumpy[slot] = bot.jumpy;
    }
}

BotSlot BotSlot::fromRoster(const BotRoster &roster, int slot)
{
    BotSlot bot;
    forEachField(roster, bot, [slot](const auto &array, auto &field) { field = array.at(slot); });
    return bot;
}

void BotSlot::toRoster(BotRoster &roster, int slot) const
{
    forEachField(roster, *this, [slot](auto &array, const auto &field) { array.at(slot) = field; });
}

bool MoveSlot(BotRoster &roster, int slot, int offset)
{
    const int other = slot + offset;
    if (slot < 0 || slot >= BotSlotCount || other < 0 || other >= BotSlotCount)
        return false;
    const BotSlot moving = BotSlot::fromRoster(roster, slot);
    BotSlot::fromRoster(roster, other).toRoster(roster, slot);
    moving.toRoster(roster, other);
    return true;
}
