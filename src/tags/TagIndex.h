#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "tags/TagData.h"

namespace zendry {

// The records of one kind in the stores of many modules, sorted by name, and by module among those
// of a name. A module has at most one record of a name here: its first one. The names are those of
// the records, so nothing may be looked up between a change of a module and its Replace().
template <class Record>
class TagPlaces {
 public:
  // A record and the position of its module in the list.
  struct Place {
    int module = 0;
    Record* record = nullptr;
  };
  using Range = std::span<const Place>;

  Range All() const { return places; }
  Range Named(std::string_view name) const;
  Range WithPrefix(std::string_view prefix) const;
  // Replaces all places. The records of a module are in its order.
  void Fill(std::vector<Place> all);
  // Replaces the places of one module by those of its present records, which are in its order. Its
  // earlier records are not read.
  void Replace(int module, std::vector<Place> fresh);

 private:
  void SortLikeLast(std::vector<Place>& fresh);
  std::vector<size_t> Remove(int module);

  std::vector<Place> places;
  std::vector<size_t> lastOrder;  // of the records that were last sorted, by name
};

// Finds names in the stores of many modules: the first hit is the one that a walk over the modules
// in their order, and over each module's tags in their order, would meet first. Only a module whose
// tags have changed is indexed again.
class TagIndex {
 public:
  // Updates the index to the present content of these modules. Pointers that it returned before are
  // invalid if their module had changed.
  void Update(const std::vector<TagData*>& newModules);

  const std::vector<TagData*>& Modules() const { return modules; }
  // The record of that class in the first module that holds the class itself; its `module` is set.
  TagClass* FindClass(std::string_view name) const;
  // The first global of that name; one of the module with this file name comes before all others.
  // Its `module` is set.
  TagItem* FindGlobal(std::string_view name, std::string_view moduleName) const;
  // The first module with this file name; null without one.
  TagData* FindModule(std::string_view fileName) const;

  const TagPlaces<TagItem>& Globals() const { return globals; }
  // Includes classes that are known only from their members.
  const TagPlaces<TagClass>& Classes() const { return classes; }
  // The enumerators that are named without their enum, of enums that are in no class.
  const TagPlaces<TagItem>& Enumerators() const { return enumerators; }

 private:
  struct Found {
    std::vector<TagPlaces<TagItem>::Place> globals;
    std::vector<TagPlaces<TagClass>::Place> classes;
    std::vector<TagPlaces<TagItem>::Place> enumerators;
    std::vector<TagPlaces<TagData>::Place> files;
  };

  void Rebuild(const std::vector<TagData*>& newModules);
  void Renew(int module);
  void Collect(Found& out, int module) const;

  std::vector<TagData*> modules;
  std::vector<uint64_t> generations;  // of the modules, as they were indexed
  uint64_t latest = 0;                // generation up to which the index is true
  TagPlaces<TagItem> globals;
  TagPlaces<TagClass> classes;
  TagPlaces<TagItem> enumerators;
  TagPlaces<TagData> files;  // modules by their file names
};

}  // namespace zendry
