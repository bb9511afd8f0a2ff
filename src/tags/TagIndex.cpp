#include "tags/TagIndex.h"

#include <algorithm>
#include <set>

namespace zendry {

namespace {

constexpr int cEnumerator = 'e';
constexpr int cEnum = 'g';

template <class Record>
bool IsBefore(const TagIndex::Place<Record>& place, int module) {
  return place.module < module;
}

template <class Record>
using Noted = std::vector<typename TagIndex::Places<Record>::iterator>;

// The position of a module's place among those of a name, or the position where it belongs.
template <class Record>
auto PlaceOf(std::vector<TagIndex::Place<Record>>& ofName, int module) {
  return std::lower_bound(ofName.begin(), ofName.end(), module, IsBefore<Record>);
}

// Notes a record under its name unless its module already has one there. A place without a record
// comes from the module's earlier content.
template <class Record>
void NoteIn(typename TagIndex::Places<Record>::iterator entry, int module, Record& record,
            Noted<Record>& noted) {
  auto& ofName = entry->second;
  const auto at = PlaceOf<Record>(ofName, module);
  const bool known = at != ofName.end() && at->module == module;
  if (known && at->record) return;
  if (known)
    at->record = &record;
  else
    ofName.insert(at, {module, &record});
  noted.push_back(entry);
}

// Replaces the module's entries in the index. Most names are unchanged: their entries are met in
// the same order and need no search.
template <class Record>
class Renoting {
 public:
  Renoting(TagIndex::Places<Record>& allPlaces, int itsModule, Noted<Record>& itsNoted)
      : places(allPlaces), module(itsModule), noted(itsNoted), before(std::move(itsNoted)) {
    noted.clear();
    for (const auto& entry : before) PlaceOf<Record>(entry->second, module)->record = nullptr;
  }
  ~Renoting() {
    for (const auto& entry : before) {
      auto& ofName = entry->second;
      const auto at = PlaceOf<Record>(ofName, module);
      if (!at->record) ofName.erase(at);
      if (ofName.empty()) places.erase(entry);
    }
  }
  Renoting(const Renoting&) = delete;
  Renoting& operator=(const Renoting&) = delete;

  void Note(const std::string& name, Record& record) {
    const auto entry = InStep(name) ? before[next++] : places.try_emplace(name).first;
    NoteIn(entry, module, record, noted);
  }

 private:
  // True if the name is the next one of the earlier names, apart from a few that are gone.
  bool InStep(const std::string& name) {
    constexpr size_t cMostGone = 3;
    const size_t end = std::min(next + cMostGone + 1, before.size());
    for (size_t i = next; i < end; ++i) {
      if (before[i]->first != name) continue;
      next = i;
      return true;
    }
    return false;
  }

  TagIndex::Places<Record>& places;
  const int module;
  Noted<Record>& noted;
  const Noted<Record> before;
  size_t next = 0;
};

}  // namespace

void TagIndex::Update(const std::vector<TagData*>& newModules) {
  const bool sameModules = newModules == modules;
  if (sameModules && latest == TagData::LatestGeneration()) return;
  if (!sameModules) {
    globals.clear();
    classes.clear();
    enumerators.clear();
    files.clear();
    modules = newModules;
    entries.assign(modules.size(), {});
  }
  for (int module = 0; module < static_cast<int>(modules.size()); ++module) {
    if (entries[module].generation == modules[module]->Generation()) continue;
    Renote(module);
  }
  latest = TagData::LatestGeneration();
}

void TagIndex::Renote(int module) {
  Entry& entry = entries[module];
  TagData& tags = *modules[module];
  entry.generation = tags.Generation();
  Renoting<TagItem> ofGlobals(globals, module, entry.globals);
  for (TagItem& item : tags.globals) ofGlobals.Note(item.name, item);
  Renoting<TagClass> ofClasses(classes, module, entry.classes);
  for (auto& [key, record] : tags.classes) ofClasses.Note(record.name, record);
  Renoting<TagItem> ofEnumerators(enumerators, module, entry.enumerators);
  std::set<std::string_view> scoped;
  for (const TagItem& item : tags.globals)
    if (item.kind == cEnum && item.type != "enum") scoped.insert(item.name);
  for (auto& [key, record] : tags.classes) {
    if (record.line >= 0 || scoped.contains(record.name)) continue;
    for (TagItem& member : record.members)
      if (member.kind == cEnumerator) ofEnumerators.Note(member.name, member);
  }
  Renoting<TagData>(files, module, entry.files).Note(tags.fileName, tags);
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

TagData* TagIndex::FindModule(std::string_view fileName) const {
  const auto found = files.find(fileName);
  return fileName.empty() || found == files.end() ? nullptr : modules[found->second.front().module];
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
