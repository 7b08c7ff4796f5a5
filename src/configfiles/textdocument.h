#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// A text file of the game's, held as it is on disk so that it can be edited
// line by line and written back with every untouched byte unchanged. The
// game's community patch reads ANSI, UTF-8 (with or without a byte-order
// mark) and UTF-16LE with a byte-order mark; a document keeps whichever it
// was given, and its own line ending for new lines.
//
// A user.ini can hold millions of short lines, so a document keeps the
// file's bytes in one piece and only where each line lies in them.
class TextDocument
{
public:
    enum class Encoding { Ansi, Utf8, Utf16LE };

    // One line on its own, taken from the document or made for it: its
    // content and its ending (empty for a last line without one), both
    // encoded as in the file.
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
    bool hasByteOrderMark() const { return m_byteOrderMarkSize > 0; }

    qsizetype lineCount() const { return m_lines.size(); }
    Line line(qsizetype index) const;
    QString text(qsizetype index) const;
    QString text(const Line &line) const;

    // Puts `lines` in place of the `count` lines from `first`. A last line
    // without an ending gets this file's own when lines come after it.
    void replaceLines(qsizetype first, qsizetype count, const QList<Line> &lines);
    // The line keeps its ending.
    void setContent(qsizetype index, const QByteArray &content);

    // A new line holding `text`, ended the way this file ends its lines.
    Line makeLine(const QString &text) const;
    // The same for text that comes as ANSI bytes; an ANSI document takes the
    // bytes as they are.
    Line makeLineFromAnsi(const QByteArray &ansi) const;
    // The line ending of this file, encoded: that of its first line, CR LF
    // when it has none.
    QByteArray newline() const { return m_newline; }

private:
    // Where a line's bytes, its ending included, lie in m_bytes. 32 bits
    // keep a document of short lines small; the readers stop far below.
    struct Span
    {
        quint32 start;
        quint32 size;
    };

    QByteArrayView bytesOf(Span span) const;
    qsizetype endingSize(QByteArrayView bytes) const;
    Span append(const Line &line);
    QString decode(QByteArrayView content) const;
    QByteArray encode(const QString &text) const;

    Encoding m_encoding = Encoding::Ansi;
    // The file as given, then the bytes of the lines put in since.
    QByteArray m_bytes;
    qsizetype m_byteOrderMarkSize = 0;
    QByteArray m_newline;
    QList<Span> m_lines;
    bool m_edited = false;
};
