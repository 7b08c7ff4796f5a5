#include "rostercheck.h"

#include "roster/classchoices.h"

#include <QStringList>

#include <algorithm>

namespace {

// Free slots of the catalogue have empty names, which never match.
bool sameName(const QString &a, const QString &b)
{
    return !a.isEmpty() && a.compare(b, Qt::CaseInsensitive) == 0;
}

// A stored face names its texture in the game's short form or in full.
bool isFace(const FaceEntry &face, const QString &name)
{
    return sameName(face.FaceName, name) || sameName(GameFaceName(face.FaceName), name);
}

const MISCLASS *findClass(const QList<MISCLASS> &classes, const QString &name)
{
    const auto found = std::find_if(classes.begin(), classes.end(),
        [&](const MISCLASS &model) { return sameName(model.ClassName, name); });
    return found == classes.end() ? nullptr : &*found;
}

const SkinEntry *findSkin(const QList<SkinEntry> &skins, const QString &name)
{
    const auto found = std::find_if(skins.begin(), skins.end(),
        [&](const SkinEntry &skin) { return sameName(skin.SkinName, name); });
    return found == skins.end() ? nullptr : &*found;
}

const SkinEntry *findSkinAnywhere(const QList<MISCLASS> &classes, const QString &name)
{
    for (const MISCLASS &model : classes) {
        if (const SkinEntry *skin = findSkin(model.Skins, name))
            return skin;
    }
    return nullptr;
}

bool hasFace(const SkinEntry &skin, const QString &name)
{
    return std::any_of(skin.Faces.begin(), skin.Faces.end(),
        [&](const FaceEntry &face) { return isFace(face, name); });
}

bool faceInstalled(const QList<MISCLASS> &classes, const QString &name)
{
    return std::any_of(classes.begin(), classes.end(), [&](const MISCLASS &model) {
        return std::any_of(model.Skins.begin(), model.Skins.end(),
            [&](const SkinEntry &skin) { return hasFace(skin, name); });
    });
}

QString quoted(const QString &text)
{
    return u'"' + text + u'"';
}

QString notInstalled(const QString &kind, const QString &name)
{
    return kind + u' ' + quoted(name) + QStringLiteral(" is not installed");
}

} // namespace

QList<SlotProblem> CheckSlot(const BotRoster &roster, int slot, const ModelCatalogue &catalogue)
{
    const QList<MISCLASS> &classes = catalogue.MISCCLASSES;
    QList<SlotProblem> problems;
    const auto add = [&](SlotField field, const QString &value, const QString &text) {
        problems.append({ slot, field, value, text });
    };

    const QString &className = roster.BotClasses.at(slot);
    const MISCLASS *model = findClass(classes, className);
    if (!model)
        add(SlotField::Class, className,
            className.isEmpty() ? QStringLiteral("No class is set")
                                : notInstalled(QStringLiteral("Class"), className));

    // A skin of another model is installed, yet the game cannot put it on
    // this one; the faces are then looked for in that skin.
    const QString &skinName = roster.BotSkins.at(slot);
    const SkinEntry *skin = model ? findSkin(model->Skins, skinName) : nullptr;
    if (!skinName.isEmpty() && !skin) {
        skin = findSkinAnywhere(classes, skinName);
        if (!skin)
            add(SlotField::Skin, skinName, notInstalled(QStringLiteral("Skin"), skinName));
        else if (model)
            add(SlotField::Skin, skinName,
                QStringLiteral("Skin ") + quoted(skinName)
                    + QStringLiteral(" is not a skin of the class ") + quoted(model->Description));
    }

    const QString &faceName = roster.BotFaces.at(slot);
    if (!faceName.isEmpty() && !(skin && hasFace(*skin, faceName))) {
        if (!faceInstalled(classes, faceName))
            add(SlotField::Face, faceName, notInstalled(QStringLiteral("Face"), faceName));
        else if (skin)
            add(SlotField::Face, faceName,
                QStringLiteral("Face ") + quoted(faceName)
                    + QStringLiteral(" is not a face of the skin ") + quoted(skin->Description));
    }

    const QString &voice = roster.VoiceType.at(slot);
    if (!voice.isEmpty() && !sameName(voice, NoneItem)
        && VoiceDescription(catalogue.VoiceList, voice).isEmpty())
        add(SlotField::Voice, voice, notInstalled(QStringLiteral("Voice"), voice));
    return problems;
}

QList<SlotProblem> CheckRoster(const BotRoster &roster, const ModelCatalogue &catalogue)
{
    QList<SlotProblem> problems;
    for (int slot = 0; slot < BotSlotCount; ++slot)
        problems += CheckSlot(roster, slot, catalogue);
    return problems;
}

QString ProblemsText(const QList<SlotProblem> &problems)
{
    QStringList lines;
    for (const SlotProblem &problem : problems)
        lines.append(problem.text);
    return lines.join(u'\n');
}

QString SlotFieldName(SlotField field)
{
    switch (field) {
    case SlotField::Class:
        return QStringLiteral("class");
    case SlotField::Skin:
        return QStringLiteral("skin");
    case SlotField::Face:
        return QStringLiteral("face");
    case SlotField::Voice:
        return QStringLiteral("voice");
    }
    return {};
}
