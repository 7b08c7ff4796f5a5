#pragma once

#include "catalogue/modelcatalogue.h"
#include "roster/botroster.h"

#include <QList>
#include <QString>

// What of a bot the game will not find: a class, skin, face or voice that is
// not installed (content removed since the list was saved, or a typo in a
// hand-edited file), or a skin or face installed for another model or skin.
// The game silently puts a default in its place, so the bot looks or sounds
// other than the list says.

enum class SlotField { Class, Skin, Face, Voice };

struct SlotProblem
{
    int slot;
    SlotField field;
    QString value; // the name the slot holds
    QString text; // for the user, e.g. Skin "SoldierSkins.blkt" is not installed
};

// The problems of one slot, in the order class, skin, face, voice. An empty
// skin, face or voice, and the voice "(NONE)", are the game's defaults, not
// problems.
QList<SlotProblem> CheckSlot(
    const BotRoster &roster, int slot, const ModelCatalogue &catalogue = Catalogue());
// The problems of every slot, slot by slot.
QList<SlotProblem> CheckRoster(
    const BotRoster &roster, const ModelCatalogue &catalogue = Catalogue());

// The texts of `problems`, one per line: a slot's tooltip.
QString ProblemsText(const QList<SlotProblem> &problems);
// "class", "skin", "face" or "voice".
QString SlotFieldName(SlotField field);
