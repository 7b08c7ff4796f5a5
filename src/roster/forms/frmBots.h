#pragma once

#include "roster/botroster.h"

#include <QMainWindow>

#include <optional>

class QAction;
class QCheckBox;
class QComboBox;
class QDockWidget;
class QFrame;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QSlider;
class QUndoStack;
class RosterOverview;

// The main window: edits the roster one bot slot at a time, plus the
// list-wide values, and shows whether the roster is Saved, Modified or
// Loaded. Every edit goes straight into Roster().
//
// The handlers also run when the program itself changes a control. Three
// gates keep such changes from writing into the roster or marking the
// document: the window's visibility (start-up fills it while hidden),
// bRefreshing (the window positions its class, skin, face and voice lists)
// and bLoadingConfig (a configuration is being opened).
//
// Every edit the user makes is recorded as one step of the undo history and
// shown in the overview of all bots, by MarkModified (and by the end of a
// slider's drag).
class frmBots : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmBots(QWidget *parent = nullptr);

    // The slot selected in cmbBot, whose fields the controls show.
    int CurrentSlot() const;

    // Shows slot `index` in the name, team, slider, jumpy, combat style and
    // favourite weapon controls.
    void OtherData(int index);
    // Shows the list-wide values of the roster.
    void GetBotConfigSettings();
    // Resets the list-wide controls (difficulty 0, both boxes unchecked).
    void SetBotConfigSettings();

    // Document state: Saved (bSave) or Modified; Loaded after an open.
    void SavedFunc(bool bSave);
    bool IsSaved() const;
    void LoadedFunc();

    void EnableAll(bool eState);
    // Refreshes the five slider value labels (and stores the positions).
    void DoHsChange();

    // Class, skin, face and voice lists, rebuilt from Catalogue(); a list
    // position is an index into the table it was built from.
    void FillClassList();
    void RefreshSkins(int ClassIndex);
    void RefreshFaces(int ClassIndex, int skinIndex);
    void RefreshVoice(int ClassIndex);
    void SetVoice();
    // Selects the current slot's class, skin, face and voice, rebuilding the
    // dependent lists on the way, with the lists' handlers held off.
    void PositionSlot();

    // List conversions that work on this window's controls.
    qint16 GetColorNumber(QString &sInt) const;
    void SetColorCombo(qint16 teamvalue);
    QString GetWeaponCode(int listNum) const;
    void SetWeaponCombo(const QString &weaponcode);
    void SetCombatStyleCombo(const QString &value);
    QString GetVoiceCode(const QString &stmp) const;

    // Writes the options on the way out.
    void quitQVN();

    // The open document's bare file name, "(Un-Named)", or empty before any
    // New or Open; shown in lblCurrentFile and the window title.
    void setCurrentFile(const QString &name);
    // Unloads every window of the program, this one last, which ends it.
    void closeAllForms();
    // Before something drops the roster: when it is not saved, asks whether
    // to save it first (Yes, with the command's `yesLine`), drop it (No) or
    // stay (Cancel). Returns whether to go on.
    bool AskToSave(const QString &yesLine, const QString &noLine);
    // The same with the words of File, Open.
    bool AskToSaveBeforeOpening();

    // Starts the undo history afresh from the roster as it is now, which the
    // overview then shows: after New, Open and Import.
    void ResetHistory();
    // Puts `file` (a configuration just opened or saved) first in File's
    // list of recent configurations.
    void RememberRecentFile(const QString &file);

    // Editor state.
    qint16 iPrevValue = 0;
    QString sPrevValue;
    bool bRefreshing = false;
    bool bLoadingConfig = false;

    // Controls.
    QLabel *lblBotConfigLine;
    QFrame *Line1;
    QLabel *lblBot;
    QComboBox *cmbBot;
    QLabel *lblName;
    QLineEdit *txtName;
    QLabel *lblColor;
    QComboBox *cmbColor;
    QLabel *lblClass;
    QComboBox *cmbClass;
    QLabel *lblSkin;
    QComboBox *cmbSkin;
    QLabel *lblFace;
    QComboBox *cmbFace;
    QLabel *lblVoice;
    QComboBox *cmbVoice;

    QLabel *lblSkillAdjust;
    QSlider *hsSkillAdjust;
    QLabel *lblSANum;
    QLabel *lblSAValues;
    QLabel *lblAccuracy;
    QSlider *hsAccuracy;
    QLabel *lblNumAccuracy;
    QLabel *lblMaxAccuracy;
    QLabel *lblAlertness;
    QSlider *hsAlertness;
    QLabel *lblNumAlertness;
    QLabel *lblMaxAlertness;
    QLabel *lblCamping;
    QSlider *hsCamping;
    QLabel *lblNumCamping;
    QLabel *lblMaxCamping;
    QLabel *lblStrafing;
    QSlider *hsStrafing;
    QLabel *lblNumStrafing;
    QLabel *lblMaxStrafing;

    QLabel *lblCombatStyle;
    QComboBox *cmbCombatStyle;
    QLabel *lblFavWep;
    QComboBox *cmbFavWep;
    QLabel *lblJumpyBehavior;
    QCheckBox *chkJumpy;

    QLabel *lblDifficulty;
    QComboBox *cmbDifficulty;
    QCheckBox *chkAdjustSkill;
    QCheckBox *chkRandomOrder;
    QPushButton *cmdDescr;

    QLabel *lblConfig;
    QLabel *lblCurrentFile;
    QLabel *lblSaved;
    QLabel *imgSaved;
    QLabel *imgNotSaved;
    QLabel *imgPartnerLogo;

    // Every bot at a glance, beside the editor.
    QDockWidget *dockOverview;
    RosterOverview *grdBots;
    QUndoStack *History;

    // Menus.
    QMenu *mnuFile;
    QAction *mnuFileNew;
    QAction *mnuFileOpen;
    QAction *mnuFileApply;
    QAction *mnuFileImport;
    QAction *mnuFileRestore;
    QAction *mnuFileOptions;
    QAction *mnuFileSave;
    QAction *mnuFileSaveAs;
    QAction *mnuFileQuitLaunch;
    QAction *mnuFileExit;
    // The recent configurations, newest first, before Exit.
    QList<QAction *> mnuFileRecent;
    QMenu *mnuEdit;
    QAction *mnuEditUndo;
    QAction *mnuEditRedo;
    QAction *mnuEditCopy;
    QAction *mnuEditPaste;
    QAction *mnuEditMoveUp;
    QAction *mnuEditMoveDown;
    QMenu *mnuHelp;
    QAction *mnuHelpWebsite;
    QAction *mnuHelpSupportSite;
    QAction *mnuHelpHelp;
    QAction *mnuHelpAbout;

signals:
    // The partner logo was double-clicked.
    void partnerLogoActivated();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    // A configuration dropped on the window opens as from a file manager.
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    // One of the five skill sliders: its control, value label, roster field
    // and short display text.
    struct SkillSlider
    {
        QSlider *slider;
        QLabel *valueLabel;
        SlotArray<qint16> BotRoster::*field;
        QString (*text)(qint16 position);
    };

    void createControls();
    void createOverview();
    void createMenus();
    void createEditMenu();
    void layoutControls();
    void connectHandlers();
    void connectSlider(const SkillSlider &skill);
    void connectMenus();
    void connectEditing();

    // Saved becomes Modified; Modified and Loaded stay; nothing while a
    // configuration is being opened. Records the edit first.
    void MarkModified();
    // When the roster differs from the one last recorded, shows the change
    // in the overview and records it as one step of the undo history (a
    // slider's drag once it ends), showing `slotBefore` when it is undone
    // and `slotAfter` when it is redone (both the current slot by default).
    void recordEdit(int slotBefore = -1, int slotAfter = -1);
    // Puts `roster` into the roster and every control, showing `slot`: an
    // undo or a redo, which counts as an edit.
    void restoreRoster(const BotRoster &roster, int slot);
    // Shows the current slot in the slot's controls, lists positioned.
    void showCurrentSlot();
    void updateEditActions();
    void fillRecentMenu(const QStringList &files);
    void openRecentFile(const QString &file);
    // Selects slot 0 and shows it with every list positioned.
    void showFirstSlot();
    // Saves the open document for Quit and Launch; whether it is saved now.
    bool saveForLaunch();
    bool slotInRange() const;
    // Replaces a list's items unless it already holds exactly these.
    static void fillList(QComboBox *list, const QStringList &items);

    void cmbBot_Click();
    void txtName_Change();
    void cmbColor_Click();
    void cmbClass_Click();
    void cmbSkin_Click();
    void cmbFace_Click();
    void cmbVoice_Click();
    void cmbCombatStyle_Click();
    void cmbFavWep_Click();
    void cmbDifficulty_Click();
    void chkJumpy_Click();
    void chkAdjustSkill_Click();
    void chkRandomOrder_Click();
    void cmdDescr_Click();
    void mnuFileNew_Click();
    void mnuFileOpen_Click();
    void mnuFileApply_Click();
    void mnuFileImport_Click();
    void mnuFileRestore_Click();
    void mnuFileOptions_Click();
    void mnuFileSave_Click();
    void mnuFileSaveAs_Click();
    void mnuFileQuitLaunch_Click();
    void mnuFileExit_Click();
    void mnuHelpHelp_Click();
    void mnuHelpAbout_Click();
    void mnuEditCopy_Click();
    void mnuEditPaste_Click();
    void moveBot(int offset);
    void hsChange(const SkillSlider &skill);
    void hsScroll(const SkillSlider &skill, int position);

    SkillSlider m_skillAdjust {};
    SkillSlider m_accuracy {};
    SkillSlider m_alertness {};
    SkillSlider m_camping {};
    SkillSlider m_strafing {};

    // The roster as the undo history last recorded it.
    BotRoster m_recorded;
    // Set while an undo or redo puts a roster back, and while a command
    // made of several edits records itself as one.
    bool m_restoring = false;
    bool m_holdingEdits = false;
    std::optional<BotSlot> m_copiedBot;
    QAction *m_recentSeparator = nullptr;
};
