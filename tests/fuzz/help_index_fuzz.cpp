#include <cstddef>
#include <cstdint>
#include <string_view>

#include "RtfReader.h"
#include "help/HelpIndex.h"
#include "help/HelpPage.h"

// Any bytes are an index. Each of its entries becomes rich text that is whole and has one title
// row, whatever its texts hold.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  zendry::HelpIndex index;
  index.Read({reinterpret_cast<const char*>(data), size});
  for (const zendry::HelpEntry& entry : index.Topics()) {
    std::string rtf = zendry::cHelpHeader;
    zendry::writeEntry(rtf, entry, index.Source(entry), 5000);
    const mavro::RtfText text = mavro::ReadRtf(rtf + zendry::cHelpFooter);
    if (!text.complete || text.rows.size() != 1) __builtin_trap();
  }
  if (!index.Topics().empty()) index.Nearest(index.Topics().back().key, 3);
  return 0;
}
