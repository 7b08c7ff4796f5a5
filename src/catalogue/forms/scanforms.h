#pragma once

#include "catalogue/scan.h"

// The unmatched skin report and the pattern editor, plugged into the scan.
ScanForms CatalogueScanForms();
