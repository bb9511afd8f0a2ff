#include "tags/BodyNotes.h"

namespace zendry {

void BodyNotes::Start() {
  parts.clear();
  lookedTo = 0;
}

void BodyNotes::Add(TextPart part) {
  part.start = std::max(part.start, lookedTo);
  if (part.start <= part.end) parts.push_back(part);
}

// Bytes in the line before the look move the place where it has to end.
void BodyNotes::LookAhead(int line, int end) {
  lookedTo = std::max(lookedTo, end);
  if (end - line <= cHalfLookAhead) return;
  while (!parts.empty() && parts.back().end >= line) parts.pop_back();
}

}  // namespace zendry
