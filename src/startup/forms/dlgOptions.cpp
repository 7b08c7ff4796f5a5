#include "dlgOptions.h"

#include "dlgChangeConfigPath.h"
#include "dlgCorrectUTPath.h"
#include "frmSplash.h"
#include "startupsequence.h"

#include "catalogue/bossmode.h"
#include "configfiles/forms/dlgChangePath.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "roster/forms/frmBots.h"
#include "startup/configfoldermove.h"
#include "startup/options.h"
#include "widgets/startupartwork.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace {

QRadioButton *option(QWidget *parent, const char *name, const QString &caption)
{
    auto *button = new QRadioButton(caption, parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

// The paths are shown as the path dialogs show them: framed, selectable.
QLabel *pathLabel(QWidget *parent, const char *name)
{
    QLabel *label = namedLabel(parent, name);
    label->setFrameShape(QFrame::StyledPanel);
    label->setFrameShadow(QFrame::Sunken);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setMinimumHeight(label->fontMetrics().height() * 2);
    return label;
}

int choiceIndent(const QStyle *style)
{
    return style->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth)
        + style->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
}

void reportOptionsNotSaved(const RunError &error, const QString &consequence = {})
{
    showMessage(QStringLiteral("Options Not Saved"),
        QStringLiteral("The options could not be saved:\r\n") + error.message() + consequence,
        MessageButtons::Ok, MessageIcon::Exclamation);
}

// The splash's Close cannot be clicked behind this application-modal dialog,
// and the user asked for the restart here: the new main window is shown at
// once, whatever the splash's box says (the box keeps its state for the
// next start).
void handOverFromSplash()
{
    if (!isFormLoaded<frmSplash>())
        return;
    frmSplash &splash = theForm<frmSplash>();
    if (splash.cmdClose->isEnabled())
        splash.cmdClose_Click();
}

} // namespace

dlgOptions::dlgOptions(QWidget *parent)
    : QDialog(parent)
    , SSTab1(new QTabWidget(this))
    , OKButton(new QPushButton("OK", this))
{
    setObjectName("dlgOptions");
    setWindowTitle("Quorvane Options");
    setWindowIcon(ApplicationIcon());
    SSTab1->setObjectName("SSTab1");
    SSTab1->addTab(createPathsTab(), "Paths");
    SSTab1->addTab(createBossTab(), "Boss");
    SSTab1->addTab(createOtherTab(), "Other");
    SSTab1->setAccessibleName("Options");
    OKButton->setObjectName("OKButton");
    OKButton->setDefault(true);

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(OKButton, QDialogButtonBox::AcceptRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1);
    layout->addWidget(buttons);

    RemoveCloseMenu(this);
    optPathChange.at(0)->setChecked(true);
    lblUTPath->setText(AppOptions().UTPath);
    lblConfigPath->setText(AppOptions().ConfigPath);
    chkAutoClose->setChecked(AppOptions().AutoCloseSplash == 1);
    readBossChoice();
    SSTab1->setCurrentIndex(0);
    connectHandlers();
    setMinimumWidth(fontMetrics().averageCharWidth() * 72);
}

QWidget *dlgOptions::createPathsTab()
{
    auto *page = new QWidget;
    optPathChange = { option(page, "optPathChange", "UT Path:"),
        option(page, "optPathChange", "Save Configuration Path:") };
    lblUTPath = pathLabel(page, "lblUTPath");
    lblConfigPath = pathLabel(page, "lblConfigPath");
    cmdChange = new QPushButton("Change", page);
    cmdChange->setObjectName("cmdChange");

    auto *layout = new QGridLayout(page);
    layout->setColumnMinimumWidth(0, choiceIndent(style()));
    layout->setColumnStretch(1, 1);
    layout->addWidget(optPathChange.at(0), 0, 0, 1, 2);
    layout->addWidget(lblUTPath, 1, 1);
    layout->addWidget(optPathChange.at(1), 2, 0, 1, 2);
    layout->addWidget(lblConfigPath, 3, 1);
    layout->addWidget(cmdChange, 4, 1, Qt::AlignRight);
    layout->setRowStretch(5, 1);
    return page;
}

QWidget *dlgOptions::createBossTab()
{
    auto *page = new QWidget;
    lblFilename = wrappedLabel(page, "lblFilename", "skeletalcharsfix313.int");
    lblExplanation = wrappedLabel(page, "lblExplanation",
        "The above file has two choices of models (or classes) in it.  Below is the current "
        "setting.");
    Frame1 = new QGroupBox("Frame1", page);
    Frame1->setObjectName("Frame1");
    optChoice = { option(Frame1, "optChoice", " WarBoss and Xan II [Fixed] Only"),
        option(Frame1, "optChoice", " WarBoss and Xan II [Fixed/Male Voices] Only"),
        option(Frame1, "optChoice", " Both [Fixed] and [Fixed/Male Voices] On (default)") };
    lblFixed = wrappedLabel(Frame1, "lblFixed",
        "This choice allows you to use only other skins with the new WarBoss and Xan II models.");
    lblFixedMaleVoice = wrappedLabel(Frame1, "lblFixedMaleVoice",
        "This choice allows you to use only other skins and any male voice with the new WarBoss "
        "and Xan II models.");
    Label1 = wrappedLabel(Frame1, "Label1",
        "Turns on both models so you can choose to use the new boss skins with new skins or new "
        "skins and male voice.");
    QFont strong = lblFilename->font();
    strong.setBold(true);
    lblFilename->setFont(strong);

    // Each explanation sits under its choice, indented to the choice's text.
    auto *choices = new QGridLayout(Frame1);
    choices->setColumnMinimumWidth(0, choiceIndent(style()));
    choices->setColumnStretch(1, 1);
    const QList<QLabel *> explanations { lblFixed, lblFixedMaleVoice, Label1 };
    for (int i = 0; i < optChoice.size(); ++i) {
        choices->addWidget(optChoice.at(i), i * 3, 0, 1, 2);
        choices->addWidget(explanations.at(i), i * 3 + 1, 1);
        optChoice.at(i)->setAccessibleDescription(explanations.at(i)->text());
        if (i + 1 < optChoice.size())
            choices->setRowMinimumHeight(i * 3 + 2, fontMetrics().height() / 2);
    }

    auto *layout = new QVBoxLayout(page);
    layout->addWidget(lblFilename);
    layout->addWidget(lblExplanation);
    layout->addWidget(Frame1);
    layout->addStretch(1);
    return page;
}

QWidget *dlgOptions::createOtherTab()
{
    auto *page = new QWidget;
    chkAutoClose = new QCheckBox("Auto Close Splash Screen", page);
    chkAutoClose->setObjectName("chkAutoClose");
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(chkAutoClose);
    layout->addStretch(1);
    return page;
}

void dlgOptions::connectHandlers()
{
    connect(cmdChange, &QPushButton::clicked, this, &dlgOptions::cmdChange_Click);
    connect(chkAutoClose, &QCheckBox::toggled, this, &dlgOptions::chkAutoClose_Click);
    connect(OKButton, &QPushButton::clicked, this, &dlgOptions::OKButton_Click);
    connect(SSTab1, &QTabWidget::currentChanged, this, &dlgOptions::focusChosenBossOption);
}

// The dialog has no parent and the caller does not wait for it: changing
// the game folder runs the start-up again, which deletes the main window
// that opened the dialog and builds a new one, while the dialog stays open.
// A child of that window would be deleted with it, and a caller blocked in
// exec() would return into a deleted window.
void dlgOptions::showOver(QWidget *owner)
{
    adjustSize();
    if (owner)
        move(owner->frameGeometry().center() - rect().center());
    setWindowModality(Qt::ApplicationModal);
    show();
    activateWindow();
}

void dlgOptions::cmdChange_Click()
{
    PathsChanged = false;
    if (optPathChange.at(0)->isChecked())
        changeGameDir();
    else
        changeConfigDir();
}

void dlgOptions::chkAutoClose_Click()
{
    AppOptions().AutoCloseSplash = chkAutoClose->isChecked() ? 1 : 0;
}

// Each use starts from a freshly made path dialog, so that it shows its own
// caption and message rather than what the start-up left in it.
bool dlgOptions::execOver(QDialog &dialog)
{
    dialog.setParent(this, dialog.windowFlags());
    dialog.adjustSize();
    dialog.move(frameGeometry().center() - dialog.rect().center());
    return dialog.exec() == QDialog::Accepted;
}

void dlgOptions::changeGameDir()
{
    const QString previous = AppOptions().UTPath;
    unloadForm<dlgCorrectUTPath>();
    dlgCorrectUTPath &dialog = theForm<dlgCorrectUTPath>();
    dialog.showPath(previous);
    if (!execOver(dialog))
        return;
    AppOptions().UTPath = dialog.ChosenPath;
    RestartRequested() = false;
    if (AppOptions().UTPath == previous)
        return;
    // The restart builds a new editor: a list not yet saved would be lost.
    if (isFormLoaded<frmBots>()
        && !theForm<frmBots>().AskToSave(
            QStringLiteral("   Yes = Save current configuration and then restart."),
            QStringLiteral("    No = Loose current configuration and then restart."))) {
        AppOptions().UTPath = previous;
        return;
    }

    showMessage(QStringLiteral("Restart Quorvane"),
        QStringLiteral("Quorvane must be restarted for changes to take affect."));
    // The restart reads the game folder back from the file.
    try {
        SaveOptions();
    } catch (const RunError &error) {
        AppOptions().UTPath = previous;
        reportOptionsNotSaved(error, QStringLiteral("\r\n\r\nThe game folder stays ") + previous);
        return;
    }
    PathsChanged = true;
    RestartRequested() = true;
    // The start-up replaces the path dialog this handler has just used and
    // shows dialogs of its own, so it runs once the handler has returned.
    setWorking(true);
    QTimer::singleShot(0, this, &dlgOptions::restart);
}

void dlgOptions::restart()
{
    const QPointer<dlgOptions> self(this);
    Main();
    if (!self)
        return;
    handOverFromSplash();
    lblUTPath->setText(AppOptions().UTPath);
    // The boss package is the new game's now.
    readBossChoice();
    setWorking(false);
    raise();
    activateWindow();
}

void dlgOptions::changeConfigDir()
{
    const QString oldDir = AppOptions().ConfigPath;
    unloadForm<dlgChangeConfigPath>();
    dlgChangeConfigPath &dialog = theForm<dlgChangeConfigPath>();
    dialog.lblMessage->setText(oldDir);
    if (!execOver(dialog))
        return;
    AppOptions().ConfigPath = dialog.ChosenPath;
    if (AppOptions().ConfigPath == oldDir)
        return;
    PathsChanged = true;

    // The label keeps the old folder after a move or a refusal; it shows the
    // new one the next time the dialog opens.
    setWorking(true);
    const bool offered = OfferToMoveConfigurations(oldDir, AppOptions().ConfigPath);
    setWorking(false);
    if (!offered)
        lblConfigPath->setText(AppOptions().ConfigPath);
}

void dlgOptions::setWorking(bool working)
{
    SSTab1->setEnabled(!working);
    OKButton->setEnabled(!working);
    // Disabling took the keyboard away from Change, where the work began.
    if (!working)
        cmdChange->setFocus();
}

void dlgOptions::readBossChoice()
{
    const QString gameDir = AppOptions().UTPath;
    const bool present = BossPackageExists(gameDir);
    short mode = 2;
    // An unreadable package shows the state of an absent one; OK says why it
    // cannot be written either.
    try {
        mode = ReadBossMode(gameDir);
    } catch (const RunError &) {
    }
    optChoice.at(BossChoiceOfMode(mode))->setChecked(true);
    // Without the package there is nothing to switch.
    Frame1->setEnabled(present);
}

int dlgOptions::chosenBossOption() const
{
    for (int i = 0; i < optChoice.size(); ++i) {
        if (optChoice.at(i)->isChecked())
            return i;
    }
    return -1;
}

// Whether the dialog may close: a package the game holds open cannot be
// written, and the user may close the game and try again.
bool dlgOptions::applyBossChoice()
{
    const QString gameDir = AppOptions().UTPath;
    if (!BossPackageExists(gameDir))
        return true;
    const short chosen = BossModeOfChoice(chosenBossOption());
    try {
        if (ReadBossMode(gameDir) != chosen)
            SetBossMode(chosen, gameDir);
        return true;
    } catch (const RunError &error) {
        return showMessage(QStringLiteral("Quorvane Options"),
                   QStringLiteral("skeletalcharsfix313.int could not be changed:\r\n")
                       + error.message()
                       + QStringLiteral("\r\n\r\nTry again? (No leaves the file as it is.)"),
                   MessageButtons::YesNo, MessageIcon::Exclamation)
            != MessageAnswer::Yes;
    }
}

// Reaching the Boss tab from inside the dialog's pages puts the keyboard on
// the current choice; from the tab bar, Tab goes there, as the choices that
// are not selected take no Tab focus.
void dlgOptions::focusChosenBossOption()
{
    const QWidget *focus = QApplication::focusWidget();
    if (SSTab1->currentIndex() != 1 || !focus || !SSTab1->currentWidget()->isAncestorOf(focus))
        return;
    const int chosen = chosenBossOption();
    if (chosen >= 0)
        optChoice.at(chosen)->setFocus(Qt::TabFocusReason);
}

void dlgOptions::OKButton_Click()
{
    {
        const BusyPointer busy;
        if (PathsChanged) {
            try {
                SaveOptions();
            } catch (const RunError &error) {
                reportOptionsNotSaved(error);
            }
        }
        if (!applyBossChoice())
            return;
        unloadForm<dlgCorrectUTPath>();
        unloadForm<dlgChangeConfigPath>();
        unloadForm<dlgChangePath>();
    }
    // This runs inside the dialog's own button: the dialog goes once control
    // is back in the event loop.
    accept();
    deleteLater();
    // A restart that failed has left no main window to go back to.
    if (!isFormLoaded<frmBots>())
        QCoreApplication::quit();
}
