#include "code/FreeNames.h"

#include <string>

#include "base/Paths.h"
#include "code/CodeTokens.h"
#include "code/CppKeywords.h"
#include "code/LocalNames.h"
#include "code/TagLookup.h"

namespace zendry {

namespace {

void AddKeywords(std::vector<CompletionRow>& rows, std::string_view keywords,
                 std::string_view prefix) {
  while (!keywords.empty()) {
    const std::string_view word = keywords.substr(0, keywords.find(' '));
    if (word.starts_with(prefix))
      rows.push_back({std::string(word), RowKind::cKeyword, {}, {}, {}});
    keywords.remove_prefix(std::min(word.size() + 1, keywords.size()));
  }
}

// The namespaces of "using namespace" before the caret.
std::vector<std::string> UsedNamespaces(const CodeTokens& tokens) {
  std::vector<std::string> used;
  for (int at = 0; at < tokens.Count(); ++at)
    if (tokens.Is(at, "using") && tokens.Is(at + 1, "namespace") && tokens.Is(at + 3, ";"))
      used.emplace_back(tokens.Text(at + 2));
  return used;
}

}  // namespace

void AddLocalNames(std::vector<CompletionRow>& rows, const CodeTokens& tokens,
                   std::string_view prefix) {
  for (CompletionRow& row : LocalNames(tokens))
    if (row.name.starts_with(prefix)) rows.push_back(std::move(row));
}

void AddKnownNames(std::vector<CompletionRow>& rows, TagLookup& tags, const CodeTokens& tokens,
                   std::string_view path, std::string_view scope, std::string_view prefix) {
  std::vector<TagItem*> items;
  for (std::string_view around = scope; !around.empty();) {
    tags.listNestedClasses(items, around, prefix);
    const size_t colon = around.rfind("::");
    around = around.substr(0, colon == around.npos ? 0 : colon);
  }
  for (const std::string& used : UsedNamespaces(tokens)) tags.listLibrary(items, used, prefix);
  for (const TagItem* item : items) rows.push_back(RowOf(*item));
  const bool isC = FileKind(path) == cCSource;
  AddKeywords(rows, isC ? KeywordsOfC() : KeywordsOfCpp(), prefix);
  if (!isC && std::string_view("std").starts_with(prefix))
    rows.push_back({"std", RowKind::cNamespace, {}, {}, {}});
  if (prefix.empty()) return;
  items.clear();
  tags.listLibrary(items, "", prefix);
  for (const TagItem* item : items) rows.push_back(RowOf(*item));
}

}  // namespace zendry
