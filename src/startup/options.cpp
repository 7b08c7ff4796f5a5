#include "options.h"

#include "programdirectory.h"

#include "configfiles/fieldreader.h"
#include "configfiles/fileops.h"
#include "configfiles/runerror.h"
#include "configfiles/textfile.h"

#include <QFileInfo>

#include <cmath>

namespace {

QString optionsFilePath()
{
    return ProgramDir() + QStringLiteral("options.ini");
}

QString withoutTrailingSpaces(QString text)
{
    qsizetype end = text.size();
    while (end > 0 && text.at(end - 1) == QLatin1Char(' '))
        --end;
    text.truncate(end);
    return text;
}

// Line 2 as the splash's check box takes it: a number (13 otherwise) that
// fits 16 bits (6) and is a check box state, 0, 1 or 2 (380). A refused
// value is not kept, so the start-up goes on as if there were no file.
qint16 autoCloseValue(const QString &field)
{
    bool isNumber = false;
    const double number = field.trimmed().toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        throw RunError(
            ErrNum::TypeMismatch, QStringLiteral("options.ini line 2: \"%1\"").arg(field));
    const double rounded = std::nearbyint(number);
    if (rounded < -32768 || rounded > 32767)
        throw RunError(ErrNum::Overflow, QStringLiteral("options.ini line 2: \"%1\"").arg(field));
    if (rounded < 0 || rounded > 2)
        throw RunError(
            ErrNum::InvalidPropertyValue, QStringLiteral("options.ini line 2: %1").arg(rounded));
    return qint16(rounded);
}

} // namespace

Options &AppOptions()
{
    static Options options;
    return options;
}

void LoadOptions()
{
    Options &options = AppOptions();
    const QString path = optionsFilePath();
    if (!QFileInfo::exists(path)) {
        options.FirstRun = true;
        return;
    }

    FieldReader file(readAnsiLines(path));
    file.readLine();
    options.AutoCloseSplash = autoCloseValue(file.readField());
    file.readLine();
    file.readLine();

    options.FirstRun = withoutTrailingSpaces(file.readField()) == QLatin1String("1");
    if (options.FirstRun)
        return;

    options.ConfigPath = AddBackslash(withoutTrailingSpaces(file.readField()));
    const QString gamePath = withoutTrailingSpaces(file.readField());
    options.UTPath = gamePath.isEmpty() ? gamePath : AddBackslash(gamePath);
}

void SaveOptions()
{
    const Options &options = AppOptions();
    writeAnsiLines(optionsFilePath(),
        { QStringLiteral("[SplashScreen]"), QString::number(options.AutoCloseSplash), QString(),
            QStringLiteral("[UTPath]"), QStringLiteral("0"), options.ConfigPath, options.UTPath });
}
