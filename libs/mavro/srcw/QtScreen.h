#pragma once

#include <QScreen>

#include "Core.h"

namespace mavro {

// The usable area of a screen in logical pixels. While there is none, as when the only screen is
// unplugged, that of the screen asked for last.
Rect UsableArea(const QScreen* screen);

}  // namespace mavro
