#pragma once

#include "pathdialog.h"

// Confirms the game directory: proposes one, lets the user type it or
// browse, and accepts only a game folder (IsGameFolder). On OK the directory
// becomes AppOptions().UTPath. Closing it keeps the game folder the program
// has; without one, closing offers to quit the program instead.
class dlgCorrectUTPath : public PathDialog
{
    Q_OBJECT

public:
    explicit dlgCorrectUTPath(QWidget *parent = nullptr);

    QLineEdit *txtUTPath;
    // What a game folder must hold, so that a refused OK is understood.
    QLabel *lblGameFolder;

    // Set when the dialog was closed because the user chose to quit.
    bool QuitChosen = false;

    void reject() override;

private:
    void cmdBrowse_Click() override;
    void OKButton_Click() override;
};
