#pragma once

#include <string>
#include <vector>

namespace zendry {

// Statements of a form that the designer can't keep between the markers, each to stand behind the
// end of its region: unchanged, or as a comment where it isn't a whole statement.
struct KeptLines {
  std::vector<std::string> decl, init;  // lines with their line ends
};

// Takes the statements that would be lost or changed out of a form's regions, so that the rest
// comes back as it is. Blank lines stay in their places.
KeptLines TakeKept(std::vector<std::string>& declLines, std::vector<std::string>& initLines);

// Appends kept lines to a written region, behind its closing marker.
void AppendKept(std::vector<std::string>& region, const std::vector<std::string>& kept);

}  // namespace zendry
