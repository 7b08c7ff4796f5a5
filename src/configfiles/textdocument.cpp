#include "textdocument.h"

#include "runerror.h"
#include "textfile.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

const QByteArray utf8Bom("\xEF\xBB\xBF");
const QByteArray utf16LeBom("\xFF\xFE");

// Eight bytes at a time and a test per 256: a user.ini can be tens of
// megabytes.
bool isAscii(QByteArrayView bytes)
{
    constexpr quint64 HighBits = 0x8080808080808080u;
    constexpr qsizetype Block = 256;
    qsizetype i = 0;
    for (; i + Block <= bytes.size(); i += Block) {
        quint64 any = 0;
        for (qsizetype j = i; j < i + Block; j += 8) {
            quint64 word;
            std::memcpy(&word, bytes.data() + j, sizeof word);
            any |= word;
        }
        if (any & HighBits)
            return false;
    }
    return std::all_of(bytes.begin() + i, bytes.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// UTF-8 without a byte-order mark cannot be told from ANSI by its name; a
// file that has bytes above 127 and is valid UTF-8 throughout is taken as
// UTF-8, anything else as ANSI.
bool looksLikeUtf8(QByteArrayView bytes)
{
    return !isAscii(bytes) && bytes.isValidUtf8();
}

int unitWidth(TextDocument::Encoding encoding)
{
    return encoding == TextDocument::Encoding::Utf16LE ? 2 : 1;
}

// The i-th code unit of `bytes` in the given width, little-endian.
char16_t unitAt(QByteArrayView bytes, int width, qsizetype i)
{
    if (width == 1)
        return uchar(bytes[i]);
    return char16_t(uchar(bytes[2 * i]) | uchar(bytes[2 * i + 1]) << 8);
}

// The bytes of one code unit for `ascii` in the given unit width.
QByteArray unit(char ascii, int width)
{
    QByteArray bytes(width, '\0');
    bytes[0] = ascii;
    return bytes;
}

// How many of the bytes of a line end it.
qsizetype endingSize(QByteArrayView bytes, TextDocument::Encoding encoding)
{
    const int width = unitWidth(encoding);
    const qsizetype units = bytes.size() % width == 0 ? bytes.size() / width : 0;
    if (units == 0)
        return 0;
    const char16_t last = unitAt(bytes, width, units - 1);
    if (last == u'\n')
        return (units > 1 && unitAt(bytes, width, units - 2) == u'\r' ? 2 : 1) * width;
    return last == u'\r' ? width : 0;
}

// Whether the text of a line's content, without its trailing spaces, is
// `ascii` in any capitals.
bool holdsAscii(QByteArrayView content, TextDocument::Encoding encoding, QLatin1StringView ascii)
{
    const int width = unitWidth(encoding);
    if (content.size() % width != 0)
        return false;
    qsizetype units = content.size() / width;
    while (units > 0 && unitAt(content, width, units - 1) == u' ')
        --units;
    if (units != ascii.size())
        return false;
    const auto folded = [](char16_t unit) {
        return unit >= u'A' && unit <= u'Z' ? char16_t(unit + (u'a' - u'A')) : unit;
    };
    for (qsizetype i = 0; i < units; ++i) {
        if (folded(unitAt(content, width, i)) != folded(ascii[i].unicode()))
            return false;
    }
    return true;
}

quint32 offset(qsizetype value)
{
    if (value > qsizetype(std::numeric_limits<quint32>::max()))
        throw RunError(ErrNum::Overflow, QStringLiteral("a text of more than 4 GB"));
    return quint32(value);
}

} // namespace

TextDocument::Format TextDocument::formatOf(QByteArrayView file)
{
    Format format;
    if (file.startsWith(utf16LeBom)) {
        format.encoding = Encoding::Utf16LE;
        format.byteOrderMarkSize = utf16LeBom.size();
    } else if (file.startsWith(utf8Bom)) {
        format.encoding = Encoding::Utf8;
        format.byteOrderMarkSize = utf8Bom.size();
    } else if (looksLikeUtf8(file)) {
        format.encoding = Encoding::Utf8;
    }
    const QByteArrayView firstLine = file.first(lineEnd(file, format, format.byteOrderMarkSize));
    format.newline = firstLine.last(endingSize(firstLine, format.encoding)).toByteArray();
    if (format.newline.isEmpty()) {
        const int width = unitWidth(format.encoding);
        format.newline = unit('\r', width) + unit('\n', width);
    }
    return format;
}

TextDocument TextDocument::fromBytes(QByteArray bytes)
{
    const Format format = formatOf(bytes);
    return fromPart(std::move(bytes), format);
}

TextDocument TextDocument::fromPart(QByteArray part, const Format &format)
{
    TextDocument document;
    document.m_format = format;
    // Only a whole file starts with the byte-order mark.
    const QByteArrayView fileStart = QByteArrayView(part).first(std::min(part.size(), format.byteOrderMarkSize));
    if (fileStart != (format.encoding == Encoding::Utf16LE ? utf16LeBom : utf8Bom))
        document.m_format.byteOrderMarkSize = 0;
    // The document owns the only copy, so that lines put in later grow it
    // instead of copying it.
    document.m_bytes = std::move(part);
    offset(document.m_bytes.size());
    document.indexLines();
    return document;
}

qsizetype TextDocument::lineEnd(QByteArrayView file, const Format &format, qsizetype start)
{
    if (unitWidth(format.encoding) == 1)
        return ByteLines(file).nextFrom(start).next;
    // UTF-16 lines start at an even distance from the byte-order mark.
    const QByteArrayView body = file.sliced(format.byteOrderMarkSize);
    const auto at = [body](qsizetype i) { return unitAt(body, 2, i); };
    const qsizetype units = body.size() / 2;
    const qsizetype startUnit = (start - format.byteOrderMarkSize) / 2;
    const LineBreak lineBreak = findLineBreak(units, startUnit, at);
    // An odd byte at the end of UTF-16 text ends a last line without an
    // ending, or is a line of its own.
    if (lineBreak.end == units)
        return file.size();
    return format.byteOrderMarkSize + lineBreak.next * 2;
}

qsizetype TextDocument::findLineStart(
    QByteArrayView file, const Format &format, QLatin1StringView ascii)
{
    Q_ASSERT(!ascii.isEmpty() && QChar(ascii.front()).toLower() == QChar(ascii.front()).toUpper());
    const int width = unitWidth(format.encoding);
    const qsizetype bom = format.byteOrderMarkSize;
    const char first = ascii.front().toLatin1();
    for (qsizetype from = bom; from < file.size();) {
        const qsizetype hit = file.indexOf(first, from);
        if (hit < 0)
            return -1;
        from = hit + 1;
        const bool wholeUnit = (hit - bom) % width == 0
            && (width == 1 || (hit + 1 < file.size() && file[hit + 1] == '\0'));
        if (!wholeUnit)
            continue;
        if (hit > bom) {
            const char16_t before = unitAt(file.sliced(hit - width, width), width, 0);
            if (before != u'\n' && before != u'\r')
                continue;
        }
        const qsizetype end = lineEnd(file, format, hit);
        const QByteArrayView line = file.sliced(hit, end - hit);
        if (holdsAscii(line.chopped(endingSize(line, format.encoding)), format.encoding, ascii))
            return hit;
        // Each byte is looked at once however long the line.
        from = end;
    }
    return -1;
}

qsizetype TextDocument::nextEmptyLine(QByteArrayView file, const Format &format, qsizetype start)
{
    qsizetype next = lineEnd(file, format, start);
    while (next < file.size()) {
        const qsizetype end = lineEnd(file, format, next);
        const QByteArrayView line = file.sliced(next, end - next);
        if (endingSize(line, format.encoding) == line.size())
            break;
        next = end;
    }
    return next;
}

bool TextDocument::endsWithOpenLine(QByteArrayView file, const Format &format)
{
    const QByteArrayView body = file.sliced(std::min(file.size(), format.byteOrderMarkSize));
    return !body.isEmpty() && endingSize(body, format.encoding) == 0;
}

void TextDocument::indexLines()
{
    const QByteArrayView bytes = m_bytes;
    const qsizetype bom = m_format.byteOrderMarkSize;
    for (qsizetype start = bom; start < bytes.size();) {
        const qsizetype next = lineEnd(bytes, m_format, start);
        m_lines.append({ quint32(start), quint32(next - start) });
        start = next;
    }
    m_lines.squeeze();
}
TextDocument TextDocument::load(const QString &path)
{
    return fromBytes(readFileBytes(path));
}

QByteArray TextDocument::toBytes() const
{
    if (!m_edited)
        return m_bytes;
    qsizetype size = m_format.byteOrderMarkSize;
    for (const Span span : m_lines)
        size += span.size;
    QByteArray bytes;
    bytes.reserve(size);
    bytes += QByteArrayView(m_bytes).first(m_format.byteOrderMarkSize);
    // Lines that lie one after the other in m_bytes (all of those around a
    // replaced section) are copied as one block.
    for (qsizetype i = 0; i < m_lines.size();) {
        Span run = m_lines.at(i++);
        while (i < m_lines.size() && m_lines.at(i).start == run.start + run.size)
            run.size += m_lines.at(i++).size;
        bytes += bytesOf(run);
    }
    return bytes;
}

QByteArrayView TextDocument::bytesOf(Span span) const
{
    return QByteArrayView(m_bytes).sliced(span.start, span.size);
}

TextDocument::Line TextDocument::line(qsizetype index) const
{
    const QByteArrayView bytes = bytesOf(m_lines.at(index));
    const qsizetype ending = endingSize(bytes, m_format.encoding);
    return { bytes.chopped(ending).toByteArray(), bytes.last(ending).toByteArray() };
}

QString TextDocument::text(qsizetype index) const
{
    const QByteArrayView bytes = bytesOf(m_lines.at(index));
    return decode(bytes.chopped(endingSize(bytes, m_format.encoding)));
}

QString TextDocument::text(const Line &line) const
{
    return decode(line.content);
}

qsizetype TextDocument::findLine(qsizetype from, QLatin1StringView ascii) const
{
    for (qsizetype i = from; i < m_lines.size(); ++i) {
        const QByteArrayView bytes = bytesOf(m_lines.at(i));
        if (holdsAscii(bytes.chopped(endingSize(bytes, m_format.encoding)), m_format.encoding, ascii))
            return i;
    }
    return m_lines.size();
}

QString TextDocument::decode(QByteArrayView content) const
{
    switch (m_format.encoding) {
    case Encoding::Ansi:
        return decodeAnsi(content);
    case Encoding::Utf8:
        return QString::fromUtf8(content);
    case Encoding::Utf16LE: {
        QString text(content.size() / 2, Qt::Uninitialized);
        std::memcpy(text.data(), content.data(), size_t(text.size()) * 2);
        return text;
    }
    }
    return {};
}

TextDocument::Span TextDocument::append(const Line &line)
{
    const qsizetype start = m_bytes.size();
    m_bytes += line.content;
    m_bytes += line.ending;
    return { offset(start), offset(m_bytes.size() - start) };
}

void TextDocument::replaceLines(qsizetype first, qsizetype count, const QList<Line> &lines)
{
    if (!lines.isEmpty() && first > 0 && endingSize(bytesOf(m_lines.at(first - 1)), m_format.encoding) == 0)
        m_lines[first - 1] = append({ line(first - 1).content, m_format.newline });
    m_lines.remove(first, count);
    m_lines.insert(first, lines.size(), Span {});
    for (qsizetype i = 0; i < lines.size(); ++i)
        m_lines[first + i] = append(lines.at(i));
    m_edited = true;
}

void TextDocument::setContent(qsizetype index, const QByteArray &content)
{
    m_lines[index] = append({ content, line(index).ending });
    m_edited = true;
}

QByteArray TextDocument::encode(const QString &text) const
{
    switch (m_format.encoding) {
    case Encoding::Ansi:
        return encodeAnsi(text);
    case Encoding::Utf8:
        return text.toUtf8();
    case Encoding::Utf16LE: {
        QStringEncoder encoder(QStringConverter::Utf16LE);
        return encoder.encode(text);
    }
    }
    return {};
}

TextDocument::Line TextDocument::makeLine(const QString &text) const
{
    return { encode(text), m_format.newline };
}

TextDocument::Line TextDocument::makeLineFromAnsi(const QByteArray &ansi) const
{
    if (m_format.encoding == Encoding::Ansi)
        return { ansi, m_format.newline };
    return makeLine(decodeAnsi(ansi));
}
