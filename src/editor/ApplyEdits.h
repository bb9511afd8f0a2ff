#pragma once

#include <optional>
#include <string>
#include <vector>

#include "code/MemberEdits.h"

namespace mavro {
class SciEditor;
}

namespace zendry {

class EditTabs;

// Makes edits of the shown text, which are in its order and don't overlap, in one undo step.
void ApplyTextEdits(const mavro::SciEditor& editor, const std::vector<TextEdit>& edits);

// Makes the edits of members for the texts of the tabs, unsaved text first. Files that aren't open
// are read, not opened. Everything must outlive the result.
MemberEdits EditsOfTabs(EditTabs& tabs, CodeWizard& wizard, CodeSources& sources);

// Applies a change to the editors of its files, one undo step in each, and shows the caret's place.
// Nothing is changed if a file can't be changed; the status line says why, as it says an error of
// the change itself. False then, and if there was nothing to do.
bool ApplyChange(EditTabs& tabs, const MemberChange& change);

}  // namespace zendry
