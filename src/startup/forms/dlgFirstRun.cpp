#include "dlgFirstRun.h"

#include "configfiles/forms/windowtools.h"
#include "widgets/startupartwork.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

dlgFirstRun::dlgFirstRun(QWidget *parent)
    : QDialog(parent)
    , lblTitle(wrappedLabel(this, "lblTitle", "Starting Quorvane First Run Setup..."))
    , Label1(wrappedLabel(this, "Label1",
          "The only time you will see this dialog is when Quorvane is first installed."))
    , Label2(wrappedLabel(this, "Label2",
          "Following this dialog there will be a few setup dialog windows asking you "
          "to choose settings that are required for the operation of Quorvane."))
    , lblOtherTimes(wrappedLabel(
          this, "lblOtherTimes", "Other times that you would see these setup dialog windows are:"))
    , lblOptionDeleted(
          wrappedLabel(this, "lblOptionDeleted", "...if the options.ini file has been deleted."))
    , lblOR(wrappedLabel(this, "lblOR", "OR"))
    , lblChangeSettings(wrappedLabel(this, "lblChangeSettings", "...if you change settings."))
    , lblBeginClick(wrappedLabel(this, "lblBeginClick", "Click the continue button to begin..."))
    , cmdContinue(new QPushButton("Continue...", this))
{
    setObjectName("dlgFirstRun");
    setWindowTitle(QString());
    setWindowIcon(ApplicationIcon());
    cmdContinue->setObjectName("cmdContinue");
    cmdContinue->setDefault(true);

    QFont heading = lblTitle->font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.25);
    lblTitle->setFont(heading);

    const int indent = style()->pixelMetric(QStyle::PM_LayoutLeftMargin) * 3;
    auto *layout = new QGridLayout(this);
    layout->setColumnMinimumWidth(0, indent);
    layout->setColumnStretch(1, 1);
    layout->addWidget(lblTitle, 0, 0, 1, 3);
    layout->addWidget(Label1, 1, 0, 1, 3);
    layout->addWidget(Label2, 2, 0, 1, 3);
    layout->addWidget(lblOtherTimes, 3, 0, 1, 3);
    layout->addWidget(lblOptionDeleted, 4, 1, 1, 2);
    layout->addWidget(lblOR, 5, 0, 1, 3);
    layout->addWidget(lblChangeSettings, 6, 1, 1, 2);
    layout->setRowMinimumHeight(7, style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing) * 2);
    layout->addWidget(lblBeginClick, 8, 0, 1, 2);
    layout->addWidget(cmdContinue, 8, 2);

    connect(cmdContinue, &QPushButton::clicked, this, &QDialog::accept);
    setMinimumWidth(fontMetrics().averageCharWidth() * 78);
}
