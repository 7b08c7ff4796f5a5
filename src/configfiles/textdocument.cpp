#include "textdocument.h"

#include "textfile.h"

#include <QStringDecoder>
#include <QStringEncoder>

namespace {

const QByteArray utf8Bom("\xEF\xBB\xBF");
const QByteArray utf16LeBom("\xFF\xFE");

// UTF-8 without a byte-order mark cannot be told from ANSI by its name; a
// file that has bytes above 127 and is valid UTF-8 throughout is taken as
// UTF-8, anything else as ANSI.
bool looksLikeUtf8(QByteArrayView bytes)
{
    bool nonAscii = false;
    for (char c : bytes) {
        if (static_cast<unsigned char>(c) >= 0x80) {
            nonAscii = true;
            break;
        }
    }
    if (!nonAscii)
        return false;
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    const QString decoded = decoder.decode(bytes);
    return !decoder.hasError() && !decoded.isEmpty();
}

// The bytes of one code unit for `ascii` in the given unit width.
QByteArray unit(char ascii, int width)
{
    QByteArray bytes(width, '\0');
    bytes[0] = ascii;
    return bytes;
}

} // namespace

TextDocument TextDocument::fromBytes(const QByteArray &bytes)
{
    TextDocument document;
    QByteArrayView body(bytes);
    if (bytes.startsWith(utf16LeBom)) {
        document.m_encoding = Encoding::Utf16LE;
        document.m_byteOrderMark = utf16LeBom;
    } else if (bytes.startsWith(utf8Bom)) {
        document.m_encoding = Encoding::Utf8;
        document.m_byteOrderMark = utf8Bom;
    } else if (looksLikeUtf8(bytes)) {
        document.m_encoding = Encoding::Utf8;
    }
    body = body.sliced(document.m_byteOrderMark.size());

    const int width = document.m_encoding == Encoding::Utf16LE ? 2 : 1;
    const QByteArray lf = unit('\n', width);
    const QByteArray cr = unit('\r', width);
    qsizetype start = 0;
    while (start < body.size()) {
        qsizetype end = start;
        while (end + width <= body.size() && body.sliced(end, width) != lf)
            end += width;
        if (end + width > body.size()) {
            document.m_lines.append({body.sliced(start).toByteArray(), {}});
            break;
        }
        qsizetype contentEnd = end;
        if (contentEnd - start >= width && body.sliced(contentEnd - width, width) == cr)
            contentEnd -= width;
        document.m_lines.append({body.sliced(start, contentEnd - start).toByteArray(),
                                 body.sliced(contentEnd, end + width - contentEnd).toByteArray()});
        start = end + width;
    }

    document.m_newline = cr + lf;
    if (!document.m_lines.isEmpty() && document.m_lines.first().ending == lf)
        document.m_newline = lf;
    return document;
}

TextDocument TextDocument::load(const QString &path)
{
    return fromBytes(readFileBytes(path));
}

QByteArray TextDocument::toBytes() const
{
    QByteArray bytes = m_byteOrderMark;
    for (const Line &line : m_lines)
        bytes += line.content + line.ending;
    return bytes;
}

QString TextDocument::text(const Line &line) const
{
    switch (m_encoding) {
    case Encoding::Ansi: return decodeAnsi(line.content);
    case Encoding::Utf8: return QString::fromUtf8(line.content);
    case Encoding::Utf16LE:
        return QString(reinterpret_cast<const QChar *>(line.content.constData()),
                       line.content.size() / 2);
    }
    return {};
}

QByteArray TextDocument::encode(const QString &text) const
{
    switch (m_encoding) {
    case Encoding::Ansi: return encodeAnsi(text);
    case Encoding::Utf8: return text.toUtf8();
    case Encoding::Utf16LE: {
        QStringEncoder encoder(QStringConverter::Utf16LE);
        return encoder.encode(text);
    }
    }
    return {};
}

TextDocument::Line TextDocument::makeLine(const QString &text) const
{
    return {encode(text), m_newline};
}

TextDocument::Line TextDocument::makeLineFromAnsi(const QByteArray &ansi) const
{
    if (m_encoding == Encoding::Ansi)
        return {ansi, m_newline};
    return makeLine(decodeAnsi(ansi));
}
