#pragma once

#include <QString>
#include <QStringList>

// Reads comma-and-line separated fields the way the program's old text
// files expect: leading blanks are skipped; a value in double quotes runs to
// the closing quote; any other value runs to the first comma or the end of
// the line. Reading goes on right after that delimiter, so a comma inside an
// unquoted value leaves the rest of its line to be read as the next field.
class FieldReader
{
public:
    explicit FieldReader(QStringList lines);

    bool atEnd() const { return m_line >= m_lines.size(); }
    // One field. Throws RunError 62 (input past end) when nothing is left.
    QString readField();
    // The rest of the current line, whole. Throws RunError 62 likewise.
    QString readLine();
    // 1-based number of the line the next read starts on.
    qsizetype lineNumber() const { return m_line + 1; }

private:
    void requireInput() const;
    void nextLine();

    QStringList m_lines;
    qsizetype m_line = 0;
    qsizetype m_column = 0;
};
