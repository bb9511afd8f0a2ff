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

// Classes that were read from a cache have neither kind nor line.
RowKind KindOf(const TagItem& item) {
  if (item.kind == 0) return RowKind::cClass;
  const auto isSame = [&](const LetterRow& row) { return row.letter == item.kind; };
  const auto row = std::find_if(cLetters.begin(), cLetters.end(), isSame);
  return row == cLetters.end() ? RowKind::cFunction : row->kind;
}

}  // namespace

const CompletionRow* CompletionList::Find(std::string_view name) const {
  const auto isBefore = [](const CompletionRow& row, std::string_view wanted) {
    return row.name < wanted;
  };
  const auto row = std::lower_bound(rows.begin(), rows.end(), name, isBefore);
  return row != rows.end() && row->name == name ? &*row : nullptr;
}

CompletionRow RowOf(const TagItem& item) {
  CompletionRow row{item.name, KindOf(item), item.type, item.signature, {}};
  // A class has its alias there.
  if (row.kind == RowKind::cClass) row.signature.clear();
  if (item.owner) row.owner = item.owner->name;
  return row;
}

void Tidy(std::vector<CompletionRow>& rows) {
  std::erase_if(rows, [](const CompletionRow& row) {
    return row.name.empty() || row.name.find(' ') != std::string::npos;
  });
  std::stable_sort(rows.begin(), rows.end(),
                   [](const CompletionRow& a, const CompletionRow& b) { return a.name < b.name; });
  const auto isSame = [](const CompletionRow& a, const CompletionRow& b) {
    return a.name == b.name;
  };
  rows.erase(std::unique(rows.begin(), rows.end(), isSame), rows.end());
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

std::string_view NameOf(RowKind kind) {
  return cNames[static_cast<size_t>(kind)];
}

}  // namespace zendry
