#include "dlgDescr.h"

#include "roster/botroster.h"
#include "windowtools.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

dlgDescr::dlgDescr(QWidget *parent)
    : QDialog(parent)
    , txtDescr(new QPlainTextEdit(this))
    , cmdSave(new QPushButton("Apply", this))
    , CancelButton(new QPushButton("Cancel", this))
    , lblWarning(new QLabel(
          "Changes are only applied.  Must save configuration to save description.", this))
{
    setObjectName("dlgDescr");
    setWindowTitle("Enter Description");
    txtDescr->setObjectName("txtDescr");
    txtDescr->setAccessibleName(windowTitle());
    cmdSave->setObjectName("cmdSave");
    CancelButton->setObjectName("CancelButton");
    lblWarning->setObjectName("lblWarning");

    txtDescr->setTabChangesFocus(true);
    lblWarning->setWordWrap(true);
    cmdSave->setDefault(true);

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdSave, QDialogButtonBox::AcceptRole);
    buttons->addButton(CancelButton, QDialogButtonBox::RejectRole);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(txtDescr, 1);
    layout->addWidget(lblWarning);
    layout->addWidget(buttons);

    connect(cmdSave, &QPushButton::clicked, this, &dlgDescr::cmdSave_Click);
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);

    RemoveCloseMenu(this);
    // Room for a few lines of a description without scrolling, at any font size.
    const QFontMetrics metrics = fontMetrics();
    resize(sizeHint().expandedTo(QSize(metrics.averageCharWidth() * 64, metrics.height() * 12)));
}

// Every showing starts from the roster, so a cancelled edit leaves no trace.
// A window restored from the task bar is shown again by the window system;
// that must not throw away what the user has typed.
void dlgDescr::showEvent(QShowEvent *event)
{
    if (!event->spontaneous())
        txtDescr->setPlainText(Roster().Description);
    QDialog::showEvent(event);
}

void dlgDescr::cmdSave_Click()
{
    Roster().Description = txtDescr->toPlainText();
    accept();
}
