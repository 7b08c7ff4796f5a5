#include "classparser.h"

#include "intfields.h"
#include "intfile.h"
#include "modelcatalogue.h"

#include "configfiles/errorreport.h"
#include "configfiles/fileops.h"
#include "configfiles/progress.h"

namespace {

constexpr QStringView BotClassMark(u"botpack.bot");

struct SkinTypeWord
{
    QLatin1StringView key;
    QLatin1StringView skinType;
};

// The game's own models, by the part of the class name before "bot".
constexpr SkinTypeWord StandardModels[] = {
    { QLatin1StringView("tmale1"), QLatin1StringView("commando") },
    { QLatin1StringView("tmale2"), QLatin1StringView("soldier") },
    { QLatin1StringView("tfemale1"), QLatin1StringView("fcommando") },
    { QLatin1StringView("tfemale2"), QLatin1StringView("sgirl") },
    { QLatin1StringView("tboss"), QLatin1StringView("boss") },
    { QLatin1StringView("tskaarj"), QLatin1StringView("tskm") },
    { QLatin1StringView("tnali"), QLatin1StringView("tnalimesh") },
    { QLatin1StringView("tcow"), QLatin1StringView("tcowmesh") },
};

// The boss package's classes, by their whole name. The skin parser shares
// skins between the plain and the male-voice variants through these words.
constexpr SkinTypeWord BossModels[] = {
    { QLatin1StringView("skeletalcharsfix313.warbossbotfix313"),
        QLatin1StringView("warbossfixed") },
    { QLatin1StringView("skeletalcharsfix313.xanmk2botfix313"), QLatin1StringView("xanfixed") },
    { QLatin1StringView("skeletalcharsfix313.warbossmbotfix313"),
        QLatin1StringView("warbossfixedmale") },
    { QLatin1StringView("skeletalcharsfix313.xanmk2mbotfix313"),
        QLatin1StringView("xanfixedmale") },
    { QLatin1StringView("skeletalchars.warbossbot"), QLatin1StringView("warboss") },
    { QLatin1StringView("skeletalchars.xanmk2bot"), QLatin1StringView("xanmk2") },
};

template<std::size_t N> QString lookUp(const SkinTypeWord (&table)[N], const QString &lowerKey)
{
    for (const SkinTypeWord &entry : table) {
        if (entry.key == lowerKey)
            return entry.skinType;
    }
    return {};
}

bool isBossPackage(const QString &fileName)
{
    const QString lower = fileName.toLower();
    return lower == QLatin1StringView("skeletalcharsfix313.int")
        || lower == QLatin1StringView("skeletalchars.int");
}

QString bossSkinType(const QString &className)
{
    return lookUp(BossModels, className.toLower());
}

QString stemSkinType(const QString &className)
{
    const QString objectName = pieceAt(className.split(QLatin1Char('.')), 1, className);
    const qsizetype bot = objectName.toLower().indexOf(QLatin1StringView("bot"));
    if (bot < 0)
        throw invalidCall(className);
    const QString stem = objectName.first(bot);
    const QString standard = lookUp(StandardModels, stem.toLower());
    return standard.isEmpty() ? stem : standard;
}

// The class lines of the file, comments left out.
QStringList readClassLines(const QString &path)
{
    QStringList kept;
    const QString text = ReadIntText(path);
    QString buffer;
    LinesContaining lines(lowerCaseInto(text, buffer), BotClassMark);
    for (qsizetype start, end; lines.next(start, end);) {
        letEventLoopRun();
        const QStringView line = QStringView(text).sliced(start, end - start);
        if (!line.startsWith(QLatin1Char(';')))
            kept.append(trimTrailingSpaces(line));
    }
    return kept;
}

void growClasses()
{
    ModelCatalogue &catalogue = Catalogue();
    catalogue.MISCCLASSES.append(newClassSlot());
    catalogue.lookups.modelsIndexed = -1;
}

bool isFree(qsizetype slot)
{
    return Catalogue().MISCCLASSES.at(slot).ClassName.isEmpty();
}

qsizetype firstFreeClassSlot()
{
    ModelCatalogue &catalogue = Catalogue();
    qsizetype slot = catalogue.lookups.freeClass;
    if (slot >= catalogue.MISCCLASSES.size() || (slot > 0 && isFree(slot - 1)))
        slot = 0;
    while (slot < catalogue.MISCCLASSES.size() && !isFree(slot)) {
        letEventLoopRun();
        ++slot;
    }
    if (slot == catalogue.MISCCLASSES.size())
        growClasses();
    catalogue.lookups.freeClass = slot;
    return slot;
}

// Classes go into the current slot while it is free, else into the next.
void moveToFreeSlot(qsizetype &current)
{
    if (isFree(current))
        return;
    if (current == Catalogue().MISCCLASSES.size() - 1)
        growClasses();
    ++current;
}

MISCLASS &classAt(qsizetype slot)
{
    Catalogue().lookups.modelsIndexed = -1;
    return Catalogue().MISCCLASSES[slot];
}

void addBossClass(const QString &line, qsizetype &current)
{
    moveToFreeSlot(current);
    const QStringList fields = line.split(QLatin1Char(','));
    const QString className = pieceAt(fields.at(0).split(QLatin1Char('=')), 2, fields.at(0));
    const QString field3 = pieceAt(fields, 3, line);
    const QString description
        = StripQuotes(dropLastChar(pieceAt(field3.split(QLatin1Char('=')), 1, field3)));

    MISCLASS &model = classAt(current);
    model.ClassName = className;
    model.Description = description;
    const QString skinType = bossSkinType(className);
    if (!skinType.isEmpty())
        model.SkinType = skinType;
}

// The slot keeps what was stored before a failure, as the game's list does.
void addClass(const QString &line, qsizetype &current)
{
    const QStringList fields = line.split(QLatin1Char(','));
    moveToFreeSlot(current);
    MISCLASS &model = classAt(current);
    model.ClassName = valueAfterKey(fields.at(0));
    model.Description = StripQuotes(dropLastChar(valueAfterKey(pieceAt(fields, 3, line))));
    model.SkinType = stemSkinType(model.ClassName);
}

} // namespace

QString ClassSkinType(const QString &fileName, const QString &className)
{
    return isBossPackage(fileName) ? bossSkinType(className) : stemSkinType(className);
}

void ParseClass(const QString &path)
{
    const QString errorText = QStringLiteral("Unknown Error in modParseInt:");
    QString step = QStringLiteral("READ THE FILE INTO FILEARRAY");
    try {
        const QStringList lines = readClassLines(path);

        step = QStringLiteral("FIND FIRST AVAILABLE EMPTY SLOT IN MISCLASS");
        qsizetype current = firstFreeClassSlot();

        const bool boss = isBossPackage(fileNameOf(path));
        step = boss ? QStringLiteral("EXTRACT CLASS INFORMATION - New Boss Skins")
                    : QStringLiteral("EXTRACT CLASS INFORMATION - Other Than New Boss Skins");
        for (const QString &line : lines) {
            letEventLoopRun();
            try {
                if (boss)
                    addBossClass(line, current);
                else
                    addClass(line, current);
                currentProgress().advance();
            } catch (const RunError &error) {
                ProcessError(error, errorText + step);
            }
        }
    } catch (const RunError &error) {
        ProcessError(error, errorText + step);
    }
}
