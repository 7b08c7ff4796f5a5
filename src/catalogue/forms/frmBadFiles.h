#pragma once

#include <QDialog>
#include <QStringList>

class QLabel;
class QPushButton;
class QTreeWidget;

// Lists the skin files the scan could not match to a model, saves the list
// for the user, and hands the checked files to the pattern editor. Shown at
// every scan, also with an empty list; it closes only through Continue, which
// no stray Return or Escape presses.
class frmBadFiles : public QDialog
{
    Q_OBJECT

public:
    explicit frmBadFiles(QWidget *parent = nullptr);

    QLabel *lblExplained;
    QLabel *lblListHeader;
    // One row per file: its name, then its folder.
    QTreeWidget *lstFileList;
    QPushButton *cmdCheckAll;
    QPushButton *cmdSaveToFile;
    QPushButton *cmdSaveOpen;
    QPushButton *cmdContinue;
    QPushButton *cmdHelp;

    // Fills the list with `paths`, all unchecked.
    void setFiles(const QStringList &paths);
    // The paths of the checked items, in list order.
    QStringList checkedFiles() const;
    // setFiles(), then modal until Continue; the hand-over to the pattern
    // editor is in Catalogue().PatternsRequested and PatternEditorFiles().
    void ShowReport(const QStringList &paths);

private:
    void cmdCheckAll_Click();
    void cmdSaveOpen_Click();
    void cmdContinue_Click();
    void cmdHelp_Click();
};
