#include "programdirectory.h"

#include "configfiles/fileops.h"

#include <QCoreApplication>
#include <QDir>

namespace {
QString overridden;
}

QString ProgramDir()
{
    if (!overridden.isEmpty())
        return overridden;
    return AddBackslash(QDir::toNativeSeparators(QCoreApplication::applicationDirPath()));
}

void setProgramDir(const QString &directory)
{
    overridden = directory.isEmpty() ? QString() : AddBackslash(QDir::toNativeSeparators(directory));
}
