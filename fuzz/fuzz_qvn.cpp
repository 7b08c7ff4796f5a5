// A configuration file (.qvn) as the editor opens it and as the apply list
// reads its description.
#include "fuzzsupport.h"

#include "configfiles/configfile.h"
#include "configfiles/runerror.h"
#include "roster/botroster.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString dir = fuzzWorkDir();
    writeFuzzFile(dir + u"Fuzz.qvn"_s, fuzzInput(data, size));
    BotRoster roster;
    try {
        OpenConfiguration(dir, u"Fuzz.qvn"_s, roster);
    } catch (const RunError &) {
    }
    try {
        ReadDescription(u"Fuzz.qvn"_s, dir);
    } catch (const RunError &) {
    }
    return 0;
}
