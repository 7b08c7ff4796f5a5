#pragma once

#include "catalogue/modelcatalogue.h"

#include <QString>
#include <QStringList>

// The occupied entries of a catalogue, one line each, so that a scan or a
// parse is compared as a whole:
//   "Class|Description|SkinType: Skin|Description [Face|Description, ...], ..."
//   "voice Class|Description|kind"
//   "unmatched <file name>|SkinType"
// Free slots are left out; a model without described skins has no ": ".
QStringList catalogueText(const ModelCatalogue &catalogue = Catalogue());

// The file names of the occupied slots of a file list.
QStringList fileNames(QStringList paths);
