// The records of builds as a disk may give them back: what is read whole is written the same way
// again. The same bytes as a compiler's list of files: no name is empty.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "build/BuildRecords.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const zendry::BuildJournal journal = zendry::ReadJournal(text);
  const std::string again = zendry::WriteJournal(journal);
  const zendry::BuildJournal second = zendry::ReadJournal(again);
  if (!second.isWhole || zendry::WriteJournal(second) != again) std::abort();
  if (second.records.size() != journal.records.size()) std::abort();
  for (const std::string& name : zendry::ReadMakeRule(text))
    if (name.empty()) std::abort();
  return 0;
}
