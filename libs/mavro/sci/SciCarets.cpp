#include <algorithm>
#include <numeric>
#include <string>

#include "Keys.h"
#include "OccurrenceRules.h"
#include "SciImpl.h"
#include "UndoStep.h"

// Several carets. The component types letters, deletes and moves sideways at each of them by
// itself; here is what it does at one caret only.

namespace mavro {

CaretList SciEditor::Impl::Carets() const {
  CaretList list;
  const auto count = Send(SCI_GETSELECTIONS);
  list.carets.reserve(static_cast<size_t>(count));
  const Param main = Send(SCI_GETSELECTIONNCARET, Send(SCI_GETMAINSELECTION));
  for (Param i = 0; i < count; ++i)
    list.carets.push_back({static_cast<int>(Send(SCI_GETSELECTIONNANCHOR, i)),
                           static_cast<int>(Send(SCI_GETSELECTIONNCARET, i))});
  std::sort(list.carets.begin(), list.carets.end(),
            [](const Caret& a, const Caret& b) { return a.Start() < b.Start(); });
  const auto isMain = [&](const Caret& caret) { return caret.position == main; };
  const auto found = std::find_if(list.carets.begin(), list.carets.end(), isMain);
  list.main = static_cast<size_t>(found - list.carets.begin());
  return list;
}

// Carets at one place are one, as are selections that overlap: the component would type into both.
CaretList SciEditor::Impl::Merged(const CaretList& list) {
  std::vector<size_t> order(list.carets.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
    return list.carets[a].Start() < list.carets[b].Start();
  });
  CaretList merged;
  for (const size_t i : order) {
    const Caret& caret = list.carets[i];
    Caret* last = merged.carets.empty() ? nullptr : &merged.carets.back();
    const bool isEmpty = caret.Start() == caret.End() || (last && last->Start() == last->End());
    if (!last || caret.Start() > last->End() || (caret.Start() == last->End() && !isEmpty)) {
      merged.carets.push_back(caret);
    } else if (const int end = std::max(last->End(), caret.End()); end > last->End()) {
      (caret.anchor <= caret.position ? * last = {last->Start(), end}
                                      : * last = {end, last->Start()});
    }
    if (i == list.main) merged.main = merged.carets.size() - 1;
  }
  return merged;
}

void SciEditor::Impl::SetCarets(const CaretList& list) {
  const CaretList merged = Merged(list);
  if (HasColumn()) Send(SCI_SETEMPTYSELECTION, merged.carets.front().position);
  unsigned message = SCI_SETSELECTION;
  for (const Caret& caret : merged.carets) {
    Send(message, caret.position, caret.anchor);
    message = SCI_ADDSELECTION;
  }
  Send(SCI_SETMAINSELECTION, static_cast<Param>(merged.main));
}

// A caret's act changes nothing after the next caret, but it may indent the line before it, in
// which carets are that have been acted at.
void SciEditor::Impl::ForEachCaret(const std::function<void()>& act) {
  const CaretList list = Carets();
  std::vector<Caret> reached;
  reached.reserve(list.carets.size());
  done = &reached;
  int shift = 0, least = 0;
  for (const Caret& caret : list.carets) {
    const int length = Length();
    Send(SCI_SETSELECTION, std::max(caret.position + shift, least),
         std::max(caret.anchor + shift, least));
    act();
    shift += Length() - length;
    reached.push_back({static_cast<int>(Send(SCI_GETANCHOR)), Editor().CaretPosition()});
    least = reached.back().End();
  }
  done = nullptr;
  SetCarets({std::move(reached), list.main});
  Send(SCI_SCROLLCARET);
}

// The component measures the rows of a column in pixels. Letters that have been typed have other
// widths in each row, so the next ones go where these end.
void SciEditor::Impl::LeaveCaretsInRows() {
  const CaretList list = Carets();
  const bool areEmpty = std::all_of(list.carets.begin(), list.carets.end(), [](const Caret& caret) {
    return caret.Start() == caret.End();
  });
  if (areEmpty) SetCarets(list);
}

// Carets are in the order of the text, so the last ones are those after a place.
void SciEditor::Impl::FollowDone(int position, int inserted, int deleted) {
  if (!done) return;
  const auto moved = [&](int place) {
    if (place < position) return place;
    return std::max(place - deleted, position) + inserted;
  };
  for (auto caret = done->rbegin(); caret != done->rend() && caret->End() >= position; ++caret)
    *caret = {moved(caret->anchor), moved(caret->position)};
}

// The component's own moves may have brought selections over each other.
void SciEditor::Impl::MergeCarets() {
  if (!HasSeveral() || HasColumn()) return;
  const CaretList list = Carets();
  if (Merged(list).carets.size() < list.carets.size()) SetCarets(list);
}

bool SciEditor::Impl::TakeKeyAtEach(const SciKey& key) {
  MergeCarets();
  if (!key.text.empty()) BeginTyping();
  if (key.isCommand) return false;
  if (key.key == Key::cUp || key.key == Key::cDown) {
    MoveVertically(key.key == Key::cUp ? Way::cPrevious : Way::cNext, key.isShifted);
    return true;
  }
  // The component leaves line ends alone when it deletes at several carets.
  const bool deletes =
      key.key == Key::cDelete && !key.isShifted && Send(SCI_GETSELECTIONEMPTY) != 0;
  if ((key.key != Key::cEnter && !deletes) || Send(SCI_GETREADONLY)) return false;
  const UndoStep step(Editor());
  ForEachCaret([this, deletes] {
    if (deletes)
      Send(SCI_CLEAR);
    else
      TypeAtCaret(LineEndBytes());
  });
  return true;
}

// Replaces the selection as if the text had been typed.
void SciEditor::Impl::TypeAtCaret(const std::string& text) {
  Send(SCI_TARGETFROMSELECTION);
  SendText(SCI_REPLACETARGET, static_cast<Param>(text.size()), text.data());
  Send(SCI_SETEMPTYSELECTION, Send(SCI_GETTARGETEND));
  CharacterAdded(text.back());
}

// The place a line of the screen above or below another, nearest to a column in pixels; -1 if the
// text ends there.
int SciEditor::Impl::PlaceBeside(int position, int x, Way way) const {
  const int line = LineOf(position);
  if (line == (way == Way::cNext ? LineOf(Length()) : 0)) return -1;
  const auto height = static_cast<int>(Send(SCI_TEXTHEIGHT, line));
  const auto top = static_cast<int>(Send(SCI_POINTYFROMPOSITION, 0, position));
  const int middle = top + height / 2 + (way == Way::cNext ? height : -height);
  return static_cast<int>(Send(SCI_POSITIONFROMPOINT, x, middle));
}

void SciEditor::Impl::MoveVertically(Way way, bool selects) {
  CaretList list = Carets();
  if (columnsKept.size() != list.carets.size()) {
    columnsKept.clear();
    for (const Caret& caret : list.carets)
      columnsKept.push_back(static_cast<int>(Send(SCI_POINTXFROMPOSITION, 0, caret.position)));
  }
  for (size_t i = 0; i < list.carets.size(); ++i) {
    Caret& caret = list.carets[i];
    const int place = PlaceBeside(caret.position, columnsKept[i], way);
    if (place >= 0) caret.position = place;
    if (!selects) caret.anchor = caret.position;
  }
  SetCarets(list);
  Send(SCI_SCROLLCARET);
}

void SciEditor::Impl::AddCaret(Way way) {
  CaretList list = Carets();
  const Caret edge = way == Way::cNext ? list.carets.back() : list.carets.front();
  const auto x = static_cast<int>(Send(SCI_POINTXFROMPOSITION, 0, edge.position));
  const int place = PlaceBeside(edge.position, x, way);
  if (place < 0) return;
  list.main = list.carets.size();
  list.carets.push_back({place, place});
  SetCarets(list);
  Send(SCI_SCROLLCARET);
}

void SciEditor::Impl::AddCaretAt(int position, bool drags) {
  if (!drags) {
    beforeMouse = Carets();
    mouseAnchor = position;
  }
  const Caret added{mouseAnchor, position};
  CaretList list = beforeMouse;
  std::erase_if(list.carets, [&](const Caret& caret) {
    return caret.Start() <= added.End() && added.Start() <= caret.End();
  });
  list.main = list.carets.size();
  list.carets.push_back(added);
  SetCarets(list);
}

// Here a column goes on after the ends of its lines; the caret of other commands never does.
bool SciEditor::Impl::ExtendColumn(int key) {
  constexpr std::pair<int, unsigned> cWays[] = {{Key::cUp, SCI_LINEUPRECTEXTEND},
                                                {Key::cDown, SCI_LINEDOWNRECTEXTEND},
                                                {Key::cLeft, SCI_CHARLEFTRECTEXTEND},
                                                {Key::cRight, SCI_CHARRIGHTRECTEXTEND}};
  for (const auto& [itsKey, message] : cWays) {
    if (key != itsKey) continue;
    if (HasSeveral() && !HasColumn()) Send(SCI_CANCEL);
    if (!HasColumn()) Send(SCI_CHOOSECARETX);
    Send(SCI_SETVIRTUALSPACEOPTIONS, SCVS_RECTANGULARSELECTION | SCVS_USERACCESSIBLE);
    Send(message);
    Send(SCI_SETVIRTUALSPACEOPTIONS, SCVS_RECTANGULARSELECTION);
    return true;
  }
  return false;
}

// One row of a column becomes an ordinary selection.
void SciEditor::Impl::KeepMainRow() {
  const Param main = Send(SCI_GETMAINSELECTION);
  const Param caret = Send(SCI_GETSELECTIONNCARET, main);
  const Param anchor = Send(SCI_GETSELECTIONNANCHOR, main);
  Send(SCI_SETEMPTYSELECTION, caret);
  Send(SCI_SETSELECTION, caret, anchor);
}

// A caret that has left a column is in the text again: letters typed after the end of a line would
// put blanks before them.
bool SciEditor::Impl::LeavesColumn(const SciKey& key) {
  constexpr int cLeaving[] = {Key::cEscape, Key::cUp,  Key::cDown,   Key::cLeft,    Key::cRight,
                              Key::cHome,   Key::cEnd, Key::cPageUp, Key::cPageDown};
  const bool leaves =
      HasColumn() && !(key.isCommand && key.isShifted) &&
      std::find(std::begin(cLeaving), std::end(cLeaving), key.key) != std::end(cLeaving);
  if (leaves) Send(SCI_SETEMPTYSELECTION, Editor().CaretPosition());
  return leaves;
}

// What the main selection selects; where nothing is selected, the word at the caret.
Occurrence SciEditor::Impl::Wanted() const {
  const auto [start, end] = Editor().Selection();
  if (start < end) return {start, end};
  return {static_cast<int>(Send(SCI_WORDSTARTPOSITION, start, 1)),
          static_cast<int>(Send(SCI_WORDENDPOSITION, start, 1))};
}

int SciEditor::Impl::SelectOccurrences() {
  const Occurrence wanted = Wanted();
  const std::vector<Occurrence> found = FindOccurrences(Bytes(), wanted);
  if (found.empty() || found.size() > cMostCarets) return static_cast<int>(found.size());
  CaretList list;
  for (const Occurrence& one : found) {
    if (one.start == wanted.start) list.main = list.carets.size();
    list.carets.push_back({one.start, one.end});
  }
  SetCarets(list);
  return static_cast<int>(found.size());
}

bool SciEditor::Impl::AddOccurrence() {
  const Occurrence wanted = Wanted();
  if (wanted.start >= wanted.end) return false;
  if (Send(SCI_GETSELECTIONEMPTY)) {
    Send(SCI_SETSELECTION, wanted.end, wanted.start);
    return true;
  }
  const CaretList list = Carets();
  if (list.carets.size() >= cMostCarets) return false;
  const auto isFree = [&](const Occurrence& one) {
    return std::none_of(list.carets.begin(), list.carets.end(), [&](const Caret& caret) {
      return caret.Start() < one.end && one.start < caret.End();
    });
  };
  const std::optional<Occurrence> next = NextOccurrence(Bytes(), wanted, isFree);
  if (!next) return false;
  Send(SCI_ENSUREVISIBLE, LineOf(next->start));
  Send(SCI_ADDSELECTION, next->end, next->start);
  Send(SCI_SCROLLCARET);
  return true;
}

// One line for each selection.
std::string SciEditor::Impl::JoinedCopy(std::string asCopied) const {
  if (!HasSeveral() || HasColumn()) return asCopied;
  std::string joined;
  for (const Caret& caret : Carets().carets) {
    if (caret.Start() == caret.End()) continue;
    if (!joined.empty()) joined += LineEndBytes();
    AppendRange(caret.Start(), caret.End(), joined);
  }
  return joined;
}

// A text with as many lines as there are carets gives each caret a line; nothing is then left to
// paste.
//
// The component measures the rows of a column anew when their text is gone; so they are carets
// before that.
std::string SciEditor::Impl::PastedAtEach(std::string pasted) {
  MergeCarets();
  const CaretList list = Carets();
  const auto isSelected = [](const Caret& row) { return row.Start() < row.End(); };
  if (HasColumn() && std::any_of(list.carets.begin(), list.carets.end(), isSelected))
    SetCarets(list);
  const std::vector<std::string> lines = LinesFor(pasted, list.carets.size());
  if (lines.empty() || HasColumn() || Send(SCI_GETREADONLY)) return pasted;
  size_t at = 0;
  const UndoStep step(Editor());
  ForEachCaret([&] {
    const std::string shown = FoldNew(lines[at++]);
    Send(SCI_TARGETFROMSELECTION);
    SendText(SCI_REPLACETARGET, static_cast<Param>(shown.size()), shown.data());
    Send(SCI_SETEMPTYSELECTION, Send(SCI_GETTARGETEND));
  });
  return {};
}

}  // namespace mavro
