#include "intfile.h"

#include "configfiles/textfile.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

// Windows-1252 differs from Latin-1 only in 0x80 to 0x9F; most files have
// none of those, and Latin-1 decodes much faster.
bool decodesAsLatin1(QByteArrayView bytes)
{
    return std::none_of(bytes.begin(), bytes.end(), [](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return value >= 0x80 && value <= 0x9F;
    });
}

IntFileCache *activeCache = nullptr;

QByteArray readBytes(const QString &path)
{
    const QByteArray kept = IntFileCache::find(path);
    return kept.isNull() ? readFileBytes(path) : kept;
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
    if (decodesAsLatin1(bytes))
        return QString::fromLatin1(bytes);
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
    return decodeIntText(readBytes(path));
}

QStringList ReadIntFile(const QString &path)
{
    return decodeIntLines(readBytes(path));
}

QStringView IntLines::next()
{
    qsizetype end = m_text.indexOf(QLatin1Char('\n'), m_pos);
    const qsizetype next = end < 0 ? m_text.size() : end + 1;
    if (end < 0)
        end = m_text.size();
    if (end > m_pos && m_text.at(end - 1) == QLatin1Char('\r'))
        --end;
    const QStringView line = m_text.sliced(m_pos, end - m_pos);
    m_pos = next;
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
    start = hit == 0 ? 0 : m_lower.lastIndexOf(QLatin1Char('\n'), hit - 1) + 1;
    end = m_lower.indexOf(QLatin1Char('\n'), hit);
    if (end < 0)
        end = m_lower.size();
    m_pos = end + 1;
    if (end > start && m_lower.at(end - 1) == QLatin1Char('\r'))
        --end;
    return true;
}

QString trimTrailingSpaces(QStringView line)
{
    qsizetype end = line.size();
    while (end > 0 && line.at(end - 1) == QLatin1Char(' '))
        --end;
    return line.first(end).toString();
}
