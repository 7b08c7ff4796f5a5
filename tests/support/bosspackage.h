#pragma once

#include "testfiles.h"

#include <QStringList>

// The boss package's SkeletalCharsFix313.int with its plain and its
// male-voice models switched on or off. A helper declaration, switched off,
// is switched on by any rewrite, so that a rewrite always shows.
inline QByteArray bossPackageText(bool plain, bool male)
{
    const auto line = [](bool on, const QString &name, const QString &description) {
        return QString(on ? "" : ";") + "Object=(Name=SkeletalCharsFix313." + name
            + ",Class=Class,MetaClass=Botpack.Bot,Description=\"" + description + "\")";
    };
    return crlf({ "[Public]", line(plain, "WarBossFixed", "WarBoss [Fixed]"),
        line(plain, "XanFixed", "Xan II [Fixed]"),
        line(male, "WarBossMale", "WarBoss [Fixed/Male Voices]"),
        line(male, "XanMale", "Xan II [Fixed/Male Voices]"), line(false, "Helper", "Helper") });
}
