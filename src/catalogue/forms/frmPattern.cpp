#include "frmPattern.h"

#include "skinfilelist.h"

#include "catalogue/patternfile.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const QString crlf = QStringLiteral("\r\n");
const QString PatternFileTitle = QStringLiteral("pattern.ini");

// The file list's columns are the file's name, its model and its folder.
constexpr int ModelColumn = 1;

QPushButton *namedButton(QWidget *parent, const char *name, const QString &caption)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

QString writeFailure(const RunError &error)
{
    return QStringLiteral("The skin pattern file could not be written:") + crlf + error.message();
}

// Only for showing which model a saved pattern leads to; the scan matches
// skin types to models the same way, without regard to case.
QString describedModel(const QString &skinType)
{
    for (const MISCLASS &model : std::as_const(Catalogue().MISCCLASSES)) {
        if (!model.ClassName.isEmpty()
            && model.SkinType.compare(skinType, Qt::CaseInsensitive) == 0)
            return model.Description;
    }
    return {};
}

// Items of the saved patterns: a model carries its pattern's Model, a skin
// type the skin type; the model of a skin type is its parent's.
constexpr int PatternRole = Qt::UserRole;

bool isSkinTypeItem(const QTreeWidgetItem *item)
{
    return item && item->parent();
}

} // namespace

frmPattern::frmPattern(QWidget *parent)
    : QDialog(parent)
    , Label1(wrappedLabel(this, "Label1", "1. Select files to associate to the Model:"))
    , lstFiles(skinFileList(this, "lstFiles", { "File", "Model", "Folder" }))
    , lblStep1(
          wrappedLabel(this, "lblStep1", "2. Choose the Model to associate the Skin file too:"))
    , cmbModelAssoc(new QComboBox(this))
    , cmdSetPattern(namedButton(this, "cmdSetPattern", "Set Pattern"))
    , cmdRemovePattern(namedButton(this, "cmdRemovePattern", "Remove Pattern"))
    , cmdFinished(namedButton(this, "cmdFinished", "Finished"))
    , Frame1(new QGroupBox("Help", this))
    , cmdHelpAddPattern(namedButton(this, "cmdHelpAddPattern", "Set Pattern?"))
    , cmdHelpRemovePattern(namedButton(this, "cmdHelpRemovePattern", "Remove Pattern?"))
    , fraSavedPatterns(new QGroupBox("Patterns in pattern.ini", this))
    , tvwPatterns(new QTreeWidget(this))
    , lblSavedNote(wrappedLabel(this, "lblSavedNote",
          "Changes here are saved with the new patterns when you click Finished; skins "
          "already sorted move at the next start."))
    , cmdMoveSkinType(namedButton(this, "cmdMoveSkinType", "Move to Chosen Model"))
    , cmdDeletePattern(namedButton(this, "cmdDeletePattern", "Delete"))
{
    setObjectName("frmPattern");
    setWindowTitle("Create/Add Pattern to the Pattern File");
    lstFiles->setSelectionMode(QAbstractItemView::ExtendedSelection);
    Label1->setBuddy(lstFiles);
    cmbModelAssoc->setObjectName("cmbModelAssoc");
    lblStep1->setBuddy(cmbModelAssoc);
    Frame1->setObjectName("Frame1");
    fraSavedPatterns->setObjectName("fraSavedPatterns");
    tvwPatterns->setObjectName("tvwPatterns");
    tvwPatterns->setAccessibleName(fraSavedPatterns->title());
    tvwPatterns->setHeaderHidden(true);
    tvwPatterns->setColumnCount(1);
    tvwPatterns->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    lblSavedNote->setEnabled(false);
    cmdMoveSkinType->setToolTip("Moves the selected skin type to the model chosen in step 2.");
    cmdDeletePattern->setToolTip("Deletes the selected pattern or skin type from pattern.ini.");
    cmdFinished->setToolTip("Saves the patterns to pattern.ini and goes on.");

    auto *modelRow = new QHBoxLayout;
    modelRow->addWidget(cmbModelAssoc, 1);
    modelRow->addWidget(cmdSetPattern);
    modelRow->addWidget(cmdRemovePattern);

    auto *help = new QHBoxLayout(Frame1);
    help->addWidget(cmdHelpAddPattern);
    help->addWidget(cmdHelpRemovePattern);

    auto *savedButtons = new QHBoxLayout;
    savedButtons->addWidget(cmdMoveSkinType);
    savedButtons->addWidget(cmdDeletePattern);
    savedButtons->addStretch(1);
    auto *saved = new QVBoxLayout(fraSavedPatterns);
    saved->addWidget(tvwPatterns, 1);
    saved->addWidget(lblSavedNote);
    saved->addLayout(savedButtons);

    auto *assigning = new QVBoxLayout;
    assigning->addWidget(Label1);
    assigning->addWidget(lstFiles, 1);
    assigning->addWidget(lblStep1);
    assigning->addLayout(modelRow);

    auto *patterns = new QVBoxLayout;
    patterns->addWidget(fraSavedPatterns, 1);
    patterns->addWidget(Frame1);

    auto *columns = new QHBoxLayout;
    columns->addLayout(assigning, 3);
    columns->addLayout(patterns, 2);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdFinished);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addLayout(buttons);

    connect(cmdSetPattern, &QPushButton::clicked, this, &frmPattern::cmdSetPattern_Click);
    connect(cmdRemovePattern, &QPushButton::clicked, this, &frmPattern::cmdRemovePattern_Click);
    connect(cmdFinished, &QPushButton::clicked, this, &frmPattern::cmdFinished_Click);
    connect(cmdHelpAddPattern, &QPushButton::clicked, this, [] { ShowSetPatternHelp(); });
    connect(cmdHelpRemovePattern, &QPushButton::clicked, this, [] { ShowRemovePatternHelp(); });
    connect(cmdMoveSkinType, &QPushButton::clicked, this, &frmPattern::cmdMoveSkinType_Click);
    connect(cmdDeletePattern, &QPushButton::clicked, this, &frmPattern::cmdDeletePattern_Click);
    connect(lstFiles, &QTreeWidget::itemSelectionChanged, this, &frmPattern::updateButtons);
    connect(tvwPatterns, &QTreeWidget::itemSelectionChanged, this, &frmPattern::updateButtons);
    connect(cmbModelAssoc, &QComboBox::currentIndexChanged, this, &frmPattern::updateButtons);

    RemoveCloseMenu(this);
    loadFiles();
    const int chars = fontMetrics().averageCharWidth();
    resize(chars * 130, fontMetrics().height() * 28);
}

void frmPattern::loadFiles()
{
    fillModels();
    lstFiles->clear();
    const QList<PatternAssignment> &files = PatternEditorFiles();
    for (int row = 0; row < files.size(); ++row) {
        addSkinFile(lstFiles, files.at(row).path);
        showAssignment(row);
    }
    if (!files.isEmpty())
        lstFiles->setCurrentItem(lstFiles->topLevelItem(0));
    m_patterns = Catalogue().PatternList;
    m_edits.clear();
    showSavedPatterns();
    updateButtons();
}

void frmPattern::ShowEditor()
{
    loadFiles();
    exec();
}

// Free slots of the catalogue give no choice; each item keeps its slot, so
// that a choice leads back to its model.
void frmPattern::fillModels()
{
    cmbModelAssoc->clear();
    const QStringList choices = PatternModelChoices();
    const qsizetype slotCount = Catalogue().MISCCLASSES.size();
    for (qsizetype slot = 0; slot < choices.size(); ++slot) {
        if (slot < slotCount && !choices.at(slot).isEmpty())
            cmbModelAssoc->addItem(choices.at(slot), int(slot));
    }
    if (cmbModelAssoc->count() == 0)
        cmbModelAssoc->addItem(QStringLiteral("(NONE)"), -1);
    cmbModelAssoc->setCurrentIndex(0);
}

void frmPattern::showSavedPatterns()
{
    tvwPatterns->clear();
    for (const SkinPattern &pattern : std::as_const(m_patterns)) {
        if (pattern.Model.isEmpty())
            continue;
        const QString description = describedModel(pattern.Model);
        auto *model = new QTreeWidgetItem(tvwPatterns,
            { description.isEmpty() ? pattern.Model
                                    : pattern.Model + QStringLiteral(" (") + description + u')' });
        model->setData(0, PatternRole, pattern.Model);
        for (const QString &skinType : pattern.SkinTypes) {
            if (skinType.isEmpty())
                continue;
            auto *child = new QTreeWidgetItem(model, { skinType });
            child->setData(0, PatternRole, skinType);
        }
    }
    tvwPatterns->expandAll();
}

void frmPattern::updateButtons()
{
    const QList<int> rows = selectedRows();
    const QList<PatternAssignment> &files = PatternEditorFiles();
    bool anyAssigned = false;
    for (int row : rows)
        anyAssigned = anyAssigned || !files.at(row).modelDescription.isEmpty();
    cmdSetPattern->setEnabled(!rows.isEmpty() && chosenModel() >= 0);
    cmdRemovePattern->setEnabled(anyAssigned);

    const QTreeWidgetItem *saved = tvwPatterns->currentItem();
    const bool savedSelected = saved && saved->isSelected();
    cmdMoveSkinType->setEnabled(savedSelected && isSkinTypeItem(saved) && chosenModel() >= 0);
    cmdDeletePattern->setEnabled(savedSelected);
}

void frmPattern::showAssignment(int row)
{
    lstFiles->topLevelItem(row)->setText(
        ModelColumn, PatternEditorFiles().at(row).modelDescription);
}

QList<int> frmPattern::selectedRows() const
{
    QList<int> rows;
    const qsizetype files = PatternEditorFiles().size();
    for (int row = 0; row < lstFiles->topLevelItemCount() && row < files; ++row) {
        if (lstFiles->topLevelItem(row)->isSelected())
            rows.append(row);
    }
    return rows;
}

int frmPattern::chosenModel() const
{
    bool ok = false;
    const int slot = cmbModelAssoc->currentData().toInt(&ok);
    return ok ? slot : -1;
}

void frmPattern::cmdSetPattern_Click()
{
    if (chosenModel() < 0)
        return;
    QList<PatternAssignment> &files = PatternEditorFiles();
    for (int row : selectedRows()) {
        files[row].modelDescription = cmbModelAssoc->currentText();
        showAssignment(row);
    }
    updateButtons();
}

// One question covers every selected file.
void frmPattern::cmdRemovePattern_Click()
{
    QList<PatternAssignment> &files = PatternEditorFiles();
    QList<int> assigned;
    for (int row : selectedRows()) {
        if (!files.at(row).modelDescription.isEmpty())
            assigned.append(row);
    }
    if (assigned.isEmpty() || !RemovePatternAssignment(files[assigned.constFirst()]))
        return;
    for (int row : std::as_const(assigned)) {
        files[row].modelDescription.clear();
        showAssignment(row);
    }
    updateButtons();
}

void frmPattern::cmdFinished_Click()
{
    try {
        FinishPatterns(PatternEditorFiles(), m_edits);
    } catch (const RunError &error) {
        // The user may free the file and try again, or go on without the
        // changes; either way the start-up must be able to continue.
        if (showMessage(PatternFileTitle,
                writeFailure(error) + crlf + crlf
                    + QStringLiteral("Try again? (No goes on with pattern.ini as it was.)"),
                MessageButtons::YesNo, MessageIcon::Exclamation)
            == MessageAnswer::Yes)
            return;
    }
    accept();
}

void frmPattern::edit(const PatternEdit &change)
{
    change(m_patterns);
    m_edits.append(change);
    showSavedPatterns();
}

void frmPattern::cmdMoveSkinType_Click()
{
    const QTreeWidgetItem *item = tvwPatterns->currentItem();
    const int slot = chosenModel();
    if (!isSkinTypeItem(item) || slot < 0)
        return;
    const QString skinType = item->data(0, PatternRole).toString();
    const QString model = Catalogue().MISCCLASSES.at(slot).SkinType;
    edit([=](QList<SkinPattern> &patterns) { MoveSkinType(patterns, skinType, model); });
    updateButtons();
}

void frmPattern::cmdDeletePattern_Click()
{
    const QTreeWidgetItem *item = tvwPatterns->currentItem();
    if (!item)
        return;
    const QString key = item->data(0, PatternRole).toString();
    const bool skinType = isSkinTypeItem(item);
    const QString question = skinType
        ? QStringLiteral("Delete the skin type %1 from pattern.ini?").arg(key)
        : QStringLiteral("Delete the pattern of the model %1 with all its skin types from "
                         "pattern.ini?")
              .arg(key);
    if (showMessage({ QStringLiteral("Delete Pattern"), question, MessageButtons::YesNo,
            MessageIcon::Question, MessageDefault::No })
        != MessageAnswer::Yes)
        return;
    if (skinType)
        edit([=](QList<SkinPattern> &patterns) { ForgetSkinType(patterns, key); });
    else
        edit([=](QList<SkinPattern> &patterns) { ForgetPattern(patterns, key); });
    updateButtons();
}
