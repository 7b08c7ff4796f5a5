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

// UTF-8 without a byte-order mark cannot be told from ANSI by its name; a
// file that has bytes above 127 and is valid UTF-8 throughout is taken as
// UTF-8, anything else as ANSI.
bool looksLikeUtf8(QByteArrayView bytes)
{
    const bool nonAscii = std::any_of(
        bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    return nonAscii && bytes.isValidUtf8();
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

quint32 offset(qsizetype value)
{
    if (value > qsizetype(std::numeric_limits<quint32>::max()))
        throw RunError(ErrNum::Overflow, QStringLiteral("a text of more than 4 GB"));
    return quint32(value);
}

} // namespace

TextDocument TextDocument::fromBytes(const QByteArray &bytes)
{
    TextDocument document;
    document.m_bytes = bytes;
    offset(bytes.size());
    if (bytes.startsWith(utf16LeBom)) {
        document.m_encoding = Encoding::Utf16LE;
        document.m_byteOrderMarkSize = utf16LeBom.size();
    } else if (bytes.startsWith(utf8Bom)) {
        document.m_encoding = Encoding::Utf8;
        document.m_byteOrderMarkSize = utf8Bom.size();
    } else if (looksLikeUtf8(bytes)) {
        document.m_encoding = Encoding::Utf8;
    }

    const qsizetype bom = document.m_byteOrderMarkSize;
    const QByteArrayView body = QByteArrayView(bytes).sliced(bom);
    const int width = unitWidth(document.m_encoding);
    QList<Span> &lines = document.m_lines;
    const auto addLine = [&](qsizetype start, qsizetype next) {
        lines.append({ quint32(bom + start * width), quint32((next - start) * width) });
    };
    if (width == 1) {
        for (ByteLines walk(body); !walk.atEnd();) {
            const qsizetype start = walk.start();
            addLine(start, walk.next().next);
        }
    } else {
        const auto at = [body](qsizetype i) { return unitAt(body, 2, i); };
        for (qsizetype start = 0; start < body.size() / 2;) {
            const qsizetype next = findLineBreak(body.size() / 2, start, at).next;
            addLine(start, next);
            start = next;
        }
    }
    // An odd byte at the end of UTF-16 text ends its last line, or is one.
    if (body.size() % width != 0) {
        if (!lines.isEmpty() && document.endingSize(document.bytesOf(lines.last())) == 0)
            ++lines.last().size;
        else
            lines.append({ quint32(bytes.size() - 1), 1 });
    }
    lines.squeeze();

    if (!lines.isEmpty()) {
        const QByteArrayView first = document.bytesOf(lines.first());
        document.m_newline = first.last(document.endingSize(first)).toByteArray();
    }
    if (document.m_newline.isEmpty())
        document.m_newline = unit('\r', width) + unit('\n', width);
    return document;
}

TextDocument TextDocument::load(const QString &path)
{
    return fromBytes(readFileBytes(path));
}

QByteArray TextDocument::toBytes() const
{
    if (!m_edited)
        return m_bytes;
    qsizetype size = m_byteOrderMarkSize;
    for (const Span span : m_lines)
        size += span.size;
    QByteArray bytes;
    bytes.reserve(size);
    bytes += QByteArrayView(m_bytes).first(m_byteOrderMarkSize);
    for (const Span span : m_lines)
        bytes += bytesOf(span);
    return bytes;
}

QByteArrayView TextDocument::bytesOf(Span span) const
{
    return QByteArrayView(m_bytes).sliced(span.start, span.size);
}

qsizetype TextDocument::endingSize(QByteArrayView bytes) const
{
    const int width = unitWidth(m_encoding);
    const qsizetype units = bytes.size() % width == 0 ? bytes.size() / width : 0;
    if (units == 0)
        return 0;
    const char16_t last = unitAt(bytes, width, units - 1);
    if (last == u'\n')
        return (units > 1 && unitAt(bytes, width, units - 2) == u'\r' ? 2 : 1) * width;
    return last == u'\r' ? width : 0;
}

TextDocument::Line TextDocument::line(qsizetype index) const
{
    const QByteArrayView bytes = bytesOf(m_lines.at(index));
    const qsizetype ending = endingSize(bytes);
    return { bytes.chopped(ending).toByteArray(), bytes.last(ending).toByteArray() };
}

QString TextDocument::text(qsizetype index) const
{
    const QByteArrayView bytes = bytesOf(m_lines.at(index));
    return decode(bytes.chopped(endingSize(bytes)));
}

QString TextDocument::text(const Line &line) const
{
    return decode(line.content);
}

QString TextDocument::decode(QByteArrayView content) const
{
    switch (m_encoding) {
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
    if (!lines.isEmpty() && first > 0 && endingSize(bytesOf(m_lines.at(first - 1))) == 0)
        m_lines[first - 1] = append({ line(first - 1).content, m_newline });
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
    switch (m_encoding) {
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
    return { encode(text), m_newline };
}

TextDocument::Line TextDocument::makeLineFromAnsi(const QByteArray &ansi) const
{
    if (m_encoding == Encoding::Ansi)
        return { ansi, m_newline };
    return makeLine(decodeAnsi(ansi));
}
