#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mavro {

// Cells as text, in the form that spreadsheets put onto the clipboard: a tab between cells, a line
// feed after each row. A cell that holds a tab, a line break or begins with a quote is in quotes,
// its own quotes doubled.

// Appends a cell to a row's text.
void AppendCell(std::string& text, std::string_view cell);
// The rows of a text, each with its cells. Rows may end with LF, CR LF or CR; the last one needs no
// end. A quote that no second one closes is a letter. An empty text has no rows.
std::vector<std::vector<std::string>> SplitCells(std::string_view text);

}  // namespace mavro
