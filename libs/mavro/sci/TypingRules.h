#pragma once

#include <vector>

#include "EditorLanguage.h"
#include "EditorOptions.h"

namespace mavro {

// The state of the editor when a character has been typed.
struct TypingState {
  bool recording = false;  // a macro
  bool hasCaret = true;    // nothing is selected, and the caret isn't at the very start
  bool tipActive = false;
  bool listActive = false;
  bool wordCompleting = false;
  int parenDepth = 0;
};

enum class TypingStep {
  cStartTip,
  cUpdateTip,
  cCancelTip,
  cCancelList,
  cStartCompletion,
  cStartWords,   // continues a word completion
  cOfferWords,   // starts one; `wordCompleting` is then true if a list opened
  cForgetWords,  // `wordCompleting` is over
  cMaintainIndent,
  cAutoIndent
};

struct TypingPlan {
  std::vector<TypingStep> steps;
  int parenDepth = 0;  // from now on
};

// The steps that a typed character leads to; none without a language.
TypingPlan PlanTyping(char typed, const TypingState& state, const EditorLanguage* language,
                      const EditorOptions& options);

}  // namespace mavro
