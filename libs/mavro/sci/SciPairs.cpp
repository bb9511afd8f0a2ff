#include <algorithm>

#include "Keys.h"
#include "SciImpl.h"
#include "UndoStep.h"

// Brackets and quotes in pairs: keys that write, leave, remove or open a pair.

namespace mavro {

namespace {

constexpr const char* cLineEnds[] = {"\r\n", "\r", "\n"};

}  // namespace

const char* SciEditor::Impl::LineEndBytes() const {
  return cLineEnds[Send(SCI_GETEOLMODE)];
}

void SciEditor::Impl::Replace(int start, int end, std::string_view text) {
  Send(SCI_SETTARGETRANGE, start, end);
  Send(SCI_REPLACETARGET, static_cast<Param>(text.size()), reinterpret_cast<Param>(text.data()));
}

// A step of a macro is played back without its surroundings, and a letter typed over another
// replaces no closer.
bool SciEditor::Impl::CanPair() const {
  const SciEditor& editor = Editor();
  return editor.options->closePairs && editor.language && !huge && !editor.inMacroRecord &&
         !HasSeveral() && !HasColumn() && !Send(SCI_GETREADONLY) && !Send(SCI_GETOVERTYPE);
}

bool SciEditor::Impl::TakePairKey(const SciKey& key) {
  if (!CanPair()) {
    pairs.Clear();
    return false;
  }
  pairs.KeepAround(Editor().CaretPosition());
  const bool hasSelection = !Send(SCI_GETSELECTIONEMPTY);
  if (key.text.size() == 1) {
    const char typed = key.text[0];
    if (hasSelection) return Surround(typed);
    if (StepOver(typed)) return true;
    AnnouncePair(typed);
    return false;
  }
  if (hasSelection || key.isCommand || key.isShifted) return false;
  if (key.key == Key::cBackspace) return DeletePair();
  return key.key == Key::cEnter && OpenBlock();
}

bool SciEditor::Impl::StepOver(char typed) {
  const int caret = Editor().CaretPosition();
  const bool isBefore = pairs.OpeningOf(caret) >= 0 &&
                        Range(caret, caret + 1) == std::string_view(&typed, 1) &&
                        !IsEscaped(*this, caret, typed);
  const int below = isBefore ? -1 : BlockEndBelow(typed);
  if (!isBefore && below < 0) return false;
  const UndoStep step(Editor());
  if (isBefore) {
    pairs.Remove(caret);
    Send(SCI_CHARRIGHT);
  } else {
    LeaveBlock(below);
  }
  CharacterAdded(typed);
  return true;
}

// The place of the automatic "}" that begins the next line, if the caret's line is blank: there a
// user who doesn't know of it ends the block. -1 if there is none.
int SciEditor::Impl::BlockEndBelow(char typed) const {
  const int line = LineOf(Editor().CaretPosition());
  if (typed != '}' || pairs.IsEmpty() || line == 0 || line == LineOf(Length())) return -1;
  if (LineStart(line) + IndentBytes(line) != LineEnd(line)) return -1;
  const int place = LineStart(line + 1) + IndentBytes(line + 1);
  const int opening = pairs.OpeningOf(place);
  const bool isBlock = opening >= 0 && LineOf(opening) < line && Range(place, place + 1) == "}";
  return isBlock ? place : -1;
}

int SciEditor::Impl::IndentBytes(int line) const {
  return static_cast<int>(Send(SCI_GETLINEINDENTPOSITION, line)) - LineStart(line);
}

// The blank line goes, as if its user had typed the end of the block into it.
void SciEditor::Impl::LeaveBlock(int closing) {
  const int line = LineOf(Editor().CaretPosition());
  const int start = LineEnd(line - 1), end = LineEnd(line);
  Replace(start, end, "");
  const int place = closing - (end - start);
  pairs.Remove(place);
  Send(SCI_SETEMPTYSELECTION, place);
  Send(SCI_CHARRIGHT);
}

bool SciEditor::Impl::Surround(char typed) {
  const char partner = PartnerOf(typed);
  if (partner == '\0' || typed == '<') return false;
  const auto [start, end] = Editor().Selection();
  const bool isBackwards = Editor().CaretPosition() == start;
  {
    const UndoStep step(Editor());
    Replace(end, end, {&partner, 1});
    Replace(start, start, {&typed, 1});
  }
  Editor().Select(isBackwards ? end + 1 : start + 1, isBackwards ? start + 1 : end + 1);
  Editor().onTextChanged();
  return true;
}

bool SciEditor::Impl::DeletePair() {
  const int caret = Editor().CaretPosition();
  if (caret == 0 || pairs.OpeningOf(caret) != caret - 1) return false;
  const UndoStep step(Editor());
  Replace(caret, caret + 1, "");
  Send(SCI_DELETEBACK);
  return true;
}

// Enter between braces gives the closing one a line of its own.
bool SciEditor::Impl::OpenBlock() {
  const int caret = Editor().CaretPosition();
  const int opening = pairs.OpeningOf(caret);
  if (opening < 0 || opening != caret - 1 || Range(caret, caret + 1) != "}") return false;
  if (Send(SCI_AUTOCACTIVE)) return false;
  const UndoStep step(Editor());
  Replace(caret, caret, LineEndBytes());
  Send(SCI_SETEMPTYSELECTION, caret);
  Send(SCI_NEWLINE);
  const int line = LineOf(Editor().CaretPosition()) + 1;
  if (!Editor().onIndentLine(line)) Editor().SetIndentation(line, Indentation(LineOf(opening)));
  return true;
}

// The partner is written after the typed character and is one undo step with it.
void SciEditor::Impl::AnnouncePair(char typed) {
  const int caret = Editor().CaretPosition();
  if (typed == '"' || typed == '\'') {
    const auto styled = static_cast<int>(Send(SCI_GETENDSTYLED));
    const int end = std::min(caret + 1, Length());
    if (styled < end) Send(SCI_COLOURISE, std::min(styled, LineStart(LineOf(caret))), end);
  }
  const PairChance chance = ChanceOfPair(*this, caret, typed, *Editor().language);
  if (chance == PairChance::cNone) return;
  pairTyped = typed;
  pairsAnywhere = chance == PairChance::cAtAnyPlace;
  BeginTyping();
}

void SciEditor::Impl::FinishPair(char typed) {
  if (pairTyped == '\0' || pairTyped != typed) return;
  pairTyped = '\0';
  const int caret = Editor().CaretPosition();
  if (Range(caret - 1, caret) != std::string_view(&typed, 1)) return;
  if (!pairsAnywhere && IsQuietHere(typed)) return;
  const char partner[] = {PartnerOf(typed), '\0'};
  SendText(SCI_INSERTTEXT, caret, partner);
  pairs.Add(caret - 1, caret);
}

void SciEditor::Impl::BeginTyping() {
  if (!typesOneStep) Send(SCI_BEGINUNDOACTION);
  typesOneStep = true;
}

void SciEditor::Impl::EndTyping() {
  pairTyped = '\0';
  if (HasColumn()) LeaveCaretsInRows();
  if (typesOneStep) Send(SCI_ENDUNDOACTION);
  typesOneStep = false;
}

}  // namespace mavro
