// The records of builds as a disk may give them back: what is read whole is written the same way
// again. The same bytes as a compiler's list of files: no name is empty.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "build/BuildRecords.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using zendry::BuildRecords;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const BuildRecords::Journal journal = BuildRecords::Read(text);
  std::string again = "zendry-build 1\n";
  for (const auto& [product, record] : journal.records)
    again += BuildRecords::Write(product, record);
  const BuildRecords::Journal second = BuildRecords::Read(again);
  if (!second.isWhole || second.records != journal.records) std::abort();
  for (const std::string& name : zendry::ReadMakeRule(text))
    if (name.empty()) std::abort();
  return 0;
}
