#include "TypingRules.h"

#include <algorithm>
#include <string_view>

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

void AddIndent(TypingPlan& plan, const EditorOptions& options) {
  if (options.simpleIndent)
    plan.steps.push_back(cMaintainIndent);
  else if (options.smartIndent)
    plan.steps.push_back(cAutoIndent);
}

TypingPlan PlanInText(char typed, int depth, const EditorLanguage& language,
                      const EditorOptions& options) {
  if (IsInSet(language.tipStart, typed)) return {{cStartTip}, 1};
  TypingPlan plan{{cForgetWords}, depth};
  AddIndent(plan, options);
  if (IsInSet(language.memberChars, typed))
    plan.steps.push_back(cStartCompletion);
  else if (language.wordCompletion && IsInSet(options.wordChars.c_str(), typed))
    plan.steps.push_back(cOfferWords);
  return plan;
}

// Only the list and the tip that are open take notice of a character that is no code.
TypingPlan PlanInQuiet(char typed, const TypingState& state, const EditorOptions& options) {
  if (state.tipActive) return {{cUpdateTip}, state.parenDepth};
  if (state.listActive && IsInSet(options.wordChars.c_str(), typed)) return {{}, state.parenDepth};
  TypingPlan plan{{cForgetWords}, state.parenDepth};
  if (state.listActive) plan.steps.push_back(cCancelList);
  AddIndent(plan, options);
  return plan;
}

// Lines are indented inside a call whose tip is shown, too.
bool ChangesLines(char typed, const EditorLanguage& language) {
  return typed == '\n' || typed == '\r' || IsInSet(language.blockStart, typed) ||
         IsInSet(language.blockEnd, typed);
}

constexpr const char* cIncluding[] = {"include", "import"};

// The place after "#" and the blanks around it; npos if the line isn't one of the preprocessor's.
size_t DirectiveIn(std::string_view line) {
  const size_t sign = line.find_first_not_of(" \t");
  if (sign == std::string_view::npos || line[sign] != '#') return std::string_view::npos;
  return std::min(line.find_first_not_of(" \t", sign + 1), line.size());
}

}  // namespace

bool IsDirective(std::string_view line) {
  return DirectiveIn(line) != std::string_view::npos;
}

bool IncludesFile(std::string_view line) {
  const size_t word = DirectiveIn(line);
  if (word == std::string_view::npos) return false;
  return std::any_of(std::begin(cIncluding), std::end(cIncluding), [&](const char* including) {
    return line.substr(word).starts_with(including);
  });
}

bool NamesFile(std::string_view line) {
  return IncludesFile(line) && line.find_first_of("<\"") != std::string_view::npos;
}

bool EndsInLiteral(std::string_view line) {
  char open = '\0';
  for (size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (open && c == '\\')
      ++i;
    else if (open ? c == open : c == '"' || c == '\'')
      open = open ? '\0' : c;
  }
  return open != '\0';
}

bool PlaceMatters(char typed, const TypingState& state, const EditorLanguage& language,
                  const EditorOptions& options) {
  if (state.recording || !state.hasCaret) return false;
  if (IsInSet(language.tipStart, typed)) return true;
  if (state.tipActive) return IsInSet(language.tipEnd, typed);
  if (IsInSet(language.memberChars, typed)) return true;
  if (state.listActive && IsInSet(language.tipEnd, typed)) return true;
  return language.wordCompletion && IsInSet(options.wordChars.c_str(), typed);
}

bool IsQuietPlace(const SciText& text, int position, const EditorLanguage& language) {
  int style = text.StyleAt(position);
  if (language.leftOutStyles > 0) style %= language.leftOutStyles;
  if (style < 64 && (language.quietStyles >> style & 1)) return true;
  if (language.directiveStyle == 0 || style != language.directiveStyle) return false;
  const std::string line = text.Range(text.LineStart(text.LineOf(position)), position);
  return IncludesFile(line) || EndsInLiteral(line);
}

TypingPlan PlanTyping(char typed, const TypingState& state, const EditorLanguage* language,
                      const EditorOptions& options) {
  if (state.recording || !state.hasCaret || !language) return {{}, state.parenDepth};
  if (state.hasSeveral) {
    TypingPlan plan{{cForgetWords}, state.parenDepth};
    AddIndent(plan, options);
    return plan;
  }
  if (state.isQuiet) return PlanInQuiet(typed, state, options);
  if (state.tipActive || state.listActive) {
    TypingPlan plan = state.tipActive ? PlanInTip(typed, state.parenDepth, *language)
                                      : PlanInList(typed, state, *language, options);
    if (ChangesLines(typed, *language)) AddIndent(plan, options);
    return plan;
  }
  return PlanInText(typed, state.parenDepth, *language, options);
}

}  // namespace mavro
