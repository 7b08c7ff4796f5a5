#pragma once

#include "filenamedialog.h"

// Names the file the roster is saved as, in the configuration folder.
// Closes after Save File whether or not a file was written (the user may
// have declined to overwrite one); a name that cannot be a file of the
// folder, or a write that fails, keeps it open for another name.
class dlgSaveAs : public FileNameDialog
{
    Q_OBJECT

public:
    explicit dlgSaveAs(QWidget *parent = nullptr);

    // The bare name written during the last showing; empty when none was.
    QString SavedFileName;

    QLineEdit *txtNewName;
    QLabel *lblExtention;
    QPushButton *cmdSave;
    QPushButton *cmdCancel;

protected:
    void load() override;
    void choose() override;

private:
    void cmdSave_Click();
};
