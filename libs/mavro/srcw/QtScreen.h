#pragma once

#include <QScreen>

#include "Core.h"

namespace mavro {

// The usable area of a screen in logical pixels. If there is no screen, as when the only one is
// unplugged, the area of the screen asked for last.
Rect UsableArea(const QScreen* screen);

}  // namespace mavro
