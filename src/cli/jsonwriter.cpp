#include "jsonwriter.h"

void JsonWriter::beforeValue()
{
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (!m_empty.isEmpty()) {
        if (!m_empty.last())
            m_out += ',';
        m_empty.last() = false;
    }
}

void JsonWriter::open(char bracket)
{
    beforeValue();
    m_out += bracket;
    m_empty.append(true);
}

void JsonWriter::close(char bracket)
{
    m_empty.removeLast();
    m_out += bracket;
}

void JsonWriter::key(QStringView name)
{
    beforeValue();
    appendString(name);
    m_out += ':';
    m_afterKey = true;
}

void JsonWriter::value(QStringView text)
{
    beforeValue();
    appendString(text);
}

void JsonWriter::value(qint64 number)
{
    beforeValue();
    m_out += QByteArray::number(number);
}

void JsonWriter::value(const QStringList &texts)
{
    beginArray();
    for (const QString &text : texts)
        value(text);
    endArray();
}

void JsonWriter::appendPlain(QStringView text, bool ascii)
{
    if (!ascii) {
        m_out += text.toUtf8();
        return;
    }
    const qsizetype at = m_out.size();
    if (m_out.capacity() < at + text.size())
        m_out.reserve(2 * (at + text.size()));
    m_out.resize(at + text.size());
    char *out = m_out.data() + at;
    for (QChar c : text)
        *out++ = char(c.unicode());
}

void JsonWriter::appendString(QStringView text)
{
    static const char hex[] = "0123456789abcdef";
    m_out += '"';
    qsizetype plainFrom = 0;
    bool ascii = true;
    // Runs of characters that need no escape are copied as one piece.
    const auto flush = [&](qsizetype to) {
        if (to > plainFrom)
            appendPlain(text.sliced(plainFrom, to - plainFrom), ascii);
        ascii = true;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= 0x20 && c != u'"' && c != u'\\') {
            ascii = ascii && c < 0x80;
            continue;
        }
        flush(i);
        plainFrom = i + 1;
        switch (c) {
        case u'"':
            m_out += "\\\"";
            break;
        case u'\\':
            m_out += "\\\\";
            break;
        case u'\n':
            m_out += "\\n";
            break;
        case u'\r':
            m_out += "\\r";
            break;
        case u'\t':
            m_out += "\\t";
            break;
        default:
            m_out += "\\u00";
            m_out += hex[(c >> 4) & 0xF];
            m_out += hex[c & 0xF];
        }
    }
    flush(text.size());
    m_out += '"';
}
