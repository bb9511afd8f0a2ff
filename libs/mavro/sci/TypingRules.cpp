#include "TypingRules.h"

#include "CharSets.h"

namespace mavro {

namespace {

using enum TypingStep;

// A tip is shown: it follows the argument that the caret is in.
TypingPlan PlanInTip(char typed, int depth, const EditorLanguage& language) {
  if (IsInSet(language.tipEnd, typed)) {
    --depth;
    return {{depth > 0 ? cStartTip : cCancelTip}, depth};
  }
  if (IsInSet(language.tipStart, typed)) return {{cStartTip}, depth + 1};
  return {{cUpdateTip}, depth};
}

// A list is open: letters continue in it, everything else closes it.
TypingPlan PlanInList(char typed, const TypingState& state, const EditorLanguage& language,
                      const EditorOptions& options) {
  const int depth = state.parenDepth;
  if (IsInSet(language.tipStart, typed)) return {{cStartTip}, depth + 1};
  if (IsInSet(language.tipEnd, typed)) return {{}, depth - 1};
  if (IsInSet(options.wordChars.c_str(), typed)) {
    if (state.wordCompleting) return {{cStartWords}, depth};
    return {{}, depth};
  }
  TypingPlan plan{{cCancelList}, depth};
  if (IsInSet(language.memberChars, typed)) plan.steps.push_back(cStartCompletion);
  return plan;
}

TypingPlan PlanInText(char typed, int depth, const EditorLanguage& language,
                      const EditorOptions& options) {
  if (IsInSet(language.tipStart, typed)) return {{cStartTip}, 1};
  TypingPlan plan{{cForgetWords}, depth};
  if (options.simpleIndent)
    plan.steps.push_back(cMaintainIndent);
  else if (options.smartIndent)
    plan.steps.push_back(cAutoIndent);
  if (IsInSet(language.memberChars, typed))
    plan.steps.push_back(cStartCompletion);
  else if (language.wordCompletion && IsInSet(options.wordChars.c_str(), typed))
    plan.steps.push_back(cOfferWords);
  return plan;
}

}  // namespace

TypingPlan PlanTyping(char typed, const TypingState& state, const EditorLanguage* language,
                      const EditorOptions& options) {
  if (state.recording || !state.hasCaret || !language) return {{}, state.parenDepth};
  if (state.tipActive) return PlanInTip(typed, state.parenDepth, *language);
  if (state.listActive) return PlanInList(typed, state, *language, options);
  return PlanInText(typed, state.parenDepth, *language, options);
}

}  // namespace mavro
