#include "editor/EditorViewActs.h"

#include "Keys.h"
#include "SciCommands.h"
#include "editor/EditorActs.h"

namespace zendry {

namespace {

using mavro::cAltKey;
using mavro::cControlKey;
using mavro::cShiftKey;

constexpr CommandRow cRows[] = {
    {mavro::cSciWrapLines, "&Word wrap", cAltKey | 'Z'},
    {mavro::cSciShowWhiteSpace, "Show w&hite space", cControlKey | cShiftKey | 'W'},
    {mavro::cSciShowLineEnds, "Show line &ends"},
    {mavro::cSeparatorRow},
    {mavro::cSciCloseFolds, "&Fold all", cAltKey | mavro::Key::cMinus},
    {mavro::cSciOpenFolds, "&Unfold all", cAltKey | mavro::Key::cPlus},
};

}  // namespace

EditorViewActs theEditorViewActs;

EditorViewActs::EditorViewActs() : CommandList(cRows) {}

void EditorViewActs::CarryOut(int id) {
  theEditorActs.OnCommand(id);
}

}  // namespace zendry
