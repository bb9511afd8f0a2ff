#include "code/TagLookup.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "code/CodeSources.h"
#include "tags/LibraryNames.h"

namespace zendry {

namespace {

constexpr int cFunction = 'f';
constexpr int cPrototype = 'p';
constexpr int cClass = 'c';
constexpr int cStruct = 's';
constexpr int cUnion = 'u';
constexpr int cNamespace = 'n';
constexpr int cEnumerator = 'e';
constexpr std::string_view cLibraryNamespace = "std";

// True for the definition of a member outside of its class; the declaration inside is used instead.
bool IsOuterDefinition(const TagItem& item) {
  return item.kind == cFunction && item.access == 0;
}

bool IsClassKind(int kind) {
  return kind == cClass || kind == cStruct || kind == cUnion;
}

// Takes the last name off a list of bases.
std::string_view TakeLastBase(std::string_view& bases) {
  const size_t comma = bases.rfind(',');
  const size_t begin = comma == bases.npos ? 0 : comma + 1;
  const std::string_view base = bases.substr(begin);
  bases = bases.substr(0, begin == 0 ? 0 : comma);
  return base;
}

// Sets the module and owner of a member.
bool BelongsTo(TagItem& member, TagClass& record) {
  member.module = record.module;
  member.owner = &record;
  return true;
}

// Walks the members of a class, then those of its bases. A class whose walk has ended without a hit
// holds none for a second walk that starts as deep or deeper, so the second walk is left out.
// Without this a loop of classes with many bases would take for ever.
class ClassWalk {
 public:
  // The records of a class by its name, and by the module that names it.
  using Records = std::function<std::vector<TagClass*>(std::string_view, const TagData*)>;
  // True if the walk ends with this member, whose module and owner are then set.
  using Visit = std::function<bool(TagClass&, TagItem&)>;

  ClassWalk(Records theRecords, Visit theVisit)
      : records(std::move(theRecords)), visit(std::move(theVisit)) {}

  // The member that ended the walk; null without one.
  TagItem* Walk(std::string_view className, int depth, const TagData* from) {
    if (depth >= TagLookup::cMostDepth) return nullptr;
    const auto walked = walkedFrom.find(className);
    if (walked != walkedFrom.end() && walked->second <= depth) return nullptr;
    for (TagClass* record : records(className, from))
      if (TagItem* hit = WalkRecord(*record, depth)) return hit;
    walkedFrom[className] = depth;
    return nullptr;
  }

  // A base may be written with its namespaces, which tags don't know.
  TagItem* WalkBase(std::string_view name, int depth, const TagData* from) {
    size_t colon = name.find("::");
    for (; colon != name.npos && records(name, from).empty(); colon = name.find("::"))
      name.remove_prefix(colon + 2);
    return Walk(name, depth, from);
  }

 private:
  TagItem* WalkRecord(TagClass& record, int depth) {
    for (TagItem& member : record.members)
      if (visit(record, member)) return &member;
    for (std::string_view bases = record.inheritance; !bases.empty();)
      if (TagItem* hit = WalkBase(TakeLastBase(bases), depth + 1, record.module)) return hit;
    return nullptr;
  }

  Records records;
  Visit visit;
  std::unordered_map<std::string_view, int> walkedFrom;  // class and least depth
};

std::vector<TagClass*> RecordsOf(TagClass* found) {
  return found ? std::vector{found} : std::vector<TagClass*>();
}

// The place at the least distance among those that pass; null if none is within reach.
template <class Record, class Filter>
const TagIndex::Place<Record>* NearestOf(const std::vector<TagIndex::Place<Record>>& places,
                                         const std::vector<int>& distances, Filter passes) {
  const TagIndex::Place<Record>* nearest = nullptr;
  int least = IncludeGraph::cFar;
  for (const auto& place : places) {
    if (distances.empty() || !passes(place) || distances[place.module] >= least) continue;
    least = distances[place.module];
    nearest = &place;
  }
  return nearest;
}

// Appends a record to be listed of each name with the prefix: the nearest one, else the first.
template <class Record, class Filter>
void ListNames(std::vector<TagItem*>& out, const TagIndex& index,
               const TagIndex::Places<Record>& names, std::string_view prefix,
               const std::vector<int>& distances, Filter isListed) {
  for (auto name = names.lower_bound(prefix);
       name != names.end() && name->first.starts_with(prefix); ++name) {
    const auto& places = name->second;
    const auto first = std::find_if(places.begin(), places.end(), isListed);
    if (first == places.end()) continue;
    const auto* place = places.size() > 1 ? NearestOf(places, distances, isListed) : nullptr;
    if (!place) place = &*first;
    place->record->module = index.Modules()[place->module];
    place->record->owner = nullptr;
    out.push_back(place->record);
  }
}

}  // namespace

const TagIndex& TagLookup::EnsureIndex() {
  index.Update(sources.Modules());
  return index;
}

TagData* TagLookup::ModuleNamed(std::string_view fileName) {
  return EnsureIndex().FindModule(fileName);
}

TagClass* TagLookup::findClass(std::string_view name, const TagData* from) {
  EnsureIndex();
  return ClassOf(name, from);
}

TagClass* TagLookup::ClassOf(std::string_view name, const TagData* from) {
  if (TagClass* found = ProjectClass(name, from)) return found;
  TagData* library = sources.Library();
  return library ? library->findClass(name) : nullptr;
}

// Most names are those of one class: the files that include each other count among several only.
TagClass* TagLookup::ProjectClass(std::string_view name, const TagData* from) {
  TagClass* first = index.FindClass(name);
  if (!first) return nullptr;
  const ClassPlaces& places = index.Classes(name);
  const auto isReal = [](const auto& place) { return place.record->line >= 0; };
  if (std::count_if(places.begin(), places.end(), isReal) < 2) return first;
  const auto* nearest =
      NearestOf(places, includes.DistancesFrom(from ? from : front, index.Modules()), isReal);
  if (!nearest) return first;
  nearest->record->module = index.Modules()[nearest->module];
  return nearest->record;
}

TagItem* TagLookup::findGlobal(std::string_view name, std::string_view moduleName) {
  const TagData* from = ModuleNamed(moduleName);
  if (!from) from = front;
  TagItem* first = index.FindGlobal(name, moduleName);
  if (!first) {
    if (TagClass* found = ClassOf(name, from)) return found;
    const std::vector<TagItem*> ofC = findLibraryNames("", name);
    return ofC.empty() ? nullptr : ofC.front();
  }
  const auto& places = index.AllGlobals().find(name)->second;
  if (places.size() < 2) return first;
  const auto* nearest = NearestOf(places, includes.DistancesFrom(from, index.Modules()),
                                  [](const auto&) { return true; });
  if (!nearest) return first;
  nearest->record->module = index.Modules()[nearest->module];
  return nearest->record;
}

// All records of a class, those known only from their members too. Among namesakes those of the
// class that `from` means go first: its own record, then those in files that mean the same class.
std::vector<TagClass*> TagLookup::AllRecords(std::string_view name, const TagData* from) {
  std::vector<TagClass*> all;
  int realOnes = 0;
  for (const auto& [module, record] : index.Classes(name)) {
    record->module = index.Modules()[module];
    all.push_back(record);
    if (record->line >= 0) ++realOnes;
  }
  if (realOnes < 2) return all;
  const TagClass* meant = ProjectClass(name, from);
  std::stable_partition(all.begin(), all.end(), [&](const TagClass* record) {
    return record->line < 0 && ProjectClass(name, record->module) == meant;
  });
  std::stable_partition(all.begin(), all.end(),
                        [&](const TagClass* record) { return record == meant; });
  return all;
}

TagItem* TagLookup::findMember(std::string_view className, std::string_view memberName, Want want,
                               int depth, const TagData* from) {
  EnsureIndex();
  const auto records = [this](std::string_view name, const TagData* user) {
    return AllRecords(name, user);
  };
  const auto isWanted = [want](const TagItem& item) {
    const bool isPrototype = item.kind == cPrototype;
    return want == Want::cDefinition ? !isPrototype : isPrototype || item.access != 0;
  };
  ClassWalk walk(records, [&](TagClass& record, TagItem& item) {
    return isWanted(item) && item.name == memberName && BelongsTo(item, record);
  });
  return walk.Walk(className, depth, from);
}

TagItem* TagLookup::findMemberInClass(std::string_view className, std::string_view memberName,
                                      int depth, const TagData* from) {
  EnsureIndex();
  const auto records = [this](std::string_view name, const TagData* user) {
    return RecordsOf(ClassOf(name, user));
  };
  ClassWalk walk(records, [&](TagClass& record, TagItem& item) {
    return !IsOuterDefinition(item) && item.name == memberName && BelongsTo(item, record);
  });
  return walk.Walk(className, depth, from);
}

TagItem* TagLookup::findMemberPath(std::string_view path, std::string_view typeName,
                                   const TagData* from) {
  std::string type(typeName);
  for (;;) {
    const size_t dot = path.find('.');
    const bool isLast = dot == path.npos || dot == 0;
    TagItem* found = findMemberInClass(type, path.substr(0, isLast ? path.npos : dot), 0, from);
    if (!found || isLast || dot + 1 == path.size()) return found;
    type = found->type;
    from = found->module;
    path.remove_prefix(dot + 1);
  }
}

void TagLookup::listMembers(std::vector<TagItem*>& out, std::string_view className,
                            std::string_view prefix, int depth, const TagData* from) {
  EnsureIndex();
  const auto records = [this](std::string_view name, const TagData* user) {
    std::vector<TagClass*> found = RecordsOf(ClassOf(name, user));
    if (found.empty()) sources.Log(" - class not found", name);
    return found;
  };
  ClassWalk walk(records, [&](TagClass& record, TagItem& item) {
    if (!IsOuterDefinition(item) && item.name.starts_with(prefix) && BelongsTo(item, record))
      out.push_back(&item);
    return false;
  });
  walk.Walk(className, depth, from);
}

bool TagLookup::IsDerived(std::string_view className, std::string_view baseName) {
  EnsureIndex();
  const TagClass* base = ClassOf(baseName, nullptr);
  bool isDerived = false;
  const auto records = [&](std::string_view name, const TagData* user) {
    TagClass* found = isDerived ? nullptr : ClassOf(name, user);
    if (found && found == base) isDerived = true;
    return RecordsOf(found);
  };
  ClassWalk walk(records, [](TagClass&, TagItem&) { return false; });
  walk.Walk(className, 0, nullptr);
  return isDerived;
}

// Tags don't know their namespace; a file's namespace usually lasts to the file's end.
void TagLookup::listNamespace(std::vector<TagItem*>& out, std::string_view name,
                              std::string_view prefix) {
  const auto list = [&](TagItem& item, TagData* module) {
    if (!item.name.starts_with(prefix) || item.name.find("::") != item.name.npos) return;
    item.module = module;
    item.owner = nullptr;
    out.push_back(&item);
  };
  for (const auto& [number, record] : EnsureIndex().Classes(name))
    for (TagItem& member : record->members)
      if (member.kind == cEnumerator) list(member, index.Modules()[number]);
  listLibrary(out, name, prefix);
  const auto namespaces = index.AllGlobals().find(name);
  if (namespaces == index.AllGlobals().end()) return;
  for (const auto& [number, record] : namespaces->second) {
    if (record->kind != cNamespace) continue;
    TagData* module = index.Modules()[number];
    for (TagItem& item : module->globals)
      if (item.line >= record->line && &item != record) list(item, module);
    for (auto& [key, item] : module->classes)
      if (item.line >= record->line) list(item, module);
    for (const auto& [key, places] : index.AllEnumerators())
      for (const auto& place : places)
        if (place.module == number && place.record->line >= record->line)
          list(*place.record, module);
  }
}

void TagLookup::listGlobals(std::vector<TagItem*>& out, std::string_view prefix) {
  EnsureIndex();
  const std::vector<int>& distances = includes.DistancesFrom(front, index.Modules());
  const auto isAny = [](const auto&) { return true; };
  ListNames(out, index, index.AllGlobals(), prefix, distances, isAny);
  ListNames(out, index, index.AllClasses(), prefix, distances,
            [](const auto& place) { return IsClassKind(place.record->kind); });
  ListNames(out, index, index.AllEnumerators(), prefix, distances, isAny);
}

void TagLookup::listNestedClasses(std::vector<TagItem*>& out, std::string_view className,
                                  std::string_view prefix) {
  EnsureIndex();
  const auto records = [&](std::string_view name, const TagData* user) {
    TagClass* found = ClassOf(name, user);
    if (!found) return RecordsOf(nullptr);
    const std::string inside = found->name + "::";
    const auto isListed = [&](const auto& place) {
      return IsClassKind(place.record->kind) &&
             place.record->name.find("::", inside.size()) == std::string::npos;
    };
    const std::vector<int>& distances = includes.DistancesFrom(front, index.Modules());
    ListNames(out, index, index.AllClasses(), inside + std::string(prefix), distances, isListed);
    return RecordsOf(found);
  };
  ClassWalk walk(records, [](TagClass&, TagItem&) { return false; });
  walk.Walk(className, 0, nullptr);
}

std::vector<TagItem*> TagLookup::findLibraryNames(std::string_view nameSpace,
                                                  std::string_view name) {
  std::vector<TagItem*> found;
  if (TagData* library = sources.Library())
    for (const auto& names : library->names) names->Find(found, nameSpace, name);
  return found;
}

// The definition of a library names a folder beside it for its headers: that of the standard
// library is "stl", that of C is "c", others are called like their namespace.
void TagLookup::listLibrary(std::vector<TagItem*>& out, std::string_view nameSpace,
                            std::string_view prefix) {
  TagData* library = sources.Library();
  if (!library) return;
  const bool isStandard = nameSpace == cLibraryNamespace;
  const std::string_view folderName = nameSpace.empty() ? "c" : isStandard ? "stl" : nameSpace;
  const std::string folder = "/" + std::string(folderName) + "/";
  const auto isOfIt = [&](const TagItem& item) {
    const auto isItsHeader = [&](const HeaderRec& header) { return header.id == item.fileId; };
    const auto header = std::find_if(library->headers.begin(), library->headers.end(), isItsHeader);
    return header == library->headers.end() ? isStandard
                                            : header->path.find(folder) != std::string::npos;
  };
  auto& classes = library->classes;
  for (auto at = classes.lower_bound(prefix); at != classes.end() && at->first.starts_with(prefix);
       ++at) {
    TagClass& record = at->second;
    if (record.name.find("::") != std::string::npos || !isOfIt(record)) continue;
    record.module = nullptr;
    record.owner = nullptr;
    out.push_back(&record);
  }
  for (const auto& names : library->names) names->List(out, nameSpace, prefix);
}

}  // namespace zendry
