#include "botsection.h"

#include "progress.h"
#include "textdocument.h"

BotSectionSpan FindBotSection(const TextDocument &document)
{
    const qsizetype count = document.lineCount();
    const qsizetype header = document.findLine(0, BotSectionHeader);
    if (header >= count)
        return { count, count, false };
    qsizetype end = header + 1;
    while (end < count && !document.line(end).content.isEmpty()) {
        letEventLoopRun();
        ++end;
    }
    return { header, end, true };
}
