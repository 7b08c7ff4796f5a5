#include "bossmode.h"

#include "configfiles/filelock.h"
#include "configfiles/fileops.h"
#include "configfiles/progress.h"
#include "configfiles/textdocument.h"
#include "configfiles/textfile.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace {

bool isDeclaration(const QString &line)
{
    return line.startsWith(QLatin1Char('o'), Qt::CaseInsensitive);
}

bool isSwitchedOffDeclaration(const QString &line)
{
    return line.startsWith(QLatin1String(";o"), Qt::CaseInsensitive);
}

// The description in the declaration's last field, without its closing
// quote and parenthesis, in lower case.
QString declaredDescription(const QString &line)
{
    QString value = line.section(QLatin1Char(','), -1).section(QLatin1Char('='), -1);
    value.chop(2);
    return StripQuotes(value).toLower();
}

QString withoutTrailingSpaces(const QString &line)
{
    qsizetype end = line.size();
    while (end > 0 && line.at(end - 1) == QLatin1Char(' '))
        --end;
    return line.left(end);
}

// The line as the mode wants it: every declaration switched on first, then
// the variants the mode leaves out switched off again.
QString switchedLine(const QString &line, short mode)
{
    QString result = withoutTrailingSpaces(line);
    if (isSwitchedOffDeclaration(result))
        result.remove(0, 1);
    if (!isDeclaration(result))
        return result;
    const BossVariant variant = bossVariantOf(result);
    const bool off = (variant == BossVariant::Plain && mode != 0 && mode != 1)
        || (variant == BossVariant::MaleVoices && mode == 1);
    return off ? QLatin1Char(';') + result : result;
}

} // namespace

QString BossPackagePath(const QString &gameDir)
{
    const QString fileName = QStringLiteral("skeletalcharsfix313.int");
    const QString systemDir = AddBackslash(findPathNoCase(gameDir, QStringLiteral("System")));
    if (QFileInfo::exists(systemDir + fileName))
        return systemDir + fileName;
    // A System folder can hold thousands of files: one unsorted pass over
    // it, matching the name without regard to case, is all the lookup needs.
    QDirIterator files(systemDir, QDir::Files | QDir::Hidden | QDir::System);
    while (files.hasNext()) {
        const QString path = files.next();
        if (files.fileName().compare(fileName, Qt::CaseInsensitive) == 0)
            return QDir::toNativeSeparators(path);
    }
    return systemDir + fileName;
}

bool BossPackageExists(const QString &gameDir)
{
    return QFileInfo(BossPackagePath(gameDir)).isFile();
}

BossVariant bossVariantOf(const QString &line)
{
    const QString description = declaredDescription(line);
    if (description == QLatin1String("warboss [fixed]")
        || description == QLatin1String("xan ii [fixed]"))
        return BossVariant::Plain;
    if (description == QLatin1String("warboss [fixed/male voices]")
        || description == QLatin1String("xan ii [fixed/male voices]")
        || description == QLatin1String("xan mark ii [fixed/male voices]"))
        return BossVariant::MaleVoices;
    return BossVariant::None;
}

short ReadBossMode(const QString &gameDir)
{
    const QString path = BossPackagePath(gameDir);
    if (!QFileInfo(path).isFile())
        return 2;
    const TextDocument document = TextDocument::load(path);
    bool plain = false;
    bool maleVoices = false;
    for (qsizetype line = 0; line < document.lineCount(); ++line) {
        letEventLoopRun();
        // Trailing spaces would hide the description; a rewrite drops them.
        const QString text = withoutTrailingSpaces(document.text(line));
        if (!isDeclaration(text))
            continue;
        const BossVariant variant = bossVariantOf(text);
        plain = plain || variant == BossVariant::Plain;
        maleVoices = maleVoices || variant == BossVariant::MaleVoices;
    }
    if (plain && maleVoices)
        return 0;
    return plain ? 1 : 2;
}

void SetBossMode(short mode, const QString &gameDir)
{
    const QString path = BossPackagePath(gameDir);
    const FileLock lock(path);
    TextDocument document = TextDocument::load(path);
    for (qsizetype line = 0; line < document.lineCount(); ++line) {
        letEventLoopRun();
        const QString text = document.text(line);
        const QString switched = switchedLine(text, mode);
        // Lines the mode does not change keep their bytes as they are.
        if (switched != text)
            document.setContent(line, document.makeLine(switched).content);
    }
    writeFileAtomically(path, document.toBytes());
}

short BossModeOfChoice(int choice)
{
    switch (choice) {
    case 0:
        return 1;
    case 1:
        return 2;
    default:
        return 0;
    }
}

int BossChoiceOfMode(short mode)
{
    switch (mode) {
    case 0:
        return 2;
    case 1:
        return 0;
    default:
        return 1;
    }
}

QString BossChoiceText(short mode)
{
    if (mode == 0)
        return QStringLiteral("Currently both boss models are turned on.  You only need one "
                              "turned on.  I recommend the first choice below.");
    return QStringLiteral("Your current choice is marked below.");
}
