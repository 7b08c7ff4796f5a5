#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// Windows text: 8-bit files in the ANSI code page (Windows-1252), lines
// ended by CR LF when written, CR LF or LF accepted when read.

QString decodeAnsi(QByteArrayView bytes);
QByteArray encodeAnsi(QStringView text);

// Splits at LF, dropping a CR before it. A final line without an ending is a
// line; an ending at the very end does not start another one.
QList<QByteArray> splitLines(QByteArrayView bytes);

// Throws RunError (53 when missing, 70 when unreadable, ...).
QByteArray readFileBytes(const QString &path);
QStringList readAnsiLines(const QString &path);

// Replaces `path` atomically: the old content stays until the new one is
// completely on disk. Throws RunError and leaves the old file untouched when
// anything fails (a short write included).
void writeFileAtomically(const QString &path, QByteArrayView content);
void writeAnsiLines(const QString &path, const QStringList &lines);

QByteArray joinAnsiLines(const QStringList &lines);
