#include "TipRules.h"

#include "CharSets.h"

namespace mavro {

namespace {

// The start of the run of characters of a set that ends before `end`.
size_t RunStart(std::string_view text, size_t end, const char* set) {
  while (end > 0 && IsInSet(set, text[end - 1])) --end;
  return end;
}

int CountArguments(std::string_view call, const EditorLanguage& language) {
  int depth = 0, count = 0;
  for (const char c : call) {
    if (IsInSet(language.tipStart, c))
      ++depth;
    else if (IsInSet(language.tipEnd, c) && depth > 0)
      --depth;
    else if (depth == 1 && IsInSet(language.tipSeparators, c))
      ++count;
  }
  return count;
}

}  // namespace

std::string CompletionText(std::string_view lineToCaret, const EditorLanguage& language) {
  if (lineToCaret.size() > cCompletionReach)
    lineToCaret.remove_prefix(lineToCaret.size() - cCompletionReach);
  size_t start = lineToCaret.size();
  while (start > 0 && (IsInSet(language.wordChars, lineToCaret[start - 1]) ||
                       IsInSet(language.memberChars, lineToCaret[start - 1])))
    --start;
  return std::string(lineToCaret.substr(start));
}

TipName FindTipName(std::string_view lineToCaret, const EditorLanguage& language) {
  int parens = 0;
  for (size_t at = lineToCaret.size(); at > 0; --at) {
    const char c = lineToCaret[at - 1];
    if (IsInSet(language.tipEnd, c)) ++parens;
    if (!IsInSet(language.tipStart, c)) continue;
    if (parens > 0) {
      --parens;
      continue;
    }
    const size_t end = RunStart(lineToCaret, at - 1, " \t");
    const size_t start = RunStart(lineToCaret, end, language.wordChars);
    if (start < end)
      return {std::string(lineToCaret.substr(start, end - start)), static_cast<int>(start)};
  }
  return {};
}

TipRange FindTipArgument(std::string_view tip, std::string_view callToCaret,
                         const EditorLanguage& language) {
  int toSkip = CountArguments(callToCaret, language);
  size_t at = 0;
  while (at < tip.size() && !IsInSet(language.tipStart, tip[at])) ++at;
  if (at < tip.size()) ++at;
  for (; toSkip > 0 && at < tip.size() && !IsInSet(language.tipEnd, tip[at]); ++at)
    if (IsInSet(language.tipSeparators, tip[at])) --toSkip;
  size_t end = at;
  while (end < tip.size() && !IsInSet(language.tipEnd, tip[end]) &&
         !IsInSet(language.tipSeparators, tip[end]))
    ++end;
  return {static_cast<int>(at), static_cast<int>(end)};
}

}  // namespace mavro
