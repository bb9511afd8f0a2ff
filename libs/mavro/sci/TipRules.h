#pragma once

#include <string>
#include <string_view>

#include "EditorLanguage.h"
#include "EditorTip.h"

namespace mavro {

// The number of bytes left of the caret that completion looks at.
constexpr size_t cCompletionReach = 256;

// The text to complete: the names and member signs that end at the caret.
std::string CompletionText(std::string_view lineToCaret, const EditorLanguage& language);

// The call that the end of a line is in: the name, and the columns where it and the bracket after
// it start; an empty name if there is none.
struct TipName {
  std::string name;
  int start = 0;
  int bracket = 0;
};
TipName FindTipName(std::string_view line, const EditorLanguage& language);

// The end of a text that begins with the bracket of a call.
struct CallEnd {
  int depth = 0;      // of brackets that are still open; 0 if the call's own is closed
  int innermost = 0;  // where the innermost open one is
  int argument = 0;   // as in EditorTip
  int arguments = 0;
};
CallEnd FollowCall(std::string_view text, const EditorLanguage& language);

// The signature that a text shows: its parameters are between the brackets and separators.
TipOverload OverloadOf(std::string text, const EditorLanguage& language);

// Notes how far the call is written. Another signature that takes as many arguments is shown,
// unless the user has chosen this one.
void FollowArguments(EditorTip& tip, int argument, int arguments);
// Shows the next signature, or the one before it; after the last one comes the first.
void StepOverload(EditorTip& tip, int step);
// Takes over which signature of an earlier answer for the same call was shown.
void KeepOverload(EditorTip& tip, const EditorTip& earlier);

// The text of the tip's window, in lines of about `columns` characters, and the bytes of the
// argument's parameter. The codes 1 and 2 become the arrows.
struct TipText {
  std::string text;
  TipRange argument;
};
TipText LayOut(const EditorTip& tip, size_t columns);

}  // namespace mavro
