#pragma once

#include <QStringList>

// The lines under "[tag]" in the test data file `file`, up to the next such
// line, blank lines left out. An expected line ending in "*" stands for any
// that begins with the rest: it comes back as the line of `actual` in its
// place when that one does, so that a QCOMPARE of the two shows the first
// line that differs.
QStringList expectedBlock(const QString &file, const QString &tag, const QStringList &actual = {});
