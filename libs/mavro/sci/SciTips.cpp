#include "SciImpl.h"
#include "TipRules.h"

// Call tips: the window follows the caret through the calls of the text.

namespace mavro {

namespace {

constexpr size_t cTipColumns = 100;

}  // namespace

bool SciEditor::findCallTip(EditorTip& tip) {
  if (!language) return false;
  const std::string line = ItsImpl().LineToCaret();
  const int start = CaretPosition() - static_cast<int>(line.size());
  TipName call = FindTipName(line, *language);
  tip.innermost = start + call.bracket;
  for (std::string text; !call.name.empty();
       call = FindTipName(std::string_view(line).substr(0, static_cast<size_t>(call.bracket)),
                          *language)) {
    if (!getCallTip(call.name, text)) continue;
    const CallEnd end =
        FollowCall(std::string_view(line).substr(static_cast<size_t>(call.bracket)), *language);
    tip.overloads = {OverloadOf(text, *language)};
    tip.name = start + call.start;
    tip.bracket = start + call.bracket;
    tip.argument = end.argument;
    tip.arguments = end.arguments;
    return true;
  }
  return false;
}

TipPlace SciEditor::placeInCall(const EditorTip& tip) {
  const std::string line = ItsImpl().LineToCaret();
  const int start = CaretPosition() - static_cast<int>(line.size());
  if (!language || tip.bracket < start || tip.bracket >= CaretPosition()) return {};
  const CallEnd end = FollowCall(
      std::string_view(line).substr(static_cast<size_t>(tip.bracket - start)), *language);
  return {end.depth, tip.bracket + end.innermost, end.argument, end.arguments};
}

void SciEditor::startCallTip() {
  ItsImpl().tips.closedCall = -1;
  ItsImpl().AskTip();
}

void SciEditor::updateCallTip() {
  ItsImpl().FollowTip();
}

// Looks for the call around the caret. Inside an unknown call, the tip of the call around it is
// shown. What the user has closed stays so.
void SciEditor::Impl::AskTip() {
  EditorTip found;
  if (!Editor().language || !Editor().findCallTip(found)) return EndTip();
  if (found.bracket == tips.closedCall) return EndTip();
  if (tips.open) KeepOverload(found, *tips.open);
  tips.open = std::move(found);
  Editor().functionName = Range(tips.open->name, tips.open->bracket);
  Editor().tipStartPos = tips.open->name - LineStart(LineOf(tips.open->name));
  Editor().parenDepth = Editor().placeInCall(*tips.open).depth;
  ShowTip();
}

// Shows the tip for where the caret is now. A list hides it as long as it is open, and other
// windows do so by taking the focus.
void SciEditor::Impl::FollowTip() {
  if (!tips.open || Send(SCI_AUTOCACTIVE) || !Send(SCI_GETFOCUS)) return;
  if (HasSeveral()) return EndTip();
  const TipPlace place = Editor().placeInCall(*tips.open);
  if (place.depth == 0 || place.innermost != tips.open->innermost) return AskTip();
  FollowArguments(*tips.open, place.argument, place.arguments);
  ShowTip();
}

void SciEditor::Impl::EndTip() {
  if (!tips.open) return;
  tips.open.reset();
  tips.shownText.clear();
  Editor().tipActive = false;
  Editor().parenDepth = 0;
  Send(SCI_CALLTIPCANCEL);
}

// The window opens below the name, or below the caret's line if the call goes on there.
void SciEditor::Impl::ShowTip() {
  const int line = LineOf(Editor().CaretPosition());
  const int position = LineOf(tips.open->name) == line
                           ? tips.open->name
                           : static_cast<int>(Send(SCI_GETLINEINDENTPOSITION, line));
  const TipText layout = LayOut(*tips.open, cTipColumns);
  if (!Send(SCI_CALLTIPACTIVE) || layout.text != tips.shownText || position != tips.shownPosition) {
    SendText(SCI_CALLTIPSHOW, position, layout.text.c_str());
    tips.shownText = layout.text;
    tips.shownPosition = position;
  }
  Editor().tipText = tips.open->overloads[tips.open->shown].text;
  Editor().tipActive = true;
  Send(SCI_CALLTIPSETHLT, layout.argument.start, layout.argument.end);
}

// Shows another signature; false if there is none.
bool SciEditor::Impl::StepTip(int step) {
  if (!tips.open || tips.open->overloads.size() < 2 || !Send(SCI_CALLTIPACTIVE)) return false;
  StepOverload(*tips.open, step);
  ShowTip();
  return true;
}

// The window of the tip is shared with calls, which get it back when the mouse moves.
bool SciEditor::ShowMouseTip(const std::string& shown) {
  const int position = ItsImpl().tips.mouseRests;
  if (position < 0) return false;
  Send(SCI_CALLTIPSHOW, static_cast<std::uintptr_t>(position), shown.c_str());
  ItsImpl().tips.isReplaced = ItsImpl().tips.open.has_value();
  return true;
}

}  // namespace mavro
