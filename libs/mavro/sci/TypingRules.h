#pragma once

#include <string_view>
#include <vector>

#include "EditorLanguage.h"
#include "EditorOptions.h"
#include "SciText.h"

namespace mavro {

// The state of the editor when a character has been typed.
struct TypingState {
  bool recording = false;  // a macro
  bool hasCaret = true;    // nothing is selected, and the caret isn't at the very start
  bool tipActive = false;
  bool listActive = false;
  bool wordCompleting = false;
  bool isQuiet = false;     // the character belongs to no code, see IsQuietPlace
  bool hasSeveral = false;  // there are several carets: only their lines are indented
};

enum class TypingStep {
  cStartTip,
  cUpdateTip,  // the tip follows the caret: to the next argument, or out of the call
  cCancelList,
  cStartCompletion,
  cStartWords,   // continues a word completion
  cOfferWords,   // starts one; `wordCompleting` is then true if a list opened
  cForgetWords,  // `wordCompleting` is over
  cMaintainIndent,
  cAutoIndent
};

// True if the steps of a typed character depend on its place, TypingState::isQuiet.
bool PlaceMatters(char typed, const TypingState& state, const EditorLanguage& language,
                  const EditorOptions& options);

// True for a character in text that is no code, and in the name of an included file. The text has
// its styles up to there.
bool IsQuietPlace(const SciText& text, int position, const EditorLanguage& language);

// Facts about the start of a line, up to a place in it: it is a preprocessor's line; such a line
// that includes a file; one that has the name of the file, or its beginning.
bool IsDirective(std::string_view line);
bool IncludesFile(std::string_view line);
bool NamesFile(std::string_view line);
// True if a string or a character has begun in a line and not ended. For the preprocessor's lines,
// whose literals have no styles of their own.
bool EndsInLiteral(std::string_view line);

// The steps that a typed character leads to; none without a language.
std::vector<TypingStep> PlanTyping(char typed, const TypingState& state,
                                   const EditorLanguage* language, const EditorOptions& options);

}  // namespace mavro
