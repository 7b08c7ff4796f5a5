#include "voiceparser.h"

#include "intfields.h"
#include "intfile.h"
#include "modelcatalogue.h"
#include "tableslots.h"

#include "configfiles/errorreport.h"
#include "configfiles/fileops.h"
#include "configfiles/progress.h"

namespace {

bool isVoiceLine(QStringView lower)
{
    return findWord(lower, QStringView(u"botpack.voicemale")) >= 0
        || findWord(lower, QStringView(u"botpack.voicefemale")) >= 0
        || findWord(lower, QStringView(u"botpack.voiceboss")) >= 0;
}

QStringList readVoiceLines(const QString &path)
{
    QStringList kept;
    const QString text = ReadIntText(path);
    QString buffer;
    const QStringView lower = lowerCaseInto(text, buffer);
    LinesContaining lines(lower, QStringView(u"botpack.voice"));
    for (qsizetype start, end; lines.next(start, end);) {
        letEventLoopRun();
        if (isVoiceLine(lower.sliced(start, end - start)))
            kept.append(trimTrailingSpaces(QStringView(text).sliced(start, end - start)));
    }
    return kept;
}

// The kind by the metaclass's object name; -1 for a metaclass of no kind.
int voiceKindOf(const QString &metaClassField)
{
    const QString objectName
        = pieceAt(metaClassField.split(QLatin1Char('.')), 1, metaClassField).toLower();
    if (objectName == QStringView(u"voicemale"))
        return VoiceMale;
    if (objectName == QStringView(u"voicefemale"))
        return VoiceFemale;
    if (objectName == QStringView(u"voiceboss"))
        return VoiceBoss;
    return -1;
}

// The slot keeps what was stored before a failure, as the game's list does.
void addVoice(const QString &line)
{
    const QStringList fields = line.split(QLatin1Char(','));
    ModelCatalogue &catalogue = Catalogue();
    const qsizetype slot = takeFreeSlot(catalogue.VoiceList, catalogue.lookups.freeVoice,
        [](const VoiceEntry &voice) { return voice.VoiceClass.isEmpty(); });
    VoiceEntry &voice = catalogue.VoiceList[slot];
    voice.VoiceClass = valueAfterKey(fields.at(0));
    voice.Description = StripQuotes(dropLastChar(valueAfterKey(pieceAt(fields, 3, line))));
    const int kind = voiceKindOf(pieceAt(fields, 2, line));
    if (kind >= 0)
        voice.VoiceKind = static_cast<short>(kind);
}

} // namespace

void ParseVoice(const QString &path)
{
    const QString errorText = QStringLiteral("Unknown Error in modParseInt in Sub ParseVoice:");
    QString step = QStringLiteral("READ THE FILE INTO FILEARRAY");
    try {
        const QStringList lines = readVoiceLines(path);
        step = QStringLiteral("EXTRACT CLASS INFORMATION");
        for (const QString &line : lines) {
            letEventLoopRun();
            try {
                addVoice(line);
                currentProgress().advance();
            } catch (const RunError &error) {
                ProcessError(error, errorText + step);
            }
        }
    } catch (const RunError &error) {
        ProcessError(error, errorText + step);
    }
}
