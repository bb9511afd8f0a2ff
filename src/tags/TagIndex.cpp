#include "tags/TagIndex.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <utility>

namespace zendry {

namespace {

constexpr int cEnumerator = 'e';
constexpr int cEnum = 'g';

std::string_view NameOf(const TagItem& item) {
  return item.name;
}

std::string_view NameOf(const TagData& module) {
  return module.fileName;
}

// Compares places with each other and with names.
struct IsBefore {
  template <class Place>
  bool operator()(const Place& a, const Place& b) const {
    const int order = NameOf(*a.record).compare(NameOf(*b.record));
    return order < 0 || (order == 0 && a.module < b.module);
  }
  template <class Place>
  bool operator()(const Place& place, std::string_view name) const {
    return NameOf(*place.record) < name;
  }
  template <class Place>
  bool operator()(std::string_view name, const Place& place) const {
    return name < NameOf(*place.record);
  }
};

// Of sorted places, keeps the first one of each name in a module.
template <class Place>
void KeepFirst(std::vector<Place>& places) {
  const auto isSame = [](const Place& a, const Place& b) {
    return a.module == b.module && NameOf(*a.record) == NameOf(*b.record);
  };
  places.erase(std::unique(places.begin(), places.end(), isSame), places.end());
}

// The positions in `places` where each of the fresh ones belongs; both are sorted. Most names of a
// module are those that it had before, so the gaps are tried first.
template <class Place>
std::vector<size_t> PositionsOf(const std::vector<Place>& fresh, const std::vector<Place>& places,
                                const std::vector<size_t>& gaps) {
  std::vector<size_t> positions;
  positions.reserve(fresh.size());
  size_t position = 0;
  auto gap = gaps.begin();
  for (const Place& place : fresh) {
    const auto isAfter = [&](size_t at) {
      return at < places.size() && !IsBefore()(place, places[at]);
    };
    while (gap != gaps.end() && isAfter(*gap)) ++gap;
    const size_t end = gap == gaps.end() ? places.size() : *gap;
    if (end > position && !isAfter(end - 1)) {
      const auto begin = places.begin();
      const auto found =
          std::lower_bound(begin + static_cast<std::ptrdiff_t>(position),
                           begin + static_cast<std::ptrdiff_t>(end), place, IsBefore());
      position = static_cast<size_t>(found - begin);
    } else {
      position = end;
    }
    positions.push_back(position);
  }
  return positions;
}

}  // namespace

template <class Record>
auto TagPlaces<Record>::Named(std::string_view name) const -> Range {
  const auto [begin, end] = std::equal_range(places.begin(), places.end(), name, IsBefore());
  return {begin, end};
}

template <class Record>
auto TagPlaces<Record>::WithPrefix(std::string_view prefix) const -> Range {
  const auto begin = std::lower_bound(places.begin(), places.end(), prefix, IsBefore());
  const auto hasPrefix = [prefix](const Place& place) {
    return NameOf(*place.record).starts_with(prefix);
  };
  return {begin, std::partition_point(begin, places.end(), hasPrefix)};
}

template <class Record>
void TagPlaces<Record>::Fill(std::vector<Place> all) {
  std::stable_sort(all.begin(), all.end(), IsBefore());
  KeepFirst(all);
  places = std::move(all);
  places.shrink_to_fit();
}

template <class Record>
void TagPlaces<Record>::Replace(int module, std::vector<Place> fresh) {
  const std::vector<size_t> gaps = Remove(module);
  SortLikeLast(fresh);
  KeepFirst(fresh);
  const std::vector<size_t> positions = PositionsOf(fresh, places, gaps);
  auto end = static_cast<std::ptrdiff_t>(places.size());
  places.resize(places.size() + fresh.size());
  const auto begin = places.begin();
  for (size_t i = fresh.size(); i-- > 0;) {
    const auto position = static_cast<std::ptrdiff_t>(positions[i]);
    const auto before = static_cast<std::ptrdiff_t>(i);
    std::move_backward(begin + position, begin + end, begin + end + before + 1);
    begin[position + before] = fresh[i];
    end = position;
  }
}

// Sorts by name. While somebody types, the names mostly stay, and so does their order.
template <class Record>
void TagPlaces<Record>::SortLikeLast(std::vector<Place>& fresh) {
  const auto isBefore = [&fresh](size_t a, size_t b) {
    return a != b && (IsBefore()(fresh[a], fresh[b]) || (a < b && !IsBefore()(fresh[b], fresh[a])));
  };
  const bool isKnown = lastOrder.size() == fresh.size();
  if (!isKnown) {
    lastOrder.resize(fresh.size());
    std::iota(lastOrder.begin(), lastOrder.end(), size_t{0});
  }
  if (!std::is_sorted(lastOrder.begin(), lastOrder.end(), isBefore))
    std::sort(lastOrder.begin(), lastOrder.end(), isBefore);
  std::vector<Place> sorted;
  sorted.reserve(fresh.size());
  for (const size_t at : lastOrder) sorted.push_back(fresh[at]);
  fresh = std::move(sorted);
}

// Removes the places of a module. Answers where each of them was among those that stay.
template <class Record>
std::vector<size_t> TagPlaces<Record>::Remove(int module) {
  std::vector<size_t> gaps;
  size_t kept = 0;
  for (const Place& place : places) {
    if (place.module == module)
      gaps.push_back(kept);
    else
      places[kept++] = place;
  }
  places.resize(kept);
  return gaps;
}

template class TagPlaces<TagItem>;
template class TagPlaces<TagClass>;
template class TagPlaces<TagData>;

void TagIndex::Update(const std::vector<TagData*>& newModules) {
  const bool sameModules = newModules == modules;
  if (sameModules && latest == TagData::LatestGeneration()) return;
  latest = TagData::LatestGeneration();
  std::vector<size_t> changed;
  for (size_t i = 0; sameModules && i < modules.size(); ++i)
    if (generations[i] != modules[i]->Generation()) changed.push_back(i);
  // Putting one module's places in order would read the records that another one has no more.
  if (!sameModules || changed.size() > 1) return Rebuild(newModules);
  for (const size_t i : changed) Renew(static_cast<int>(i));
}

void TagIndex::Renew(int module) {
  generations[static_cast<size_t>(module)] = modules[static_cast<size_t>(module)]->Generation();
  Found fresh;
  Collect(fresh, module);
  globals.Replace(module, std::move(fresh.globals));
  classes.Replace(module, std::move(fresh.classes));
  enumerators.Replace(module, std::move(fresh.enumerators));
  files.Replace(module, std::move(fresh.files));
}

void TagIndex::Rebuild(const std::vector<TagData*>& newModules) {
  modules = newModules;
  generations.clear();
  Found all;
  for (size_t i = 0; i < modules.size(); ++i) {
    generations.push_back(modules[i]->Generation());
    Collect(all, static_cast<int>(i));
  }
  globals.Fill(std::move(all.globals));
  classes.Fill(std::move(all.classes));
  enumerators.Fill(std::move(all.enumerators));
  files.Fill(std::move(all.files));
}

// Appends the records of a module in their order.
void TagIndex::Collect(Found& out, int module) const {
  TagData& tags = *modules[static_cast<size_t>(module)];
  std::set<std::string_view> scoped;
  for (TagItem& item : tags.globals) {
    out.globals.push_back({module, &item});
    if (item.kind == cEnum && item.type != "enum") scoped.insert(item.name);
  }
  for (auto& [key, record] : tags.classes) {
    out.classes.push_back({module, &record});
    if (record.line >= 0 || scoped.contains(record.name)) continue;
    for (TagItem& member : record.members)
      if (member.kind == cEnumerator) out.enumerators.push_back({module, &member});
  }
  out.files.push_back({module, &tags});
}

TagClass* TagIndex::FindClass(std::string_view name) const {
  for (const auto& [module, record] : classes.Named(name)) {
    if (record->line < 0) continue;
    record->module = modules[static_cast<size_t>(module)];
    return record;
  }
  return nullptr;
}

TagData* TagIndex::FindModule(std::string_view fileName) const {
  if (fileName.empty()) return nullptr;
  const auto places = files.Named(fileName);
  return places.empty() ? nullptr : places.front().record;
}

TagItem* TagIndex::FindGlobal(std::string_view name, std::string_view moduleName) const {
  const auto places = globals.Named(name);
  if (places.empty()) return nullptr;
  auto place = places.begin();
  const auto preferred = files.Named(moduleName);
  if (!moduleName.empty() && !preferred.empty()) {
    const int module = preferred.front().module;
    const auto own =
        std::lower_bound(places.begin(), places.end(), module,
                         [](const auto& each, int wanted) { return each.module < wanted; });
    if (own != places.end() && own->module == module) place = own;
  }
  place->record->module = modules[static_cast<size_t>(place->module)];
  return place->record;
}

}  // namespace zendry
