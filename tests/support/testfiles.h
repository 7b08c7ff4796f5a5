#pragma once

#include <QByteArray>
#include <QString>

// Small helpers for tests that work on real files in a temporary directory.

// Writes `content` to `path`, creating missing folders. Fails the test
// (QFAIL-style, by returning false) when it cannot.
bool writeTestFile(const QString &path, const QByteArray &content);
QByteArray readTestFile(const QString &path);

// The directory of the real game files shipped beside the project, and of
// this project's own test data; both end with a separator.
QString realWorldDir();
QString testDataDir();

// Lines joined with CR LF, each ended by it: the shape of the files the
// program writes.
QByteArray crlf(const QStringList &lines);
