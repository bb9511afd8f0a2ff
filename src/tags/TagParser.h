#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/FileReader.h"
#include "tags/BodyNotes.h"
#include "tags/TagFacts.h"
#include "tags/TagLanguages.h"

namespace zendry {

class OutputShell;
class TagData;
struct TagClass;
struct TagItem;

// Finds the tags of a source text: classes, functions, members, macros ... and the names that it
// includes, and puts them into a store. There is one parser, since one text is parsed at a time. It
// never fails: it skips and logs the parts that it can't read and goes on.
class TagParser {
 public:
  static constexpr int cMostTags = 1024;  // one more ends the file, but is stored

  // Parses the text that `tagData` names, with file id 0; always true. Its bytes come from the
  // reader, or from the disk when that is null. The reader must live until the next call of this or
  // of Bind(). With `includeLocals` variables within functions of C and C++ are tags too. The store
  // isn't cleared.
  bool parseBuffer(TagData& tagData, FileReader* reader, bool includeLocals);
  // Binds the store that parseFile() fills and the reader that it takes the bytes from: a null one
  // means the disk.
  void Bind(TagData& tagData, FileReader* reader = nullptr);
  // Parses a file into the store bound last; its tags carry `fileId`. False when the name has no
  // known language, and when the pass asked for another pass, which it never does.
  bool parseFile(const std::string& path, int fileId);
  // The language that a file's name means; nothing when there is none. `isHeader` is set too.
  static std::optional<Language> languageOf(std::string_view path, bool& isHeader);

  // The most tags of a source and its longest line; the source ends there.
  void SetLimits(int newMostTags, size_t longestLine);
  // Stores a tag that the declaration parser found.
  void addTag(const TagFacts& entry);
  // How many members the class of that name has so far; how many globals the store has, for "".
  size_t MemberCount(std::string_view className) const;
  // Moves the members from that number on to another class, whose name they are reached by: those
  // of a union or structure that has neither a name nor a variable. `access` is the letter of that
  // in the other class.
  void MoveMembers(std::string_view from, size_t first, std::string_view to, int access);
  // Notes a name of a base that a class declares again: "using Base::name;".
  void AddReopened(std::string_view className, std::string_view name);
  // Notes a class that may use all members of another one: "friend class Name;".
  void AddFriend(std::string_view className, std::string_view name);
  // Notes a name alone in the block of a class.
  void AddMemberMacro(std::string_view className, std::string_view name);
  // Moves the data and functions from that number on to a new class without a name: those of the
  // type of a variable, or of an alias. `from` is "" for the globals. Returns the name by which the
  // store has the class, which no other text uses.
  std::string NameBlock(std::string_view from, size_t first, char kind, int line);
  // Writes to the shell's output; to the trace log without a shell.
  void logMessage(std::string_view text, std::string_view detail = {});

  // The last source was given up before its end, because of a long line or too many tags.
  bool gaveUp = false;
  // The receiver of log messages; not owned.
  OutputShell* shell = nullptr;
  // The language of the next texts, whatever their names mean: a name alone never means Java. It is
  // valid until it is reset.
  std::optional<Language> language;
  // The parser looks at the text ahead up to this byte, to decide what it reads.
  void NoteLook(const char* end);
  // Called for every tag, with its full type.
  std::function<void(const TagFacts&)> found;

  int mostTags = cMostTags;  // of one source
  BodyNotes bodies;          // of the last source
  // Options of the parser.
  bool keepFilePrivate = true;   // tags that are visible only in their own file are kept
  bool addQualifiedTag = false;  // a second tag of each member, named with its class
  bool readIfZero = false;       // the text after `#if 0` is read
  bool storesTags = true;        // else only `found` is told of them, the store gets nothing
  bool keepReserved = false;     // names that begin with "_" are tags too

 private:
  bool OpenSource(const std::string& path);
  void CountTag();
  TagClass& EnsureClass(std::string_view name);
  std::vector<TagItem>& MembersOf(std::string_view className);
  void StoreItem(const TagFacts& facts);
  void StoreClass(const TagFacts& facts);

  TagData* tagData = nullptr;
  FileReader* reader = nullptr;
  FileReader defaultReader;
  std::string lastType;  // type of the last tag that had one
  std::string source;    // the path of the text
  int tagCount = 0;
  int blockCount = 0;  // classes without a name
  int fileId = 0;
  TagClass* lastClass = nullptr;  // the class that the last tag went to
  std::string_view lastClassName;
};

extern TagParser theTagParser;

// While it lives, names that begin with "_" are tags too, as in a project's own sources.
class ReservedNamesKept {
 public:
  ReservedNamesKept() : before(std::exchange(theTagParser.keepReserved, true)) {}
  ~ReservedNamesKept() { theTagParser.keepReserved = before; }
  ReservedNamesKept(const ReservedNamesKept&) = delete;
  ReservedNamesKept& operator=(const ReservedNamesKept&) = delete;

 private:
  const bool before;
};

}  // namespace zendry
