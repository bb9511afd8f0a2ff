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

  // Classes of the module that names them go first; files don't include each other here.
  zendry::TagClass* FindClass(const std::string& name, zendry::TagData* from = nullptr) {
    if (from)
      for (auto& [key, record] : from->classes)
        if (record.name == name && record.line >= 0) return &record;
    for (zendry::TagData* module : sources.Modules())
      for (auto& [key, record] : module->classes)
        if (record.name == name && record.line >= 0) return &record;
    return sources.Library()->findClass(name);
  }
  zendry::TagItem* FindGlobal(const std::string& name, const std::string& moduleName) {
    zendry::TagData* from = nullptr;
    for (zendry::TagData* module : sources.Modules())
      if (!moduleName.empty() && module->fileName == moduleName) {
        from = module;
        if (zendry::TagItem* found = FindGlobalIn(*module, name)) return found;
        break;
      }
    for (zendry::TagData* module : sources.Modules())
      if (zendry::TagItem* found = FindGlobalIn(*module, name)) return found;
    return FindClass(name, from);
  }
  zendry::TagItem* FindMember(const std::string& className, const std::string& name,
                              bool wantDefinition, int depth, zendry::TagData* from = nullptr) {
    if (depth >= 17) return nullptr;
    for (zendry::TagData* module : ModulesFor(className, from)) {
      const auto found = module->classes.find(className);
      if (found == module->classes.end()) continue;
      for (zendry::TagItem& item : found->second.members) {
        const bool isPrototype = item.kind == 'p';
        const bool isWanted = wantDefinition ? !isPrototype : isPrototype || item.access != 0;
        if (isWanted && item.name == name) return &item;
      }
      for (const std::string& base : BasesFromTheLast(found->second))
        if (zendry::TagItem* item = FindMember(base, name, wantDefinition, depth + 1, module))
          return item;
    }
    return nullptr;
  }
  zendry::TagItem* FindMemberInClass(const std::string& className, const std::string& name,
                                     int depth, zendry::TagData* from = nullptr) {
    if (depth >= 17) return nullptr;
    zendry::TagClass* record = FindClass(className, from);
    if (!record) return nullptr;
    for (zendry::TagItem& item : record->members)
      if (!(item.kind == 'f' && item.access == 0) && item.name == name) return &item;
    for (const std::string& base : BasesFromTheLast(*record))
      if (zendry::TagItem* item = FindMemberInClass(base, name, depth + 1, ModuleOf(*record)))
        return item;
    return nullptr;
  }
  void ListMembers(std::vector<zendry::TagItem*>& out, const std::string& className,
                   const std::string& prefix, int depth, zendry::TagData* from = nullptr) {
    if (depth >= 17) return;
    zendry::TagClass* record = FindClass(className, from);
    if (!record) return;
    for (zendry::TagItem& item : record->members)
      if (!(item.kind == 'f' && item.access == 0) && item.name.starts_with(prefix))
        out.push_back(&item);
    for (const std::string& base : BasesFromTheLast(*record))
      ListMembers(out, base, prefix, depth + 1, ModuleOf(*record));
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
  zendry::TagData* ModuleOf(const zendry::TagClass& record) {
    for (zendry::TagData* module : sources.Modules())
      for (auto& [key, other] : module->classes)
        if (&other == &record) return module;
    return nullptr;
  }
  // The modules in the order in which they are asked for members of a class: among namesakes that
  // of the class which `from` means, then those that only define members of it.
  std::vector<zendry::TagData*> ModulesFor(const std::string& className, zendry::TagData* from) {
    std::vector<zendry::TagData*> ofMeant, ofMembers, rest;
    int realOnes = 0;
    zendry::TagClass* meant = FindClass(className, from);
    for (zendry::TagData* module : sources.Modules()) {
      const auto found = module->classes.find(className);
      const bool isReal = found != module->classes.end() && found->second.line >= 0;
      if (isReal) ++realOnes;
      if (isReal && &found->second == meant)
        ofMeant.push_back(module);
      else if (!isReal && FindClass(className, module) == meant)
        ofMembers.push_back(module);
      else
        rest.push_back(module);
    }
    if (realOnes < 2) return sources.Modules();
    ofMeant.insert(ofMeant.end(), ofMembers.begin(), ofMembers.end());
    ofMeant.insert(ofMeant.end(), rest.begin(), rest.end());
    return ofMeant;
  }
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
