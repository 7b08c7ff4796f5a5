#include "textfile.h"

#include "runerror.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>
#include <QThread>

namespace {

// Windows builds of Qt without ICU know the ANSI code page as "System".
QStringDecoder ansiDecoder()
{
    QStringDecoder decoder("windows-1252");
#ifdef Q_OS_WIN
    if (!decoder.isValid())
        return QStringDecoder(QStringConverter::System);
#endif
    return decoder.isValid() ? std::move(decoder) : QStringDecoder(QStringConverter::Latin1);
}

QStringEncoder ansiEncoder()
{
    QStringEncoder encoder("windows-1252");
#ifdef Q_OS_WIN
    if (!encoder.isValid())
        return QStringEncoder(QStringConverter::System);
#endif
    return encoder.isValid() ? std::move(encoder) : QStringEncoder(QStringConverter::Latin1);
}

bool commitWithRetries(QSaveFile &file)
{
    // On Windows the final rename fails while a virus scanner or the game
    // holds the target open; it is usually released within moments.
    for (int attempt = 0; attempt < 5; ++attempt) {
        if (file.commit())
            return true;
        if (file.error() != QFileDevice::RenameError)
            return false;
        QThread::msleep(50u << attempt);
    }
    return false;
}

} // namespace

QString decodeAnsi(QByteArrayView bytes)
{
    auto decoder = ansiDecoder();
    return decoder.decode(bytes);
}

QByteArray encodeAnsi(QStringView text)
{
    auto encoder = ansiEncoder();
    return encoder.encode(text);
}

QList<QByteArray> splitLines(QByteArrayView bytes)
{
    QList<QByteArray> lines;
    qsizetype start = 0;
    while (start < bytes.size()) {
        qsizetype end = bytes.indexOf('\n', start);
        const bool ended = end >= 0;
        if (!ended)
            end = bytes.size();
        qsizetype contentEnd = end;
        if (ended && contentEnd > start && bytes.at(contentEnd - 1) == '\r')
            --contentEnd;
        lines.append(bytes.sliced(start, contentEnd - start).toByteArray());
        start = end + 1;
    }
    return lines;
}

QByteArray readFileBytes(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw fileError(file, path);
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw fileError(file, path);
    return bytes;
}

QStringList readAnsiLines(const QString &path)
{
    QStringList lines;
    for (const QByteArray &line : splitLines(readFileBytes(path)))
        lines.append(decodeAnsi(line));
    return lines;
}

void writeFileAtomically(const QString &path, QByteArrayView content)
{
    QSaveFile file(path);
    // Unbuffered, so that a short write shows in write()'s result instead of
    // vanishing in a flush that commit() does not report.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw fileError(file, path);
    if (file.write(content.data(), content.size()) != content.size()) {
        const RunError error = file.error() == QFileDevice::NoError
                                   ? RunError(ErrNum::DiskFull, path)
                                   : fileError(file, path);
        file.cancelWriting();
        throw error;
    }
    if (!commitWithRetries(file))
        throw fileError(file, path);
}

QByteArray joinAnsiLines(const QStringList &lines)
{
    QByteArray bytes;
    for (const QString &line : lines) {
        bytes += encodeAnsi(line);
        bytes += "\r\n";
    }
    return bytes;
}

void writeAnsiLines(const QString &path, const QStringList &lines)
{
    writeFileAtomically(path, joinAnsiLines(lines));
}
