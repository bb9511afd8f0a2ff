#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "search/LineFind.h"
#include "search/OpenTexts.h"
#include "search/ReplaceJournal.h"

namespace zendry {

// The hits of a replacement in a file.
struct FileHits {
  std::string path;
  size_t hits = 0;    // that will be replaced
  size_t missed = 0;  // further ones, which stay: findInLine misses them
};

// Counts the hits in a file, in the text of its editor if it is open. None if it can't be read.
FileHits CountHits(const std::string& path, const TextScan& scan, OpenTexts& open);

struct ReplaceSum {
  std::string whyNothing;  // why no file was changed
  size_t hits = 0;         // that were replaced
  size_t files = 0;
  size_t missed = 0;                // that stay
  std::vector<std::string> failed;  // files that couldn't be changed, with the reason
};

// Replaces the hits of a term in files: the text of an open editor in one undo step, other files on
// the disk, each whole or not at all. The old texts are noted in `undo` first. Encodings, line ends
// and all other bytes stay. A file that can't be changed is named, and the others follow.
ReplaceSum ReplaceInFiles(const std::vector<std::string>& paths, const TextScan& scan,
                          std::string_view with, OpenTexts& open, ReplaceUndo& undo);

}  // namespace zendry
