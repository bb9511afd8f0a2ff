#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tags/TagData.h"

namespace zendry {

// Finds names in the stores of many modules: the first hit is the one that a walk over the modules
// in their order, and over each module's tags in their order, would meet first. Only a module whose
// tags have changed is indexed again.
class TagIndex {
 public:
  // A record and the position of its module in the list.
  template <class Record>
  struct Place {
    int module = 0;
    Record* record = nullptr;
  };
  // Places by name. Those of a name are in the order of their modules, each module at most once.
  template <class Record>
  using Places = std::map<std::string, std::vector<Place<Record>>, std::less<>>;

  // Updates the index to the present content of these modules. Pointers that it returned before are
  // invalid if their module had changed.
  void Update(const std::vector<TagData*>& newModules);

  const std::vector<TagData*>& Modules() const { return modules; }
  // All records of that class, including those known only from their members.
  const std::vector<Place<TagClass>>& Classes(std::string_view name) const;
  // The record of that class in the first module that holds the class itself; its `module` is set.
  TagClass* FindClass(std::string_view name) const;
  // The first global of that name; one of the module with this file name comes before all others.
  // Its `module` is set.
  TagItem* FindGlobal(std::string_view name, std::string_view moduleName) const;
  // The first module with this file name; null without one.
  TagData* FindModule(std::string_view fileName) const;
  // The places of all names, in their order.
  const Places<TagItem>& AllGlobals() const { return globals; }
  const Places<TagClass>& AllClasses() const { return classes; }
  // The enumerators that are named without their enum, of enums that are in no class.
  const Places<TagItem>& AllEnumerators() const { return enumerators; }

 private:
  // The index's entries for one module.
  struct Entry {
    uint64_t generation = 0;
    std::vector<Places<TagItem>::iterator> globals;
    std::vector<Places<TagClass>::iterator> classes;
    std::vector<Places<TagItem>::iterator> enumerators;
    std::vector<Places<TagData>::iterator> files;
  };

  void Renote(int module);

  std::vector<TagData*> modules;
  std::vector<Entry> entries;
  uint64_t latest = 0;  // generation up to which the entries are true
  Places<TagItem> globals;
  Places<TagClass> classes;
  Places<TagItem> enumerators;
  Places<TagData> files;  // modules by their file names
};

}  // namespace zendry
