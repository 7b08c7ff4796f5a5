#pragma once

#include "configfiles/errorreport.h"

#include <QDialog>

class QLabel;
class QPushButton;

// Where users send error reports.
inline constexpr char SupportAddress[] = "support@quorvane.example";

// Shows an unexpected error with the report file written for it and asks
// the user to send that file in. Closes only through OK.
class dlgError : public QDialog
{
    Q_OBJECT

public:
    explicit dlgError(QWidget *parent = nullptr);

    QLabel *lblErrDescrLabel;
    QLabel *lblErrDescr;
    QLabel *lblCustomDescrLabel;
    QLabel *lblCustomMsg;
    QLabel *Label1;
    QLabel *lblErrFileLoc;
    QPushButton *OKButton;

    // Writes the report into the program's directory, shows the dialog modal
    // until OK, and returns false, as the callers' handlers expect.
    bool ProcessError(const RunError &error, const QString &message);
};

// Routes the errors that long procedures trap to the error dialog.
class DialogErrorSink final : public ErrorSink
{
public:
    void processError(const RunError &error, const QString &message) override;
};
