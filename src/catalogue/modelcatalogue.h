#pragma once

#include <QHash>
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

// Where the parsers resume their searches for a free slot, and the models
// by skin type. During a scan slots are only filled, in order, and never
// emptied, so every slot before a hint is taken: a large scan finds each free
// slot without walking the table from its start. Code that rewrites the
// tables in another way calls ModelCatalogue::forgetLookups().
struct CatalogueLookups
{
    qsizetype freeClass = 0;
    qsizetype freeVoice = 0;
    qsizetype freeUnmatched = 0;
    QList<qsizetype> freeSkin; // per model
    // Lower-case SkinType -> first model index with it, built for
    // `modelsIndexed` classes; stale when that differs from the table's size.
    QHash<QString, qsizetype> modelBySkinType;
    qsizetype modelsIndexed = -1;
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

    CatalogueLookups lookups;
    void forgetLookups() { lookups = {}; }
};

// A class slot as the tables grow it: two free skins of two free faces each.
MISCLASS newClassSlot();
SkinEntry newSkinSlot();

// Starts the tables of a scan: two free slots in each of MISCCLASSES,
// VoiceList, UnmatchedSkins and the three file lists. The patterns and the
// hand-over flags are kept.
void CreateCatalogueTables();

// The catalogue the whole program reads.
ModelCatalogue &Catalogue();
