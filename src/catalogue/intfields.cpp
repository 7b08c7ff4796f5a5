#include "intfields.h"

RunError subscriptOutOfRange(const QString &detail)
{
    return RunError(IntErr::SubscriptOutOfRange, QStringLiteral("Subscript out of range"), detail);
}

RunError invalidCall(const QString &detail)
{
    return RunError(
        IntErr::InvalidCall, QStringLiteral("Invalid procedure call or argument"), detail);
}

QString pieceAt(const QStringList &pieces, qsizetype index, const QString &text)
{
    if (index >= pieces.size())
        throw subscriptOutOfRange(text);
    return pieces.at(index);
}

QString valueAfterKey(const QString &field)
{
    return field.mid(field.indexOf(QLatin1Char('='), 7) + 1);
}

QString dropLastChar(const QString &text)
{
    if (text.isEmpty())
        throw invalidCall(text);
    return text.chopped(1);
}

QString fileNameOf(const QString &path)
{
    const qsizetype separator
        = std::max(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/')));
    return path.mid(separator + 1);
}
