#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rescue/RescueCopies.h"

namespace zendry {

// Knows the files that ended earlier runs of the program while they were opened. Before the program
// opens a file that the user has not just asked for, it writes the file's path to a mark: a file in
// the rescue folder, named after this process. If the mark is still there after the process has
// ended, that file ended it. Several running programs don't disturb each other. If the folder can't
// be written, files are opened without marks.
class StartMarks {
 public:
  StartMarks() = default;
  ~StartMarks() { Clear(); }
  StartMarks(const StartMarks&) = delete;
  StartMarks& operator=(const StartMarks&) = delete;

  // Marks a file and answers true. If an ended process has left a mark on the file, removes that
  // mark and answers false: the file is to be left closed this time. If this process ends at a
  // later file, its own mark names both files for the next start.
  bool Begin(const std::string& path);
  // From now on, this is the file that may end the program; empty for none.
  void Watch(const std::string& path);
  // Removes the mark: all files are open, or the program ends normally.
  void Clear();

 private:
  bool TakeFromEndedProcess(const std::string& path);

  std::optional<std::vector<RescueCopy>> leftByOthers;  // read at the first Begin
  std::vector<std::string> leftClosed;
};

}  // namespace zendry
