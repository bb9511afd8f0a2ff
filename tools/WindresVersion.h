#pragma once

#include <string>

#include "WindresCursor.h"

namespace zendry {

// Reads a version block from behind the word VERSIONINFO to its END; answers its bytes in the
// well-known layout: nodes of length, value length, kind and UTF-16 key, values and children on
// multiples of 4.
std::string ReadVersionBlock(RcCursor& cursor);

}  // namespace zendry
