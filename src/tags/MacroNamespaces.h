#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tags/TagData.h"

namespace zendry {

// Finds where macros that stand alone on a line open namespaces: for
// "#define BEGIN namespace outer { namespace inner {" every line "BEGIN" opens both.
class MacroNamespaces {
 public:
  using TextOf = std::function<std::string(const TagData&)>;

  // The first line on which each of the files opens that namespace by a macro that one of them
  // defines, with the file's index in the list. Files that don't are left out. Only the text of a
  // file that is new or has changed is asked for.
  std::vector<std::pair<size_t, int>> FirstLines(const std::vector<const TagData*>& files,
                                                 std::string_view name, const TextOf& textOf);

 private:
  struct Opener {
    std::string macro;
    std::vector<std::string> namespaces;
  };
  struct File {
    uint64_t generation = 0;
    std::vector<Opener> openers;
    std::vector<std::pair<std::string, int>> loneWords;  // each with its first line
  };

  static void Scan(File& file, std::string_view text);

  std::map<const TagData*, File> scanned;
};

}  // namespace zendry
