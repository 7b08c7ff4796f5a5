#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

// Who made the program, which version it is, what it may be used for, and
// where to find more; closes with OK only.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget *parent = nullptr);

    QLabel *lblTitle;
    QLabel *lblVersion;
    QLabel *lblPurpose;
    QLabel *lblQt;
    QLabel *lblLicence;
    QLabel *lblLinks;
    QLabel *lblTrademark;
    QPushButton *cmdOK;
};
