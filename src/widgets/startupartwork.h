#pragma once

#include <QIcon>
#include <QPixmap>

// The program's own pictures, drawn rather than shipped so that they stay
// sharp at any display scale (`ratio` is the device pixel ratio).

// The splash screen's banner, 488 x 131.
QPixmap SplashPicture(qreal ratio);
// The window and task-bar icon, in the usual sizes.
QIcon ApplicationIcon();
