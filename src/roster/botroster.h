#pragma once

#include <QString>

#include <array>

constexpr int BotSlotCount = 32;

template<typename T>
using SlotArray = std::array<T, BotSlotCount>;

// One bot list: the 32 slots of the game's [Botpack.ChallengeBotInfo]
// section, the list-wide values and the description of the configuration.
// The skill-like fields hold the editor's slider positions, not the game's
// numbers (see valueencodings.h for the conversions).
struct BotRoster
{
    SlotArray<QString> BotNames;
    SlotArray<qint16> BotTeams{};      // 0 Red, 1 Blue, 2 Green, 3 Gold, 255 none
    SlotArray<QString> BotClasses;
    SlotArray<QString> BotSkins;
    SlotArray<QString> BotFaces;
    SlotArray<QString> VoiceType;
    SlotArray<qint16> BotSkills{};     // 0..6, game value = position - 3
    SlotArray<qint16> BotAccuracy{};   // -100..100 hundredths
    SlotArray<QString> CombatStyle;    // the game's text, e.g. "0.500000"
    SlotArray<qint16> Alertness{};     // -100..100 hundredths
    SlotArray<qint16> Camping{};       // 0..10 tenths
    SlotArray<qint16> StrafingAbility{}; // -10..10 tenths
    SlotArray<QString> FavoriteWeapon;
    SlotArray<qint16> BotJumpy{};      // 1 jumpy, 0 not

    qint16 Difficulty = 0;
    bool bAdjustSkill = false;
    bool bRandomOrder = false;
    QString Description;

    bool operator==(const BotRoster &) const = default;
};

// The roster the whole program edits, saves and applies.
BotRoster &Roster();

// One bot: the 14 fields of a slot, which travel together when a bot is
// copied, pasted or moved.
struct BotSlot
{
    QString BotName;
    qint16 BotTeam = 255;
    QString BotClass;
    QString BotSkin;
    QString BotFace;
    QString VoiceType;
    qint16 BotSkill = 0;
    qint16 BotAccuracy = 0;
    QString CombatStyle;
    qint16 Alertness = 0;
    qint16 Camping = 0;
    qint16 StrafingAbility = 0;
    QString FavoriteWeapon;
    qint16 BotJumpy = 0;

    static BotSlot fromRoster(const BotRoster &roster, int slot);
    void toRoster(BotRoster &roster, int slot) const;

    bool operator==(const BotSlot &) const = default;
};

// Swaps the bot in `slot` with the one `offset` slots away (-1 up, 1 down).
// Returns false, changing nothing, when that slot is outside the list.
bool MoveSlot(BotRoster &roster, int slot, int offset);

// Overwrites every per-slot field with the game's default bot list; the
// list-wide values and the description are left as they are.
void SetDefaults(BotRoster &roster = Roster());
