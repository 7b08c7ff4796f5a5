#pragma once

#include "roster/botroster.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

// The roster as the command line reads and writes it: one JSON object with
// every field of BotRoster under its own name, the per-slot fields as arrays
// of exactly 32 values.

// A roster JSON of the wrong shape; `problem` says what is wrong with it.
struct RosterJsonError
{
    QString problem;
};

QJsonObject rosterToJson(const BotRoster &roster);
// Throws RosterJsonError for anything but exactly the shape rosterToJson
// writes: a missing or unknown key, an array of the wrong length, a value of
// the wrong type, an integer outside the 16-bit range.
BotRoster rosterFromJson(const QByteArray &json);
