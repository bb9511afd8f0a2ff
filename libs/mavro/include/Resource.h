#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mavro {

// One entry of the program's resources. The resource compiler puts the entries into the ELF section
// "mavro_resources"; they are found in constant time. The layout is fixed, since both the compiler
// and this reader are ours.
struct ResourceEntry {
  const char* type;  // "PNG", "RCDATA", ...
  uint64_t id;       // 0 for an entry that has a name
  const char* name;  // null for an entry that has an id
  const unsigned char* data;
  uint64_t size;  // bytes
};

// The bytes of a resource; empty if the program has none of that type and id or name.
std::string_view FindResource(std::string_view type, uint64_t id);
std::string_view FindResource(std::string_view type, std::string_view name);

}  // namespace mavro
