#include "dlgApply.h"

#include "configfiles/applyconfig.h"
#include "configfiles/configfile.h"
#include "configfiles/gameinstallation.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "startup/options.h"
#include "windowtools.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

dlgApply::dlgApply(QWidget *parent)
    : QDialog(parent)
    , lblChooseConfig(new QLabel(QStringLiteral("Choose Configuration:"), this))
    , cmbConfigs(new QComboBox(this))
    , lblDescr(new QLabel(QStringLiteral("Description:"), this))
    , txtDescr(new QPlainTextEdit(this))
    , lblTargets(new QLabel(QStringLiteral("User.ini files to change:"), this))
    , lblNoTargets(new QLabel(QStringLiteral("None found in the game folder."), this))
    , chkBackup(new QCheckBox(QStringLiteral("Backup Current Configuration"), this))
    , cmdBackupHelp(new QPushButton(QStringLiteral("?"), this))
    , cmdApply(new QPushButton(QStringLiteral("Apply Config"), this))
    , CancelButton(new QPushButton(QStringLiteral("Cancel"), this))
    , m_targetBoxes(new QVBoxLayout)
{
    setObjectName("dlgApply");
    setWindowTitle("Apply Configuration");
    lblChooseConfig->setObjectName("lblChooseConfig");
    cmbConfigs->setObjectName("cmbConfigs");
    lblDescr->setObjectName("lblDescr");
    txtDescr->setObjectName("txtDescr");
    lblTargets->setObjectName("lblTargets");
    lblNoTargets->setObjectName("lblNoTargets");
    chkBackup->setObjectName("chkBackup");
    cmdBackupHelp->setObjectName("cmdBackupHelp");
    cmdApply->setObjectName("cmdApply");
    CancelButton->setObjectName("CancelButton");

    lblChooseConfig->setBuddy(cmbConfigs);
    lblDescr->setBuddy(txtDescr);
    txtDescr->setReadOnly(true);
    txtDescr->setTabChangesFocus(true);
    txtDescr->setFixedHeight(fontMetrics().height() * 4 + 2 * txtDescr->frameWidth() + 8);
    cmbConfigs->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbConfigs->setMinimumContentsLength(32);
    cmdBackupHelp->setAccessibleName(QStringLiteral("Backup Current Configuration Help"));
    cmdBackupHelp->setFixedWidth(cmdBackupHelp->sizeHint().height());
    cmdApply->setDefault(true);

    auto *fields = new QFormLayout;
    fields->addRow(lblChooseConfig, cmbConfigs);
    fields->addRow(lblDescr, txtDescr);
    m_targetBoxes->addWidget(lblNoTargets);
    fields->addRow(lblTargets, m_targetBoxes);

    // The help button stands centred beside the box it explains.
    auto *backup = new QHBoxLayout;
    backup->addWidget(chkBackup);
    backup->addWidget(cmdBackupHelp, 0, Qt::AlignVCenter);
    backup->addStretch(1);

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdApply, QDialogButtonBox::AcceptRole);
    buttons->addButton(CancelButton, QDialogButtonBox::RejectRole);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addLayout(backup);
    layout->addWidget(buttons);

    connect(cmbConfigs, &QComboBox::currentIndexChanged, this, &dlgApply::cmbConfigs_Click);
    connect(cmdBackupHelp, &QPushButton::clicked, this, &dlgApply::cmdBackupHelp_Click);
    connect(cmdApply, &QPushButton::clicked, this, &dlgApply::cmdApply_Click);
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    RemoveCloseMenu(this);
}

// A window restored by the window system keeps the user's choices.
void dlgApply::showEvent(QShowEvent *event)
{
    if (!event->spontaneous())
        load();
    QDialog::showEvent(event);
}

void dlgApply::load()
{
    fillConfigurations();
    fillTargets();
    adjustSize();
    cmbConfigs->setFocus();
}

void dlgApply::fillConfigurations()
{
    const QString folder = AppOptions().ConfigPath;
    const QSignalBlocker quiet(cmbConfigs);
    cmbConfigs->clear();
    ConfigDescriptions.clear();
    const QStringList names = QDir(folder).entryList(
        { QStringLiteral("*.qvn") }, QDir::Files, QDir::Name | QDir::IgnoreCase);
    for (const QString &name : names) {
        cmbConfigs->addItem(name);
        QString description;
        try {
            description = ReadDescription(name, folder);
        } catch (const RunError &) {
            // The apply itself reports an unreadable file when it is chosen.
        }
        ConfigDescriptions.append(description);
    }
    cmbConfigs->setCurrentIndex(names.isEmpty() ? -1 : 0);
    cmbConfigs_Click();
}

void dlgApply::fillTargets()
{
    qDeleteAll(chkTargets);
    chkTargets.clear();
    for (const QString &file : GameUserIniFiles(AppOptions().UTPath)) {
        auto *box = new QCheckBox(QDir::toNativeSeparators(file), this);
        box->setObjectName("chkTarget" + QString::number(chkTargets.size()));
        box->setChecked(true);
        m_targetBoxes->addWidget(box);
        chkTargets.append(box);
    }
    lblNoTargets->setVisible(chkTargets.isEmpty());
}

void dlgApply::cmbConfigs_Click()
{
    const int index = cmbConfigs->currentIndex();
    txtDescr->setPlainText(
        index >= 0 && index < ConfigDescriptions.size() ? ConfigDescriptions.at(index) : QString());
}

void dlgApply::cmdBackupHelp_Click()
{
    showMessage(QStringLiteral("Backup Current Configuration Help"),
        QStringLiteral("This backs up the data currently in your user.ini file."));
}

void dlgApply::cmdApply_Click()
{
    QStringList targets;
    for (const QCheckBox *box : std::as_const(chkTargets)) {
        if (box->isChecked())
            targets.append(box->text());
    }
    // With no user.ini at all, the apply says so itself.
    if (!chkTargets.isEmpty() && targets.isEmpty()) {
        showMessage(windowTitle(),
            QStringLiteral("Tick at least one user.ini file to change.  Operation Aborted."),
            MessageButtons::Ok, MessageIcon::Exclamation);
        return;
    }
    bool completed = false;
    {
        const BusyPointer busy;
        completed = ApplyConfiguration(cmbConfigs->currentText(), chkBackup->isChecked(), targets);
    }
    if (completed)
        accept();
}
