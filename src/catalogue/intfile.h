#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>

// The game's .int files are usually ANSI, but the game also reads them as
// UTF-16LE or UTF-8 when they start with that byte-order mark, and add-ons
// ship all three, with CR LF, LF or CR line ends.

QString decodeIntText(QByteArrayView bytes);
QStringList decodeIntLines(QByteArrayView bytes);

// The text of the game's file at `path`, or the lines of one of the
// program's own lists kept in the same form (int.ini, pattern.ini), which are
// read up to a smaller size; an empty file has no lines. Throw RunError when
// the file cannot be read.
QString ReadIntText(const QString &path);
QStringList ReadIntFile(const QString &path);

// While one lives, ReadIntText and ReadIntFile take the files it keeps from
// memory instead of reading them again: the scan reads every file once to
// sort it and keeps those that its passes parse.
class IntFileCache
{
public:
    IntFileCache();
    ~IntFileCache();
    IntFileCache(const IntFileCache &) = delete;
    IntFileCache &operator=(const IntFileCache &) = delete;

    void keep(const QString &path, const QByteArray &bytes) { m_files.insert(path, bytes); }
    // The kept bytes of `path`, or null.
    static QByteArray find(const QString &path);

private:
    QHash<QString, QByteArray> m_files;
};

// Walks the lines of `text` (CR LF, LF or CR) one by one, without copying
// them.
class IntLines
{
public:
    explicit IntLines(QStringView text)
        : m_text(text)
    {
    }

    bool atEnd() const { return m_pos >= m_text.size(); }
    QStringView next();

private:
    QStringView m_text;
    qsizetype m_pos = 0;
};

// `text` in lower case, written into `buffer`, which keeps its memory from
// call to call. Letters are mapped one to one, so positions in the result
// are positions in `text`.
QStringView lowerCaseInto(QStringView text, QString &buffer);

// The first `word` in `text` at or after `from`; -1 when there is none.
// Quicker than a plain search for the words the scan looks for, as it runs
// from one occurrence of the word's rarest letter to the next.
qsizetype findWord(QStringView text, QStringView word, qsizetype from = 0);

// The lines of a text that contain a word, found by searching the whole
// lower-case text for it rather than each line in turn.
class LinesContaining
{
public:
    // `lower` is the text in lower case (lowerCaseInto), `word` lower case.
    LinesContaining(QStringView lower, QStringView word)
        : m_lower(lower)
        , m_word(word)
    {
    }

    // The next such line as [start, end), its line end left out; false
    // when there is none.
    bool next(qsizetype &start, qsizetype &end);

private:
    qsizetype lineStart(qsizetype searchedFrom, qsizetype hit) const;
    qsizetype lineEnd(qsizetype hit);

    QStringView m_lower;
    QStringView m_word;
    qsizetype m_pos = 0;
    // The first CR and LF at or after the last hit, once searched for.
    qsizetype m_nextCr = -1;
    qsizetype m_nextLf = -1;
};

// The line without the spaces at its end (tabs stay, as the game's own
// tools leave them).
QString trimTrailingSpaces(QStringView line);
