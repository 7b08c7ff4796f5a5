#pragma once

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;

// Edits the roster's description. Apply writes it into the roster; only
// saving the configuration puts it into a file, as the warning tells.
class dlgDescr : public QDialog
{
    Q_OBJECT

public:
    explicit dlgDescr(QWidget *parent = nullptr);

    QPlainTextEdit *txtDescr;
    QPushButton *cmdSave;
    QPushButton *CancelButton;
    QLabel *lblWarning;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void cmdSave_Click();
};
