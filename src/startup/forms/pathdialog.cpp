#include "pathdialog.h"

#include "configfiles/forms/dlgChangePath.h"
#include "configfiles/forms/formregistry.h"
#include "widgets/startupartwork.h"

#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

template<typename Widget> Widget *named(Widget *widget, const char *name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

} // namespace

PathDialog::PathDialog(const char *pathFieldName, const QString &message, QWidget *parent)
    : QDialog(parent)
    , lblMessage(named(new QLabel(message, this), "lblMessage"))
    , lblPath(named(new QLabel("&Path:", this), "lblPath"))
    , Label2(named(new QLabel("If it is not click the BROWSE button.", this), "Label2"))
    , cmdBrowse(named(new QPushButton("Browse", this), "cmdBrowse"))
    , lblOK(named(new QLabel("If it is correct click the OK button.", this), "lblOK"))
    , OKButton(named(new QPushButton("OK", this), "OKButton"))
    , m_pathField(named(new QLineEdit(this), pathFieldName))
    , m_layout(new QGridLayout(this))
{
    setWindowIcon(ApplicationIcon());
    lblMessage->setWordWrap(true);
    lblPath->setBuddy(m_pathField);
    QFont strong = m_pathField->font();
    strong.setBold(true);
    m_pathField->setFont(strong);
    OKButton->setDefault(true);

    auto *pathRow = new QHBoxLayout;
    pathRow->addWidget(lblPath);
    pathRow->addWidget(m_pathField, 1);

    m_layout->setColumnStretch(0, 1);
    m_layout->addWidget(lblMessage, 0, 0, 1, 2);
    m_layout->addLayout(pathRow, 1, 0, 1, 2);
    m_layout->addWidget(Label2, 2, 0);
    m_layout->addWidget(cmdBrowse, 2, 1);
    m_layout->addWidget(lblOK, 3, 0);
    m_layout->addWidget(OKButton, 3, 1);

    // The path first, where Enter means OK; then Browse and OK in reading order.
    setTabOrder(m_pathField, cmdBrowse);
    setTabOrder(cmdBrowse, OKButton);
    m_pathField->setFocus();

    connect(m_pathField, &QLineEdit::textChanged, this,
        [this](const QString &text) { ChosenPath = text; });
    connect(cmdBrowse, &QPushButton::clicked, this, [this] { cmdBrowse_Click(); });
    connect(OKButton, &QPushButton::clicked, this, [this] { OKButton_Click(); });
    setMinimumWidth(fontMetrics().averageCharWidth() * 72);
}

void PathDialog::showPath(const QString &path)
{
    m_pathField->setText(path);
    ChosenPath = path;
}

void PathDialog::addFootnote(QLabel *note)
{
    m_layout->addWidget(note, m_layout->rowCount(), 0, 1, 2);
}

// The chooser opens where the shown path leads (the deepest folder of it
// that exists), or in the home folder when none is shown; never in the
// program's working directory, which means nothing to the user.
void PathDialog::browse(const QString &caption, bool allowCreateFolder)
{
    dlgChangePath &chooser = theForm<dlgChangePath>();
    chooser.setWindowTitle(caption);
    chooser.setDrive(QStringLiteral("C:\\"));
    chooser.setPath(ChosenPath.isEmpty() ? QDir::homePath() : ChosenPath);
    chooser.cmdCreateFolder->setVisible(allowCreateFolder);
    chooser.move(frameGeometry().center() - chooser.rect().center());
    chooser.exec();
    if (!chooser.SelectedFolder.isEmpty())
        showPath(chooser.SelectedFolder);
    OKButton->setFocus();
}
