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

    // How a file is encoded and ends its lines.
    struct Format
    {
        Encoding encoding = Encoding::Ansi;
        qsizetype byteOrderMarkSize = 0;
        // That of its first line, CR LF when it has none.
        QByteArray newline;
    };

    static Format formatOf(QByteArrayView file);
    static TextDocument fromBytes(QByteArray bytes);
    // Lines cut out of a file of the given format, from the start of a line
    // after its byte-order mark on, as a document of their own.
    static TextDocument fromPart(QByteArray part, const Format &format);
    // Where in `file` the first line starts whose text, without its
    // trailing spaces, is `ascii` in any capitals; -1 when there is none.
    // Lines are found by their first character, which must be one without
    // capitals, and only those that start with it are read further, so that
    // a file of millions of lines is searched about as fast as memory is
    // read.
    static qsizetype findLineStart(
        QByteArrayView file, const Format &format, QLatin1StringView ascii);
    // Where the line that starts at `start` ends, its ending included.
    static qsizetype lineEnd(QByteArrayView file, const Format &format, qsizetype start);
    // Where the first empty line after the line at `start` starts, or the
    // file's end.
    static qsizetype nextEmptyLine(QByteArrayView file, const Format &format, qsizetype start);
    // Whether the file's last line has no ending.
    static bool endsWithOpenLine(QByteArrayView file, const Format &format);
    // Throws RunError when the file cannot be read.
    static TextDocument load(const QString &path);

    QByteArray toBytes() const;

    Encoding encoding() const { return m_format.encoding; }
    bool hasByteOrderMark() const { return m_format.byteOrderMarkSize > 0; }

    qsizetype lineCount() const { return m_lines.size(); }
    Line line(qsizetype index) const;
    QString text(qsizetype index) const;
    QString text(const Line &line) const;
    // The first line from `from` on whose text, without its trailing spaces,
    // is `ascii` in any capitals; lineCount() when there is none. The lines
    // are compared where they lie, undecoded, so that searching a user.ini
    // of millions of lines costs little more than reading it.
    qsizetype findLine(qsizetype from, QLatin1StringView ascii) const;

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
    QByteArray newline() const { return m_format.newline; }

private:
    // Where a line's bytes, its ending included, lie in m_bytes. 32 bits
    // keep a document of short lines small; the readers stop far below.
    struct Span
    {
        quint32 start;
        quint32 size;
    };

    void indexLines();
    QByteArrayView bytesOf(Span span) const;
    Span append(const Line &line);
    QString decode(QByteArrayView content) const;
    QByteArray encode(const QString &text) const;

    Format m_format;
    // The file as given, then the bytes of the lines put in since.
    QByteArray m_bytes;
    QList<Span> m_lines;
    bool m_edited = false;
};
