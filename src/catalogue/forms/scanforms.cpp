#include "scanforms.h"

#include "frmBadFiles.h"
#include "frmPattern.h"

#include "configfiles/forms/formregistry.h"

ScanForms CatalogueScanForms()
{
    ScanForms forms;
    forms.showUnmatchedReport = [](const QStringList &unmatchedPaths) {
        theForm<frmBadFiles>().ShowReport(unmatchedPaths);
    };
    forms.showPatternEditor = [] { theForm<frmPattern>().ShowEditor(); };
    return forms;
}
