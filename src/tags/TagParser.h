#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/FileReader.h"
#include "tags/TagFacts.h"
#include "tags/TagLanguages.h"

namespace zendry {

class OutputShell;
class TagData;
struct TagClass;

// Finds the tags of a source text: classes, functions, members, macros ... and the names that it
// includes, and puts them into a store. There is one, since one text is parsed at a time.
// It never fails: what it can't read it skips, logs and goes on.
class TagParser {
 public:
  static constexpr int cMostTags = 1024;  // the one after these ends the file, but is stored

  // Parses the text that `tagData` names, with file id 0; always true. The reader gives its bytes,
  // the disk without one; it must live until the next call of this or of Bind(). With
  // `includeLocals` variables within functions of C and C++ are tags too. The store isn't cleared.
  bool parseBuffer(TagData& tagData, FileReader* reader, bool includeLocals);
  // Binds the store that parseFile() fills and the reader it takes the bytes from: a null one
  // stands for the disk.
  void Bind(TagData& tagData, FileReader* reader = nullptr);
  // Parses a file into the store bound last; its tags carry `fileId`. False when the name tells no
  // language, and when the pass asked for another one, which none does.
  bool parseFile(const std::string& path, int fileId);
  // The language that a file's name tells; nothing when there is none. `isHeader` is set too.
  static std::optional<Language> languageOf(std::string_view path, bool& isHeader);

  // Stores a tag that the declaration parser found.
  void addTag(const TagFacts& entry);
  // Goes to the shell's output; mute without one.
  void logMessage(std::string_view text, std::string_view detail = {});

  // The last source was given up before its end, for a long line or for many tags.
  bool gaveUp = false;
  // Who hears what is logged; not owned.
  OutputShell* shell = nullptr;
  // The language of what is parsed next, whatever its name tells: the name alone never leads to
  // Java. It holds until it is taken back.
  std::optional<Language> language;
  // Hears of every tag that is stored, with its type told in full.
  std::function<void(const TagFacts&)> found;

  // Options of the parser.
  bool keepFilePrivate = true;   // tags that only their own file sees are kept
  bool addQualifiedTag = false;  // a second tag of each member, named with its class
  bool readIfZero = false;       // what stands behind `#if 0` is read

 private:
  bool OpenSource(const std::string& path);
  void CountTag();
  TagClass& EnsureClass(std::string_view name);
  void StoreItem(const TagFacts& facts);
  void StoreClass(const TagFacts& facts);

  TagData* tagData = nullptr;
  FileReader* reader = nullptr;
  FileReader defaultReader;
  std::string lastType;  // type of the last tag that had one
  int tagCount = 0;
  int fileId = 0;
  TagClass* lastClass = nullptr;  // the one that the last tag went to
  std::string_view lastClassName;
};

extern TagParser theTagParser;

}  // namespace zendry
