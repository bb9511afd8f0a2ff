#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// A record of a help index: a name with the texts that explain it.
struct HelpEntry {
  enum State { cFirst = 1, cAlias = 2 };  // the first record of a text, or another name for it

  int state = cFirst;
  std::string key;    // "module@name", or only the name
  std::string title;  // the name
  std::string body;   // "$n" means: the texts of entry n, counted from 0
  std::string brief;
  std::string params;
  std::string returns;
  std::string type;
  int sourceOf = -1;  // the n of "$n"; -1 for an entry with texts of its own

  // A key without "@" is both.
  std::string_view Module() const;
  std::string_view Name() const;
};

// All help indexes that were read, as one list. docs/help.md describes their format.
class HelpIndex {
 public:
  // Texts in a language block are read if it is of this language, an upper-case letter.
  explicit HelpIndex(char theLanguage = 'E') : language(theLanguage) {}

  // Adds the entries of a file. False for a file that can't be read: then nothing is added.
  bool ReadFile(const std::string& path);
  // Adds the indexes of an installation: "mavro.ch", "stl.ch" and "clib.ch" of its folder in this
  // order, then every other "*.ch" of that folder and of the user's one, by name.
  void ReadFolders(const std::string& folder, const std::string& usersFolder);
  // The same for the bytes of an index. Any bytes are accepted; what isn't an entry adds nothing.
  void Read(std::string_view bytes);

  const std::vector<HelpEntry>& Topics() const { return topics; }
  // The names of the modules, each once, in the order of the files.
  const std::vector<std::string>& Modules() const { return modules; }
  // The texts before the first heading of the files. They say where an index comes from.
  const std::string& Extra() const { return extra; }

  // The entry with the texts of `entry`: itself, or the one that its "$n" leads to. Null if that
  // leads nowhere or in a circle.
  const HelpEntry* Source(const HelpEntry& entry) const;
  // The `most` names that are nearest to a word, the nearest first. The case of letters hardly
  // counts.
  std::vector<std::string> Nearest(std::string_view word, size_t most) const;

 private:
  friend class HelpIndexReader;

  char language;
  std::vector<HelpEntry> topics;
  std::vector<std::string> modules;
  std::string extra;
};

}  // namespace zendry
