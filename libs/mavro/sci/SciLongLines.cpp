#include <string>

#include "SciImpl.h"
#include "SystemDialogs.h"

// Lines that are not shown, in the editor's window: the notes on their stand-ins, the conversion of
// text on its way in and out, and the command that shows them.

namespace mavro {

namespace {

// Longer lines are shown after a question; the toolkit measures about this many bytes in a second.
constexpr size_t cMostUnasked = 1024 * 1024;
constexpr size_t cMeasuredInASecond = 800 * 1024;

}  // namespace

void SciEditor::Impl::SetHooks() {
  Window()->fold = [this](std::string_view text) { return FoldNew(text); };
  Window()->pasted = [this](std::string text) {
    return HasSeveral() ? PastedAtEach(std::move(text)) : Editor().onPaste(std::move(text));
  };
  Window()->copied = [this](std::string text) { return JoinedCopy(std::move(text)); };
  Window()->caretAdded = [this](int position, bool drags) { AddCaretAt(position, drags); };
  Window()->keyed = [this](const SciKey& key) { return TakeKey(key); };
  Window()->wholeOf = [this](const std::string& shown) -> std::function<std::string()> {
    if (!longLines.AreIn(shown)) return nullptr;
    return [lines = longLines, shown] { return lines.Unfold(shown); };
  };
}

// A text that is not UTF-8 can't have stand-ins.
std::string SciEditor::Impl::FoldNew(std::string_view text) {
  if (bytes == TextBytes::cAscii) bytes = ClassifyBytes(text);
  if (Editor().codePage != SC_CP_UTF8 && bytes == TextBytes::cOther) return std::string(text);
  std::string shown = longLines.Fold(text);
  if (longLines.AreIn(shown) && Editor().codePage != SC_CP_UTF8) SetCodePage(SC_CP_UTF8);
  SendNotes();
  return shown;
}

// Uses a target, so that NUL bytes are inserted too.
void SciEditor::Impl::PutText(std::string_view shown) {
  Send(SCI_TARGETFROMSELECTION);
  Send(SCI_REPLACETARGET, static_cast<Param>(shown.size()), reinterpret_cast<Param>(shown.data()));
  const int end = static_cast<int>(Send(SCI_GETTARGETEND));
  Editor().Select(end, end);
}

void SciEditor::Impl::SendNotes() {
  for (; notesSent < longLines.End(); ++notesSent) {
    const std::string note = longLines.NoteOf(notesSent);
    if (note.empty()) continue;
    const std::string character = LongLines::CharacterOf(notesSent);
    SendText(SCI_SETREPRESENTATION, reinterpret_cast<Param>(character.c_str()), note.c_str());
  }
}

void SciEditor::Impl::ForgetLongLines() {
  for (int number = 0; number < longLines.End(); ++number)
    if (longLines.Kept(number))
      SendText(SCI_CLEARREPRESENTATION,
               reinterpret_cast<Param>(LongLines::CharacterOf(number).c_str()), nullptr);
  longLines = {};
  notesSent = 0;
}

// The place of the stand-in at a position, else before it, else the first one in its line; -1 if
// there is none.
int SciEditor::Impl::StandInNear(int position) {
  for (const int at : {position, position - LongLines::cStandInBytes})
    if (standIns.At(at) >= 0) return at;
  const int line = LineOf(position), start = LineStart(line);
  const std::string text = Range(start, LineEnd(line));
  for (auto found = LongLines::FindCharacter(text, 0); found.number >= 0;
       found = LongLines::FindCharacter(text, found.place + LongLines::cStandInBytes))
    if (longLines.Kept(found.number)) return start + static_cast<int>(found.place);
  return -1;
}

// The whole text stays the same, so that a saved text stays saved.
bool SciEditor::Impl::ShowLongLineAt(int position) {
  const int place = StandInNear(position);
  if (place < 0) return false;
  const std::string line = *longLines.Kept(standIns.At(place));
  if (line.size() > cMostUnasked &&
      !Confirm("This line takes about " + std::to_string(line.size() / cMeasuredInASecond) +
               " seconds to be shown, and as long after each change of it.\n\nShow it?"))
    return false;
  const bool wasDirty = Editor().dirty, wasReadOnly = Editor().IsReadOnly();
  Editor().SetReadOnly(false);
  Send(SCI_SETTARGETRANGE, place, place + LongLines::cStandInBytes);
  Send(SCI_REPLACETARGET, static_cast<Param>(line.size()), reinterpret_cast<Param>(line.data()));
  if (!wasDirty) Send(SCI_SETSAVEPOINT);
  Editor().SetReadOnly(wasReadOnly);
  return true;
}

// A letter typed in overtype mode replaces the next letter. A stand-in is more than a letter:
// before it, letters are inserted.
void SciEditor::Impl::WatchTyping(int code) {
  if (code == cSciWillType) {
    pausesOvertype = Send(SCI_GETOVERTYPE) && standIns.At(Editor().CaretPosition()) >= 0;
    if (pausesOvertype) Send(SCI_SETOVERTYPE, 0);
  } else if (pausesOvertype) {
    pausesOvertype = false;
    Send(SCI_SETOVERTYPE, 1);
  }
  if (code == cSciTyped) EndTyping();
}

}  // namespace mavro
