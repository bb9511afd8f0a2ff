#include "EditReplaceDlg.h"
#include "FindCommands.h"
#include "FindTextDlg.h"
#include "GoToLineDlg.h"
#include "LineCommands.h"
#include "MacroLines.h"
#include "SciImpl.h"
#include "UndoStep.h"

namespace mavro {

namespace {

using Editor = SciEditor::Impl;
using Way = Editor::Way;
using Selecting = Editor::Selecting;

// Commands that are one message without parameters.
struct MessageRow {
  int id;
  unsigned message;
};
constexpr MessageRow cMessages[] = {
    {cSciCut, SCI_CUT},
    {cSciCopy, SCI_COPY},
    {cSciPaste, SCI_PASTE},
    {cSciUndo, SCI_UNDO},
    {cSciRedo, SCI_REDO},
    {cSciDeleteLine, SCI_LINEDELETE},
    {cSciLowerCase, SCI_LOWERCASE},
    {cSciUpperCase, SCI_UPPERCASE},
    {cSciMoveLinesUp, SCI_MOVESELECTEDLINESUP},
    {cSciMoveLinesDown, SCI_MOVESELECTEDLINESDOWN},
    {cSciDuplicate, SCI_SELECTIONDUPLICATE},
    {cSciZoomIn, SCI_ZOOMIN},
    {cSciZoomOut, SCI_ZOOMOUT},
    {cSciZoomNone, SCI_SETZOOM},
};

// Toggles of the options.
struct OptionRow {
  int id;
  bool EditorOptions::*option;
};
constexpr OptionRow cOptions[] = {
    {cSciShowLineNumbers, &EditorOptions::lineNumbers},
    {cSciSwitchFontType, &EditorOptions::monospaced},
    {cSciShowWhiteSpace, &EditorOptions::showWhiteSpace},
    {cSciShowLineEnds, &EditorOptions::showLineEnds},
    {cSciWrapLines, &EditorOptions::wrapLines},
};

struct ActionRow {
  int id;
  void (*act)(Editor& editor, SciEditor& control);
};
constexpr ActionRow cActions[] = {
    {cSciFind, [](Editor&, SciEditor& control) { AskAndFind(control); }},
    {cSciFindSelection,
     [](Editor&, SciEditor& control) { FindSelection(control, FindWay::cForward); }},
    {cSciFindSelectionBack,
     [](Editor&, SciEditor& control) { FindSelection(control, FindWay::cBackward); }},
    {cSciFindRepeat, [](Editor&, SciEditor& control) { FindNext(control, FindWayOfDialog()); }},
    {cSciFindPrevious,
     [](Editor&, SciEditor& control) { FindNext(control, Opposite(FindWayOfDialog())); }},
    {cSciReplace, [](Editor&, SciEditor& control) { AskAndReplace(control); }},
    {cSciGoToLine, [](Editor&, SciEditor& control) { AskGoToLine(control); }},
    {cSciToggleBookmark,
     [](Editor&, SciEditor& control) { control.ToggleBookmark(control.CaretLine()); }},
    {cSciNextBookmark,
     [](Editor& editor, SciEditor&) { editor.GoToBookmark(Way::cNext, Selecting::cNothing); }},
    {cSciPrevBookmark,
     [](Editor& editor, SciEditor&) { editor.GoToBookmark(Way::cPrevious, Selecting::cNothing); }},
    {cSciSelectToNextBookmark,
     [](Editor& editor, SciEditor&) { editor.GoToBookmark(Way::cNext, Selecting::cUpToThere); }},
    {cSciSelectToPrevBookmark,
     [](Editor& editor, SciEditor&) {
       editor.GoToBookmark(Way::cPrevious, Selecting::cUpToThere);
     }},
    {cSciClearBookmarks, [](Editor& editor, SciEditor&) { editor.Send(SCI_MARKERDELETEALL, 1); }},
    {cSciGoToMatch, [](Editor& editor, SciEditor&) { editor.GoToMatch(Selecting::cNothing); }},
    {cSciSelectToMatch,
     [](Editor& editor, SciEditor&) { editor.GoToMatch(Selecting::cUpToThere); }},
    {cSciToggleComment, [](Editor&, SciEditor& control) { ToggleLineComment(control); }},
    {cSciJoinLines, [](Editor&, SciEditor& control) { JoinLines(control); }},
    {cSciSortLines, [](Editor&, SciEditor& control) { SortLines(control); }},
    {cSciSelectOccurrences, [](Editor& editor, SciEditor&) { editor.SelectOccurrences(); }},
    {cSciNextOccurrence, [](Editor& editor, SciEditor&) { editor.AddOccurrence(); }},
    {cSciCaretAbove, [](Editor& editor, SciEditor&) { editor.AddCaret(Way::cPrevious); }},
    {cSciCaretBelow, [](Editor& editor, SciEditor&) { editor.AddCaret(Way::cNext); }},
    {cSciFoldAll, [](Editor& editor, SciEditor&) { editor.FoldAll(); }},
    {cSciCloseFolds, [](Editor& editor, SciEditor&) { editor.SetAllFolds(false); }},
    {cSciOpenFolds, [](Editor& editor, SciEditor&) { editor.SetAllFolds(true); }},
    {cSciEndsLf, [](Editor& editor, SciEditor&) { editor.ConvertLineEnds(SC_EOL_LF); }},
    {cSciEndsCrLf, [](Editor& editor, SciEditor&) { editor.ConvertLineEnds(SC_EOL_CRLF); }},
    {cSciEndsCr, [](Editor& editor, SciEditor&) { editor.ConvertLineEnds(SC_EOL_CR); }},
    {cSciStripBlanks, [](Editor& editor, SciEditor&) { editor.StripLines(); }},
    {cSciShowLongLine, [](Editor&, SciEditor& control) { control.ShowLongLine(); }},
    {cSciReadOnly, [](Editor&, SciEditor& control) { control.SetReadOnly(!control.IsReadOnly()); }},
    {cSciPlayMacro, [](Editor& editor, SciEditor&) { editor.PlayMacro(); }},
    {cSciRecordMacro,
     [](Editor& editor, SciEditor& control) { editor.SetRecording(!control.inMacroRecord); }},
};

template <class Row, size_t count>
const Row* FindRow(const Row (&rows)[count], int id) {
  for (const Row& row : rows)
    if (row.id == id) return &row;
  return nullptr;
}

}  // namespace

bool SciEditor::OnCommand(int id) {
  Impl& editor = ItsImpl();
  editor.MergeCarets();
  if (const MessageRow* row = FindRow(cMessages, id)) {
    editor.Send(row->message);
  } else if (const OptionRow* option = FindRow(cOptions, id)) {
    options.get()->*option->option = !(options.get()->*option->option);
    editor.ApplyToggles();
  } else if (const ActionRow* action = FindRow(cActions, id)) {
    action->act(editor, *this);
  } else {
    return false;
  }
  return true;
}

void SciEditor::Impl::SetRecording(bool on) {
  if (on) Editor().macro.clear();
  Editor().inMacroRecord = on;
  Send(on ? SCI_STARTRECORD : SCI_STOPRECORD);
}

// One undo step. The contents of the lines are not trusted: they may come from a file.
void SciEditor::Impl::PlayMacro() {
  if (!hwnd || Editor().inMacroRecord) return;
  const UndoStep step(Editor());
  for (const std::string& line : Editor().macro) {
    MacroStep step = ParseMacroLine(line);
    if (!MakeReplayable(step, Length())) continue;
    SendText(static_cast<unsigned>(step.message), step.wParam,
             step.hasText ? step.text.c_str() : nullptr);
  }
}

}  // namespace mavro
