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
  // text.
  void AddRow(const std::string& file, int line, std::string_view message);
  // Appends to the last row's text; the text is cut at a readable length.
  void AppendToLast(std::string_view message);
  void Clear();
  int RowCount() const { return list.rowCount; }
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

  const EditorMark mark;
  EditTabs& tabs;
  int clearings = 0;
  std::vector<std::string> files;  // of each row, as given: the list shows them with marks
};

}  // namespace zendry
