#include "fuzzsupport.h"

#include "configfiles/prompt.h"
#include "startup/programdirectory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdlib>

QString fuzzWorkDir()
{
    static SilentPrompt prompt;
    static QTemporaryDir dir;
    static const bool installed = [] {
        installPrompt(&prompt);
        setProgramDir(dir.path() + u'/');
        return true;
    }();
    (void)installed;
    if (!dir.isValid())
        std::abort();
    return dir.path() + u'/';
}

QByteArray fuzzInput(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), qsizetype(size));
}

void writeFuzzFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        std::abort();
}

QByteArray readFuzzFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        std::abort();
    return file.readAll();
}
