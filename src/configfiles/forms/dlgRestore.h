#pragma once

#include "configfiles/restorebackup.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTreeWidget;

// Puts back a bot list the apply replaced: the backups of the configuration
// folder, newest first, each with the time it was made and its bots; the
// user.ini to put it into, the one it was made of chosen when known. Closes
// once the restore has completed; stays open when it was refused or failed.
class dlgRestore : public QDialog
{
    Q_OBJECT

public:
    explicit dlgRestore(QWidget *parent = nullptr);

    QLabel *lblBackups;
    QTreeWidget *lstBackups;
    QLabel *lblNoBackups;
    QLabel *lblPreview;
    QPlainTextEdit *txtPreview;
    QLabel *lblTarget;
    QComboBox *cmbTargets;
    QPushButton *cmdRestore;
    QPushButton *CancelButton;

    // The backups listed, in the order of lstBackups.
    QList<BackupFile> Backups;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void load();
    void lstBackups_Click();
    void cmdRestore_Click();
};
