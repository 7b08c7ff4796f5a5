#include "dlgLaunchUT.h"

#include "windowtools.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

bool &LaunchWithoutAsking()
{
    static bool withoutAsking = false;
    return withoutAsking;
}

dlgLaunchUT::dlgLaunchUT(QWidget *parent)
    : QDialog(parent)
    , Label1(new QLabel(
          captionText("Save && Apply current configuration and then launch Unreal Tournament?"),
          this))
    , cmdYes(new QPushButton(QStringLiteral("YES!"), this))
    , CancelButton(new QPushButton(QStringLiteral("Cancel"), this))
    , chkAutoGoAway(new QCheckBox(QStringLiteral("In the future, don't ask, just do it."), this))
{
    setObjectName("dlgLaunchUT");
    setWindowTitle("Launch Unreal Tournament");
    Label1->setObjectName("Label1");
    cmdYes->setObjectName("cmdYes");
    CancelButton->setObjectName("CancelButton");
    chkAutoGoAway->setObjectName("chkAutoGoAway");

    QFont narrow = Label1->font();
    narrow.setFamily(QStringLiteral("Arial Narrow"));
    narrow.setPointSizeF(narrow.pointSizeF() * 1.15);
    Label1->setFont(narrow);
    Label1->setWordWrap(true);
    Label1->setMinimumWidth(Label1->fontMetrics().averageCharWidth() * 44);
    cmdYes->setDefault(true);

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdYes, QDialogButtonBox::AcceptRole);
    buttons->addButton(CancelButton, QDialogButtonBox::RejectRole);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addSpacing(8);
    layout->addWidget(chkAutoGoAway);
    layout->addWidget(buttons);

    connect(cmdYes, &QPushButton::clicked, this, [this] { answer(AnswerYes); });
    connect(CancelButton, &QPushButton::clicked, this, [this] { answer(AnswerCancel); });
    // The setting follows the box at once, whatever the answer.
    connect(chkAutoGoAway, &QCheckBox::toggled, this,
        [](bool checked) { LaunchWithoutAsking() = checked; });
}

void dlgLaunchUT::showEvent(QShowEvent *event)
{
    if (!event->spontaneous()) {
        Answer = AnswerNone;
        chkAutoGoAway->setChecked(LaunchWithoutAsking());
        cmdYes->setFocus();
    }
    QDialog::showEvent(event);
}

void dlgLaunchUT::answer(int code)
{
    Answer = code;
    done(code == AnswerYes ? Accepted : Rejected);
}
