#pragma once

#include <algorithm>
#include <string>
#include <utility>

#include "base/EditorText.h"

namespace test {

// A text in place of an open editor's.
//
//   test::TextInMemory editor("int a;\n", "/p/a.cpp");
//   project.parseModule(module, &editor);
class TextInMemory : public zendry::EditorText {
 public:
  explicit TextInMemory(std::string newText, std::string newPath = "/p/a.cpp")
      : text(std::move(newText)), path(std::move(newPath)) {}

  std::string Path() const override { return path; }
  int Length() const override { return static_cast<int>(text.size()); }
  void CopyRange(int start, int end, char* to) const override {
    ++copies;
    longestCopy = std::max(longestCopy, end - start);
    std::copy(text.begin() + start, text.begin() + end, to);
  }

  std::string text;
  std::string path;
  mutable int copies = 0;
  mutable int longestCopy = 0;
};

}  // namespace test
