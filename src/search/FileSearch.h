#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "search/LineFind.h"
#include "search/OpenTexts.h"

namespace zendry {

// Hears what a search in files finds.
class SearchListener {
 public:
  virtual ~SearchListener() = default;
  // A line with a hit. `text` has blanks in place of control characters and is cut at a readable
  // length. `column` is that of the first hit, as ToolColumns.h counts.
  virtual void Found(const std::string& path, size_t line, int column, std::string_view text) = 0;
  // The search by findInLine is done; what is found from now on, it has missed.
  virtual void MissedFollow(size_t count) = 0;
  // Asked before each file; false ends the search.
  virtual bool GoesOn(size_t done, size_t total) = 0;
};

struct SearchSum {
  size_t lines = 0;   // with hits, those not listed too
  size_t missed = 0;  // of them those that findInLine misses
  size_t files = 0;   // with hits
  size_t unread = 0;  // files that can't be read
  bool isStopped = false;
  bool isCut = false;  // there are more lines than are listed
};

// Looks for a term in files, in their order. The text of an open editor is what is searched, else
// the file; a file that can't be read is skipped and counted. UTF-16 with a mark is decoded.
SearchSum SearchFiles(const std::vector<std::string>& paths, const LineTerm& term, OpenTexts& open,
                      SearchListener& listener);

// Most lines that a search lists.
constexpr size_t cMostListed = 500'000;

}  // namespace zendry
