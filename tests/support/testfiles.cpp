#include "testfiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
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

QString byteDifference(const QByteArray &actual, const QByteArray &expected)
{
    qsizetype at = 0;
    while (at < actual.size() && at < expected.size() && actual.at(at) == expected.at(at))
        ++at;
    if (at == actual.size() && at == expected.size())
        return {};
    const auto around = [at](const QByteArray &bytes) {
        QString text;
        for (const char byte : bytes.mid(qMax<qsizetype>(0, at - 16), 48))
            text += byte == '\r'            ? QString("<CR>")
                : byte == '\n'              ? QString("<LF>")
                : byte >= ' ' && byte < 127 ? QString(QLatin1Char(byte))
                                            : QString::asprintf("<%02X>", quint8(byte));
        return text;
    };
    return QString("byte %1: %2 | expected: %3").arg(at).arg(around(actual), around(expected));
}

QStringList testDataLines(const QString &name)
{
    return QString::fromUtf8(readTestFile(testDataDir() + name)).split(u'\n', Qt::SkipEmptyParts);
}

QString escaped(QString text)
{
    return text.replace('\r', "\\r").replace('\n', "\\n").replace('\t', "\\t");
}

QString expectedLine(const QString &tag, const QString &text)
{
    return escaped(tag + ':' + (text.isEmpty() ? "" : " ") + text);
}

QStringList expectedLines(const QString &name, const QStringList &said)
{
    QSet<QString> tags;
    for (const QString &line : said)
        tags.insert(line.section(':', 0, 0));
    QStringList lines = testDataLines(name);
    lines.removeIf([&](const QString &line) { return !tags.contains(line.section(':', 0, 0)); });
    return lines;
}
