#pragma once

#include <string>
#include <string_view>

#include "EditorLanguage.h"

namespace mavro {

// How much of the line left of the caret completion looks at.
constexpr size_t cCompletionReach = 256;

// What completion is asked about: the names and member signs that end at the caret.
std::string CompletionText(std::string_view lineToCaret, const EditorLanguage& language);

// The call that the caret stands in: the name, and the column where it starts; an empty name where
// there is none.
struct TipName {
  std::string name;
  int start = 0;
};
TipName FindTipName(std::string_view lineToCaret, const EditorLanguage& language);

// The part of a tip that tells the argument the caret is in: bytes from `start` to `end`.
// `callToCaret` is the text from the start of the function's name.
struct TipRange {
  int start = 0;
  int end = 0;
};
TipRange FindTipArgument(std::string_view tip, std::string_view callToCaret,
                         const EditorLanguage& language);

}  // namespace mavro
