#include "skinfilelist.h"

#include <QHeaderView>
#include <QTreeWidget>

#include <algorithm>

namespace {

constexpr int PathRole = Qt::UserRole;

// The game's paths use either separator, whatever the system's.
qsizetype nameStart(const QString &path)
{
    return std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\'))) + 1;
}

} // namespace

QTreeWidget *skinFileList(QWidget *parent, const char *name, const QStringList &headers)
{
    auto *list = new QTreeWidget(parent);
    list->setObjectName(QString::fromLatin1(name));
    // A label set as buddy does not name an item view for a screen reader.
    list->setAccessibleName(QStringLiteral("Skin files"));
    list->setFont(QFont(QStringLiteral("Arial")));
    list->setColumnCount(int(headers.size()));
    list->setHeaderLabels(headers);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->setAlternatingRowColors(true);
    list->setTextElideMode(Qt::ElideMiddle);
    QHeaderView *header = list->header();
    header->setSectionsMovable(false);
    header->setStretchLastSection(true);
    for (int column = 0; column + 1 < headers.size(); ++column)
        header->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    return list;
}

QTreeWidgetItem *addSkinFile(QTreeWidget *list, const QString &path)
{
    auto *item = new QTreeWidgetItem(list);
    const qsizetype split = nameStart(path);
    item->setText(0, path.mid(split));
    item->setText(list->columnCount() - 1, path.left(split));
    item->setData(0, PathRole, path);
    for (int column = 0; column < list->columnCount(); ++column)
        item->setToolTip(column, path);
    return item;
}

QString skinFilePath(const QTreeWidgetItem *item)
{
    return item->data(0, PathRole).toString();
}
