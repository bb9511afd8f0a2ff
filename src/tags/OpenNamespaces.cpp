#include "tags/OpenNamespaces.h"

#include "tags/TagData.h"
#include "tags/TagIndex.h"

namespace zendry {

namespace {

constexpr int cNamespace = 'n';
constexpr std::string_view cUsing = "using namespace ";

std::string_view LastPart(std::string_view path) {
  const size_t colon = path.rfind("::");
  return colon == path.npos ? path : path.substr(colon + 2);
}

}  // namespace

bool OpenNamespaces::IsOpen(std::string_view space, const TagData& file, const TextOf& textOf) {
  if (space.empty()) return true;
  Names& open = known[&file];
  if (open.generation != file.Generation()) {
    open = {file.Generation(), {}};
    for (const TagItem& item : file.globals)
      if (item.kind == cNamespace) open.names.emplace(LastPart(item.name));
    const std::string text = textOf(file);
    for (size_t at = text.find(cUsing); at != text.npos; at = text.find(cUsing, at)) {
      at += cUsing.size();
      const size_t end = text.find(';', at);
      if (end == text.npos) break;
      open.names.emplace(LastPart(std::string_view(text).substr(at, end - at)));
    }
  }
  return open.names.contains(LastPart(space));
}

bool IsNamespace(std::string_view space, std::string_view qualifier) {
  return space == qualifier || (space.ends_with(qualifier) &&
                                space.substr(0, space.size() - qualifier.size()).ends_with("::"));
}

std::string_view WithoutNamespaces(const TagIndex& index, std::string_view name) {
  for (std::string_view rest = name; !index.FindClass(rest);) {
    const size_t colon = rest.find("::");
    if (colon == rest.npos || index.FindClass(rest.substr(0, colon))) return name;
    rest.remove_prefix(colon + 2);
    if (index.FindClass(rest)) return rest;
  }
  return name;
}

TagClass* ClassInNamespace(const TagIndex& index, TagData& file, std::string_view name) {
  if (name.find("::") == name.npos) return nullptr;
  for (auto& [key, record] : file.classes) {
    if (record.line < 0 || key.size() < name.size() + 2 || !key.ends_with(name)) continue;
    const std::string_view space = std::string_view(key).substr(0, key.size() - name.size());
    if (!space.ends_with("::") || index.FindClass(space.substr(0, space.size() - 2))) continue;
    record.module = &file;
    return &record;
  }
  return nullptr;
}

}  // namespace zendry
