#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// One name of a file's include list. `flag` is 1 for a name in quotes and 0 for one in angle
// brackets, which the Makefile export skips.
struct IncludeEntry {
  int flag = 0;
  std::string name;
};

// The includes of a source text in the order found, without preprocessing: every line that begins
// with "#" in its first column and goes on with "include" gives one, even inside a comment or a
// branch that is switched off. White space counts nowhere in such a line, not even in the name.
// A name of more than 244 characters, or one that isn't closed on its line, is none. Lines end with
// LF, CR LF or CR.
std::vector<IncludeEntry> ScanIncludes(std::string_view text);

}  // namespace zendry
