#include "skinparser.h"

#include "intfields.h"
#include "intfile.h"
#include "modelcatalogue.h"
#include "tableslots.h"

#include "configfiles/errorreport.h"
#include "configfiles/fileops.h"
#include "configfiles/progress.h"

#include <QSet>

#include <array>

namespace {

// The described texture lines of a skin file, kept with their lower-case
// form, which the face search compares against.
struct TextureLines
{
    QStringList lines;
    QStringList lower;
};

TextureLines readTextureLines(const QString &path)
{
    TextureLines kept;
    const QString text = ReadIntText(path);
    QString buffer;
    const QStringView lower = lowerCaseInto(text, buffer);
    LinesContaining lines(lower, QStringView(u"class=texture"));
    for (qsizetype start, end; lines.next(start, end);) {
        letEventLoopRun();
        const QStringView line = QStringView(text).sliced(start, end - start);
        const QStringView lowerLine = lower.sliced(start, end - start);
        // "description" after the line's "Object=(Name=" opening
        if (!line.startsWith(QLatin1Char(';'))
            && findWord(lowerLine, QStringView(u"description"), 12) >= 0) {
            kept.lines.append(trimTrailingSpaces(line));
            kept.lower.append(trimTrailingSpaces(lowerLine));
        }
    }
    return kept;
}

bool isFreeSkin(const SkinEntry &skin)
{
    return skin.Description.isEmpty();
}

qsizetype modelWithSkinType(const QString &lowerSkinType)
{
    ModelCatalogue &catalogue = Catalogue();
    CatalogueLookups &lookups = catalogue.lookups;
    if (lookups.modelsIndexed != catalogue.MISCCLASSES.size()) {
        lookups.modelBySkinType.clear();
        for (qsizetype i = catalogue.MISCCLASSES.size() - 1; i >= 0; --i)
            lookups.modelBySkinType.insert(catalogue.MISCCLASSES.at(i).SkinType.toLower(), i);
        lookups.modelsIndexed = catalogue.MISCCLASSES.size();
    }
    return lookups.modelBySkinType.value(lowerSkinType, -1);
}

// The model of the first pattern that lists `skinType`, or a null string.
QString patternModel(const QString &skinType)
{
    for (const SkinPattern &pattern : std::as_const(Catalogue().PatternList)) {
        for (const QString &entry : pattern.SkinTypes) {
            if (!entry.isEmpty() && entry == skinType)
                return pattern.Model;
        }
    }
    return {};
}

void recordUnmatched(const QString &path, const QString &skinType)
{
    ModelCatalogue &catalogue = Catalogue();
    const qsizetype slot = takeFreeSlot(catalogue.UnmatchedSkins, catalogue.lookups.freeUnmatched,
        [](const UnmatchedSkin &skin) { return skin.FilePath.isEmpty(); });
    catalogue.UnmatchedSkins[slot] = { path, skinType };
}

// Which boss variants a file's skins have been filed under.
enum BossVariant { XanFixed, XanFixedMale, WarBossFixed, WarBossFixedMale };
using BossVariantsDone = std::array<bool, 4>;

// With both boss variants switched on, the skins filed under one are filed
// under the other as well: the skin type to file them under next, if any.
QString sharedBossVariant(const QString &skinType, BossVariantsDone &done)
{
    struct Pair
    {
        QLatin1StringView skinType;
        BossVariant variant;
        QLatin1StringView otherSkinType;
        BossVariant other;
    };
    static constexpr Pair pairs[] = {
        { QLatin1StringView("xanfixed"), XanFixed, QLatin1StringView("xanfixedmale"),
            XanFixedMale },
        { QLatin1StringView("xanfixedmale"), XanFixedMale, QLatin1StringView("xanfixed"),
            XanFixed },
        { QLatin1StringView("warbossfixed"), WarBossFixed, QLatin1StringView("warbossfixedmale"),
            WarBossFixedMale },
        { QLatin1StringView("warbossfixedmale"), WarBossFixedMale,
            QLatin1StringView("warbossfixed"), WarBossFixed },
    };
    const QString lower = skinType.toLower();
    for (const Pair &pair : pairs) {
        if (pair.skinType != lower)
            continue;
        done[pair.variant] = true;
        if (Catalogue().BossMode == 0 && !done[pair.other])
            return pair.otherSkinType;
        return {};
    }
    return {};
}

// Each skin line starts a skin; the lines right after it that contain its
// name and are longer names are its faces.
void fileSkins(const TextureLines &file, qsizetype model)
{
    qsizetype i = 0;
    while (i < file.lines.size()) {
        letEventLoopRun();
        const QString name = GetSkinName(file.lines.at(i));
        const QString lowerName = name.toLower();
        const qsizetype slot = GetBlankSkinPosition(model);
        SkinEntry &skin = Catalogue().MISCCLASSES[model].Skins[slot];
        skin.SkinName = name;
        skin.Description = GetSkinDescription(file.lines.at(i));

        qsizetype face = 0;
        do {
            const QString faceName = GetSkinName(file.lines.at(i));
            if (face == skin.Faces.size() - 1)
                skin.Faces.append(FaceEntry());
            if (faceName.size() > name.size()) {
                skin.Faces[face] = { faceName, GetSkinDescription(file.lines.at(i)) };
                ++face;
            }
            ++i;
        } while (i < file.lines.size() && findWord(file.lower.at(i), lowerName) >= 0);
    }
}

} // namespace

QString GetSkinName(const QString &line)
{
    const QString field0 = line.left(line.indexOf(QLatin1Char(',')));
    QString name = field0.mid(field0.lastIndexOf(QLatin1Char('=')) + 1);
    const qsizetype dot = name.indexOf(QLatin1Char('.'));
    const QChar last = name.isEmpty() ? QChar() : name.back();
    if (name.size() - (dot + 1) == 5 && last >= QLatin1Char('1') && last <= QLatin1Char('9'))
        name.chop(1);
    return StripQuotes(name);
}

QString GetSkinDescription(const QString &line)
{
    const QString lastField = line.mid(line.lastIndexOf(QLatin1Char(',')) + 1);
    QString description = lastField.mid(lastField.indexOf(QLatin1Char('=')) + 1);
    if (description.endsWith(QLatin1Char(')')))
        description.chop(1);
    return StripQuotes(description);
}

QString GetSkinType(const QString &line)
{
    const QString name = line.left(line.indexOf(QLatin1Char(','))).mid(13);
    if (name.isEmpty())
        throw subscriptOutOfRange(line);
    QString skinType = name.left(name.indexOf(QLatin1Char('.')));
    for (const QLatin1StringView cut : { QLatin1StringView("_"), QLatin1StringView("skin") }) {
        const qsizetype at = skinType.toLower().indexOf(cut);
        if (at >= 0)
            skinType.truncate(at);
    }
    const QString lower = skinType.toLower();
    if (lower == QStringView(u"newxan"))
        return QStringLiteral("xanfixed");
    if (lower == QStringView(u"warmachineboss"))
        return QStringLiteral("warbossfixed");
    return skinType;
}

qsizetype LocateSkinType(QString &skinType, const QString &path)
{
    // Patterns may lead from skin type to skin type; one that comes round
    // again is a cycle that leads to no model.
    QSet<QString> followed;
    for (;;) {
        letEventLoopRun();
        const qsizetype model = modelWithSkinType(skinType.toLower());
        if (model >= 0)
            return model;
        followed.insert(skinType);
        const QString next = patternModel(skinType);
        if (next.isNull() || followed.contains(next))
            break;
        skinType = next;
    }
    recordUnmatched(path, skinType);
    return -1;
}

qsizetype GetBlankSkinPosition(qsizetype modelIndex)
{
    ModelCatalogue &catalogue = Catalogue();
    if (modelIndex < 0 || modelIndex >= catalogue.MISCCLASSES.size()) {
        ProcessError(subscriptOutOfRange(QString::number(modelIndex)),
            QStringLiteral("ERROR IN GetBlankSkinPosition"));
        return 0;
    }
    QList<qsizetype> &hints = catalogue.lookups.freeSkin;
    if (hints.size() <= modelIndex)
        hints.resize(modelIndex + 1, 0);
    return takeFreeSlot(
        catalogue.MISCCLASSES[modelIndex].Skins, hints[modelIndex], isFreeSkin, newSkinSlot());
}

void ParseSkin(const QString &path)
{
    const QString errorText = QStringLiteral("Unknown Error in modParseInt in Sub ParseSkin:");
    QString step = QStringLiteral("READ THE FILE INTO FILEARRAY");
    try {
        const TextureLines file = readTextureLines(path);
        // A file without described skins has no skin type and offers nothing.
        if (file.lines.isEmpty())
            return;

        step = QStringLiteral("GET_TMP_SKIN_TYPE");
        QString skinType = GetSkinType(file.lines.first());

        step = QStringLiteral("LOCATE_SKIN_TYPE_IN_MISCCLASSES");
        qsizetype model = LocateSkinType(skinType, path);
        if (model < 0)
            return;

        step = QStringLiteral("LOCATE SKIN POSITION IN MISCCLASSES");
        GetBlankSkinPosition(model);

        step = QStringLiteral("RETRIEVE SKIN AND FACES");
        BossVariantsDone done {};
        while (model >= 0) {
            fileSkins(file, model);
            skinType = sharedBossVariant(skinType, done);
            model = skinType.isEmpty() ? -1 : LocateSkinType(skinType, path);
        }
    } catch (const RunError &error) {
        ProcessError(error, errorText + step);
    }
}
