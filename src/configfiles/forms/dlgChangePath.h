#pragma once

#include <QDialog>

class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

// The program's folder chooser: a drive list, a folder tree from the drive's
// root and a row for creating a folder inside the highlighted one. The caller
// sets the caption and the drive (and may hide cmdCreateFolder), shows it
// modal and reads SelectedFolder afterwards.
class dlgChangePath : public QDialog
{
    Q_OBJECT

public:
    explicit dlgChangePath(QWidget *parent = nullptr);

    QLabel *lblDrive;
    QComboBox *driveOne;
    QLabel *lblFolder;
    QTreeWidget *dirOne;
    QFrame *Line1;
    QPushButton *cmdCreateFolder;
    QPushButton *OKButton;
    QPushButton *CancelButton;
    QFrame *Line2;
    QLabel *lblNewFolder;
    QLineEdit *txtNewFolder;
    QPushButton *cmdCreate;

    // The chosen folder, ending with the separator; empty when the last
    // showing ended without a choice.
    QString SelectedFolder;

    // Selects `drive` in the drive list (the first drive when there is no
    // such drive, as for "C:\" on systems without drive letters) and opens
    // its current folder.
    void setDrive(const QString &drive);
    // Opens the folder tree down to `path` and highlights it, or the deepest
    // folder of it that exists.
    void setPath(const QString &path);
    // The highlighted folder, or the drive's root when none is.
    QString openPath() const;

protected:
    void showEvent(QShowEvent *event) override;
    // Escape closes the new-folder row when it is open, else the dialog.
    void keyPressEvent(QKeyEvent *event) override;

private:
    void driveOne_Change();
    void cmdCreateFolder_Click();
    void txtNewFolder_Change();
    void cmdCreate_Click();
    void OKButton_Click();

    void setNewFolderRowOpen(bool open);
    bool createFolder(const QString &name);
    QTreeWidgetItem *addFolderItem(
        QTreeWidgetItem *parent, const QString &name, const QString &path);
    void fillFolders(QTreeWidgetItem *item);
    void refillFolders(QTreeWidgetItem *item);
    QTreeWidgetItem *childNamed(QTreeWidgetItem *item, const QString &name);

    QWidget *m_newFolderRow;
};
