#include "modelcatalogue.h"

ModelCatalogue &Catalogue()
{
    static ModelCatalogue catalogue;
    return catalogue;
}

SkinEntry newSkinSlot()
{
    SkinEntry skin;
    skin.Faces.resize(2);
    return skin;
}

MISCLASS newClassSlot()
{
    MISCLASS model;
    model.Skins = { newSkinSlot(), newSkinSlot() };
    return model;
}

void CreateCatalogueTables()
{
    ModelCatalogue &catalogue = Catalogue();
    catalogue.MISCCLASSES = { newClassSlot(), newClassSlot() };
    catalogue.VoiceList.fill(VoiceEntry(), 2);
    catalogue.UnmatchedSkins.fill(UnmatchedSkin(), 2);
    catalogue.ClassFiles.fill(QString(), 2);
    catalogue.SkinFiles.fill(QString(), 2);
    catalogue.VoiceFiles.fill(QString(), 2);
    catalogue.forgetLookups();
}
