#include "pathdialog.h"

#include "configfiles/forms/dlgChangePath.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/forms/windowtools.h"
#include "widgets/startupartwork.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace {

template<typename Widget> Widget *named(Widget *widget, const char *name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

} // namespace

PathDialog::PathDialog(const char *pathLabelName, const QString &message, QWidget *parent)
    : QDialog(parent)
    , lblMessage(named(new QLabel(message, this), "lblMessage"))
    , Label2(named(new QLabel("If it is not click the BROWSE button.", this), "Label2"))
    , cmdBrowse(named(new QPushButton("Browse", this), "cmdBrowse"))
    , lblOK(named(new QLabel("If it is correct click the OK button.", this), "lblOK"))
    , OKButton(named(new QPushButton("OK", this), "OKButton"))
    , m_pathLabel(named(new QLabel(this), pathLabelName))
{
    setWindowIcon(ApplicationIcon());
    lblMessage->setWordWrap(true);
    QFont strong = m_pathLabel->font();
    strong.setBold(true);
    m_pathLabel->setFont(strong);
    m_pathLabel->setFrameShape(QFrame::StyledPanel);
    m_pathLabel->setFrameShadow(QFrame::Sunken);
    m_pathLabel->setTextFormat(Qt::PlainText);
    m_pathLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pathLabel->setMinimumHeight(m_pathLabel->fontMetrics().height() * 2);
    OKButton->setDefault(true);

    auto *layout = new QGridLayout(this);
    layout->setColumnStretch(0, 1);
    layout->addWidget(lblMessage, 0, 0, 1, 2);
    layout->addWidget(m_pathLabel, 1, 0, 1, 2);
    layout->addWidget(Label2, 2, 0);
    layout->addWidget(cmdBrowse, 2, 1);
    layout->addWidget(lblOK, 3, 0);
    layout->addWidget(OKButton, 3, 1);

    connect(cmdBrowse, &QPushButton::clicked, this, [this] { cmdBrowse_Click(); });
    connect(OKButton, &QPushButton::clicked, this, [this] { OKButton_Click(); });
    RemoveCloseMenu(this);
    setMinimumWidth(fontMetrics().averageCharWidth() * 72);
}

void PathDialog::showPath(const QString &path)
{
    ChosenPath = path;
    m_pathLabel->setText(path);
}

// The chooser starts on drive C:, as the game's own installer suggests,
// or in the shown folder when that exists.
void PathDialog::browse(const QString &caption, bool allowCreateFolder)
{
    dlgChangePath &chooser = theForm<dlgChangePath>();
    chooser.setWindowTitle(caption);
    chooser.setDrive(QStringLiteral("C:\\"));
    if (!ChosenPath.isEmpty() && QFileInfo(ChosenPath).isDir())
        chooser.setPath(ChosenPath);
    chooser.cmdCreateFolder->setVisible(allowCreateFolder);
    chooser.move(frameGeometry().center() - chooser.rect().center());
    chooser.exec();
    if (!chooser.SelectedFolder.isEmpty())
        showPath(chooser.SelectedFolder);
}
