#pragma once

#include "pathdialog.h"

// Confirms the configuration directory: proposes one, lets the user type it
// or browse (and create folders), and creates the directory on OK when it
// does not exist yet. On OK the directory becomes AppOptions().ConfigPath.
// Closes only through OK.
class dlgChangeConfigPath : public PathDialog
{
    Q_OBJECT

public:
    explicit dlgChangeConfigPath(QWidget *parent = nullptr);

    QLineEdit *txtConfigPath;

private:
    void cmdBrowse_Click() override;
    void OKButton_Click() override;
};
