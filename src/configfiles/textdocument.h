#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// A text file of the game's, held as it is on disk so that it can be edited
// line by line and written back with every untouched byte unchanged. The
// game's community patch reads ANSI, UTF-8 (with or without a byte-order
// mark) and UTF-16LE with a byte-order mark; a document keeps whichever it
// was given, and its own line ending for new lines.
class TextDocument
{
public:
    enum class Encoding { Ansi, Utf8, Utf16LE };

    // One line: its content and its ending (empty for a last line without
    // one), both encoded as in the file.
    struct Line
    {
        QByteArray content;
        QByteArray ending;
    };

    static TextDocument fromBytes(const QByteArray &bytes);
    // Throws RunError when the file cannot be read.
    static TextDocument load(const QString &path);

    QByteArray toBytes() const;

    Encoding encoding() const { return m_encoding; }
    bool hasByteOrderMark() const { return !m_byteOrderMark.isEmpty(); }

    QList<Line> &lines() { return m_lines; }
    const QList<Line> &lines() const { return m_lines; }
    QString text(const Line &line) const;

    // A new line holding `text`, ended the way this file ends its lines.
    Line makeLine(const QString &text) const;
    // The same for text that comes as ANSI bytes; an ANSI document takes the
    // bytes as they are.
    Line makeLineFromAnsi(const QByteArray &ansi) const;
    // The line ending of this file, encoded: CR LF unless the file uses LF.
    QByteArray newline() const { return m_newline; }

private:
    QByteArray encode(const QString &text) const;

    Encoding m_encoding = Encoding::Ansi;
    QByteArray m_byteOrderMark;
    QByteArray m_newline;
    QList<Line> m_lines;
};
