#include "Resource.h"

#include <string>
#include <unordered_map>

// The linker gives a section whose name is a C identifier these two symbols. Weak: a program
// without resources has no such section.
extern "C" {
extern const mavro::ResourceEntry theFirstResource[] __asm__("__start_mavro_resources")
    __attribute__((weak, visibility("hidden")));
extern const mavro::ResourceEntry theResourcesEnd[] __asm__("__stop_mavro_resources")
    __attribute__((weak, visibility("hidden")));
}

namespace mavro {

namespace {

std::string KeyOf(std::string_view type, uint64_t id) {
  return std::string(type) + "#" + std::to_string(id);
}

std::string KeyOf(std::string_view type, std::string_view name) {
  return std::string(type) + ":" + std::string(name);
}

using ResourceIndex = std::unordered_map<std::string, std::string_view>;

// The first of several entries with one key counts, as the linker laid them out.
ResourceIndex MakeIndex() {
  ResourceIndex index;
  for (const ResourceEntry* entry = theFirstResource; entry != theResourcesEnd; ++entry) {
    const std::string_view bytes(reinterpret_cast<const char*>(entry->data), entry->size);
    index.emplace(entry->name ? KeyOf(entry->type, std::string_view(entry->name))
                              : KeyOf(entry->type, entry->id),
                  bytes);
  }
  return index;
}

std::string_view Find(const std::string& key) {
  static const ResourceIndex index = MakeIndex();
  const auto found = index.find(key);
  return found == index.end() ? std::string_view() : found->second;
}

}  // namespace

std::string_view FindResource(std::string_view type, uint64_t id) {
  return Find(KeyOf(type, id));
}

std::string_view FindResource(std::string_view type, std::string_view name) {
  return Find(KeyOf(type, name));
}

}  // namespace mavro
