#include <cstdint>
#include <cstdlib>
#include <string>

#include "NaiveLines.h"
#include "search/LineFind.h"
#include "search/ReplaceJournal.h"

// The search over lines beside the told rule, tried step by step: the same lines, the same ones
// missed. The hits that are replaced are hits, in order, and never overlap. The reader of journals
// takes the same bytes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (const auto files = zendry::ReadReplaceJournal(bytes))
    if (!zendry::ReadReplaceJournal(zendry::WriteReplaceJournal(*files))) std::abort();
  const size_t length = std::min<size_t>(data[0] % 8, size - 2);
  const zendry::LineTerm term{std::string(bytes.substr(2, length)), (data[1] & 1) != 0,
                              (data[1] & 2) != 0};
  const std::string_view text = bytes.substr(2 + length);
  const zendry::TextScan scan(term);
  std::vector<std::string> found;
  scan.EachLine(text, [&](const zendry::LineHit& hit) {
    found.push_back(std::to_string(hit.line) + (hit.isMissed ? ":missed" : ":told"));
    return true;
  });
  if (found != test::NaiveLines(text, term)) std::abort();
  size_t least = 0;
  for (const size_t start : scan.AllHits(text).starts) {
    if (start < least || start + term.text.size() > text.size()) std::abort();
    if (test::NaiveRun(text.substr(start, term.text.size()), {term.text, term.matchCase}) == 0)
      std::abort();
    least = start + term.text.size();
  }
  return 0;
}
