#include "dlgImport.h"

#include "configfiles/forms/windowtools.h"
#include "configfiles/runerror.h"
#include "roster/rosterimport.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

dlgImport::dlgImport(QWidget *parent)
    : QDialog(parent)
    , lblFiles(namedLabel(this, "lblFiles", QStringLiteral("&Import the bot list of:")))
    , lstFiles(new QListWidget(this))
    , lblPreview(namedLabel(this, "lblPreview", QStringLiteral("&Bots:")))
    , txtPreview(new QPlainTextEdit(this))
    , cmdImport(new QPushButton(QStringLiteral("Import"), this))
    , CancelButton(new QPushButton(QStringLiteral("Cancel"), this))
{
    setObjectName("dlgImport");
    setWindowTitle("Import from Game");
    lstFiles->setObjectName("lstFiles");
    txtPreview->setObjectName("txtPreview");
    cmdImport->setObjectName("cmdImport");
    CancelButton->setObjectName("CancelButton");

    lblFiles->setBuddy(lstFiles);
    // Item views take no name from their label.
    lstFiles->setAccessibleName(QStringLiteral("User.ini files"));
    lblPreview->setBuddy(txtPreview);
    lstFiles->setMaximumHeight(fontMetrics().height() * 5);
    txtPreview->setReadOnly(true);
    txtPreview->setTabChangesFocus(true);
    cmdImport->setDefault(true);

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdImport, QDialogButtonBox::AcceptRole);
    buttons->addButton(CancelButton, QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblFiles);
    layout->addWidget(lstFiles);
    layout->addWidget(lblPreview);
    layout->addWidget(txtPreview, 1);
    layout->addWidget(buttons);

    connect(lstFiles, &QListWidget::currentRowChanged, this, &dlgImport::lstFiles_Click);
    connect(lstFiles, &QListWidget::itemActivated, this, &dlgImport::cmdImport_Click);
    connect(cmdImport, &QPushButton::clicked, this, &dlgImport::cmdImport_Click);
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    RemoveCloseMenu(this);
    const QFontMetrics metrics = fontMetrics();
    resize(QSize(metrics.averageCharWidth() * 96, metrics.height() * 18));
}

void dlgImport::setFiles(const QStringList &userIniFiles)
{
    const QSignalBlocker quiet(lstFiles);
    lstFiles->clear();
    for (const QString &file : userIniFiles) {
        auto *item = new QListWidgetItem(QDir::toNativeSeparators(file), lstFiles);
        item->setData(Qt::UserRole, file);
    }
    lstFiles->setCurrentRow(0);
    lstFiles_Click();
}

void dlgImport::showEvent(QShowEvent *event)
{
    if (!event->spontaneous()) {
        ChosenFile.clear();
        lstFiles->setFocus();
    }
    QDialog::showEvent(event);
}

// The names the game would field, so that the lists can be told apart.
void dlgImport::lstFiles_Click()
{
    const QListWidgetItem *item = lstFiles->currentItem();
    cmdImport->setEnabled(item != nullptr);
    if (!item) {
        txtPreview->clear();
        return;
    }
    QString preview;
    try {
        const RosterImport read = ImportRoster(item->data(Qt::UserRole).toString());
        QStringList names;
        for (const QString &name : read.roster.BotNames) {
            if (!name.isEmpty())
                names.append(name);
        }
        preview = read.sectionFound ? names.join(QStringLiteral(", "))
                                    : QStringLiteral("This file holds no bot list.");
    } catch (const RunError &error) {
        preview = error.message();
    }
    txtPreview->setPlainText(preview);
}

void dlgImport::cmdImport_Click()
{
    if (const QListWidgetItem *item = lstFiles->currentItem()) {
        ChosenFile = item->data(Qt::UserRole).toString();
        accept();
    }
}
