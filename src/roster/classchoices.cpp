#include "classchoices.h"

#include <optional>

namespace {

bool sameName(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

const MISCLASS *classAt(const QList<MISCLASS> &classes, qsizetype classIndex)
{
    return classIndex >= 0 && classIndex < classes.size() ? &classes.at(classIndex) : nullptr;
}

const SkinEntry *skinAt(const QList<MISCLASS> &classes, qsizetype classIndex, qsizetype skinIndex)
{
    const MISCLASS *model = classAt(classes, classIndex);
    if (!model || skinIndex < 0 || skinIndex >= model->Skins.size())
        return nullptr;
    return &model->Skins.at(skinIndex);
}

// The lists show every described entry; a free first slot means the table
// is empty, and free slots further on are passed over.
template<typename Entry> QStringList describedEntries(const QList<Entry> &entries)
{
    if (entries.isEmpty() || entries.first().Description.isEmpty())
        return { NoneItem };
    QStringList captions;
    captions.reserve(entries.size());
    for (const Entry &entry : entries) {
        if (!entry.Description.isEmpty())
            captions.append(entry.Description);
    }
    return captions;
}

// An empty name never matches: free slots have empty names too.
template<typename Entry, typename Matches>
qsizetype firstMatch(const QList<Entry> &entries, const QString &name, Matches matches)
{
    if (name.isEmpty())
        return 0;
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (matches(entries.at(i)))
            return i;
    }
    return 0;
}

void appendVoices(QStringList &captions, const QList<VoiceEntry> &voices, short kind)
{
    for (const VoiceEntry &voice : voices) {
        if (!voice.Description.isEmpty() && voice.VoiceKind == kind)
            captions.append(voice.Description);
    }
}

// The kind of voice a standard model speaks with, by its description.
std::optional<short> standardVoiceKind(const QString &description)
{
    static const QStringList male
        = { "male commando", "male soldier", "skaarj hybrid", "nali", "nali warcow" };
    static const QStringList female = { "female commando", "female soldier" };
    if (male.contains(description))
        return VoiceMale;
    if (female.contains(description))
        return VoiceFemale;
    if (description == u"boss")
        return VoiceBoss;
    return std::nullopt;
}

} // namespace

QStringList ClassCaptions(const QList<MISCLASS> &classes)
{
    QStringList captions;
    for (const MISCLASS &model : classes) {
        if (!model.Description.isEmpty())
            captions.append(model.Description);
    }
    if (captions.isEmpty())
        captions.append(NoneItem);
    return captions;
}

QStringList SkinCaptions(const QList<MISCLASS> &classes, qsizetype classIndex)
{
    const MISCLASS *model = classAt(classes, classIndex);
    return describedEntries(model ? model->Skins : QList<SkinEntry>());
}

QStringList FaceCaptions(const QList<MISCLASS> &classes, qsizetype classIndex, qsizetype skinIndex)
{
    const SkinEntry *skin = skinAt(classes, classIndex, skinIndex);
    return describedEntries(skin ? skin->Faces : QList<FaceEntry>());
}

QStringList VoiceCaptions(const ModelCatalogue &catalogue, qsizetype classIndex)
{
    const QList<MISCLASS> &classes = catalogue.MISCCLASSES;
    QStringList captions;

    // The voices follow the description of the first class of that name.
    QString key = ClassNameAt(classes, classIndex).toLower();
    for (const MISCLASS &model : classes) {
        if (model.ClassName.toLower() == key) {
            key = model.Description.toLower();
            break;
        }
    }

    if (const std::optional<short> kind = standardVoiceKind(key)) {
        appendVoices(captions, catalogue.VoiceList, *kind);
    } else {
        // An add-on model: female voices when its description says so. Each
        // class of the same description contributes its voices.
        for (const MISCLASS &model : classes) {
            if (model.Description.isEmpty())
                break;
            if (sameName(model.Description, key)) {
                const bool female = model.Description.contains(u"female", Qt::CaseInsensitive);
                appendVoices(captions, catalogue.VoiceList, female ? VoiceFemale : VoiceMale);
            }
        }
    }
    captions.append(NoVoiceItem);
    return captions;
}

qsizetype FindClassIndex(const QList<MISCLASS> &classes, const QString &className)
{
    return firstMatch(classes, className,
        [&](const MISCLASS &model) { return sameName(model.ClassName, className); });
}

qsizetype FindSkinIndex(
    const QList<MISCLASS> &classes, qsizetype classIndex, const QString &skinName)
{
    const MISCLASS *model = classAt(classes, classIndex);
    if (!model)
        return 0;
    return firstMatch(model->Skins, skinName,
        [&](const SkinEntry &skin) { return sameName(skin.SkinName, skinName); });
}

qsizetype FindFaceIndex(const QList<MISCLASS> &classes, qsizetype classIndex, qsizetype skinIndex,
    const QString &faceName)
{
    const SkinEntry *skin = skinAt(classes, classIndex, skinIndex);
    if (!skin)
        return 0;
    return firstMatch(skin->Faces, faceName, [&](const FaceEntry &face) {
        return sameName(face.FaceName, faceName) || sameName(GameFaceName(face.FaceName), faceName);
    });
}

QString GameFaceName(const QString &faceTexture)
{
    constexpr qsizetype prefixLength = 5;
    const qsizetype dot = faceTexture.indexOf(u'.');
    if (dot < 0 || faceTexture.size() - dot - 1 <= prefixLength)
        return faceTexture;
    return faceTexture.left(dot + 1) + faceTexture.mid(dot + 1 + prefixLength);
}

QString ClassNameAt(const QList<MISCLASS> &classes, qsizetype classIndex)
{
    const MISCLASS *model = classAt(classes, classIndex);
    return model ? model->ClassName : QString();
}

QString SkinNameAt(const QList<MISCLASS> &classes, qsizetype classIndex, qsizetype skinIndex)
{
    const SkinEntry *skin = skinAt(classes, classIndex, skinIndex);
    return skin ? skin->SkinName : QString();
}

QString FaceNameAt(
    const QList<MISCLASS> &classes, qsizetype classIndex, qsizetype skinIndex, qsizetype faceIndex)
{
    const SkinEntry *skin = skinAt(classes, classIndex, skinIndex);
    if (!skin || faceIndex < 0 || faceIndex >= skin->Faces.size())
        return QString();
    return skin->Faces.at(faceIndex).FaceName;
}

QString VoiceDescription(const QList<VoiceEntry> &voices, const QString &voiceType)
{
    for (const VoiceEntry &voice : voices) {
        if (!voice.VoiceClass.isEmpty() && sameName(voice.VoiceClass, voiceType))
            return voice.Description;
    }
    return QString();
}
