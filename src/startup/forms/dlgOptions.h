#pragma once

#include <QDialog>
#include <QList>

class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTabWidget;

// Changes the game folder (which restarts the start-up, as the catalogue
// depends on it), the configuration folder (offering to move the
// configurations along), which boss variants are on and whether the splash
// closes itself. Closes only through OK, which writes the options when a
// path changed, the boss choice when it differs from the game's file, and
// unloads the path dialogs and the dialog itself.
class dlgOptions : public QDialog
{
    Q_OBJECT

public:
    explicit dlgOptions(QWidget *parent = nullptr);

    QTabWidget *SSTab1;
    // "Paths": the game folder (0) and the configuration folder (1); each
    // carries the objectName "optPathChange".
    QList<QRadioButton *> optPathChange;
    QLabel *lblUTPath;
    QLabel *lblConfigPath;
    QPushButton *cmdChange;
    // "Boss": top to bottom; each carries the objectName "optChoice".
    QLabel *lblFilename;
    QLabel *lblExplanation;
    QGroupBox *Frame1;
    QList<QRadioButton *> optChoice;
    QLabel *lblFixed;
    QLabel *lblFixedMaleVoice;
    QLabel *Label1;
    // "Other".
    QCheckBox *chkAutoClose;
    QPushButton *OKButton;

    // Whether the last Change changed a path; OK then writes the options.
    bool PathsChanged = false;

    // Shows the dialog application-modal, centred over `owner`, and returns
    // at once; see the definition for why it does not wait.
    void showOver(QWidget *owner);

private:
    QWidget *createPathsTab();
    QWidget *createBossTab();
    QWidget *createOtherTab();
    void connectHandlers();

    void cmdChange_Click();
    void chkAutoClose_Click();
    void OKButton_Click();

    void changeGameDir();
    void changeConfigDir();
    void restart();
    bool execOver(QDialog &dialog);
    // Holds the controls off while files move or the start-up runs again.
    void setWorking(bool working);

    void readBossChoice();
    int chosenBossOption() const;
    bool applyBossChoice();
    void focusChosenBossOption();
};
