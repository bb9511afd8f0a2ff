// Lines of keyboard macros as a file may hold them: what is read is written the same way again, and
// what may be replayed stays inside the text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "MacroLines.h"
#include "TipRules.h"

namespace {

void Expect(bool holds) {
  if (!holds) std::abort();
}

mavro::EditorLanguage Language() {
  mavro::EditorLanguage language;
  language.wordChars = "_abcdefghijklmnopqrstuvwxyz0123456789";
  language.tipStart = "(";
  language.tipEnd = ")";
  language.tipSeparators = ",;";
  language.memberChars = ".->:";
  return language;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr long cTextLength = 1000;
  const std::string_view line(reinterpret_cast<const char*>(data), size);
  mavro::MacroStep step = mavro::ParseMacroLine(line);
  Expect(mavro::ParseMacroLine(mavro::FormatMacroLine(step)) == step);
  if (mavro::MakeReplayable(step, cTextLength) && !step.hasText)
    Expect(step.wParam >= 0 && step.wParam <= cTextLength);

  const mavro::EditorLanguage language = Language();
  Expect(mavro::CompletionText(line, language).size() <= mavro::cCompletionReach);
  const mavro::TipName name = mavro::FindTipName(line, language);
  Expect(line.substr(static_cast<size_t>(name.start)).starts_with(name.name));
  const mavro::CallEnd call = mavro::FollowCall(line, language);
  Expect(call.argument <= call.arguments && call.innermost <= static_cast<int>(size));
  const mavro::TipOverload overload = mavro::OverloadOf(std::string(line), language);
  for (const mavro::TipRange& range : overload.parameters)
    Expect(range.start < range.end && static_cast<size_t>(range.end) <= size);
  return 0;
}
