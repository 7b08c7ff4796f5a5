#include "testfiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

bool writeTestFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    return file.write(content) == content.size();
}

QByteArray readTestFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

QByteArray crlf(const QStringList &lines)
{
    QByteArray bytes;
    for (const QString &line : lines)
        bytes += line.toLatin1() + "\r\n";
    return bytes;
}

QStringList testDataLines(const QString &name)
{
    return QString::fromUtf8(readTestFile(testDataDir() + name)).split(u'\n', Qt::SkipEmptyParts);
}
