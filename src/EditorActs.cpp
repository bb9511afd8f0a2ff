#include "EditorActs.h"

#include "CommandTable.h"

namespace zendry {

namespace {

using mavro::cAltKey;
using mavro::cControlKey;
using mavro::cShiftKey;

using enum Offered;

constexpr CommandRow cRows[] = {
    {mavro::cSubmenuRow, "&Find and Replace"},
    {801, "&Find", cControlKey | 'F', cLater},
    {802, "&Find Selection", cControlKey | cKeyF3, cLater},
    {803, "&Find Selection Back", cControlKey | cShiftKey | cKeyF3, cLater},
    {804, "Find Repeat", cKeyF3, cLater},
    {805, "Find Previous", cShiftKey | cKeyF3, cLater},
    {806, "&Replace", cControlKey | 'R', cLater},
    {807, "&Go to line", cControlKey | 'G', cLater},
    {mavro::cEndSubmenuRow},
    {mavro::cSubmenuRow, "&Bookmarks"},
    {cToggleBookmarkCommand, "&Toggle bookmark", cControlKey | cKeyF2, cLater},
    {809, "To next bookmark", cKeyF2, cLater},
    {810, "To prev bookmark", cShiftKey | cKeyF2, cLater},
    {811, "Select to next bookmark", cAltKey | cKeyF2, cLater},
    {812, "Select to prev bookmark", cAltKey | cShiftKey | cKeyF2, cLater},
    {813, "Clear all bookmarks", cControlKey | cShiftKey | cKeyF2, cLater},
    {mavro::cEndSubmenuRow},
    {cCutCommand, "Cut", 0, cLater},
    {cCopyCommand, "Copy", 0, cLater},
    {cPasteCommand, "Paste", 0, cLater},
    {mavro::cSeparatorRow},
    {cUndoCommand, "Undo", cControlKey | 'Z', cLater},
    {cRedoCommand, "Redo", cControlKey | cShiftKey | 'Z', cLater},
    {819, "Delete &Line", cControlKey | 'Y', cLater},
    {mavro::cSeparatorRow},
    {cGoToMatchCommand, "Go to match brace", cControlKey | 'B', cLater},
    {821, "Select to match brace", cControlKey | cShiftKey | 'B', cLater},
    {822, "To lower case", cControlKey | 'T', cLater},
    {823, "To upper case", cControlKey | cShiftKey | 'T', cLater},
    {mavro::cSeparatorRow},
    {cRecordMacroCommand, "Record macro", cControlKey | cShiftKey | 'M', cLater},
    {cPlayMacroCommand, "Play macro", cControlKey | 'M', cLater},
    {mavro::cSeparatorRow},
    {826, "Show line numbers", cControlKey | cShiftKey | 'N', cLater},
    {827, "Switch font type", cControlKey | 'Q', cLater},
};

}  // namespace

EditorActs theEditorActs;

EditorActs::EditorActs() {
  AddCommands(*this, cRows);
}

}  // namespace zendry
