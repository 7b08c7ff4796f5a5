#include "dlgNewBoss.h"

#include "catalogue/bossmode.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "startup/options.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

namespace {

QRadioButton *choice(QWidget *parent, const QString &caption)
{
    auto *option = new QRadioButton(caption, parent);
    option->setObjectName(QStringLiteral("optChoice"));
    return option;
}

} // namespace

dlgNewBoss::dlgNewBoss(QWidget *parent)
    : QDialog(parent)
    , lblFilename(wrappedLabel(this, "lblFilename", "skeletalcharsfix313.int"))
    , lblExplanation(wrappedLabel(this, "lblExplanation",
          "The above file has two choices of models (or classes) in it.  Please choose one "
          "choice below.  The default setting for this file is the third choice."))
    , lblBossChoice(wrappedLabel(this, "lblBossChoice"))
    , Frame1(new QGroupBox(this))
    , optChoice { choice(Frame1, " WarBoss and Xan II [Fixed] Only"),
        choice(Frame1, " WarBoss and Xan II [Fixed/Male Voices] Only"),
        choice(Frame1, " Both [Fixed] and [Fixed/Male Voices] On") }
    , lblFixed(wrappedLabel(Frame1, "lblFixed",
          "This choice allows you to use only other skins with the new WarBoss and Xan II "
          "models."))
    , lblFixedMaleVoice(wrappedLabel(Frame1, "lblFixedMaleVoice",
          "This choice allows you to use only other skins and any male voice with the new "
          "WarBoss and Xan II models."))
    , Label1(wrappedLabel(Frame1, "Label1",
          "Turns on both models so you can choose to use the new boss skins with new skins or "
          "new skins and male voice."))
    , OKButton(new QPushButton("OK", this))
{
    setObjectName("dlgNewBoss");
    setWindowTitle("Which WarBoss and Xan II models to use?");
    Frame1->setObjectName("Frame1");
    OKButton->setObjectName("OKButton");
    OKButton->setDefault(true);

    QFont strong = lblFilename->font();
    strong.setBold(true);
    lblFilename->setFont(strong);
    lblBossChoice->setFont(strong);

    // Each note sits under its choice, indented to the choice's text.
    const int indent = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth)
        + style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
    auto *choices = new QGridLayout(Frame1);
    choices->setColumnMinimumWidth(0, indent);
    choices->setColumnStretch(1, 1);
    const QList<QLabel *> notes { lblFixed, lblFixedMaleVoice, Label1 };
    for (int i = 0; i < optChoice.size(); ++i) {
        choices->addWidget(optChoice.at(i), i * 3, 0, 1, 2);
        choices->addWidget(notes.at(i), i * 3 + 1, 1);
        if (i + 1 < optChoice.size())
            choices->setRowMinimumHeight(i * 3 + 2, fontMetrics().height() / 2);
    }

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(OKButton, QDialogButtonBox::AcceptRole);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblFilename);
    layout->addWidget(lblExplanation);
    layout->addSpacing(fontMetrics().height() / 2);
    layout->addWidget(lblBossChoice);
    layout->addWidget(Frame1);
    layout->addWidget(buttons);

    connect(OKButton, &QPushButton::clicked, this, &dlgNewBoss::OKButton_Click);
    RemoveCloseMenu(this);
    setMinimumWidth(fontMetrics().averageCharWidth() * 72);
}

void dlgNewBoss::readMode()
{
    // An unreadable package counts as untouched; OK then says why it cannot
    // be written either.
    try {
        BossMode = ReadBossMode(AppOptions().UTPath);
    } catch (const RunError &) {
        BossMode = 2;
    }
    lblBossChoice->setText(BossChoiceText(BossMode));
    QRadioButton *current = optChoice.at(BossChoiceOfMode(BossMode));
    current->setChecked(true);
    current->setFocus();
}

void dlgNewBoss::showEvent(QShowEvent *event)
{
    readMode();
    QDialog::showEvent(event);
}

int dlgNewBoss::chosenOption() const
{
    for (int i = 0; i < optChoice.size(); ++i) {
        if (optChoice.at(i)->isChecked())
            return i;
    }
    return -1;
}

void dlgNewBoss::OKButton_Click()
{
    const short mode = BossModeOfChoice(chosenOption());
    try {
        SetBossMode(mode, AppOptions().UTPath);
        BossMode = mode;
    } catch (const RunError &error) {
        // The game holds the file while it runs; closing it and trying again
        // is the usual way out, but the start-up must not hang on it.
        if (showMessage(QStringLiteral("Which WarBoss and Xan II models to use?"),
                QStringLiteral("skeletalcharsfix313.int could not be changed:\r\n")
                    + error.message()
                    + QStringLiteral("\r\n\r\nTry again? (No leaves the file as it is.)"),
                MessageButtons::YesNo, MessageIcon::Exclamation)
            == MessageAnswer::Yes)
            return;
    }
    accept();
}
