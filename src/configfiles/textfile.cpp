#include "textfile.h"

#include "runerror.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>
#include <QThread>

#include <algorithm>
#include <optional>

#ifdef Q_OS_WIN
#include <QDir>
#include <windows.h>
#endif
#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

// Windows builds of Qt without ICU know the ANSI code page only as "System".
bool ansiIsSystemCodePage()
{
#ifdef Q_OS_WIN
    static const bool system = !QStringDecoder("windows-1252").isValid();
    return system;
#else
    return false;
#endif
}

QStringDecoder ansiDecoder()
{
    if (ansiIsSystemCodePage())
        return QStringDecoder(QStringConverter::System);
    QStringDecoder decoder("windows-1252");
    return decoder.isValid() ? std::move(decoder) : QStringDecoder(QStringConverter::Latin1);
}

// Windows-1252 differs from Latin-1 only in 0x80 to 0x9F; most text has
// none of those, and Latin-1 decodes much faster.
bool decodesAsLatin1(QByteArrayView bytes)
{
    return !ansiIsSystemCodePage() && std::none_of(bytes.begin(), bytes.end(), [](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return value >= 0x80 && value <= 0x9F;
    });
}

RunError refusal(const QString &path, const QString &problem)
{
    return RunError(ErrNum::PathFileAccess, QFileInfo(path).fileName() + problem, path);
}

RunError notRegular(const QString &path)
{
    return refusal(path, QStringLiteral(" is not a regular file"));
}

RunError tooLarge(const QString &path, qint64 maxBytes)
{
    return refusal(path, QStringLiteral(" is larger than %1 MB").arg(maxBytes >> 20));
}

RunError folder(const QString &path)
{
    return refusal(path, QStringLiteral(" is a folder, not a file"));
}

// The error QFile reports for a file that cannot be opened.
RunError openFailure(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? RunError(ErrNum::PathFileAccess, path)
                                          : fileError(file, path);
}

// Opens `path` for reading when it is a regular file and returns its size.
// A FIFO would keep the opening waiting for a writer and a device would
// never end, so neither is read.
qint64 openRegularFile(QFile &file, const QString &path)
{
    // Unbuffered: QFile's buffer would only add a copy.
    const auto mode = QIODevice::ReadOnly | QIODevice::Unbuffered;
#ifdef Q_OS_UNIX
    // Opened without waiting, then looked at through the handle, so that
    // nothing can be put in its place in between.
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        throw openFailure(path);
    struct stat info = {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        throw S_ISDIR(info.st_mode) ? folder(path) : notRegular(path);
    }
    if (!file.open(fd, mode, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        throw fileError(file, path);
    }
    return info.st_size;
#else
    const QFileInfo info(path);
    if (info.isDir())
        throw folder(path);
    if (info.exists() && !info.isFile())
        throw notRegular(path);
    if (!file.open(mode))
        throw fileError(file, path);
    return file.size();
#endif
}

// The system's own files say they are empty and are read in growing pieces
// until they end; any other file in one piece of its size.
QByteArray readToEnd(QFile &file, const QString &path, qint64 size, qint64 maxBytes)
{
    if (size > maxBytes)
        throw tooLarge(path, maxBytes);
    QByteArray bytes;
    qint64 got = 0;
    do {
        if (got > maxBytes)
            throw tooLarge(path, maxBytes);
        bytes.resize(size > 0 ? size : std::min(maxBytes + 1, std::max(2 * got, qint64(4096))));
        const qint64 read = file.read(bytes.data() + got, bytes.size() - got);
        if (read < 0)
            throw fileError(file, path);
        got += read;
    } while (size == 0 && got == bytes.size());
    bytes.resize(got);
    return bytes;
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

// On Windows the final rename fails while a virus scanner, a sync client or
// the game holds the target open; it is usually released within moments.
constexpr int CommitAttempts = 5;

void waitBeforeRetry(int attempt)
{
    QThread::msleep(25u << attempt);
}

RunError readOnly(const QString &path)
{
    return RunError(ErrNum::PermissionDenied,
        QFileInfo(path).fileName() + QStringLiteral(" is read-only"), path);
}

RunError hardLinked(const QString &path)
{
    return refusal(path,
        QStringLiteral(" has another name (a hard link), which a replacement would leave with the "
                       "old content"));
}

// Who owns the file a replacement takes the place of.
struct FileIdentity
{
    uint owner;
    uint group;
};

// Refuses a file whose replacement would undo what the player set on it: a
// read-only file (by its bits, which root's access() ignores) or a file with
// more names than one, which a new file would split off. Returns its owner
// when it exists.
std::optional<FileIdentity> replaceableFile(const QString &path, int namesOfOurs = 0)
{
    const QFileInfo info(path);
    if (info.isDir())
        throw folder(path);
    if (!info.exists())
        return std::nullopt;
    if (!(info.permissions() & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther)))
        throw readOnly(path);
#ifdef Q_OS_UNIX
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    if (status.st_nlink > nlink_t(1 + namesOfOurs))
        throw hardLinked(path);
    return FileIdentity { status.st_uid, status.st_gid };
#else
    Q_UNUSED(namesOfOurs);
    return std::nullopt;
#endif
}

// The new file goes to the old one's owner and group where the process may
// give it away. Only root may (EPERM for anyone else), and a file that stays
// its writer's is all the others could make anyway.
void keepOwner(QSaveFile &file, const FileIdentity &identity)
{
#ifdef Q_OS_UNIX
    [[maybe_unused]] const int given = ::fchown(file.handle(), identity.owner, identity.group);
#else
    Q_UNUSED(file);
    Q_UNUSED(identity);
#endif
}

// A write that stopped short without an error of its own ran out of room.
RunError writeError(const QFileDevice &file, const QString &path)
{
    return file.error() == QFileDevice::NoError
        ? RunError(ErrNum::DiskFull, QStringLiteral("The disk is full"), path)
        : fileError(file, path);
}

// One attempt at replacing `path`; false when only the final rename failed
// and this is not the last attempt. A failed commit throws the temporary
// file away, so each attempt writes it anew.
bool tryReplace(const QString &path, const QList<QByteArrayView> &pieces,
    const std::optional<FileIdentity> &identity, bool lastAttempt)
{
    QSaveFile file(path);
    // Unbuffered, so that a short write shows in write()'s result instead of
    // vanishing in a flush that commit() does not report.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw fileError(file, path);
    if (identity)
        keepOwner(file, *identity);
    for (const QByteArrayView content : pieces) {
        if (file.write(content.data(), content.size()) != content.size()) {
            const RunError error = writeError(file, path);
            file.cancelWriting();
            throw error;
        }
    }
    if (file.commit())
        return true;
    if (lastAttempt || file.error() != QFileDevice::RenameError)
        throw fileError(file, path);
    return false;
}

} // namespace

QString decodeAnsi(QByteArrayView bytes)
{
    if (decodesAsLatin1(bytes))
        return QString::fromLatin1(bytes);
    // Building a decoder costs more than decoding a line with it.
    thread_local QStringDecoder decoder = ansiDecoder();
    decoder.resetState();
    return decoder.decode(bytes);
}

QByteArray encodeAnsi(QStringView text)
{
    thread_local QStringEncoder encoder = ansiEncoder();
    encoder.resetState();
    return encoder.encode(text);
}

LineBreak ByteLines::next()
{
    const qsizetype size = m_bytes.size();
    if (m_lf < m_start) {
        m_lf = m_bytes.indexOf('\n', m_start);
        if (m_lf < 0)
            m_lf = size;
    }
    const qsizetype cr = m_bytes.first(m_lf).indexOf('\r', m_start);
    LineBreak lineBreak { m_lf, m_lf < size ? m_lf + 1 : size };
    if (cr >= 0)
        lineBreak = { cr, cr + 1 == m_lf && m_lf < size ? m_lf + 1 : cr + 1 };
    m_start = lineBreak.next;
    return lineBreak;
}

QList<QByteArray> splitLines(QByteArrayView bytes)
{
    QList<QByteArray> lines;
    for (ByteLines walk(bytes); !walk.atEnd();) {
        const qsizetype start = walk.start();
        lines.append(bytes.sliced(start, walk.next().end - start).toByteArray());
    }
    return lines;
}

QByteArray readFileBytes(const QString &path, qint64 maxBytes)
{
    QFile file;
    const qint64 size = openRegularFile(file, path);
    return readToEnd(file, path, size, maxBytes);
}

QStringList readAnsiLines(const QString &path, qint64 maxBytes)
{
    const QString text = decodeAnsi(readFileBytes(path, maxBytes));
    const auto unitAt = [&text](qsizetype i) { return text[i].unicode(); };
    QStringList lines;
    for (qsizetype start = 0; start < text.size();) {
        const LineBreak lineBreak = findLineBreak(text.size(), start, unitAt);
        lines.append(text.sliced(start, lineBreak.end - start));
        start = lineBreak.next;
    }
    return lines;
}

void writeFileAtomically(const QString &path, QByteArrayView content)
{
    writeFileAtomically(path, QList<QByteArrayView> { content });
}

void writeFileAtomically(const QString &path, const QList<QByteArrayView> &pieces, int namesOfOurs)
{
    const std::optional<FileIdentity> identity = replaceableFile(path, namesOfOurs);
    for (int attempt = 1; !tryReplace(path, pieces, identity, attempt == CommitAttempts);
         ++attempt)
        waitBeforeRetry(attempt);
}

void writeScratchFile(const QString &path, QByteArrayView content)
{
    QFile file(path);
    // Unbuffered for the same reason as in tryReplace.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw fileError(file, path);
    if (file.write(content.data(), content.size()) != content.size())
        throw writeError(file, path);
}

bool addHardLink(const QString &path, const QString &newName)
{
#ifdef Q_OS_UNIX
    // A symbolic link is followed, so that the new name is the file's own.
    return ::linkat(AT_FDCWD, QFile::encodeName(path).constData(), AT_FDCWD,
               QFile::encodeName(newName).constData(), AT_SYMLINK_FOLLOW)
        == 0;
#elif defined(Q_OS_WIN)
    return CreateHardLinkW(reinterpret_cast<const wchar_t *>(QDir::toNativeSeparators(newName).utf16()),
               reinterpret_cast<const wchar_t *>(QDir::toNativeSeparators(path).utf16()), nullptr)
        != 0;
#else
    return false;
#endif
}

void checkReplaceable(const QString &path)
{
    replaceableFile(path);
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
