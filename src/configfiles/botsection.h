#pragma once

#include <QLatin1StringView>
#include <QtGlobal>

class TextDocument;

// The game's bot list in a user.ini: the section under this header, found
// in any capitals and with trailing spaces (a leading space makes it another
// section), and running to the first empty line after it. The apply
// replaces it, the import reads it, the restore puts a backup of it back.
inline constexpr QLatin1StringView BotSectionHeader("[Botpack.ChallengeBotInfo]");

// Where the first bot section of a document lies: its header line and the
// line after its last one (the empty line that ends it, or lineCount()).
// Without a section both are lineCount().
struct BotSectionSpan
{
    qsizetype header;
    qsizetype end;
    bool found;
};

BotSectionSpan FindBotSection(const TextDocument &document);
