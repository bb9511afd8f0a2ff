#include "tags/TagData.h"

#include <algorithm>

namespace zendry {

void TagData::clear() {
  globals.clear();
  classes.clear();
  includes.clear();
  classCount = 0;
  Changed();
}

TagItem* TagData::findGlobal(std::string_view name) {
  const auto found = std::find_if(globals.begin(), globals.end(),
                                  [name](const TagItem& item) { return item.name == name; });
  if (found == globals.end()) return nullptr;
  found->module = nullptr;
  return &*found;
}

// The key of a class is its name, so the one found by the key is the first of that name.
TagClass* TagData::findClass(std::string_view name) {
  const auto found = classes.find(name);
  if (found == classes.end() || found->second.name != name) return nullptr;
  found->second.module = nullptr;
  return &found->second;
}

void TagData::addInclude(std::string_view name, bool quoted, bool isElsewhere) {
  includes.push_back({quoted, isElsewhere, std::string(name)});
}

}  // namespace zendry
