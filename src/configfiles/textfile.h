#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// Windows text: 8-bit files in the ANSI code page (Windows-1252), lines
// ended by CR LF when written. When read, a line ends at CR LF, at LF or at
// a CR alone, as the game reads them.

QString decodeAnsi(QByteArrayView bytes);
QByteArray encodeAnsi(QStringView text);

// Where the line that starts at `start` ends (`end`, its ending left out)
// and where the next one starts; both are `size` for a last line without an
// ending. `unitAt(i)` is the text's i-th character.
struct LineBreak
{
    qsizetype end;
    qsizetype next;
};

template<typename UnitAt> LineBreak findLineBreak(qsizetype size, qsizetype start, UnitAt unitAt)
{
    for (qsizetype i = start; i < size; ++i) {
        const char16_t unit = unitAt(i);
        if (unit == u'\n')
            return { i, i + 1 };
        if (unit == u'\r')
            return { i, i + 1 < size && unitAt(i + 1) == u'\n' ? i + 2 : i + 1 };
    }
    return { size, size };
}

// The same for bytes, quicker: memchr finds the line ends, and the LF ahead
// is remembered, so that a file without one is not searched to its end at
// every CR.
class ByteLines
{
public:
    explicit ByteLines(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    bool atEnd() const { return m_start >= m_bytes.size(); }
    // Where the next line starts.
    qsizetype start() const { return m_start; }
    // Moves past the next line.
    LineBreak next();
    // Moves past the line that holds `pos`, at or after start().
    LineBreak nextFrom(qsizetype pos)
    {
        m_start = pos;
        return next();
    }

private:
    QByteArrayView m_bytes;
    qsizetype m_start = 0;
    qsizetype m_lf = -1;
};

// A final line without an ending is a line; an ending at the very end does
// not start another one.
QList<QByteArray> splitLines(QByteArrayView bytes);

// The most read of one file. The game's files (.int, user.ini) grow with
// add-ons and years of play; the program's own (options.ini, int.ini,
// pattern.ini, .qvn) hold a few kilobytes.
constexpr qint64 MaxGameFileBytes = qint64(64) << 20;
constexpr qint64 MaxProgramFileBytes = qint64(4) << 20;

// The whole file, when it is a regular file (after following links) of at
// most `maxBytes`. Throws RunError (53 when missing, 70 when unreadable, 75
// for a folder, a device or a FIFO and for a larger file, ...).
QByteArray readFileBytes(const QString &path, qint64 maxBytes = MaxGameFileBytes);
// Writes a file that is never the only copy of its content (a working
// copy), in place and without waiting for the disk. Throws RunError.
void writeScratchFile(const QString &path, QByteArrayView content);
// The lines of one of the program's own files, decoded.
QStringList readAnsiLines(const QString &path, qint64 maxBytes = MaxProgramFileBytes);

// Replaces `path` atomically: the old content stays until the new one is
// completely on disk. Throws RunError and leaves the old file untouched when
// anything fails (a short write included).
//
// A file whose replacement would undo what its owner set on it is refused:
// a read-only file (whoever runs the program), a file with a second name (a
// hard link), which the new file would split off. The new file keeps the
// old one's permissions and, where the process may, its owner and group.
void writeFileAtomically(const QString &path, QByteArrayView content);
// The same for content that comes in pieces, written one after the other.
// `namesOfOurs` second names the caller gave the file itself (addHardLink)
// are not held against it.
void writeFileAtomically(
    const QString &path, const QList<QByteArrayView> &pieces, int namesOfOurs = 0);
// Gives the file at `path` a second name in the same file system. While the
// file is replaced rather than rewritten, the second name keeps its old
// content, as a copy would, at no cost. False where the file system has no
// such names, or the new name is taken.
bool addHardLink(const QString &path, const QString &newName);
// Throws the RunError writeFileAtomically would throw for such a file.
void checkReplaceable(const QString &path);
void writeAnsiLines(const QString &path, const QStringList &lines);

QByteArray joinAnsiLines(const QStringList &lines);
