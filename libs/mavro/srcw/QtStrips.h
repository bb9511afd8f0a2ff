#pragma once

#include <QIcon>

namespace mavro {

// A picture of a registered strip, sharp at every scale that the strip was drawn for, with its
// grayed look for disabled buttons. Empty for a strip or an index that doesn't exist.
QIcon StripIcon(int stripId, int index);
// The size of a strip's pictures in logical pixels; empty for a strip that isn't registered.
QSize StripPictureSize(int stripId);
// A picture that is in no strip, such as the application's icon, in its sizes of up to 128 pixels:
// no window shows a larger one, and that would take as much memory as a hundred toolbar buttons.
QIcon ResourceIcon(int id);

}  // namespace mavro
