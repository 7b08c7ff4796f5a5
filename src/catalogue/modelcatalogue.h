#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The installed game content, rebuilt from the game's .int files at every
// start. The editor uses list positions as indexes into these tables, so
// they keep exactly the slots the scan creates, free ones included: an
// empty key field marks a free slot.

struct FaceEntry
{
    QString FaceName;    // full texture name, e.g. MyHeroSkins.hero5Ace
    QString Description;
};

struct SkinEntry
{
    QString SkinName;    // e.g. CommandoSkins.cmdo
    QString Description; // empty marks a free slot
    QList<FaceEntry> Faces;
};

struct MISCLASS
{
    QString ClassName;   // e.g. Botpack.TMale1Bot; empty marks a free slot
    QString Description; // what the editor shows, e.g. Male Commando
    QString SkinType;    // the key skin files are matched on
    QList<SkinEntry> Skins;
};

enum VoiceKind : short { VoiceMale = 0, VoiceFemale = 1, VoiceBoss = 2 };

struct VoiceEntry
{
    QString Description;
    QString VoiceClass;  // empty marks a free slot
    short VoiceKind = 0;
};

struct SkinPattern
{
    QString Model;       // a SkinType of a model
    QStringList SkinTypes;
};

struct UnmatchedSkin
{
    QString FilePath;    // empty marks a free slot
    QString SkinType;
};

struct ModelCatalogue
{
    QList<MISCLASS> MISCCLASSES;
    QList<VoiceEntry> VoiceList;
    QList<SkinPattern> PatternList;
    QList<UnmatchedSkin> UnmatchedSkins;
    QStringList ClassFiles;
    QStringList SkinFiles;
    QStringList VoiceFiles;
    short BossMode = 0;

    // The hand-over between the unmatched report, the pattern editor and the
    // scan's re-parse.
    bool PatternsRequested = false;
    bool ReparseRequested = false;
    QStringList ReparseFiles;
};

// The catalogue the whole program reads.
ModelCatalogue &Catalogue();
