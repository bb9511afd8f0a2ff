#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tags/IncludeScan.h"
#include "tags/ShortText.h"

namespace zendry {

class LibraryNames;
class TagData;
struct TagClass;

// A global or a member of a class, as the tag parser found it. Large projects have millions of
// them, hence the small types.
struct TagItem {
  int line = 0;
  // 0 for a source of the project; in a reference library the id of its header, see HeaderId().
  uint16_t fileId : 15 = 0;
  // A function that a class names as its friend, and that is no member of it.
  bool isFriend : 1 = false;
  char kind = 0;  // the kind's letter
  // Third letter of the access: i private or friend, o protected, b public, f default, c local,
  // ? unknown; 0 for none, 1 for every member that was read from a cache.
  char access = 0;
  ShortText name;
  ShortText signature;        // parameter list with its parentheses; empty if it isn't a function
  ShortText type;             // name of the type it was declared with
  TagClass* owner = nullptr;  // set by lookups
  TagData* module = nullptr;  // set by lookups
};

// A class, struct or union by its full qualified name, with its members. `line` is -1 and `kind` 0
// for a class that is known only from its members; `signature` holds the alias of a class that is
// stored under a shorter name.
struct TagClass : TagItem {
  int serial = 0;           // order of appearance in its store, from 1
  std::string nameSpace;    // the one around it, for a class of a source
  std::string inheritance;  // base names, joined by commas
  std::string hiddenBases;  // those of them that are private or protected, joined likewise
  std::vector<TagItem> members;
  std::vector<std::string> friends;   // classes that may use all its members
  std::vector<std::string> reopened;  // names of bases that "using" declares here
  std::vector<std::string> macros;    // names alone in the block, which may bring members
};

// The id of a header as its tags keep it: 0, as of no header, for one that is too large.
inline uint16_t HeaderId(int id) {
  constexpr int cLargest = (1 << 15) - 1;
  return id < 0 || id > cLargest ? 0 : static_cast<uint16_t>(id & cLargest);
}

// The name of the class that a tag was found in; empty without one.
inline std::string OwnerName(const TagItem& item) {
  return item.owner ? std::string(item.owner->name) : std::string();
}

// A header of a reference library.
struct HeaderRec {
  int id = 0;
  std::string options;
  std::string name;
  std::string path;
};

// The tags of one source file, replaced whole whenever the file is parsed again, or those of the
// project's reference libraries. Pointers into it are invalid after the next parse.
class TagData {
 public:
  // Drops globals, classes and includes; the name stays.
  void clear();
  // The first global or class with that exact name, its `module` cleared; null without one. The key
  // of a class in `classes` is its own name.
  TagItem* findGlobal(std::string_view name);
  TagClass* findClass(std::string_view name);
  void addInclude(std::string_view name, bool quoted, bool isElsewhere = false);
  // Adds the tags of a library: those of its cache or, when the definition file at `path` is newer
  // or the cache can't be trusted, those of the headers that it names, which are written to the
  // cache then. Drops tags of other origin that are there. Does nothing the second time, and
  // reports no error for files that can't be read or written. TagReference.h has the steps.
  void loadReference(const std::string& path);
  // Notes that the tags have changed, so that an index over stores drops its entries for this one.
  // Code that changes the tags calls it before the next lookup; clear() does.
  void Changed() { generation = ++lastGeneration; }
  // Different for any two contents of any two stores.
  uint64_t Generation() const { return generation; }
  // The latest generation of all stores: as long as it stays the same, no store has changed.
  static uint64_t LatestGeneration() { return lastGeneration; }

  int classCount = 0;  // serial of the last class
  std::string fileName;
  std::vector<TagItem> globals;  // in order of appearance
  std::map<std::string, TagClass, std::less<>> classes;
  std::vector<IncludeRec> includes;
  bool saveCache = false;
  std::set<std::string> loaded;  // definition files that have been read
  std::vector<HeaderRec> headers;
  std::vector<std::shared_ptr<LibraryNames>> names;  // of its libraries, in no class

 private:
  static inline uint64_t lastGeneration = 0;
  uint64_t generation = ++lastGeneration;
};

}  // namespace zendry
