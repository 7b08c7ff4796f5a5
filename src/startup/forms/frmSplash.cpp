#include "frmSplash.h"

#include "buildconfig.h"
#include "configfiles/forms/windowtools.h"
#include "startup/options.h"
#include "widgets/startupartwork.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QString versionLine()
{
    return QStringLiteral("Version " QUORVANE_VERSION " Beta");
}

} // namespace

frmSplash::frmSplash(QWidget *parent)
    : QFrame(parent, Qt::Window | Qt::FramelessWindowHint)
    , Image1(namedLabel(this, "Image1"))
    , lblCompanyProduct(namedLabel(this, "lblCompanyProduct", "Tessaline presents the..."))
    , lblPlatform(namedLabel(this, "lblPlatform", "...for Windows 9x/NT/2000"))
    , lblVersion(namedLabel(this, "lblVersion"))
    , Line1(new QFrame(this))
    , lblMessage(namedLabel(this, "lblMessage"))
    , pbGradient(namedLabel(this, "pbGradient"))
    , chkAutoClose(
          new QCheckBox("Auto-close this window after program initialization finishes.", this))
    , cmdClose(new QPushButton("Close", this))
    , lblCopyright(namedLabel(this, "lblCopyright",
          "Unreal and Unreal Tournament are trademarks or registered trademarks of "
          "Epic Games, Inc. in the United States of America and elsewhere."))
{
    setObjectName("frmSplash");
    setFrameShape(QFrame::Box);
    setWindowIcon(ApplicationIcon());
    Line1->setObjectName("Line1");
    Line1->setFrameShape(QFrame::HLine);
    Line1->setFrameShadow(QFrame::Sunken);
    chkAutoClose->setObjectName("chkAutoClose");
    cmdClose->setObjectName("cmdClose");

    Image1->setPixmap(SplashPicture(qApp->devicePixelRatio()));
    Image1->setAlignment(Qt::AlignCenter);
    QFont emphasis = lblCompanyProduct->font();
    emphasis.setItalic(true);
    lblCompanyProduct->setFont(emphasis);
    lblPlatform->setFont(emphasis);
    lblPlatform->setAlignment(Qt::AlignRight);
    lblVersion->setAlignment(Qt::AlignRight);
    lblMessage->setAlignment(Qt::AlignCenter);
    lblMessage->setMinimumHeight(lblMessage->fontMetrics().height());
    // The box is exactly the band's size: stretched, each scroll step would
    // no longer be the Incrementor's pixels, and the gradient would blur.
    const QImage band = GradientPicture();
    pbGradient->setPixmap(QPixmap::fromImage(band));
    pbGradient->setFixedSize(band.size());
    QFont small = lblCopyright->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    lblCopyright->setFont(small);
    lblCopyright->setWordWrap(true);
    lblCopyright->setAlignment(Qt::AlignCenter);
    cmdClose->setEnabled(false);
    cmdClose->setDefault(true);

    auto *closeRow = new QHBoxLayout;
    closeRow->addWidget(chkAutoClose, 1);
    closeRow->addWidget(cmdClose);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(Image1);
    layout->addWidget(lblCompanyProduct);
    layout->addWidget(lblPlatform);
    layout->addWidget(lblVersion);
    layout->addWidget(Line1);
    layout->addWidget(lblMessage);
    layout->addWidget(pbGradient, 0, Qt::AlignHCenter);
    layout->addLayout(closeRow);
    layout->addWidget(lblCopyright);
    layout->setSizeConstraint(QLayout::SetMinimumSize);

    connect(cmdClose, &QPushButton::clicked, this, &frmSplash::cmdClose_Click);
    setAttribute(Qt::WA_DeleteOnClose);
    RemoveCloseMenu(this);

    lblVersion->setText(versionLine());
    lblMessage->clear();
    GradientBar.setPicBox(pbGradient);
    GradientBar.setIncrementor(2);
}

frmSplash::~frmSplash()
{
    queryUnload();
    if (&currentProgress() == this)
        installProgress(nullptr);
}

void frmSplash::setMessage(const QString &caption)
{
    lblMessage->setText(captionText(caption));
}

QString frmSplash::message() const
{
    return lblMessage->text();
}

void frmSplash::cmdClose_Click()
{
    if (showMainWindow)
        showMainWindow();
    close();
}

void frmSplash::step(const QString &message)
{
    setMessage(message);
}

void frmSplash::advance()
{
    GradientBar.BGScroll();
}

// Enter closes the splash wherever the focus is, once Close can be pressed;
// the splash is no dialog, so it has no default button to do it.
void frmSplash::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && cmdClose->isEnabled()) {
        cmdClose->click();
        return;
    }
    QFrame::keyPressEvent(event);
}

void frmSplash::closeEvent(QCloseEvent *event)
{
    queryUnload();
    QFrame::closeEvent(event);
}

// The box's states as options.ini keeps them: 0 unticked, 1 ticked,
// 2 greyed.
void frmSplash::queryUnload()
{
    switch (chkAutoClose->checkState()) {
    case Qt::Checked:
        AppOptions().AutoCloseSplash = 1;
        break;
    case Qt::PartiallyChecked:
        AppOptions().AutoCloseSplash = 2;
        break;
    case Qt::Unchecked:
        AppOptions().AutoCloseSplash = 0;
        break;
    }
}
