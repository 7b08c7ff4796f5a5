#pragma once

#include <QDialog>

class QComboBox;
class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;
class QTreeWidget;

// Assigns the files the unmatched report handed over to models; Finished
// turns the assignments into patterns, writes pattern.ini and asks the scan
// to parse the assigned files again. The patterns already saved can be
// changed or deleted here too. Closes only through Finished.
class frmPattern : public QDialog
{
    Q_OBJECT

public:
    explicit frmPattern(QWidget *parent = nullptr);

    QLabel *Label1;
    QListWidget *lstFiles;
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
    // patterns afresh.
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
    void updateButtons();
    QList<int> selectedRows() const;
    // The MISCCLASSES slot of the model chosen in the list, or -1.
    int chosenModel() const;
};
