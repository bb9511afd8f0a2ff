#pragma once

#include <vector>

#include "EditorLanguage.h"
#include "EditorOptions.h"

namespace mavro {

// What the editor is doing when a character has been typed.
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
  cStartWords,   // goes on with a word completion that is under way
  cOfferWords,   // starts one; `wordCompleting` then says whether a list came
  cForgetWords,  // `wordCompleting` is over
  cMaintainIndent,
  cAutoIndent
};

struct TypingPlan {
  std::vector<TypingStep> steps;
  int parenDepth = 0;  // from now on
};

// What a typed character leads to. Without a language nothing does.
TypingPlan PlanTyping(char typed, const TypingState& state, const EditorLanguage* language,
                      const EditorOptions& options);

}  // namespace mavro
