#pragma once

#include <QString>

// The game's boss package, System/skeletalcharsfix313.int, declares a plain
// variant of its WarBoss and Xan II classes ("[Fixed]") and one with male
// voices ("[Fixed/Male Voices]"); a ";" in front of a declaration switches it
// off. The mode says which variants are on:
//   0 both, 1 the plain variant only, 2 the male-voices variant only (also
//   when neither is on or the file is absent).

// The package's path inside `gameDir`, found without regard to case.
QString BossPackagePath(const QString &gameDir);
bool BossPackageExists(const QString &gameDir);

// Throws RunError when the file exists but cannot be read.
short ReadBossMode(const QString &gameDir);
// Switches every ";Object" declaration of the file on, then the boss
// variants off that `mode` leaves out; trailing spaces go, everything else
// (encoding, line ends, blank lines) stays. Replaces the file atomically and
// throws RunError, leaving it untouched, when it cannot.
void SetBossMode(short mode, const QString &gameDir);

// The boss variant a declaration line switches, by its description.
enum class BossVariant { None, Plain, MaleVoices };
BossVariant bossVariantOf(const QString &line);

// The first-run dialog's three choices, top to bottom, and the modes.
short BossModeOfChoice(int choice);
int BossChoiceOfMode(short mode);
// What the dialog says about the current mode.
QString BossChoiceText(short mode);
