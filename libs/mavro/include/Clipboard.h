#pragma once

#include <string>

#include "Bitmap.h"

namespace mavro {

// The text that was copied or cut last, by this or another program; empty if there is none.
std::string ClipboardText();
// Makes a text the one to paste.
void SetClipboardText(const std::string& text);
// Makes a picture the one to paste; an empty one changes nothing.
void SetClipboardPicture(const Bitmap& bitmap);

}  // namespace mavro
