#pragma once

#include "pathdialog.h"

// Confirms the game directory: proposes one, lets the user browse, and
// accepts only a directory that holds System/user.ini. On OK the directory
// becomes AppOptions().UTPath. Closes only through OK.
class dlgCorrectUTPath : public PathDialog
{
    Q_OBJECT

public:
    explicit dlgCorrectUTPath(QWidget *parent = nullptr);

    QLabel *lblUTPath;

private:
    void cmdBrowse_Click() override;
    void OKButton_Click() override;
};
