// options.ini, which every start and every command reads.
#include "fuzzsupport.h"

#include "configfiles/runerror.h"
#include "startup/options.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString dir = fuzzWorkDir();
    writeFuzzFile(dir + u"options.ini"_s, fuzzInput(data, size));
    AppOptions() = Options();
    try {
        LoadOptions();
    } catch (const RunError &) {
    }
    return 0;
}
