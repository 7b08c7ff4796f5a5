#pragma once

#include <QDialog>
#include <QStringList>

class QCheckBox;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QVBoxLayout;

// Puts a saved configuration's bot list into the game: the user picks a
// configuration of the configuration folder, sees its description and the
// user.ini files the game reads (each with a box, all ticked), and applies,
// with a backup of each replaced section if asked. Closes once the apply has
// completed; stays open when it was refused or failed.
class dlgApply : public QDialog
{
    Q_OBJECT

public:
    explicit dlgApply(QWidget *parent = nullptr);

    QLabel *lblChooseConfig;
    QComboBox *cmbConfigs;
    QLabel *lblDescr;
    QPlainTextEdit *txtDescr;
    QLabel *lblTargets;
    QLabel *lblNoTargets;
    // One per user.ini the game reads, captioned with its path.
    QList<QCheckBox *> chkTargets;
    QCheckBox *chkBackup;
    QPushButton *cmdBackupHelp;
    QPushButton *cmdApply;
    QPushButton *CancelButton;

    // The description of each entry of cmbConfigs, at the same index.
    QStringList ConfigDescriptions;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void load();
    void fillConfigurations();
    void fillTargets();
    void cmbConfigs_Click();
    void cmdBackupHelp_Click();
    void cmdApply_Click();

    QVBoxLayout *m_targetBoxes;
};
