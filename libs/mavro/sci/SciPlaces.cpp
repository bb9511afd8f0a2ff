#include <algorithm>

#include "SciImpl.h"
#include "WordRules.h"

// Lines and places: bookmarks, marks, matching braces, folds.

namespace mavro {

namespace {

constexpr int cBookmarkMarker = 1;
constexpr int cBookmarkMask = 1 << cBookmarkMarker;
constexpr Param cLinesAbove = 5;

}  // namespace

// Doesn't scroll if the line is well in view.
void SciEditor::Impl::GoToLine(int line) {
  line = std::clamp(line, 0, static_cast<int>(Send(SCI_GETLINECOUNT)) - 1);
  Send(SCI_ENSUREVISIBLE, line);
  Send(SCI_GOTOLINE, line);
  const Param shown = Send(SCI_VISIBLEFROMDOCLINE, line);
  const Param top = Send(SCI_GETFIRSTVISIBLELINE);
  const Param rows = std::max<Param>(Send(SCI_LINESONSCREEN), 1);
  const Param above = std::min(cLinesAbove, rows / 3);
  if (shown - above < top || shown + above >= top + rows)
    Send(SCI_SETFIRSTVISIBLELINE, std::max<Param>(shown - above, 0));
}

void SciEditor::ToggleBookmark(int line) {
  const bool marked = (Send(SCI_MARKERGET, static_cast<std::uintptr_t>(line)) & cBookmarkMask) != 0;
  Send(marked ? SCI_MARKERDELETE : SCI_MARKERADD, static_cast<std::uintptr_t>(line),
       static_cast<std::intptr_t>(cBookmarkMarker));
}

void SciEditor::SetLineMark(int number, int line) {
  for (int i = 0; i < markTypeCount; ++i)
    if (markTypes[i].number == number && markTypes[i].exclusive) RemoveLineMarks(number);
  for (const int marker : {number, Impl::SignOf(number)})
    Send(SCI_MARKERADD, static_cast<std::uintptr_t>(line), static_cast<std::intptr_t>(marker));
  ItsImpl().ShowCaretLine();
}

void SciEditor::RemoveLineMarks(int number) {
  for (const int marker : {number, Impl::SignOf(number)})
    Send(SCI_MARKERDELETEALL, static_cast<std::uintptr_t>(marker));
  ItsImpl().ShowCaretLine();
}

int SciEditor::Impl::Put(int number, int line) {
  return static_cast<int>(Send(SCI_MARKERADD, line, SignOf(number)));
}

void SciEditor::Impl::Take(int boardHandle) {
  Send(SCI_MARKERDELETEHANDLE, boardHandle);
}

int SciEditor::Impl::LineOfSign(int boardHandle) const {
  return static_cast<int>(Send(SCI_MARKERLINEFROMHANDLE, boardHandle));
}

bool SciEditor::Impl::HasSign(int number, int line) const {
  return (Send(SCI_MARKERGET, line) >> SignOf(number) & 1) != 0;
}

int SciEditor::AddSign(int number, int line) {
  return ItsImpl().signs.Add(number, line);
}

int SciEditor::SignLine(int handle) {
  return ItsImpl().signs.LineOf(handle);
}

void SciEditor::ChangeSign(int handle, int number) {
  ItsImpl().signs.Change(handle, number);
}

void SciEditor::RemoveSign(int handle) {
  ItsImpl().signs.Remove(handle);
}

// Past one end of the text it continues at the other.
void SciEditor::Impl::GoToBookmark(Way way, Selecting selecting) {
  const bool goesOn = way == Way::cNext;
  const unsigned search = goesOn ? SCI_MARKERNEXT : SCI_MARKERPREVIOUS;
  const Param lastLine = Send(SCI_GETLINECOUNT) - 1;
  const Param line = Editor().CaretLine();
  Param found = -1;
  const bool inside = goesOn ? line < lastLine : line > 0;
  if (inside) found = Send(search, goesOn ? line + 1 : line - 1, cBookmarkMask);
  if (found < 0) found = Send(search, goesOn ? 0 : lastLine, cBookmarkMask);
  if (found < 0) return;
  const Param anchor = Send(SCI_GETANCHOR);
  GoToLine(static_cast<int>(found));
  if (selecting == Selecting::cUpToThere)
    Send(SCI_SETSEL, anchor, LineStart(static_cast<int>(found)));
}

// The caret ends after a brace: after the one it goes to, or when selecting, after the later one.
void SciEditor::Impl::GoToMatch(Selecting selecting) {
  EditorOptions both = *Editor().options;
  both.braceMatch = both.braceMatchAfter = true;
  const BraceAtCaret brace = FindBrace(*this, Editor().CaretPosition(), both, Editor().language);
  if (brace.position < 0 || brace.colon) return;
  const Param partner = Send(SCI_BRACEMATCH, brace.position, 0);
  if (partner < 0) return;
  Send(SCI_ENSUREVISIBLE, Send(SCI_LINEFROMPOSITION, partner));
  if (selecting == Selecting::cUpToThere)
    Send(SCI_SETSEL, std::min<Param>(brace.position, partner),
         std::max<Param>(brace.position, partner) + 1);
  else
    Send(SCI_GOTOPOS, partner + 1);
}

// Runs `change`, which hides or shows lines, so that the caret stays in its row of the window, or,
// if it is not in view, the first line.
void SciEditor::Impl::KeepInView(const std::function<void()>& change) {
  const Param top = Send(SCI_GETFIRSTVISIBLELINE);
  const Param caretRow = Send(SCI_VISIBLEFROMDOCLINE, Editor().CaretLine()) - top;
  const bool isInView = caretRow >= 0 && caretRow < Send(SCI_LINESONSCREEN);
  const Param firstLine = Send(SCI_DOCLINEFROMVISIBLE, top);
  change();
  const Param line = isInView ? Editor().CaretLine() : firstLine;
  const Param row = Send(SCI_VISIBLEFROMDOCLINE, line) - (isInView ? caretRow : 0);
  Send(SCI_SETFIRSTVISIBLELINE, std::max<Param>(row, 0));
}

void SciEditor::Impl::SetAllFolds(bool open) {
  if (!hwnd || huge) return;
  Send(SCI_COLOURISE, 0, -1);
  KeepInView([&] {
    if (open)
      Send(SCI_FOLDALL, SC_FOLDACTION_EXPAND);
    else
      CloseFolds();
  });
}

// Inner folds are closed too, so that one that is opened again shows its parts. The caret goes to
// the line that remains of its fold.
void SciEditor::Impl::CloseFolds() {
  int shown = Editor().CaretLine();
  for (Param line = shown; line >= 0; line = Send(SCI_GETFOLDPARENT, line))
    shown = static_cast<int>(line);
  if (shown != Editor().CaretLine()) Send(SCI_GOTOPOS, LineEnd(shown));
  for (Param line = Send(SCI_GETLINECOUNT) - 1; line >= 0; --line)
    if (Send(SCI_GETFOLDLEVEL, line) & SC_FOLDLEVELHEADERFLAG)
      Send(SCI_FOLDLINE, line, SC_FOLDACTION_CONTRACT);
}

// Closes all folds, or opens them if the first one is closed.
void SciEditor::Impl::FoldAll() {
  if (huge) return;
  Send(SCI_COLOURISE, 0, -1);
  const int lines = static_cast<int>(Send(SCI_GETLINECOUNT));
  for (int line = 0; line < lines; ++line) {
    if (!(Send(SCI_GETFOLDLEVEL, line) & SC_FOLDLEVELHEADERFLAG)) continue;
    Send(SCI_FOLDALL,
         Send(SCI_GETFOLDEXPANDED, line) ? SC_FOLDACTION_CONTRACT : SC_FOLDACTION_EXPAND);
    break;
  }
}

}  // namespace mavro
