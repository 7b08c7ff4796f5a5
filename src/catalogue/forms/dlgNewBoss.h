#pragma once

#include <QDialog>
#include <QList>

class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

// Lets a new user choose which boss variants of the game's boss package are
// switched on, showing the current state when it opens. OK writes the choice
// into the package of AppOptions().UTPath. Closes only through OK.
class dlgNewBoss : public QDialog
{
    Q_OBJECT

public:
    explicit dlgNewBoss(QWidget *parent = nullptr);

    QLabel *lblFilename;
    QLabel *lblExplanation;
    QLabel *lblBossChoice;
    QGroupBox *Frame1;
    // Top to bottom; each carries the objectName "optChoice".
    QList<QRadioButton *> optChoice;
    QLabel *lblFixed;
    QLabel *lblFixedMaleVoice;
    QLabel *Label1;
    QPushButton *OKButton;

    // The mode the package had when the dialog opened, and after OK the one
    // written (unchanged when the user gave up on a failed write).
    short BossMode = 2;

    // Reads the package's mode and shows it, with the focus on its choice;
    // every showing does.
    void readMode();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void OKButton_Click();
    int chosenOption() const;
};
