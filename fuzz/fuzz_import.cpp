// Importing the game's bot list from a user.ini: whatever the section holds,
// every value the editor gets is one its controls can show.
#include "fuzzsupport.h"

#include "configfiles/runerror.h"
#include "roster/rosterimport.h"

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

template<typename T> bool within(const SlotArray<T> &values, int low, int high)
{
    return std::all_of(values.begin(), values.end(),
        [=](T value) { return value >= low && value <= high; });
}

bool fitsTheControls(const BotRoster &roster)
{
    const bool teams = std::all_of(roster.BotTeams.begin(), roster.BotTeams.end(),
        [](qint16 team) { return (team >= 0 && team <= 3) || team == 255; });
    return teams && within(roster.BotSkills, 0, 6) && within(roster.BotAccuracy, -100, 100)
        && within(roster.Alertness, -100, 100) && within(roster.Camping, 0, 10)
        && within(roster.StrafingAbility, -10, 10) && within(roster.BotJumpy, 0, 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString userIni = fuzzWorkDir() + u"User.ini"_s;
    writeFuzzFile(userIni, fuzzInput(data, size));
    try {
        if (!fitsTheControls(ImportRoster(userIni).roster))
            std::abort();
    } catch (const RunError &) {
    }
    return 0;
}
