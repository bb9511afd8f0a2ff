#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "base/PassedBodies.h"

namespace zendry {

// The parts of a source that the parser passes over while it looks for the braces of a body, as
// places of the input. Directives aren't part of them, nor is text that something else looks at.
class BodyNotes {
 public:
  // Text may be looked at up to a distance from the beginning of its line; what changes in a line
  // can't matter beyond half of that.
  static constexpr int cHalfLookAhead = 1024;

  void Start();
  void Add(TextPart part);
  // The parser looks ahead from somewhere in a line that begins at `line`, up to `end`.
  void LookAhead(int line, int end);
  size_t Count() const { return parts.size(); }
  // Drops all but the first `count` parts.
  void DropAfter(size_t count) { parts.resize(std::min(count, parts.size())); }
  std::vector<TextPart> Take() { return std::move(parts); }

 private:
  std::vector<TextPart> parts;  // in their order
  int lookedTo = 0;
};

}  // namespace zendry
