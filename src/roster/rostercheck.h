#pragma once

#include "catalogue/modelcatalogue.h"
#include "roster/botroster.h"

#include <QHash>
#include <QList>

#include <optional>
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

// What the catalogue holds, indexed by name, so that checking a slot does
// not search every model, skin and face of a large game. It refers to the
// catalogue and serves only as long as the catalogue is not changed.
class InstalledContent
{
public:
    explicit InstalledContent(const ModelCatalogue &catalogue = Catalogue());

    // The problems of one slot, in the order class, skin, face, voice. An
    // empty skin, face or voice, and the voice "(NONE)", are the game's
    // defaults, not problems.
    QList<SlotProblem> check(const BotRoster &roster, int slot) const;

private:
    const QList<const SkinEntry *> &skinsOfPackage(const QString &name) const;
    const SkinEntry *skinAnywhere(const QString &name) const;
    bool faceAnywhere(const QString &name) const;

    const ModelCatalogue &m_catalogue;
    // Lower-case names.
    QHash<QString, const MISCLASS *> m_classes;
    // The skins of every model by their package (the part of the name
    // before the dot), where their faces are too. A bot whose model and skin
    // are installed never needs them, so they are indexed when a bot first
    // does.
    mutable std::optional<QHash<QString, QList<const SkinEntry *>>> m_packages;
};

// InstalledContent(catalogue).check(roster, slot).
QList<SlotProblem> CheckSlot(
    const BotRoster &roster, int slot, const ModelCatalogue &catalogue = Catalogue());
// The problems of every slot, slot by slot.
QList<SlotProblem> CheckRoster(
    const BotRoster &roster, const ModelCatalogue &catalogue = Catalogue());

// The texts of `problems`, one per line: a slot's tooltip.
QString ProblemsText(const QList<SlotProblem> &problems);
// "class", "skin", "face" or "voice".
QString SlotFieldName(SlotField field);
