#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

// Tells a new user, once, that a few setup dialogs follow.
class dlgFirstRun : public QDialog
{
    Q_OBJECT

public:
    explicit dlgFirstRun(QWidget *parent = nullptr);

    QLabel *lblTitle;
    QLabel *Label1;
    QLabel *Label2;
    QLabel *lblOtherTimes;
    QLabel *lblOptionDeleted;
    QLabel *lblOR;
    QLabel *lblChangeSettings;
    QLabel *lblBeginClick;
    QPushButton *cmdContinue;
};
