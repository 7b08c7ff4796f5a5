#pragma once

#include "catalogue/modelcatalogue.h"

// A small installation for the editor's tests: standard models, the boss,
// add-on models and voices of every kind, with the free slots a scan leaves.
//   0 BotPack.TMale1Bot "Male Commando": Commando (Blake, Gorn), Desert (Luthor, Boris)
//   1 BotPack.TFemale1Bot "Female Commando": Goth (Cryss, Visse)
//   2 BotPack.TBoss "Boss": Boss (Xan)
//   3 MyMods.Robot "Robot": no skins
//   4 MyMods.Warrior "Female Warrior": `warriorSkins` skins "Warrior <n>"
//     (WarSkins.w0000, ...), each with the face Ace
//   5 OtherMods.Robot "ROBOT": no skins
// Voices: Male One, Female One, Male Two, Boss Voice, Female Two.
ModelCatalogue SampleCatalogue(int warriorSkins = 3);
