#include "editor/EditorActs.h"

#include "Keys.h"
#include "OccurrenceRules.h"
#include "SciCommands.h"
#include "SearchState.h"
#include "base/ControlBytes.h"
#include "base/FileCommands.h"
#include "config/EditorSettings.h"
#include "editor/EditTabs.h"
#include "editor/EditorHost.h"
#include "editor/TabList.h"

namespace zendry {

namespace {

using mavro::cAltKey;
using mavro::cControlKey;
using mavro::cShiftKey;

constexpr CommandRow cRows[] = {
    {mavro::cSubmenuRow, "&Find and Replace"},
    {cFindCommand, "&Find", cControlKey | 'F'},
    {mavro::cSciFindSelection, "&Find Selection", cControlKey | cKeyF3},
    {mavro::cSciFindSelectionBack, "&Find Selection Back", cControlKey | cShiftKey | cKeyF3},
    {cFindRepeatCommand, "Find Repeat", cKeyF3},
    {mavro::cSciFindPrevious, "Find Previous", cShiftKey | cKeyF3},
    {mavro::cSciReplace, "&Replace", cControlKey | 'R'},
    {807, "&Go to line", cControlKey | 'G'},
    {mavro::cEndSubmenuRow},
    {mavro::cSubmenuRow, "&Bookmarks"},
    {cToggleBookmarkCommand, "&Toggle bookmark", cControlKey | cKeyF2},
    {809, "To next bookmark", cKeyF2},
    {810, "To prev bookmark", cShiftKey | cKeyF2},
    {811, "Select to next bookmark", cAltKey | cKeyF2},
    {812, "Select to prev bookmark", cAltKey | cShiftKey | cKeyF2},
    {813, "Clear all bookmarks", cControlKey | cShiftKey | cKeyF2},
    {mavro::cEndSubmenuRow},
    {cCutCommand, "Cut"},
    {cCopyCommand, "Copy"},
    {cPasteCommand, "Paste"},
    {mavro::cSeparatorRow},
    {cUndoCommand, "Undo", cControlKey | 'Z'},
    {cRedoCommand, "Redo", cControlKey | cShiftKey | 'Z'},
    {819, "Delete &Line", cControlKey | 'Y'},
    {mavro::cSeparatorRow},
    {cGoToMatchCommand, "Go to match brace", cControlKey | 'B'},
    {821, "Select to match brace", cControlKey | cShiftKey | 'B'},
    {cLowerCaseCommand, "To lower case", cControlKey | 'T'},
    {823, "To upper case", cControlKey | cShiftKey | 'T'},
    {mavro::cSubmenuRow, "L&ines"},
    {mavro::cSciToggleComment, "Toggle &comment", cControlKey | cShiftKey | 'C'},
    {mavro::cSciMoveLinesUp, "Move &up", cAltKey | cKeyUp},
    {mavro::cSciMoveLinesDown, "Move &down", cAltKey | cKeyDown},
    {mavro::cSciDuplicate, "Du&plicate line or selection", cControlKey | 'D'},
    {mavro::cSciJoinLines, "&Join", cControlKey | 'J'},
    {mavro::cSciSortLines, "&Sort"},
    {mavro::cSciStripBlanks, "Strip &trailing blanks"},
    {mavro::cEndSubmenuRow},
    {mavro::cSubmenuRow, "Line &ends"},
    {mavro::cSciEndsLf, "&LF (Unix)"},
    {mavro::cSciEndsCrLf, "&CR LF (Windows)"},
    {mavro::cSciEndsCr, "C&R"},
    {mavro::cEndSubmenuRow},
    {mavro::cSubmenuRow, "&When saving"},
    {cStripWhenSavingCommand, "&Strip trailing blanks"},
    {cEndLastLineCommand, "&End the last line"},
    {mavro::cEndSubmenuRow},
    {mavro::cSubmenuRow, "Ca&rets"},
    {mavro::cSciSelectOccurrences, "Select &all occurrences", cControlKey | cShiftKey | 'L'},
    {mavro::cSciNextOccurrence, "Select &next occurrence", cControlKey | cShiftKey | 'D'},
    {mavro::cSciCaretAbove, "Add one a&bove", cControlKey | cAltKey | cKeyUp},
    {mavro::cSciCaretBelow, "Add one b&elow", cControlKey | cAltKey | cKeyDown},
    {mavro::cEndSubmenuRow},
    {mavro::cSubmenuRow, "&Tabs"},
    {cTabListCommand, "&Open tabs...", cControlKey | cShiftKey | 'O'},
    {cLastTabCommand, "&Last used", cControlKey | mavro::Key::cTab},
    {cCloseTabCommand, "&Close", cControlKey | 'W'},
    {mavro::cSeparatorRow},
    {cFirstTabCommand, "Tab &1", cAltKey | '1'},
    {cFirstTabCommand + 1, "Tab &2", cAltKey | '2'},
    {cFirstTabCommand + 2, "Tab &3", cAltKey | '3'},
    {cFirstTabCommand + 3, "Tab &4", cAltKey | '4'},
    {cFirstTabCommand + 4, "Tab &5", cAltKey | '5'},
    {cFirstTabCommand + 5, "Tab &6", cAltKey | '6'},
    {cFirstTabCommand + 6, "Tab &7", cAltKey | '7'},
    {cFirstTabCommand + 7, "Tab &8", cAltKey | '8'},
    {cFirstTabCommand + 8, "Tab &9", cAltKey | '9'},
    {mavro::cEndSubmenuRow},
    {mavro::cSubmenuRow, "&Zoom"},
    {mavro::cSciZoomIn, "&In", cControlKey | mavro::Key::cPlus},
    {mavro::cSciZoomOut, "&Out", cControlKey | mavro::Key::cMinus},
    {mavro::cSciZoomNone, "&None", cControlKey | '0'},
    {mavro::cEndSubmenuRow},
    {mavro::cSeparatorRow},
    {cRecordMacroCommand, "Record macro", cControlKey | cShiftKey | 'M'},
    {cPlayMacroCommand, "Play macro", cControlKey | 'M'},
    {mavro::cSeparatorRow},
    {cLineNumbersCommand, "Show line numbers", cControlKey | cShiftKey | 'N'},
    {cFontTypeCommand, "Switch font type", cControlKey | 'Q'},
    {cShowLongLineCommand, "Show long line"},
    {mavro::cSciReadOnly, "Read only"},
};

// The setting that a command toggles, for all tabs and the next start.
struct SettingRow {
  int id;
  int EditorSettings::*setting;
};
constexpr SettingRow cSettings[] = {
    {cLineNumbersCommand, &EditorSettings::lineNumbers},
    {cFontTypeCommand, &EditorSettings::useMonoFont},
    {mavro::cSciWrapLines, &EditorSettings::wrapLines},
    {mavro::cSciShowWhiteSpace, &EditorSettings::showWhiteSpace},
    {mavro::cSciShowLineEnds, &EditorSettings::showLineEnds},
    {cStripWhenSavingCommand, &EditorSettings::stripBlanks},
    {cEndLastLineCommand, &EditorSettings::endLastLine},
};
int* SettingOf(int id) {
  for (const SettingRow& row : cSettings)
    if (row.id == id) return &(theEditorSettings.*row.setting);
  return nullptr;
}

bool IsOn(int id, const CppEditor* front) {
  if (const int* setting = SettingOf(id)) return *setting != 0;
  if (!front) return false;
  switch (id) {
    case mavro::cSciReadOnly:
      return front->IsReadOnly();
    case mavro::cSciEndsLf:
      return front->Send(mavro::SCI_GETEOLMODE) == mavro::SC_EOL_LF;
    case mavro::cSciEndsCrLf:
      return front->Send(mavro::SCI_GETEOLMODE) == mavro::SC_EOL_CRLF;
    case mavro::cSciEndsCr:
      return front->Send(mavro::SCI_GETEOLMODE) == mavro::SC_EOL_CR;
    default:
      return false;
  }
}

std::string OccurrenceNote(int count) {
  if (count == 0) return "There is no word at the caret";
  if (count > static_cast<int>(mavro::cMostCarets))
    return "More than " + std::to_string(mavro::cMostCarets) + " occurrences: none is selected";
  return std::to_string(count) + (count == 1 ? " occurrence" : " occurrences") + " selected";
}

}  // namespace

EditorActs theEditorActs;

EditorActs::EditorActs() : CommandList(cRows) {}

CommandMarks EditorActs::MarksNow() const {
  const EditTab* tab = tabs ? tabs->Active() : nullptr;
  CommandMarks marks;
  for (size_t i = 0; i < marks.size(); ++i)
    marks[i] = IsOn(cMarkedCommands[i], tab ? tab->editor.get() : nullptr);
  return marks;
}

void EditorActs::CarryOut(int id) {
  EditTab* tab = tabs ? tabs->Active() : nullptr;
  if (!tab) return;
  if (id == cLastTabCommand) return tabs->ShowLastUsed();
  if (id == cCloseTabCommand) return tabs->OnCommand(cCloseCommand);
  if (id == cTabListCommand) return ChooseTab(*tabs);
  if (id >= cFirstTabCommand && id <= cNinthTabCommand) return tabs->Show(id - cFirstTabCommand);
  if (int* setting = SettingOf(id)) {
    *setting = !*setting;
    tabs->ApplySettings();
    return tabs->Host()->ShowCaretOf(*tab->editor);
  }
  if (id == cShowLongLineCommand && tab->editor->LinesNotShown() == 0)
    return tabs->Host()->Say("All lines of this file are shown");
  if (id == mavro::cSciSelectOccurrences)
    return tabs->Host()->Say(OccurrenceNote(tab->editor->SelectOccurrences()));
  tab->editor->OnCommand(id);
  if (id == cRecordMacroCommand) tabs->Host()->SetMacroRecording(tab->editor->inMacroRecord);
  tabs->Host()->ShowCaretOf(*tab->editor);
  const bool searches = id >= mavro::cSciFindSelection && id <= mavro::cSciFindPrevious;
  if (searches && !mavro::theSearch.found && !mavro::theSearch.whyNot.empty())
    tabs->Host()->Say(MarkControlBytes(mavro::theSearch.whyNot));
}

}  // namespace zendry
