#pragma once

#include "catalogue/modelcatalogue.h"

#include <QString>
#include <QStringList>

// What the editor's class, skin, face and voice lists hold, and where a
// slot's stored names sit in them. A list position is an index into the
// catalogue table the list was built from.

inline const QString NoneItem = QStringLiteral("(NONE)");
inline const QString NoVoiceItem = QStringLiteral("(None Choosen)");

// The descriptions of the classes in table order, or "(NONE)" alone.
QStringList ClassCaptions(const QList<MISCLASS> &classes);
// The descriptions of a class's skins, or "(NONE)" alone when its first
// slot is free; `classIndex` outside the table counts as a class without skins.
QStringList SkinCaptions(const QList<MISCLASS> &classes, qsizetype classIndex);
QStringList FaceCaptions(const QList<MISCLASS> &classes, qsizetype classIndex, qsizetype skinIndex);
// The voices that suit a class (male, female or boss), "(None Choosen)" last.
QStringList VoiceCaptions(const ModelCatalogue &catalogue, qsizetype classIndex);

// The table index of a stored name, compared without regard to case; 0 when
// nothing matches, so an uninstalled choice shows the list's first entry.
qsizetype FindClassIndex(const QList<MISCLASS> &classes, const QString &className);
qsizetype FindSkinIndex(
    const QList<MISCLASS> &classes, qsizetype classIndex, const QString &skinName);
// A stored face matches in the game's short form as well as in the long one.
qsizetype FindFaceIndex(const QList<MISCLASS> &classes, qsizetype classIndex, qsizetype skinIndex,
    const QString &faceName);

// The game names a face by its package and the face's own name, and cannot
// show one stored as the full texture: MyHeroSkins.hero5Ace is stored as
// MyHeroSkins.Ace. The texture's item name carries a five-character prefix
// (the skin's four letters and a digit); a name too short for it is kept.
QString GameFaceName(const QString &faceTexture);

// The name a choice stores; empty when the index is outside the table.
QString ClassNameAt(const QList<MISCLASS> &classes, qsizetype classIndex);
QString SkinNameAt(const QList<MISCLASS> &classes, qsizetype classIndex, qsizetype skinIndex);
QString FaceNameAt(
    const QList<MISCLASS> &classes, qsizetype classIndex, qsizetype skinIndex, qsizetype faceIndex);

// The description of the first installed voice whose class is `voiceType`
// (without regard to case); empty when none is, "(NONE)" included.
QString VoiceDescription(const QList<VoiceEntry> &voices, const QString &voiceType);
