#include "dlgRestore.h"

#include "configfiles/gameinstallation.h"
#include "startup/options.h"
#include "windowtools.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { Made, Bots, File };

} // namespace

dlgRestore::dlgRestore(QWidget *parent)
    : QDialog(parent)
    , lblBackups(namedLabel(this, "lblBackups", QStringLiteral("&Backups, newest first:")))
    , lstBackups(new QTreeWidget(this))
    , lblNoBackups(namedLabel(this, "lblNoBackups",
          QStringLiteral("There are no backups in the configuration folder.")))
    , lblPreview(namedLabel(this, "lblPreview", QStringLiteral("B&ots:")))
    , txtPreview(new QPlainTextEdit(this))
    , lblTarget(namedLabel(this, "lblTarget", QStringLiteral("Restore &into:")))
    , cmbTargets(new QComboBox(this))
    , cmdRestore(new QPushButton(QStringLiteral("Restore"), this))
    , CancelButton(new QPushButton(QStringLiteral("Cancel"), this))
{
    setObjectName("dlgRestore");
    setWindowTitle("Restore Backup");
    lstBackups->setObjectName("lstBackups");
    txtPreview->setObjectName("txtPreview");
    cmbTargets->setObjectName("cmbTargets");
    cmdRestore->setObjectName("cmdRestore");
    CancelButton->setObjectName("CancelButton");

    lblBackups->setBuddy(lstBackups);
    // Item views take no name from their label.
    lstBackups->setAccessibleName(QStringLiteral("Backups"));
    lblPreview->setBuddy(txtPreview);
    lblTarget->setBuddy(cmbTargets);
    lstBackups->setHeaderLabels(
        { QStringLiteral("Made"), QStringLiteral("Bots"), QStringLiteral("File") });
    lstBackups->setRootIsDecorated(false);
    lstBackups->setUniformRowHeights(true);
    lstBackups->setAllColumnsShowFocus(true);
    txtPreview->setReadOnly(true);
    txtPreview->setTabChangesFocus(true);
    txtPreview->setFixedHeight(fontMetrics().height() * 4 + 2 * txtPreview->frameWidth() + 8);
    cmbTargets->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbTargets->setMinimumContentsLength(40);
    cmdRestore->setDefault(true);

    auto *target = new QFormLayout;
    target->addRow(lblTarget, cmbTargets);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdRestore, QDialogButtonBox::AcceptRole);
    buttons->addButton(CancelButton, QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblBackups);
    layout->addWidget(lstBackups, 1);
    layout->addWidget(lblNoBackups);
    layout->addWidget(lblPreview);
    layout->addWidget(txtPreview);
    layout->addLayout(target);
    layout->addWidget(buttons);

    connect(lstBackups, &QTreeWidget::currentItemChanged, this, &dlgRestore::lstBackups_Click);
    connect(cmdRestore, &QPushButton::clicked, this, &dlgRestore::cmdRestore_Click);
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    RemoveCloseMenu(this);
    const QFontMetrics metrics = fontMetrics();
    resize(QSize(metrics.averageCharWidth() * 96, metrics.height() * 24));
}

// A window restored by the window system keeps the user's choice.
void dlgRestore::showEvent(QShowEvent *event)
{
    if (!event->spontaneous())
        load();
    QDialog::showEvent(event);
}

void dlgRestore::load()
{
    {
        const QSignalBlocker quiet(cmbTargets);
        cmbTargets->clear();
        for (const QString &file : GameUserIniFiles(AppOptions().UTPath))
            cmbTargets->addItem(QDir::toNativeSeparators(file), file);
    }
    const QSignalBlocker quiet(lstBackups);
    lstBackups->clear();
    Backups = ListBackups(AppOptions().ConfigPath);
    for (const BackupFile &backup : std::as_const(Backups)) {
        auto *item = new QTreeWidgetItem(lstBackups);
        item->setText(Made, backup.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
        item->setText(Bots, backup.botNames.join(QStringLiteral(", ")));
        item->setText(File, backup.fileName);
    }
    lstBackups->header()->resizeSection(Made,
        lstBackups->fontMetrics().horizontalAdvance(QStringLiteral("0000-00-00 00:00:00 ")) + 8);
    lstBackups->header()->resizeSection(Bots, lstBackups->fontMetrics().averageCharWidth() * 48);
    lstBackups->setVisible(!Backups.isEmpty());
    lblNoBackups->setVisible(Backups.isEmpty());
    lstBackups->setCurrentItem(lstBackups->topLevelItem(0));
    lstBackups_Click();
    lstBackups->setFocus();
}

// The user.ini a backup was made of is where it goes back by default.
void dlgRestore::lstBackups_Click()
{
    const int row = lstBackups->indexOfTopLevelItem(lstBackups->currentItem());
    const bool chosen = row >= 0 && row < Backups.size();
    txtPreview->setPlainText(
        chosen ? Backups.at(row).botNames.join(QStringLiteral(", ")) : QString());
    if (chosen) {
        QStringList files;
        for (int i = 0; i < cmbTargets->count(); ++i)
            files.append(cmbTargets->itemData(i).toString());
        const QString source = BackupSource(Backups.at(row), files);
        if (!source.isEmpty())
            cmbTargets->setCurrentIndex(int(files.indexOf(source)));
    }
    cmdRestore->setEnabled(chosen && cmbTargets->count() > 0);
}

void dlgRestore::cmdRestore_Click()
{
    const int row = lstBackups->indexOfTopLevelItem(lstBackups->currentItem());
    if (row < 0 || row >= Backups.size() || cmbTargets->currentIndex() < 0)
        return;
    bool restored = false;
    {
        const BusyPointer busy;
        restored = RestoreBackup(Backups.at(row).fileName, cmbTargets->currentData().toString());
    }
    if (restored)
        accept();
}
