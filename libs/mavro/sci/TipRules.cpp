#include "TipRules.h"

#include <algorithm>

#include "CharSets.h"

namespace mavro {

namespace {

// The start of the run of characters of a set that ends before `end`.
size_t RunStart(std::string_view text, size_t end, const char* set) {
  while (end > 0 && IsInSet(set, text[end - 1])) --end;
  return end;
}

// The quote that ends the literal which begins at a place; the end of the text without one.
size_t LiteralEnd(std::string_view text, size_t at) {
  const char quote = text[at];
  for (++at; at < text.size() && text[at] != quote; ++at)
    if (text[at] == '\\') ++at;
  return at;
}

bool Takes(const TipOverload& overload, int arguments) {
  return overload.takesMore || arguments <= static_cast<int>(overload.parameters.size());
}

// The parameter of an argument; an empty range without one.
TipRange ParameterOf(const TipOverload& overload, int argument) {
  const auto count = static_cast<int>(overload.parameters.size());
  if (argument >= count && overload.takesMore) argument = count - 1;
  if (argument < 0 || argument >= count) return {};
  return overload.parameters[static_cast<size_t>(argument)];
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

TipName FindTipName(std::string_view line, const EditorLanguage& language) {
  int parens = 0;
  for (size_t at = line.size(); at > 0; --at) {
    const char c = line[at - 1];
    if (IsInSet(language.tipEnd, c)) ++parens;
    if (!IsInSet(language.tipStart, c)) continue;
    if (parens > 0) {
      --parens;
      continue;
    }
    const size_t end = RunStart(line, at - 1, " \t");
    const size_t start = RunStart(line, end, language.wordChars);
    if (start < end)
      return {std::string(line.substr(start, end - start)), static_cast<int>(start),
              static_cast<int>(at - 1)};
  }
  return {};
}

CallEnd FollowCall(std::string_view text, const EditorLanguage& language) {
  CallEnd call;
  std::vector<int> open;
  for (size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (IsInSet(language.tipEnd, c) && !open.empty()) open.pop_back();
    if (at > 0 && open.empty()) return {};
    if (at > 0) call.arguments = std::max(call.arguments, call.argument + 1);
    if (IsInSet(language.tipStart, c) || at == 0) open.push_back(static_cast<int>(at));
    if (open.size() == 1 && at > 0 && IsInSet(language.tipSeparators, c))
      call.arguments = ++call.argument + 1;
    if (c == '"' || c == '\'') at = LiteralEnd(text, at);
  }
  call.depth = static_cast<int>(open.size());
  if (!open.empty()) call.innermost = open.back();
  return call;
}

TipOverload OverloadOf(std::string text, const EditorLanguage& language) {
  TipOverload overload;
  size_t at = 0;
  while (at < text.size() && !IsInSet(language.tipStart, text[at])) ++at;
  for (++at; at < text.size() && !IsInSet(language.tipEnd, text[at]); ++at) {
    while (at < text.size() && text[at] == ' ') ++at;
    const size_t start = at;
    while (at < text.size() && !IsInSet(language.tipEnd, text[at]) &&
           !IsInSet(language.tipSeparators, text[at]))
      ++at;
    if (at > start) overload.parameters.push_back({static_cast<int>(start), static_cast<int>(at)});
    if (at >= text.size() || IsInSet(language.tipEnd, text[at])) break;
  }
  overload.text = std::move(text);
  return overload;
}

void FollowArguments(EditorTip& tip, int argument, int arguments) {
  tip.argument = argument;
  tip.arguments = arguments;
  if (tip.isChosen) return;
  const size_t count = tip.overloads.size();
  for (size_t i = 0; i < count; ++i) {
    const size_t candidate = (tip.shown + i) % count;
    if (!Takes(tip.overloads[candidate], arguments)) continue;
    tip.shown = candidate;
    return;
  }
}

void StepOverload(EditorTip& tip, int step) {
  const size_t count = tip.overloads.size();
  tip.shown = (tip.shown + (step < 0 ? count - 1 : 1)) % count;
  tip.isChosen = true;
}

void KeepOverload(EditorTip& tip, const EditorTip& earlier) {
  if (tip.bracket != earlier.bracket) return;
  const auto found =
      std::find(tip.overloads.begin(), tip.overloads.end(), earlier.overloads[earlier.shown]);
  if (found == tip.overloads.end() || tip.overloads.size() != earlier.overloads.size()) return;
  tip.overloads = earlier.overloads;
  tip.shown = earlier.shown;
  tip.isChosen = earlier.isChosen;
  FollowArguments(tip, tip.argument, tip.arguments);
}

TipText LayOut(const EditorTip& tip, size_t columns) {
  constexpr std::string_view cNewLine = "\n    ";
  TipText shown;
  const size_t count = tip.overloads.size();
  if (count > 1)
    shown.text =
        "\001 " + std::to_string(tip.shown + 1) + " of " + std::to_string(count) + " \002 ";
  const TipOverload& overload = tip.overloads[tip.shown];
  const TipRange argument = ParameterOf(overload, tip.argument);
  size_t lineStart = 0, copied = 0;
  for (size_t i = 0; i <= overload.parameters.size(); ++i) {
    const bool isRest = i == overload.parameters.size();
    const auto start =
        isRest ? overload.text.size() : static_cast<size_t>(overload.parameters[i].start);
    const auto end = isRest ? start : static_cast<size_t>(overload.parameters[i].end);
    // The text before the parameter, then a new line if the parameter ends beyond this one.
    shown.text.append(overload.text, copied, start - copied);
    if (!isRest && i > 0 && shown.text.size() - lineStart + (end - start) > columns) {
      while (shown.text.ends_with(' ')) shown.text.pop_back();
      lineStart = shown.text.size() + 1;
      shown.text += cNewLine;
    }
    const auto offset = static_cast<int>(shown.text.size()) - static_cast<int>(start);
    if (!isRest && overload.parameters[i] == argument)
      shown.argument = {argument.start + offset, argument.end + offset};
    shown.text.append(overload.text, start, end - start);
    copied = end;
  }
  return shown;
}

}  // namespace mavro
