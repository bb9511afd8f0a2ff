#include "MacroLines.h"

#include <algorithm>
#include <cstdlib>

#include "SciMessages.h"

namespace mavro {

namespace {

// Keyboard commands, which have no parameters, by the ranges of the component's numbers.
struct Range {
  unsigned first, last;
};

constexpr Range cCommands[] = {
    {2300, 2349},  // caret moves, deletions, case, lines, zoom
    {2354, 2354},  // reverse lines
    {2390, 2393},  // word parts
    {2395, 2396},  // delete to the ends of the line
    {2404, 2404},  // duplicate the line
    {2413, 2416},  // paragraphs
    {2426, 2442},  // rectangular moves, page steps, word ends
    {2450, 2455},  // ends of wrapped lines, copy the line
    {2469, 2469},  // duplicate the selection
    {2518, 2519},  // delete to the end of a word, copy or copy the line
    {2619, 2621},  // centre the caret, move lines
    {2628, 2629},  // ends of the text
};

constexpr unsigned cWithoutParameters[] = {SCI_CUT,      SCI_COPY,      SCI_PASTE,       SCI_CLEAR,
                                           SCI_CLEARALL, SCI_SELECTALL, SCI_SEARCHANCHOR};
constexpr unsigned cWithText[] = {SCI_REPLACESEL, SCI_ADDTEXT,    SCI_INSERTTEXT,
                                  SCI_APPENDTEXT, SCI_SEARCHNEXT, SCI_SEARCHPREV};

template <class List>
bool Holds(const List& list, unsigned message) {
  return std::find(std::begin(list), std::end(list), message) != std::end(list);
}

bool IsCommand(unsigned message) {
  return Holds(cWithoutParameters, message) ||
         std::any_of(std::begin(cCommands), std::end(cCommands), [message](const Range& range) {
           return message >= range.first && message <= range.last;
         });
}

int TakeNumber(std::string_view& rest) {
  const size_t end = std::min(rest.find(';'), rest.size());
  const std::string number(rest.substr(0, end));
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return std::atoi(number.c_str());
}

}  // namespace

std::string FormatMacroLine(const MacroStep& step) {
  std::string line = std::to_string(step.message) + ";" + std::to_string(step.wParam) + ";";
  return step.hasText ? line + "1;" + step.text : line + "0;";
}

MacroStep ParseMacroLine(std::string_view line) {
  MacroStep step;
  step.message = TakeNumber(line);
  step.wParam = TakeNumber(line);
  step.hasText = TakeNumber(line) == 1;
  if (step.hasText) step.text = line;
  return step;
}

bool MakeReplayable(MacroStep& step, long textLength) {
  const auto message = static_cast<unsigned>(step.message);
  if (Holds(cWithText, message)) {
    step.hasText = true;
    const long length = static_cast<long>(step.text.size());
    if (message == SCI_ADDTEXT || message == SCI_APPENDTEXT)
      step.wParam = std::clamp(step.wParam, 0L, length);
    if (message == SCI_INSERTTEXT) step.wParam = std::clamp(step.wParam, 0L, textLength);
    if (message == SCI_SEARCHNEXT || message == SCI_SEARCHPREV)
      step.wParam &= SCFIND_MATCHCASE | SCFIND_WHOLEWORD | SCFIND_WORDSTART;
    return true;
  }
  step.hasText = false;
  step.text.clear();
  if (message == SCI_GOTOLINE || message == SCI_GOTOPOS) {
    step.wParam = std::clamp(step.wParam, 0L, textLength);
    return true;
  }
  step.wParam = 0;
  return IsCommand(message);
}

}  // namespace mavro
