#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QStringView>

// Writes compact JSON text straight into a buffer. The scan's catalogue runs
// to megabytes, which a QJsonDocument first builds as a tree and then
// serialises, for several times the cost of writing the text directly.
class JsonWriter
{
public:
    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    // The name of the next member of the current object.
    void key(QStringView name);
    void value(QStringView text);
    void value(qint64 number);
    void value(const QStringList &texts);

    const QByteArray &text() const { return m_out; }

private:
    void open(char bracket);
    void close(char bracket);
    void beforeValue();
    void appendString(QStringView text);
    void appendPlain(QStringView text, bool ascii);

    QByteArray m_out;
    QList<bool> m_empty; // per open bracket: nothing written in it yet
    bool m_afterKey = false;
};
