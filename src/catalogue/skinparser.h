#pragma once

#include <QString>

// Files every described skin of the skin file at `path`, with the faces that
// follow it, under the model its skin type leads to, or records the file in
// UnmatchedSkins when none. A file that cannot be taken apart is reported
// through ProcessError; what it stored before stays.
void ParseSkin(const QString &path);

// The texture name of a texture line as a bot stores it: a base skin's
// single closing digit is dropped (MyHeroSkins.hero1 -> MyHeroSkins.hero).
QString GetSkinName(const QString &line);
QString GetSkinDescription(const QString &line);
// The word a texture line's package gives for matching it to a model.
QString GetSkinType(const QString &line);

// The model whose SkinType is `skinType`, compared without regard to case,
// following the patterns from skin type to model (`skinType` becomes the
// model's). -1 when there is none; the file is then recorded as unmatched.
qsizetype LocateSkinType(QString &skinType, const QString &path);

// The first free skin slot of the model; the table grows so that it always
// ends with a free slot.
qsizetype GetBlankSkinPosition(qsizetype modelIndex);
