// Applying a configuration to user.ini: the old [Botpack.ChallengeBotInfo]
// section is replaced, and every byte before its header and after its end
// must be kept; an apply that does not complete leaves the file as it was.
#include "fuzzsupport.h"

#include "configfiles/applyconfig.h"
#include "configfiles/configfile.h"
#include "configfiles/textdocument.h"
#include "roster/botroster.h"
#include "startup/options.h"

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

qsizetype lineBytes(const TextDocument &document, qsizetype from, qsizetype to)
{
    qsizetype bytes = 0;
    for (qsizetype i = from; i < to; ++i) {
        const TextDocument::Line line = document.line(i);
        bytes += line.content.size() + line.ending.size();
    }
    return bytes;
}

bool isHeader(QString text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return text.compare(u"[Botpack.ChallengeBotInfo]"_s, Qt::CaseInsensitive) == 0;
}

// What must survive the apply: the bytes before the old section's header
// and those from the line after its last non-empty line. Without a section
// the whole file comes first and nothing after.
struct KeptBytes
{
    QByteArray before;
    QByteArray after;
};

KeptBytes keptBytes(const QByteArray &old)
{
    const TextDocument document = TextDocument::fromBytes(old);
    qsizetype header = 0;
    while (header < document.lineCount() && !isHeader(document.text(header)))
        ++header;
    if (header == document.lineCount())
        return { old, {} };
    qsizetype end = header + 1;
    while (end < document.lineCount() && !document.line(end).content.isEmpty())
        ++end;
    const qsizetype fromHeader = lineBytes(document, header, document.lineCount());
    const qsizetype fromEnd = lineBytes(document, end, document.lineCount());
    return { old.first(old.size() - fromHeader), old.last(fromEnd) };
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString dir = fuzzWorkDir();
    static const bool configured = [&dir] {
        AppOptions().ConfigPath = dir;
        BotRoster roster;
        SetDefaults(roster);
        return SaveConfigAs(dir, u"Fuzz.qvn"_s, true, roster);
    }();
    if (!configured)
        std::abort();

    const QString userIni = dir + u"System/User.ini"_s;
    const QByteArray old = fuzzInput(data, size);
    writeFuzzFile(userIni, old);
    const bool applied = ApplyConfiguration(u"Fuzz.qvn"_s, false, { userIni }, false);
    const QByteArray now = readFuzzFile(userIni);
    if (!applied) {
        if (now != old)
            std::abort();
        return 0;
    }
    const KeptBytes kept = keptBytes(old);
    if (!now.startsWith(kept.before) || !now.endsWith(kept.after)
        || now.size() < kept.before.size() + kept.after.size())
        std::abort();
    return 0;
}
