#pragma once

#include <QPixmap>

// The main window's small pictures, drawn rather than shipped so that they
// stay sharp at any display scale (`ratio` is the device pixel ratio).

constexpr int StateSymbolSize = 13;

// A green disc with a tick: the roster is saved.
QPixmap SavedSymbol(qreal ratio);
// An amber disc with a dot: the roster has changes not saved.
QPixmap NotSavedSymbol(qreal ratio);
// The badge of the partner fan site.
QPixmap PartnerLogo(qreal ratio);
