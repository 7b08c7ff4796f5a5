#pragma once

#include "testfiles.h"

// The boss package's SkeletalCharsFix313.int in `mode`: 0 both models on, 1
// only the plain ones, 2 only the male-voice ones. Its helper declaration,
// switched off, is switched on by any rewrite, so that a rewrite always shows.
inline QByteArray bossPackageText(int mode)
{
    return readTestFile(
        testDataDir() + "startup/SkeletalCharsFix313-mode" + QString::number(mode) + ".int");
}
