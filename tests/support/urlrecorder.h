#pragma once

#include <QObject>
#include <QUrl>

// Stands in for the desktop (QDesktopServices::setUrlHandler): remembers
// what the program asked it to open.
class UrlRecorder : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> opened;

public slots:
    void open(const QUrl &url) { opened.append(url); }
};
