#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tags/TagData.h"

namespace zendry {

// The names of a reference library that are in no class: functions, macros, types, constants and
// variables. Compiled tags have classes only; these names lie in a file beside them, extension
// "tgn", so many that making tags of all would cost time and memory. So the text is read when it is
// asked for the first time, searched as it is, and only names that are asked for become tags. A
// line is
//
//   namespace BLANK name TAB kind TAB type TAB signature
//
// The namespace is its last word, empty for names outside of all. Lines are in the order of their
// bytes. Parts that are missing are empty; a line without a name is passed over.
class LibraryNames {
 public:
  explicit LibraryNames(std::string itsPath) : path(std::move(itsPath)) {}

  // Appends all tags of a name, such as the overloads of a function.
  void Find(std::vector<TagItem*>& out, std::string_view nameSpace, std::string_view name);
  // Appends the first tag of each name with this prefix, in the order of the names.
  void List(std::vector<TagItem*>& out, std::string_view nameSpace, std::string_view prefix);
  // The namespace of a tag that was found here; nothing for any other tag.
  std::optional<std::string> NamespaceOf(const TagItem& item) const;
  // True if any name is in that namespace.
  bool HasNamespace(std::string_view nameSpace);

 private:
  void EnsureText();
  size_t FirstLine(std::string_view beginning);
  std::string_view LineAt(size_t start) const;
  TagItem& ItemAt(size_t start, std::string_view line);

  std::string path;
  bool isRead = false;
  std::string text;
  std::map<size_t, TagItem> items;  // by the beginnings of their lines
};

// The path of the names that belong to a library's definition.
std::string NamesPath(const std::string& definition);

}  // namespace zendry
