#include "rosterchange.h"

#include <utility>

namespace {

constexpr int NameTyping = 1;

// The slot whose name is all that differs between the two rosters, or -1.
int onlyNameChanged(const BotRoster &before, const BotRoster &after)
{
    BotRoster renamed = before;
    int slot = -1;
    for (int i = 0; i < BotSlotCount; ++i) {
        if (before.BotNames[i] == after.BotNames[i])
            continue;
        if (slot >= 0)
            return -1;
        slot = i;
        renamed.BotNames[i] = after.BotNames[i];
    }
    return renamed == after ? slot : -1;
}

} // namespace

RosterChange::RosterChange(
    const BotRoster &before, const BotRoster &after, int slotBefore, int slotAfter, Restore restore)
    : m_before(before)
    , m_after(after)
    , m_slotBefore(slotBefore)
    , m_slotAfter(slotAfter)
    , m_restore(std::move(restore))
    , m_namedSlot(slotBefore == slotAfter ? onlyNameChanged(before, after) : -1)
{
}

void RosterChange::undo()
{
    m_restore(m_before, m_slotBefore);
}

void RosterChange::redo()
{
    if (std::exchange(m_made, false))
        return;
    m_restore(m_after, m_slotAfter);
}

int RosterChange::id() const
{
    return m_namedSlot >= 0 ? NameTyping : -1;
}

bool RosterChange::mergeWith(const QUndoCommand *other)
{
    const auto *next = static_cast<const RosterChange *>(other);
    if (next->m_namedSlot != m_namedSlot)
        return false;
    m_after = next->m_after;
    // Typed and taken back again: nothing is left to undo.
    setObsolete(m_after == m_before);
    return true;
}
