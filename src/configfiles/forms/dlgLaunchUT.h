#pragma once

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;

// Asks before Quit and Launch saves, applies and starts the game. Its box
// lets the user skip the question for the rest of the run.
class dlgLaunchUT : public QDialog
{
    Q_OBJECT

public:
    // The answer of the last showing, as message-box codes.
    enum : int { AnswerNone = 0, AnswerCancel = 2, AnswerYes = 6 };

    explicit dlgLaunchUT(QWidget *parent = nullptr);

    int Answer = AnswerNone;

    QLabel *Label1;
    QPushButton *cmdYes;
    QPushButton *CancelButton;
    QCheckBox *chkAutoGoAway;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void answer(int code);
};

// The don't-ask setting: held for this run of the program only.
bool &LaunchWithoutAsking();
