#pragma once

#include <string_view>
#include <vector>

#include "tags/IncludeScan.h"

namespace zendry {

struct FoundInclude : IncludeRec {
  bool isOff = false;  // in a part of the text that is switched off
};

// The facts about a source or header that decide on its part in a new project.
struct SourceFacts {
  bool hasMain = false;  // it defines the function `main`
  std::vector<FoundInclude> includes;
  bool asksForConfig = false;  // includes "config.h" if HAVE_CONFIG_H is defined
};

// Reads a C or C++ text. What stands between `#if 0`, `#ifdef NAME` or `#if defined(NAME)` and its
// end or `#else` counts as switched off, unless NAME is one that gcc defines on Linux. A `main`
// that is switched off doesn't count; includes count in any case, because the macros of a build are
// not known.
SourceFacts ReadSourceFacts(std::string_view text);

}  // namespace zendry
