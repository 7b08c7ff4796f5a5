#include "expectedblocks.h"

#include "testfiles.h"

QStringList expectedBlock(const QString &file, const QString &tag, const QStringList &actual)
{
    const QStringList lines = QString::fromUtf8(readTestFile(testDataDir() + file)).split('\n');
    QStringList block;
    for (qsizetype i = lines.indexOf('[' + tag + ']') + 1; i > 0 && i < lines.size(); ++i) {
        const QString &line = lines.at(i);
        if (line.startsWith('['))
            break;
        if (line.isEmpty())
            continue;
        const bool matches = line.endsWith('*') && actual.value(block.size()).startsWith(line.chopped(1));
        block << (matches ? actual.value(block.size()) : line);
    }
    return block;
}
