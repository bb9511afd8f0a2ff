#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "CodeText.h"
#include "code/CodeSources.h"
#include "code/Completion.h"
#include "tags/EditorReader.h"
#include "tags/TagParser.h"

namespace test {

// A project whose files are given as texts, and an editor of one of them.
//
//   test::ParsedProject project;
//   project.Add("/p/shape.h", "struct Shape { int width; };\n");
//   project.Names("/p/main.cpp", "#include \"shape.h\"\nvoid f(Shape s) { s.@ }");   // "width"
class ParsedProject : public zendry::CodeSources {
 public:
  zendry::TagData& Add(const std::string& path, const std::string& text) {
    zendry::TagData& store = StoreOf(path);
    texts[path] = text;
    Parse(store, text);
    return store;
  }
  // The list at the caret, "@", of an editor with this text.
  zendry::CompletionList List(const std::string& path, const std::string& withCaret) {
    const CodeText editor = Edit(path, withCaret);
    return completion.Complete(editor, ExpressionLeftOf(editor));
  }
  // The names of that list, separated by blanks.
  std::string Names(const std::string& path, const std::string& withCaret) {
    std::string names;
    for (const zendry::CompletionRow& row : List(path, withCaret).rows)
      names += (names.empty() ? "" : " ") + row.name;
    return names;
  }
  // An editor with this text, whose tags are up to date.
  CodeText Edit(const std::string& path, const std::string& withCaret) {
    CodeText editor(withCaret);
    editor.path = path;
    Add(path, editor.text);
    return editor;
  }

  const std::vector<zendry::TagData*>& Modules() const override { return modules; }
  zendry::TagData* Library() const override { return const_cast<zendry::TagData*>(&library); }
  zendry::TagData* ModuleOf(const zendry::EditorText& editor) override {
    return &StoreOf(editor.Path());
  }
  void RefreshTags() override {}
  std::string TextOf(const zendry::TagData& data) override { return texts[data.fileName]; }
  void Log(std::string_view, std::string_view) override {}

  zendry::TagData library;
  zendry::Completion completion{*this};

 private:
  static void Parse(zendry::TagData& data, const std::string& text) {
    data.clear();
    CodeText editor(text);
    editor.path = data.fileName;
    editor.text = text;
    zendry::EditorReader reader(editor);
    const zendry::ReservedNamesKept allNames;
    zendry::theTagParser.parseBuffer(data, &reader, false);
  }
  zendry::TagData& StoreOf(const std::string& path) {
    for (zendry::TagData& data : stores)
      if (data.fileName == path) return data;
    modules.push_back(&stores.emplace_back());
    modules.back()->fileName = path;
    return stores.back();
  }

  std::deque<zendry::TagData> stores;
  std::vector<zendry::TagData*> modules;
  std::map<std::string, std::string> texts;
};

}  // namespace test
