#include "Resource.h"

#include <functional>
#include <unordered_set>

// The linker defines these two symbols for a section whose name is a C identifier. They are weak
// since a program without resources has no such section.
extern "C" {
extern const mavro::ResourceEntry theFirstResource[] __asm__("__start_mavro_resources")
    __attribute__((weak, visibility("hidden")));
extern const mavro::ResourceEntry theResourcesEnd[] __asm__("__stop_mavro_resources")
    __attribute__((weak, visibility("hidden")));
}

namespace mavro {

namespace {

// The key of an entry. The texts are owned by the entry or by the caller of the search.
struct ResourceKey {
  std::string_view type;
  std::string_view name;
  uint64_t id = 0;
  bool hasName = false;
  const ResourceEntry* entry = nullptr;

  friend bool operator==(const ResourceKey& a, const ResourceKey& b) {
    return a.hasName == b.hasName && a.id == b.id && a.name == b.name && a.type == b.type;
  }
};

struct KeyHash {
  size_t operator()(const ResourceKey& key) const {
    constexpr size_t cSpread = 0x9E3779B97F4A7C15;
    const std::hash<std::string_view> textHash;
    return (textHash(key.type) * cSpread ^ textHash(key.name)) * cSpread ^ key.id * cSpread;
  }
};

using ResourceIndex = std::unordered_set<ResourceKey, KeyHash>;

// If several entries have the same key, the first one in the linker's order counts.
ResourceIndex MakeIndex() {
  ResourceIndex index;
  index.reserve(static_cast<size_t>(theResourcesEnd - theFirstResource));
  for (const ResourceEntry* entry = theFirstResource; entry != theResourcesEnd; ++entry)
    index.insert(
        {entry->type, entry->name ? entry->name : "", entry->id, entry->name != nullptr, entry});
  return index;
}

// The table is made at the first use. After that, a look-up takes constant time, whatever the
// number of entries, and allocates no memory.
std::string_view Find(const ResourceKey& key) {
  static const ResourceIndex index = MakeIndex();
  const auto found = index.find(key);
  if (found == index.end()) return {};
  return {reinterpret_cast<const char*>(found->entry->data), found->entry->size};
}

}  // namespace

std::string_view FindResource(std::string_view type, uint64_t id) {
  return Find({type, "", id, false});
}

std::string_view FindResource(std::string_view type, std::string_view name) {
  return Find({type, name, 0, true});
}

}  // namespace mavro
