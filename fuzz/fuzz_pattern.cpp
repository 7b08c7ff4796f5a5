// pattern.ini, read at every start, and the lines written back from it.
// Whether they read back as the same patterns is not checked: a skin type's
// trailing spaces go one save at a time.
#include "fuzzsupport.h"

#include "catalogue/modelcatalogue.h"
#include "catalogue/patternfile.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString dir = fuzzWorkDir();
    writeFuzzFile(dir + u"pattern.ini"_s, fuzzInput(data, size));
    LoadPatternList();
    ParsePatternLines(PatternLines(Catalogue().PatternList));
    return 0;
}
