#include "frmAbout.h"

#include "buildconfig.h"
#include "configfiles/forms/windowtools.h"
#include "weblinks.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QString link(const QString &address)
{
    return QStringLiteral("<a href=\"%1\">%1</a>").arg(address.toHtmlEscaped());
}

} // namespace

frmAbout::frmAbout(QWidget *parent)
    : QDialog(parent)
    , lblTitle(wrappedLabel(this, "lblTitle", QStringLiteral("Quorvane")))
    , lblVersion(wrappedLabel(this, "lblVersion",
          QStringLiteral("Version " QUORVANE_VERSION)))
    , lblPurpose(wrappedLabel(this, "lblPurpose",
          QStringLiteral("Keeps your practice-bot lists for Unreal Tournament and puts the one "
                         "you choose into the game.")))
    , lblQt(wrappedLabel(this, "lblQt",
          QStringLiteral("Built with Qt %1, running on Qt %2.").arg(QT_VERSION_STR, qVersion())))
    , lblLicence(wrappedLabel(this, "lblLicence",
          QStringLiteral("Free software under the GNU General Public License, version 3 or "
                         "later. It comes with no warranty.")))
    , lblLinks(wrappedLabel(this, "lblLinks",
          QStringLiteral("Website: ") + link(HomePageAddress()) + QStringLiteral("<br>Support: ")
              + link(SupportPageAddress())))
    , lblTrademark(wrappedLabel(this, "lblTrademark",
          QStringLiteral("Unreal and Unreal Tournament are trademarks or registered trademarks "
                         "of Epic Games, Inc. Quorvane is not made or endorsed by Epic Games.")))
    , cmdOK(new QPushButton(QStringLiteral("OK"), this))
{
    setObjectName("frmAbout");
    setWindowTitle("About Quorvane");
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);

    QFont heading = lblTitle->font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.6);
    lblTitle->setFont(heading);
    lblLinks->setTextFormat(Qt::RichText);
    lblLinks->setTextInteractionFlags(Qt::TextBrowserInteraction);
    lblLinks->setOpenExternalLinks(false);
    connect(lblLinks, &QLabel::linkActivated, this,
        [](const QString &address) { PerformShellAction(address); });
    QFont small = lblTrademark->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    lblTrademark->setFont(small);

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdOK, QDialogButtonBox::AcceptRole);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    for (QLabel *label : { lblTitle, lblVersion, lblPurpose, lblQt, lblLicence, lblLinks })
        layout->addWidget(label);
    layout->addSpacing(8);
    layout->addWidget(lblTrademark);
    layout->addWidget(buttons);
    setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    RemoveCloseMenu(this);
}
