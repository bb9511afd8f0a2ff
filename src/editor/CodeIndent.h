#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "code/CppIndent.h"

namespace mavro {
class SciEditor;
struct EditorOptions;
}  // namespace mavro

namespace zendry {

// Indents the code of one editor as its file does. The editor must outlive it.
class CodeIndent {
 public:
  explicit CodeIndent(mavro::SciEditor& itsEditor) : editor(itsEditor) {}

  // Reads the habits from the editor's text, and puts the file's tabs and indentation into the
  // editor's options. What the text doesn't show stays as the options have it.
  void Learn();
  // Puts what was learned into options that have been set anew.
  void ApplyTo(mavro::EditorOptions& options) const;

  // Indents lines after a typed character: a new line, the line that Enter has left, or the line
  // whose first sign changes its place. A line that the user has indented by hand stays.
  void Typed(char typed);
  // Indents a line by its text, wherever the caret is.
  void IndentLine(int line);
  // A text that is about to be pasted at the selection, moved to the place's indentation. A text of
  // one line, or one for the middle of a line, comes back as it is.
  std::string Moved(std::string_view pasted) const;

  // The columns for a line; none inside a literal. `instead` is the line's text.
  std::optional<int> ColumnsOf(int line) const;
  std::optional<int> ColumnsOf(int line, std::string_view instead) const;

  // What was learned; of a new text, what the options say.
  IndentHabits Habits() const;

 private:
  int WindowStart(int line) const;
  bool IsOwn(int line) const;
  std::optional<int> ColumnsToType(int line) const;
  void Indent(int line);
  void OnNewLine(int line);

  void Tell(unsigned get, unsigned set, int value);

  mavro::SciEditor& editor;
  std::optional<IndentHabits> learned;
  int ownLine = -1;  // the line that was last indented here, and its columns
  int ownColumns = 0;
};

}  // namespace zendry
