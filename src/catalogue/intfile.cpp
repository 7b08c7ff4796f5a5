#include "intfile.h"

#include "configfiles/textfile.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace {

IntFileCache *activeCache = nullptr;

QByteArray readBytes(const QString &path, qint64 maxBytes)
{
    const QByteArray kept = IntFileCache::find(path);
    return kept.isNull() ? readFileBytes(path, maxBytes) : kept;
}

// Knuth, Morris and Pratt's search, linear however the word and the text
// repeat themselves.
qsizetype findRepetitiveWord(QStringView text, QStringView word, qsizetype from)
{
    std::vector<qsizetype> border(size_t(word.size()), 0);
    for (qsizetype i = 1, matched = 0; i < word.size(); ++i) {
        while (matched > 0 && word[i] != word[matched])
            matched = border[size_t(matched - 1)];
        if (word[i] == word[matched])
            ++matched;
        border[size_t(i)] = matched;
    }
    for (qsizetype i = from, matched = 0; i < text.size(); ++i) {
        while (matched > 0 && text[i] != word[matched])
            matched = border[size_t(matched - 1)];
        if (text[i] == word[matched] && ++matched == word.size())
            return i + 1 - matched;
    }
    return -1;
}

// Letters by how rarely they occur in the lines of an .int file, rarest
// first; other characters rank last.
constexpr std::array<unsigned char, 128> RareLetterRanks = [] {
    std::array<unsigned char, 128> ranks {};
    ranks.fill(0xFF);
    const char letters[] = "xqjzkvwybp";
    for (unsigned char rank = 0; letters[rank] != '\0'; ++rank)
        ranks[static_cast<unsigned char>(letters[rank])] = rank;
    return ranks;
}();

// The position of the word's letter least likely in a line of an .int file
// (its first occurrence), or 0. Called for every search, so one pass.
qsizetype rarestLetter(QStringView word)
{
    qsizetype best = 0;
    unsigned char bestRank = 0xFF;
    for (qsizetype i = 0; i < word.size(); ++i) {
        const char16_t c = word.at(i).unicode();
        if (c < RareLetterRanks.size() && RareLetterRanks[c] < bestRank) {
            bestRank = RareLetterRanks[c];
            best = i;
        }
    }
    return best;
}

// Most files are ASCII throughout; for them the lower-casing works on four
// UTF-16 units at a time, as 16-bit lanes of a 64-bit word.
constexpr quint64 Lanes = 0x0001'0001'0001'0001ULL;

bool isAscii(const char16_t *text, qsizetype size)
{
    quint64 seen = 0;
    qsizetype i = 0;
    for (; i + 4 <= size; i += 4) {
        quint64 word;
        std::memcpy(&word, text + i, sizeof word);
        seen |= word;
    }
    for (; i < size; ++i)
        seen |= text[i];
    return (seen & (Lanes * 0xFF80)) == 0;
}

void lowerAscii(const char16_t *in, char16_t *out, qsizetype size)
{
    qsizetype i = 0;
    for (; i + 4 <= size; i += 4) {
        quint64 word;
        std::memcpy(&word, in + i, sizeof word);
        // Bit 7 of a lane says whether it is at least 'A', resp. beyond 'Z';
        // the lanes hold at most 0x7F, so the sums stay inside them.
        const quint64 fromA = word + Lanes * (0x80 - 'A');
        const quint64 beyondZ = word + Lanes * (0x80 - 'Z' - 1);
        word |= (fromA & ~beyondZ & (Lanes * 0x80)) >> 2;
        std::memcpy(out + i, &word, sizeof word);
    }
    for (; i < size; ++i) {
        const char16_t c = in[i];
        out[i] = c >= u'A' && c <= u'Z' ? char16_t(c + 32) : c;
    }
}

} // namespace

IntFileCache::IntFileCache()
{
    activeCache = this;
}

IntFileCache::~IntFileCache()
{
    activeCache = nullptr;
}

QByteArray IntFileCache::find(const QString &path)
{
    return activeCache ? activeCache->m_files.value(path) : QByteArray();
}

QString decodeIntText(QByteArrayView bytes)
{
    if (bytes.startsWith("\xFF\xFE"))
        return QStringDecoder(QStringConverter::Utf16LE).decode(bytes.sliced(2));
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return QStringDecoder(QStringConverter::Utf8).decode(bytes.sliced(3));
    return decodeAnsi(bytes);
}

QStringList decodeIntLines(QByteArrayView bytes)
{
    const QString text = decodeIntText(bytes);
    QStringList lines;
    for (IntLines walk(text); !walk.atEnd();)
        lines.append(walk.next().toString());
    return lines;
}

QString ReadIntText(const QString &path)
{
    return decodeIntText(readBytes(path, MaxGameFileBytes));
}

QStringList ReadIntFile(const QString &path)
{
    return decodeIntLines(readBytes(path, MaxProgramFileBytes));
}

QStringView IntLines::next()
{
    const auto unitAt = [this](qsizetype i) { return m_text[i].unicode(); };
    const LineBreak lineBreak = findLineBreak(m_text.size(), m_pos, unitAt);
    const QStringView line = m_text.sliced(m_pos, lineBreak.end - m_pos);
    m_pos = lineBreak.next;
    return line;
}

QStringView lowerCaseInto(QStringView text, QString &buffer)
{
    buffer.resize(text.size());
    char16_t *out = reinterpret_cast<char16_t *>(buffer.data());
    const char16_t *in = text.utf16();
    const qsizetype size = text.size();
    if (isAscii(in, size)) {
        lowerAscii(in, out, size);
        return buffer;
    }
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t c = in[i];
        if (c < 0x80) {
            out[i] = c >= u'A' && c <= u'Z' ? char16_t(c + 32) : c;
        } else if (QChar::isHighSurrogate(c) && i + 1 < size && QChar::isLowSurrogate(in[i + 1])) {
            const char32_t lower = QChar::toLower(QChar::surrogateToUcs4(c, in[i + 1]));
            out[i] = QChar::highSurrogate(lower);
            out[++i] = QChar::lowSurrogate(lower);
        } else {
            out[i] = char16_t(QChar::toLower(char32_t(c)));
        }
    }
    return buffer;
}

qsizetype findWord(QStringView text, QStringView word, qsizetype from)
{
    if (word.isEmpty())
        return from <= text.size() ? from : -1;
    if (text.size() - from < word.size())
        return -1;
    // The anchor search compares the word at each of the letter's places,
    // which for a long word can come close to its length times the text's.
    if (word.size() > 32)
        return findRepetitiveWord(text, word, from);
    const qsizetype anchor = rarestLetter(word);
    const QChar letter = word.at(anchor);
    for (qsizetype at = text.indexOf(letter, from + anchor); at >= 0;
         at = text.indexOf(letter, at + 1)) {
        const qsizetype start = at - anchor;
        if (start + word.size() <= text.size() && text.sliced(start, word.size()) == word)
            return start;
    }
    return -1;
}

bool LinesContaining::next(qsizetype &start, qsizetype &end)
{
    if (m_pos >= m_lower.size())
        return false;
    const qsizetype hit = findWord(m_lower, m_word, m_pos);
    if (hit < 0) {
        m_pos = m_lower.size();
        return false;
    }
    start = lineStart(m_pos, hit);
    end = lineEnd(hit);
    m_pos = end + 1;
    return true;
}

// Back from the hit no further than the search went through to reach it,
// which starts a line.
qsizetype LinesContaining::lineStart(qsizetype searchedFrom, qsizetype hit) const
{
    qsizetype start = hit;
    while (start > searchedFrom && m_lower[start - 1] != u'\n' && m_lower[start - 1] != u'\r')
        --start;
    return start;
}

// Where a CR or an LF next follows the hit. A search that went beyond it
// still holds for the next hit, so a text without CRs, or without LFs, is
// searched for them once.
qsizetype LinesContaining::lineEnd(qsizetype hit)
{
    const auto nextAfterHit = [this, hit](qsizetype &found, char c) {
        if (found < hit) {
            found = m_lower.indexOf(QLatin1Char(c), hit);
            if (found < 0)
                found = m_lower.size();
        }
        return found;
    };
    return std::min(nextAfterHit(m_nextCr, '\r'), nextAfterHit(m_nextLf, '\n'));
}

QString trimTrailingSpaces(QStringView line)
{
    qsizetype end = line.size();
    while (end > 0 && line.at(end - 1) == QLatin1Char(' '))
        --end;
    return line.first(end).toString();
}
