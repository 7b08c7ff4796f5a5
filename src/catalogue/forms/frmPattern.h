#pragma once

#include "catalogue/modelcatalogue.h"
#include "catalogue/patternfile.h"

#include <QDialog>

class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QTreeWidget;

// Assigns the files the unmatched report handed over to models; the
// patterns already saved can be changed or deleted here too. Finished turns
// the assignments into patterns, writes pattern.ini with every change made
// here and asks the scan to parse the assigned files again. Closes only
// through Finished, which no stray Return or Escape presses.
class frmPattern : public QDialog
{
    Q_OBJECT

public:
    explicit frmPattern(QWidget *parent = nullptr);

    QLabel *Label1;
    // One row per file: its name, the model assigned to it, its folder.
    QTreeWidget *lstFiles;
    QLabel *lblStep1;
    QComboBox *cmbModelAssoc;
    QPushButton *cmdSetPattern;
    QPushButton *cmdRemovePattern;
    QPushButton *cmdFinished;
    QGroupBox *Frame1;
    QPushButton *cmdHelpAddPattern;
    QPushButton *cmdHelpRemovePattern;

    // The patterns already in pattern.ini: one item per model with its skin
    // types below it.
    QGroupBox *fraSavedPatterns;
    QTreeWidget *tvwPatterns;
    QLabel *lblSavedNote;
    QPushButton *cmdMoveSkinType;
    QPushButton *cmdDeletePattern;

    // Shows PatternEditorFiles(), the catalogue's models and the saved
    // patterns afresh, dropping changes not finished.
    void loadFiles();
    // loadFiles(), then modal until Finished.
    void ShowEditor();

private:
    void cmdSetPattern_Click();
    void cmdRemovePattern_Click();
    void cmdFinished_Click();
    void cmdMoveSkinType_Click();
    void cmdDeletePattern_Click();

    void fillModels();
    void showSavedPatterns();
    // Makes the edit on what the user sees and keeps it for Finished.
    void edit(const PatternEdit &change);
    void updateButtons();
    void showAssignment(int row);
    QList<int> selectedRows() const;
    // The MISCCLASSES slot of the model chosen in the list, or -1.
    int chosenModel() const;

    // The saved patterns as changed here, written by Finished.
    // The saved patterns as the user sees them, and the edits that made
    // them so, which Finished makes on the file as it is then.
    QList<SkinPattern> m_patterns;
    QList<PatternEdit> m_edits;
};
