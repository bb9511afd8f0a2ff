#pragma once

#include <deque>
#include <string>
#include <vector>

#include "CodeText.h"
#include "tags/EditorReader.h"
#include "tags/TagParser.h"

namespace test {

// A project whose files are given as texts and are parsed by the tag parser. The last one,
// "main.cpp", is the editor's: it is parsed when the tags are refreshed.
//
//   test::TipProject project;
//   project.Add("shape.h", "class Shape {};");
//   const test::CodeText editor("#include \"shape.h\"\nShape s(@");
//   project.edited = &editor;
class TipProject : public zendry::CodeSources {
 public:
  TipProject() { own.fileName = "main.cpp"; }

  void Add(const std::string& name, const std::string& text) {
    zendry::TagData& store = stores.emplace_back();
    store.fileName = name;
    texts.emplace_back(text);
    Parse(store, text);
  }
  void SetLibrary(const std::string& text) {
    Parse(library, text);
    for (auto& [name, record] : library.classes)
      for (zendry::TagItem& member : record.members) member.access = 1;
  }

  const std::vector<zendry::TagData*>& Modules() const override {
    modules.clear();
    for (zendry::TagData& store : stores) modules.push_back(&store);
    modules.push_back(&own);
    return modules;
  }
  zendry::TagData* Library() const override { return &library; }
  zendry::TagData* ModuleOf(const zendry::EditorText&) override { return &own; }
  void RefreshTags() override { Parse(own, edited->text); }
  std::string TextOf(const zendry::TagData& store) override {
    for (size_t i = 0; i < stores.size(); ++i)
      if (&stores[i] == &store) return texts[i];
    return &store == &own ? edited->text : std::string();
  }
  void Log(std::string_view, std::string_view) override {}

  const CodeText* edited = nullptr;

 private:
  static void Parse(zendry::TagData& store, const std::string& text) {
    store.clear();
    CodeText editor(text);
    zendry::EditorReader reader(editor);
    zendry::theTagParser.parseBuffer(store, &reader, false);
  }

  mutable std::deque<zendry::TagData> stores;
  std::vector<std::string> texts;
  mutable zendry::TagData own, library;
  mutable std::vector<zendry::TagData*> modules;
};

}  // namespace test
