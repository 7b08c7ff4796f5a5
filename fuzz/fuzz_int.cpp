// The scan of the game's .int files: the sorting by declarations and the
// class, skin and voice parsers. The input is split into files at each
// byte 1 (rare in text, even in UTF-16), so that skin files can meet the
// models of class files.
#include "fuzzsupport.h"

#include "catalogue/modelcatalogue.h"
#include "catalogue/patternfile.h"
#include "catalogue/scan.h"

#include <QDir>

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString gameDir = fuzzWorkDir() + u"game/"_s;
    QDir(gameDir).removeRecursively();
    const QList<QByteArray> files = fuzzInput(data, size).split('\x01');
    for (qsizetype i = 0; i < files.size() && i < 8; ++i)
        writeFuzzFile(gameDir + u"System/Fuzz%1.int"_s.arg(i), files.at(i));
    Catalogue().PatternList = ParsePatternLines({ u"Male,Fuzz"_s, u"Female,Hero,Skin"_s });
    ScanIntFiles(gameDir, gameDir + u"int.ini"_s);
    return 0;
}
