#include "rostercheck.h"

#include "catalogue/intfile.h"
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

const SkinEntry *findSkin(const QList<SkinEntry> &skins, const QString &name)
{
    const auto found = std::find_if(skins.begin(), skins.end(),
        [&](const SkinEntry &skin) { return sameName(skin.SkinName, name); });
    return found == skins.end() ? nullptr : &*found;
}

bool hasFace(const SkinEntry &skin, const QString &name)
{
    return std::any_of(skin.Faces.begin(), skin.Faces.end(),
        [&](const FaceEntry &face) { return isFace(face, name); });
}

// Names are compared in any capitals. A large game has thousands of skins,
// and QString::toLower is the slow part of indexing them.
QString lowered(const QString &name)
{
    thread_local QString buffer;
    return lowerCaseInto(name, buffer).toString();
}

// The first entry of a name wins, as a search in the catalogue's order
// would find it; free slots have no name.
template<typename T>
void indexFirst(QHash<QString, const T *> &names, const QString &name, const T &entry)
{
    const QString key = lowered(name);
    if (!key.isEmpty() && !names.contains(key))
        names.insert(key, &entry);
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

InstalledContent::InstalledContent(const ModelCatalogue &catalogue)
    : m_catalogue(catalogue)
{
    for (const MISCLASS &model : catalogue.MISCCLASSES)
        indexFirst(m_classes, model.ClassName, model);
}

const QList<const SkinEntry *> &InstalledContent::skinsOfPackage(const QString &name) const
{
    const auto package = [](const QString &name) { return lowered(name.section(u'.', 0, 0)); };
    if (!m_packages) {
        m_packages.emplace();
        for (const MISCLASS &model : m_catalogue.MISCCLASSES) {
            for (const SkinEntry &skin : model.Skins) {
                if (!skin.SkinName.isEmpty())
                    (*m_packages)[package(skin.SkinName)].append(&skin);
            }
        }
    }
    static const QList<const SkinEntry *> none;
    const auto found = m_packages->constFind(package(name));
    return found == m_packages->cend() ? none : *found;
}

// The first skin of the name in the catalogue's order.
const SkinEntry *InstalledContent::skinAnywhere(const QString &name) const
{
    for (const SkinEntry *skin : skinsOfPackage(name)) {
        if (sameName(skin->SkinName, name))
            return skin;
    }
    return nullptr;
}

// A skin's faces are textures of its own package.
bool InstalledContent::faceAnywhere(const QString &name) const
{
    const QList<const SkinEntry *> &skins = skinsOfPackage(name);
    return std::any_of(
        skins.begin(), skins.end(), [&](const SkinEntry *skin) { return hasFace(*skin, name); });
}

QList<SlotProblem> InstalledContent::check(const BotRoster &roster, int slot) const
{
    QList<SlotProblem> problems;
    const auto add = [&](SlotField field, const QString &value, const QString &text) {
        problems.append({ slot, field, value, text });
    };

    const QString &className = roster.BotClasses.at(slot);
    const MISCLASS *model = m_classes.value(lowered(className));
    if (!model)
        add(SlotField::Class, className,
            className.isEmpty() ? QStringLiteral("No class is set")
                                : notInstalled(QStringLiteral("Class"), className));

    // A skin of another model is installed, yet the game cannot put it on
    // this one; the faces are then looked for in that skin.
    const QString &skinName = roster.BotSkins.at(slot);
    const SkinEntry *skin = model ? findSkin(model->Skins, skinName) : nullptr;
    if (!skinName.isEmpty() && !skin) {
        skin = skinAnywhere(skinName);
        if (!skin)
            add(SlotField::Skin, skinName, notInstalled(QStringLiteral("Skin"), skinName));
        else if (model)
            add(SlotField::Skin, skinName,
                QStringLiteral("Skin ") + quoted(skinName)
                    + QStringLiteral(" is not a skin of the class ") + quoted(model->Description));
    }

    const QString &faceName = roster.BotFaces.at(slot);
    if (!faceName.isEmpty() && !(skin && hasFace(*skin, faceName))) {
        if (!faceAnywhere(faceName))
            add(SlotField::Face, faceName, notInstalled(QStringLiteral("Face"), faceName));
        else if (skin)
            add(SlotField::Face, faceName,
                QStringLiteral("Face ") + quoted(faceName)
                    + QStringLiteral(" is not a face of the skin ") + quoted(skin->Description));
    }

    const QString &voice = roster.VoiceType.at(slot);
    if (!voice.isEmpty() && !sameName(voice, NoneItem)
        && VoiceDescription(m_catalogue.VoiceList, voice).isEmpty())
        add(SlotField::Voice, voice, notInstalled(QStringLiteral("Voice"), voice));
    return problems;
}

QList<SlotProblem> CheckSlot(const BotRoster &roster, int slot, const ModelCatalogue &catalogue)
{
    return InstalledContent(catalogue).check(roster, slot);
}

QList<SlotProblem> CheckRoster(const BotRoster &roster, const ModelCatalogue &catalogue)
{
    const InstalledContent installed(catalogue);
    QList<SlotProblem> problems;
    for (int slot = 0; slot < BotSlotCount; ++slot)
        problems += installed.check(roster, slot);
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
