// The main window's Edit menu and what it works on: the overview of all
// bots beside the editor, the undo history of the roster, copying, pasting
// and moving bots, and configurations dropped on the window.

#include "frmBots.h"
#include "openatstart.h"
#include "rosterchange.h"
#include "rosteroverview.h"

#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QShowEvent>
#include <QSlider>
#include <QUndoStack>

namespace {

// The one local configuration file a drag carries, or nothing.
QString draggedConfiguration(const QMimeData *data)
{
    if (!data || !data->hasUrls() || data->urls().size() != 1)
        return {};
    const QUrl url = data->urls().constFirst();
    const QString path = url.isLocalFile() ? url.toLocalFile() : QString();
    return path.endsWith(QLatin1String(".qvn"), Qt::CaseInsensitive) ? path : QString();
}

} // namespace

void frmBots::createOverview()
{
    grdBots = new RosterOverview(this);
    dockOverview = new QDockWidget(QStringLiteral("All Bots"), this);
    dockOverview->setObjectName(QStringLiteral("dockOverview"));
    // Always there: nothing else tells which bots the game will not find.
    dockOverview->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    dockOverview->setWidget(grdBots);
    addDockWidget(Qt::BottomDockWidgetArea, dockOverview);
    grdBots->setContextMenuPolicy(Qt::ActionsContextMenu);

    History = new QUndoStack(this);
    History->setObjectName(QStringLiteral("History"));
    setAcceptDrops(true);
}

void frmBots::createEditMenu()
{
    mnuEdit = menuBar()->addMenu(QStringLiteral("&Edit"));
    mnuEdit->setObjectName(QStringLiteral("mnuEdit"));
    const auto entry
        = [this](const char *name, const QString &caption, const QList<QKeySequence> &keys) {
              QAction *action = mnuEdit->addAction(caption);
              action->setObjectName(QString::fromLatin1(name));
              action->setShortcuts(keys);
              action->setEnabled(false);
              return action;
          };
    mnuEditUndo = entry("mnuEditUndo", QStringLiteral("&Undo"), { QKeySequence::Undo });
    mnuEditRedo = entry("mnuEditRedo", QStringLiteral("&Redo"),
        { QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y) });
    mnuEdit->addSeparator();
    mnuEditCopy = entry("mnuEditCopy", QStringLiteral("&Copy Bot"), { QKeySequence::Copy });
    mnuEditPaste = entry("mnuEditPaste", QStringLiteral("&Paste Bot"), { QKeySequence::Paste });
    mnuEdit->addSeparator();
    mnuEditMoveUp = entry(
        "mnuEditMoveUp", QStringLiteral("Move &Up"), { QKeySequence(Qt::CTRL | Qt::Key_Up) });
    mnuEditMoveDown = entry(
        "mnuEditMoveDown", QStringLiteral("Move &Down"), { QKeySequence(Qt::CTRL | Qt::Key_Down) });
    grdBots->addActions({ mnuEditCopy, mnuEditPaste, mnuEditMoveUp, mnuEditMoveDown });
}

void frmBots::connectEditing()
{
    connect(mnuEditUndo, &QAction::triggered, History, &QUndoStack::undo);
    connect(mnuEditRedo, &QAction::triggered, History, &QUndoStack::redo);
    connect(History, &QUndoStack::canUndoChanged, mnuEditUndo, &QAction::setEnabled);
    connect(History, &QUndoStack::canRedoChanged, mnuEditRedo, &QAction::setEnabled);
    connect(mnuEditCopy, &QAction::triggered, this, &frmBots::mnuEditCopy_Click);
    connect(mnuEditPaste, &QAction::triggered, this, &frmBots::mnuEditPaste_Click);
    connect(mnuEditMoveUp, &QAction::triggered, this, [this] { moveBot(-1); });
    connect(mnuEditMoveDown, &QAction::triggered, this, [this] { moveBot(1); });

    // The overview and the bot list choose the same slot.
    connect(grdBots, &RosterOverview::slotChosen, cmbBot, &QComboBox::setCurrentIndex);
    connect(cmbBot, &QComboBox::currentIndexChanged, this, [this](int slot) {
        grdBots->showSlot(slot);
        updateEditActions();
    });
    txtName->installEventFilter(this);
}

void frmBots::showEvent(QShowEvent *event)
{
    // What start-up put into the roster while the window was hidden is
    // where the history begins.
    if (!event->spontaneous() && History->count() == 0)
        ResetHistory();
    QMainWindow::showEvent(event);
}

// ---- Undo history ----------------------------------------------------------

void frmBots::ResetHistory()
{
    History->clear();
    m_recorded = Roster();
    grdBots->refreshAll();
    grdBots->showSlot(CurrentSlot());
}

void frmBots::recordEdit(int slotBefore, int slotAfter)
{
    if (m_restoring || m_holdingEdits || bLoadingConfig || !isVisible() || Roster() == m_recorded)
        return;
    const BotRoster &roster = Roster();
    for (int slot = 0; slot < BotSlotCount; ++slot) {
        if (!(BotSlot::fromRoster(roster, slot) == BotSlot::fromRoster(m_recorded, slot)))
            grdBots->refreshSlot(slot);
    }
    for (QSlider *slider : { hsSkillAdjust, hsAccuracy, hsAlertness, hsCamping, hsStrafing }) {
        if (slider->isSliderDown())
            return;
    }
    const int shown = CurrentSlot();
    History->push(new RosterChange(m_recorded, roster, slotBefore < 0 ? shown : slotBefore,
        slotAfter < 0 ? shown : slotAfter,
        [this](const BotRoster &restored, int slot) { restoreRoster(restored, slot); }));
    m_recorded = Roster();
}

void frmBots::restoreRoster(const BotRoster &roster, int slot)
{
    {
        const QScopedValueRollback restoring(m_restoring, true);
        Roster() = roster;
        if (slot != CurrentSlot())
            cmbBot->setCurrentIndex(slot);
        showCurrentSlot();
        GetBotConfigSettings();
        // Showing clamps a slider position a hand-edited file put out of
        // range; the history goes on from what the controls hold.
        m_recorded = Roster();
        grdBots->refreshAll();
    }
    if (!bLoadingConfig && IsSaved())
        SavedFunc(false);
}

void frmBots::showCurrentSlot()
{
    const QScopedValueRollback refreshing(bRefreshing, true);
    PositionSlot();
    OtherData(CurrentSlot());
}

// ---- Copy, paste, move -----------------------------------------------------

void frmBots::updateEditActions()
{
    const bool editing = cmbBot->isEnabled() && slotInRange();
    mnuEditCopy->setEnabled(editing);
    mnuEditPaste->setEnabled(editing && m_copiedBot.has_value());
    mnuEditMoveUp->setEnabled(editing && CurrentSlot() > 0);
    mnuEditMoveDown->setEnabled(editing && CurrentSlot() < BotSlotCount - 1);
}

void frmBots::mnuEditCopy_Click()
{
    if (!mnuEditCopy->isEnabled())
        return;
    m_copiedBot = BotSlot::fromRoster(Roster(), CurrentSlot());
    updateEditActions();
}

void frmBots::mnuEditPaste_Click()
{
    if (!mnuEditPaste->isEnabled() || !m_copiedBot)
        return;
    {
        const QScopedValueRollback holding(m_holdingEdits, true);
        m_copiedBot->toRoster(Roster(), CurrentSlot());
        showCurrentSlot();
    }
    MarkModified();
}

// The bot moves and stays selected; undone, it is shown where it was.
void frmBots::moveBot(int offset)
{
    QAction *entry = offset < 0 ? mnuEditMoveUp : mnuEditMoveDown;
    const int from = CurrentSlot();
    if (!entry->isEnabled())
        return;
    {
        const QScopedValueRollback holding(m_holdingEdits, true);
        if (!MoveSlot(Roster(), from, offset))
            return;
        cmbBot->setCurrentIndex(from + offset);
    }
    recordEdit(from, from + offset);
    MarkModified();
}

// ---- Dropped files ---------------------------------------------------------

void frmBots::dragEnterEvent(QDragEnterEvent *event)
{
    if (!draggedConfiguration(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void frmBots::dropEvent(QDropEvent *event)
{
    const QString path = draggedConfiguration(event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    // The file manager waits until the drop returns; the questions the
    // opening may ask come after that.
    QMetaObject::invokeMethod(
        this, [path] { OpenConfigurationFile(path); }, Qt::QueuedConnection);
}
