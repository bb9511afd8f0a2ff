#pragma once

#include <string>

#include "WindresCursor.h"

namespace zendry {

// Reads a version block from the word after VERSIONINFO to its END. Answers its bytes in the
// well-known layout: nodes of length, value length, kind and UTF-16 key; values and children at
// multiples of 4.
std::string ReadVersionBlock(RcCursor& cursor);

}  // namespace zendry
