#pragma once

#include <string>
#include <string_view>

#include "EditorLanguage.h"

namespace mavro {

// The number of bytes left of the caret that completion looks at.
constexpr size_t cCompletionReach = 256;

// The text to complete: the names and member signs that end at the caret.
std::string CompletionText(std::string_view lineToCaret, const EditorLanguage& language);

// The call that the caret is in: the name, and the column where it starts; an empty name if there
// is none.
struct TipName {
  std::string name;
  int start = 0;
};
TipName FindTipName(std::string_view lineToCaret, const EditorLanguage& language);

// The part of a tip that shows the argument at the caret: bytes from `start` to `end`.
// `callToCaret` is the text from the start of the function's name.
struct TipRange {
  int start = 0;
  int end = 0;
};
TipRange FindTipArgument(std::string_view tip, std::string_view callToCaret,
                         const EditorLanguage& language);

}  // namespace mavro
