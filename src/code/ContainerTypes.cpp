#include "code/ContainerTypes.h"

#include <algorithm>
#include <array>

#include "code/CodeTokens.h"

namespace zendry {

namespace {

// The type that is made from the arguments of a type.
enum class Made {
  cNothing,
  cFirst,     // the first argument
  cSecond,    // the second one
  cEntry,     // a pair of both
  cPointer,   // a pointer to the first one
  cShared,    // a shared pointer to it
  cIterator,  // an iterator of the type
  cInserted,  // a pair of an iterator and bool
};

struct ClassRow {
  std::string_view names;  // separated by blanks
  Made element = Made::cNothing;
  Made pointee = Made::cNothing;
  Made indexed = Made::cNothing;
};

constexpr std::array<ClassRow, 9> cClasses = {{
    {"vector deque array span valarray", Made::cFirst, Made::cNothing, Made::cFirst},
    {"list forward_list set multiset unordered_set unordered_multiset initializer_list",
     Made::cFirst},
    {"map unordered_map", Made::cEntry, Made::cNothing, Made::cSecond},
    {"multimap unordered_multimap", Made::cEntry},
    {"stack queue priority_queue pair tuple weak_ptr future shared_future promise atomic"},
    {"unique_ptr", Made::cFirst, Made::cFirst, Made::cFirst},
    {"shared_ptr auto_ptr optional", Made::cFirst, Made::cFirst, Made::cFirst},
    {"reverse_iterator move_iterator"},
    {"reference_wrapper"},
}};

// Members of any of these classes.
struct MemberRow {
  std::string_view classes;  // empty: all
  std::string_view members;
  Made made = Made::cNothing;
};

constexpr std::string_view cMaps = "map unordered_map multimap unordered_multimap";

constexpr std::array<MemberRow, 14> cMembers = {{
    {"pair", "first", Made::cFirst},
    {"pair", "second", Made::cSecond},
    {cMaps, "at", Made::cSecond},
    {"map unordered_map", "insert emplace try_emplace insert_or_assign", Made::cInserted},
    {"set unordered_set", "insert emplace", Made::cInserted},
    {"unique_ptr shared_ptr auto_ptr", "get release", Made::cPointer},
    {"weak_ptr", "lock", Made::cShared},
    {"optional", "value value_or", Made::cFirst},
    {"future shared_future reference_wrapper", "get", Made::cFirst},
    {"atomic", "load exchange", Made::cFirst},
    {"", "front back top at value_type reference const_reference emplace_back emplace_front",
     Made::cFirst},
    {"", "data", Made::cPointer},
    {"", "begin end rbegin rend cbegin cend crbegin crend find lower_bound upper_bound erase",
     Made::cIterator},
    {"", "insert emplace emplace_hint", Made::cIterator},
}};

// Names of a container's nested types that mean its iterators.
constexpr std::string_view cIteratorNames =
    "iterator const_iterator reverse_iterator const_reverse_iterator local_iterator "
    "const_local_iterator";

struct FunctionRow {
  std::string_view names;
  CallResult result = CallResult::cUnknown;
};

constexpr std::array<FunctionRow, 5> cFunctions = {{
    {"move forward as_const ref cref max min clamp next prev exchange find find_if find_if_not "
     "lower_bound upper_bound min_element max_element remove remove_if unique partition "
     "adjacent_find",
     CallResult::cArgument},
    {"begin end rbegin rend cbegin cend", CallResult::cIterator},
    {"make_unique make_unique_for_overwrite", CallResult::cUniquePointer},
    {"make_shared static_pointer_cast dynamic_pointer_cast const_pointer_cast allocate_shared",
     CallResult::cSharedPointer},
    {"to_string", CallResult::cString},
}};

struct VariableRow {
  std::string_view names;
  std::string_view className;
};

constexpr std::array<VariableRow, 2> cVariables = {{
    {"cout cerr clog", "ostream"},
    {"cin", "istream"},
}};

const ClassRow* RowOf(const TypeText& type) {
  if (type.IsEmpty() || type.pointers > 0 || type.path.size() > 2) return nullptr;
  if (type.path.size() == 2 && type.path.front().name != "std") return nullptr;
  const auto found = std::find_if(cClasses.begin(), cClasses.end(), [&](const ClassRow& row) {
    return IsInList(row.names, type.Name());
  });
  return found == cClasses.end() ? nullptr : &*found;
}

bool IsIterator(const TypeText& type) {
  return type.pointers == 0 && type.path.size() > 1 && IsInList(cIteratorNames, type.Name());
}

TypeText Instance(std::string_view name, std::vector<TypeText> arguments) {
  TypeText type = TypeOfName(name);
  type.path.back().arguments = std::move(arguments);
  return type;
}

TypeText IteratorOf(const TypeText& type) {
  TypeText iterator = type;
  iterator.path.push_back({"iterator", {}});
  return iterator;
}

std::optional<TypeText> Make(const TypeText& type, Made made) {
  TypeText first = type.Argument(0);
  switch (made) {
    case Made::cNothing:
      return std::nullopt;
    case Made::cFirst:
      break;
    case Made::cSecond:
      first = type.Argument(1);
      break;
    case Made::cEntry:
      return Instance("pair", {first, type.Argument(1)});
    case Made::cPointer:
      ++first.pointers;
      break;
    case Made::cShared:
      return Instance("shared_ptr", {first});
    case Made::cIterator:
      return IteratorOf(type);
    case Made::cInserted:
      return Instance("pair", {IteratorOf(type), TypeOfName("bool")});
  }
  if (first.IsEmpty()) return std::nullopt;
  return first;
}

}  // namespace

bool IsContainerType(const TypeText& type) {
  return RowOf(type) != nullptr || (IsIterator(type) && RowOf(type.Outer()));
}

bool IsArrowForeign(std::string_view className) {
  return IsInList(cIteratorNames, className) || RowOf(TypeOfName(className));
}

std::optional<TypeText> ElementOf(const TypeText& type) {
  const TypeText range = IsIterator(type) ? type.Outer() : type;
  const ClassRow* row = RowOf(range);
  return row ? Make(range, row->element) : std::nullopt;
}

std::optional<TypeText> PointeeOf(const TypeText& type) {
  if (IsIterator(type)) return ElementOf(type);
  const ClassRow* row = RowOf(type);
  return row ? Make(type, row->pointee) : std::nullopt;
}

std::optional<TypeText> IndexedOf(const TypeText& type) {
  if (IsIterator(type)) return ElementOf(type);
  const ClassRow* row = RowOf(type);
  return row ? Make(type, row->indexed) : std::nullopt;
}

std::optional<TypeText> MemberOf(const TypeText& type, std::string_view member) {
  if (!RowOf(type)) return std::nullopt;
  if (IsInList(cIteratorNames, member)) return IteratorOf(type);
  for (const auto& [classes, members, made] : cMembers) {
    const bool isClass = classes.empty() || IsInList(classes, type.Name());
    if (isClass && IsInList(members, member)) return Make(type, made);
  }
  return std::nullopt;
}

std::optional<TypeText> BoundOf(const TypeText& type, size_t place) {
  const bool isKnown = RowOf(type) && IsInList("pair tuple", type.Name());
  if (!isKnown || type.Argument(place).IsEmpty()) return std::nullopt;
  return type.Argument(place);
}

CallResult ResultOf(std::string_view function) {
  const auto found = std::find_if(cFunctions.begin(), cFunctions.end(),
                                  [&](const auto& row) { return IsInList(row.names, function); });
  return found == cFunctions.end() ? CallResult::cUnknown : found->result;
}

std::string_view ClassOfVariable(std::string_view name) {
  for (const auto& [names, className] : cVariables)
    if (IsInList(names, name)) return className;
  return {};
}

}  // namespace zendry
