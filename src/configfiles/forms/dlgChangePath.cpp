#include "dlgChangePath.h"

#include "configfiles/fileops.h"
#include "configfiles/prompt.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum ItemData { PathRole = Qt::UserRole, FilledRole };

#ifdef Q_OS_WIN
constexpr Qt::CaseSensitivity FileNameCase = Qt::CaseInsensitive;
#else
constexpr Qt::CaseSensitivity FileNameCase = Qt::CaseSensitive;
#endif

template<typename Widget> Widget *named(Widget *widget, const char *name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QFrame *separator(QWidget *parent, const char *name)
{
    auto *line = named(new QFrame(parent), name);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

// "/"-separated, absolute and without "." or "..".
QString cleanAbsolute(const QString &path)
{
    return QDir::cleanPath(QDir::fromNativeSeparators(QFileInfo(path).absoluteFilePath()));
}

// The drive that holds `path`, as the drive list names it.
QString rootOf(const QString &path)
{
#ifdef Q_OS_WIN
    const QString clean = cleanAbsolute(path);
    if (clean.size() >= 2 && clean.at(1) == QLatin1Char(':'))
        return clean.left(2).toUpper() + QLatin1Char('\\');
#else
    Q_UNUSED(path);
#endif
    return QDir::toNativeSeparators(QDir::rootPath());
}

QString itemPath(const QTreeWidgetItem *item)
{
    return item->data(0, PathRole).toString();
}

} // namespace

dlgChangePath::dlgChangePath(QWidget *parent)
    : QDialog(parent)
    , lblDrive(named(new QLabel("Drive:", this), "lblDrive"))
    , driveOne(named(new QComboBox(this), "driveOne"))
    , lblFolder(named(new QLabel("Folder:", this), "lblFolder"))
    , dirOne(named(new QTreeWidget(this), "dirOne"))
    , Line1(separator(this, "Line1"))
    , cmdCreateFolder(named(new QPushButton("Create Folder", this), "cmdCreateFolder"))
    , OKButton(named(new QPushButton("OK", this), "OKButton"))
    , CancelButton(named(new QPushButton("Cancel", this), "CancelButton"))
    , Line2(separator(this, "Line2"))
    , lblNewFolder(named(new QLabel("New Folder:", this), "lblNewFolder"))
    , txtNewFolder(named(new QLineEdit(this), "txtNewFolder"))
    , cmdCreate(named(new QPushButton("Cancel", this), "cmdCreate"))
    , m_newFolderRow(new QWidget(this))
{
    setObjectName("dlgChangePath");
    setWindowTitle("Change Path...");

    lblDrive->setBuddy(driveOne);
    lblFolder->setBuddy(dirOne);
    dirOne->setAccessibleName(QStringLiteral("Folder")); // a buddy does not name a tree
    lblNewFolder->setBuddy(txtNewFolder);
    dirOne->setHeaderHidden(true);
    dirOne->setUniformRowHeights(true);
    dirOne->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    dirOne->header()->setStretchLastSection(false);
    for (const QFileInfo &drive : QDir::drives())
        driveOne->addItem(QDir::toNativeSeparators(drive.absoluteFilePath()));
    OKButton->setDefault(true);

    auto *buttonRow = new QHBoxLayout;
    buttonRow->addWidget(cmdCreateFolder);
    buttonRow->addStretch(1);
    buttonRow->addWidget(OKButton);
    buttonRow->addWidget(CancelButton);

    auto *newFolderLayout = new QGridLayout(m_newFolderRow);
    newFolderLayout->setContentsMargins(0, 0, 0, 0);
    newFolderLayout->addWidget(Line2, 0, 0, 1, 3);
    newFolderLayout->addWidget(lblNewFolder, 1, 0);
    newFolderLayout->addWidget(txtNewFolder, 1, 1);
    newFolderLayout->addWidget(cmdCreate, 1, 2);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblDrive);
    layout->addWidget(driveOne);
    layout->addWidget(lblFolder);
    layout->addWidget(dirOne, 1);
    layout->addWidget(Line1);
    layout->addLayout(buttonRow);
    layout->addWidget(m_newFolderRow);
    m_newFolderRow->hide();

    connect(driveOne, &QComboBox::currentIndexChanged, this, &dlgChangePath::driveOne_Change);
    connect(dirOne, &QTreeWidget::itemExpanded, this, &dlgChangePath::fillFolders);
    connect(cmdCreateFolder, &QPushButton::clicked, this, &dlgChangePath::cmdCreateFolder_Click);
    connect(txtNewFolder, &QLineEdit::textChanged, this, &dlgChangePath::txtNewFolder_Change);
    connect(cmdCreate, &QPushButton::clicked, this, &dlgChangePath::cmdCreate_Click);
    connect(OKButton, &QPushButton::clicked, this, &dlgChangePath::OKButton_Click);
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);

    driveOne_Change();
    resize(QSize(360, 420).expandedTo(sizeHint()));
}

// Each showing starts as a fresh dialog would; a window restored from the
// task bar is shown again by the window system and keeps its state.
void dlgChangePath::showEvent(QShowEvent *event)
{
    if (!event->spontaneous()) {
        SelectedFolder.clear();
        txtNewFolder->clear();
        setNewFolderRowOpen(false);
    }
    QDialog::showEvent(event);
}

void dlgChangePath::setDrive(const QString &drive)
{
    const int index = driveOne->findText(QDir::toNativeSeparators(drive), Qt::MatchFixedString);
    const QSignalBlocker blocker(driveOne);
    driveOne->setCurrentIndex(qMax(0, index));
    driveOne_Change();
}

void dlgChangePath::setPath(const QString &path)
{
    const QString root = rootOf(path);
    const int index = driveOne->findText(root, Qt::MatchFixedString);
    if (index >= 0 && index != driveOne->currentIndex()) {
        const QSignalBlocker blocker(driveOne);
        driveOne->setCurrentIndex(index);
    }
    // The tree starts afresh, so only the way down to the folder is open.
    dirOne->clear();
    const QString drive = driveOne->currentText();
    QTreeWidgetItem *item = addFolderItem(nullptr, drive, drive);
    const QString below = cleanAbsolute(path).mid(QDir::fromNativeSeparators(root).size());
    for (const QString &name : below.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        QTreeWidgetItem *child = childNamed(item, name);
        if (!child)
            break;
        item->setExpanded(true);
        item = child;
    }
    dirOne->setCurrentItem(item);
    dirOne->scrollToItem(item, QAbstractItemView::PositionAtCenter);
}

QString dlgChangePath::openPath() const
{
    if (const QTreeWidgetItem *item = dirOne->currentItem())
        return itemPath(item);
    if (dirOne->topLevelItemCount() > 0)
        return itemPath(dirOne->topLevelItem(0));
    return driveOne->currentText();
}

// A drive opens at the program's current folder when that lies on it, as
// the user last left it; otherwise at its root.
void dlgChangePath::driveOne_Change()
{
    const QString drive = driveOne->currentText();
    const QString current = QDir::toNativeSeparators(QDir::currentPath());
    setPath(current.startsWith(drive, FileNameCase) ? current : drive);
}

void dlgChangePath::cmdCreateFolder_Click()
{
    setNewFolderRowOpen(true);
}

void dlgChangePath::txtNewFolder_Change()
{
    if (txtNewFolder->text().isEmpty())
        cmdCreate->setText("Cancel");
    else if (cmdCreate->text() == QLatin1String("Cancel"))
        cmdCreate->setText("Create");
}

void dlgChangePath::cmdCreate_Click()
{
    if (cmdCreate->text() == QLatin1String("Create") && !createFolder(txtNewFolder->text()))
        return;
    setNewFolderRowOpen(false);
}

void dlgChangePath::OKButton_Click()
{
    SelectedFolder = AddBackslash(openPath());
    accept();
}

void dlgChangePath::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !m_newFolderRow->isHidden()) {
        setNewFolderRowOpen(false);
        return;
    }
    QDialog::keyPressEvent(event);
}

// The dialog grows by the row rather than taking its room from the tree,
// so the folder the new one goes into stays in view.
void dlgChangePath::setNewFolderRowOpen(bool open)
{
    if (open == m_newFolderRow->isHidden()) {
        const int rowHeight = m_newFolderRow->sizeHint().height() + layout()->spacing();
        m_newFolderRow->setVisible(open);
        resize(width(), height() + (open ? rowHeight : -rowHeight));
        layout()->activate();
        if (QTreeWidgetItem *parent = dirOne->currentItem())
            dirOne->scrollToItem(parent);
    }
    cmdCreateFolder->setEnabled(!open);
    CancelButton->setEnabled(!open);
    OKButton->setEnabled(!open);
    // Return in the name box creates the folder rather than ending the dialog.
    cmdCreate->setDefault(open);
    OKButton->setDefault(!open);
    if (open)
        txtNewFolder->setFocus();
    else if (!isHidden())
        dirOne->setFocus();
}

// A name the folder cannot take is reported and the row stays open, so the
// user can correct it.
bool dlgChangePath::createFolder(const QString &name)
{
    const QString parent = openPath();
    const QString path = AddBackslash(parent) + name;
    const QString crlf = QStringLiteral("\r\n");
    QString problem;
    if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\'))
        || name == QLatin1String(".") || name == QLatin1String(".."))
        problem = QStringLiteral("A folder name cannot contain \\ or / or be . or ..");
    else if (QFileInfo::exists(path))
        problem = QStringLiteral("A file or folder of that name already exists.");
    else if (!QDir().mkdir(path))
        problem = QStringLiteral("The name is not valid here, or the folder cannot be written to.");
    if (!problem.isEmpty()) {
        showMessage(QStringLiteral("Create Folder"),
            path + QStringLiteral(" could not be created.") + crlf + crlf + problem);
        txtNewFolder->setFocus();
        return false;
    }

    QTreeWidgetItem *item = dirOne->currentItem() ? dirOne->currentItem() : dirOne->topLevelItem(0);
    refillFolders(item);
    item->setExpanded(true);
    if (QTreeWidgetItem *created = childNamed(item, name))
        dirOne->setCurrentItem(created);
    // The new folder is now the highlighted one: a name left in the box
    // would make a second Create nest a folder of the same name in it.
    txtNewFolder->clear();
    return true;
}

QTreeWidgetItem *dlgChangePath::addFolderItem(
    QTreeWidgetItem *parent, const QString &name, const QString &path)
{
    auto *item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(dirOne);
    item->setText(0, name);
    item->setData(0, PathRole, path);
    item->setData(0, FilledRole, false);
    item->setIcon(0, style()->standardIcon(QStyle::SP_DirIcon));
    item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    return item;
}

// Folders are listed when their parent is first opened, so a deep tree
// costs nothing until the user goes there.
void dlgChangePath::fillFolders(QTreeWidgetItem *item)
{
    if (item->data(0, FilledRole).toBool())
        return;
    item->setData(0, FilledRole, true);
    const QString path = itemPath(item);
    const QStringList names = QDir(path).entryList(
        QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name | QDir::IgnoreCase);
    for (const QString &name : names)
        addFolderItem(item, name, AddBackslash(path) + name);
    item->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
}

void dlgChangePath::refillFolders(QTreeWidgetItem *item)
{
    qDeleteAll(item->takeChildren());
    item->setData(0, FilledRole, false);
    fillFolders(item);
}

QTreeWidgetItem *dlgChangePath::childNamed(QTreeWidgetItem *item, const QString &name)
{
    fillFolders(item);
    for (int i = 0; i < item->childCount(); ++i) {
        if (item->child(i)->text(0).compare(name, FileNameCase) == 0)
            return item->child(i);
    }
    return nullptr;
}
