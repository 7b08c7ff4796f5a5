#include "filenamedialog.h"

#include "startup/options.h"

#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShowEvent>

FileNameDialog::FileNameDialog(QWidget *parent)
    : QDialog(parent)
    , lblFilelist(new QLabel(QStringLiteral("File List:"), this))
    , fileOne(new QListWidget(this))
    , lblFilename(new QLabel(QStringLiteral("File Name:"), this))
    , m_nameBox(new QLineEdit(this))
{
    lblFilelist->setObjectName("lblFilelist");
    fileOne->setObjectName("fileOne");
    lblFilename->setObjectName("lblFilename");
    lblFilelist->setBuddy(fileOne);
    // Lists do not take their name from a buddy label as other controls do.
    fileOne->setAccessibleName(QStringLiteral("File List"));
    lblFilename->setBuddy(m_nameBox);

    // Selecting, by mouse or arrow keys, takes the name; merely tabbing into
    // the list makes an item current without selecting it, and keeps what
    // was typed.
    connect(fileOne, &QListWidget::itemSelectionChanged, this, &FileNameDialog::takeName);
    connect(fileOne, &QListWidget::itemActivated, this, [this] { choose(); });
}

void FileNameDialog::finishLayout(QLayout *nameRow, const QList<QPushButton *> &buttons)
{
    auto *buttonColumn = new QVBoxLayout;
    for (QPushButton *button : buttons)
        buttonColumn->addWidget(button);
    buttonColumn->addStretch(1);

    auto *grid = new QGridLayout(this);
    grid->addWidget(lblFilelist, 0, 0);
    grid->addWidget(fileOne, 1, 0);
    grid->addLayout(buttonColumn, 1, 1);
    grid->addWidget(lblFilename, 2, 0);
    grid->addLayout(nameRow, 3, 0);
    grid->setRowStretch(1, 1);

    const QFontMetrics metrics = fontMetrics();
    resize(metrics.averageCharWidth() * 72, metrics.height() * 20);
    setTabOrder(m_nameBox, buttons.constFirst());
}

// A window restored by the window system keeps what the user has typed.
void FileNameDialog::showEvent(QShowEvent *event)
{
    if (!event->spontaneous()) {
        load();
        fillFileList();
        m_nameBox->clear();
        m_nameBox->setFocus();
    }
    QDialog::showEvent(event);
}

// Every file is listed, backups and all, so that a name in use is seen.
void FileNameDialog::fillFileList()
{
    const QSignalBlocker quiet(fileOne);
    fileOne->clear();
    fileOne->addItems(
        QDir(AppOptions().ConfigPath)
            .entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name | QDir::IgnoreCase));
}

void FileNameDialog::takeName()
{
    const QList<QListWidgetItem *> selected = fileOne->selectedItems();
    if (!selected.isEmpty())
        m_nameBox->setText(selected.constFirst()->text());
}
