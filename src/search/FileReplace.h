#pragma once

#include <cstddef>
#include <functional>
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
  size_t untouched = 0;             // files that were still to be changed when it was stopped
};

// Asked before each file, twice for most: it is looked at before any is changed. False ends the
// replacement.
using ReplaceGoesOn = std::function<bool(const std::string& path, size_t done, size_t total)>;

// Replaces the hits of a term in files: the text of an open editor in one undo step, other files on
// the disk, each whole or not at all. The old texts are noted in `undo` first. Encodings, line ends
// and all other bytes stay. A file that can't be changed is named, and the others follow. If it is
// stopped, what was changed by then stays and can be undone.
ReplaceSum ReplaceInFiles(const std::vector<std::string>& paths, const TextScan& scan,
                          std::string_view with, OpenTexts& open, ReplaceUndo& undo,
                          const ReplaceGoesOn& goesOn = {});

}  // namespace zendry
