#pragma once

#include <QString>

// Adds a VoiceList entry for every voice declared in the voice file at
// `path`, in line order, commented-out declarations included. A line that
// cannot be taken apart is reported through ProcessError and skipped.
void ParseVoice(const QString &path);
