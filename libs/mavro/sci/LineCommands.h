#pragma once

namespace mavro {

class SciEditor;

// Commands on the lines of the selection, or on the caret's line. A selection that ends at the
// start of a line doesn't include that line. Each is one undo step, and the lines that it changes
// stay selected.

// Takes the language's sign of a line comment out of all lines if each has it, else puts it before
// each, in one column. Blank lines are left alone.
void ToggleLineComment(SciEditor& editor);
// Makes one line of several, with one blank between two; of a single line and the one after it.
void JoinLines(SciEditor& editor);
// Sorts the lines by their bytes.
void SortLines(SciEditor& editor);

}  // namespace mavro
