#pragma once

#include "filenamedialog.h"

// Names a configuration in the configuration folder and reads it into the
// roster. A name that is empty, cannot be a file of the folder, does not
// exist or names a file that cannot be read completely is reported, and the
// dialog stays open with the roster untouched.
class dlgOpen : public FileNameDialog
{
    Q_OBJECT

public:
    explicit dlgOpen(QWidget *parent = nullptr);

    // Whether the last showing read a file into the roster, and its name.
    bool FileOpened = false;
    QString OpenedFileName;

    QLineEdit *txtName;
    QPushButton *cmdOpen;
    QPushButton *CancelButton;

protected:
    void load() override;
    void choose() override;

private:
    void cmdOpen_Click();
    // The name to read: as typed, or with ".qvn" added when only that
    // exists. Empty, after telling the user, when there is none.
    QString existingName(const QString &typed) const;
    void EnableControls(bool enabled);
};
