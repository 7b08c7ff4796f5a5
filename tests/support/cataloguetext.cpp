#include "cataloguetext.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

QStringList catalogueText(const ModelCatalogue &catalogue)
{
    QStringList text;
    for (const MISCLASS &model : catalogue.MISCCLASSES) {
        QStringList skins;
        for (const SkinEntry &skin : model.Skins) {
            QStringList faces;
            for (const FaceEntry &face : skin.Faces) {
                if (!face.FaceName.isEmpty())
                    faces.append(face.FaceName + u'|' + face.Description);
            }
            if (!skin.Description.isEmpty())
                skins.append(skin.SkinName + u'|' + skin.Description
                    + (faces.isEmpty() ? QString() : u" ["_s + faces.join(u", ") + u']'));
        }
        if (!model.ClassName.isEmpty())
            text.append(model.ClassName + u'|' + model.Description + u'|' + model.SkinType
                + (skins.isEmpty() ? QString() : u": "_s + skins.join(u", ")));
    }
    for (const VoiceEntry &voice : catalogue.VoiceList) {
        if (!voice.VoiceClass.isEmpty())
            text.append(
                u"voice %1|%2|%3"_s.arg(voice.VoiceClass, voice.Description).arg(voice.VoiceKind));
    }
    for (const UnmatchedSkin &skin : catalogue.UnmatchedSkins) {
        if (!skin.FilePath.isEmpty())
            text.append(
                u"unmatched "_s + QFileInfo(skin.FilePath).fileName() + u'|' + skin.SkinType);
    }
    return text;
}

QStringList fileNames(QStringList paths)
{
    paths.removeAll(QString());
    for (QString &path : paths)
        path = QFileInfo(path).fileName();
    return paths;
}
