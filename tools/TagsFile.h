#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "FileParts.h"
#include "tags/TagFacts.h"
#include "tags/TagLanguages.h"

namespace zendry {

// The tags of sources, on the way into a tags file: sorted by the bytes of their lines, each line
// once, behind the lines that tell the format.
class TagsFile {
 public:
  // The name of the source whose tags come next. It has no TAB and no line end.
  void BeginSource(std::string_view name);
  void Add(const TagFacts& tag, Language language);

  // Passes the text of the file in parts. Each call sorts the tags anew.
  void Pass(const mavro::TakePart& take) const;

 private:
  // Texts of lines, each behind its head. They stay where they are once they are written: memory
  // that is used the first time costs more than what is done with it.
  std::deque<std::string> blocks;
  std::vector<std::string> sources;  // as they stand in the lines, each with its TAB
  size_t count = 0;
};

}  // namespace zendry
