#pragma once

#include "Edit.h"
#include "FileEditor.h"

namespace zendry {

// A file to be read and walked, not changed.
class FileView : public mavro::Memo, public FileEditor {
 public:
  FileView();

  mavro::Control& GetControl() override { return *this; }
  bool Load(const std::string& newPath) override;
  bool Save() override;
  void GoToLine(int line) override;
  int CaretLine() const override { return Memo::CaretLine(); }
  int CaretColumn() const override { return Memo::CaretColumn(); }
  void SetMark(EditorMark mark, int line) override;
  void RemoveMark(EditorMark mark) override;

 private:
  void OnCaretMoved(mavro::NotifyArgs& args);

  EditorMark shownMark = cNoMark;
};

}  // namespace zendry
