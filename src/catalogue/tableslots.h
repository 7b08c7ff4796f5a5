#pragma once

#include <QList>

// The first free slot of a table that always keeps its last slot free: it
// grows by one whenever the slot about to be examined is the last one. The
// search resumes at `hint` (every slot before it is taken, as tables fill
// from the start and are not emptied) and leaves the found slot there.
template<typename T, typename IsFree>
qsizetype takeFreeSlot(QList<T> &table, qsizetype &hint, IsFree isFree, const T &blank = T())
{
    qsizetype slot = hint;
    if (slot < 0 || slot > table.size() || (slot > 0 && isFree(table.at(slot - 1))))
        slot = 0;
    for (;; ++slot) {
        if (slot >= table.size() - 1)
            table.append(blank);
        if (isFree(table.at(slot)))
            break;
    }
    hint = slot;
    return slot;
}
