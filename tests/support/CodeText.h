#pragma once

#include <algorithm>
#include <cctype>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "code/CodeSources.h"
#include "code/TextScanner.h"
#include "tags/TagData.h"

namespace test {

// An editor's text with its caret, written as '@', which isn't part of the text; without one the
// caret is at the end.
//
//   test::CodeText editor("Foo f;\nf.@");
class CodeText : public zendry::CaretText {
 public:
  explicit CodeText(std::string withCaret) : text(std::move(withCaret)) {
    caret = text.find('@');
    if (caret == std::string::npos)
      caret = text.size();
    else
      text.erase(caret, 1);
  }

  std::string Path() const override { return path; }
  int Length() const override { return static_cast<int>(text.size()); }
  void CopyRange(int start, int end, char* to) const override {
    ranges.emplace_back(start, end);
    text.copy(to, end - start, start);
  }
  int CaretPosition() const override { return static_cast<int>(caret); }
  int LineFromPosition(int position) const override {
    const auto end = text.begin() + std::clamp(position, 0, Length());
    return static_cast<int>(std::count(text.begin(), end, '\n'));
  }
  int PositionFromLine(int line) const override {
    size_t place = 0;
    for (; line > 0 && place != std::string::npos; --line) {
      place = text.find('\n', place);
      if (place != std::string::npos) ++place;
    }
    return place == std::string::npos ? Length() : static_cast<int>(place);
  }
  // The text between the last blank or sign that belongs to no expression and the caret.
  std::string LeftOfCaret() const {
    const auto belongs = [](unsigned char c) {
      return std::isalnum(c) || c == '_' || c == '.' || c == '-' || c == '>' || c == ':';
    };
    size_t begin = caret;
    while (begin > 0 && belongs(text[begin - 1])) --begin;
    return text.substr(begin, caret - begin);
  }

  std::string text;
  size_t caret = 0;
  std::string path;
  mutable std::vector<std::pair<int, int>> ranges;  // what has been asked for
};

// Stores for lookups, filled by hand, and the log that lookups write.
//
//   test::CodeStores stores;
//   stores.Class("Foo", 1, "Base").members = {test::Tag("x", 'm')};
//   stores.Module("b.cpp").globals.push_back(test::Tag("f", 'v'));
//   stores.Changed();
class CodeStores : public zendry::CodeSources {
 public:
  // The module of this name, made at the end of the list when there is none.
  zendry::TagData& Module(const std::string& name = "a.cpp") {
    for (zendry::TagData& data : stores)
      if (data.fileName == name) return data;
    stores.emplace_back().fileName = name;
    modules.push_back(&stores.back());
    return stores.back();
  }
  // Adds a class to a store; of line -1 for one that is known from its members only.
  static zendry::TagClass& AddClass(zendry::TagData& store, const std::string& name, int line,
                                    const std::string& bases = "") {
    zendry::TagClass& record = store.classes[name];
    record.name = name;
    record.line = line;
    record.kind = line < 0 ? 0 : 'c';
    record.inheritance = bases;
    return record;
  }
  zendry::TagClass& Class(const std::string& name, int line = 1, const std::string& bases = "") {
    return AddClass(Module(), name, line, bases);
  }
  // A class that has been added.
  zendry::TagClass& Existing(const std::string& name) { return Module().classes.at(name); }
  // Tells the index of what a test has filled in.
  void Changed() {
    for (zendry::TagData& data : stores) data.Changed();
  }
  std::string TakeLog() { return std::exchange(log, {}); }

  const std::vector<zendry::TagData*>& Modules() const override { return modules; }
  zendry::TagData* Library() const override { return library; }
  zendry::TagData* ModuleOf(const zendry::EditorText&) override { return current; }
  void RefreshTags() override { ++refreshes; }
  void Log(std::string_view text, std::string_view detail) override {
    log.append(text).append("|").append(detail).append("\n");
  }

  std::deque<zendry::TagData> stores;
  std::vector<zendry::TagData*> modules;
  zendry::TagData libraryStore;
  zendry::TagData* library = &libraryStore;
  zendry::TagData* current = &Module();  // the module of every editor
  int refreshes = 0;
  std::string log;
};

inline zendry::TagItem Tag(const std::string& name, int kind, const std::string& type = "",
                           int line = 1, int access = 'b') {
  zendry::TagItem item;
  item.name = name;
  item.kind = kind;
  item.type = type;
  item.line = line;
  item.access = access;
  return item;
}

}  // namespace test
