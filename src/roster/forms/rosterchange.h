#pragma once

#include "roster/botroster.h"

#include <QUndoCommand>

#include <functional>

// One change the user made to the roster in the main window, kept as the
// whole roster before and after it: whatever a change touched (a class with
// the skin, face and voice it brings, two slots of a move, the
// description), undoing it gives back exactly what was there. A roster
// shares its texts with its copies, so a snapshot costs little.
//
// The change has already been made when it is recorded: the first redo,
// which QUndoStack runs on push, does nothing.
class RosterChange : public QUndoCommand
{
public:
    // Puts a roster into the window and shows `slot`.
    using Restore = std::function<void(const BotRoster &roster, int slot)>;

    RosterChange(const BotRoster &before, const BotRoster &after, int slotBefore, int slotAfter,
        Restore restore);

    void undo() override;
    void redo() override;
    // Typing a name is one change, not one per letter.
    int id() const override;
    bool mergeWith(const QUndoCommand *other) override;

private:
    BotRoster m_before;
    BotRoster m_after;
    int m_slotBefore;
    int m_slotAfter;
    Restore m_restore;
    // The slot whose name alone this change edits; -1 for any other change.
    int m_namedSlot = -1;
    bool m_made = true;
};
