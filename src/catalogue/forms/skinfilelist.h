#pragma once

#include <QString>
#include <QStringList>

class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

// Lists of skin files give a file's name a column of its own, first, so that
// however deep its folder, the name and its extension stay in view. The
// folder is the last column and gives way in its middle; the full path is
// each row's tooltip.

// A list named `name` with one column per header, the last for the folder.
QTreeWidget *skinFileList(QWidget *parent, const char *name, const QStringList &headers);
// Adds a row for the file at `path`.
QTreeWidgetItem *addSkinFile(QTreeWidget *list, const QString &path);
// The full path of the file a row shows.
QString skinFilePath(const QTreeWidgetItem *item);
