#include "code/TagLookup.h"

#include <algorithm>
#include <deque>
#include <string>
#include <unordered_map>

#include "code/CodeSources.h"
#include "code/OuterDefinition.h"
#include "tags/LibraryNames.h"

namespace zendry {

namespace {

using Items = std::vector<TagItem*>;

constexpr int cPrototype = 'p';
constexpr int cClass = 'c';
constexpr int cStruct = 's';
constexpr int cUnion = 'u';
constexpr int cNamespace = 'n';
constexpr int cEnumerator = 'e';
constexpr int cMacro = 'd';
constexpr int cTypedef = 't';
constexpr std::string_view cLibraryNamespace = "std";

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

// The class around the one of a name; empty without one.
std::string_view ClassAround(std::string_view name) {
  const size_t colon = name.rfind("::");
  return name.substr(0, colon == name.npos ? 0 : colon);
}

bool IsInList(std::string_view names, std::string_view name) {
  while (!names.empty())
    if (TakeLastBase(names) == name) return true;
  return false;
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

  // The members that a macro brings, which is named in a file; null without any.
  using Macros = std::function<TagClass*(std::string_view, const TagData*)>;
  // The class that another name stands for; empty without one.
  using Aliases = std::function<std::string(std::string_view, const TagData*)>;

  ClassWalk(Records theRecords, Visit theVisit, Macros theMacros = {}, Aliases theAliases = {})
      : records(std::move(theRecords)),
        visit(std::move(theVisit)),
        macros(std::move(theMacros)),
        aliases(std::move(theAliases)) {}

  // True if the walk leaves out that base of a class.
  std::function<bool(TagClass&, std::string_view)> isHidden;

  // The member that ended the walk; null without one.
  TagItem* Walk(std::string_view className, int depth, const TagData* from) {
    if (depth >= TagLookup::cMostDepth) return nullptr;
    const auto walked = walkedFrom.find(className);
    if (walked != walkedFrom.end() && walked->second <= depth) return nullptr;
    const std::vector<TagClass*> found = records(className, from);
    for (TagClass* record : found)
      if (TagItem* hit = WalkRecord(*record, depth)) return hit;
    walkedFrom[className] = depth;
    // Members may be defined with another name of their class.
    const auto isKnownByMembers = [](const TagClass* record) { return record->line < 0; };
    if (!aliases || found.empty() || !std::all_of(found.begin(), found.end(), isKnownByMembers))
      return nullptr;
    const std::string meant = aliases(className, from);
    return meant.empty() ? nullptr : Walk(kept.emplace_back(meant), depth + 1, from);
  }

  // A base may be a class in the ones around `scope`, and may be written with its namespaces, which
  // tags don't know.
  TagItem* WalkBase(std::string_view name, int depth, const TagData* from,
                    std::string_view scope = {}) {
    for (scope = ClassAround(scope); !scope.empty(); scope = ClassAround(scope)) {
      const std::string inner = std::string(scope) + "::" + std::string(name);
      if (!records(inner, from).empty()) return Walk(kept.emplace_back(inner), depth, from);
    }
    size_t colon = name.find("::");
    for (; colon != name.npos && records(name, from).empty(); colon = name.find("::"))
      name.remove_prefix(colon + 2);
    if (aliases)
      if (const std::string meant = aliases(name, from);
          !meant.empty() && records(name, from).empty())
        return Walk(kept.emplace_back(meant), depth, from);
    return Walk(name, depth, from);
  }

 private:
  TagItem* WalkRecord(TagClass& record, int depth) {
    for (TagItem& member : record.members)
      if (visit(record, member)) return &member;
    if (TagItem* hit = WalkMacros(record, record, 0)) return hit;
    for (std::string_view bases = record.inheritance; !bases.empty();) {
      const std::string_view base = TakeLastBase(bases);
      if (isHidden && isHidden(record, base)) continue;
      if (TagItem* hit = WalkBase(base, depth + 1, record.module, record.name)) return hit;
    }
    return nullptr;
  }

  // The members that macros bring into a class belong to it, but lie where the macro is.
  TagItem* WalkMacros(TagClass& owner, const TagClass& brought, int depth) {
    if (!macros || depth >= TagLookup::cMostDepth) return nullptr;
    for (const std::string& name : brought.macros) {
      TagClass* found =
          &brought == &owner || name != brought.name ? macros(name, brought.module) : nullptr;
      if (!found) continue;
      for (TagItem& member : found->members) {
        const bool isHit = visit(owner, member);
        member.module = found->module;
        if (isHit) return &member;
      }
      if (TagItem* hit = WalkMacros(owner, *found, depth + 1)) return hit;
    }
    return nullptr;
  }

  Records records;
  Visit visit;
  Macros macros;
  Aliases aliases;
  std::deque<std::string> kept;                          // names that no store has
  std::unordered_map<std::string_view, int> walkedFrom;  // class and least depth
};

std::vector<TagClass*> RecordsOf(TagClass* found) {
  return found ? std::vector{found} : std::vector<TagClass*>();
}

// The place at the least distance among those that pass; null if none is within reach.
template <class Record, class Filter>
const typename TagPlaces<Record>::Place* NearestOf(typename TagPlaces<Record>::Range places,
                                                   const std::vector<int>& distances,
                                                   Filter passes) {
  const typename TagPlaces<Record>::Place* nearest = nullptr;
  int least = IncludeGraph::cFar;
  for (const auto& place : places) {
    if (distances.empty() || !passes(place) || distances[place.module] >= least) continue;
    least = distances[place.module];
    nearest = &place;
  }
  return nearest;
}

// The places of the first name.
template <class Range>
Range OfFirstName(Range places) {
  const std::string_view name = places.front().record->name;
  const auto hasOther = [name](const auto& place) { return place.record->name != name; };
  const auto end = std::find_if(places.begin() + 1, places.end(), hasOther);
  return {places.begin(), end};
}

// Appends a record to be listed of each name with the prefix: the nearest one, else the first.
template <class Record, class Filter>
void ListNames(std::vector<TagItem*>& out, const TagIndex& index, const TagPlaces<Record>& names,
               std::string_view prefix, const std::vector<int>& distances, Filter isListed) {
  auto rest = names.WithPrefix(prefix);
  while (!rest.empty()) {
    const auto places = OfFirstName(rest);
    rest = rest.subspan(places.size());
    const auto first = std::find_if(places.begin(), places.end(), isListed);
    if (first == places.end()) continue;
    const auto* place =
        places.size() > 1 ? NearestOf<Record>(places, distances, isListed) : nullptr;
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
  if (from && from == sources.Library()) return findLibraryClass(name);
  if (TagClass* found = ProjectClass(name, from)) return found;
  if (TagClass* found = findLibraryClass(name)) return found;
  if (name.starts_with('<')) return memberMacros.BlockNamed(name);
  TagData* const edited = front ? index.FindModule(front->fileName) : nullptr;
  if (TagClass* found = edited ? ClassInNamespace(index, *edited, name) : nullptr) return found;
  const std::string_view plain = WithoutNamespaces(index, name);
  if (plain == name) return nullptr;
  return ProjectClass(plain, from, name.substr(0, name.size() - plain.size() - 2));
}

TagClass* TagLookup::findLibraryClass(std::string_view name) const {
  TagData* library = sources.Library();
  return library ? library->findClass(name) : nullptr;
}

std::string TagLookup::NameInScope(const std::string& type, std::string_view scope,
                                   const TagData* from) {
  EnsureIndex();
  for (std::string around(scope); !around.empty();) {
    if (const TagClass* found = ClassOf(around + "::" + type, from)) return found->name;
    const size_t colon = around.rfind("::");
    around.resize(colon == around.npos ? 0 : colon);
  }
  return type;
}

// Most names are those of one class: namespaces, and the files that include each other, count among
// several only. Those of the namespace that the name is written with go first, without one those of
// the namespaces that are open where it is written.
TagClass* TagLookup::ProjectClass(std::string_view name, const TagData* from,
                                  std::string_view space) {
  TagClass* first = index.FindClass(name);
  if (!first) return nullptr;
  const auto places = index.Classes().Named(name);
  const auto isReal = [](const auto& place) { return place.record->line >= 0; };
  if (std::count_if(places.begin(), places.end(), isReal) < 2) return first;
  if (!from) from = front;
  const auto textOf = [this](const TagData& file) { return sources.TextOf(file); };
  const auto isMeant = [&](const auto& place) {
    if (!isReal(place)) return false;
    if (!space.empty()) return IsNamespace(place.record->nameSpace, space);
    return !from || openNamespaces.IsOpen(place.record->nameSpace, *from, textOf);
  };
  const std::vector<int>& distances = includes.DistancesFrom(from, index.Modules());
  const auto* nearest = NearestOf<TagClass>(places, distances, isMeant);
  if (!nearest) nearest = NearestOf<TagClass>(places, distances, isReal);
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
  const auto places = index.Globals().Named(name);
  if (places.size() < 2) return first;
  const auto* nearest = NearestOf<TagItem>(places, includes.DistancesFrom(from, index.Modules()),
                                           [](const auto&) { return true; });
  if (!nearest) return first;
  nearest->record->module = index.Modules()[nearest->module];
  return nearest->record;
}

// All records of a class, those known only from their members too. Among namesakes those of the
// class that `from` means go first: its own record, then those in files that mean the same class.
std::vector<TagClass*> TagLookup::AllRecords(std::string_view name, const TagData* from) {
  const std::string_view plain = WithoutNamespaces(index, name);
  std::vector<TagClass*> all;
  if (plain != name) all = AllRecords(plain, from);
  int realOnes = 0;
  for (const auto& [module, record] : index.Classes().Named(name)) {
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
  ClassWalk walk(
      records,
      [&](TagClass& record, TagItem& item) {
        return isWanted(item) && item.name == memberName && BelongsTo(item, record);
      },
      MacroFinder(), AliasFinder());
  return walk.Walk(className, depth, from);
}

TagItem* TagLookup::findMemberInClass(std::string_view className, std::string_view memberName,
                                      int depth, const TagData* from) {
  EnsureIndex();
  const auto records = [this](std::string_view name, const TagData* user) {
    return RecordsOf(ClassOf(name, user));
  };
  ClassWalk walk(
      records,
      [&](TagClass& record, TagItem& item) {
        return !IsOuterDefinition(item) && item.name == memberName && BelongsTo(item, record);
      },
      MacroFinder(), AliasFinder());
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
    from = found->module;
    type = NameInScope(found->type, OwnerName(*found), from);
    path.remove_prefix(dot + 1);
  }
}

void TagLookup::listMembers(Items& out, std::string_view className, std::string_view prefix,
                            int depth, const TagData* from, const std::string* viewer) {
  EnsureIndex();
  const auto records = [this](std::string_view name, const TagData* user) {
    std::vector<TagClass*> found = RecordsOf(ClassOf(name, user));
    if (found.empty()) sources.Log(" - class not found", name);
    return found;
  };
  std::vector<TagClass*> withHiddenBases;
  ClassWalk walk(
      records,
      [&](TagClass& record, TagItem& item) {
        if (IsOwnMember(item) && item.name.starts_with(prefix) && BelongsTo(item, record))
          out.push_back(&item);
        return false;
      },
      MacroFinder(), AliasFinder());
  walk.isHidden = [&](TagClass& record, std::string_view base) {
    const bool isLeftOut =
        viewer && IsInList(record.hiddenBases, base) && !IsOpenTo(record, *viewer);
    if (isLeftOut) withHiddenBases.push_back(&record);
    return isLeftOut;
  };
  walk.Walk(className, depth, from);
  for (TagClass* record : withHiddenBases)
    for (const std::string& name : record->reopened)
      if (name.starts_with(prefix))
        if (TagItem* item = findMemberInClass(record->name, name, depth, record->module))
          out.push_back(item);
}

bool TagLookup::IsOpenTo(const TagClass& record, const std::string& viewer) {
  for (std::string_view around = viewer; !around.empty(); around = ClassAround(around))
    if (around == record.name || IsDerived(around, record.name)) return true;
  return false;
}

TagLookup::MacroOf TagLookup::MacroFinder() {
  return [this](std::string_view name, const TagData* user) { return MacroMembers(name, user); };
}

TagLookup::AliasOf TagLookup::AliasFinder() {
  return [this](std::string_view name, const TagData* user) {
    const TagItem* alias = NearestGlobal(name, user, cTypedef);
    return alias && alias->type != name ? alias->type : std::string();
  };
}

// The nearest global of a kind; its `module` is set.
TagItem* TagLookup::NearestGlobal(std::string_view name, const TagData* from, int kind) {
  const auto places = index.Globals().Named(name);
  const auto isOfKind = [kind](const auto& place) { return place.record->kind == kind; };
  const auto first = std::find_if(places.begin(), places.end(), isOfKind);
  if (first == places.end()) return nullptr;
  const auto* place =
      places.size() < 2
          ? nullptr
          : NearestOf<TagItem>(places, includes.DistancesFrom(from ? from : front, index.Modules()),
                               isOfKind);
  if (!place) place = &*first;
  place->record->module = index.Modules()[place->module];
  return place->record;
}

// A macro has a tag where it is undefined too; the nearest one that brings members counts.
TagClass* TagLookup::MacroMembers(std::string_view name, const TagData* from) {
  const auto membersOf = [this](const TagItem& macro, TagData& file) {
    const bool isKnown = memberMacros.IsKnown(macro, file);
    return memberMacros.MembersOf(macro, file, isKnown ? std::string() : sources.TextOf(file));
  };
  const auto named = index.Globals().Named(name);
  std::vector<TagPlaces<TagItem>::Place> macros(named.begin(), named.end());
  std::erase_if(macros, [](const auto& place) { return place.record->kind != cMacro; });
  if (macros.empty()) return nullptr;
  const std::vector<int>& distances = includes.DistancesFrom(from ? from : front, index.Modules());
  if (!distances.empty())
    std::stable_sort(macros.begin(), macros.end(), [&](const auto& a, const auto& b) {
      return distances[a.module] < distances[b.module];
    });
  for (const auto& [number, record] : macros)
    if (TagClass* found = membersOf(*record, *index.Modules()[number])) return found;
  return nullptr;
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
  const size_t before = out.size();
  for (const auto& [number, record] : EnsureIndex().Classes().Named(name))
    for (TagItem& member : record->members)
      if (member.kind == cEnumerator && member.name.starts_with(prefix)) {
        member.module = index.Modules()[number];
        member.owner = nullptr;
        out.push_back(&member);
      }
  const bool isEnum = out.size() > before;
  listLibrary(out, name, prefix);
  const bool isOfLibrary = out.size() > before && !isEnum;
  const bool isOfMacro = !isEnum && !isOfLibrary && ListMacroNamespace(out, name, prefix);
  const auto namespaces = index.Globals().Named(name);
  if (namespaces.empty()) return;
  const std::vector<int>& distances = includes.DistancesFrom(front, index.Modules());
  const auto isNear = [&](int module) {
    return !distances.empty() && distances[module] < IncludeGraph::cFar;
  };
  std::vector<int> openers;
  bool isAny = false;
  for (const auto& [number, record] : namespaces) {
    if (record->kind != cNamespace) continue;
    isAny = true;
    const size_t listed = out.size();
    ListNamespaceFile(out, number, record->line, prefix);
    if (!isNear(number)) continue;
    openers.push_back(number);
    // Above that line a macro may open it.
    if (out.size() == listed) ListNamespaceFile(out, number, 0, prefix);
  }
  // Other files open it, so a macro does it here: all that is known here may be in it.
  if (!isAny || isOfMacro || !openers.empty() || isEnum || isOfLibrary) return;
  for (int number = 0; number < static_cast<int>(index.Modules().size()); ++number)
    if (isNear(number)) ListNamespaceFile(out, number, 0, prefix);
}

TagLookup::NamespacePlace TagLookup::findNamespace(std::string_view name, const TagData* from) {
  EnsureIndex();
  const std::vector<int> order = includes.ReadOrder(from, index.Modules());
  std::vector<const TagData*> files;
  for (const int number : order) files.push_back(index.Modules()[number]);
  std::vector<int> lines(files.size(), 0);
  const auto note = [&lines](size_t place, int line) {
    if (line > 0 && (lines[place] == 0 || line < lines[place])) lines[place] = line;
  };
  for (const auto& [number, record] : index.Globals().Named(name)) {
    const auto place = std::find(order.begin(), order.end(), number);
    if (record->kind == cNamespace && place != order.end())
      note(static_cast<size_t>(place - order.begin()), record->line);
  }
  const auto textOf = [this](const TagData& file) { return sources.TextOf(file); };
  for (const auto& [place, line] : macroNamespaces.FirstLines(files, name, textOf))
    note(place, line);
  const auto first = std::find_if(lines.begin(), lines.end(), [](int line) { return line > 0; });
  if (first == lines.end()) return {};
  return {files[static_cast<size_t>(first - lines.begin())], *first};
}

// The same for the files that open it by a macro. True if any does.
bool TagLookup::ListMacroNamespace(std::vector<TagItem*>& out, std::string_view name,
                                   std::string_view prefix) {
  const std::vector<int>& distances = includes.DistancesFrom(front, index.Modules());
  std::vector<int> numbers;
  std::vector<const TagData*> files;
  for (int number = 0; number < static_cast<int>(distances.size()); ++number) {
    if (distances[number] >= IncludeGraph::cFar) continue;
    numbers.push_back(number);
    files.push_back(index.Modules()[number]);
  }
  const auto textOf = [this](const TagData& file) { return sources.TextOf(file); };
  const auto opened = macroNamespaces.FirstLines(files, name, textOf);
  for (const auto& [place, line] : opened) ListNamespaceFile(out, numbers[place], line, prefix);
  return !opened.empty();
}

// Appends what comes from a line of a file on. True if anything does. Macros are in no namespace.
bool TagLookup::ListNamespaceFile(std::vector<TagItem*>& out, int number, int firstLine,
                                  std::string_view prefix) {
  TagData* module = index.Modules()[number];
  const size_t before = out.size();
  const auto list = [&](TagItem& item) {
    const bool isListed = item.line >= std::max(firstLine, 1) && item.kind != cMacro &&
                          item.name.starts_with(prefix) && item.name.find("::") == prefix.npos;
    if (!isListed || (item.kind == cNamespace && item.line == firstLine)) return;
    item.module = module;
    item.owner = nullptr;
    out.push_back(&item);
  };
  for (TagItem& item : module->globals) list(item);
  for (auto& [key, item] : module->classes) list(item);
  for (const auto& place : index.Enumerators().All())
    if (place.module == number) list(*place.record);
  return out.size() > before;
}

void TagLookup::listGlobals(std::vector<TagItem*>& out, std::string_view prefix) {
  EnsureIndex();
  const std::vector<int>& distances = includes.DistancesFrom(front, index.Modules());
  const auto isAny = [](const auto&) { return true; };
  ListNames(out, index, index.Globals(), prefix, distances, isAny);
  ListNames(out, index, index.Classes(), prefix, distances,
            [](const auto& place) { return IsClassKind(place.record->kind); });
  ListNames(out, index, index.Enumerators(), prefix, distances, isAny);
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
    ListNames(out, index, index.Classes(), inside + std::string(prefix), distances, isListed);
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

std::vector<TagItem*> TagLookup::findNamesakes(const TagItem& item) {
  if (const TagData* library = sources.Library())
    for (const auto& names : library->names)
      if (const auto nameSpace = names->NamespaceOf(item))
        return findLibraryNames(*nameSpace, item.name);
  return {};
}

// The definition of a library names a folder beside it for its headers: that of the standard
// library is "stl", others are called like their namespace. The classes of C are among its names.
void TagLookup::listLibrary(std::vector<TagItem*>& out, std::string_view nameSpace,
                            std::string_view prefix) {
  TagData* library = sources.Library();
  if (!library) return;
  const bool isStandard = nameSpace == cLibraryNamespace;
  const std::string folder = "/" + std::string(isStandard ? "stl" : nameSpace) + "/";
  const auto isOfIt = [&](const TagItem& item) {
    const auto isItsHeader = [&](const HeaderRec& header) { return header.id == item.fileId; };
    const auto header = std::find_if(library->headers.begin(), library->headers.end(), isItsHeader);
    return header == library->headers.end() ? isStandard
                                            : header->path.find(folder) != std::string::npos;
  };
  const auto isOfC = [&](const TagItem& item) {
    const std::vector<TagItem*> names = findLibraryNames("", item.name);
    return std::any_of(names.begin(), names.end(),
                       [](const TagItem* name) { return name->kind == cClass; });
  };
  auto& classes = library->classes;
  for (auto at = classes.lower_bound(prefix); at != classes.end() && at->first.starts_with(prefix);
       ++at) {
    TagClass& record = at->second;
    const bool isInside = record.name.find("::") != std::string::npos;
    if (nameSpace.empty() || isInside || !isOfIt(record) || isOfC(record)) continue;
    record.module = nullptr;
    record.owner = nullptr;
    out.push_back(&record);
  }
  for (const auto& names : library->names) names->List(out, nameSpace, prefix);
}

}  // namespace zendry
