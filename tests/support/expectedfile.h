#pragma once

#include "testfiles.h"

#include <QRegularExpression>
#include <QStringList>
#include <QTest>

// The non-blank lines of the test data file `name` under the heading "[tag]"
// (the current row's tag unless given), up to the next heading: what a row of
// a table is expected to produce, kept out of the code where it is long.
inline QStringList expectedSection(
    const QString &name, const QString &tag = QTest::currentDataTag())
{
    const QStringList lines = QString(readTestFile(testDataDir() + name)).remove('\r').split('\n');
    const qsizetype start = lines.indexOf('[' + tag + ']') + 1;
    qsizetype end = start;
    while (start > 0 && end < lines.size() && !lines.at(end).startsWith('['))
        ++end;
    return start > 0 ? lines.mid(start, end - start).filter(QRegularExpression("."))
                     : QStringList { "no [" + tag + "] in " + name };
}

// `lines` as such a file holds them: escaped(), and `root` (a path ending
// with a separator) as "<root>/".
inline QStringList writtenDown(QStringList lines, const QString &root)
{
    for (QString &line : lines)
        line = escaped(line.replace(root, "<root>/"));
    return lines;
}

// `expected` with each line that ends in "*" replaced by the line of `actual`
// in its place when that one begins with the rest: for words the program
// passes on from the file system or a reader whose own tests check them.
inline QStringList matchingWildcards(QStringList expected, const QStringList &actual)
{
    for (qsizetype i = 0; i < expected.size(); ++i) {
        if (expected[i].endsWith('*') && actual.value(i).startsWith(expected[i].chopped(1)))
            expected[i] = actual.value(i);
    }
    return expected;
}
