#include "TagIndex.h"

#include <algorithm>

namespace zendry {

namespace {

template <class Record>
bool IsBefore(const TagIndex::Place<Record>& place, int module) {
  return place.module < module;
}

// Notes a record under its name unless its module already has one there.
template <class Record>
void Note(TagIndex::Places<Record>& places, const std::string& name, int module, Record& record,
          std::vector<typename TagIndex::Places<Record>::iterator>& noted) {
  const auto entry = places.try_emplace(name).first;
  auto& ofName = entry->second;
  const auto at = std::lower_bound(ofName.begin(), ofName.end(), module, IsBefore<Record>);
  if (at != ofName.end() && at->module == module) return;
  ofName.insert(at, {module, &record});
  noted.push_back(entry);
}

template <class Record>
void Forget(TagIndex::Places<Record>& places, int module,
            std::vector<typename TagIndex::Places<Record>::iterator>& noted) {
  for (const auto& entry : noted) {
    auto& ofName = entry->second;
    ofName.erase(std::lower_bound(ofName.begin(), ofName.end(), module, IsBefore<Record>));
    if (ofName.empty()) places.erase(entry);
  }
  noted.clear();
}

}  // namespace

void TagIndex::Update(const std::vector<TagData*>& newModules) {
  const bool sameModules = newModules == modules;
  if (sameModules && latest == TagData::LatestGeneration()) return;
  if (!sameModules) {
    globals.clear();
    classes.clear();
    files.clear();
    modules = newModules;
    entries.assign(modules.size(), {});
  }
  for (int module = 0; module < static_cast<int>(modules.size()); ++module) {
    if (entries[module].generation == modules[module]->Generation()) continue;
    Remove(module);
    Add(module);
  }
  latest = TagData::LatestGeneration();
}

void TagIndex::Add(int module) {
  Entry& entry = entries[module];
  TagData& tags = *modules[module];
  entry.generation = tags.Generation();
  for (TagItem& item : tags.globals) Note(globals, item.name, module, item, entry.globals);
  for (auto& [key, record] : tags.classes)
    Note(classes, record.name, module, record, entry.classes);
  Note(files, tags.fileName, module, tags, entry.files);
}

void TagIndex::Remove(int module) {
  Forget(globals, module, entries[module].globals);
  Forget(classes, module, entries[module].classes);
  Forget(files, module, entries[module].files);
}

const std::vector<TagIndex::Place<TagClass>>& TagIndex::Classes(std::string_view name) const {
  static const std::vector<Place<TagClass>> cNone;
  const auto found = classes.find(name);
  return found == classes.end() ? cNone : found->second;
}

TagClass* TagIndex::FindClass(std::string_view name) const {
  for (const auto& [module, record] : Classes(name)) {
    if (record->line < 0) continue;
    record->module = modules[module];
    return record;
  }
  return nullptr;
}

TagItem* TagIndex::FindGlobal(std::string_view name, std::string_view moduleName) const {
  const auto found = globals.find(name);
  if (found == globals.end()) return nullptr;
  const auto& places = found->second;
  auto place = places.begin();
  if (const auto preferred = files.find(moduleName);
      !moduleName.empty() && preferred != files.end()) {
    const int module = preferred->second.front().module;
    const auto own = std::lower_bound(places.begin(), places.end(), module, IsBefore<TagItem>);
    if (own != places.end() && own->module == module) place = own;
  }
  place->record->module = modules[place->module];
  return place->record;
}

}  // namespace zendry
