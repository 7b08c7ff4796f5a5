#pragma once

#include "roster/botroster.h"

#include <QMainWindow>

class QAction;
class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QSlider;

// The main window: edits the roster one bot slot at a time, plus the
// list-wide values, and shows whether the roster is Saved, Modified or
// Loaded. Every edit goes straight into Roster().
//
// The handlers also run when the program itself changes a control. Three
// gates keep such changes from writing into the roster or marking the
// document: the window's visibility (start-up fills it while hidden),
// bRefreshing (the window positions its class, skin, face and voice lists)
// and bLoadingConfig (a configuration is being opened).
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

    // Menus.
    QMenu *mnuFile;
    QAction *mnuFileNew;
    QAction *mnuFileOpen;
    QAction *mnuFileApply;
    QAction *mnuFileOptions;
    QAction *mnuFileSave;
    QAction *mnuFileSaveAs;
    QAction *mnuFileQuitLaunch;
    QAction *mnuFileExit;
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
    void createMenus();
    void layoutControls();
    void connectHandlers();
    void connectSlider(const SkillSlider &skill);
    void connectMenus();

    // Saved becomes Modified; Modified and Loaded stay; nothing while a
    // configuration is being opened.
    void MarkModified();
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
    void mnuFileOptions_Click();
    void mnuFileSave_Click();
    void mnuFileSaveAs_Click();
    void mnuFileQuitLaunch_Click();
    void mnuFileExit_Click();
    void mnuHelpHelp_Click();
    void mnuHelpAbout_Click();
    void hsChange(const SkillSlider &skill);
    void hsScroll(const SkillSlider &skill, int position);

    SkillSlider m_skillAdjust {};
    SkillSlider m_accuracy {};
    SkillSlider m_alertness {};
    SkillSlider m_camping {};
    SkillSlider m_strafing {};
};
