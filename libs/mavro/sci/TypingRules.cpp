#include "TypingRules.h"

#include <algorithm>
#include <string_view>

#include "CharSets.h"

namespace mavro {

namespace {

using enum TypingStep;
using Steps = std::vector<TypingStep>;

void AddIndent(Steps& steps, const EditorOptions& options) {
  if (options.simpleIndent)
    steps.push_back(cMaintainIndent);
  else if (options.smartIndent)
    steps.push_back(cAutoIndent);
}

// A tip is shown: it follows the argument that the caret is in. Words aren't offered then, as a
// list hides the tip.
Steps PlanInTip(char typed, const EditorLanguage& language) {
  if (IsInSet(language.tipStart, typed) || IsInSet(language.tipCalls, typed)) return {cStartTip};
  if (IsInSet(language.memberChars, typed)) return {cStartCompletion, cUpdateTip};
  return {cUpdateTip};
}

// A list is open: letters continue in it, everything else closes it.
Steps PlanInList(char typed, const TypingState& state, const EditorLanguage& language,
                 const EditorOptions& options) {
  if (IsInSet(language.tipStart, typed)) return {cStartTip};
  if (IsInSet(language.tipEnd, typed)) return {};
  if (IsInSet(options.wordChars.c_str(), typed))
    return state.wordCompleting ? Steps{cStartWords} : Steps();
  Steps steps{cCancelList};
  if (IsInSet(language.memberChars, typed)) steps.push_back(cStartCompletion);
  return steps;
}

Steps PlanInText(char typed, const EditorLanguage& language, const EditorOptions& options) {
  if (IsInSet(language.tipStart, typed)) return {cStartTip};
  Steps steps{cForgetWords};
  AddIndent(steps, options);
  if (IsInSet(language.tipCalls, typed)) steps.push_back(cStartTip);
  if (IsInSet(language.memberChars, typed))
    steps.push_back(cStartCompletion);
  else if (language.wordCompletion && IsInSet(options.wordChars.c_str(), typed))
    steps.push_back(cOfferWords);
  return steps;
}

// Only the list and the tip that are open take notice of a character that is no code.
Steps PlanInQuiet(char typed, const TypingState& state, const EditorOptions& options) {
  if (state.listActive && IsInSet(options.wordChars.c_str(), typed)) return {};
  if (state.tipActive && !state.listActive) return {cUpdateTip};
  Steps steps{cForgetWords};
  if (state.listActive) steps.push_back(cCancelList);
  AddIndent(steps, options);
  return steps;
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
  if (IsInSet(language.tipStart, typed) || IsInSet(language.tipCalls, typed)) return true;
  if (IsInSet(language.memberChars, typed)) return true;
  if (state.listActive && IsInSet(language.tipEnd, typed)) return true;
  if (state.tipActive && !state.listActive) return false;
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

Steps PlanTyping(char typed, const TypingState& state, const EditorLanguage* language,
                 const EditorOptions& options) {
  if (state.recording || !state.hasCaret || !language) return {};
  if (state.hasSeveral) {
    Steps steps{cForgetWords};
    AddIndent(steps, options);
    return steps;
  }
  if (!state.tipActive && !state.listActive)
    return state.isQuiet ? PlanInQuiet(typed, state, options)
                         : PlanInText(typed, *language, options);
  Steps steps = state.isQuiet      ? PlanInQuiet(typed, state, options)
                : state.listActive ? PlanInList(typed, state, *language, options)
                                   : PlanInTip(typed, *language);
  const bool isIndented = std::find(steps.begin(), steps.end(), cAutoIndent) != steps.end() ||
                          std::find(steps.begin(), steps.end(), cMaintainIndent) != steps.end();
  if (!ChangesLines(typed, *language) || isIndented) return steps;
  // The tip opens where the line begins then.
  Steps indented;
  AddIndent(indented, options);
  indented.insert(indented.end(), steps.begin(), steps.end());
  return indented;
}

}  // namespace mavro
