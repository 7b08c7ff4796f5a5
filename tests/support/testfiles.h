#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

// Small helpers for tests that work on real files in a temporary directory.

// Writes `content` to `path`, creating missing folders. Fails the test
// (QFAIL-style, by returning false) when it cannot.
bool writeTestFile(const QString &path, const QByteArray &content);
QByteArray readTestFile(const QString &path);

// The directory of the real game files shipped beside the project, and of
// this project's own test data; both end with a separator.
inline QString realWorldDir()
{
    return QDir::toNativeSeparators(QUORVANE_REAL_WORLD "/");
}
inline QString testDataDir()
{
    return QDir::toNativeSeparators(QUORVANE_TEST_DATA "/");
}

// The lines of the test data file `name`, blank ones left out: an expected
// result that a test compares its joined result with.
QStringList testDataLines(const QString &name);

// Empty when `actual` is `expected` byte for byte; else the offset where
// they first part and the bytes from a little before it in each, line ends
// and bytes beyond ASCII written as <CR>, <LF>, <EB>: a readable failure for
// files that must match exactly.
QString byteDifference(const QByteArray &actual, const QByteArray &expected);

// Lines joined with CR LF, each ended by it: the shape of the files the
// program writes.
QByteArray crlf(const QStringList &lines);

// `text` with its line breaks and tabs written as \r, \n and \t, so that
// it stands on one line of an expected file.
QString escaped(QString text);

// "tag: text", escaped: one line of a file of expected messages. Tags hold
// no colon.
QString expectedLine(const QString &tag, const QString &text);
// The lines of the expected file `name` in the test data whose tags are
// among those of `said`: rows a platform leaves out are left out here too.
QStringList expectedLines(const QString &name, const QStringList &said);
