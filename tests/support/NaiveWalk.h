#pragma once

#include <string>
#include <vector>

#include "code/CodeSources.h"
#include "tags/TagData.h"

namespace test {

// The walks over all stores that the index replaces, written as plainly as possible.
class NaiveWalk {
 public:
  explicit NaiveWalk(zendry::CodeSources& theSources) : sources(theSources) {}

  zendry::TagClass* FindClass(const std::string& name) {
    for (zendry::TagData* module : sources.Modules())
      for (auto& [key, record] : module->classes)
        if (record.name == name && record.line >= 0) return &record;
    return sources.Library()->findClass(name);
  }
  zendry::TagItem* FindGlobal(const std::string& name, const std::string& moduleName) {
    for (zendry::TagData* module : sources.Modules())
      if (!moduleName.empty() && module->fileName == moduleName) {
        if (zendry::TagItem* found = FindGlobalIn(*module, name)) return found;
        break;
      }
    for (zendry::TagData* module : sources.Modules())
      if (zendry::TagItem* found = FindGlobalIn(*module, name)) return found;
    return FindClass(name);
  }
  zendry::TagItem* FindMember(const std::string& className, const std::string& name,
                              bool wantDefinition, int depth) {
    if (depth >= 17) return nullptr;
    for (zendry::TagData* module : sources.Modules()) {
      const auto found = module->classes.find(className);
      if (found == module->classes.end()) continue;
      for (zendry::TagItem& item : found->second.members) {
        const bool isPrototype = item.kind == 'p';
        const bool isWanted = wantDefinition ? !isPrototype : isPrototype || item.access != 0;
        if (isWanted && item.name == name) return &item;
      }
      for (const std::string& base : BasesFromTheLast(found->second))
        if (zendry::TagItem* item = FindMember(base, name, wantDefinition, depth + 1)) return item;
    }
    return nullptr;
  }
  zendry::TagItem* FindMemberInClass(const std::string& className, const std::string& name,
                                     int depth) {
    if (depth >= 17) return nullptr;
    zendry::TagClass* record = FindClass(className);
    if (!record) return nullptr;
    for (zendry::TagItem& item : record->members)
      if (!(item.kind == 'f' && item.access == 0) && item.name == name) return &item;
    for (const std::string& base : BasesFromTheLast(*record))
      if (zendry::TagItem* item = FindMemberInClass(base, name, depth + 1)) return item;
    return nullptr;
  }
  void ListMembers(std::vector<zendry::TagItem*>& out, const std::string& className,
                   const std::string& prefix, int depth) {
    if (depth >= 17) return;
    zendry::TagClass* record = FindClass(className);
    if (!record) return;
    for (zendry::TagItem& item : record->members)
      if (!(item.kind == 'f' && item.access == 0) && item.name.starts_with(prefix))
        out.push_back(&item);
    for (const std::string& base : BasesFromTheLast(*record))
      ListMembers(out, base, prefix, depth + 1);
  }
  void ListGlobals(std::vector<zendry::TagItem*>& out, const std::string& prefix) {
    for (zendry::TagData* module : sources.Modules())
      for (zendry::TagItem& item : module->globals)
        if (item.name.starts_with(prefix)) out.push_back(&item);
    for (zendry::TagData* module : sources.Modules())
      for (auto& [key, record] : module->classes)
        if (std::string_view("csu").find(static_cast<char>(record.kind)) < 3 &&
            record.name.starts_with(prefix))
          out.push_back(&record);
    for (zendry::TagData* module : sources.Modules())
      for (auto& [key, record] : module->classes)
        for (zendry::TagItem& item : record.members)
          if (record.line < 0 && item.kind == 'e' && item.name.starts_with(prefix))
            out.push_back(&item);
  }

 private:
  static zendry::TagItem* FindGlobalIn(zendry::TagData& module, const std::string& name) {
    for (zendry::TagItem& item : module.globals)
      if (item.name == name) return &item;
    return nullptr;
  }
  static std::vector<std::string> BasesFromTheLast(const zendry::TagClass& record) {
    std::vector<std::string> bases;
    std::string rest = record.inheritance;
    while (!rest.empty()) {
      const size_t comma = rest.rfind(',');
      bases.push_back(comma == std::string::npos ? rest : rest.substr(comma + 1));
      rest.resize(comma == std::string::npos ? 0 : comma);
    }
    return bases;
  }

  zendry::CodeSources& sources;
};

}  // namespace test
