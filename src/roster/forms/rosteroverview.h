#pragma once

#include "roster/rostercheck.h"

#include <QTableWidget>

#include <optional>

// All 32 bots of the roster at a glance, one row per slot: number, name,
// team (in its colour), class, skin, face, voice, skill and favourite
// weapon, the game's names shown as the catalogue describes them. A slot
// whose class, skin, face or voice the game will not find carries a warning
// symbol and says what is missing in its tooltip: the game silently puts a
// default in its place, so this is where a player learns why a bot looks
// or sounds wrong.
//
// It shows Roster() and Catalogue() as they are when asked to; refreshAll
// takes the catalogue afresh. Choosing a row is reported, not acted on.
class RosterOverview : public QTableWidget
{
    Q_OBJECT

public:
    enum Column { Number, Name, Team, Class, Skin, Face, Voice, Skill, Weapon, ColumnCount };

    explicit RosterOverview(QWidget *parent = nullptr);

    void refreshSlot(int slot);
    void refreshAll();
    // Selects the row of `slot` without reporting it.
    void showSlot(int slot);

    QSize sizeHint() const override;

signals:
    // The user chose the row of `slot` (mouse or keyboard).
    void slotChosen(int slot);

private:
    void currentRowChanged(int row);

    bool m_showing = false;
    // Looking a name up in a large catalogue costs more than a row.
    std::optional<InstalledContent> m_installed;
};
