#include "fieldreader.h"

#include "runerror.h"

FieldReader::FieldReader(QStringList lines)
    : m_lines(std::move(lines))
{
}

void FieldReader::requireInput() const
{
    if (atEnd())
        throw RunError(ErrNum::InputPastEnd);
}

void FieldReader::nextLine()
{
    ++m_line;
    m_column = 0;
}

QString FieldReader::readLine()
{
    requireInput();
    const QString rest = m_lines.at(m_line).mid(m_column);
    nextLine();
    return rest;
}

QString FieldReader::readField()
{
    requireInput();
    const QString &line = m_lines.at(m_line);
    qsizetype pos = m_column;
    while (pos < line.size() && (line.at(pos) == QLatin1Char(' ') || line.at(pos) == QLatin1Char('\t')))
        ++pos;

    QString value;
    if (pos < line.size() && line.at(pos) == QLatin1Char('"')) {
        const qsizetype closing = line.indexOf(QLatin1Char('"'), pos + 1);
        const qsizetype valueEnd = closing < 0 ? line.size() : closing;
        value = line.mid(pos + 1, valueEnd - pos - 1);
        // Whatever stands between the closing quote and the next comma is
        // not part of any field.
        pos = closing < 0 ? line.size() : line.indexOf(QLatin1Char(','), closing);
        if (pos < 0)
            pos = line.size();
    } else {
        qsizetype comma = line.indexOf(QLatin1Char(','), pos);
        if (comma < 0)
            comma = line.size();
        value = line.mid(pos, comma - pos);
        pos = comma;
    }

    if (pos >= line.size())
        nextLine();
    else
        m_column = pos + 1;
    return value;
}
