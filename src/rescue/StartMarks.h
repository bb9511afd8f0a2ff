#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rescue/RescueCopies.h"

namespace zendry {

// Knows which files programs before this one did not get past. Before a file is opened that nobody
// has just asked for, its path is left in the rescue folder, in a file named after this process;
// what is still there when the process has ended is what it ended over. Several programs at once
// don't disturb each other. In a folder that can't be written files are opened without this.
class StartMarks {
 public:
  StartMarks() = default;
  ~StartMarks() { Clear(); }
  StartMarks(const StartMarks&) = delete;
  StartMarks& operator=(const StartMarks&) = delete;

  // Marks a file and answers true; or takes away the mark that an ended program has left on it and
  // answers false: it is to be left closed this time. Should this program come no further either,
  // its own mark tells the next one of both.
  bool Begin(const std::string& path);
  // From now on it is this file that may not be got past; empty for none.
  void Watch(const std::string& path);
  // All that was begun has been got past, or the program ends as it should.
  void Clear();

 private:
  bool TakeFromTheDead(const std::string& path);

  std::optional<std::vector<RescueCopy>> dead;  // read at the first Begin
  std::vector<std::string> leftClosed;
};

}  // namespace zendry
