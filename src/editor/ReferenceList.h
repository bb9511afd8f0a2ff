#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ListView.h"
#include "TabCtrl.h"
#include "editor/EditTabs.h"

namespace zendry {

// A page with a list of places in files. The selected row is the current place; going to a place
// opens its file at its line. In the text of tools, control bytes are shown as marks.
class ReferenceList : public mavro::TabPage {
 public:
  // `newMark` is put beside the current place in its editor. `itsTabs` shows the places.
  ReferenceList(const std::string& caption, EditorMark newMark, EditTabs& itsTabs);

  // Appends a place; `file` is relative to the project's folder. A row without a file has only the
  // text. The caret goes to `column`, counted as a compiler does: from 1, a TAB to the next of the
  // stops at each 8; 0 for the beginning of the line.
  void AddRow(const std::string& file, int line, std::string_view message, int column = 0);
  // The same in two steps, for many places: the list shows those that were kept when it is told.
  void KeepRow(const std::string& file, int line, std::string_view message, int column = 0);
  void ShowKept();
  // Appends a row that is no place but a heading for those after it.
  void AddCaption(const std::string& caption);
  // Appends to the last row's text; the text is cut at a readable length.
  void AppendToLast(std::string_view message);
  void Clear();
  int RowCount() const { return static_cast<int>(places.size()); }
  // Counts the calls of Clear: whoever has filled the list finds out if others have since.
  int Clearings() const { return clearings; }

  // Opens the current place; does nothing when the file does not exist.
  void ShowCurrent();
  void ShowRow(int row);
  // Go to the next or the previous row. At the end of the list they beep and stay.
  void GoNext();
  void GoPrev();

  mavro::ListView list;

 private:
  void OnRow(mavro::NotifyArgs& args);
  void GoToRow(int row);
  // The next place from a row on, in steps of 1 or -1; -1 if there is none.
  int PlaceFrom(int row, int step) const;

  // A row as it was given; the list asks for its cells when they are shown.
  struct Place {
    size_t file = 0;  // in `files`
    int line = 0;
    int column = 0;
    size_t text = 0;  // where the text begins in `texts`
    size_t length = 0;
  };
  bool IsPlace(int row) const { return !files[places[static_cast<size_t>(row)].file].empty(); }
  std::vector<std::string> CellsOf(int row) const;

  const EditorMark mark;
  EditTabs& tabs;
  int clearings = 0;
  std::vector<Place> places;  // by row
  std::vector<std::string> files;
  std::string texts;
};

}  // namespace zendry
