#include "samplecatalogue.h"

namespace {

SkinEntry skin(const QString &name, const QString &description, QList<FaceEntry> faces)
{
    return { name, description, faces << FaceEntry() };
}

MISCLASS model(const QString &className, const QString &description, QList<SkinEntry> skins = {})
{
    return { className, description, {},
        skins.isEmpty() ? newClassSlot().Skins : skins << newSkinSlot() };
}

} // namespace

ModelCatalogue SampleCatalogue(int warriorSkins)
{
    QList<SkinEntry> warrior;
    for (int i = 0; i < warriorSkins; ++i)
        warrior << skin(QString("WarSkins.w%1").arg(i, 4, 10, QChar('0')),
            QString("Warrior %1").arg(i), { { "WarSkins.warr5Ace", "Ace" } });

    ModelCatalogue catalogue;
    // clang-format off
    catalogue.MISCCLASSES = {
        model("BotPack.TMale1Bot", "Male Commando",
              { skin("CommandoSkins.cmdo", "Commando", { { "CommandoSkins.cmdo2Blake", "Blake" }, { "CommandoSkins.cmdo2Gorn", "Gorn" } }),
                skin("CommandoSkins.daco", "Desert", { { "CommandoSkins.daco2Luthor", "Luthor" }, { "CommandoSkins.daco2Boris", "Boris" } }) }),
        model("BotPack.TFemale1Bot", "Female Commando",
              { skin("FCommandoSkins.goth", "Goth", { { "FCommandoSkins.goth2Cryss", "Cryss" }, { "FCommandoSkins.goth2Visse", "Visse" } }) }),
        model("BotPack.TBoss", "Boss", { skin("BossSkins.boss", "Boss", { { "BossSkins.boss5Xan", "Xan" } }) }),
        model("MyMods.Robot", "Robot"),
        model("MyMods.Warrior", "Female Warrior", warrior),
        model("OtherMods.Robot", "ROBOT"),
        newClassSlot(),
    };
    catalogue.VoiceList = {
        { "Male One", "BotPack.VoiceMaleOne", VoiceMale }, { "Female One", "BotPack.VoiceFemaleOne", VoiceFemale },
        { "Male Two", "BotPack.VoiceMaleTwo", VoiceMale }, { "Boss Voice", "BotPack.VoiceBoss", VoiceBoss },
        { "Female Two", "BotPack.VoiceFemaleTwo", VoiceFemale }, {},
    };
    // clang-format on
    return catalogue;
}
