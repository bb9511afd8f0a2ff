#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "FileText.h"

namespace mavro {

// Takes a part of a text; false if no more is wanted.
using TakePart = std::function<bool(std::string_view part)>;

// A text that is nowhere in one piece: passes its parts in turn. It can be asked more than once and
// then gives the same text.
using TextParts = std::function<void(const TakePart& take)>;

// As SaveFileText, for a text in parts: it need not be in memory as a whole.
FileResult SaveFileParts(const std::string& path, const TextParts& content);

}  // namespace mavro
