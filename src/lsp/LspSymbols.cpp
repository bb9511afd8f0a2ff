#include <algorithm>

#include "AsciiCase.h"
#include "lsp/LspAnswers.h"
#include "lsp/LspUri.h"

namespace zendry {

namespace {

constexpr size_t cMostFound = 2000;

struct KindRow {
  char tag;
  int symbol;  // of a global
  int member;  // of a member
};

// The numbers are the protocol's.
constexpr KindRow cKinds[] = {
    {'c', 5, 5},    // class
    {'d', 14, 14},  // macro
    {'e', 22, 22},  // enumerator
    {'f', 12, 6},   // function
    {'g', 10, 10},  // enum
    {'l', 13, 13},  // local variable
    {'m', 8, 8},    // member
    {'n', 3, 3},    // namespace
    {'p', 12, 6},   // prototype
    {'s', 23, 23},  // struct
    {'t', 5, 5},    // typedef
    {'u', 23, 23},  // union
    {'v', 13, 8},   // variable
    {'x', 13, 13},  // declared variable
};
constexpr KindRow cOther = {0, 13, 8};

int SymbolKindOf(int tagKind, bool isMember) {
  const auto found = std::find_if(std::begin(cKinds), std::end(cKinds),
                                  [&](const KindRow& row) { return row.tag == tagKind; });
  const KindRow& row = found == std::end(cKinds) ? cOther : *found;
  return isMember ? row.member : row.symbol;
}

Json LineRange(const LspQuestion& question, int first, int last) {
  const LspText& text = question.text;
  const auto place = [&](int position) {
    const LspPlace at = text.PlaceOf(position, question.columns);
    return Json{{"line", at.line}, {"character", at.column}};
  };
  const int end = text.PositionFromLine(last) + static_cast<int>(text.LineText(last).size());
  return {{"start", place(text.PositionFromLine(first))}, {"end", place(end)}};
}

int LastLineOf(const TagClass& record) {
  int last = record.line;
  for (const TagItem& member : record.members) last = std::max(last, member.line);
  return last;
}

std::string_view Shown(std::string_view name) {
  return name.empty() ? "?" : name;
}

Json Symbol(const LspQuestion& question, const TagItem& item, int kind, int lastLine) {
  const int line = std::max(item.line - 1, 0);
  Json symbol = {{"name", Shown(item.name)},
                 {"kind", kind},
                 {"range", LineRange(question, line, std::max(lastLine - 1, line))},
                 {"selectionRange", LineRange(question, line, line)}};
  const std::string detail = item.signature.empty() ? item.type : item.signature;
  if (!detail.empty()) symbol["detail"] = detail;
  return symbol;
}

void AppendFlat(Json& out, const LspQuestion& question, const TagItem& item, int kind,
                const std::string& owner) {
  const int line = std::max(item.line - 1, 0);
  Json symbol = {
      {"name", Shown(item.name)},
      {"kind", kind},
      {"location", {{"uri", question.text.uri}, {"range", LineRange(question, line, line)}}}};
  if (!owner.empty()) symbol["containerName"] = owner;
  out.push_back(std::move(symbol));
}

// Into the order of the text.
void SortByLine(Json& symbols) {
  const auto lineOf = [](const Json& symbol) {
    const Json* place = FindJson(symbol, {"location"});
    return NumberAt(place ? *place : symbol, {"range", "start", "line"});
  };
  auto& list = symbols.get_ref<Json::array_t&>();
  std::stable_sort(list.begin(), list.end(),
                   [&](const Json& a, const Json& b) { return lineOf(a) < lineOf(b); });
}

bool HasLetters(std::string_view name, std::string_view letters) {
  for (const char c : name) {
    if (letters.empty()) break;
    if (mavro::EqualNoCase(letters.substr(0, 1), std::string_view(&c, 1))) letters.remove_prefix(1);
  }
  return letters.empty();
}

void AppendFound(Json& out, const TagData& module, const TagItem& item, int kind,
                 const std::string& owner) {
  const int line = std::max(item.line - 1, 0);
  const Json place = {{"line", line}, {"character", 0}};
  Json symbol = {
      {"name", item.name},
      {"kind", kind},
      {"location",
       {{"uri", UriOfPath(module.fileName)}, {"range", {{"start", place}, {"end", place}}}}}};
  if (!owner.empty()) symbol["containerName"] = owner;
  out.push_back(std::move(symbol));
}

}  // namespace

// Members of classes that are declared elsewhere have no symbol to lie in.
Json DocumentSymbols(const LspQuestion& question, bool isNested) {
  question.folder.sources.RefreshTags();
  Json symbols = Json::array();
  TagData* module = question.folder.sources.ModuleOf(question.text);
  if (!module) return symbols;
  for (const TagItem& item : module->globals) {
    const int kind = SymbolKindOf(item.kind, false);
    if (isNested)
      symbols.push_back(Symbol(question, item, kind, item.line));
    else
      AppendFlat(symbols, question, item, kind, "");
  }
  for (const auto& [name, record] : module->classes) {
    const bool isHere = record.line >= 0;
    Json children = Json::array();
    for (const TagItem& member : record.members) {
      const int kind = SymbolKindOf(member.kind, true);
      if (isNested)
        (isHere ? children : symbols).push_back(Symbol(question, member, kind, member.line));
      else
        AppendFlat(symbols, question, member, kind, name);
    }
    if (!isHere) continue;
    const int kind = SymbolKindOf(record.kind, false);
    if (!isNested) {
      AppendFlat(symbols, question, record, kind, "");
      continue;
    }
    Json symbol = Symbol(question, record, kind, LastLineOf(record));
    symbol["children"] = std::move(children);
    symbols.push_back(std::move(symbol));
  }
  SortByLine(symbols);
  return symbols;
}

void AppendWorkspaceSymbols(Json& out, LspFolder& folder, const std::string& query) {
  folder.sources.RefreshTags();
  for (const TagData* module : folder.sources.Modules()) {
    for (const TagItem& item : module->globals)
      if (HasLetters(item.name, query))
        AppendFound(out, *module, item, SymbolKindOf(item.kind, false), "");
    for (const auto& [name, record] : module->classes) {
      if (record.line >= 0 && HasLetters(name, query))
        AppendFound(out, *module, record, SymbolKindOf(record.kind, false), "");
      for (const TagItem& member : record.members)
        if (HasLetters(member.name, query))
          AppendFound(out, *module, member, SymbolKindOf(member.kind, true), name);
    }
    if (out.size() >= cMostFound) return;
  }
}

}  // namespace zendry
