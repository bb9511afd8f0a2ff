#pragma once

#include <string>

#include "Core.h"

namespace zendry {

// Marks that lists and the debugger put beside a line. A file has each of them at most once.
enum EditorMark { cNoMark = -1, cErrorMark = 2, cExecutionMark = 3 };

// What a tab shows of one file. Its control fills the tab's page; a control class derives from this
// as well.
class FileEditor {
 public:
  virtual ~FileEditor() = default;

  virtual mavro::Control& GetControl() = 0;

  // Reads the file and takes its name. False, with nothing changed, when it can't be read.
  virtual bool Load(const std::string& newPath) = 0;
  // Writes the text to `path`; false, and still dirty, when that fails.
  virtual bool Save() = 0;

  // Lines count from 1. A line past the end stands for the last one.
  virtual void GoToLine(int line) = 0;
  virtual int CaretLine() const = 0;
  virtual int CaretColumn() const = 0;

  // Moves a mark to a line, or takes it away.
  virtual void SetMark(EditorMark mark, int line) = 0;
  virtual void RemoveMark(EditorMark mark) = 0;

  std::string path;    // full, with forward slashes; empty for a file that has no name yet
  bool dirty = false;  // has changes that are not in the file
};

}  // namespace zendry
