#pragma once

#include <string>

namespace mavro {

// The text that was copied or cut last, by this or another program; empty if there is none.
std::string ClipboardText();
// Makes a text the one to paste.
void SetClipboardText(const std::string& text);

}  // namespace mavro
