#include "code/CompletionList.h"

#include <algorithm>
#include <array>

namespace zendry {

namespace {

// The kinds by the letters of the tags; functions have no row.
struct LetterRow {
  char letter;
  RowKind kind;
};

constexpr std::array<LetterRow, 13> cLetters = {{
    {'m', RowKind::cData},
    {'v', RowKind::cData},
    {'x', RowKind::cData},
    {'l', RowKind::cLocal},
    {'c', RowKind::cClass},
    {'s', RowKind::cClass},
    {'u', RowKind::cClass},
    {'i', RowKind::cClass},
    {'g', RowKind::cEnum},
    {'e', RowKind::cEnumerator},
    {'t', RowKind::cTypedef},
    {'d', RowKind::cMacro},
    {'n', RowKind::cNamespace},
}};

// By RowKind.
constexpr std::array<std::string_view, 11> cNames = {"",          "data",       "function", "class",
                                                     "enum",      "enumerator", "typedef",  "macro",
                                                     "namespace", "keyword",    "local"};

}  // namespace

const CompletionRow* CompletionList::Find(std::string_view name) const {
  const auto isBefore = [](const CompletionRow& row, std::string_view wanted) {
    return row.name < wanted;
  };
  const auto row = std::lower_bound(rows.begin(), rows.end(), name, isBefore);
  return row != rows.end() && row->name == name ? &*row : nullptr;
}

// Classes that were read from a cache have neither kind nor line.
RowKind KindOf(const TagItem& item) {
  if (item.kind == 0) return RowKind::cClass;
  const auto isSame = [&](const LetterRow& row) { return row.letter == item.kind; };
  const auto row = std::find_if(cLetters.begin(), cLetters.end(), isSame);
  return row == cLetters.end() ? RowKind::cFunction : row->kind;
}

CompletionRow RowOf(const TagItem& item) {
  CompletionRow row{item.name, KindOf(item), item.type, item.signature, {}};
  if (row.kind == RowKind::cClass) {
    // A class has its alias there, and its name has those of the classes around it.
    row.signature.clear();
    row.name.erase(0, row.name.rfind(':') + 1);
  }
  if (item.owner) row.owner = item.owner->name;
  return row;
}

// Rows are large, so that pointers to them are sorted.
void Tidy(std::vector<CompletionRow>& rows) {
  std::vector<CompletionRow*> sorted;
  for (CompletionRow& row : rows)
    if (!row.name.empty() && row.name.find(' ') == std::string::npos) sorted.push_back(&row);
  std::stable_sort(
      sorted.begin(), sorted.end(),
      [](const CompletionRow* a, const CompletionRow* b) { return a->name < b->name; });
  std::vector<CompletionRow> tidy;
  tidy.reserve(sorted.size());
  for (CompletionRow* row : sorted)
    if (tidy.empty() || tidy.back().name != row->name) tidy.push_back(std::move(*row));
  rows = std::move(tidy);
}

std::string ListText(const std::vector<CompletionRow>& rows) {
  std::string text;
  for (const CompletionRow& row : rows) {
    if (!text.empty()) text += ' ';
    text += row.name;
    text += '?';
    text += std::to_string(static_cast<int>(row.kind));
  }
  return text;
}

std::string ShortNote(const CompletionRow& row) {
  return row.type.empty() ? std::string(NameOf(row.kind)) : row.type;
}

std::string LongNote(const CompletionRow& row) {
  if (row.signature.empty()) return {};
  std::string note = row.type.empty() ? "" : row.type + " ";
  if (!row.owner.empty()) note += row.owner + "::";
  return note + row.name + row.signature;
}

std::string_view NameOf(RowKind kind) {
  return cNames[static_cast<size_t>(kind)];
}

}  // namespace zendry
