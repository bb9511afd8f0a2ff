#pragma once

#include <string>
#include <vector>

#include "tags/TagData.h"

namespace zendry {

// What a name in a list stands for. The value is the number of its picture in the editor's list.
enum class RowKind {
  cData = 1,  // a data member or a variable
  cFunction,
  cClass,  // a class, struct or union
  cEnum,
  cEnumerator,
  cTypedef,
  cMacro,
  cNamespace,
  cKeyword,
  cLocal  // a variable or parameter of the function around the caret
};

// A row of a list of names.
struct CompletionRow {
  std::string name;  // the text to insert
  RowKind kind = RowKind::cData;
  std::string type;       // of the value, or of the result of the function; empty if unknown
  std::string signature;  // the parameters with their parentheses; empty if it is no function
  std::string owner;      // the class that it is a member of; empty without one

  friend bool operator==(const CompletionRow&, const CompletionRow&) = default;
};

// The names that fit at a caret, in the order of their bytes, each once.
struct CompletionList {
  std::string typed;  // the beginning of the names that is before the caret already
  std::vector<CompletionRow> rows;
  size_t selected = 0;  // the row to select first: the one taken last, if there is one

  // The row of a name; null without one.
  const CompletionRow* Find(std::string_view name) const;
};

// The kind of a tag.
RowKind KindOf(const TagItem& item);
CompletionRow RowOf(const TagItem& item);

// Sorts the rows by their names and keeps the first of each name. Rows whose names contain a blank
// ("operator new") are left out.
void Tidy(std::vector<CompletionRow>& rows);

// The names for the editor's list: separated by blanks, each with "?" and the number of its picture
// after it.
std::string ListText(const std::vector<CompletionRow>& rows);

// What a row says besides its name: the type, or the kind where there is none; and a function with
// its class, its parameters and the type of its result, empty for other rows.
std::string ShortNote(const CompletionRow& row);
std::string LongNote(const CompletionRow& row);

// The word that tells a row's kind: "function", "class".
std::string_view NameOf(RowKind kind);

}  // namespace zendry
