#include "frmBots.h"

#include "editorartwork.h"
#include "rosteroverview.h"

#include "catalogue/modelcatalogue.h"
#include "configfiles/forms/dlgDescr.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "roster/classchoices.h"
#include "roster/valueencodings.h"
#include "startup/options.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDockWidget>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSlider>
#include <QUndoStack>
#include <QVBoxLayout>

#include <tuple>
#include <utility>

namespace {

template<typename Widget, typename... Args>
Widget *named(QWidget *parent, const char *name, Args &&...args)
{
    auto *widget = new Widget(std::forward<Args>(args)..., parent);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

// Lists that follow the catalogue can hold thousands of entries: their width
// must not be measured over every item, and their popups lay items out as
// rows of one height.
void prepareLargeList(QComboBox *list)
{
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(22);
    list->setMaxVisibleItems(20);
    if (auto *view = qobject_cast<QListView *>(list->view()))
        view->setUniformItemSizes(true);
}

QString skillText(qint16 position)
{
    return GetSkillText(position, false);
}

QString accuracyText(qint16 position)
{
    return GetAccuracyText(position, false);
}

QString alertnessText(qint16 position)
{
    return GetAlertnessText(position, false);
}

QString campingText(qint16 position)
{
    return GetCampingText(position, false);
}

QString strafingText(qint16 position)
{
    return GetStrafingText(position, false);
}

} // namespace

frmBots::frmBots(QWidget *parent)
    : QMainWindow(parent)
{
    setObjectName("frmBots");
    setWindowTitle("Quorvane for Unreal Tournament");
    setAttribute(Qt::WA_DeleteOnClose);
    // The editor's own typeface; the system substitutes its nearest match
    // where it is not installed.
    QFont arial = font();
    arial.setFamily(QStringLiteral("Arial"));
    setFont(arial);

    createControls();
    createOverview();
    createMenus();
    layoutControls();
    connectHandlers();

    // As created, nothing can be edited until a roster is started or opened,
    // and the document counts as saved.
    EnableAll(false);
    lblSaved->setEnabled(false);
    setCurrentFile(QString());
    mnuFileSave->setEnabled(false);
    mnuFileSaveAs->setEnabled(false);
    // The program ends through File, Exit, which offers to save first.
    RemoveCloseMenu(this);
}

void frmBots::createControls()
{
    QWidget *central = new QWidget(this);
    setCentralWidget(central);

    lblBotConfigLine = namedLabel(central, "lblBotConfigLine", "Bot Configuration Settings");
    QFont heading = lblBotConfigLine->font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.2);
    lblBotConfigLine->setFont(heading);
    Line1 = named<QFrame>(central, "Line1");
    Line1->setFrameShape(QFrame::HLine);
    Line1->setFrameShadow(QFrame::Sunken);

    lblBot = namedLabel(central, "lblBot", "Bot:");
    cmbBot = named<QComboBox>(central, "cmbBot");
    for (int slot = 0; slot < BotSlotCount; ++slot)
        cmbBot->addItem("Bot " + QString::number(slot));
    lblName = namedLabel(central, "lblName", "Name:");
    txtName = named<QLineEdit>(central, "txtName");
    lblColor = namedLabel(central, "lblColor", "Color:");
    cmbColor = named<QComboBox>(central, "cmbColor");
    cmbColor->addItems(TeamCaptions());
    lblClass = namedLabel(central, "lblClass", "Class (Model):");
    cmbClass = named<QComboBox>(central, "cmbClass");
    lblSkin = namedLabel(central, "lblSkin", "Skin:");
    cmbSkin = named<QComboBox>(central, "cmbSkin");
    lblFace = namedLabel(central, "lblFace", "Face:");
    cmbFace = named<QComboBox>(central, "cmbFace");
    lblVoice = namedLabel(central, "lblVoice", "Voice:");
    cmbVoice = named<QComboBox>(central, "cmbVoice");
    for (QComboBox *list : { cmbClass, cmbSkin, cmbFace, cmbVoice })
        prepareLargeList(list);

    const auto slider = [central](const char *name, int minimum, int maximum, int step) {
        auto *control = named<QSlider>(central, name, Qt::Horizontal);
        control->setRange(minimum, maximum);
        control->setSingleStep(step);
        control->setPageStep(step);
        control->setTickPosition(QSlider::TicksBelow);
        control->setTickInterval((maximum - minimum) / 10 > step ? (maximum - minimum) / 10 : step);
        control->setMinimumWidth(160);
        return control;
    };
    lblSkillAdjust = namedLabel(central, "lblSkillAdjust", "Skill Adjust:");
    hsSkillAdjust = slider("hsSkillAdjust", 0, 6, 1);
    lblSANum = namedLabel(central, "lblSANum", QString());
    lblSAValues = namedLabel(central, "lblSAValues", "-3 to 3  Inc: 1");
    lblAccuracy = namedLabel(central, "lblAccuracy", "Accuracy:");
    hsAccuracy = slider("hsAccuracy", -100, 100, 5);
    lblNumAccuracy = namedLabel(central, "lblNumAccuracy", QString());
    lblMaxAccuracy = namedLabel(central, "lblMaxAccuracy", "-1.00 to 1.00  Inc: 0.05");
    lblAlertness = namedLabel(central, "lblAlertness", "Alertness:");
    hsAlertness = slider("hsAlertness", -100, 100, 5);
    lblNumAlertness = namedLabel(central, "lblNumAlertness", QString());
    lblMaxAlertness = namedLabel(central, "lblMaxAlertness", "-1.00 to 1.00  Inc: 0.05");
    lblCamping = namedLabel(central, "lblCamping", "Camping:");
    hsCamping = slider("hsCamping", 0, 10, 1);
    lblNumCamping = namedLabel(central, "lblNumCamping", QString());
    lblMaxCamping = namedLabel(central, "lblMaxCamping", "0.0 to 1.0  Inc: 0.1");
    lblStrafing = namedLabel(central, "lblStrafing", "Strafing:");
    hsStrafing = slider("hsStrafing", -10, 10, 1);
    lblNumStrafing = namedLabel(central, "lblNumStrafing", QString());
    lblMaxStrafing = namedLabel(central, "lblMaxStrafing", "-1.0 to 1.0  Inc: 0.1");

    m_skillAdjust = { hsSkillAdjust, lblSANum, &BotRoster::BotSkills, skillText };
    m_accuracy = { hsAccuracy, lblNumAccuracy, &BotRoster::BotAccuracy, accuracyText };
    m_alertness = { hsAlertness, lblNumAlertness, &BotRoster::Alertness, alertnessText };
    m_camping = { hsCamping, lblNumCamping, &BotRoster::Camping, campingText };
    m_strafing = { hsStrafing, lblNumStrafing, &BotRoster::StrafingAbility, strafingText };
    // The value labels keep their width whatever they show.
    const int valueWidth = fontMetrics().horizontalAdvance("-0.000");
    for (QLabel *value :
        { lblSANum, lblNumAccuracy, lblNumAlertness, lblNumCamping, lblNumStrafing }) {
        value->setMinimumWidth(valueWidth);
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }

    lblCombatStyle = namedLabel(central, "lblCombatStyle", "Combat Style:");
    cmbCombatStyle = named<QComboBox>(central, "cmbCombatStyle");
    cmbCombatStyle->addItems(CombatStyleCaptions());
    lblFavWep = namedLabel(central, "lblFavWep", "Favorite Weapon:");
    cmbFavWep = named<QComboBox>(central, "cmbFavWep");
    cmbFavWep->addItems(WeaponCaptions());
    lblJumpyBehavior = namedLabel(central, "lblJumpyBehavior", "Jumpy Behavior:");
    chkJumpy = named<QCheckBox>(central, "chkJumpy");

    lblDifficulty = namedLabel(central, "lblDifficulty", "Difficulty:");
    cmbDifficulty = named<QComboBox>(central, "cmbDifficulty");
    cmbDifficulty->addItems(DifficultyCaptions());
    chkAdjustSkill = named<QCheckBox>(central, "chkAdjustSkill", "Adjust Skill");
    chkRandomOrder = named<QCheckBox>(central, "chkRandomOrder", "Random Order");
    cmdDescr = named<QPushButton>(central, "cmdDescr", "Enter Descr");

    lblConfig = namedLabel(this, "lblConfig", "File Currently Open:");
    lblCurrentFile = namedLabel(this, "lblCurrentFile", QString());
    lblSaved = namedLabel(this, "lblSaved", "Saved");
    const qreal ratio = devicePixelRatioF();
    imgSaved = namedLabel(this, "imgSaved", QString());
    imgSaved->setPixmap(SavedSymbol(ratio));
    imgNotSaved = namedLabel(this, "imgNotSaved", QString());
    imgNotSaved->setPixmap(NotSavedSymbol(ratio));
    imgPartnerLogo = namedLabel(central, "imgPartnerLogo", QString());
    imgPartnerLogo->setPixmap(PartnerLogo(ratio));
    imgPartnerLogo->setCursor(Qt::PointingHandCursor);
    imgPartnerLogo->installEventFilter(this);
}

void frmBots::createMenus()
{
    const auto entry = [this](QMenu *menu, const char *name, const QString &caption) {
        QAction *action = menu->addAction(caption);
        action->setObjectName(QString::fromLatin1(name));
        return action;
    };

    mnuFile = menuBar()->addMenu("&File");
    mnuFile->setObjectName("mnuFile");
    mnuFileNew = entry(mnuFile, "mnuFileNew", "&New");
    mnuFile->addSeparator();
    mnuFileOpen = entry(mnuFile, "mnuFileOpen", "&Open");
    mnuFile->addSeparator();
    mnuFileApply = entry(mnuFile, "mnuFileApply", "Apply Config");
    mnuFileImport = entry(mnuFile, "mnuFileImport", "&Import from Game...");
    mnuFileRestore = entry(mnuFile, "mnuFileRestore", "&Restore Backup...");
    mnuFile->addSeparator();
    mnuFileOptions = entry(mnuFile, "mnuFileOptions", "Options");
    mnuFile->addSeparator();
    mnuFileSave = entry(mnuFile, "mnuFileSave", "&Save");
    mnuFileSaveAs = entry(mnuFile, "mnuFileSaveAs", "Save As");
    mnuFile->addSeparator();
    mnuFileQuitLaunch = entry(mnuFile, "mnuFileQuitLaunch", "&Quit and Launch UT w/Current Config");
    mnuFile->addSeparator();
    mnuFileExit = entry(mnuFile, "mnuFileExit", "E&xit");
    // The recent configurations go between these two.
    m_recentSeparator = mnuFile->insertSeparator(mnuFileExit);
    mnuFile->setToolTipsVisible(true);

    createEditMenu();

    mnuHelp = menuBar()->addMenu("&Help");
    mnuHelp->setObjectName("mnuHelp");
    mnuHelpWebsite = entry(mnuHelp, "mnuHelpWebsite", "Website");
    mnuHelpSupportSite = entry(mnuHelp, "mnuHelpSupportSite", "Support Site");
    mnuHelpHelp = entry(mnuHelp, "mnuHelpHelp", "&Help");
    mnuHelp->addSeparator();
    mnuHelpAbout = entry(mnuHelp, "mnuHelpAbout", "About...");
}

void frmBots::layoutControls()
{
    auto *header = new QHBoxLayout;
    header->addWidget(lblBotConfigLine);
    header->addStretch(1);
    header->addWidget(imgPartnerLogo);

    // One column of captions for the whole window: who the bot is beside
    // them on the left, then the list-wide values and the open document.
    auto *fields = new QGridLayout;
    int row = 0;
    for (auto [caption, field] : std::initializer_list<std::pair<QLabel *, QWidget *>> {
             { lblBot, cmbBot }, { lblName, txtName }, { lblColor, cmbColor },
             { lblClass, cmbClass }, { lblSkin, cmbSkin }, { lblFace, cmbFace },
             { lblVoice, cmbVoice }, { lblCombatStyle, cmbCombatStyle }, { lblFavWep, cmbFavWep },
             { lblJumpyBehavior, chkJumpy } }) {
        caption->setBuddy(field);
        fields->addWidget(caption, row, 0, Qt::AlignRight | Qt::AlignVCenter);
        fields->addWidget(field, row, 1);
        ++row;
    }
    const int slotRows = row;

    // How it plays, on the right: slider, value and range per skill.
    auto *skills = new QGridLayout;
    row = 0;
    for (auto [caption, slider, value, range] :
        std::initializer_list<std::tuple<QLabel *, QSlider *, QLabel *, QLabel *>> {
            { lblSkillAdjust, hsSkillAdjust, lblSANum, lblSAValues },
            { lblAccuracy, hsAccuracy, lblNumAccuracy, lblMaxAccuracy },
            { lblAlertness, hsAlertness, lblNumAlertness, lblMaxAlertness },
            { lblCamping, hsCamping, lblNumCamping, lblMaxCamping },
            { lblStrafing, hsStrafing, lblNumStrafing, lblMaxStrafing } }) {
        caption->setBuddy(slider);
        skills->addWidget(caption, row, 0, Qt::AlignRight | Qt::AlignVCenter);
        skills->addWidget(slider, row, 1);
        skills->addWidget(value, row, 2);
        range->setIndent(12);
        skills->addWidget(range, row, 3);
        ++row;
    }
    skills->setColumnStretch(1, 1);
    skills->setColumnMinimumWidth(
        3, fontMetrics().horizontalAdvance("-1.00 to 1.00  Inc: 0.05") + 12);
    skills->setRowStretch(row, 1);
    fields->addLayout(skills, 0, 3, slotRows, 1);
    fields->setColumnMinimumWidth(2, 24);
    fields->setColumnStretch(1, 1);
    fields->setColumnStretch(3, 1);
    fields->setRowMinimumHeight(slotRows, 8);

    // The list-wide values.
    auto *listWide = new QHBoxLayout;
    lblDifficulty->setBuddy(cmbDifficulty);
    listWide->addWidget(cmbDifficulty);
    listWide->addSpacing(16);
    listWide->addWidget(chkAdjustSkill);
    listWide->addWidget(chkRandomOrder);
    listWide->addStretch(1);
    listWide->addWidget(cmdDescr);
    fields->addWidget(lblDifficulty, slotRows + 1, 0, Qt::AlignRight | Qt::AlignVCenter);
    fields->addLayout(listWide, slotRows + 1, 1, 1, 3);

    // The open document and its state; both pictures share one spot, the
    // saved one on top while both are shown.
    auto *stateSymbol = new QGridLayout;
    stateSymbol->addWidget(imgNotSaved, 0, 0, Qt::AlignCenter);
    stateSymbol->addWidget(imgSaved, 0, 0, Qt::AlignCenter);
    auto *document = new QHBoxLayout;
    document->addWidget(lblCurrentFile, 1);
    document->addLayout(stateSymbol);
    document->addWidget(lblSaved);
    fields->addWidget(lblConfig, slotRows + 2, 0, Qt::AlignRight | Qt::AlignVCenter);
    fields->addLayout(document, slotRows + 2, 1, 1, 3);

    // A larger window gives the fields no more room than they need; the
    // space goes below them, so that nothing drifts away from its group.
    auto *root = new QVBoxLayout(centralWidget());
    root->addLayout(header);
    root->addWidget(Line1);
    root->addLayout(fields);
    root->addStretch(1);
}

void frmBots::connectHandlers()
{
    connect(cmbBot, &QComboBox::currentIndexChanged, this, &frmBots::cmbBot_Click);
    connect(txtName, &QLineEdit::textChanged, this, &frmBots::txtName_Change);
    connect(cmbColor, &QComboBox::currentIndexChanged, this, &frmBots::cmbColor_Click);
    connect(cmbClass, &QComboBox::currentIndexChanged, this, &frmBots::cmbClass_Click);
    connect(cmbSkin, &QComboBox::currentIndexChanged, this, &frmBots::cmbSkin_Click);
    connect(cmbFace, &QComboBox::currentIndexChanged, this, &frmBots::cmbFace_Click);
    connect(cmbVoice, &QComboBox::currentIndexChanged, this, &frmBots::cmbVoice_Click);
    connect(cmbCombatStyle, &QComboBox::currentIndexChanged, this, &frmBots::cmbCombatStyle_Click);
    connect(cmbFavWep, &QComboBox::currentIndexChanged, this, &frmBots::cmbFavWep_Click);
    connect(cmbDifficulty, &QComboBox::currentIndexChanged, this, &frmBots::cmbDifficulty_Click);
    connect(chkJumpy, &QCheckBox::toggled, this, &frmBots::chkJumpy_Click);
    connect(chkAdjustSkill, &QCheckBox::toggled, this, &frmBots::chkAdjustSkill_Click);
    connect(chkRandomOrder, &QCheckBox::toggled, this, &frmBots::chkRandomOrder_Click);
    connect(cmdDescr, &QPushButton::clicked, this, &frmBots::cmdDescr_Click);
    for (const SkillSlider *skill :
        { &m_skillAdjust, &m_accuracy, &m_alertness, &m_camping, &m_strafing })
        connectSlider(*skill);
    connectMenus();
    connectEditing();
}

// A change (arrows, track, the program, the end of a drag) marks a saved
// document only; a drag marks a loaded one too.
void frmBots::connectSlider(const SkillSlider &skill)
{
    connect(skill.slider, &QSlider::valueChanged, this, [this, &skill] { hsChange(skill); });
    connect(skill.slider, &QSlider::sliderMoved, this,
        [this, &skill](int position) { hsScroll(skill, position); });
    // A drag is one step of the undo history, recorded when it ends.
    connect(skill.slider, &QSlider::sliderReleased, this, [this] { recordEdit(); });
}

int frmBots::CurrentSlot() const
{
    return cmbBot->currentIndex();
}

bool frmBots::slotInRange() const
{
    return CurrentSlot() >= 0 && CurrentSlot() < BotSlotCount;
}

void frmBots::MarkModified()
{
    recordEdit();
    if (!bLoadingConfig && IsSaved())
        SavedFunc(false);
}

// ---- Slot display ----------------------------------------------------------

void frmBots::OtherData(int index)
{
    if (index < 0 || index >= BotSlotCount)
        return;
    const BotRoster &roster = Roster();
    txtName->setText(roster.BotNames[index]);
    SetColorCombo(roster.BotTeams[index]);
    hsSkillAdjust->setValue(roster.BotSkills[index]);
    hsAccuracy->setValue(roster.BotAccuracy[index]);
    hsAlertness->setValue(roster.Alertness[index]);
    hsCamping->setValue(roster.Camping[index]);
    hsStrafing->setValue(roster.StrafingAbility[index]);
    DoHsChange();
    chkJumpy->setChecked(roster.BotJumpy[index] == 1);
    SetCombatStyleCombo(roster.CombatStyle[index]);
    SetWeaponCombo(roster.FavoriteWeapon[index]);
}

void frmBots::GetBotConfigSettings()
{
    const BotRoster &roster = Roster();
    if (roster.Difficulty >= 0 && roster.Difficulty < cmbDifficulty->count())
        cmbDifficulty->setCurrentIndex(roster.Difficulty);
    chkAdjustSkill->setChecked(roster.bAdjustSkill);
    chkRandomOrder->setChecked(roster.bRandomOrder);
}

void frmBots::SetBotConfigSettings()
{
    cmbDifficulty->setCurrentIndex(0);
    chkAdjustSkill->setChecked(false);
    chkRandomOrder->setChecked(false);
}

void frmBots::cmbBot_Click()
{
    if (!isVisible())
        return;
    {
        const QScopedValueRollback refreshing(bRefreshing, true);
        PositionSlot();
        OtherData(CurrentSlot());
    }
    MarkModified();
}

// ---- Document state --------------------------------------------------------

void frmBots::SavedFunc(bool bSave)
{
    lblSaved->setEnabled(true);
    lblSaved->setText(bSave ? "Saved" : "Modified");
    imgSaved->setVisible(bSave);
    imgNotSaved->setVisible(!bSave);
    mnuFileSave->setEnabled(!bSave);
    setWindowModified(!bSave);
    // Saving snaps slider positions off their steps in the roster itself:
    // no edit of the user's to undo.
    if (bSave)
        m_recorded = Roster();
}

bool frmBots::IsSaved() const
{
    return !imgSaved->isHidden();
}

void frmBots::LoadedFunc()
{
    lblSaved->setEnabled(true);
    lblSaved->setText("Loaded");
    imgSaved->setVisible(false);
    imgNotSaved->setVisible(true);
    setWindowModified(true);
}

void frmBots::EnableAll(bool eState)
{
    const QList<QWidget *> editing = { lblAccuracy, lblAlertness, lblBot, lblCamping, lblClass,
        lblColor, lblCombatStyle, lblFace, lblFavWep, lblJumpyBehavior, lblName, lblSkillAdjust,
        lblSkin, lblStrafing, lblVoice, lblSANum, lblSAValues, lblNumAccuracy, lblMaxAccuracy,
        lblNumAlertness, lblMaxAlertness, lblNumCamping, lblMaxCamping, lblNumStrafing,
        lblMaxStrafing, lblDifficulty, lblBotConfigLine, cmbBot, cmbClass, cmbColor, cmbCombatStyle,
        cmbFace, cmbFavWep, cmbSkin, cmbVoice, cmbDifficulty, txtName, chkJumpy, chkAdjustSkill,
        chkRandomOrder, hsSkillAdjust, hsAccuracy, hsAlertness, hsStrafing, hsCamping, cmdDescr };
    for (QWidget *control : editing)
        control->setEnabled(eState);
    grdBots->setEnabled(eState);
    updateEditActions();
}

// ---- Class, skin, face and voice lists -------------------------------------

void frmBots::fillList(QComboBox *list, const QStringList &items)
{
    // Showing another slot of the same class must not rebuild a list of
    // thousands of skins.
    bool same = list->count() == items.size();
    for (int i = 0; same && i < items.size(); ++i)
        same = list->itemText(i) == items.at(i);
    if (same)
        return;
    const QSignalBlocker quiet(list);
    list->clear();
    list->addItems(items);
    list->setCurrentIndex(-1);
}

void frmBots::FillClassList()
{
    fillList(cmbClass, ClassCaptions(Catalogue().MISCCLASSES));
    const QSignalBlocker quiet(cmbClass);
    cmbClass->setCurrentIndex(0);
}

void frmBots::RefreshSkins(int ClassIndex)
{
    const QStringList items = SkinCaptions(Catalogue().MISCCLASSES, ClassIndex);
    fillList(cmbSkin, items);
    if (items == QStringList { NoneItem })
        cmbSkin->setCurrentIndex(0);
}

void frmBots::RefreshFaces(int ClassIndex, int skinIndex)
{
    const QStringList items = FaceCaptions(Catalogue().MISCCLASSES, ClassIndex, skinIndex);
    fillList(cmbFace, items);
    if (items == QStringList { NoneItem })
        cmbFace->setCurrentIndex(0);
}

void frmBots::RefreshVoice(int ClassIndex)
{
    fillList(cmbVoice, VoiceCaptions(Catalogue(), ClassIndex));
}

void frmBots::SetVoice()
{
    if (!slotInRange())
        return;
    const QString description
        = VoiceDescription(Catalogue().VoiceList, Roster().VoiceType[CurrentSlot()]);
    if (description.isEmpty())
        cmbVoice->setCurrentIndex(cmbVoice->count() - 1);
    else
        cmbVoice->setCurrentIndex(cmbVoice->findText(description));
}

void frmBots::PositionSlot()
{
    if (!slotInRange())
        return;
    const QScopedValueRollback refreshing(bRefreshing, true);
    const QList<MISCLASS> &classes = Catalogue().MISCCLASSES;
    const BotRoster &roster = Roster();
    const int slot = CurrentSlot();

    const int classIndex = int(FindClassIndex(classes, roster.BotClasses[slot]));
    cmbClass->setCurrentIndex(classIndex);
    RefreshSkins(classIndex);
    const int skinIndex = int(FindSkinIndex(classes, classIndex, roster.BotSkins[slot]));
    cmbSkin->setCurrentIndex(skinIndex);
    RefreshFaces(classIndex, skinIndex);
    cmbFace->setCurrentIndex(
        int(FindFaceIndex(classes, classIndex, skinIndex, roster.BotFaces[slot])));
    RefreshVoice(classIndex);
    SetVoice();
}

// After a new class or skin the lists show their first entries, and the slot
// takes what they show: a skin, face or voice of the previous class would not
// suit the new one.
void frmBots::cmbClass_Click()
{
    if (!isVisible() || bRefreshing || !slotInRange())
        return;
    BotRoster &roster = Roster();
    const int slot = CurrentSlot();
    sPrevValue = roster.BotClasses[slot];
    const int classIndex = cmbClass->currentIndex();
    {
        const QScopedValueRollback refreshing(bRefreshing, true);
        RefreshSkins(classIndex);
        cmbSkin->setCurrentIndex(0);
        RefreshFaces(classIndex, 0);
        cmbFace->setCurrentIndex(0);
        RefreshVoice(classIndex);
        cmbVoice->setCurrentIndex(0);
    }
    const QList<MISCLASS> &classes = Catalogue().MISCCLASSES;
    roster.BotClasses[slot] = ClassNameAt(classes, classIndex);
    roster.BotSkins[slot] = SkinNameAt(classes, classIndex, 0);
    roster.BotFaces[slot] = GameFaceName(FaceNameAt(classes, classIndex, 0, 0));
    roster.VoiceType[slot] = GetVoiceCode(cmbVoice->currentText());
    MarkModified();
}

void frmBots::cmbSkin_Click()
{
    if (!isVisible() || bRefreshing || !slotInRange())
        return;
    BotRoster &roster = Roster();
    const int slot = CurrentSlot();
    sPrevValue = roster.BotSkins[slot];
    const int classIndex = cmbClass->currentIndex();
    const int skinIndex = cmbSkin->currentIndex();
    {
        const QScopedValueRollback refreshing(bRefreshing, true);
        RefreshFaces(classIndex, skinIndex);
        cmbFace->setCurrentIndex(0);
        OtherData(slot);
    }
    const QList<MISCLASS> &classes = Catalogue().MISCCLASSES;
    roster.BotSkins[slot] = SkinNameAt(classes, classIndex, skinIndex);
    roster.BotFaces[slot] = GameFaceName(FaceNameAt(classes, classIndex, skinIndex, 0));
    MarkModified();
}

void frmBots::cmbFace_Click()
{
    if (!isVisible() || bRefreshing || !slotInRange())
        return;
    QString &face = Roster().BotFaces[CurrentSlot()];
    sPrevValue = face;
    face = GameFaceName(FaceNameAt(Catalogue().MISCCLASSES, cmbClass->currentIndex(),
        cmbSkin->currentIndex(), cmbFace->currentIndex()));
    if (face != sPrevValue)
        MarkModified();
}

void frmBots::cmbVoice_Click()
{
    if (!isVisible() || bRefreshing || !slotInRange() || cmbVoice->currentIndex() < 0)
        return;
    QString &voice = Roster().VoiceType[CurrentSlot()];
    sPrevValue = voice;
    voice = GetVoiceCode(cmbVoice->currentText());
    if (voice != sPrevValue)
        MarkModified();
}

// ---- The other fields ------------------------------------------------------

void frmBots::txtName_Change()
{
    if (!isVisible() || !slotInRange())
        return;
    Roster().BotNames[CurrentSlot()] = txtName->text();
    MarkModified();
}

void frmBots::cmbColor_Click()
{
    if (!isVisible() || !slotInRange())
        return;
    qint16 &team = Roster().BotTeams[CurrentSlot()];
    iPrevValue = team;
    QString caption;
    team = GetColorNumber(caption);
    if (team != iPrevValue)
        MarkModified();
}

void frmBots::cmbCombatStyle_Click()
{
    if (!isVisible() || !slotInRange())
        return;
    QString &style = Roster().CombatStyle[CurrentSlot()];
    sPrevValue = style;
    style = GetCombatStyleValue(cmbCombatStyle->currentText());
    if (style != sPrevValue)
        MarkModified();
}

void frmBots::cmbFavWep_Click()
{
    if (!isVisible() || !slotInRange())
        return;
    Roster().FavoriteWeapon[CurrentSlot()] = GetWeaponCode(cmbFavWep->currentIndex());
    MarkModified();
}

void frmBots::cmbDifficulty_Click()
{
    if (!isVisible())
        return;
    iPrevValue = Roster().Difficulty;
    Roster().Difficulty = qint16(cmbDifficulty->currentIndex());
    if (Roster().Difficulty != iPrevValue)
        MarkModified();
}

void frmBots::chkJumpy_Click()
{
    if (!slotInRange())
        return;
    Roster().BotJumpy[CurrentSlot()] = chkJumpy->isChecked() ? 1 : 0;
    MarkModified();
}

void frmBots::chkAdjustSkill_Click()
{
    Roster().bAdjustSkill = chkAdjustSkill->isChecked();
    MarkModified();
}

void frmBots::chkRandomOrder_Click()
{
    Roster().bRandomOrder = chkRandomOrder->isChecked();
    MarkModified();
}

void frmBots::cmdDescr_Click()
{
    sPrevValue = Roster().Description;
    dlgDescr &dialog = theForm<dlgDescr>();
    if (dialog.parentWidget() != this)
        dialog.setParent(this, dialog.windowFlags());
    dialog.exec();
    if (Roster().Description != sPrevValue)
        MarkModified();
}

// ---- Sliders ---------------------------------------------------------------

void frmBots::hsChange(const SkillSlider &skill)
{
    skill.valueLabel->setText(skill.text(qint16(skill.slider->value())));
    if (!isVisible() || !slotInRange())
        return;
    (Roster().*skill.field)[CurrentSlot()] = qint16(skill.slider->value());
    MarkModified();
}

void frmBots::hsScroll(const SkillSlider &skill, int position)
{
    skill.valueLabel->setText(skill.text(qint16(position)));
    if (!isVisible() || !slotInRange())
        return;
    (Roster().*skill.field)[CurrentSlot()] = qint16(position);
    recordEdit();
    if (!bLoadingConfig)
        SavedFunc(false);
}

void frmBots::DoHsChange()
{
    for (const SkillSlider *skill :
        { &m_alertness, &m_accuracy, &m_strafing, &m_skillAdjust, &m_camping })
        hsChange(*skill);
}

// ---- List conversions ------------------------------------------------------

qint16 frmBots::GetColorNumber(QString &sInt) const
{
    sInt = cmbColor->currentText();
    return TeamNumber(sInt);
}

void frmBots::SetColorCombo(qint16 teamvalue)
{
    if (const std::optional<int> index = TeamIndex(teamvalue))
        cmbColor->setCurrentIndex(*index);
}

QString frmBots::GetWeaponCode(int listNum) const
{
    return ::GetWeaponCode(listNum);
}

void frmBots::SetWeaponCombo(const QString &weaponcode)
{
    if (const std::optional<int> index = WeaponIndex(weaponcode))
        cmbFavWep->setCurrentIndex(*index);
}

void frmBots::SetCombatStyleCombo(const QString &value)
{
    if (const std::optional<int> index = CombatStyleIndex(value))
        cmbCombatStyle->setCurrentIndex(*index);
}

QString frmBots::GetVoiceCode(const QString &stmp) const
{
    return ::GetVoiceCode(stmp);
}

// ---- Window ----------------------------------------------------------------

void frmBots::quitQVN()
{
    try {
        SaveOptions();
    } catch (const RunError &error) {
        showMessage("Options Not Saved", "The options could not be saved:\r\n" + error.message(),
            MessageButtons::Ok, MessageIcon::Exclamation);
    }
}

void frmBots::closeEvent(QCloseEvent *event)
{
    quitQVN();
    event->accept();
}

bool frmBots::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == imgPartnerLogo && event->type() == QEvent::MouseButtonDblClick)
        emit partnerLogoActivated();
    // Undo and Redo of the window cover the name as well; the box's own
    // would add steps of its own to the history.
    if (watched == txtName && event->type() == QEvent::ShortcutOverride) {
        const QKeySequence pressed(static_cast<QKeyEvent *>(event)->keyCombination());
        const QList<QKeySequence> taken = mnuEditUndo->shortcuts() + mnuEditRedo->shortcuts();
        if (taken.contains(pressed)) {
            event->ignore();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}
