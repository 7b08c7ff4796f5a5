#pragma once

#include "configfiles/runerror.h"

#include <QString>
#include <QStringList>

// Taking declaration lines apart by position: comma-separated fields, each
// "Key=value". A line that lacks a field or piece the extraction needs raises
// RunError 9; one that leaves nothing to cut raises RunError 5.

namespace IntErr {
enum : int { InvalidCall = 5, SubscriptOutOfRange = 9 };
}

RunError subscriptOutOfRange(const QString &detail);
RunError invalidCall(const QString &detail);

// pieces[index], or RunError 9 naming `text`, the text that was split.
QString pieceAt(const QStringList &pieces, qsizetype index, const QString &text);

// The rest of `field` after its first "=" at or after the 8th character, so
// that the "=" of "Object=" is passed over and the one after "Name" is found.
// Without such an "=" the whole field.
QString valueAfterKey(const QString &field);

// `text` without its last character (the ")" that closes a declaration);
// RunError 5 when there is none.
QString dropLastChar(const QString &text);

// The path's file name: what follows its last "\" or "/".
QString fileNameOf(const QString &path);
