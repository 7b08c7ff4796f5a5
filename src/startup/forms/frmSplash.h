#pragma once

#include "configfiles/progress.h"
#include "widgets/clsPicBar.h"

#include <QFrame>

#include <functional>

class QCheckBox;
class QLabel;
class QPushButton;

// The window shown while the program starts: product and version, the step
// that is running, a band that moves while work goes on, and the Close
// button that hands over to the main window. It is the start-up's progress:
// step() sets the message line, advance() moves the band.
class frmSplash : public QFrame, public Progress
{
    Q_OBJECT

public:
    explicit frmSplash(QWidget *parent = nullptr);
    ~frmSplash() override;

    QLabel *Image1;
    QLabel *lblCompanyProduct;
    QLabel *lblPlatform;
    QLabel *lblVersion;
    QFrame *Line1;
    QLabel *lblMessage;
    QLabel *pbGradient;
    QCheckBox *chkAutoClose;
    QPushButton *cmdClose;
    QLabel *lblCopyright;

    clsPicBar GradientBar;

    // Shows the main window; set by the start-up before it hands over.
    std::function<void()> showMainWindow;

    // Sets the message line; a doubled "&" shows as one.
    void setMessage(const QString &caption);
    QString message() const;

    // The hand-over: shows the main window, then closes and unloads the splash.
    void cmdClose_Click();

    void step(const QString &message) override;
    void advance() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void queryUnload();
};
